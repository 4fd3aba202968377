// SPDX-License-Identifier: MIT
#pragma once

#include "day/TradingDay.h"

#include <array>

namespace vx {
class CWatchlistDoc;
}

namespace vx::test {

class CPlainList;

/// Symbols that the feed knows.
inline constexpr std::array kSymbols = {"AA", "GE", "IBM", "MSFT", "T"};

/// What a user does to the watchlist, and the same to the plain list; nothing for other steps. The simulated day goes
/// through the document's door only here.
///
/// Returns what was wrong with it; empty for nothing
std::string DoAsUser(const SDayStep& step, CWatchlistDoc& doc, CPlainList& plain);

} // namespace vx::test
