#include "watchlist/document/UndoStack.h"

#include "watchlist/document/UndoOps.h"
#include "watchlist/document/UndoStep.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <utility>

namespace vx {

CUndoStack::SStep::SStep() = default;
CUndoStack::SStep::SStep(SStep&&) noexcept = default;
CUndoStack::SStep& CUndoStack::SStep::operator=(SStep&&) noexcept = default;
CUndoStack::SStep::~SStep() = default;

CUndoStack::CUndoStack(CWatchlistDoc& doc) : m_doc(doc) {
    m_doc.Notes().SetObserver(this);
    m_doc.Formats().SetObserver(this);
}

CUndoStack::~CUndoStack() {
    m_doc.Notes().SetObserver(nullptr);
    m_doc.Formats().SetObserver(nullptr);
}

std::string CUndoStack::UndoName() const { return m_undo.empty() ? std::string() : m_undo.back().name; }

std::string CUndoStack::RedoName() const { return m_redo.empty() ? std::string() : m_redo.back().name; }

void CUndoStack::Clear() {
    m_undo.clear();
    m_redo.clear();
    SealOps();
    m_open = {};
    m_baseState = ++m_lastState;
    ForgetSavedState();
    ++m_generation;
    if (m_depth > 0) m_layout = std::make_unique<SLayout>(CUndoTarget(m_doc).Layout());
}

size_t CUndoStack::Bytes() const {
    size_t sum = 0;
    for (const auto* steps : {&m_undo, &m_redo})
        for (const SStep& step : *steps) sum += step.bytes;
    return sum;
}

// Recording

void CUndoStack::Begin(std::string_view name) {
    if (m_depth++ == 0) {
        m_open = {};
        m_open.name = name;
        m_changesAtBegin = m_doc.ChangeCount();
        if (!m_applying) m_layout = std::make_unique<SLayout>(CUndoTarget(m_doc).Layout());
    }
}

CUndoStack::SMark CUndoStack::Mark() {
    SealOps();
    return {m_open.ops.size(), m_generation, m_doc.IsModified(), m_doc.ChangeCount(), m_otherChanges};
}

void CUndoStack::End() {
    if (m_depth == 1 && !m_applying) Close();
    --m_depth;
}

void CUndoStack::Rename(std::string_view name) {
    if (m_depth == 1) m_open.name = name;
}

void CUndoStack::SelectColumns(int firstColumn, int lastColumn) {
    m_open.firstColumn = firstColumn;
    m_open.lastColumn = lastColumn;
}

void CUndoStack::SelectRows(int firstRow, int lastRow) {
    if (!Records()) return;
    m_open.rowIds.clear();
    for (int row = firstRow; row <= lastRow; ++row) m_open.rowIds.push_back(m_doc.RowId(row));
}

template <typename Op, typename... Args> Op& CUndoStack::Add(Args&&... args) {
    auto op = std::make_unique<Op>(std::forward<Args>(args)...);
    Op& added = *op;
    m_open.ops.push_back(std::move(op));
    return added;
}

CRowOp& CUndoStack::RowOp() {
    if (!m_rowOp) m_rowOp = &Add<CRowOp>();
    return *m_rowOp;
}

CFormatOp& CUndoStack::FormatOp() {
    if (!m_formatOp) m_formatOp = &Add<CFormatOp>();
    return *m_formatOp;
}

// What follows may not join an operation that is undone after what came between.
void CUndoStack::SealOps() {
    if (m_rowOp) m_rowOp->Seal();
    if (m_formatOp) m_formatOp->Seal();
    m_rowOp = nullptr;
    m_formatOp = nullptr;
}

void CUndoStack::BeforeRow(int row) {
    if (!Records()) return;
    CUndoTarget target(m_doc);
    RowOp().Touch(target, row);
}

void CUndoStack::BeforeNote(int row) { BeforeRow(row); }

void CUndoStack::BeforeFormat(int row, int column) {
    if (!Records()) return;
    CUndoTarget target(m_doc);
    FormatOp().Touch(target, row, column);
}

void CUndoStack::FormatColumnsChanged(EFormatColumns change, int from, int to) {
    if (!Records()) return;
    SealOps();
    Add<CFormatColumnsOp>(change, from, to);
}

void CUndoStack::BeforeReorder(int firstRow, int lastRow) {
    if (!Records()) return;
    std::vector<uint32_t> ids;
    for (int row = firstRow; row <= lastRow; ++row) ids.push_back(m_doc.RowId(row));
    Add<CRowOrderOp>(std::move(ids));
}

// Rows are emptied, as far as undoing goes, before they are taken out: their content has one place to be kept in.
void CUndoStack::BeforeRowsRemoved(int firstRow, int count) {
    if (!Records()) return;
    CUndoTarget target(m_doc);
    const int lastRow = firstRow - 1 + count;
    std::vector<SRowPlace> places;
    std::vector<uint32_t> hidden; // Rows come back as shown ones.
    for (int row = firstRow; row <= lastRow; ++row) {
        places.push_back({row, target.MakeId(row)});
        RowOp().Touch(target, row);
        if (m_doc.IsRowHidden(row)) hidden.push_back(places.back().id);
    }
    m_doc.Formats().ForEach([&](int row, int column) {
        if (row >= firstRow && row <= lastRow) FormatOp().Touch(target, row, column);
    });
    SealOps();
    if (!hidden.empty()) Add<CHiddenRowsOp>(std::move(hidden), false);
    Add<CRowCountOp>(std::move(places), false);
}

void CUndoStack::RowsInserted(int firstRow, int count) {
    if (!Records()) return;
    CUndoTarget target(m_doc);
    std::vector<SRowPlace> places;
    for (int row = firstRow; row < firstRow + count; ++row) places.push_back({row, target.MakeId(row)});
    SealOps();
    Add<CRowCountOp>(std::move(places), true);
}

void CUndoStack::RowsHidden(std::vector<uint32_t> ids, bool hidden) {
    if (Records()) Add<CHiddenRowsOp>(std::move(ids), hidden);
}

void CUndoStack::CoverAlerts() {
    if (!Records()) return;
    CUndoTarget target(m_doc);
    Add<CAlertOp>(target);
}

void CUndoStack::CoverSetting(const STextSetting& setting) {
    if (!Records()) return;
    CUndoTarget target(m_doc);
    Add<CTextSettingOp>(setting, target);
}

void CUndoStack::ModifiedSet(bool modified) {
    if (m_applying) return;
    if (!modified)
        m_savedState = State();
    else if (m_depth == 0)
        ForgetSavedState();
}

void CUndoStack::ForgetSavedState() {
    m_savedState.reset();
    ++m_otherChanges;
}

SSavePoint CUndoStack::SavePoint() const { return {m_doc.ChangeCount(), State(), m_otherChanges}; }

bool CUndoStack::Saved(const SSavePoint& point) {
    if (point.otherChanges != m_otherChanges) return false;
    m_savedState = point.state;
    return State() == point.state;
}

// A step is whole

void CUndoStack::Close() {
    SealOps();
    AddLayout();
    DropUnchanged();
    if (!m_open.ops.empty()) return Push();
    m_open = {};
    if (m_doc.ChangeCount() != m_changesAtBegin) ForgetSavedState();
}

void CUndoStack::AddLayout() {
    SLayout present = CUndoTarget(m_doc).Layout();
    if (!IsSameLayout(*m_layout, present)) Add<CLayoutOp>(std::move(*m_layout), std::move(present));
    m_layout.reset();
}

// What an operation holds is compared with the document as it is now: that says something of the last operation of its
// kind alone.
void CUndoStack::DropUnchanged() {
    CUndoTarget target(m_doc);
    std::vector<EUndoKind> seen;
    for (size_t i = m_open.ops.size(); i-- > 0;) {
        const EUndoKind kind = m_open.ops[i]->Kind();
        if (std::find(seen.begin(), seen.end(), kind) != seen.end()) continue;
        seen.push_back(kind);
        if (!m_open.ops[i]->DropUnchanged(target)) m_open.ops.erase(m_open.ops.begin() + static_cast<int>(i));
    }
}

void CUndoStack::Push() {
    const bool edit = std::any_of(m_open.ops.begin(), m_open.ops.end(), [](const auto& op) { return op->IsEdit(); });
    m_redo.clear();
    m_open.state = edit ? ++m_lastState : State();
    Measure(m_open);
    m_undo.push_back(std::exchange(m_open, {}));
    if (edit && m_doc.ChangeCount() == m_changesAtBegin) m_doc.SetModified(true);
    Trim();
}

void CUndoStack::Measure(SStep& step) {
    step.bytes = sizeof step + step.name.capacity() + step.rowIds.capacity() * sizeof(uint32_t);
    for (const auto& op : step.ops) step.bytes += op->Bytes();
}

void CUndoStack::Trim() {
    size_t bytes = Bytes();
    while (!m_undo.empty() && (m_undo.size() + m_redo.size() > kMostSteps || bytes > kMostBytes)) {
        bytes -= m_undo.front().bytes;
        m_baseState = m_undo.front().state;
        m_undo.pop_front();
    }
}

// Undoing

SUndoPlace CUndoStack::Undo() { return Apply(true); }

SUndoPlace CUndoStack::Redo() { return Apply(false); }

SUndoPlace CUndoStack::Apply(bool undo) {
    SUndoPlace place;
    auto& from = undo ? m_undo : m_redo;
    if (m_depth > 0 || m_applying || from.empty()) return place;
    SStep step = std::move(from.back());
    from.pop_back();
    const uint64_t before = undo ? step.state : State();
    Exchange(step, 0, &place, undo);
    Measure(step);
    (undo ? m_redo : m_undo).push_back(std::move(step));
    Trim();
    m_applying = true; // The document is marked by the state that it came back to.
    if (State() == m_savedState)
        m_doc.SetModified(false);
    else if (State() != before)
        m_doc.SetModified(true);
    m_applying = false;
    place.done = true;
    return place;
}

void CUndoStack::Exchange(SStep& step, size_t firstOp, SUndoPlace* place, bool backwards) {
    m_applying = true;
    CUndoTarget target(m_doc);
    STouched touched;
    {
        CEditBatch batch(m_doc);
        const size_t count = step.ops.size() - firstOp;
        for (size_t i = 0; i < count; ++i)
            step.ops[firstOp + (backwards ? count - 1 - i : i)]->Exchange(target, touched);
    }
    m_applying = false;
    if (!place) return;
    place->firstColumn = step.firstColumn != 0 ? step.firstColumn : touched.firstColumn;
    place->lastColumn = step.firstColumn != 0 ? step.lastColumn : touched.lastColumn;
    FindPlace(step, touched.rowIds, *place);
    if (place->rows.empty() && touched.gap > 0) place->firstRow = place->lastRow = touched.gap;
}

void CUndoStack::FindPlace(const SStep& step, const std::vector<uint32_t>& touched, SUndoPlace& place) {
    place.rows = CUndoTarget(m_doc).RowsOfIds(step.rowIds.empty() ? touched : step.rowIds);
    std::vector<int>& rows = place.rows;
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (!rows.empty() && rows.front() == 0) rows.erase(rows.begin());
    if (rows.empty()) return;
    place.firstRow = rows.front();
    place.lastRow = rows.front();
    for (size_t i = 1; i < rows.size() && rows[i] == place.lastRow + 1; ++i) ++place.lastRow;
}

void CUndoStack::CancelTo(const SMark& mark) {
    if (mark.generation != m_generation || m_applying) return;
    SealOps();
    Exchange(m_open, mark.ops, nullptr, true);
    m_open.ops.resize(mark.ops);
    if (m_depth == 1) {
        CUndoTarget target(m_doc);
        target.ChangeLayout(target.Layout(), *m_layout);
        m_doc.RebuildGrid();
    }
    m_applying = true;
    if (!mark.modified && mark.otherChanges == m_otherChanges) m_doc.SetModified(false);
    m_applying = false;
    if (m_changesAtBegin == mark.changes) m_changesAtBegin = m_doc.ChangeCount();
}

} // namespace vx
