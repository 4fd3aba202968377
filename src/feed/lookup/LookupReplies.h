#pragma once

#include "feed/lookup/NewsCountsReply.h"
#include "feed/lookup/SymbolSearch.h"

namespace vx {

/// Where the reply lines of the lasting lookup connection go, by the id of their request.
///
/// Thread  GUI thread only
class CLookupReplies {
public:
    /// Takes a line by its first three characters; others than those of the two requests are ignored.
    void OnLine(std::string_view line) {
        if (line.starts_with("LSe"))
            search.OnLine(line);
        else if (line.starts_with("LNe"))
            newsCounts.OnLine(line);
    }

    CSearchResults search;
    CNewsCountsReply newsCounts;
};

} // namespace vx
