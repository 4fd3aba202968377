// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistContent.h"

#include <string_view>

namespace vx {

// The lines of the current layout, and what the older one shares with them.

/// In a list of columns this is no column but the width of the row numbers.
inline constexpr std::string_view kRowNumbersEntry = "RowNumbers";

/// Applies the value of one key, at a line of the text.
///
/// Errors  false for an unknown key
bool ReadKey(std::string_view key, std::string_view value, size_t line, SWatchlistContent& content,
             CReadReport& report);

/// The text before the separator; the rest, without it, stays in text. Without a separator everything is taken.
std::string_view TakeUntil(std::string_view& text, char separator);

/// "TRUE" is true, everything else false.
bool ReadFlag(std::string_view text);

/// Whether a symbol is read as it is: not empty, not too long, without blanks around it and control characters.
bool IsSymbolText(std::string_view symbol);

/// Puts a symbol into a row unless it cannot be one; blanks around it go.
void ReadSymbolAt(int row, std::string_view symbol, size_t line, SWatchlistContent& content, CReadReport& report);

void ReadAnnotationAt(int row, std::string_view text, size_t line, SWatchlistContent& content, CReadReport& report);

/// Adds columns one after the other, each name once: the first place and the last width count.
class CColumnListReader {
public:
    CColumnListReader(SWatchlistContent& content, CReadReport& report, size_t line);
    void Add(std::string_view name, int width);

private:
    SWatchlistContent& m_content;
    CReadReport& m_report;
    size_t m_line;
    std::map<std::string, size_t, std::less<>> m_places;
};

/// The quoted symbol of a text that older files have in place of a rejected one ("\"XYZ\" is an Invalid Symbol."),
/// with or without the annotation mark; empty for every other text.
std::string_view OldInvalidSymbol(std::string_view annotation);

} // namespace vx
