#include "vxconnect/common/LineBuffer.h"

namespace vx::sim {

void CLineBuffer::Append(std::string_view bytes) {
    m_bytes.erase(0, m_begin);
    m_begin = 0;
    m_bytes += bytes;
}

SInputLine CLineBuffer::Take(size_t length, size_t lineEnd) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    SInputLine line;
    line.number = ++m_lines;
    line.text = std::string_view(m_bytes).substr(m_begin, length);
    if (line.number == 1 && line.text.starts_with(kByteOrderMark)) line.text.remove_prefix(kByteOrderMark.size());
    if (line.text.ends_with('\r')) line.text.remove_suffix(1);
    m_begin += length + lineEnd;
    m_searched = 0;
    return line;
}

std::optional<SInputLine> CLineBuffer::Next() {
    for (;;) {
        const size_t end = m_bytes.find('\n', m_begin + m_searched);
        const bool found = end != std::string::npos;
        const size_t length = (found ? end : m_bytes.size()) - m_begin;
        if (m_skipping) {
            m_begin += length + (found ? 1 : 0);
            m_searched = 0;
            m_skipping = !found;
            if (!found) return std::nullopt;
            continue;
        }
        if (length > kMaxLine) {
            SInputLine line = Take(kMaxLine, 0);
            line.tooLong = true;
            m_skipping = true;
            return line;
        }
        if (found) return Take(length, 1);
        m_searched = length;
        if (!m_ended || length == 0) return std::nullopt;
        return Take(length, 0);
    }
}

} // namespace vx::sim
