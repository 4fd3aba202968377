#pragma once

#include "base/SeededHash.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vx {

struct SSymbolKeyHash {
    using is_transparent = void;
    CSeededHash hash;
    size_t operator()(std::string_view symbol) const { return hash(symbol); }
};

/// A hash map from symbol to a value; symbols are compared exactly, case included, and looked up without a copy.
template <typename T> using CSymbolKeyed = std::unordered_map<std::string, T, SSymbolKeyHash, std::equal_to<>>;

} // namespace vx
