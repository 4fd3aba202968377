// SPDX-License-Identifier: MIT
#include "watchlist/edit/ImportText.h"

#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "base/Text.h"
#include "base/Windows1252.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/exchange/RowCellText.h"
#include "watchlist/fileformat/TextLines.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <unordered_set>

namespace vx {

namespace {

constexpr size_t kMostSymbol = 64;
constexpr size_t kMostQuoted = 60;
constexpr size_t kSliceBytes = 64 * 1024;
constexpr std::string_view kListSeparators = ",; \t";
constexpr std::string_view kLinkBegin = "=VxLink|'";
constexpr std::string_view kLinkMiddle = "'!'";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsLetterOrDigit(char c) {
    return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

// "150.25" is a price next to a symbol; "0700" may be a symbol.
bool IsDecimalNumber(std::string_view text) {
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    return text.find('.') != std::string_view::npos &&
           std::all_of(text.begin(), text.end(), [](char c) { return IsDigit(c) || c == '.'; });
}

std::string_view WithoutQuotes(std::string_view text) {
    if (text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\''))
        return text.substr(1, text.size() - 2);
    return text;
}

std::string_view WithoutLink(std::string_view text) {
    if (text.substr(0, kLinkBegin.size()) != kLinkBegin) return text;
    const size_t end = text.find(kLinkMiddle, kLinkBegin.size());
    return end == std::string_view::npos ? text : text.substr(kLinkBegin.size(), end - kLinkBegin.size());
}

std::optional<std::string> ImportedSymbol(std::string_view text) {
    text = WithoutLink(text);
    if (text.empty() || text.size() > kMostSymbol || text.front() == '#' || IsDecimalNumber(text)) return std::nullopt;
    if (std::any_of(text.begin(), text.end(), [](char c) { return IsControl(c) || c == '"'; })) return std::nullopt;
    if (std::none_of(text.begin(), text.end(), IsLetterOrDigit)) return std::nullopt;
    return TypedSymbol(text);
}

// Symbols, headings and notes end there.
int LastTakenRow(const CWatchlistDoc& doc) { return std::max(doc.LastUsedRow(), doc.Notes().LastRow()); }

int TakenRows(const CWatchlistDoc& doc) {
    int out = 0;
    for (int row = LastTakenRow(doc); row > 0; --row) out += doc.RowKind(row) != ERowKind::Empty;
    return out;
}

class CImportReader {
public:
    CImportReader(const CWatchlistDoc& doc, const CWorkProgress& progress)
        : m_doc(doc), m_progress(progress), m_room(static_cast<size_t>(CRowTable::kMaxRow - TakenRows(doc))) {}

    SImportPreview Read(std::string_view text) {
        m_text = text;
        if (std::optional<STextTableHeader> header = FindTableHeader(text, kSymbolColumn))
            ReadTable(text, *header);
        else
            ReadList(text);
        return std::move(m_preview);
    }

private:
    void ReadTable(std::string_view text, const STextTableHeader& header) {
        CTextTable table(text, header.separator);
        while (table.Next()) {
            if (table.Line() <= header.line) continue;
            const std::string_view field = TrimBlanks(table.Field(header.column));
            if (!field.empty()) Take(WithoutQuotes(field), table.Line());
            if (!GoOn(table.Taken())) return;
        }
    }

    void ReadList(std::string_view text) {
        const bool isReport = IsReport(text);
        for (CTextLines lines(text); lines.Next();) {
            const EReportLine kind = isReport ? ReportLineOf(lines.Line()) : EReportLine::Words;
            if (kind == EReportLine::Words && !TakeListLine(lines.Line(), lines.Number())) return;
            if (kind == EReportLine::Title) NotUnderstood(TrimBlanks(lines.Line()), lines.Number());
            if (!GoOn(text.size() - lines.Rest().size())) return;
        }
    }

    // A marked annotation is one thing, however many words it has. False: the rest is not to be read.
    bool TakeListLine(std::string_view line, size_t number) {
        const std::string_view trimmed = TrimBlanks(line);
        if (!trimmed.empty() && trimmed.front() == '#') {
            NotUnderstood(trimmed, number);
            return true;
        }
        while (!line.empty()) {
            const std::string_view item = line.substr(0, line.find_first_of(kListSeparators));
            line.remove_prefix(std::min(item.size() + 1, line.size()));
            if (const std::string_view symbol = WithoutQuotes(item); !symbol.empty()) Take(symbol, number);
            if (!GoOn(static_cast<size_t>(line.data() - m_text.data()))) return false;
        }
        return true;
    }

    void Take(std::string_view text, size_t line) {
        const std::optional<std::string> symbol = ImportedSymbol(text);
        if (!symbol) return NotUnderstood(text, line);
        if (m_seen.contains(*symbol)) return Note(*symbol, m_preview.duplicates, m_preview.duplicateCount);
        const bool isThere = m_doc.Symbols().Find(*symbol) != nullptr;
        if (!isThere && m_preview.toAdd.size() >= m_room) {
            m_preview.unreadFrom = line;
            return;
        }
        m_seen.insert(*symbol);
        if (isThere)
            Note(*symbol, m_preview.alreadyThere, m_preview.alreadyThereCount);
        else
            m_preview.toAdd.push_back(*symbol);
    }

    static void Note(const std::string& symbol, std::vector<std::string>& list, size_t& count) {
        if (++count <= SImportPreview::kMostKept) list.push_back(symbol);
    }

    void NotUnderstood(std::string_view text, size_t line) {
        if (++m_preview.notUnderstoodCount > SImportPreview::kMostKept) return;
        std::string kept;
        AppendWithoutControls(kept, text.substr(0, kMostQuoted));
        m_preview.notUnderstood.push_back({line, std::move(kept)});
    }

    bool GoOn(size_t done) {
        if (m_preview.unreadFrom != 0) return false;
        if (!m_progress || done < m_nextLook) return true;
        m_nextLook = done + kSliceBytes;
        m_preview.cancelled = !m_progress(done, m_text.size());
        return !m_preview.cancelled;
    }

    const CWatchlistDoc& m_doc;
    const CWorkProgress& m_progress;
    const size_t m_room; ///< More symbols than this find no row.
    std::string_view m_text;
    SImportPreview m_preview;
    std::unordered_set<std::string> m_seen; ///< At most twice as many as a watchlist has rows.
    size_t m_nextLook = kSliceBytes;
};

bool AreUnused(const CWatchlistDoc& doc, int firstRow, int count) {
    const int lastRow = std::min(firstRow + count - 1, LastTakenRow(doc));
    for (int row = firstRow; row <= lastRow; ++row)
        if (doc.RowKind(row) != ERowKind::Empty || doc.Notes().Has(row)) return false;
    return true;
}

} // namespace

SImportPreview ReadImport(const CWatchlistDoc& doc, std::string_view text, const CWorkProgress& progress) {
    return CImportReader(doc, progress).Read(text);
}

SImportResult ApplyImport(CWatchlistDoc& doc, const SImportPreview& preview, int row, const CWorkProgress& progress) {
    row = std::clamp(row, 1, CRowTable::kMaxRow);
    const int wanted = static_cast<int>(preview.toAdd.size());
    if (wanted == 0) return {};
    int count = std::min(wanted, CRowTable::kMaxRow - row + 1);
    SImportResult result;
    doc.Edit(wanted == 1 ? "import " + preview.toAdd.front() : fmt::format("import {} symbols", wanted),
             [&](CWatchlistEdit& edit) {
                 if (!AreUnused(doc, row, count)) {
                     count = std::min(count, CRowTable::kMaxRow - LastTakenRow(doc));
                     if (count > 0 && !doc.InsertRows(row, count)) count = 0;
                 }
                 count = std::max(count, 0);
                 result.outcome = FillRows(doc, row, {preview.toAdd.begin(), preview.toAdd.begin() + count}, progress);
                 if (result.outcome == EFillOutcome::Filled) edit.SelectRows(row, row + count - 1);
             });
    if (result.outcome != EFillOutcome::Filled) return result;
    result.leftOut = wanted - count;
    if (count > 0) {
        result.firstRow = row;
        result.lastRow = row + count - 1;
    }
    if (result.leftOut > 0)
        result.message = fmt::format(
            "{} left out: a watchlist has at most {} rows.",
            result.leftOut == 1 ? "1 symbol was" : fmt::format("{} symbols were", result.leftOut), CRowTable::kMaxRow);
    return result;
}

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

namespace {

constexpr std::array<std::string_view, 3> kReportMarkers{"WatchList", "REALTIME", "DELAYED"};
constexpr std::array<std::string_view, 4> kTitleMarkers{"WatchList", "User:", "-- REALTIME --", "-- DELAYED --"};
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

template <size_t N> bool ContainsAny(std::string_view text, const std::array<std::string_view, N>& parts) {
    return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) { return ContainsText(text, part); });
}

std::string_view TrimmedOnTheRight(std::string_view line) {
    return line.substr(0, line.find_last_not_of(kWhiteSpace) + 1);
}

bool IsRule(std::string_view line) {
    return line.find_first_not_of("- ") == std::string_view::npos ||
           line.find_first_not_of("= ") == std::string_view::npos;
}

void AppendWords(std::string& out, std::string_view line) {
    while (!line.empty()) {
        const std::string_view word = line.substr(0, line.find(' '));
        line.remove_prefix(std::min(word.size() + 1, line.size()));
        if (word.empty()) continue;
        if (!out.empty()) out += kLineEnd;
        out += word;
    }
}

} // namespace

bool IsReport(std::string_view text) { return ContainsAny(text, kReportMarkers); }

EReportLine ReportLineOf(std::string_view line) {
    line = TrimmedOnTheRight(line);
    if (line.empty() || IsRule(line)) return EReportLine::Nothing;
    return ContainsAny(line, kTitleMarkers) ? EReportLine::Title : EReportLine::Words;
}

std::string NormalizePastedText(std::string_view text) {
    if (!IsReport(text)) return std::string(text);
    std::string out;
    for (CTextLines lines(text); lines.Next();)
        if (ReportLineOf(lines.Line()) == EReportLine::Words) AppendWords(out, TrimmedOnTheRight(lines.Line()));
    return out;
}

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";
constexpr size_t kLookedAt = 4096; ///< Bytes by which UTF-16 without a mark is recognised.

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return Windows1252FromUtf16(text);
}

// Whether, in a text of two bytes or more, nearly all of the first or second bytes of each pair are 0.
bool LooksLikeUtf16(std::string_view bytes, size_t zeroAt) {
    bytes = bytes.substr(0, kLookedAt);
    size_t zeros = 0, others = 0;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        zeros += bytes[i + zeroAt] == '\0';
        others += bytes[i + 1 - zeroAt] != '\0';
    }
    const size_t pairs = bytes.size() / 2;
    return pairs > 0 && zeros * 10 >= pairs * 9 && others * 10 >= pairs * 9;
}

// The bytes of the character that begins here in UTF-8, 0 when none does.
size_t Utf8Length(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length > bytes.size()) return 0;
    for (size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(bytes[i]) & 0xC0) != 0x80) return 0;
    return length;
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const size_t length = Utf8Length(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

bool TakeMark(std::string_view& bytes, std::string_view mark) {
    if (bytes.substr(0, mark.size()) != mark) return false;
    bytes.remove_prefix(mark.size());
    return true;
}

} // namespace

std::string DecodeImportBytes(std::string_view bytes) {
    if (TakeMark(bytes, kUtf8Mark)) return Windows1252FromUtf8(bytes);
    if (TakeMark(bytes, kLittleEndianMark)) return FromUtf16(bytes, false);
    if (TakeMark(bytes, kBigEndianMark)) return FromUtf16(bytes, true);
    if (LooksLikeUtf16(bytes, 1)) return FromUtf16(bytes, false);
    if (LooksLikeUtf16(bytes, 0)) return FromUtf16(bytes, true);
    const bool isAscii = std::none_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
    return !isAscii && IsUtf8(bytes) ? Windows1252FromUtf8(bytes) : std::string(bytes);
}

SImportFile ReadImportFile(const std::string& path) {
    SFileImage image;
    int error = ReadWholeFile(path, kMostImportBytes, image);
    if (error == 0 && image.signature.inode == 0) error = ENOENT;
    const std::string name = Windows1252FromUtf8(path);
    if (error == EFBIG)
        return {{},
                fmt::format("The file \"{}\" is larger than {} MB and was not read.", name, kMostImportBytes >> 20)};
    if (error != 0) return {{}, fmt::format("The file \"{}\" could not be read: {}.", name, ErrorText(error))};
    return {DecodeImportBytes(image.content), {}};
}

} // namespace vx
