// SPDX-License-Identifier: MIT
#pragma once

#include "base/Hash.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vx {

/// The hash by which symbols are keyed: from the last character to the first, hash * 33 + the signed character, in
/// 32 bits.
constexpr uint32_t SymbolHash(std::string_view symbol) {
    uint32_t hash = 0;
    for (size_t i = symbol.size(); i-- > 0;)
        hash = hash * 33u + static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(symbol[i])));
    return hash;
}

/// What separates symbol and region in the name of a regional quote: "IBM--X".
inline constexpr std::string_view kRegionMark = "--";

constexpr bool IsRegionalName(std::string_view symbol) { return symbol.find(kRegionMark) != std::string_view::npos; }

/// The symbol that the feed is asked for: the text before the first region mark, or the whole text.
constexpr std::string_view FeedSymbol(std::string_view symbol) { return symbol.substr(0, symbol.find(kRegionMark)); }

struct SSymbolKeyHash {
    using is_transparent = void;
    CSeededHash hash;
    size_t operator()(std::string_view symbol) const { return hash(symbol); }
};

/// A hash map from symbol to a value; symbols are compared exactly, case included, and looked up without a copy.
template <typename T> using CSymbolKeyed = std::unordered_map<std::string, T, SSymbolKeyHash, std::equal_to<>>;

} // namespace vx
