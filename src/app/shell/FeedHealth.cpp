// SPDX-License-Identifier: MIT
#include "app/shell/FeedHealth.h"

#include <fmt/format.h>

#include <utility>

namespace vx {

namespace {

// 7 s, 12 min, 3 h: short, and not moving every second once it is long.
std::string Duration(int64_t ms) {
    const int64_t seconds = ms / 1000;
    if (seconds < 120) return fmt::format("{} s", seconds);
    if (seconds < 7200) return fmt::format("{} min", seconds / 60);
    return fmt::format("{} h", seconds / 3600);
}

} // namespace

void CFeedHealth::Tick(int64_t nowMs) {
    m_nowMs = nowMs;
    if (std::exchange(m_lineSeen, false)) m_heardMs = nowMs;
    if (std::exchange(m_dataSeen, false)) m_dataMs = nowMs;
}

std::string CFeedHealth::StateText() const {
    if (m_end == EFeedEnd::Unreachable) return "Feed: no connection";
    if (m_end != EFeedEnd::None) return "Feed: connection ended";
    if (IsSilent()) return "Feed: silent " + Duration(m_nowMs - m_heardMs);
    return m_word.empty() ? "Feed: waiting" : "Feed: " + m_word;
}

std::string CFeedHealth::AgeText() const {
    if (!m_dataMs) return "Data: none yet";
    const int64_t age = m_nowMs - *m_dataMs;
    return age < 1000 ? "Data: now" : "Data: " + Duration(age) + " ago";
}

} // namespace vx
