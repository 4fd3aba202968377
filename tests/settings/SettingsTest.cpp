// SPDX-License-Identifier: MIT
#include "settings/Settings.h"

#include "base/Registry.h"
#include "settings/ConfigWriter.h"
#include "settings/ValidateSetting.h"
#include "support/LogEvents.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <fmt/format.h>
#include <limits>
#include <set>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

// Kinds that no setting of the table has today.
constexpr SNumberSetting kNumber{{"Number", ESettingKind::Number, "2.5", ""}};
constexpr SColorSetting kColor{{"Color", ESettingKind::Color, "0xFF8000", ""}};

class CSettingsTest : public testing::Test {
protected:
    CSettingsTest() { m_settings.SetLogger(m_logger); }

    void Store(const SSetting& setting, std::string_view text) {
        m_registry.WriteText(kApplicationSettingsKey, setting.name, text);
    }
    std::string Stored(const SSetting& setting) { return m_registry.Read(kApplicationSettingsKey, setting.name)->text; }

    CLogEvents m_log{"Information"};
    CTempFolder m_folder;
    CRegistry m_registry{m_folder.Path()};
    CApplicationProfile m_profile{m_registry, kApplicationProfileKey};
    CConfigWriter m_writer{m_profile};
    CSettings m_settings{m_writer};
    std::shared_ptr<CConfigLogger> m_logger = std::make_shared<CConfigLogger>();
};

} // namespace

TEST_F(CSettingsTest, ValuesComeBackAsTheyWereWritten) {
    for (const double number : {0.1, -1e300, 5e-324, std::numeric_limits<double>::max()}) {
        EXPECT_TRUE(m_settings.WriteNumber(kNumber, number));
        EXPECT_EQ(m_settings.ReadNumber(kNumber), number);
    }
    for (const int32_t number : {-5, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
        EXPECT_TRUE(m_settings.WriteInteger(kRectLeft, number));
        EXPECT_EQ(m_settings.ReadInteger(kRectLeft), number);
    }
    EXPECT_TRUE(m_settings.WriteBoolean(kShowShading, false) && !m_settings.ReadBoolean(kShowShading));
    EXPECT_EQ(Stored(kShowShading), "false");
    EXPECT_TRUE(m_settings.WriteColor(kColor, 0x00FF01) && !m_settings.WriteColor(kColor, 0x1000000));
    EXPECT_EQ(m_settings.ReadColor(kColor), 0x00FF01u);
    EXPECT_TRUE(m_settings.WriteText(kCurrentSymbol, "IBM\x92;,@="));
    EXPECT_EQ(m_settings.ReadText(kCurrentSymbol), "IBM\x92;,@=");
    EXPECT_THAT(m_log.texts, IsEmpty());
}

TEST_F(CSettingsTest, DefaultsApplyWhereNothingUsableIsStored) {
    const auto expectDefaults = [&] {
        EXPECT_TRUE(m_settings.ReadBoolean(kShowGridLines));
        EXPECT_EQ(m_settings.ReadColor(kColor), 0xFF8000u);
        EXPECT_EQ(m_settings.ReadNumber(kNumber), 2.5);
        EXPECT_EQ(m_settings.ReadTextOrDefault(kTheme), "system");
    };
    expectDefaults();
    for (const SSetting* setting : std::initializer_list<const SSetting*>{&kShowGridLines, &kColor, &kNumber, &kTheme})
        m_registry.WriteDword(kApplicationSettingsKey, setting->name, 0);
    expectDefaults();
    EXPECT_EQ(m_settings.ReadText(kTheme), "Config Error") << "a value that is no text cannot be read";
    Store(kShowGridLines, "");
    Store(kTheme, "");
    EXPECT_TRUE(m_settings.ReadBoolean(kShowGridLines));
    EXPECT_EQ(m_settings.ReadTextOrDefault(kTheme), "") << "an empty text is a text";
    EXPECT_THAT(m_log.texts, IsEmpty());
}

TEST_F(CSettingsTest, ABadValueIsReportedOnceAndWrittenBackAsItIsUsed) {
    Store(kSearchType, "one");
    Store(kMaximized, "1");
    Store(kColor, "0x1000000");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(m_settings.ReadInteger(kSearchType), 0);
        EXPECT_TRUE(m_settings.ReadBoolean(kMaximized));
        EXPECT_EQ(m_settings.ReadColor(kColor), 0xFF8000u);
    }
    EXPECT_EQ(Stored(kSearchType) + Stored(kMaximized) + Stored(kColor), "0true0xFF8000");
    EXPECT_THAT(m_log.texts, ElementsAre(HasSubstr("The value \"one\" for \"Search Type\" is not a valid number"),
                                         HasSubstr("The value \"1\" for \"Maximized\" was stored in an older format"),
                                         HasSubstr("The color value \"0x1000000\" for \"Color\"")));
}

TEST_F(CSettingsTest, TheTableDeclaresEachSettingOnceAndTheDocumentationShowsIt) {
    const std::string page = ReadFile(ZW_DOCS "/settings.md");
    constexpr std::string_view kKinds[] = {"text", "path", "integer", "boolean", "number", "colour", "list"};
    std::set<std::string_view, SNameLess> names;
    for (const SSetting* setting : kAllSettings) {
        const auto& [name, kind, defaultText, purpose] = *setting;
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_EQ(ValidateSetting(name, defaultText, static_cast<int>(kind), "bad", nullptr), defaultText);
        EXPECT_THAT(page, HasSubstr(fmt::format("| {} | {} | {} | {} |\n", name, kKinds[static_cast<int>(kind)],
                                                defaultText.empty() ? "" : fmt::format("`{}`", defaultText), purpose)));
    }
}

TEST_F(CSettingsTest, TheLogsFolderAndCategoriesAreReadAndAMissingFolderWrittenBack) {
    const std::string path = ReadLogPath(m_registry);
    EXPECT_THAT(path, testing::EndsWith("/zantrel/log"));
    EXPECT_EQ(m_registry.Read(kStartupKey, kLogPathValue)->text, path);
    m_registry.WriteText(kStartupKey, kLogPathValue, "");
    EXPECT_EQ(ReadLogPath(m_registry), "");
    m_registry.WriteDword(kStartupKey, kLogPathValue, 3);
    EXPECT_EQ(ReadLogPath(m_registry), path);
    EXPECT_EQ(m_registry.Read(kStartupKey, kLogPathValue)->kind, ERegistryKind::Text);
    m_settings.WriteText(kLogCategories, "L1Data;Information;Lots");
    ApplyLogCategories(m_settings);
    EXPECT_TRUE(IsOn(ELogCategory::L1Data) && !IsOn(ELogCategory::L1Error));
    EXPECT_THAT(m_log.texts, ElementsAre(HasSubstr("ignored: Lots")));
}
