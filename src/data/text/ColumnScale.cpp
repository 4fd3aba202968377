// SPDX-License-Identifier: MIT
#include "data/text/ColumnScale.h"

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

constexpr double kStepsOfSpan = 20;
/// Bounds narrow when a quarter more than what the numbers need is still less than there is.
constexpr double kRoomToNarrow = 1.25;

bool IsDrawn(double number) { return std::isfinite(number) && std::abs(number) <= CColumnScale::kMost; }

/// The least of 1, 2, 5, 10, 20, 50 ... (or 0.5, 0.2, 0.1 ...) that a number above 0 does not exceed.
double RoundUp(double number) {
    const double power = std::pow(10.0, std::floor(std::log10(number)));
    if (power <= 0) return number; // Smaller than any power of ten that can be written.
    for (const double factor : {1.0, 2.0, 5.0})
        if (number <= factor * power) return factor * power;
    return 10 * power;
}

} // namespace

void CColumnScale::SBounds::Take(double number) {
    least = std::min(least, number);
    most = std::max(most, number);
}

void CColumnScale::SBounds::RoundOut() {
    if (IsEmpty() || Span() <= 0) return;
    const double step = RoundUp(Span()) / kStepsOfSpan;
    const double low = std::floor(least / step) * step;
    const double high = std::ceil(most / step) * step;
    // Numbers that are close together and far from zero may have no round ones between them.
    if (std::isfinite(low) && low <= least) least = low;
    if (std::isfinite(high) && high >= most) most = high;
}

bool CColumnScale::Take(double number) {
    if (!IsDrawn(number)) return false;
    m_pass.Take(number);
    bool changed = false;
    if (std::abs(number) > m_reach) {
        m_reach = RoundUp(std::abs(number));
        changed = true;
    }
    if (number < m_bounds.least || number > m_bounds.most) {
        m_bounds.Take(number);
        m_bounds.RoundOut();
        changed = true;
    }
    return changed;
}

bool CColumnScale::EndPass() {
    SBounds seen = m_pass;
    m_pass = {};
    if (seen.IsEmpty()) return false;
    bool changed = false;
    const double most = std::max(std::abs(seen.least), std::abs(seen.most));
    if (most > 0 && RoundUp(most * kRoomToNarrow) < m_reach) {
        m_reach = RoundUp(most * kRoomToNarrow);
        changed = true;
    }
    seen.RoundOut();
    if (seen.Span() * kRoomToNarrow < m_bounds.Span()) {
        m_bounds = seen;
        changed = true;
    }
    return changed;
}

std::optional<double> CColumnScale::Share(double number) const {
    if (!IsDrawn(number) || std::abs(number) > m_reach || m_reach <= 0) return std::nullopt;
    return number / m_reach;
}

std::optional<double> CColumnScale::Level(double number) const {
    if (!IsDrawn(number) || number < m_bounds.least || number > m_bounds.most || m_bounds.Span() <= 0)
        return std::nullopt;
    return (number - m_bounds.least) / m_bounds.Span();
}

} // namespace vx
