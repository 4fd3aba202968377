#pragma once

#include "alerts/AlertInfo.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

class CWatchlistDoc;
struct SWatchlistContent;
struct sColumnInfo;

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

/// What of a watchlist its file cannot carry: notes in rows above the number of notes, symbols with ":" or ";",
/// annotations with ";", alerts of such symbols, thresholds with more than six decimals, hidden columns and which rows
/// are hidden. It is kept in a file of its own, beside the recovery files.
struct SWatchlistSupplement {
    std::map<int, std::string> notes;
    std::map<int, std::string> symbols;
    std::map<int, std::string> annotations; ///< As stored, with the mark.
    /// All alerts of each symbol one of whose alerts is not in the file as it is, in their order.
    std::vector<std::pair<std::string, A_INFO>> alerts;
    SKeptColumns layout;
    std::vector<int> hiddenRows; ///< Rising.
    int carriedNotes = 0;        ///< Notes stand in the file up to this row.

    bool IsEmpty() const {
        return notes.empty() && symbols.empty() && annotations.empty() && alerts.empty() && layout.columns.empty() &&
               hiddenRows.empty();
    }
};

/// Whether a symbol can stand in the file: at most 255 bytes, no ":" or ";", no control characters.
bool IsCarriedName(std::string_view symbol);
/// Whether a column's name can: at most 255 bytes, no ":" or ";", no line end, not "RowNumbers".
bool IsCarriedColumn(std::string_view name);
/// Whether the file has a column: not when it is hidden or its name cannot stand there.
bool IsWrittenColumn(const sColumnInfo& column);
/// The part of an annotation's stored text that can stand in the file: up to its first ";" or line end.
std::string_view CarriedAnnotation(std::string_view text);

/// Thread  GUI thread only
SWatchlistSupplement FindUncarried(const CWatchlistDoc& doc);

/// Puts what was kept back to what the file brought; it wins over what stands in the same row.
void MergeSupplement(const SWatchlistSupplement& supplement, SWatchlistContent& content);

/// Names what the file does not hold, a sentence for each kind, with the rows it is about (the first ten of them).
/// Windows-1252.
std::vector<std::string> DescribeSupplement(const SWatchlistSupplement& supplement);

/// The text of a supplement's file, ASCII, and back.
///
/// Errors  nothing for a text that is none, or not whole
/// Source  docs/file-format.md, "What the file cannot carry"
std::string FormatSupplement(const SWatchlistSupplement& supplement);
std::optional<SWatchlistSupplement> ParseSupplement(std::string_view text);

} // namespace vx
