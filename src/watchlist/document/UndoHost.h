// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/ColumnMap.h"
#include "watchlist/document/RowTable.h"
#include "watchlist/document/WatchlistOptions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

class CAlertsMap;
class CSettings;

/// What of a row an edit changed, and undoing it brings back.
enum ERowPart : uint8_t {
    kContentPart = 1, ///< Symbol, annotation, what is shown in their place.
    kNotePart = 2,
    kFormatPart = 4,
    kHiddenPart = 8,
};

/// Columns and options of a document.
struct SLayout {
    CColumnMap columns;
    SWatchlistOptions options;
    int grownRows = 0;
};

/// The document as undoing sees it. Nothing that is done through it is recorded, and the view hears of it when the
/// whole step has been undone.
///
/// Thread  GUI thread only
class CUndoHost {
public:
    virtual ~CUndoHost() = default;
    virtual CRowTable& Rows() = 0;
    /// Gives a row parts of another. Watches the symbol that comes, and unwatches the one that goes.
    virtual void PutRow(int row, const SRow& content, unsigned parts) = 0;
    /// Rows were put into the table or taken out of it with these symbols, which are new or in no row any more.
    virtual void SymbolsCame(const std::vector<std::string>& symbols) = 0;
    virtual void SymbolsGone(const std::vector<std::string>& symbols) = 0;
    /// Gives the rows another order, see CRowTable::Reorder.
    virtual void MoveRows(const std::vector<int>& newRowOf) = 0;

    virtual SLayout Layout() const = 0;
    virtual void SetLayout(const SLayout& layout) = 0;
    virtual CAlertsMap& AlertsToUndo() = 0;
    virtual CSettings& Settings() const = 0;

    virtual bool IsModified() const = 0;
    virtual void SetModified(bool modified) = 0;
    virtual uint64_t ChangeCount() const = 0;
    /// All of an exchange happens between these calls: a symbol that moves to another row stays watched.
    virtual void BeginExchange() = 0;
    virtual void EndExchange() = 0;
};

} // namespace vx
