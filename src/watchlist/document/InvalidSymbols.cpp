// SPDX-License-Identifier: MIT
#include "watchlist/document/InvalidSymbols.h"

namespace vx {

std::string InvalidSymbolText(std::string_view symbol) {
    if (symbol == kCommaSymbol) return "#Symbols cannot contain commas.";
    return "#\"" + std::string(symbol) + "\" is an Invalid or Unauthorized Symbol.";
}

} // namespace vx
