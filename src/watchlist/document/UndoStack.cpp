// SPDX-License-Identifier: MIT
#include "watchlist/document/UndoStack.h"

#include "alerts/rules/AlertsMap.h"
#include "settings/Settings.h"

#include <algorithm>
#include <utility>

namespace vx {

namespace {

bool IsSameColumn(const sColumnInfo& a, const sColumnInfo& b) {
    return a.name == b.name && a.width == b.width && a.look == b.look;
}

bool AreSameColumns(const CColumnMap& a, const CColumnMap& b) {
    return std::ranges::equal(a.Columns(), b.Columns(), IsSameColumn);
}

bool IsSameLayout(const SLayout& a, const SLayout& b) {
    return a.grownRows == b.grownRows && a.options == b.options && AreSameColumns(a.columns, b.columns);
}

// The first and the last column of `b` in which it differs from `a`; 0 and 0 when it does not.
std::pair<int, int> DifferentColumns(const CColumnMap& a, const CColumnMap& b) {
    const auto& x = a.Columns();
    const auto& y = b.Columns();
    if (AreSameColumns(a, b)) return {0, 0};
    const auto first = std::mismatch(x.begin(), x.end(), y.begin(), y.end(), IsSameColumn).second - y.begin();
    const auto tail = std::mismatch(x.rbegin(), x.rend(), y.rbegin(), y.rend(), IsSameColumn).second - y.rbegin();
    const int greatest = b.Count() - 1;
    const int last = std::max(greatest - static_cast<int>(tail), static_cast<int>(first));
    return {std::clamp(static_cast<int>(first), 0, greatest), std::min(last, greatest)};
}

size_t BytesOf(const SLayout& layout) {
    size_t sum = sizeof layout;
    for (const sColumnInfo& column : layout.columns.Columns()) sum += sizeof column + column.name.capacity();
    return sum;
}

} // namespace

void CUndoStack::Clear() {
    m_undo.clear();
    m_redo.clear();
    m_open = {};
    m_baseState = ++m_lastState;
    ForgetSavedState();
    ++m_generation;
    m_abandoned = m_depth > 0;
}

size_t CUndoStack::Bytes() const {
    size_t sum = 0;
    for (const auto* steps : {&m_undo, &m_redo})
        for (const SStep& step : *steps) sum += step.bytes;
    return sum;
}

// Recording

void CUndoStack::Begin(std::string_view name) {
    if (m_depth++ > 0 || m_applying) return;
    m_open = {};
    m_open.name = name;
    m_open.layout = {m_host.Layout(), {}};
    m_modifiedAtBegin = m_host.IsModified();
    m_changesAtBegin = m_host.ChangeCount();
    m_otherChangesAtBegin = m_otherChanges;
    m_cancelled = false;
}

void CUndoStack::End() {
    if (m_depth == 1 && !m_applying && !m_abandoned) CloseStep();
    if (--m_depth == 0) m_abandoned = false;
}

void CUndoStack::Cancel() {
    if (m_depth == 0 || m_applying || m_abandoned) return;
    m_cancelled = true;
    CloseOpen();
    STouched touched;
    Exchange(m_open, touched);
    const std::string name = m_open.name;
    m_open = {};
    m_open.name = name;
    m_open.layout = {m_host.Layout(), {}};
    m_applying = true;
    if (!m_modifiedAtBegin && m_otherChanges == m_otherChangesAtBegin) m_host.SetModified(false);
    m_applying = false;
    m_changesAtBegin = m_host.ChangeCount();
}

void CUndoStack::SelectColumns(int firstColumn, int lastColumn) {
    m_open.firstColumn = firstColumn;
    m_open.lastColumn = lastColumn;
}

void CUndoStack::SelectRows(int firstRow, int lastRow) {
    if (!Records()) return;
    m_open.rowIds.clear();
    for (int row = firstRow; row <= lastRow; ++row) m_open.rowIds.push_back(m_host.Rows().MakeId(row));
}

void CUndoStack::CoverAlerts() {
    if (Records() && !m_open.alerts) m_open.alerts.emplace(m_host.AlertsToUndo());
}

void CUndoStack::CoverSetting(const STextSetting& setting) {
    if (!Records()) return;
    m_open.settingOf = &setting;
    m_open.setting = {m_host.Settings().ReadTextOrDefault(setting), {}};
}

void CUndoStack::BeforeRow(int row) {
    if (Records()) m_open.rows.BeforeRow(m_host.Rows(), row);
}

void CUndoStack::BeforeRowsMove() {
    if (Records()) m_open.rows.BeforeRowsMove(m_host.Rows());
}

void CUndoStack::RowsInserted(int firstRow, int count) {
    if (Records()) m_open.rows.RowsInserted(m_host.Rows(), firstRow, count);
}

void CUndoStack::RowsRemoved(const std::vector<SPlacedRow>& rows) {
    if (Records()) m_open.rows.RowsRemoved(rows);
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

bool CUndoStack::Saved(const SSavePoint& point) {
    if (point.otherChanges != m_otherChanges) return false;
    m_savedState = point.state;
    return State() == point.state;
}

// A step is whole

void CUndoStack::CloseStep() {
    CloseOpen();
    if (!IsEmpty(m_open)) {
        Push();
    } else {
        if (!m_cancelled) m_host.SetModified(true); // The user was at work, though nothing came of it.
        if (m_host.ChangeCount() != m_changesAtBegin) ForgetSavedState();
    }
    m_open = {};
}

// Keeps what differs from the document.
void CUndoStack::CloseOpen() {
    m_open.rows.Close(m_host.Rows());
    m_open.layout->present = m_host.Layout();
    if (IsSameLayout(m_open.layout->other, m_open.layout->present)) m_open.layout.reset();
    if (m_open.alerts) m_open.alerts->Close(m_host.AlertsToUndo());
    if (m_open.alerts && m_open.alerts->IsEmpty()) m_open.alerts.reset();
    if (!m_open.setting) return;
    m_open.setting->present = m_host.Settings().ReadTextOrDefault(*m_open.settingOf);
    if (m_open.setting->present == m_open.setting->other) m_open.setting.reset();
}

bool CUndoStack::IsEdit(const SStep& step) { return step.rows.IsEdit() || step.layout || step.alerts; }

bool CUndoStack::IsEmpty(const SStep& step) {
    return step.rows.IsEmpty() && !step.layout && !step.alerts && !step.setting;
}

void CUndoStack::Push() {
    const bool edit = IsEdit(m_open);
    m_redo.clear();
    m_open.state = edit ? ++m_lastState : State();
    Measure(m_open);
    m_undo.push_back(std::move(m_open));
    if (edit && m_host.ChangeCount() == m_changesAtBegin) m_host.SetModified(true);
    Trim();
}

void CUndoStack::Measure(SStep& step) {
    step.bytes = sizeof step + step.name.capacity() + step.rowIds.capacity() * sizeof(uint32_t) + step.rows.Bytes();
    if (step.layout) step.bytes += BytesOf(step.layout->other) + BytesOf(step.layout->present);
    if (step.alerts) step.bytes += step.alerts->Bytes();
    if (step.setting) step.bytes += step.setting->other.capacity() + step.setting->present.capacity();
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

SUndoPlace CUndoStack::Apply(CSteps& from, CSteps& to, bool undo) {
    if (m_depth > 0 || m_applying || from.empty()) return {};
    SStep step = std::move(from.back());
    from.pop_back();
    const uint64_t before = undo ? step.state : State();
    STouched touched;
    Exchange(step, touched);
    SUndoPlace place = PlaceOf(step, touched);
    Measure(step);
    to.push_back(std::move(step));
    Trim();
    m_applying = true; // The document is marked by the state that it returned to.
    if (State() == m_savedState)
        m_host.SetModified(false);
    else if (State() != before)
        m_host.SetModified(true);
    m_applying = false;
    return place;
}

void CUndoStack::Exchange(SStep& step, STouched& touched) {
    m_applying = true;
    m_host.BeginExchange();
    step.rows.Exchange(m_host, touched);
    if (step.layout) ExchangeLayout(*step.layout, touched);
    if (step.alerts) step.alerts->Exchange(m_host.AlertsToUndo());
    if (step.setting) ExchangeSetting(*step.settingOf, *step.setting);
    m_host.EndExchange();
    m_applying = false;
}

void CUndoStack::ExchangeLayout(SOther<SLayout>& layout, STouched& touched) {
    const SLayout& to = layout.other;
    SLayout now = m_host.Layout();
    if (!AreSameColumns(layout.present.columns, to.columns)) now.columns = to.columns;
    if (layout.present.grownRows != to.grownRows) now.grownRows = to.grownRows;
    if (layout.present.options != to.options) {
        const SWatchlistOptions remembered = now.options;
        now.options = to.options;
        now.options.placement = remembered.placement; // These are remembered, not edited.
        now.options.exporting = remembered.exporting;
        now.options.scale = remembered.scale;
    }
    m_host.SetLayout(now);
    if (const auto [first, last] = DifferentColumns(layout.present.columns, to.columns); first > 0) {
        touched.firstColumn = first;
        touched.lastColumn = last;
    }
    std::swap(layout.present, layout.other);
}

// What another window wrote since is not put back.
void CUndoStack::ExchangeSetting(const STextSetting& setting, SOther<std::string>& texts) {
    CSettings& settings = m_host.Settings();
    if (settings.ReadTextOrDefault(setting) == texts.present && settings.WriteText(setting, texts.other))
        std::swap(texts.present, texts.other);
}

SUndoPlace CUndoStack::PlaceOf(const SStep& step, const STouched& touched) const {
    SUndoPlace place;
    place.done = true;
    place.firstColumn = step.firstColumn != 0 ? step.firstColumn : touched.firstColumn;
    place.lastColumn = step.firstColumn != 0 ? step.lastColumn : touched.lastColumn;
    const std::vector<int> rowOf = m_host.Rows().RowsOfIds();
    std::vector<int>& rows = place.rows;
    for (const uint32_t id : step.rowIds.empty() ? touched.rowIds : step.rowIds)
        if (id < rowOf.size() && rowOf[id] != 0) rows.push_back(rowOf[id]);
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (rows.empty()) {
        place.firstRow = place.lastRow = touched.gap;
        return place;
    }
    place.firstRow = place.lastRow = rows.front();
    for (size_t i = 1; i < rows.size() && rows[i] == place.lastRow + 1; ++i) ++place.lastRow;
    return place;
}

} // namespace vx
