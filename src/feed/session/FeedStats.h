// SPDX-License-Identifier: MIT
#pragma once

#include "base/DateTime.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// What the feed client last said about itself in an "S,STATS" line.
///
/// Shape   the numbers in the names are the line's comma-separated fields, "S" being field 0; those without a name of
///         their own are kept and not used
struct FeedStats {
    std::string field2;
    uint32_t field3 = 0;
    uint32_t symbolLimit = 0;    ///< Field 4: the most symbols that may be watched at once.
    uint32_t symbolsWatched = 0; ///< Field 5.
    std::array<uint32_t, 4> fields6To9{};
    std::array<SDateTime, 2> fields10And11;
    std::string status; ///< Field 12: "Connected", "Not Connected"; empty before the first complete line.
    std::string field13;
    std::string field14;
    std::array<double, 6> fields15To20{};
    bool valid = false; ///< A complete line was read once.

    static constexpr size_t kFieldCount = 21;
};

/// Reads an "S,STATS" line.
///
/// Errors  nothing for a line of fewer fields than FeedStats::kFieldCount or of another kind; text that is no number
///         reads as 0, text that is no date as an invalid one
/// Source  docs/feed-protocol.md, "Status lines"
std::optional<FeedStats> ReadFeedStats(std::string_view line);

} // namespace vx
