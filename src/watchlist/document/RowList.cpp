// SPDX-License-Identifier: MIT
#include "watchlist/document/RowList.h"

#include <algorithm>
#include <cstddef>

namespace vx {

namespace {

constexpr size_t kFewRows = 16; ///< Up to here moving all of them costs nothing that could be felt.

std::ptrdiff_t Offset(size_t index) { return static_cast<std::ptrdiff_t>(index); }

} // namespace

CRowList::CRowList(std::vector<uint32_t> rows) : m_many(std::make_unique<SMany>(SMany{std::move(rows), 0})) { Tidy(); }

bool CRowList::Insert(uint32_t row) {
    if (empty() && !m_many) {
        m_one = row;
        m_hasOne = true;
        return true;
    }
    const auto index = static_cast<size_t>(std::lower_bound(begin(), end(), row) - begin());
    if (index < size() && (*this)[index] == row) return false;
    if (!m_many) m_many = std::make_unique<SMany>(SMany{{m_one}, 0});
    if (index < size() / 2 && size() >= kFewRows && m_many->first == 0) MakeRoomInFront();
    std::vector<uint32_t>& slots = m_many->slots;
    const auto first = slots.begin() + Offset(m_many->first);
    if (m_many->first > 0 && index <= size() / 2) {
        std::move(first, first + Offset(index), first - 1);
        --m_many->first;
        slots[m_many->first + index] = row;
    } else {
        slots.insert(first + Offset(index), row);
    }
    return true;
}

bool CRowList::Erase(uint32_t row) {
    const auto index = static_cast<size_t>(std::lower_bound(begin(), end(), row) - begin());
    if (index == size() || (*this)[index] != row) return false;
    if (!m_many) {
        m_hasOne = false;
        return true;
    }
    const auto first = m_many->slots.begin() + Offset(m_many->first);
    if (size() >= kFewRows && index < size() / 2) {
        std::move_backward(first, first + Offset(index), first + Offset(index) + 1);
        ++m_many->first;
    } else {
        m_many->slots.erase(first + Offset(index));
    }
    return true;
}

bool CRowList::Has(uint32_t row) const { return std::binary_search(begin(), end(), row); }

void CRowList::Tidy() {
    std::vector<uint32_t>& slots = m_many->slots;
    std::sort(slots.begin(), slots.end());
    slots.erase(std::unique(slots.begin(), slots.end()), slots.end());
}

void CRowList::MakeRoomInFront() {
    const size_t room = size();
    m_many->slots.insert(m_many->slots.begin(), room, 0);
    m_many->first = room;
}

} // namespace vx
