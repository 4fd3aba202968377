#include "watchlist/WatchlistCells.h"

#include "data/CellText.h"
#include "watchlist/WatchlistDoc.h"

#include <span>

namespace vx {

namespace {

ETextRole RoleOf(EDirection direction) {
    switch (direction) {
    case EDirection::Down:
        return ETextRole::Down;
    case EDirection::Up:
        return ETextRole::Up;
    default:
        return ETextRole::Unchanged;
    }
}

} // namespace

CWatchlistCells::CWatchlistCells(const CWatchlistDoc& doc, uint8_t symbolFont) : m_doc(doc), m_symbolFont(symbolFont) {
    ColumnsChanged();
}

void CWatchlistCells::ColumnsChanged() {
    m_columns.clear();
    const auto& columns = m_doc.Columns().Columns();
    for (size_t position = 0; position < columns.size(); ++position) {
        const sColumnInfo& info = columns[position];
        const CColumnReader reader(m_doc, static_cast<int>(position));
        const bool number = reader.IsNumber();
        const bool news = info.name == kNewsColumn;
        m_columns.push_back({reader, info.Entry(),
                             number && m_doc.Options().useDefaultAlignment ? EAlign::Right : EAlign::Left,
                             info.name == kSymbolColumn, number && !news, news, info.name == "Tick Trend"});
    }
    m_painted.SetColumnCount(m_columns.size());
}

const CWatchlistCells::SColumn* CWatchlistCells::Column(int column) const {
    return column >= 1 && static_cast<size_t>(column) < m_columns.size() ? &m_columns[static_cast<size_t>(column)]
                                                                         : nullptr;
}

bool CWatchlistCells::DiffersFromPainted(int row, int column) const {
    SCell cell;
    Fill(row, column, cell);
    return !m_painted.Matches(row, column, cell);
}

void CWatchlistCells::FillCell(int row, int column, SCell& cell) const {
    Fill(row, column, cell);
    m_painted.Note(row, column, cell);
}

void CWatchlistCells::Fill(int row, int column, SCell& cell) const {
    const SColumn* info = Column(column);
    const std::string_view symbol = m_doc.RowSymbol(row);
    if (!info || !info->entry || symbol.empty()) return;
    const CSymbolRec* record = info->reader.FindRecord(row);
    const size_t length = info->reader.Read(row, record, std::span<char, kMostCellText>(cell.text, kMostCellText));
    cell.length = static_cast<uint16_t>(length);
    cell.align = info->align;
    cell.tickTrend = info->tickTrend;
    if (info->symbol) cell.font = m_symbolFont;
    cell.role = Role(*info, symbol, record);
}

ETextRole CWatchlistCells::Role(const SColumn& column, std::string_view symbol, const CSymbolRec* record) const {
    if (m_stale && record) return ETextRole::Stale;
    if (column.news) return m_doc.News().CountStyle(symbol) == ENewsStyle::Fresh ? ETextRole::Up : ETextRole::Normal;
    return column.directed && record ? RoleOf(CellDirection(*record, *column.entry)) : ETextRole::Normal;
}

void CWatchlistCells::FillHeader(int column, SCell& cell) const {
    const auto& columns = m_doc.Columns().Columns();
    if (column < 1 || static_cast<size_t>(column) >= columns.size()) return;
    cell.SetText(columns[static_cast<size_t>(column)].name);
    if (const SColumn* info = Column(column)) cell.align = info->align;
}

bool CWatchlistCells::FillSpan(int row, SCell& cell) const {
    if (m_doc.RowKind(row) != ERowKind::Annotation) return false;
    cell.font = m_symbolFont;
    cell.SetText(m_doc.AnnotationText(row));
    return true;
}

std::string CWatchlistCells::HeaderTip(int column) const {
    const SColumn* info = Column(column);
    if (!info) return {};
    const std::string& name = m_doc.Columns().At(column).name;
    if (!info->entry) return name + "\nNo field of this name is known; the column is kept and stays empty.";
    return name + "\n" + std::string(info->entry->description);
}

} // namespace vx
