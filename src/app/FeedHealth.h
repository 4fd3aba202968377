#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// Tells a live feed from a quiet or a dead one, whatever the feed client's last status word was.
///
/// Units   times in milliseconds of a clock that never goes back
/// Thread  GUI thread only
class CFeedHealth {
public:
    /// Both ports silent for this long: the feed counts as silent.
    static constexpr int64_t kSilentMs = 5000;

    explicit CFeedHealth(int64_t startMs) : m_startMs(startMs) {}

    void OnAdminLine(int64_t nowMs) { m_adminMs = nowMs; }
    void OnLevel1Line(int64_t nowMs) { m_level1Ms = nowMs; }
    /// A line that carries values of a symbol.
    void OnDataLine(int64_t nowMs) { m_dataMs = m_level1Ms = nowMs; }
    void SetStatusWord(std::string_view word) { m_word = word; }

    bool IsSilent(int64_t nowMs) const;
    /// "Feed: Connected", "Feed: Not Connected", "Feed: silent 7 s", or "Feed: waiting" before anything was heard.
    std::string StateText(int64_t nowMs) const;
    /// "Data: 3 s ago", "Data: now" below one second, "Data: none yet" before the first.
    std::string AgeText(int64_t nowMs) const;

private:
    std::optional<int64_t> LastHeardMs() const;

    int64_t m_startMs;
    std::optional<int64_t> m_adminMs, m_level1Ms, m_dataMs;
    std::string m_word;
};

} // namespace vx
