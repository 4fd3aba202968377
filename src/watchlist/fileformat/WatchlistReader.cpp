// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistReader.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/WatchlistKeys.h"
#include "watchlist/fileformat/WatchlistLegacy.h"

#include <algorithm>

namespace vx {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kLegacyMark = '[';

} // namespace

void CWatchlistReader::TakeBlock(std::string_view bytes) {
    m_text += bytes;
    if (!m_legacy) CutLines();
}

void CWatchlistReader::CutLines() {
    for (size_t end; (end = m_text.find(kLineEnd, m_searched)) != std::string::npos;) {
        if (m_text[m_begin] == kLegacyMark) return HandOver();
        ApplyLine(std::string_view(m_text).substr(m_begin, end - m_begin));
        m_begin = m_searched = end + kLineEnd.size();
    }
    // A CR may be half of a line end.
    const bool half = m_text.size() > m_begin && m_text.back() == '\r';
    m_searched = m_text.size() - (half ? 1 : 0);
}

// The older layout's lines end at LF, and are counted so.
void CWatchlistReader::HandOver() {
    m_legacy = true;
    const auto begin = m_text.begin() + static_cast<ptrdiff_t>(m_begin);
    if (m_begin > 0) m_handoverLine = static_cast<size_t>(std::count(m_text.begin(), begin, '\n')) + 1;
}

void CWatchlistReader::ApplyLine(std::string_view line) {
    ++m_line;
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        if (!line.empty()) m_report.LeftOut(m_line, "there is no \"=\" in it", line);
    } else {
        const std::string_view key = line.substr(0, equals), value = line.substr(equals + 1);
        if (ReadKey(key, value, m_line, m_content, m_report) || m_further.TakeLine(line, key, value, m_line))
            ++m_content.knownLines;
        else
            m_report.LeftOut(m_line, "the key is unknown", key);
    }
}

void CWatchlistReader::Finish() {
    if (m_legacy)
        ReadLegacyText(m_text, m_begin, m_content, m_report);
    else if (m_begin < m_text.size())
        m_report.LeftOut(m_line + 1, "the last line has no end and was not read",
                         std::string_view(m_text).substr(m_begin));
    m_further.Apply(m_content, m_report);
    m_text.clear();
    m_text.shrink_to_fit();
}

void OpenText(CWatchlistDoc& doc, std::string_view text, std::string_view title) {
    CWatchlistReader reader;
    reader.TakeBlock(text);
    reader.Finish();
    doc.OpenContent(reader.Content(), title, reader.Report());
}

} // namespace vx
