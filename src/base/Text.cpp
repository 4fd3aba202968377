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
