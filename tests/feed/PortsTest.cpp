#include "feed/Ports.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace vx;

namespace {

struct PortsTest : testing::Test {
    QTemporaryDir folder;
    CRegistry registry{folder.path().toStdString()};
    CNorvPorts ports{registry};

    std::string Text(std::string_view name) {
        const auto value = registry.Read(kStartupKey, name);
        return value && value->kind == ERegistryKind::Text ? value->text : "(none)";
    }
};

} // namespace

TEST_F(PortsTest, AMissingPortIsWrittenAsItsDefault) {
    EXPECT_FALSE(registry.KeyExists(kStartupKey));
    EXPECT_EQ(ports.GetPort(kAdminPort), 9300);
    EXPECT_EQ(ports.GetPort(kLookupPort), 9100);
    EXPECT_EQ(ports.GetPort(kLevel1Port), 5009);
    EXPECT_EQ(Text("AdminPort"), "9300");
    EXPECT_EQ(Text("LookupPort"), "9100");
    EXPECT_EQ(Text("Level1Port"), "5009");
}

TEST_F(PortsTest, ATextIsReadAsItIsAndStays) {
    const std::pair<const char*, int> cases[] = {{"9101", 9101},           {"abc", 0},   {"", 0}, {" 80x", 80},
                                                 {"65616", 65616 % 65536}, {"-1", 65535}};
    for (const auto& [text, port] : cases) {
        registry.WriteText(kStartupKey, "LookupPort", text);
        EXPECT_EQ(ports.GetPort(kLookupPort), port) << text;
        EXPECT_EQ(Text("LookupPort"), text);
    }
}

TEST_F(PortsTest, WhatIsNoShortTextIsReplaced) {
    registry.WriteDword(kStartupKey, "LookupPort", 9101);
    EXPECT_EQ(ports.GetPort(kLookupPort), 9100);
    EXPECT_EQ(Text("LookupPort"), "9100");
    registry.WriteText(kStartupKey, "LookupPort", std::string(255, '1'));
    EXPECT_EQ(ports.GetPort(kLookupPort), 9100);
    EXPECT_EQ(Text("LookupPort"), "9100");
}

TEST(Ports, AStoreThatCannotBeWrittenGivesTheDefault) {
    CRegistry nowhere("/dev/null/registry");
    EXPECT_EQ(CNorvPorts(nowhere).GetPort(kLevel1Port), 5009);
}
