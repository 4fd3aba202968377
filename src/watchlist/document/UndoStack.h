#pragma once

#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/NoteStore.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CAlertOp;
class CFormatOp;
class CRowOp;
class CUndoOp;
class CWatchlistDoc;
struct SLayout;
struct STextSetting;

/// What the view selects after an edit was undone or redone: where the change is to be seen.
struct SUndoPlace {
    bool done = false; ///< False: there was nothing to undo, or an edit is still under way.
    /// Rows from the first to the last, 0 when no rows are to be selected. Of rows that stand apart the first block.
    int firstRow = 0, lastRow = 0;
    std::vector<int> rows; ///< All of them, rising.
    /// 0 when the whole row is meant.
    int firstColumn = 0, lastColumn = 0;
};

/// A state of a document that is being saved while the user may go on editing.
struct SSavePoint {
    uint64_t changes = 0; ///< The document's change count.
    uint64_t state = 0;
    uint64_t otherChanges = 0;
};

/// The user's edits of a watchlist, to be undone and redone one by one.
///
/// An edit is recorded as what it changed: rows by the numbers that stay with them (CRowTable), so that it is undone in
/// the right rows although auto sort moved them, or the feed rejected a symbol, meanwhile. These are no edits, and
/// undoing an edit does not undo them. What an edit took away from the feed is watched again when it is undone.
///
/// An operation of a step is carried out by exchanging what it holds with what the document has: the same operation
/// undoes and redoes.
///
/// The document is unmodified again when undoing or redoing leads back to what was saved or opened, unless it was
/// marked modified outside of a step since.
///
/// Units   at most kMostSteps steps of kMostBytes together, the oldest go first; a step that is larger alone cannot be
///         undone, nor what was done before it
/// Thread  GUI thread only
class CUndoStack : private CCellFormatObserver, private CNoteObserver {
public:
    static constexpr size_t kMostSteps = 1000;
    static constexpr size_t kMostBytes = size_t{256} << 20;

    explicit CUndoStack(CWatchlistDoc& doc);
    ~CUndoStack() override;
    CUndoStack(const CUndoStack&) = delete;
    CUndoStack& operator=(const CUndoStack&) = delete;

    bool CanUndo() const { return !m_undo.empty(); }
    bool CanRedo() const { return !m_redo.empty(); }
    /// "delete 3 rows", as in "Undo delete 3 rows"; empty when there is nothing to undo.
    std::string UndoName() const;
    std::string RedoName() const;
    /// What the next one takes: undoing 100,000 pasted rows, half a megabyte, takes some 0.4 s.
    size_t UndoBytes() const { return m_undo.empty() ? 0 : m_undo.back().bytes; }
    size_t RedoBytes() const { return m_redo.empty() ? 0 : m_redo.back().bytes; }
    SUndoPlace Undo();
    SUndoPlace Redo();
    /// Forgets all steps. The document is empty, or holds another watchlist.
    void Clear();

    /// An edit is under way: nothing else may move rows.
    bool IsRecording() const { return m_depth > 0; }
    /// Another number: Clear was called since.
    uint64_t Generation() const { return m_generation; }

    size_t UndoCount() const { return m_undo.size(); }
    size_t Bytes() const;

    // For CUndoStep.

    struct SMark {
        size_t ops = 0;
        uint64_t generation = 0;
        bool modified = false;
        uint64_t changes = 0;      ///< The document's change count.
        uint64_t otherChanges = 0; ///< m_otherChanges.
    };
    void Begin(std::string_view name);
    /// Where CancelTo may go back to.
    SMark Mark();
    void End();
    void CancelTo(const SMark& mark);
    void Rename(std::string_view name);
    void SelectColumns(int firstColumn, int lastColumn);
    void SelectRows(int firstRow, int lastRow);
    void CoverAlerts();
    void CoverSetting(const STextSetting& setting);

    // For the document, which calls each before it changes what it names. No-ops while no step stands.

    void BeforeRow(int row);
    void BeforeReorder(int firstRow, int lastRow);
    void BeforeRowsRemoved(int firstRow, int count);
    void RowsInserted(int firstRow, int count);
    /// ids: the rows that were hidden, or shown, and were not so before.
    void RowsHidden(std::vector<uint32_t> ids, bool hidden);
    /// The document was marked modified or, by a save, unmodified.
    void ModifiedSet(bool modified);
    /// Something changed that is no edit, whether a step stands or not: undoing leads back to nothing that was saved.
    void ForgetSavedState();
    SSavePoint SavePoint() const;
    /// The state of that time was saved: from now on the document is unmodified in it. Returns whether it is in it now.
    bool Saved(const SSavePoint& point);

private:
    struct SStep {
        SStep();
        SStep(SStep&&) noexcept;
        SStep& operator=(SStep&&) noexcept;
        ~SStep();

        std::string name;
        uint64_t state = 0; ///< Names the state of the document after the step.
        std::vector<std::unique_ptr<CUndoOp>> ops;
        std::vector<uint32_t> rowIds; ///< To select, instead of those that the operations name.
        int firstColumn = 0, lastColumn = 0;
        size_t bytes = 0;
    };

    void BeforeNote(int row) override;
    void BeforeFormat(int row, int column) override;
    void FormatColumnsChanged(EFormatColumns change, int from, int to) override;

    bool Records() const { return m_depth > 0 && !m_applying; }
    template <typename Op, typename... Args> Op& Add(Args&&... args);
    CRowOp& RowOp();
    CFormatOp& FormatOp();
    void SealOps();
    void Close();
    void AddLayout();
    void DropUnchanged();
    void Push();
    void Measure(SStep& step);
    void Trim();
    SUndoPlace Apply(bool undo);
    void Exchange(SStep& step, size_t firstOp, SUndoPlace* place, bool backwards);
    void FindPlace(const SStep& step, const std::vector<uint32_t>& touched, SUndoPlace& place);
    uint64_t State() const { return m_undo.empty() ? m_baseState : m_undo.back().state; }

    CWatchlistDoc& m_doc;
    std::deque<SStep> m_undo;
    std::deque<SStep> m_redo; ///< The next one to redo is last.
    SStep m_open;
    std::unique_ptr<SLayout> m_layout; ///< As it was when the outermost step began.
    CRowOp* m_rowOp = nullptr;         ///< The operation of the open step that takes further rows.
    CFormatOp* m_formatOp = nullptr;
    int m_depth = 0;
    bool m_applying = false;
    uint64_t m_changesAtBegin = 0;
    uint64_t m_generation = 0;
    uint64_t m_otherChanges = 0; ///< How often ForgetSavedState was called.
    uint64_t m_lastState = 0;
    uint64_t m_baseState = 0;             ///< Before the oldest step.
    std::optional<uint64_t> m_savedState; ///< In which the document is unmodified; none: in no state.
};

} // namespace vx
