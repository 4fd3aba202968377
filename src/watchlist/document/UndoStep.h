#pragma once

#include "watchlist/document/UndoStack.h"

#include <string_view>

namespace vx {

class CWatchlistDoc;
struct STextSetting;

/// One edit of the user: what changes in a document while the step stands is undone and redone together.
///
/// Rows, their order, notes and formats, columns and options are recorded where they are kept, so that a step only has
/// to stand around the edit. Steps inside another join it. One in which nothing changed leaves nothing to undo. Where
/// many rows are edited in one step, a CEditBatch beside it saves time.
///
///     CUndoStep step(doc, "delete 3 rows"); // "Undo delete 3 rows"
///
/// Owns    nothing; the document outlives it
/// Thread  GUI thread only
class CUndoStep {
public:
    /// name: a verb and its object in lower case, Windows-1252. That of the outermost step counts.
    CUndoStep(CWatchlistDoc& doc, std::string_view name);
    ~CUndoStep();
    CUndoStep(const CUndoStep&) = delete;
    CUndoStep& operator=(const CUndoStep&) = delete;

    /// Another name, when what was done is known only at the end.
    void Rename(std::string_view name);
    /// The columns to select after undoing, when the edit was about cells of rows.
    void SelectColumns(int firstColumn, int lastColumn);
    /// The rows to select after undoing, when they are not all that changed.
    void SelectRows(int firstRow, int lastRow);
    /// The alerts are about to be changed by the user; they are recorded from here on.
    void CoverAlerts();
    /// A setting of the whole application is about to be changed; it goes back with the step. One of each step.
    void CoverSetting(const STextSetting& setting);
    /// Puts everything back that changed since the outermost step began.
    void Cancel();

private:
    CUndoStack& m_stack;
};

/// While it stands, a document may be changed in many rows at the cost of one change: symbols that leave a row and come
/// to another stay watched, news counts are asked for together, and the status text and the view are brought up to date
/// once, at the end of the outermost batch.
///
/// Thread  GUI thread only
class CEditBatch {
public:
    explicit CEditBatch(CWatchlistDoc& doc);
    ~CEditBatch();
    CEditBatch(const CEditBatch&) = delete;
    CEditBatch& operator=(const CEditBatch&) = delete;

private:
    CWatchlistDoc& m_doc;
};

} // namespace vx
