// SPDX-License-Identifier: MIT
#pragma once

#include "feed/session/FeedSession.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vx {

/// Distinguishes a live feed from a quiet or a dead one, whatever the feed client's last status word was.
///
/// Noting a line only sets a flag, because it happens on every line; Tick turns the flags into times.
///
/// Units   times in milliseconds of a clock that never goes back, as precise as Tick is frequent
class CFeedHealth {
public:
    /// Both the admin and the level-1 port silent for this long: the feed counts as silent.
    static constexpr int64_t kSilentMs = 5000;

    explicit CFeedHealth(int64_t startMs) : m_nowMs(startMs), m_heardMs(startMs) {}

    /// A line came on the admin or the level-1 port.
    void NoteLine() { m_lineSeen = true; }
    /// A line came that carries values of a symbol.
    void NoteData() { m_lineSeen = m_dataSeen = true; }
    /// The state that the feed client reports: "Connected", "Not Connected".
    /// Longer ones are cut: it is shown in a pane.
    static constexpr size_t kLongestWord = 40;
    void SetStatusWord(std::string_view word) { m_word = word.substr(0, kLongestWord); }
    /// What has become of the connections; returns whether that is new.
    bool SetEnd(EFeedEnd end) { return std::exchange(m_end, end) != end; }
    void Tick(int64_t nowMs);

    bool IsSilent() const { return m_nowMs - m_heardMs >= kSilentMs; }
    /// Whether quotes can still come.
    bool CanHear() const { return m_end == EFeedEnd::None || m_end == EFeedEnd::Status; }
    /// Whether the values on the screen follow the market: reported as connected, not silent and not ended.
    bool IsLive() const { return m_word == "Connected" && !IsSilent() && CanHear(); }
    /// "Feed: connection ended", "Feed: no connection", "Feed: Connected", "Feed: Not Connected", "Feed: silent 7 s",
    /// or "Feed: waiting" until something was heard or could have been.
    std::string StateText() const;
    /// "Data: 3 s ago", "Data: now" below one second, "Data: none yet" before the first.
    std::string AgeText() const;

private:
    int64_t m_nowMs;
    int64_t m_heardMs;
    std::optional<int64_t> m_dataMs;
    bool m_lineSeen = false;
    bool m_dataSeen = false;
    EFeedEnd m_end = EFeedEnd::None;
    std::string m_word;
};

} // namespace vx
