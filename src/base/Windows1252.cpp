// SPDX-License-Identifier: MIT
#include "base/Windows1252.h"

#include <array>
#include <bit>

namespace vx {

namespace {

// Bytes 0x80 to 0x9F; all other bytes are the Unicode character of the same number.
constexpr std::array<char16_t, 32> kHighControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteFromChar(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    for (size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == c) return static_cast<char>(0x80 + i);
    return '?';
}

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

} // namespace

char16_t CharFromWindows1252(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9F ? kHighControls[byte - 0x80u] : static_cast<char16_t>(byte);
}

std::u16string Utf16FromWindows1252(std::string_view bytes) {
    std::u16string out(bytes.size(), u'\0');
    for (size_t i = 0; i < bytes.size(); ++i) out[i] = CharFromWindows1252(static_cast<unsigned char>(bytes[i]));
    return out;
}

std::string Windows1252FromUtf16(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        out.push_back(ByteFromChar(text[i]));
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) ++i;
    }
    return out;
}

std::string Utf8FromWindows1252(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (const char byte : bytes) {
        const char16_t c = CharFromWindows1252(static_cast<unsigned char>(byte));
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xE0 | (c >> 12)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

namespace {

constexpr char16_t kReplacement = 0xFFFD;

// How many bytes the sequence has that begins with this one; 0 for a byte that begins none.
size_t SequenceLength(unsigned char first) {
    const int ones = std::countl_one(first);
    return ones == 0 ? 1 : ones >= 2 && ones <= 4 ? static_cast<size_t>(ones) : 0;
}

} // namespace

std::string Windows1252FromUtf8(std::string_view bytes) {
    std::u16string text;
    while (!bytes.empty()) {
        const auto first = static_cast<unsigned char>(bytes.front());
        const size_t length = SequenceLength(first);
        uint32_t character = length == 1 ? first : first & (0x7Fu >> length);
        size_t used = 1;
        while (used < length && used < bytes.size() && (bytes[used] & 0xC0) == 0x80)
            character = character << 6 | (static_cast<unsigned char>(bytes[used++]) & 0x3Fu);
        const bool whole = length != 0 && used == length && character < 0x10000;
        text += whole ? static_cast<char16_t>(character) : kReplacement;
        bytes.remove_prefix(used);
    }
    return Windows1252FromUtf16(text);
}

std::string Utf8FromTickTrend(std::string_view bytes) {
    std::string out;
    for (const char byte : bytes) {
        switch (byte) {
        case kTickUp:
            out += "\u25B2";
            break;
        case kTickDown:
            out += "\u25BC";
            break;
        case kTickDot:
            out += "\u2022";
            break;
        default:
            out += Utf8FromWindows1252({&byte, 1});
        }
    }
    return out;
}

} // namespace vx
