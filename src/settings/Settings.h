// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingsTable.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vx {

class CConfigLogger;
class CConfigWriterMux;
class CRegistry;

/// Reads and writes the application-wide settings by type. Every text that comes back from the store passes through
/// ValidateSetting first. A repaired or reset value that was reported is written back, so that it is reported once;
/// while the store does not take it, every read reports it.
///
/// Errors  readers always give a value. Where the stored text is empty or cannot be read, ReadText returns it as it
///         is (so "" or "Config Error"), the others the setting's default. Writers return whether the value is stored
class CSettings {
public:
    /// Pause between attempts to write a value back: a store whose lock another program keeps holds each one up.
    static constexpr int64_t kWriteBackRetryMs = 5000;

    explicit CSettings(CConfigWriterMux& writer) : m_writer(writer) {}

    /// Names who gets the reports about bad values, for as long as that logger lives.
    void SetLogger(std::weak_ptr<CConfigLogger> logger) { m_logger = std::move(logger); }

    std::string ReadText(const STextSetting& setting) const { return ReadValid(setting); }
    /// As ReadText, but the default instead of "Config Error".
    std::string ReadTextOrDefault(const STextSetting& setting) const;
    int32_t ReadInteger(const SIntegerSetting& setting) const;
    bool ReadBoolean(const SBooleanSetting& setting) const;
    double ReadNumber(const SNumberSetting& setting) const;
    /// 0xRRGGBB, at most 24 bits.
    uint32_t ReadColor(const SColorSetting& setting) const;

    bool WriteText(const STextSetting& setting, std::string_view text);
    bool WriteInteger(const SIntegerSetting& setting, int32_t number);
    bool WriteBoolean(const SBooleanSetting& setting, bool value);
    /// Writes as many digits as reading needs to give the same number.
    bool WriteNumber(const SNumberSetting& setting, double number);
    /// False, and nothing written, for more than 24 bits.
    bool WriteColor(const SColorSetting& setting, uint32_t color);

private:
    std::string ReadValid(const SSetting& setting) const;
    std::string ReadUsable(const SSetting& setting) const;
    void WriteBack(const SSetting& setting, std::string_view text) const;

    CConfigWriterMux& m_writer;
    std::weak_ptr<CConfigLogger> m_logger;
    mutable int64_t m_nextWriteBackMs = 0; ///< Of CClock's monotonic time.
};

/// The folder of the log, from the start-up key. A missing path, or one that is no text, is replaced in the registry
/// by the default, UserStateFolder() + "/log".
///
/// Shape   empty when the user stored an empty path: no log file is wanted
std::string ReadLogPath(CRegistry& registry);

/// Puts the stored list of categories into force; a name that is no category gives one log line and is ignored.
void ApplyLogCategories(const CSettings& settings);

} // namespace vx
