// SPDX-License-Identifier: MIT
#pragma once

#include "feed/lookup/SymbolSearch.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vx {

/// Who takes the reply to a request for news counts: implemented where the news of the document are.
class CNewsCountsReceiver {
public:
    virtual ~CNewsCountsReceiver() = default;

    /// The whole reply, XML text without line ends; empty when the feed client had nothing to say. May begin requests.
    virtual void OnNewsCounts(std::string_view xml) = 0;
};

/// Puts the reply to a request for news counts together from its lines.
///
/// Owns    the text
class CNewsCountsReply {
public:
    /// Some 400,000 symbols. A reply beyond that is dropped whole, which is logged.
    static constexpr size_t kMostBytes = 16 * 1024 * 1024;

    /// Null, as at first: replies are dropped.
    void SetReceiver(CNewsCountsReceiver* receiver) { m_receiver = receiver; }

    /// Takes one reply line: the text after its first 15 characters, or the end, which delivers the whole text.
    void OnLine(std::string_view line);

private:
    CNewsCountsReceiver* m_receiver = nullptr;
    std::string m_text;
    bool m_tooLong = false;
};

/// Where the reply lines of the lasting lookup connection go, by the id of their request.
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
