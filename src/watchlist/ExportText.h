#pragma once

#include <string>

namespace vx {

class CWatchlistDoc;

/// How the board is exported; the first choice of each group of the dialog is the default.
struct SExportOptions {
    bool linkFormulas = false; ///< "DDE Formulas", else "Data".
    bool commas = true;        ///< "Comma Delimited", else "Tab Delimited".
    bool columnHeaders = false;
    bool append = true; ///< "Append", else "Overwrite".
};

/// What the board shows, as a table of text: rows from 1 to the last used one, columns with a width, in their order.
///
/// With link formulas each field of a symbol row becomes "=VxLink|'symbol'!'column'", but empty ones and those of the
/// columns Alerts, Notes, News and Latest Headline. With commas every TAB becomes one; fields are neither quoted nor
/// escaped, so that a text with a comma spreads over two: this is deliberate.
///
/// Shape   lines ended by LF; headers: whether the line with the column names comes first. An annotation is the first
///         field of its line, the others are empty. Windows-1252; line ends and TABs in texts count as blanks
/// Thread  GUI thread only
std::string ExportText(const CWatchlistDoc& doc, const SExportOptions& options, bool headers);

enum class EExportOutcome {
    Written,
    NotOpened, ///< Nothing was written; nothing is said about it.
    Failed     ///< The file was opened, but did not take the whole text.
};

/// Writes the table to a file, in one piece, behind what stands in it or in its place. The column names are written
/// only where a table begins a file: not when it is appended to one that holds something.
///
/// Shape   path: as the system takes it
EExportOutcome ExportToFile(const CWatchlistDoc& doc, const SExportOptions& options, const std::string& path);

} // namespace vx
