#include "watchlist/document/NoteStore.h"

#include "watchlist/document/RowKeyed.h"

#include <algorithm>

namespace vx {

std::string_view CNoteStore::Get(int row) const {
    const auto found = m_notes.find(row);
    return found == m_notes.end() ? std::string_view{} : std::string_view(found->second);
}

void CNoteStore::Set(int row, std::string_view text) {
    if (row < 1) return;
    if (m_observer) m_observer->BeforeNote(row);
    std::string cleaned = Cleaned(text);
    if (cleaned.empty())
        m_notes.erase(row);
    else
        m_notes.insert_or_assign(row, std::move(cleaned));
}

void CNoteStore::Remove(int row) {
    const auto found = m_notes.find(row);
    if (found == m_notes.end()) return;
    if (m_observer) m_observer->BeforeNote(row);
    m_notes.erase(found);
}

std::string CNoteStore::Cleaned(std::string_view text) {
    std::string out(text);
    std::erase_if(out, [](char c) { return c == ';' || c == ':' || c == ','; });
    return out;
}

void CNoteStore::ShiftDown(int firstRow, int count) { ShiftRowsDown(m_notes, firstRow, count); }

void CNoteStore::ShiftUp(int firstRow, int count) { ShiftRowsUp(m_notes, firstRow, count); }

void CNoteStore::Reorder(const std::vector<int>& newRowOf) { ReorderRows(m_notes, newRowOf); }

} // namespace vx
