// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/exchange/RowCellText.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CWatchlistDoc;

/// A heading and the rows below it up to the next one; the rows before the first heading are a group too.
struct SRowGroup {
    int first = 0; ///< 0 for no group.
    int last = 0;
    int lastFilled = 0; ///< The empty rows after it part the group from the next one.
};

/// Whether a row holds a heading; the text of a symbol that the feed rejected is none.
bool IsHeading(const CWatchlistDoc& doc, int row);

/// The group that a row belongs to, as far as rows are used; rows below the last used one belong to none.
SRowGroup GroupOf(const CWatchlistDoc& doc, int row);

/// Puts a group before the one above it, as one step to be undone. The empty rows that part them stay between them.
///
/// Returns how far the rows of the upper group went down; those of the lower one went up by upper.first - lower.first
int SwapGroups(CWatchlistDoc& doc, const SRowGroup& upper, const SRowGroup& lower);

/// The order in which rows stand after a sort, by the keys that their cells in the sort column show.
///
/// The rule is that of placing the rows one after the other into a list, each before the first element that the new row
/// goes before, else at the end:
/// - by text: equal but for case, then equal: the row added later comes first; two empty keys count as equal. Letters
///   compare without case first, then with it
/// - by number: a key that is no number is 0. Equal numbers keep their order, except zeros, where the row added later
///   comes first
/// The result is that of the literal insertion; it is computed by sorting keys that were extracted once.
///
/// Shape   keys[i] belongs to the i-th row; the result holds the indices of the rows from first to last. blockEnds:
///         where the blocks of rows end that are each ordered by themselves, rising, the last one at the end of the
///         keys; empty: all rows are one block
/// Errors  none: "nan" counts as 0
/// Thread  any
std::vector<uint32_t> OrderByText(const std::vector<std::string_view>& keys, bool ascending,
                                  std::span<const size_t> blockEnds = {});
std::vector<uint32_t> OrderByNumber(const std::vector<double>& keys, bool ascending,
                                    std::span<const size_t> blockEnds = {});

/// The number of a cell's text for OrderByNumber.
double SortNumber(std::string_view text);

class CWatchlistEdit;

/// A sort of the symbol rows of a range by what their cells in one column show; annotation and empty rows stay where
/// they are. Rows between two headings are sorted among themselves, unless the document's option says to sort across
/// headings; the message of a rejected symbol is no heading. Each cell is read once, all at once or a few at a time.
///
/// Shape   in the order of OrderByText and OrderByNumber; columns of numbers and the news count sort by number, all
///         others by text
/// Errors  rows and columns that the document does not have are left out
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only
class CRowSort {
public:
    CRowSort(const CWatchlistDoc& doc, int firstRow, int lastRow, int column, bool ascending);

    /// Reads the cells of the next rows, this many at most; true when all are read.
    bool Read(size_t count);
    /// Whether rows, columns and options are still those that it was made for. When they are not, it is of no use.
    bool IsCurrent() const;
    /// Brings the rows, whose cells are all read, into their order.
    void Apply(CWatchlistEdit& edit) const;

private:
    void ReadNumbers(size_t end);
    void ReadTexts(size_t end);
    std::vector<uint32_t> Order() const;

    const CWatchlistDoc& m_doc;
    CColumnReader m_column;
    bool m_ascending;
    uint64_t m_revision;
    std::vector<int> m_rows;
    std::vector<size_t> m_blockEnds; ///< In m_rows: each block is sorted by itself.
    size_t m_read = 0;
    std::vector<double> m_numbers;
    std::string m_texts; ///< One after the other: one allocation for all.
    std::vector<size_t> m_textEnds;
};

void SortRows(const CWatchlistDoc& doc, CWatchlistEdit& edit, int firstRow, int lastRow, int column, bool ascending);

} // namespace vx
