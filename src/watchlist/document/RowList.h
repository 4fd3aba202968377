// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace vx {

/// Grid row numbers in rising order, each once.
///
/// One symbol may be in every row of the longest watchlist, and rows come and go from either end: an insertion or
/// removal moves only the numbers on the shorter side of its place.
///
/// Thread  any, as a std::vector
class CRowList {
public:
    CRowList() = default;
    CRowList(std::initializer_list<uint32_t> rows) : CRowList(std::vector<uint32_t>(rows)) {}
    /// Takes rows in any order.
    explicit CRowList(std::vector<uint32_t> rows);

    /// False when the row was there already.
    bool Insert(uint32_t row);
    /// False when the row was not there.
    bool Erase(uint32_t row);
    bool Has(uint32_t row) const;

    /// Gives every row the number newRow(row), 0 to drop it.
    template <typename NewRow> void Renumber(NewRow&& newRow) {
        size_t kept = 0;
        bool rising = true;
        for (const uint32_t row : *this) {
            const auto to = static_cast<uint32_t>(newRow(static_cast<int>(row)));
            if (to == 0) continue;
            rising = rising && (kept == 0 || m_slots[kept - 1] < to);
            m_slots[kept++] = to; // Never in front of the row that is read next.
        }
        m_slots.resize(kept);
        m_first = 0;
        if (!rising) Tidy();
    }

    bool empty() const { return m_first == m_slots.size(); }
    size_t size() const { return m_slots.size() - m_first; }
    const uint32_t* begin() const { return m_slots.data() + m_first; }
    const uint32_t* end() const { return m_slots.data() + m_slots.size(); }
    uint32_t front() const { return *begin(); }
    uint32_t back() const { return m_slots.back(); }
    uint32_t operator[](size_t index) const { return begin()[index]; }

    using value_type = uint32_t;
    using const_iterator = const uint32_t*;

private:
    void Tidy();
    void MakeRoomInFront();

    std::vector<uint32_t> m_slots;
    size_t m_first = 0; ///< Slots before it are room for rows at the front.
};

} // namespace vx
