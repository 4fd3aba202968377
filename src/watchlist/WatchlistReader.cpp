#include "watchlist/WatchlistReader.h"

#include "watchlist/WatchlistKeys.h"
#include "watchlist/WatchlistLegacy.h"

#include <algorithm>

namespace vx {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kLegacyMark = '[';
constexpr size_t kLeastCompacted = 4096;

} // namespace

void CWatchlistReader::TakeBlock(std::string_view bytes) {
    if (bytes.empty()) return;
    if (!m_started) m_legacy = bytes.front() == kLegacyMark;
    m_started = true;
    m_buffer += bytes;
    if (!m_legacy) CutLines();
}

void CWatchlistReader::CutLines() {
    for (;;) {
        const size_t end = m_buffer.find(kLineEnd, m_searched);
        if (end == std::string::npos) break;
        ApplyLine(std::string_view(m_buffer).substr(m_begin, end - m_begin));
        m_begin = m_searched = end + kLineEnd.size();
    }
    // A CR may be half of a line end.
    const bool half = m_buffer.size() > m_begin && m_buffer.back() == '\r';
    m_searched = m_buffer.size() - (half ? 1 : 0);
    if (m_begin < kLeastCompacted || m_begin < m_buffer.size() / 2) return;
    m_buffer.erase(0, m_begin);
    m_searched -= m_begin;
    m_begin = 0;
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
        ReadLegacyText(m_buffer, m_content, m_report);
    else if (m_begin < m_buffer.size())
        m_report.LeftOut(m_line + 1, "the last line has no end and was not read",
                         std::string_view(m_buffer).substr(m_begin));
    m_further.Apply(m_content, m_report);
    m_buffer.clear();
    m_buffer.shrink_to_fit();
    m_begin = m_searched = 0;
}

} // namespace vx
