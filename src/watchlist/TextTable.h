#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The records of a text whose fields stand between separators, read one by one. A field that begins with a double
/// quote goes on to the next one and may hold separators, line ends and, doubled, quotes.
///
/// Errors  none: a quote without an end goes to the end of its line
/// Owns    the fields of the present record; not the text
/// Thread  any
class CTextTable {
public:
    CTextTable(std::string_view text, char separator) : m_text(text), m_separator(separator) {}

    /// Goes to the next record; false when there is none.
    bool Next();
    /// A field, counted from 0; empty when the record has not so many.
    std::string_view Field(size_t index) const {
        return index < m_count ? std::string_view(m_fields[index]) : std::string_view{};
    }
    size_t FieldCount() const { return m_count; }
    /// Where the record begins, lines counted from 1.
    size_t Line() const { return m_line; }
    /// Bytes up to the end of the record.
    size_t Taken() const { return m_at; }

private:
    void TakeField(std::string& field);
    bool TakeQuoted(std::string& field);
    void TakeLineEnd();

    std::string_view m_text;
    char m_separator;
    size_t m_at = 0;
    size_t m_line = 0;
    size_t m_nextLine = 1;
    std::vector<std::string> m_fields; ///< The first m_count of them; kept for their memory.
    size_t m_count = 0;
};

/// Where a table's column stands.
struct STextTableHeader {
    char separator = ',';
    size_t column = 0;
    size_t line = 0; ///< The header's.
};

/// Whether the first line of a text that is not empty is a header with a column of that name, upper and lower case the
/// same.
std::optional<STextTableHeader> FindTableHeader(std::string_view text, std::string_view column);

} // namespace vx
