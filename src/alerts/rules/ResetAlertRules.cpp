#include "alerts/rules/ResetAlertRules.h"

#include <cmath>

namespace vx {

double ThresholdOfPercent(double base, double percent) {
    const double step = std::fabs(percent) / 100 * std::fabs(base);
    return percent > 0 ? base + step : base - step;
}

double PercentOfThreshold(double base, double threshold) {
    if (base == 0) return 0;
    const double ratio = std::fabs(threshold / base) * 100;
    return threshold > base ? ratio - 100 : -(100 - ratio);
}

} // namespace vx
