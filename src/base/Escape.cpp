#include "base/Escape.h"

namespace vx {

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
