#include "vxconnect/market/Sector.h"

#include <array>
#include <cstddef>

namespace vx::sim {

namespace {

constexpr std::array<SSector, 21> kSectors = {{
    {ESector::Technology, 0.016, 3571, 334111, 1.15}, {ESector::Semiconductors, 0.024, 3674, 334413, 1.45},
    {ESector::Software, 0.020, 7372, 513210, 1.25},   {ESector::Media, 0.021, 7370, 519290, 1.20},
    {ESector::Retail, 0.017, 5331, 455211, 0.95},     {ESector::Consumer, 0.011, 2080, 312111, 0.60},
    {ESector::Autos, 0.028, 3711, 336110, 1.60},      {ESector::Banks, 0.016, 6021, 522110, 1.15},
    {ESector::Insurance, 0.013, 6331, 524126, 0.75},  {ESector::Health, 0.013, 6324, 524114, 0.70},
    {ESector::Pharma, 0.017, 2834, 325412, 0.65},     {ESector::Industry, 0.013, 3559, 333248, 1.00},
    {ESector::Aerospace, 0.015, 3721, 336411, 0.90},  {ESector::Transport, 0.018, 4213, 484121, 1.10},
    {ESector::Energy, 0.016, 2911, 324110, 1.05},     {ESector::Utilities, 0.012, 4911, 221112, 0.50},
    {ESector::Materials, 0.019, 3312, 331110, 1.15},  {ESector::Telecom, 0.012, 4813, 517111, 0.65},
    {ESector::Property, 0.015, 6798, 525990, 0.95},   {ESector::Leisure, 0.019, 7011, 721110, 1.20},
    {ESector::Fund, 0.010, 6726, 525910, 1.00},
}};

constexpr bool InEnumOrder() {
    for (size_t i = 0; i < kSectors.size(); ++i)
        if (static_cast<size_t>(kSectors[i].sector) != i) return false;
    return true;
}
static_assert(InEnumOrder());

} // namespace

const SSector& SectorOf(ESector sector) { return kSectors[static_cast<size_t>(sector)]; }

} // namespace vx::sim
