#include "watchlist/WatchlistCells.h"

#include "data/CellText.h"
#include "data/DataInfo.h"
#include "data/L1DataStore.h"
#include "watchlist/WatchlistDoc.h"

#include <algorithm>

namespace vx {

namespace {

constexpr int kGridDefaultDecimals = 4;

bool IsNumber(EValueClass valueClass) {
    switch (valueClass) {
    case EValueClass::Fixed:
    case EValueClass::Price:
    case EValueClass::Integer:
    case EValueClass::Unsigned:
    case EValueClass::Ratio:
    case EValueClass::FourPlaces:
        return true;
    default:
        return false;
    }
}

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
    for (const sColumnInfo& info : m_doc.Columns().Columns()) {
        SColumn column;
        column.entry = info.Entry();
        if (column.entry) {
            const bool number = IsNumber(column.entry->valueClass);
            column.decimals = CDataInfo::DecimalPlaces(info.name).value_or(kGridDefaultDecimals);
            column.align = number && m_doc.Options().useDefaultAlignment ? EAlign::Right : EAlign::Left;
            column.directed = number;
            column.symbol = info.name == "Symbol";
            column.tickTrend = info.name == "Tick Trend";
        }
        m_columns.push_back(column);
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
    cell.align = info->align;
    if (const CSymbolRec* record = m_doc.Store().Find(symbol)) FillFromRecord(*record, *info, cell);
    if (info->symbol) {
        cell.font = m_symbolFont;
        if (cell.length == 0) cell.SetText(symbol);
    }
}

void CWatchlistCells::FillFromRecord(const CSymbolRec& record, const SColumn& column, SCell& cell) const {
    const SFieldEntry& entry = *column.entry;
    const int places = PlacesFor(record, entry, column.decimals);
    cell.length = static_cast<uint16_t>(
        CellText(record, entry, places, std::span<char, kMostCellText>(cell.text, kMostCellText)));
    cell.tickTrend = column.tickTrend;
    if (m_stale)
        cell.role = ETextRole::Stale;
    else if (column.directed)
        cell.role = RoleOf(CellDirection(record, entry));
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
