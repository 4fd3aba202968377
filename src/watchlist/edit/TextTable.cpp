#include "watchlist/edit/TextTable.h"

#include "base/Text.h"
#include "watchlist/fileformat/TextLines.h"

#include <algorithm>

namespace vx {

namespace {

constexpr std::string_view kSeparators = "\t;,";
constexpr size_t kMostHeader = 64 * 1024; ///< Bytes; a longer first line is no header.

} // namespace

bool CTextTable::Next() {
    constexpr size_t kPiece = 64 * 1024;
    while (!CCsvReader::Next()) {
        if (m_rest.empty()) return false;
        Append(m_rest.substr(0, kPiece));
        m_rest.remove_prefix(std::min(m_rest.size(), kPiece));
        if (m_rest.empty()) End();
    }
    return true;
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
