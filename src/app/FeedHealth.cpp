#include "app/FeedHealth.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

// 7 s, 12 min, 3 h: short, and never jumping sideways every second once it is long.
std::string Duration(int64_t ms) {
    const int64_t seconds = ms / 1000;
    if (seconds < 120) return fmt::format("{} s", seconds);
    if (seconds < 7200) return fmt::format("{} min", seconds / 60);
    return fmt::format("{} h", seconds / 3600);
}

} // namespace

std::optional<int64_t> CFeedHealth::LastHeardMs() const {
    if (!m_adminMs) return m_level1Ms;
    if (!m_level1Ms) return m_adminMs;
    return std::max(*m_adminMs, *m_level1Ms);
}

bool CFeedHealth::IsSilent(int64_t nowMs) const { return nowMs - LastHeardMs().value_or(m_startMs) >= kSilentMs; }

std::string CFeedHealth::StateText(int64_t nowMs) const {
    if (IsSilent(nowMs)) return "Feed: silent " + Duration(nowMs - LastHeardMs().value_or(m_startMs));
    return m_word.empty() ? "Feed: waiting" : "Feed: " + m_word;
}

std::string CFeedHealth::AgeText(int64_t nowMs) const {
    if (!m_dataMs) return "Data: none yet";
    const int64_t age = nowMs - *m_dataMs;
    return age < 1000 ? "Data: now" : "Data: " + Duration(age) + " ago";
}

} // namespace vx
