// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertsMap.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/ColumnMap.h"
#include "watchlist/document/RowTextMap.h"
#include "watchlist/document/UndoStack.h"
#include "watchlist/document/WatchlistOptions.h"

#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// What may be changed in a watchlist, while it may: CWatchlistDoc::Edit and CWatchlistDoc::Update hand it out. It is
/// not to be kept.
///
/// Units   grid rows from 1 to CRowTable::kMaxRow; others are ignored. Texts are Windows-1252
/// Thread  GUI thread only
class CWatchlistEdit {
public:
    // Rows.

    /// Puts a symbol into a row, whatever was there, without watching it.
    virtual void PlaceSymbol(int row, std::string_view symbol) = 0;
    /// Empties a row and puts a symbol into it; one that was in no row before is watched, and its news count requested.
    virtual void EnterSymbol(int row, std::string_view symbol) = 0;
    virtual void SetAnnotation(int row, std::string_view text) = 0;
    /// Empties a row but for its note; a symbol whose last row this was is unwatched.
    virtual void EmptyRow(int row) = 0;
    /// A text in the symbol column instead of a symbol row's symbol, until the row is next changed; empty for none.
    virtual void ShowText(int row, std::string_view text) = 0;
    /// What the user typed, in a row that came to show something else.
    virtual void KeepTyped(int row, std::string_view text) = 0;
    /// newRowOf[r] is where row r goes; see CRowTable::Reorder.
    ///
    /// Errors  false, and nothing changes, for what is no permutation or exceeds CRowTable::kMaxRow
    virtual bool ReorderRows(const std::vector<int>& newRowOf) = 0;
    virtual void SetHidden(int row, bool hidden) = 0;

    // Columns, options and stores.

    /// Shows the named columns, ";" between them, each with its default width and format.
    virtual void SetColumnsByName(std::string_view names) = 0;
    /// Lines of the file that only another version of the program understands; a save writes them again.
    virtual void SetUnknownLines(std::vector<std::string> lines) = 0;
    virtual CColumnMap& Columns() = 0;
    virtual SWatchlistOptions& Options() = 0;
    virtual CNoteStore& Notes() = 0;
    virtual CCellFormatStore& Formats() = 0;
    /// In an edit the alerts are part of its step.
    virtual CAlertsMap& Alerts() = 0;

    // The step, of the outermost edit.

    /// The cells or rows to select after undoing, when they are not all that changed.
    virtual void SelectColumns(int firstColumn, int lastColumn) = 0;
    virtual void SelectRows(int firstRow, int lastRow) = 0;
    /// A setting of the whole application is about to be changed; it returns with the step. One of each step.
    virtual void CoverSetting(const STextSetting& setting) = 0;
    /// Puts everything back that changed since the outermost edit began, which is none then.
    virtual void Cancel() = 0;

    /// Between these calls a symbol that leaves a row and comes to another stays watched, and news counts are requested
    /// together; see CEditBatch.
    virtual void BeginBatch() = 0;
    virtual void EndBatch() = 0;

protected:
    ~CWatchlistEdit() = default;
};

/// While it exists, many rows are changed at the cost of one change.
///
/// Thread  GUI thread only
class CEditBatch {
public:
    explicit CEditBatch(CWatchlistEdit& edit) : m_edit(edit) { m_edit.BeginBatch(); }
    ~CEditBatch() { m_edit.EndBatch(); }
    CEditBatch(const CEditBatch&) = delete;
    CEditBatch& operator=(const CEditBatch&) = delete;

private:
    CWatchlistEdit& m_edit;
};

} // namespace vx
