#include "watchlist/RowTextMap.h"

#include <utility>

namespace vx {

namespace {

template <typename Move> void Rearrange(std::map<int, std::string>& texts, Move newRow) {
    std::map<int, std::string> moved;
    for (auto& [row, text] : texts)
        if (const int to = newRow(row); to >= 1) moved.insert_or_assign(to, std::move(text));
    texts = std::move(moved);
}

} // namespace

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

void CRowTextMap::ShiftDown(int firstRow, int count) {
    Rearrange(m_texts, [=](int row) { return row < firstRow ? row : row + count; });
}

void CRowTextMap::ShiftUp(int firstRow, int count) {
    Rearrange(m_texts, [=](int row) {
        if (row < firstRow) return row;
        return row < firstRow + count ? 0 : row - count;
    });
}

void CRowTextMap::Reorder(const std::vector<int>& newRowOf) {
    Rearrange(m_texts, [&](int row) {
        return static_cast<size_t>(row) < newRowOf.size() ? newRowOf[static_cast<size_t>(row)] : row;
    });
}

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
