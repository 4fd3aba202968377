#include "watchlist/document/RowTable.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace vx {

bool CRowTable::SetSymbol(int row, std::string_view symbol) {
    if (row < 1 || row > kMaxRow) return false;
    if (symbol.empty()) {
        ClearSymbol(row);
        return true;
    }
    MakeId(row);
    if (At(row).symbol.empty()) Count(row, 1);
    At(row).symbol = symbol;
    m_lastSymbolRow = std::max(m_lastSymbolRow, row);
    return true;
}

void CRowTable::ClearSymbol(int row) {
    if (!HasSymbol(row)) return;
    At(row).symbol.clear();
    Count(row, -1);
    if (row == m_lastSymbolRow) FindLastSymbolRow(row);
}

std::string_view CRowTable::Symbol(int row) const {
    const SRow* entry = Find(row);
    return entry ? std::string_view(entry->symbol) : std::string_view{};
}

uint32_t CRowTable::Id(int row) const {
    const SRow* entry = Find(row);
    return entry ? entry->id : 0;
}

uint32_t CRowTable::MakeId(int row) {
    if (row < 1 || row > kMaxRow) return 0;
    GrowTo(row);
    if (At(row).id == 0) At(row).id = ++m_lastId;
    return At(row).id;
}

int CRowTable::RowOfId(uint32_t id) const {
    if (id == 0) return 0;
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [=](const SRow& row) { return row.id == id; });
    return found == m_rows.end() ? 0 : static_cast<int>(found - m_rows.begin()) + 1;
}

std::vector<int> CRowTable::RowsOfIds(const std::vector<uint32_t>& ids) const {
    std::unordered_map<uint32_t, int> rows;
    rows.reserve(ids.size());
    for (const uint32_t id : ids) rows.emplace(id, 0);
    for (size_t i = 0; i < m_rows.size(); ++i)
        if (const auto found = rows.find(m_rows[i].id); found != rows.end() && m_rows[i].id != 0)
            found->second = static_cast<int>(i) + 1;
    std::vector<int> out(ids.size());
    std::transform(ids.begin(), ids.end(), out.begin(), [&](uint32_t id) { return rows[id]; });
    return out;
}

void CRowTable::SetId(int row, uint32_t id) {
    if (row < 1 || row > kMaxRow) return;
    GrowTo(row);
    At(row).id = id;
}

void CRowTable::SetHidden(int row, bool hidden) {
    if (row < 1 || row > kMaxRow || hidden == IsHidden(row)) return;
    GrowTo(row);
    At(row).hidden = hidden;
    m_hiddenCount += hidden ? 1 : -1;
}

bool CRowTable::IsHidden(int row) const {
    const SRow* entry = Find(row);
    return entry && entry->hidden;
}

std::vector<int> CRowTable::HiddenRows() const {
    std::vector<int> out;
    if (m_hiddenCount == 0) return out;
    out.reserve(static_cast<size_t>(m_hiddenCount));
    for (size_t i = 0; i < m_rows.size(); ++i)
        if (m_rows[i].hidden) out.push_back(static_cast<int>(i) + 1);
    return out;
}

int CRowTable::LastSymbolRow() const { return m_lastSymbolRow; }

void CRowTable::Clear() {
    m_rows.clear();
    CountAll();
}

void CRowTable::InsertRows(int firstRow, int count) {
    const int size = static_cast<int>(m_rows.size());
    if (firstRow < 1 || count < 1 || firstRow > size) return;
    count = std::min(count, kMaxRow);
    m_rows.resize(static_cast<size_t>(size + count));
    std::rotate(m_rows.begin() + (firstRow - 1), m_rows.begin() + size, m_rows.end());
    if (m_rows.size() > kMaxRow) m_rows.resize(kMaxRow);
    CountAll();
}

void CRowTable::RemoveRows(int firstRow, int count) {
    const int size = static_cast<int>(m_rows.size());
    if (firstRow < 1 || count < 1 || firstRow > size) return;
    const auto first = m_rows.begin() + (firstRow - 1);
    m_rows.erase(first, first + std::min(count, size - firstRow + 1));
    CountAll();
}

void CRowTable::Reorder(const std::vector<int>& newRowOf) {
    const int covered = static_cast<int>(newRowOf.size()) - 1;
    if (covered < 1 || covered > kMaxRow) return;
    GrowTo(covered);
    std::vector<SRow> moved(static_cast<size_t>(covered));
    for (int row = 1; row <= covered; ++row)
        moved[static_cast<size_t>(newRowOf[static_cast<size_t>(row)]) - 1] = std::move(At(row));
    std::move(moved.begin(), moved.end(), m_rows.begin());
    CountAll();
}

const CRowTable::SRow* CRowTable::Find(int row) const {
    return row < 1 || static_cast<size_t>(row) > m_rows.size() ? nullptr : &m_rows[static_cast<size_t>(row) - 1];
}

void CRowTable::GrowTo(int row) {
    if (m_rows.size() < static_cast<size_t>(row)) m_rows.resize(static_cast<size_t>(row));
}

void CRowTable::Count(int row, int change) {
    uint16_t& block = m_blocks[static_cast<size_t>((row - 1) / kBlock)];
    block = static_cast<uint16_t>(block + change);
}

void CRowTable::CountAll() {
    m_blocks.fill(0);
    m_hiddenCount = 0;
    for (int row = 1; row <= static_cast<int>(m_rows.size()); ++row) {
        if (!At(row).symbol.empty()) Count(row, 1);
        if (At(row).hidden) ++m_hiddenCount;
    }
    FindLastSymbolRow(static_cast<int>(m_rows.size()));
}

void CRowTable::FindLastSymbolRow(int from) {
    while (from > 0 && m_blocks[static_cast<size_t>((from - 1) / kBlock)] == 0) from = (from - 1) / kBlock * kBlock;
    while (from > 0 && At(from).symbol.empty()) --from;
    m_lastSymbolRow = from;
}

} // namespace vx
