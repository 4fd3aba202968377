// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistContent.h"
#include "watchlist/fileformat/FurtherKeys.h"

#include <string>
#include <string_view>

namespace vx {

class CWatchlistDoc;

/// Reads the text of a watchlist file, which comes in blocks of any size, line by line.
///
/// A line that begins with "[" ends the reading: the whole text is read again, at its end, as one of the older layout.
///
/// Shape   lines "key=value", each ended by CR LF; what follows the last CR LF is not applied. Windows-1252
/// Errors  none: what is not understood is left out and noted in the report; malformed numbers read as 0;
///         numbers beyond what a watchlist can have are brought into bounds
/// Thread  any
/// Source  docs/file-format.md
class CWatchlistReader {
public:
    /// The size of the blocks in which files are fed.
    static constexpr size_t kBlockBytes = 100;

    void TakeBlock(std::string_view bytes);
    /// The text ended. Nothing may be taken after it.
    void Finish();

    /// The line, counted from 1, with which the older layout took over although lines were read before it; 0 for none.
    /// What follows that line was read as far as the older layout has it.
    size_t HandoverLine() const { return m_handoverLine; }

    SWatchlistContent& Content() { return m_content; }
    CReadReport& Report() { return m_report; }

private:
    void CutLines();
    void HandOver();
    void ApplyLine(std::string_view line);

    std::string m_text;    ///< All of it: the older layout may take over at any line.
    size_t m_begin = 0;    ///< Where the line that is not whole yet begins.
    size_t m_searched = 0; ///< Up to where no line end is; a long line is searched once.
    size_t m_line = 0;     ///< Lines so far.
    bool m_legacy = false;
    size_t m_handoverLine = 0;
    CFurtherKeys m_further;
    SWatchlistContent m_content;
    CReadReport m_report;
};

/// Shows the watchlist of a text in the document. title: what the window shows; empty for an untitled one.
void OpenText(CWatchlistDoc& doc, std::string_view text, std::string_view title);

} // namespace vx
