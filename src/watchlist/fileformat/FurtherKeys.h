// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistContent.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CWatchlistDoc;

// Further keys: lines of a watchlist file after those that every program reading such files knows. They carry what the
// others cannot, and are written only when they are needed.

/// How the name of every further key begins.
inline constexpr std::string_view kFurtherPrefix = "Vx.";

/// What of a watchlist is read from the other lines of a text as it is; nothing is known of the rest.
struct SCarried {
    bool rows = false;
    bool notes = false; ///< Those in the rows up to their number: no others are in the line of notes.
    bool alerts = false;
};

/// Adds the further keys that a watchlist needs to its file's text, and those that were read but are unknown here.
///
/// Shape   lines "key=value" of printable ASCII, each ended by CR LF and at most kMostFurtherBytes long; a longer value
///         continues in the next line of the same key
/// Source  docs/file-format.md, "Further keys"
/// Thread  GUI thread only
void AppendFurtherKeys(std::string& text, const CWatchlistDoc& doc, const SCarried& carried);
inline constexpr size_t kMostFurtherBytes = 1000;

/// Collects the further keys of a text that is being read, and applies them when all of it was.
class CFurtherKeys {
public:
    CFurtherKeys();

    /// Takes a line's key and value; false when the key is none of the kind.
    bool TakeLine(std::string_view line, std::string_view key, std::string_view value, size_t number);
    /// Puts what was collected into the content: it wins over what the other keys brought.
    void Apply(SWatchlistContent& content, CReadReport& report);

private:
    std::vector<SWatchlistContent::SRecords> m_values; ///< By the place in the table of keys.
    std::vector<std::string> m_unknown;
};

} // namespace vx
