#pragma once

#include "base/CsvReader.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace vx {

/// The records of a text whose fields stand between separators, read one by one as CCsvReader has them.
///
/// Owns    the fields of the present record; not the text
/// Thread  any
class CTextTable : private CCsvReader {
public:
    CTextTable(std::string_view text, char separator) : CCsvReader(separator), m_rest(text) {}

    /// Goes to the next record; false when there is none.
    bool Next();

    using CCsvReader::Field;
    using CCsvReader::FieldCount;
    using CCsvReader::Line;
    using CCsvReader::Taken;

private:
    std::string_view m_rest; // What the reader does not have yet.
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
