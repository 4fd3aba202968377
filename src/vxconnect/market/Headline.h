#pragma once

#include "vxconnect/common/Random.h"
#include "vxconnect/market/Tickers.h"

#include <string>
#include <string_view>

namespace vx::sim {

/// A made-up headline about a company, Windows-1252. It begins with "Simulated:", so that it never passes for news.
///
/// Shape   no line end, at most a few hundred bytes; may hold commas
std::string HeadlineText(std::string_view company, ESector sector, CRandom& random);

} // namespace vx::sim
