// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vx {

/// What an event of the log is about. Off is no category: in a list of categories it means "none".
enum class ELogCategory {
    Admin,
    L1Data,
    L1Request,
    L1System,
    L1Error,
    L2Data,
    L2Request,
    L2System,
    L2Error,
    LookupData,
    LookupRequest,
    LookupError,
    Information,
    Debug,
    Connectivity,
    Off,
};
inline constexpr int kLogCategoryCount = static_cast<int>(ELogCategory::Off);

/// Which way a line went; Status for the program's own events.
enum class ELogDirection { FromClient, ToClient, FromServer, ToServer, Status };

/// The text of a category or direction as written in the log and in the list of categories.
std::string_view LogName(ELogCategory category);
std::string_view LogName(ELogDirection direction);

/// A set of categories, one bit for each: 1 << category.
using LogCategories = uint32_t;

/// The categories that are on until SetLogCategories says otherwise: everything but traffic and debugging.
inline constexpr std::string_view kDefaultLogCategories =
    "L1System;L1Error;L2System;L2Error;LookupError;Information;Connectivity";

/// Reads a list of category names, separated by ";", "," or blanks, without regard to case. "Off" anywhere in the list
/// and the empty list give none; names that are no category are put into unknown, joined by ";".
LogCategories ReadLogCategories(std::string_view list, std::string* unknown = nullptr);

void SetLogCategories(LogCategories categories);

namespace detail {
extern std::atomic<LogCategories> g_logOn;
}

/// Whether events of a category go anywhere; ask before a text is made for the log.
///
/// Thread  any; costs one load
inline bool IsOn(ELogCategory category) {
    return (detail::g_logOn.load(std::memory_order_relaxed) >> static_cast<int>(category) & 1u) != 0;
}

/// An event as the log writes it, without its time: "[L1Data] [FROM SERVER] text", the text as UTF-8, bytes that do not
/// print and the backslash as \xNN.
std::string LogLine(ELogCategory category, ELogDirection direction, std::string_view text);

/// Adds one event to the log, as one line: "2024-01-31 09:30:00.123 [L1Data] [FROM SERVER] text".
///
/// The text is Windows-1252 and is written to the file as UTF-8; bytes that do not print are written \xNN, line ends
/// included. Nothing happens when the category is not on.
///
/// Errors  none, nothing throws; what cannot be written is counted, and the count is written once it can be
/// Thread  any; the file is written by a thread of the log, and a caller waits only when 8192 events are on their way
void Log(ELogCategory category, ELogDirection direction, std::string_view text) noexcept;

/// An event of the program itself: category Information, direction Status.
void LogInformation(std::string_view text) noexcept;

struct SLogConfig {
    std::string folder;   ///< Made when missing; empty for no file.
    bool console = false; ///< Coloured lines on standard error too.
    uint64_t maxFileBytes = 50 * 1024 * 1024;
    int keptFiles = 5; ///< Of all days together, the one being written included.
};

/// Starts the log in a folder: one file a day ("zantrel-2024-01-31.log", and ".2.log" and on when it grows beyond its
/// size), the newest few kept. Events logged before, at most 1000, go in first. Called again, it ends the old log.
///
/// Errors  false when the folder takes no file: one message on standard error, and events go nowhere
/// Thread  GUI thread, once at start-up
bool ConfigureLog(const SLogConfig& config) noexcept;

/// Waits until every event so far is in the file. The end of the program does the same on its own.
void FlushLog() noexcept;

struct SLogEvent {
    ELogCategory category = ELogCategory::Off;
    ELogDirection direction = ELogDirection::Status;
    std::string text; ///< As given to Log.
};
using LogSink = std::function<void(const SLogEvent&)>;

/// Hands every event that is on to a function instead, at once and on the caller's thread, for tests; an empty function
/// takes it back.
///
/// Returns the function that was in place
LogSink SetLogSink(LogSink sink);

} // namespace vx
