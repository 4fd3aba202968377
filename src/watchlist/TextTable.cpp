#include "watchlist/TextTable.h"

#include "base/Text.h"
#include "watchlist/TextLines.h"

#include <algorithm>

namespace vx {

namespace {

constexpr std::string_view kSeparators = "\t;,";
constexpr size_t kMostHeader = 64 * 1024; ///< Bytes; a longer first line is no header.

} // namespace

bool CTextTable::Next() {
    if (m_at >= m_text.size()) return false;
    m_line = m_nextLine;
    m_count = 0;
    for (;;) {
        if (m_count == m_fields.size()) m_fields.emplace_back();
        TakeField(m_fields[m_count++]);
        if (m_at >= m_text.size()) return true;
        if (m_text[m_at] != m_separator) break;
        ++m_at;
    }
    TakeLineEnd();
    return true;
}

void CTextTable::TakeField(std::string& field) {
    field.clear();
    const size_t begin = std::min(m_text.find_first_not_of(' ', m_at), m_text.size());
    if (begin < m_text.size() && m_text[begin] == '"') {
        const size_t back = m_at;
        m_at = begin + 1;
        if (TakeQuoted(field)) return;
        field.clear();
        m_at = back;
    }
    while (m_at < m_text.size() && m_text[m_at] != m_separator && m_text[m_at] != '\r' && m_text[m_at] != '\n')
        field += m_text[m_at++];
}

// Behind the closing quote stands a separator, a line end or the end; else the quote was none that opens a field.
bool CTextTable::TakeQuoted(std::string& field) {
    size_t lines = 0;
    while (m_at < m_text.size()) {
        const char c = m_text[m_at++];
        if (c == '\n' || (c == '\r' && m_text.substr(m_at, 1) != "\n")) ++lines;
        if (c != '"') {
            field += c;
        } else if (m_text.substr(m_at, 1) == "\"") {
            field += '"';
            ++m_at;
        } else {
            m_at = std::min(m_text.find_first_not_of(' ', m_at), m_text.size());
            const char next = m_at < m_text.size() ? m_text[m_at] : '\n';
            if (next != m_separator && next != '\r' && next != '\n') return false;
            m_nextLine += lines;
            return true;
        }
    }
    return false;
}

void CTextTable::TakeLineEnd() {
    m_at += m_text.substr(m_at, 2) == "\r\n" ? 2 : 1;
    ++m_nextLine;
}

std::optional<STextTableHeader> FindTableHeader(std::string_view text, std::string_view column) {
    CTextLines lines(text);
    do {
        if (!lines.Next()) return std::nullopt;
    } while (TrimBlanks(lines.Line()).empty());
    if (lines.Line().size() > kMostHeader) return std::nullopt;
    for (const char separator : kSeparators) {
        CTextTable header(lines.Line(), separator);
        header.Next();
        for (size_t i = 0; i < header.FieldCount(); ++i)
            if (CompareNoCase(TrimBlanks(header.Field(i)), column) == 0)
                return STextTableHeader{separator, i, lines.Number()};
    }
    return std::nullopt;
}

} // namespace vx
