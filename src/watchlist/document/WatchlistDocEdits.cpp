// SPDX-License-Identifier: MIT
#include "data/store/L1DataStore.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <utility>

namespace vx {

// The door of the document: what a change may do, and what the view hears of it.

class CWatchlistDoc::CEditor final : public CWatchlistEdit {
public:
    explicit CEditor(CWatchlistDoc& doc) : m_doc(doc) {}

    void PlaceSymbol(int row, std::string_view symbol) override { m_doc.PlaceSymbol(row, symbol); }
    void EnterSymbol(int row, std::string_view symbol) override { m_doc.EnterSymbol(row, symbol); }
    void SetAnnotation(int row, std::string_view text) override { m_doc.SetAnnotation(row, text); }
    void EmptyRow(int row) override { m_doc.EmptyRow(row); }
    void ShowText(int row, std::string_view text) override { m_doc.m_rows.SetText(row, &SRowExtras::shown, text); }
    void KeepTyped(int row, std::string_view text) override { m_doc.m_rows.SetText(row, &SRowExtras::typed, text); }
    bool ReorderRows(const std::vector<int>& newRowOf) override { return m_doc.ReorderRows(newRowOf); }
    void SetHidden(int row, bool hidden) override {
        m_doc.m_rows.SetHidden(row, hidden);
        m_doc.RebuildGrid();
    }

    void SetColumnsByName(std::string_view names) override {
        m_doc.SetColumnsByName(names);
        m_doc.RebuildGrid();
    }
    void SetUnknownLines(std::vector<std::string> lines) override { m_doc.m_unknownLines = std::move(lines); }
    CColumnMap& Columns() override {
        m_doc.RebuildGrid();
        return m_doc.m_columns;
    }
    SWatchlistOptions& Options() override {
        m_doc.RebuildGrid();
        return m_doc.m_options;
    }
    CNoteStore& Notes() override { return m_doc.m_notes; }
    CCellFormatStore& Formats() override { return m_doc.m_formats; }
    CAlertsMap& Alerts() override {
        m_doc.m_undo.CoverAlerts();
        return m_doc.m_alerts;
    }

    void SelectColumns(int firstColumn, int lastColumn) override {
        m_doc.m_undo.SelectColumns(firstColumn, lastColumn);
    }
    void SelectRows(int firstRow, int lastRow) override { m_doc.m_undo.SelectRows(firstRow, lastRow); }
    void CoverSetting(const STextSetting& setting) override { m_doc.m_undo.CoverSetting(setting); }
    void Cancel() override { m_doc.m_undo.Cancel(); }
    void BeginBatch() override { m_doc.BeginBatch(); }
    void EndBatch() override { m_doc.EndBatch(); }

private:
    CWatchlistDoc& m_doc;
};

CWatchlistDoc::CWatchlistDoc(CL1DataStore& store, CSettings& settings, CWatchlistFrame& frame)
    : m_store(store), m_settings(settings), m_frame(frame), m_changes(*this), m_status("Ready"),
      m_editor(std::make_unique<CEditor>(*this)) {
    m_alerts.SetObserver(this);
    m_rows.SetRecorder(this);
}

CWatchlistDoc::~CWatchlistDoc() {
    m_observer = nullptr;
    m_alerts.SetObserver(nullptr);
    m_rows.SetRecorder(nullptr);
    m_store.RemoveListener(m_changes);
}

CWatchlistEdit& CWatchlistDoc::Editor() { return *m_editor; }

void CWatchlistDoc::BeginEdit(std::string_view name) {
    BeginNotices();
    m_undo.Begin(name);
}

// The step is whole before the view, and the menus with it, hear of the change.
void CWatchlistDoc::EndEdit() {
    m_undo.End();
    EndNotices();
}

void CWatchlistDoc::BeginUpdate() {
    BeginNotices();
    m_undo.Pause();
}

void CWatchlistDoc::EndUpdate() {
    m_undo.Resume();
    EndNotices();
}

void CWatchlistDoc::SetModified(bool modified) {
    m_modified = modified;
    if (modified) ++m_changeCount;
    m_undo.ModifiedSet(modified);
}

void CWatchlistDoc::MarkSaved(const SSavePoint& point) {
    if (m_undo.Saved(point) || m_changeCount == point.changes) SetModified(false);
}

void CWatchlistDoc::RememberExport(const SExportOptions& exporting) {
    if (std::exchange(m_options.exporting, exporting) != exporting) SetModified(true);
}

void CWatchlistDoc::RememberScale(const SScale& scale) {
    if (std::exchange(m_options.scale, scale) != scale) SetModified(true);
}

// What the view hears

void CWatchlistDoc::BeginNotices() {
    if (m_notices.depth++ == 0) m_notices.rowCount = RowCount();
}

void CWatchlistDoc::EndNotices() {
    if (--m_notices.depth > 0) return;
    const SNotices notices = std::exchange(m_notices, {});
    if (!m_observer || m_loading) return;
    if (notices.rebuild || notices.rowCount != RowCount()) return m_observer->OnGridRebuilt();
    if (notices.lastRow == 0) return;
    if (notices.order || notices.rows.size() == SNotices::kMostRows)
        return m_observer->OnRowsChanged(notices.firstRow, notices.lastRow);
    for (const int row : notices.rows) m_observer->OnRowChanged(row);
}

void CWatchlistDoc::BeforeRowsMove() {
    ++m_revision;
    m_undo.Recorder().BeforeRowsMove();
}

void CWatchlistDoc::BeforeRow(int row) {
    ++m_revision;
    m_undo.Recorder().BeforeRow(row);
    if (m_notices.depth == 0) return;
    if (row == 0)
        m_notices.rebuild = true; // The format of a column or of the whole grid.
    else
        NoteRows(row, row);
}

void CWatchlistDoc::NoteRows(int firstRow, int lastRow) {
    std::vector<int>& rows = m_notices.rows;
    if (rows.size() < SNotices::kMostRows && std::ranges::find(rows, firstRow) == rows.end()) rows.push_back(firstRow);
    m_notices.firstRow = m_notices.lastRow == 0 ? firstRow : std::min(m_notices.firstRow, firstRow);
    m_notices.lastRow = std::max(m_notices.lastRow, lastRow);
}

void CWatchlistDoc::RowChanged(int row) {
    if (m_notices.depth > 0)
        NoteRows(row, row);
    else if (m_observer && !m_loading)
        m_observer->OnRowChanged(row);
}

void CWatchlistDoc::RebuildGrid() {
    ++m_revision;
    if (m_notices.depth > 0)
        m_notices.rebuild = true;
    else if (m_observer && !m_loading)
        m_observer->OnGridRebuilt();
}

} // namespace vx
