// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Feed.h"
#include "vxconnect/common/SendQueue.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// One line of level-1 traffic, read from a recording.
struct STrafficLine {
    std::optional<int64_t> timeMs; ///< When it came, in milliseconds from some day on; nothing: not told.
    std::string text;              ///< Windows-1252, without line end and control characters.
};

// Recordings have the form of the program's log: "2024-01-31 09:30:00.123 [L1Data] [FROM SERVER] text", the text as
// UTF-8, bytes that do not print and, here, the backslash as \xNN.

/// Reads a line of a recording, or a bare data line without time ("Q,IBM,...").
///
/// Errors  nothing for a line that is none from the level-1 feed
std::optional<STrafficLine> ReadTrafficLine(std::string_view line);

/// A data line for a recording, with line end.
///
/// Shape   time: "2024-01-31 09:30:00.123"; the text is Windows-1252, its line end is dropped
std::string TrafficText(std::string_view time, std::string_view text);

/// Writes what a feed tells into a file, whoever watches: each symbol's fundamentals and summary when it comes to be
/// watched, every update, the regional quotes that somebody wants, headlines, and the market's time every second. All
/// fields, in the standard order; lines as above, stamped with this computer's local time.
///
/// Owns    the file
/// Errors  when the file takes no more, standard error says so once and the recording ends
/// Thread  the feed's
class CRecorder final : public CFeedListener {
public:
    /// The feed outlives the recorder.
    explicit CRecorder(CFeed& feed) : m_feed(feed) {}

    /// Begins a new file. What it held before is gone.
    ///
    /// Returns why it cannot be written, in one line; empty for success
    std::string Open(const std::string& path);

    void OnWatched(const SWatched& watched) override;
    void OnUpdate(const SWatched& watched, const SUpdate& update) override;
    /// Any other data line, with its line end.
    void OnLine(std::string_view line);
    /// Once a second: the market's time, and everything goes to the file.
    void OnTime();

private:
    void Write();
    const std::string& Now();

    struct SClose {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    CFeed& m_feed;
    const CFieldSelection m_selection;
    CSendQueue m_lines; // Told at the same moment, not yet written.
    std::string m_path;
    std::unique_ptr<std::FILE, SClose> m_file;
    int64_t m_nowMs = -1;
    std::string m_now;
};

} // namespace vx::sim
