#include "vxconnect/data/Complaints.h"

#include <fmt/format.h>

namespace vx::sim {

void CComplaints::Line(uint64_t number, std::string_view what) {
    ++m_count;
    if (m_count > kMostTold && m_count % kStep != 0) return;
    const std::string count = m_count > kMostTold ? fmt::format(" (error {})", m_count) : std::string();
    m_say(fmt::format("{} line {}: {}{}", m_name, number, what, count));
    if (m_count == kMostTold) m_say(fmt::format("{}: from here on, only every {}th error is reported", m_name, kStep));
}

void CComplaints::Whole(std::string_view what) const { m_say(fmt::format("{}: {}", m_name, what)); }

} // namespace vx::sim
