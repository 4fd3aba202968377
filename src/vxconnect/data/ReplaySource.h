// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/data/DataSource.h"
#include "vxconnect/data/LineFile.h"
#include "vxconnect/data/Recording.h"

#include <optional>
#include <string>

namespace vx::sim {

/// A recording, served as the feed that it was: each line goes to those who watch its symbol, headlines go to
/// everyone, the market's time is the recorded one, at the recorded pace or a multiple of it. The first fundamentals
/// and the first summary of each symbol are there from the start. It begins once somebody watches a symbol; at its end
/// the last values stay.
class CReplaySource final : public CDataSource {
public:
    static constexpr int64_t kLongestPauseMs = 60'000; ///< Longer ones are cut to this.
    static constexpr int64_t kUntimedMs = 1;           ///< From a line without time to the next.

    explicit CReplaySource(const SOptions& options);

    /// Reads the whole file once.
    ///
    /// Returns what is wrong with it, empty for nothing
    std::string Open();

    std::string Kind() const override { return "replay"; }
    std::string Detail() const override { return "recording"; }

protected:
    void Advance(double seconds) override;

private:
    bool Scan();
    bool ReadNext();
    void PlayLine(std::string_view line);
    void PlayRow(std::string_view line);
    void PlayRegion(std::string_view line);
    void PlayHeadline(std::string_view line);

    const std::string m_path;
    const double m_speed;
    CLineFile m_file;
    std::optional<STrafficLine> m_next;
    std::optional<int64_t> m_lastTimeMs; // Of the newest line that had a time.
    double m_nextMs = 0;                 // When the next line is due, from the begin.
    double m_nowMs = 0;
    SRow m_row;
    bool m_ended = false;
};

/// Reads an update, summary or fundamental line by position, in the standard order.
///
/// Errors  false for a line without a usable symbol
bool ReadDataLine(std::string_view line, SRow& row);

} // namespace vx::sim
