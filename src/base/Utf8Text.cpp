#include "base/Utf8Text.h"

#include "base/Windows1252.h"

#include <bit>

namespace vx {

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

} // namespace vx
