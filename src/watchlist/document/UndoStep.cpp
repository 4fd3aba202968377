#include "watchlist/document/UndoStep.h"

#include "watchlist/document/WatchlistDoc.h"

namespace vx {

CUndoStep::CUndoStep(CWatchlistDoc& doc, std::string_view name) : m_stack(doc.Undo()) { m_stack.Begin(name); }

CUndoStep::~CUndoStep() { m_stack.End(); }

void CUndoStep::Rename(std::string_view name) { m_stack.Rename(name); }

void CUndoStep::SelectColumns(int firstColumn, int lastColumn) { m_stack.SelectColumns(firstColumn, lastColumn); }

void CUndoStep::SelectRows(int firstRow, int lastRow) { m_stack.SelectRows(firstRow, lastRow); }

void CUndoStep::CoverAlerts() { m_stack.CoverAlerts(); }

void CUndoStep::CoverSetting(const STextSetting& setting) { m_stack.CoverSetting(setting); }

void CUndoStep::Cancel() { m_stack.Cancel(); }

} // namespace vx
