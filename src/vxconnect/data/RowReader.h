// SPDX-License-Identifier: MIT
#pragma once

#include "base/CsvReader.h"
#include "base/Text.h"
#include "vxconnect/common/InputFields.h"
#include "vxconnect/data/JsonFields.h"

#include <cstddef>
#include <functional>
#include <set>
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

/// Reads a user's own data from bytes as they come: CSV whose first line names the columns, or one JSON object a line.
/// The first character that is not blank shows which of the two it is.
///
/// A wrong value is left out of its row and a name that is not a field is ignored; both are reported.
///
/// Owns    its bytes: no more than a line of 1 MB and what was appended last
/// Thread  any
class CRowReader {
public:
    /// Called with the number of a line and what is wrong with it, with the field's name: "field \"Last\": \"abc\" is
    /// not a number".
    using Complain = std::function<void(uint64_t line, const std::string& what)>;
    enum class EOrigin {
        File,
        Stream, ///< The writer may have been stopped in the middle of the last line.
    };

    CRowReader(CFieldNames names, EOrigin origin, Complain complain)
        : m_names(std::move(names)), m_origin(origin), m_complain(std::move(complain)) {}

    /// Starts a new text, with a header if it is CSV.
    void Restart();
    void Append(std::string_view bytes);
    /// No more bytes come.
    void End();

    enum class EResult {
        Row,
        Blank,    ///< An empty line.
        NoRow,    ///< A header, or a wrong line, which has been reported.
        NeedsMore ///< No whole line is left.
    };
    EResult Next(SRow& row);
    /// The number of the line that was read last, from 1.
    uint64_t Line() const { return m_linesBefore + m_line; }
    /// Whether the columns are known, or need no header. After a wrong header the next line is taken for it.
    bool HasHeader() const { return m_format == EFormat::Json || !m_columns.empty(); }

private:
    enum class EFormat { Unknown, Csv, Json };
    static constexpr size_t kMaxLine = CCsvReader::kMaxRecord;

    EResult NextCsv(SRow& row);
    EResult NextJson(SRow& row);
    EResult Finish(SRow& row);
    bool IsHeaderAgain() const;
    bool ReadHeader();
    bool ReadCsv(SRow& row);
    bool ReadJson(std::string_view line, SRow& row);
    bool IsBlankRecord() const;
    const SInputField* ColumnOf(std::string_view name);
    void Add(const SInputField& field, std::string_view text, SRow& row);
    bool Wrong(const std::string& what);

    const CFieldNames m_names;
    const EOrigin m_origin;
    const Complain m_complain;
    EFormat m_format = EFormat::Unknown;
    CCsvReader m_csv;
    CLineCutter m_lines{kMaxLine};
    uint64_t m_linesBefore = 0;                // Blank ones before the first that is not.
    uint64_t m_line = 0;                       // Being read.
    std::vector<const SInputField*> m_columns; // Of the file, or of the object that is being read; null: ignored.
    size_t m_symbolColumn = 0;
    std::string m_symbolName; // As the header has it.
    std::vector<SJsonField> m_members;
    std::vector<SRowValue> m_dates;  // Given together with times.
    bool m_symbolWrong = false;      // Which has been reported.
    std::set<std::string> m_ignored; // Names that have been reported.
    std::set<size_t> m_capped;       // Slots for which that has been reported.
};

} // namespace vx::sim
