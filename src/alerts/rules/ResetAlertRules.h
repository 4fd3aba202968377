#pragma once

namespace vx {

// How the two numbers of the reset dialog follow each other: how far the threshold moves in percent of the old one
// (the base), and the new threshold.

/// The threshold that lies so many percent of the base's size above it, or below it for a negative percent.
double ThresholdOfPercent(double base, double percent);

/// How many percent a threshold differs from the base, by the sizes of both: q = |threshold / base| in percent gives
/// q - 100 above the base, else -(100 - q), which is -0 at the base itself. 0 for a base of 0.
double PercentOfThreshold(double base, double threshold);

} // namespace vx
