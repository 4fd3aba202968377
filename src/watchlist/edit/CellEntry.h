// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CSettings;
class CWatchlistDoc;
class CWatchlistEdit;

/// The user ended the editing of a cell: decides whether the text becomes a symbol, an annotation or nothing.
///
/// A text with a comma counts as kCommaSymbol; an empty one clears the cell, and with a symbol its row. What the kind
/// of the row forbids is said in a message box. Control characters in the text count as blanks.
///
/// Shape   row and column of the grid; texts Windows-1252, what is beyond the longest cell text is cut
/// Errors  rows and columns that the document does not have are ignored
/// Thread  GUI thread only
void EnterCellText(CWatchlistDoc& doc, int row, int column, std::string_view oldText, std::string_view newText);

/// The user corrected what was typed in a rejected row: enters it as into the symbol column of an empty row. A text of
/// blanks changes nothing, an empty one empties the row.
void CorrectRejected(CWatchlistDoc& doc, int row, std::string_view text);

/// Puts into a row what a text becomes when it is typed into the symbol column of an empty row, whatever stood there. A
/// row that shows the same symbol already is left alone, as it is for an empty text. A text that begins with "#" is an
/// annotation with all its commas.
void OverwriteRow(const CWatchlistDoc& doc, CWatchlistEdit& edit, int row, std::string_view text);

/// Clears cells of a row as EnterCellText does for an empty text.
///
/// Returns false when there was nothing to clear
bool ClearCells(const CWatchlistDoc& doc, CWatchlistEdit& edit, int row, const std::vector<int>& columns);

/// Appends a text with blanks for its control characters.
void AppendWithoutControls(std::string& out, std::string_view text);

/// The symbol that a typed text stands for: without blanks around it, in upper case unless it holds an upper-case
/// letter already. Nothing for a text of three words or more or with a comma: that is no symbol.
std::optional<std::string> TypedSymbol(std::string_view text);

/// Puts the symbol that a companion program chose last into a row, after asking when the row is not empty; does
/// nothing when none was chosen.
void AddCurrentSymbol(CWatchlistDoc& doc, const CSettings& settings, int row);

} // namespace vx
