#pragma once

#include "vxconnect/server/SearchIndex.h"

#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// The most results of one search.
constexpr size_t kMostResults = 500;
/// The answer to what is not understood.
constexpr std::string_view kSyntaxError = "!SYNTAX_ERROR!,\r\n";

// Replies to requests that carry an identifier, end line included; every line begins with the identifier and, for a
// client that has set a protocol, a tag. A request that makes no sense is told so and ended as well, since whoever
// asked waits for the end; nothing for one that lacks fields.

/// "SBF,s|d,text,[e|t],[ids],identifier": symbols that begin with a text, or whose name holds it, without regard to
/// case; only those of the listed markets (e) or security types (t) whose ids, separated by blanks, are given. The text
/// may hold commas; a blank one finds nothing. The exact symbol comes first, the others in the directory's order.
std::optional<std::string> SearchReply(std::string_view request, CSearchIndex& index, bool tagged);

/// "NSC,symbols,x,[sources],[dates],identifier": counts of today's headlines as XML, whatever day is asked for, symbols
/// separated by ":". Unknown symbols are left out.
std::optional<std::string> NewsCountsReply(std::string_view request, CDirectory& directory, bool tagged);

} // namespace vx::sim
