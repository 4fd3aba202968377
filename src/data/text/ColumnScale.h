// SPDX-License-Identifier: MIT
#pragma once

#include <limits>
#include <optional>

namespace vx {

/// How far the numbers of a column reach: what bars and heat are drawn in proportion to.
///
/// Shape   the bounds are round numbers, so that what is drawn of one number moves rarely because of another. They
///         widen with each number that lies outside, and narrow at the end of a pass over all numbers of the column,
///         when that leaves room
/// Errors  numbers that are not finite or beyond kMost are passed over: nothing is drawn of them
class CColumnScale {
public:
    static constexpr double kMost = 1e300;

    /// Returns whether the bounds are others now.
    bool Take(double number);
    /// Every number of the column was taken since the last call, or since the beginning; returned as above.
    bool EndPass();
    /// The numbers taken since the last pass ended were not all.
    void DropPass() { m_pass = {}; }

    /// How much of the greatest distance from zero a number has: -1..1. Nothing for a number that was not taken.
    std::optional<double> Share(double number) const;
    /// Where a number lies between the least (0) and the greatest (1). Nothing also where all are the same.
    std::optional<double> Level(double number) const;

private:
    struct SBounds {
        double least = std::numeric_limits<double>::infinity();
        double most = -std::numeric_limits<double>::infinity();

        bool IsEmpty() const { return least > most; }
        double Span() const { return most - least; }
        void Take(double number);
        void RoundOut();
    };

    double m_reach = 0; ///< 1, 2 or 5 times a power of ten.
    SBounds m_bounds;   ///< At twentieths of such a number.
    SBounds m_pass;
};

} // namespace vx
