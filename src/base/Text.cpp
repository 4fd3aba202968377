// SPDX-License-Identifier: MIT
#include "base/Text.h"

#include <algorithm>

namespace vx {

namespace {

constexpr unsigned char LowerByte(char c) {
    const auto u = static_cast<unsigned char>(c);
    return u >= 'A' && u <= 'Z' ? static_cast<unsigned char>(u + 32) : u;
}

constexpr unsigned char UpperByte(char c) {
    const auto u = static_cast<unsigned char>(c);
    return u >= 'a' && u <= 'z' ? static_cast<unsigned char>(u - 32) : u;
}

} // namespace

std::string_view TrimBlanks(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string UpperAscii(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = static_cast<char>(UpperByte(c));
    return out;
}

std::string LowerAscii(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = static_cast<char>(LowerByte(c));
    return out;
}

int CompareNoCase(std::string_view a, std::string_view b) {
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        const int difference = int(LowerByte(a[i])) - int(LowerByte(b[i]));
        if (difference != 0) return difference;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool ContainsText(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::vector<std::string_view> SplitTerminated(std::string_view line, char separator) {
    std::vector<std::string_view> fields;
    for (size_t start = 0;;) {
        const size_t end = line.find(separator, start);
        if (end == std::string_view::npos) return fields;
        fields.push_back(line.substr(start, end - start));
        start = end + 1;
    }
}

std::vector<std::string_view> SplitCountingTail(std::string_view line, char separator) {
    std::vector<std::string_view> fields = SplitTerminated(line, separator);
    const size_t last = line.rfind(separator);
    const std::string_view tail = last == std::string_view::npos ? line : line.substr(last + 1);
    if (!tail.empty()) fields.push_back(tail);
    return fields;
}

namespace {

size_t LineEnd(std::string_view text, size_t from = 0) {
    const size_t lf = text.find('\n', from);
    return std::min(text.substr(0, lf).find('\r', from), lf);
}

} // namespace

std::optional<std::string_view> TakeLine(std::string_view& text) {
    if (text.empty()) return std::nullopt;
    const size_t end = std::min(LineEnd(text), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + (text.substr(end, 2) == "\r\n" ? 2 : 1), text.size()));
    return line;
}

void CLineCutter::Append(std::string_view bytes) {
    m_bytes.erase(0, m_begin);
    m_begin = 0;
    m_bytes += bytes;
}

// Where the line at the begin ends; nothing when its end has not come.
std::optional<size_t> CLineCutter::FindEnd() {
    const std::string_view text = std::string_view(m_bytes).substr(m_begin);
    const size_t end = LineEnd(text, m_searched);
    m_searched = std::min(end, text.size());
    return end < text.size() ? std::optional(end) : std::nullopt;
}

SStreamLine CLineCutter::Take(size_t length) {
    const SStreamLine line{++m_lines, std::string_view(m_bytes).substr(m_begin, length), false};
    m_begin += length;
    m_searched = 0;
    return line;
}

std::optional<SStreamLine> CLineCutter::Next() {
    for (;;) {
        if (m_afterCr && m_begin < m_bytes.size()) {
            m_begin += m_bytes[m_begin] == '\n' ? 1 : 0;
            m_afterCr = false;
        }
        const std::optional<size_t> end = FindEnd();
        if (m_searched > m_mostBytes && !m_skipping) {
            SStreamLine line = Take(m_mostBytes);
            line.tooLong = m_skipping = true;
            return line;
        }
        if (!end) {
            if (m_ended && m_searched > 0 && !m_skipping) return Take(m_searched);
            if (m_skipping) m_begin += m_searched;
            m_searched = m_skipping ? 0 : m_searched;
            if (m_begin == m_bytes.size()) { // What waits for bytes takes no room.
                std::string().swap(m_bytes);
                m_begin = 0;
            }
            return std::nullopt;
        }
        const bool wanted = !m_skipping;
        m_skipping = false;
        SStreamLine line;
        if (wanted)
            line = Take(*end);
        else
            m_begin += *end;
        m_afterCr = m_bytes[m_begin++] == '\r';
        m_searched = 0;
        if (wanted) return line;
    }
}

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";
/// Each escape letter and, at the same place, its byte.
constexpr std::string_view kLetters = "\\\"trn";
constexpr std::string_view kBytes = "\\\"\t\r\n";

int HexDigit(char c) {
    const size_t upper = kHexDigits.find(c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c);
    return upper == std::string_view::npos ? -1 : static_cast<int>(upper);
}

} // namespace

std::string EscapeBytes(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (const size_t letter = kBytes.find(c); letter != std::string_view::npos)
            out += {'\\', kLetters[letter]};
        else if (byte < 0x20 || byte > 0x7E)
            out += {'\\', 'x', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
        else
            out.push_back(c);
    }
    return out;
}

bool UnescapeBytes(std::string_view text, std::string& out) {
    out.clear();
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            out.push_back(text[i]);
            continue;
        }
        if (++i == text.size()) return false;
        if (const size_t letter = kLetters.find(text[i]); letter != std::string_view::npos) {
            out.push_back(kBytes[letter]);
            continue;
        }
        if (text[i] != 'x' || i + 2 >= text.size()) return false;
        const int high = HexDigit(text[i + 1]);
        const int low = HexDigit(text[i + 2]);
        if (high < 0 || low < 0) return false;
        out.push_back(static_cast<char>(high * 16 + low));
        i += 2;
    }
    return true;
}

} // namespace vx
