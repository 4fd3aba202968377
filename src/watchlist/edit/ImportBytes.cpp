#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "base/Windows1252.h"
#include "watchlist/edit/ImportText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>

namespace vx {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";
constexpr size_t kLookedAt = 4096; ///< Bytes by which UTF-16 without a mark is told.

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return Windows1252FromUtf16(text);
}

// Whether, in a text of two bytes or more, nearly all of the first or second bytes of each pair are 0.
bool LooksLikeUtf16(std::string_view bytes, size_t zeroAt) {
    bytes = bytes.substr(0, kLookedAt);
    size_t zeros = 0, others = 0;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        zeros += bytes[i + zeroAt] == '\0';
        others += bytes[i + 1 - zeroAt] != '\0';
    }
    const size_t pairs = bytes.size() / 2;
    return pairs > 0 && zeros * 10 >= pairs * 9 && others * 10 >= pairs * 9;
}

// The bytes of the character that begins here in UTF-8, 0 when none does.
size_t Utf8Length(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length > bytes.size()) return 0;
    for (size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(bytes[i]) & 0xC0) != 0x80) return 0;
    return length;
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const size_t length = Utf8Length(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

bool TakeMark(std::string_view& bytes, std::string_view mark) {
    if (bytes.substr(0, mark.size()) != mark) return false;
    bytes.remove_prefix(mark.size());
    return true;
}

} // namespace

std::string DecodeImportBytes(std::string_view bytes) {
    if (TakeMark(bytes, kUtf8Mark)) return Windows1252FromUtf8(bytes);
    if (TakeMark(bytes, kLittleEndianMark)) return FromUtf16(bytes, false);
    if (TakeMark(bytes, kBigEndianMark)) return FromUtf16(bytes, true);
    if (LooksLikeUtf16(bytes, 1)) return FromUtf16(bytes, false);
    if (LooksLikeUtf16(bytes, 0)) return FromUtf16(bytes, true);
    const bool isAscii = std::none_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
    return !isAscii && IsUtf8(bytes) ? Windows1252FromUtf8(bytes) : std::string(bytes);
}

SImportFile ReadImportFile(const std::string& path) {
    SFileImage image;
    int error = ReadWholeFile(path, kMostImportBytes, image);
    if (error == 0 && image.signature.inode == 0) error = ENOENT;
    const std::string name = Windows1252FromUtf8(path);
    if (error == EFBIG)
        return {{},
                fmt::format("The file \"{}\" is larger than {} MB and was not read.", name, kMostImportBytes >> 20)};
    if (error != 0) return {{}, fmt::format("The file \"{}\" could not be read: {}.", name, ErrorText(error))};
    return {DecodeImportBytes(image.content), {}};
}

} // namespace vx
