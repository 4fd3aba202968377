// SPDX-License-Identifier: MIT
#include "feed/socket/Ports.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vx::test;

TEST(CNorvPorts, AreTextsOfTheRegistryAndWrittenWhereThereIsNone) {
    const CTempFolder folder;
    CRegistry registry(folder.Path());
    CNorvPorts ports(registry);
    const auto text = [&](std::string_view name) {
        const auto value = registry.Read(kStartupKey, name);
        return value && value->kind == ERegistryKind::Text ? value->text : "(none)";
    };
    EXPECT_EQ(ports.GetPort(kLevel1Port), 5009);
    EXPECT_EQ(text("Level1Port"), "5009");

    const std::pair<const char*, int> stays[] = {{"9101", 9101}, {"abc", 0}, {" 80x", 80}, {"65616", 65616 % 65536}};
    for (const auto& [value, port] : stays) {
        registry.WriteText(kStartupKey, "LookupPort", value);
        EXPECT_EQ(ports.GetPort(kLookupPort), port) << value;
        EXPECT_EQ(text("LookupPort"), value);
    }
    registry.WriteDword(kStartupKey, "LookupPort", 9101);
    registry.WriteText(kStartupKey, "AdminPort", std::string(255, '1'));
    EXPECT_EQ(ports.GetPort(kLookupPort), 9100);
    EXPECT_EQ(ports.GetPort(kAdminPort), 9300);
    EXPECT_EQ(text("LookupPort") + text("AdminPort"), "91009300");
}
