// SPDX-License-Identifier: MIT
#include "settings/Settings.h"

#include "base/Clock.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/Number.h"
#include "base/Registry.h"
#include "settings/ConfigWriter.h"
#include "settings/ValidateSetting.h"

#include <fmt/format.h>

namespace vx {

std::string CSettings::ReadValid(const SSetting& setting) const {
    const std::string stored = m_writer.ReadString(setting.name, setting.defaultText);
    const std::shared_ptr<CConfigLogger> logger = m_logger.lock();
    std::string used =
        ValidateSetting(setting.name, stored, static_cast<int>(setting.kind), setting.defaultText, logger.get());
    if (logger && used != stored) WriteBack(setting, used);
    return used;
}

void CSettings::WriteBack(const SSetting& setting, std::string_view text) const {
    CClock& clock = CClock::Instance();
    if (clock.MonotonicMs() < m_nextWriteBackMs) return;
    const bool written = m_writer.WriteString(setting.name, text);
    m_nextWriteBackMs = written ? 0 : clock.MonotonicMs() + kWriteBackRetryMs;
}

/// A text of the setting's kind, whatever the store says.
std::string CSettings::ReadUsable(const SSetting& setting) const {
    std::string text = ReadValid(setting);
    return text.empty() || text == kConfigError ? std::string(setting.defaultText) : text;
}

std::string CSettings::ReadTextOrDefault(const STextSetting& setting) const {
    std::string text = ReadValid(setting);
    return text == kConfigError ? std::string(setting.defaultText) : text;
}

int32_t CSettings::ReadInteger(const SIntegerSetting& setting) const { return ReadInt32(ReadUsable(setting)); }

bool CSettings::ReadBoolean(const SBooleanSetting& setting) const { return ReadUsable(setting) == "true"; }

double CSettings::ReadNumber(const SNumberSetting& setting) const { return ReadDouble(ReadUsable(setting)); }

uint32_t CSettings::ReadColor(const SColorSetting& setting) const {
    return ReadWholeUnsigned(ReadUsable(setting)).value_or(0);
}

bool CSettings::WriteText(const STextSetting& setting, std::string_view text) {
    return m_writer.WriteString(setting.name, text);
}

bool CSettings::WriteInteger(const SIntegerSetting& setting, int32_t number) {
    return m_writer.WriteString(setting.name, fmt::format("{}", number));
}

bool CSettings::WriteBoolean(const SBooleanSetting& setting, bool value) {
    return m_writer.WriteString(setting.name, value ? "true" : "false");
}

bool CSettings::WriteNumber(const SNumberSetting& setting, double number) {
    return m_writer.WriteString(setting.name, fmt::format("{}", number));
}

bool CSettings::WriteColor(const SColorSetting& setting, uint32_t color) {
    return color < 0x1000000 && m_writer.WriteString(setting.name, fmt::format("0x{:06X}", color));
}

std::string ReadLogPath(CRegistry& registry) {
    const std::optional<SRegistryValue> stored = registry.Read(kStartupKey, kLogPathValue);
    if (stored && stored->kind == ERegistryKind::Text) return stored->text;
    std::string path = UserStateFolder() + "/log";
    if (registry.IsReadable()) registry.WriteText(kStartupKey, kLogPathValue, path);
    return path;
}

void ApplyLogCategories(const CSettings& settings) {
    std::string unknown;
    SetLogCategories(ReadLogCategories(settings.ReadTextOrDefault(kLogCategories), &unknown));
    if (!unknown.empty())
        LogInformation(fmt::format("Settings: \"{}\" holds names that are not log categories and are ignored: {}",
                                   kLogCategories.name, unknown));
}

} // namespace vx
