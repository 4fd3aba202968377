// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace vx {

/// The lines of a text, each ended by CR LF, LF, CR or the end of the text; behind the last line end is no line.
///
/// Owns    nothing: the views point into the text
/// Thread  any
class CTextLines {
public:
    explicit CTextLines(std::string_view text) : m_rest(text) {}

    /// Goes to the next line; false when there is none.
    bool Next() {
        if (m_rest.empty()) return false;
        const size_t end = m_rest.find_first_of("\r\n");
        m_line = m_rest.substr(0, end);
        ++m_number;
        if (end == std::string_view::npos)
            m_rest = {};
        else
            m_rest.remove_prefix(end + (m_rest.substr(end, 2) == "\r\n" ? 2 : 1));
        return true;
    }
    std::string_view Line() const { return m_line; }
    /// Of the line, counted from 1.
    size_t Number() const { return m_number; }
    /// What follows the line.
    std::string_view Rest() const { return m_rest; }

private:
    std::string_view m_rest;
    std::string_view m_line;
    size_t m_number = 0;
};

} // namespace vx
