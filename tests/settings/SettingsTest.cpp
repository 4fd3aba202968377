#include "settings/Settings.h"

#include "base/Log.h"
#include "base/Registry.h"
#include "settings/ConfigWriter.h"
#include "settings/ValidateSetting.h"
#include "support/FakeClock.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <fmt/format.h>
#include <limits>
#include <set>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// Kinds that no setting of the table has today.
constexpr SNumberSetting kNumber{{"Number", ESettingKind::Number, "2.5", ""}};
constexpr SColorSetting kColor{{"Color", ESettingKind::Color, "0xFF8000", ""}};

class SettingsTest : public testing::Test {
protected:
    SettingsTest() {
        m_settings.SetLogger(m_logger);
        SetLogSink([this](const SLogEvent& event) { m_log.push_back(event.text); });
    }
    ~SettingsTest() override {
        SetLogSink({});
        SetLogCategories(ReadLogCategories(kDefaultLogCategories));
    }

    void Store(const SSetting& setting, std::string_view text) {
        m_registry.WriteText(kApplicationSettingsKey, setting.name, text);
    }
    std::string Stored(const SSetting& setting) { return m_registry.Read(kApplicationSettingsKey, setting.name)->text; }

    CTempFolder m_folder;
    CRegistry m_registry{m_folder.Path()};
    CApplicationProfile m_profile{m_registry, kApplicationProfileKey};
    CConfigWriter m_writer{m_profile};
    CSettings m_settings{m_writer};
    std::shared_ptr<CConfigLogger> m_logger = std::make_shared<CConfigLogger>();
    std::vector<std::string> m_log;
};

} // namespace

TEST_F(SettingsTest, ValuesComeBackAsTheyWereWritten) {
    for (const double number : {0.1, -1e300, 5e-324, std::numeric_limits<double>::max()}) {
        EXPECT_TRUE(m_settings.WriteNumber(kNumber, number));
        EXPECT_EQ(m_settings.ReadNumber(kNumber), number);
    }
    for (const int32_t number : {-5, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
        EXPECT_TRUE(m_settings.WriteInteger(kRectLeft, number));
        EXPECT_EQ(m_settings.ReadInteger(kRectLeft), number);
    }
    EXPECT_TRUE(m_settings.WriteBoolean(kShowShading, false));
    EXPECT_FALSE(m_settings.ReadBoolean(kShowShading));
    EXPECT_EQ(Stored(kShowShading), "false");
    EXPECT_TRUE(m_settings.WriteColor(kColor, 0x00FF01));
    EXPECT_EQ(m_settings.ReadColor(kColor), 0x00FF01u);
    EXPECT_FALSE(m_settings.WriteColor(kColor, 0x1000000));
    EXPECT_TRUE(m_settings.WriteText(kCurrentSymbol, "IBM\x92;,@="));
    EXPECT_EQ(m_settings.ReadText(kCurrentSymbol), "IBM\x92;,@=");
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(SettingsTest, DefaultsApplyWhereNothingUsableIsStored) {
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
    EXPECT_THAT(m_log, IsEmpty());

    CRegistry nowhere(m_folder / "registry.txt/x");
    CApplicationProfile profile(nowhere, kApplicationProfileKey);
    CConfigWriter writer(profile);
    EXPECT_EQ(CSettings(writer).ReadText(kCurrentSymbol), "Config Error");
    EXPECT_FALSE(CSettings(writer).WriteText(kCurrentSymbol, "IBM"));
}

TEST_F(SettingsTest, ABadValueIsReportedOnceAndWrittenBackAsItIsUsed) {
    Store(kSearchType, "one");
    Store(kMaximized, "1");
    Store(kColor, "0x1000000");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(m_settings.ReadInteger(kSearchType), 0);
        EXPECT_TRUE(m_settings.ReadBoolean(kMaximized));
        EXPECT_EQ(m_settings.ReadColor(kColor), 0xFF8000u);
    }
    EXPECT_EQ(Stored(kSearchType) + Stored(kMaximized) + Stored(kColor), "0true0xFF8000");
    EXPECT_THAT(m_log, ElementsAre("Settings: The value \"one\" for \"Search Type\" is not a valid number and has been "
                                   "reset to the default.",
                                   "Settings: The value \"1\" for \"Maximized\" was stored in an older format and has "
                                   "been updated automatically.",
                                   HasSubstr("The color value \"0x1000000\" for \"Color\"")));
    m_logger.reset();
    Store(kSearchType, "two");
    EXPECT_EQ(m_settings.ReadInteger(kSearchType), 0);
    EXPECT_THAT(m_log, testing::SizeIs(3));
    EXPECT_EQ(Stored(kSearchType), "two") << "what nobody was told of stays until somebody can be";
}

TEST_F(SettingsTest, ABadValueThatCannotBeWrittenBackIsReportedAtEveryRead) {
    struct CReadOnly final : CConfigWriterMux {
        std::string ReadString(std::string_view, std::string_view) override { return stored; }
        bool WriteString(std::string_view, std::string_view) override { return ++attempts, false; }
        std::string stored = "one";
        int attempts = 0;
    } readOnly;
    CFakeClock clock;
    CSettings settings(readOnly);
    settings.SetLogger(m_logger);
    const auto reads = [&] { return settings.ReadInteger(kSearchType), m_log.size(); };
    EXPECT_EQ(reads(), 1u);
    EXPECT_EQ(reads(), 2u);
    EXPECT_EQ(readOnly.attempts, 1) << "a store that hangs would hold up every one of them";
    clock.elapsedMs += CSettings::kWriteBackRetryMs;
    EXPECT_EQ(reads(), 3u);
    EXPECT_EQ(readOnly.attempts, 2);
    readOnly.stored = "1";
    EXPECT_EQ(reads(), 3u);
}

TEST_F(SettingsTest, TheWriterPutsTheProfilesBaseBack) {
    m_profile.WriteString("Same", "profile's");
    m_writer.WriteString("Same", "writer's");
    EXPECT_EQ(m_writer.ReadString("Same", ""), "writer's");
    EXPECT_EQ(m_profile.ReadString("Same", ""), "profile's");
    EXPECT_EQ(m_registry.Read(kApplicationSettingsKey, "Same")->text, "writer's");
}

TEST_F(SettingsTest, TheTableDeclaresEachSettingOnceAndTheDocumentationShowsIt) {
    const std::string page = ReadFile(ZW_DOCS "/settings.md");
    std::set<std::string_view, SNameLess> names;
    for (const SSetting* setting : kAllSettings) {
        EXPECT_TRUE(names.insert(setting->name).second) << setting->name;
        EXPECT_EQ(ValidateSetting(setting->name, setting->defaultText, static_cast<int>(setting->kind), "bad", nullptr),
                  setting->defaultText);
        constexpr std::string_view kKinds[] = {"text", "path", "integer", "boolean", "number", "colour", "list"};
        const std::string row = fmt::format(
            "| {} | {} | {} | {} |\n", setting->name, kKinds[static_cast<int>(setting->kind)],
            setting->defaultText.empty() ? "" : fmt::format("`{}`", setting->defaultText), setting->purpose);
        EXPECT_THAT(page, HasSubstr(row));
    }
}

TEST_F(SettingsTest, TheLogFolderIsWrittenBackOnlyWhereNoneIsStored) {
    const std::string path = ReadLogPath(m_registry);
    EXPECT_THAT(path, testing::EndsWith("/zantrel/log"));
    EXPECT_EQ(m_registry.Read(kStartupKey, kLogPathValue)->text, path);
    m_registry.WriteText(kStartupKey, kLogPathValue, "");
    EXPECT_EQ(ReadLogPath(m_registry), "");
    m_registry.WriteDword(kStartupKey, kLogPathValue, 3);
    EXPECT_EQ(ReadLogPath(m_registry), path);
    EXPECT_EQ(m_registry.Read(kStartupKey, kLogPathValue)->kind, ERegistryKind::Text);
}

TEST_F(SettingsTest, TheStoredLogCategoriesComeIntoForce) {
    m_settings.WriteText(kLogCategories, "L1Data;Information;Lots");
    ApplyLogCategories(m_settings);
    EXPECT_TRUE(IsOn(ELogCategory::L1Data));
    EXPECT_FALSE(IsOn(ELogCategory::L1Error));
    EXPECT_THAT(m_log, ElementsAre(HasSubstr("ignored: Lots")));
}
