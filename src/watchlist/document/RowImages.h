#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// What stands in one row, formats aside. The texts belong to whoever made the image.
struct SRowImage {
    std::string_view symbol;
    std::string_view annotation; ///< As stored, with its mark.
    std::string_view note;
    std::string_view shown;    ///< In place of the symbol.
    std::string_view rejected; ///< The symbol whose rejection the annotation tells of.
    std::string_view typed;    ///< By the user, where the row shows something else.

    bool operator==(const SRowImage&) const = default;
    bool IsBlank() const { return *this == SRowImage{}; }
};

/// Images of many rows, closely packed: a row that holds a symbol takes a dozen bytes.
///
/// Shape   row number that stays with the row -> image; in the order in which they were added
/// Owns    the texts
/// Thread  any
class CRowImages {
public:
    void Add(uint32_t id, const SRowImage& image);

    /// Calls visit(size_t index, const SRowImage&) for each.
    template <typename Visit> void ForEach(Visit&& visit) const {
        size_t at = 0;
        for (size_t i = 0; i < m_ids.size(); ++i) visit(i, Unpack(at));
    }

    const std::vector<uint32_t>& Ids() const { return m_ids; }
    size_t Bytes() const { return m_ids.capacity() * sizeof(uint32_t) + m_packed.capacity(); }

private:
    SRowImage Unpack(size_t& at) const;

    std::vector<uint32_t> m_ids;
    std::string m_packed;
};

} // namespace vx
