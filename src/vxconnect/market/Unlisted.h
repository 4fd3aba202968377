#pragma once

#include "vxconnect/market/Contracts.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vx::sim {

/// Makes up what has the form of a ticker but is not listed, the same each time for the same symbol and seed: one to
/// five letters A to Z, with "." and one letter behind for a class of shares. Five letters that end in X are a mutual
/// fund, in XX a money-market fund, anything else a share. Nothing for any other text.
std::optional<SListing> MakeUnlisted(std::string_view symbol, uint64_t seed);

} // namespace vx::sim
