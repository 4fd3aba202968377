#pragma once

#include "base/CsvReader.h"
#include "vxconnect/FieldNames.h"
#include "vxconnect/JsonFields.h"
#include "vxconnect/LineBuffer.h"

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
/// Which of the two it is, is seen from the first character that is not blank.
///
/// A value that is wrong leaves its place in the row empty, a name that is no field is passed over; both are told.
///
/// Owns    its bytes: no more than a line of 1 MB and what was appended last
/// Thread  any
class CRowReader {
public:
    /// Called with a line's number and what is wrong with it, the field named: "field \"Last\": \"abc\" is not a
    /// number".
    using Complain = std::function<void(uint64_t line, const std::string& what)>;
    enum class EOrigin {
        File,
        Stream, ///< Whoever wrote it may have been stopped within its last line.
    };

    CRowReader(CFieldNames names, EOrigin origin, Complain complain)
        : m_names(std::move(names)), m_origin(origin), m_complain(std::move(complain)) {}

    /// Begins anew, with a header if it is CSV.
    void Restart();
    void Append(std::string_view bytes);
    /// No more bytes come.
    void End();

    enum class EResult {
        Row,
        Blank,    ///< A line with nothing in it.
        NoRow,    ///< A header, or a line that is wrong, which has been told.
        NeedsMore ///< No whole line is left.
    };
    EResult Next(SRow& row);
    /// The number of the line that was read last, from 1.
    uint64_t Line() const { return m_linesBefore + m_line; }
    /// Whether the columns are known, or need no header. After a wrong header the next line is taken for it.
    bool HasHeader() const { return m_format == EFormat::Json || !m_columns.empty(); }

private:
    enum class EFormat { Unknown, Csv, Json };

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
    CLineBuffer m_lines;
    uint64_t m_linesBefore = 0;                // Blank ones before the first that is not.
    uint64_t m_line = 0;                       // That is being read.
    std::vector<const SInputField*> m_columns; // Of the file, or of the object that is being read; null: passed over.
    size_t m_symbolColumn = 0;
    std::string m_symbolName; // As the header has it.
    std::vector<SJsonField> m_members;
    std::vector<SRowValue> m_dates;     // That came with times.
    bool m_symbolWrong = false;         // Which has been told.
    std::set<std::string> m_passedOver; // Names that have been told.
    std::set<size_t> m_capped;          // Slots of which it has been told.
};

} // namespace vx::sim
