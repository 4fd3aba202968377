#include "watchlist/document/RowTextMap.h"

#include "watchlist/document/RowKeyed.h"

namespace vx {

std::string_view CRowTextMap::Get(int row) const {
    const auto found = m_texts.find(row);
    return found == m_texts.end() ? std::string_view{} : std::string_view(found->second);
}

void CRowTextMap::Set(int row, std::string_view text) {
    if (row < 1) return;
    if (text.empty())
        m_texts.erase(row);
    else
        m_texts.insert_or_assign(row, std::string(text));
}

void CRowTextMap::ShiftDown(int firstRow, int count) { ShiftRowsDown(m_texts, firstRow, count); }

void CRowTextMap::ShiftUp(int firstRow, int count) { ShiftRowsUp(m_texts, firstRow, count); }

void CRowTextMap::Reorder(const std::vector<int>& newRowOf) { ReorderRows(m_texts, newRowOf); }

std::string CRowTextMap::Serialise() const {
    std::string out;
    for (const auto& [row, text] : m_texts) {
        out += std::to_string(row);
        out += ':';
        out += text;
        out += ';';
    }
    return out;
}

} // namespace vx
