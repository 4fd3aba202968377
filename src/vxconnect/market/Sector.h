#pragma once

#include "vxconnect/market/Tickers.h"

#include <string_view>

namespace vx::sim {

/// What all companies of one sector share.
struct SSector {
    ESector sector;
    double dayDeviation; ///< Relative standard deviation of a day's move.
    int sic;             ///< Standard industrial classification.
    int naics;           ///< North American industry classification.
    double beta;         ///< Around which a company's own beta lies.
};

const SSector& SectorOf(ESector sector);

} // namespace vx::sim
