// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The separator of a CSV text by its first line: whichever of comma, semicolon and TAB occurs most often
/// outside quotes; the comma when none does.
char CsvSeparatorOf(std::string_view firstLine);

/// Reads the records of a CSV text from pieces of any size, one by one.
///
/// A record ends with CR LF, LF or CR. A field that begins with a double quote ends at the next one and may contain
/// separators, line ends and, doubled, quotes; blanks outside the quotes do not count. A quote is an ordinary character
/// when no closing one follows right before a separator or line end, within kMostQuotedLines and kMaxRecord: its field
/// then ends as an unquoted one does.
///
/// Shape   bytes in any encoding that contains ASCII -> fields of the same bytes; a blank line is a record of one
/// field,
///         a UTF-8 byte-order mark at the start is dropped
/// Errors  none: HasBadQuote and IsTooLong report what is odd about a record
/// Owns    its bytes: no more than a record of kMaxRecord and what was appended last
/// Thread  any
class CCsvReader {
public:
    static constexpr size_t kMaxRecord = 1'048'576;
    static constexpr size_t kMostQuotedLines = 64;
    static constexpr char kFindSeparator = '\0'; ///< From the first line that is not blank, with CsvSeparatorOf.

    explicit CCsvReader(char separator = kFindSeparator) : m_separator(separator) {}

    void Append(std::string_view bytes);
    /// No more bytes come: what is left is a record.
    void End() { m_ended = true; }
    /// Moves to the next record; false when more bytes are needed or none are left.
    bool Next();

    size_t FieldCount() const { return m_fields.size(); }
    /// A field, counted from 0, without its quotes; empty when the record has not so many. Holds until the reader is
    /// used again.
    std::string_view Field(size_t index) const;
    /// Where the record begins, lines counted from 1.
    uint64_t Line() const { return m_line; }
    /// A quote in it was read as an ordinary character.
    bool HasBadQuote() const { return m_badQuote; }
    /// It was longer than kMaxRecord; its fields are only its beginning.
    bool IsTooLong() const { return m_tooLong; }
    /// It has no line end: it is the last record and may be incomplete.
    bool IsUnended() const { return m_unended; }
    /// Bytes up to the end of the record.
    uint64_t Taken() const { return m_taken; }

private:
    enum class EState { FieldBegin, Plain, Quoted, Closed };
    struct SField {
        size_t begin = 0; // From the begin of the record.
        size_t size = 0;
        size_t unescaped = kNone; // Its place among those that held doubled quotes.
    };
    static constexpr size_t kNone = static_cast<size_t>(-1);

    std::string_view Text() const { return std::string_view(m_bytes).substr(m_begin); }
    bool Ready();
    bool SkipMark();
    bool SkipRest();
    void BeginRecord();
    void Step(std::string_view text);
    void StepQuoted(std::string_view text);
    void StepClosed(std::string_view text);
    void TakeQuoteAsText();
    void EndField(size_t begin, size_t end);
    void EndQuotedField(std::string_view text);
    void LeaveField(std::string_view text);
    void EndRecord(size_t lineEnd);

    char m_separator;
    std::string m_bytes;
    size_t m_begin = 0;    // Of the record in the bytes.
    size_t m_consumed = 0; // Of the record, once it is whole, with its line end.
    uint64_t m_line = 0;
    uint64_t m_nextLine = 1;
    uint64_t m_extraLines = 0; // Within the fields of a record that is not whole yet.
    uint64_t m_taken = 0;
    std::vector<SField> m_fields;
    std::vector<std::string> m_unescaped; // The first m_unescapedCount of them; kept for their memory.
    size_t m_unescapedCount = 0;
    // Where the search for the end of the record stands; places are counted from its begin.
    EState m_state = EState::FieldBegin;
    size_t m_at = 0;
    size_t m_fieldBegin = 0;
    size_t m_quote = 0;       // The one that opens the field.
    size_t m_closing = 0;     // The one that may close it.
    size_t m_quotedLines = 0; // Line ends between the two.
    bool m_doubled = false;
    bool m_badQuote = false;
    bool m_tooLong = false;
    bool m_unended = false;
    bool m_whole = false;    // The record has its end.
    bool m_atStart = true;   // A byte-order mark may come.
    bool m_afterCr = false;  // A LF would belong to the line end before.
    bool m_skipping = false; // The rest of a record that is too long.
    bool m_ended = false;
};

} // namespace vx
