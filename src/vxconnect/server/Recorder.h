#pragma once

#include "vxconnect/common/Feed.h"
#include "vxconnect/common/SendQueue.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace vx::sim {

/// Writes what a feed tells into a file, whoever watches: each symbol's fundamentals and summary when it comes to be
/// watched, every update, the regional quotes that somebody wants, headlines, and the market's time every second. All
/// fields, in the standard order; lines as in TrafficLine.h, stamped with this computer's local time.
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
