#pragma once

#include "watchlist/document/ColumnMap.h"
#include "watchlist/document/RowImages.h"
#include "watchlist/document/WatchlistOptions.h"

#include <cstdint>
#include <vector>

namespace vx {

class CAlertsMap;
class CCellFormatStore;
class CSettings;
class CWatchlistDoc;

/// Columns and options of a document.
struct SLayout {
    CColumnMap columns;
    SWatchlistOptions options;
    int grownRows = 0;
};

/// A row and the number that stays with it.
struct SRowPlace {
    int row = 0;
    uint32_t id = 0;
};

/// A document as the operations of an undo step see it: its parts can be put back without anything being recorded,
/// judged or said.
///
/// Thread  GUI thread only
class CUndoTarget {
public:
    explicit CUndoTarget(CWatchlistDoc& doc) : m_doc(doc) {}

    /// Good until the row changes.
    SRowImage Read(int row) const;
    /// Watches what comes and unwatches what goes.
    void Write(int row, const SRowImage& image);

    uint32_t MakeId(int row);
    void SetHidden(int row, bool hidden);
    /// For each number its row, 0 for one that no row has any more. Looks at every row once.
    std::vector<int> RowsOfIds(const std::vector<uint32_t>& ids) const;

    /// Puts empty rows where they were taken out. places: rising rows, as they are afterwards.
    ///
    /// Errors  false, and nothing changes, when a row in use would leave the grid
    bool InsertRows(const std::vector<SRowPlace>& places);
    /// places: rising rows, as they are before.
    void RemoveRows(const std::vector<SRowPlace>& places);
    void Reorder(const std::vector<int>& newRowOf);

    SLayout Layout() const;
    /// Gives what is different in the two layouts the value of the second: columns, grown rows, options.
    void ChangeLayout(const SLayout& from, const SLayout& to);

    CCellFormatStore& Formats();
    CAlertsMap& Alerts();
    CSettings& Settings();

private:
    CWatchlistDoc& m_doc;
};

/// Whether two layouts show and save the same.
bool IsSameLayout(const SLayout& a, const SLayout& b);
/// The first and the last column in which they differ; 0 and 0 when they do not.
std::pair<int, int> DifferentColumns(const SLayout& a, const SLayout& b);

} // namespace vx
