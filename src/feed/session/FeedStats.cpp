// SPDX-License-Identifier: MIT
#include "feed/session/FeedStats.h"

#include "base/Number.h"
#include "base/Text.h"

namespace vx {

std::optional<FeedStats> ReadFeedStats(std::string_view line) {
    const std::vector<std::string_view> fields = SplitCountingTail(line, ',');
    if (fields.size() < FeedStats::kFieldCount || fields[0] != "S" || fields[1] != "STATS") return std::nullopt;
    FeedStats stats;
    stats.field2 = fields[2];
    stats.field3 = ReadUInt32(fields[3]);
    stats.symbolLimit = ReadUInt32(fields[4]);
    stats.symbolsWatched = ReadUInt32(fields[5]);
    for (size_t i = 0; i < stats.fields6To9.size(); ++i) stats.fields6To9[i] = ReadUInt32(fields[6 + i]);
    for (size_t i = 0; i < stats.fields10And11.size(); ++i) stats.fields10And11[i] = ReadDateTime(fields[10 + i]);
    stats.status = fields[12];
    stats.field13 = fields[13];
    stats.field14 = fields[14];
    for (size_t i = 0; i < stats.fields15To20.size(); ++i) stats.fields15To20[i] = ReadDouble(fields[15 + i]);
    stats.valid = true;
    return stats;
}

} // namespace vx
