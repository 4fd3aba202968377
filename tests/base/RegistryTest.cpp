// SPDX-License-Identifier: MIT
#include "base/Registry.h"

#include "support/TempFolder.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;

namespace {

constexpr char kStartup[] = "Software\\Norv\\Zantrel\\Startup";

std::string AllBytes() {
    std::string out;
    for (int i = 0; i < 256; ++i) out.push_back(static_cast<char>(i));
    return out;
}

std::string TextOf(CRegistry& registry, std::string_view name) {
    const auto value = registry.Read(kStartup, name);
    return value && value->kind == ERegistryKind::Text ? value->text : "(no text)";
}

} // namespace

TEST(Registry, KindsAndEveryByteSurviveARestart) {
    const CTempFolder folder;
    const std::string all = AllBytes();
    {
        CRegistry registry(folder.Path());
        EXPECT_TRUE(registry.WriteText(kStartup, "AdminPort", "9300"));
        EXPECT_TRUE(registry.WriteDword(kStartup, "Flags", 4294967295u));
        EXPECT_TRUE(registry.WriteText("odd ]\"[\n\xFF", all, all + all));
        EXPECT_TRUE(registry.WriteText(kStartup, "", ""));
    }
    CRegistry registry(folder.Path());
    EXPECT_EQ(registry.Read(kStartup, "AdminPort"), (SRegistryValue{ERegistryKind::Text, "9300", 0}));
    EXPECT_EQ(registry.Read(kStartup, "Flags"), (SRegistryValue{ERegistryKind::Dword, "", 4294967295u}));
    EXPECT_EQ(registry.Read("odd ]\"[\n\xFF", all), (SRegistryValue{ERegistryKind::Text, all + all, 0}));
    EXPECT_EQ(registry.Read(kStartup, ""), (SRegistryValue{ERegistryKind::Text, "", 0}));
    EXPECT_EQ(registry.Read(kStartup, "Level1Port"), std::nullopt);
}

TEST(Registry, KeysHaveAncestorsAndNoCase) {
    const CTempFolder folder;
    CRegistry registry(folder.Path());
    EXPECT_FALSE(registry.KeyExists("Software"));
    EXPECT_TRUE(registry.CreateKey("Software\\Norv\\Zantrel"));
    EXPECT_TRUE(registry.KeyExists("software\\norv\\"));
    EXPECT_FALSE(registry.KeyExists("Software\\Nor"));
    registry.WriteText("Software\\Norv", "Name", "1");
    registry.WriteDword("SOFTWARE\\NORV", "NAME", 2);
    registry.WriteText("Software\\Norv", "Alpha", "a");
    const auto values = registry.EnumerateValues("Software\\\\Norv");
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].name, "Alpha");
    EXPECT_EQ(values[1].name, "Name");
    EXPECT_EQ(values[1].value.dword, 2u);
    EXPECT_TRUE(registry.Delete("Software\\Norv", "name"));
    EXPECT_TRUE(registry.Delete("Software\\Norv", "name"));
    EXPECT_EQ(registry.Read("Software\\Norv", "Name"), std::nullopt);
}

TEST(Registry, TwoWindowsSeeEachOthersValues) {
    const CTempFolder folder;
    CRegistry one(folder.Path()), two(folder.Path());
    // The same length and well within one tick of the file system's clock: only the file itself tells them apart.
    for (int i = 100; i < 200; ++i) {
        CRegistry& writer = i % 3 == 0 ? two : one;
        CRegistry& reader = i % 3 == 0 ? one : two;
        ASSERT_TRUE(writer.WriteText(kStartup, "n", std::to_string(i)));
        ASSERT_EQ(TextOf(reader, "n"), std::to_string(i));
    }
}

TEST(RegistryFormat, AFileThatIsCutAnywhereIsNoticed) {
    RegistryContent content;
    content["A\\B"]["name"] = {ERegistryKind::Text, "a\"\\\n\xFFz", 0};
    content["C"]["n"] = {ERegistryKind::Dword, "", 12};
    const std::string text = FormatRegistry(content);
    EXPECT_EQ(ParseRegistry(text), content);
    for (size_t length = 0; length + 1 < text.size(); ++length)
        EXPECT_EQ(ParseRegistry(text.substr(0, length)), std::nullopt) << length;
}

TEST(RegistryFormat, LinesThatAreNotUnderstoodAreNamed) {
    const auto byHand = ParseRegistry("zantrel registry 1\r\n[A]\r\n ; by hand\r\n  \"N\"=dword 8 \r\n\r\nend");
    EXPECT_EQ(byHand.value().at("A").at("N").dword, 8u);
    for (const char* line : {"\"a\" = text \"x", "\"a\" = text \"\\q\"", "\"a\" = text \"\\x4\"", "\"a\" = text x",
                             "\"a\" = dword 4294967296", "\"a\" = dword -1", "\"a\" = dword 1 2", "\"a\" = qword 1",
                             "\"a\" text \"x\"", "a = text \"x\"", "[A", "junk", "\"a\" = text \"x\" y", "end\nend"}) {
        std::string damage;
        EXPECT_EQ(ParseRegistry("zantrel registry 1\n[K]\n" + std::string(line) + "\nend\n", &damage), std::nullopt)
            << line;
        EXPECT_THAT(damage, testing::StartsWith("line ")) << line;
    }
    EXPECT_EQ(ParseRegistry("zantrel registry 1\n\"a\" = dword 1\nend\n"), std::nullopt);
    EXPECT_EQ(ParseRegistry("zantrel registry 2\nend\n"), std::nullopt);
}
