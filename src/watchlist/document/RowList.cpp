// SPDX-License-Identifier: MIT
#include "watchlist/document/RowList.h"

#include <algorithm>
#include <cstddef>

namespace vx {

namespace {

constexpr size_t kFewRows = 16; ///< Up to here moving all of them costs nothing that could be felt.

std::ptrdiff_t Offset(size_t index) { return static_cast<std::ptrdiff_t>(index); }

} // namespace

CRowList::CRowList(std::vector<uint32_t> rows) : m_slots(std::move(rows)) { Tidy(); }

bool CRowList::Insert(uint32_t row) {
    const auto index = static_cast<size_t>(std::lower_bound(begin(), end(), row) - begin());
    if (index < size() && (*this)[index] == row) return false;
    if (index < size() / 2 && size() >= kFewRows && m_first == 0) MakeRoomInFront();
    const auto first = m_slots.begin() + Offset(m_first);
    if (m_first > 0 && index <= size() / 2) {
        std::move(first, first + Offset(index), first - 1);
        --m_first;
        m_slots[m_first + index] = row;
    } else {
        m_slots.insert(first + Offset(index), row);
    }
    return true;
}

bool CRowList::Erase(uint32_t row) {
    const auto index = static_cast<size_t>(std::lower_bound(begin(), end(), row) - begin());
    if (index == size() || (*this)[index] != row) return false;
    const auto first = m_slots.begin() + Offset(m_first);
    if (size() >= kFewRows && index < size() / 2) {
        std::move_backward(first, first + Offset(index), first + Offset(index) + 1);
        ++m_first;
    } else {
        m_slots.erase(first + Offset(index));
    }
    return true;
}

bool CRowList::Has(uint32_t row) const { return std::binary_search(begin(), end(), row); }

void CRowList::Tidy() {
    std::sort(m_slots.begin(), m_slots.end());
    m_slots.erase(std::unique(m_slots.begin(), m_slots.end()), m_slots.end());
}

void CRowList::MakeRoomInFront() {
    const size_t room = size();
    m_slots.insert(m_slots.begin(), room, 0);
    m_first = room;
}

} // namespace vx
