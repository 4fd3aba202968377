// SPDX-License-Identifier: MIT
#pragma once

#include "base/CsvReader.h"
#include "watchlist/edit/FillRows.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

// A report is a text copied from a printed watchlist, told by "WatchList", "REALTIME" or "DELAYED" in it.

bool IsReport(std::string_view text);

enum class EReportLine {
    Words,  ///< Symbols and whatever else a row holds, with blanks between.
    Title,  ///< A line with "WatchList", "User:", "-- REALTIME --" or "-- DELAYED --".
    Nothing ///< An empty line, or a rule of "-" or "=".
};
/// What a line of a report is.
EReportLine ReportLineOf(std::string_view line);

/// A report becomes its words, one in a line, without titles and rules. Every other text stays as it is.
///
/// Shape   lines of the text ended in any way; those of the result by CR LF, the last word without
std::string NormalizePastedText(std::string_view text);

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

/// Larger files are not read for their symbols.
inline constexpr size_t kMostImportBytes = size_t{64} << 20;

/// What a text holds of symbols, before any of it is in a document. Symbols are written as they would be after typing.
struct SImportPreview {
    static constexpr size_t kMostKept = 1000; ///< Of each list but toAdd.

    struct SNotUnderstood {
        size_t line = 0;  ///< Of the text, from 1.
        std::string text; ///< At most its first 60 bytes.
    };

    std::vector<std::string> toAdd; ///< In the order of the text, each once; at most as many as rows can be.
    std::vector<std::string> alreadyThere;
    std::vector<std::string> duplicates;
    std::vector<SNotUnderstood> notUnderstood;
    size_t alreadyThereCount = 0; ///< Each symbol counts once.
    size_t duplicateCount = 0;    ///< Each further occurrence in the text.
    size_t notUnderstoodCount = 0;
    size_t unreadFrom = 0;  ///< The line where reading ended, because no watchlist has room for more; 0: all was read.
    bool cancelled = false; ///< The rest is not to be used.
};

/// A file's bytes as Windows-1252: UTF-8 and UTF-16 of either byte order with a mark in front, UTF-16 without when
/// every other byte is 0, UTF-8 when it holds a character that could be nothing else; else as it stands.
std::string DecodeImportBytes(std::string_view bytes);

/// A file's text for ReadImport.
struct SImportFile {
    std::string text;
    std::string error; ///< For the user: why there is no text; empty for none. Windows-1252.
};

/// path: as the system takes it.
SImportFile ReadImportFile(const std::string& path);

/// Looks for symbols in a text.
///
/// A text whose first line that is not empty is a header with a field "Symbol", between commas, semicolons or TABs, is
/// a table: the symbols are in that column. Fields may be in quotes, and may be link formulas of an export. Every
/// other text is a list of symbols with commas, semicolons, TABs, blanks or line ends between; of a report (see
/// IsReport) rules and titles are no part.
///
/// Shape   text: Windows-1252, lines ended in any way
/// Errors  what can be no symbol is listed with its line: texts of more than two words, marked annotations, a report's
///         titles, decimal numbers, texts without letters and digits, with quotes or control characters inside, or
///         longer than 64 bytes
/// Thread  GUI thread only
SImportPreview ReadImport(const CWatchlistDoc& doc, std::string_view text, const CWorkProgress& progress = {});

struct SImportResult {
    EFillOutcome outcome = EFillOutcome::Filled;
    int firstRow = 0, lastRow = 0; ///< Where the symbols are, to be selected; 0 when there are none.
    int leftOut = 0;               ///< Symbols for which there was no room.
    std::string message;           ///< For the user, empty when there is nothing to say.
};

/// Puts the symbols of a preview into rows from one on. When one of these rows is in use, rows are inserted before it
/// first, so that nothing is overwritten.
SImportResult ApplyImport(CWatchlistDoc& doc, const SImportPreview& preview, int row,
                          const CWorkProgress& progress = {});

} // namespace vx
