#include "watchlist/RowTable.h"

namespace vx {

bool CRowTable::SetSymbol(int row, std::string_view symbol) {
    if (row < 1 || row > kMaxRow) return false;
    if (symbol.empty()) {
        ClearSymbol(row);
        return true;
    }
    if (m_rows.size() < static_cast<size_t>(row)) m_rows.resize(static_cast<size_t>(row));
    SRow& entry = m_rows[static_cast<size_t>(row) - 1];
    if (entry.id == 0) entry.id = ++m_lastId;
    entry.symbol = symbol;
    if (row > m_lastSymbolRow) m_lastSymbolRow = row;
    return true;
}

void CRowTable::ClearSymbol(int row) {
    if (row < 1 || static_cast<size_t>(row) > m_rows.size()) return;
    m_rows[static_cast<size_t>(row) - 1].symbol.clear();
    while (m_lastSymbolRow > 0 && m_rows[static_cast<size_t>(m_lastSymbolRow) - 1].symbol.empty()) --m_lastSymbolRow;
}

std::string_view CRowTable::Symbol(int row) const {
    if (row < 1 || static_cast<size_t>(row) > m_rows.size()) return {};
    return m_rows[static_cast<size_t>(row) - 1].symbol;
}

uint32_t CRowTable::Id(int row) const {
    return row < 1 || static_cast<size_t>(row) > m_rows.size() ? 0 : m_rows[static_cast<size_t>(row) - 1].id;
}

int CRowTable::LastSymbolRow() const { return m_lastSymbolRow; }

void CRowTable::Clear() {
    m_rows.clear();
    m_lastSymbolRow = 0;
}

} // namespace vx
