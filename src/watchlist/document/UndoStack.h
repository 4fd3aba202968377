// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/UndoAlerts.h"
#include "watchlist/document/UndoHost.h"
#include "watchlist/document/UndoRows.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

struct STextSetting;

/// What the view selects after an edit was undone or redone: where the change is to be seen.
struct SUndoPlace {
    bool done = false; ///< False: there was nothing to undo, or an edit is still under way.
    /// Rows from the first to the last, 0 when no rows are to be selected. Of rows that are apart the first block.
    int firstRow = 0, lastRow = 0;
    std::vector<int> rows; ///< All of them, rising.
    /// 0 when the whole row is meant.
    int firstColumn = 0, lastColumn = 0;
};

/// A state of a document that is being saved while the user may continue editing.
struct SSavePoint {
    uint64_t changes = 0; ///< The document's change count.
    uint64_t state = 0;
    uint64_t otherChanges = 0;
};

/// The user's edits of a watchlist, to be undone and redone one by one.
///
/// A step holds what it changed and exchanges it with what the document has: the same exchange undoes and redoes. What
/// an edit took away from the feed is watched again when it is undone.
///
/// The document is unmodified again when undoing or redoing leads back to what was saved or opened, unless it was
/// marked modified outside of a step since.
///
/// Units   at most kMostSteps steps of kMostBytes together, the oldest are dropped first; a step that is larger alone
///         cannot be undone, nor what was done before it
/// Thread  GUI thread only
class CUndoStack : private CRowRecorder {
public:
    static constexpr size_t kMostSteps = 1000;
    static constexpr size_t kMostBytes = size_t{256} << 20;

    explicit CUndoStack(CUndoHost& host) : m_host(host) {}

    /// To be given to the row table.
    CRowRecorder& Recorder() { return *this; }

    bool CanUndo() const { return !m_undo.empty(); }
    bool CanRedo() const { return !m_redo.empty(); }
    /// "delete 3 rows", as in "Undo delete 3 rows"; empty when there is nothing to undo.
    std::string UndoName() const { return m_undo.empty() ? std::string() : m_undo.back().name; }
    std::string RedoName() const { return m_redo.empty() ? std::string() : m_redo.back().name; }
    /// What the next one takes.
    size_t UndoBytes() const { return m_undo.empty() ? 0 : m_undo.back().bytes; }
    size_t RedoBytes() const { return m_redo.empty() ? 0 : m_redo.back().bytes; }
    SUndoPlace Undo() { return Apply(m_undo, m_redo, true); }
    SUndoPlace Redo() { return Apply(m_redo, m_undo, false); }
    /// Forgets all steps, the open one too. The document is empty, or holds another watchlist.
    void Clear();

    /// An edit is under way: nothing else may move rows.
    bool IsRecording() const { return m_depth > 0; }
    /// Another number: Clear was called since.
    uint64_t Generation() const { return m_generation; }

    size_t UndoCount() const { return m_undo.size(); }
    size_t Bytes() const;

    // One step. Steps inside another join it.

    /// name: a verb and its object in lower case, Windows-1252. That of the outermost step counts.
    void Begin(std::string_view name);
    /// The document is modified now. A step in which nothing changed leaves nothing to undo.
    void End();
    /// Puts back what the open step changed so far.
    void Cancel();
    /// The columns to select after undoing, when the edit was about cells of rows.
    void SelectColumns(int firstColumn, int lastColumn);
    /// The rows to select after undoing, when they are not all that changed.
    void SelectRows(int firstRow, int lastRow);
    /// The alerts are about to be changed by the user; they are recorded from here on.
    void CoverAlerts();
    /// A setting of the whole application is about to be changed; it returns with the step. One of each step.
    void CoverSetting(const STextSetting& setting);
    /// What is changed between these calls is no edit of the user's, whether a step is open or not.
    void Pause() { ++m_paused; }
    void Resume() { --m_paused; }

    // The mark of the document.

    /// The document was marked modified or, by a save, unmodified.
    void ModifiedSet(bool modified);
    /// Something changed that is no edit, whether a step is open or not: undoing leads back to nothing that was saved.
    void ForgetSavedState();
    SSavePoint SavePoint() const { return {m_host.ChangeCount(), State(), m_otherChanges}; }
    /// The state of that time was saved: from now on the document is unmodified in it. Returns whether it is in it now.
    bool Saved(const SSavePoint& point);

private:
    /// What is there in one state and not in the other; `present` is what the step left: what was changed otherwise
    /// since is not put back.
    template <typename Value> struct SOther {
        Value other;
        Value present;
    };
    struct SStep {
        std::string name;
        uint64_t state = 0; ///< Names the state of the document after the step.
        CUndoRows rows;
        std::optional<SOther<SLayout>> layout;
        std::optional<CUndoAlerts> alerts;
        std::optional<SOther<std::string>> setting;
        const STextSetting* settingOf = nullptr;
        std::vector<uint32_t> rowIds; ///< To select, instead of those that changed.
        int firstColumn = 0, lastColumn = 0;
        size_t bytes = 0;
    };
    using CSteps = std::deque<SStep>;

    void BeforeRow(int row) override;
    void BeforeRowsMove() override;
    void RowsInserted(int firstRow, int count) override;
    void RowsRemoved(const std::vector<SPlacedRow>& rows) override;

    bool Records() const { return m_depth > 0 && !m_applying && !m_abandoned && m_paused == 0; }
    void CloseStep();
    void CloseOpen();
    static bool IsEdit(const SStep& step);
    static bool IsEmpty(const SStep& step);
    static void Measure(SStep& step);
    void Push();
    void Trim();
    SUndoPlace Apply(CSteps& from, CSteps& to, bool undo);
    void Exchange(SStep& step, STouched& touched);
    void ExchangeLayout(SOther<SLayout>& layout, STouched& touched);
    void ExchangeSetting(const STextSetting& setting, SOther<std::string>& texts);
    SUndoPlace PlaceOf(const SStep& step, const STouched& touched) const;
    uint64_t State() const { return m_undo.empty() ? m_baseState : m_undo.back().state; }

    CUndoHost& m_host;
    CSteps m_undo;
    CSteps m_redo; ///< The next one to redo is last.
    SStep m_open;
    int m_depth = 0;
    int m_paused = 0;
    bool m_applying = false;
    bool m_modifiedAtBegin = false;
    bool m_cancelled = false; ///< The open step.
    bool m_abandoned = false; ///< What the open step is of is not here any more: nothing comes of it.
    uint64_t m_changesAtBegin = 0;
    uint64_t m_otherChangesAtBegin = 0;
    uint64_t m_generation = 0;
    uint64_t m_otherChanges = 0; ///< How often ForgetSavedState was called.
    uint64_t m_lastState = 0;
    uint64_t m_baseState = 0;             ///< Before the oldest step.
    std::optional<uint64_t> m_savedState; ///< In which the document is unmodified; none: in no state.
};

} // namespace vx
