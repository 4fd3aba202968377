#include "data/catalogue/DataInfo.h"

#include <array>

namespace vx {

namespace {

constexpr auto kFourPlaces = std::to_array<std::string_view>(
    {"Ask", "Bid", "Change", "Open", "Close", "High", "Last", "Low", "ET Change", "ET Diff", "ET Last", "52wk High",
     "52wk Low", "Cal High", "Cal Low", "Hist Vol", "MRT Price"});

constexpr auto kTwoPlaces = std::to_array<std::string_view>(
    {"% Chg",        "7day Yield", "Range",       "Settle",     "Spread",      "Strike",
     "5yr Growth %", "Beta",       "EPS",         "Div Amt",    "Div Rate",    "Div Yield",
     "Est EPS",      "P/E",        "% Held",      "Assets",     "Liabilities", "Split1 Ratio",
     "Split2 Ratio", "ChgFrmOpn",  "% OffAvgVol", "Volatility", "Ask Chg",     "Bid Chg"});

static_assert(kFourPlaces.size() + kTwoPlaces.size() == 41);

} // namespace

std::optional<int> CDataInfo::DecimalPlaces(std::string_view name) {
    for (const std::string_view key : kFourPlaces)
        if (key == name) return 4;
    for (const std::string_view key : kTwoPlaces)
        if (key == name) return 2;
    return std::nullopt;
}

} // namespace vx
