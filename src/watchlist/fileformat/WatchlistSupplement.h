// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

struct SWatchlistContent;

/// All columns of a watchlist some of which its file leaves out, and what names columns by their place.
struct SKeptColumns {
    struct SColumn {
        std::string name;
        int width = 0; ///< Pixels; 0 is hidden.
    };

    std::vector<SColumn> columns; ///< From the left, without the row numbers; empty when the file has them all.
    int sortColumn = -1;
    int lockedColumns = 0;
    std::string formats; ///< As in the file, with these columns.
};

/// What older versions of the program kept beside a watchlist's file, because the file could not carry it. Today the
/// file does, in further keys; a supplement that is still there is read once.
struct SWatchlistSupplement {
    std::map<int, std::string> notes;
    std::map<int, std::string> symbols;
    std::map<int, std::string> annotations; ///< As stored, with the mark.
    /// All alerts of each symbol one of whose alerts is not in the file as it is, in their order.
    std::vector<std::pair<std::string, A_INFO>> alerts;
    SKeptColumns layout;
    std::vector<int> hiddenRows; ///< Rising.
};

/// Puts what was kept back to what the file brought; it wins over what the same row has.
void MergeSupplement(const SWatchlistSupplement& supplement, SWatchlistContent& content);

/// Reads the text of a supplement's file.
///
/// Errors  nothing for a text that is none, or not whole
/// Source  docs/file-format.md, "Supplements of older versions"
std::optional<SWatchlistSupplement> ParseSupplement(std::string_view text);

} // namespace vx
