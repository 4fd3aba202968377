// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

namespace vx {

/// Grid row numbers in rising order, each once.
///
/// Shape   one row is held inside. One symbol may be in every row of the longest watchlist, and rows come and go from
///         either end: an insertion or removal moves only the numbers on the shorter side of its place
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
        uint32_t* const rows = m_many ? m_many->slots.data() : &m_one;
        size_t kept = 0;
        bool rising = true;
        for (const uint32_t row : *this) {
            const auto to = static_cast<uint32_t>(newRow(static_cast<int>(row)));
            if (to == 0) continue;
            rising = rising && (kept == 0 || rows[kept - 1] < to);
            rows[kept++] = to; // Never in front of the row that is read next.
        }
        if (!m_many) {
            m_hasOne = kept > 0;
            return;
        }
        m_many->slots.resize(kept);
        m_many->first = 0;
        if (!rising) Tidy();
    }

    bool empty() const { return size() == 0; }
    size_t size() const { return m_many ? m_many->slots.size() - m_many->first : size_t{m_hasOne}; }
    const uint32_t* begin() const { return m_many ? m_many->slots.data() + m_many->first : &m_one; }
    const uint32_t* end() const { return begin() + size(); }
    uint32_t front() const { return *begin(); }
    uint32_t back() const { return end()[-1]; }
    uint32_t operator[](size_t index) const { return begin()[index]; }

    using value_type = uint32_t;
    using const_iterator = const uint32_t*;

private:
    struct SMany {
        std::vector<uint32_t> slots;
        size_t first = 0; ///< Slots before it are room for rows at the front.
    };

    void Tidy();
    void MakeRoomInFront();

    std::unique_ptr<SMany> m_many; ///< From the second row on.
    uint32_t m_one = 0;            ///< The only row, when m_hasOne says that there is one.
    bool m_hasOne = false;
};
static_assert(sizeof(CRowList) == 16);

} // namespace vx
