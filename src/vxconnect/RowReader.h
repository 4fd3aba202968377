#pragma once

#include "vxconnect/InputFields.h"
#include "vxconnect/JsonFields.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// One value for one slot, as the wire has it.
struct SRowValue {
    size_t slot = 0; ///< As in SInputField.
    std::string text;
};

/// What one line of a user's own data, or of a recording, says about one symbol.
struct SRow {
    std::string symbol;
    std::vector<SRowValue> values; ///< Not empty ones, without the symbol.
};

/// Reads a user's own data line by line: CSV whose first line names the columns, or one JSON object a line. Which of
/// the two it is, is seen from the first line that is not blank.
///
/// Thread  any one
class CRowReader {
public:
    enum class EResult { Row, NoRow, Error };

    /// Reads one line. NoRow: a header or blank line. After an error in the header the next line is taken for it.
    EResult Read(std::string_view line, SRow& row);
    /// What is wrong with the line, the field named: "field \"Last\": \"abc\" is not a number".
    const std::string& Error() const { return m_error; }
    /// Whether the columns are known, or need no header.
    bool HasHeader() const { return m_format != EFormat::Unknown; }

private:
    enum class EFormat { Unknown, Csv, Json };

    bool ReadHeader(std::string_view line);
    bool ReadCsv(std::string_view line, SRow& row);
    bool AddColumn(const SInputField& field);
    bool ReadJson(std::string_view line, SRow& row);
    bool Add(const SInputField& field, std::string_view text, SRow& row);
    bool Complain(std::string text);

    EFormat m_format = EFormat::Unknown;
    char m_separator = ',';
    std::vector<const SInputField*> m_columns; // Of the file, or of the object that is being read.
    std::vector<SJsonField> m_members;
    std::vector<std::string> m_values;
    std::string m_error;
};

} // namespace vx::sim
