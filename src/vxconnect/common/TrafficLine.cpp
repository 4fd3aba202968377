#include "vxconnect/common/TrafficLine.h"

#include "base/DateTime.h"
#include "base/Log.h"
#include "base/Windows1252.h"
#include "vxconnect/common/WireText.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr std::string_view kDataLetters = "QPFRNT";
constexpr size_t kTimeBytes = 23; // "2024-01-31 09:30:00.123"

bool IsDataLine(std::string_view text) {
    return text.size() > 2 && text[1] == ',' && kDataLetters.find(text[0]) != std::string_view::npos;
}

// The number that stands in some bytes; -1 when they are not all digits.
int NumberAt(std::string_view text, size_t begin, size_t count) {
    int value = 0;
    const char* const first = text.data() + begin;
    const auto [end, status] = std::from_chars(first, first + count, value);
    return status == std::errc() && end == first + count && value >= 0 ? value : -1;
}

std::optional<int64_t> TimeOf(std::string_view text) {
    if (text.size() < kTimeBytes || text[4] != '-' || text[7] != '-' || text[10] != ' ' || text[13] != ':' ||
        text[16] != ':' || text[19] != '.')
        return std::nullopt;
    const int year = NumberAt(text, 0, 4), month = NumberAt(text, 5, 2), day = NumberAt(text, 8, 2);
    const int hour = NumberAt(text, 11, 2), minute = NumberAt(text, 14, 2), second = NumberAt(text, 17, 2);
    const int ms = NumberAt(text, 20, 3);
    if (!IsCalendarDay(year, month, day) || std::min({hour, minute, second, ms}) < 0) return std::nullopt;
    return ((int64_t{DaysSince1899(year, month, day)} * 24 + hour) * 60 + minute) * 60'000 + second * 1000 + ms;
}

// Takes "[text] " off the front; nothing when there is none.
std::optional<std::string_view> TakeBracket(std::string_view& text) {
    const size_t end = text.find("] ");
    if (!text.starts_with('[') || end == std::string_view::npos) return std::nullopt;
    const std::string_view inside = text.substr(1, end - 1);
    text.remove_prefix(end + 2);
    return inside;
}

std::string Decoded(std::string_view text) {
    const std::string bytes = WireTextOf(text).value_or(std::string(text));
    std::string out;
    out.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) {
        int value = 0;
        const bool escape = bytes[i] == '\\' && i + 3 < bytes.size() && bytes[i + 1] == 'x';
        const char* const digits = bytes.data() + i + 2;
        if (escape && std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            out += static_cast<char>(value);
            i += 3;
        } else {
            out += bytes[i];
        }
        if (static_cast<unsigned char>(out.back()) < 0x20) out.back() = ' ';
    }
    return out;
}

} // namespace

std::optional<STrafficLine> ReadTrafficLine(std::string_view line) {
    STrafficLine out;
    out.timeMs = TimeOf(line);
    if (out.timeMs) {
        line.remove_prefix(kTimeBytes);
        if (line.starts_with(' ')) line.remove_prefix(1);
        const auto category = TakeBracket(line);
        if (category != LogName(ELogCategory::L1Data)) return std::nullopt;
        const auto direction = TakeBracket(line);
        if (direction != LogName(ELogDirection::FromServer)) return std::nullopt;
    }
    if (!IsDataLine(line)) return std::nullopt;
    out.text = Decoded(line);
    return out;
}

std::string TrafficText(std::string_view time, std::string_view text) {
    constexpr std::string_view kBlind = "\\\x7F\x81\x8D\x8F\x90\x9D\xA0\xAD";
    while (text.ends_with('\n') || text.ends_with('\r')) text.remove_suffix(1);
    std::string out =
        fmt::format("{} [{}] [{}] ", time, LogName(ELogCategory::L1Data), LogName(ELogDirection::FromServer));
    out.reserve(out.size() + text.size() + 1);
    for (const char& c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || kBlind.find(c) != std::string_view::npos)
            fmt::format_to(std::back_inserter(out), "\\x{:02X}", byte);
        else if (byte < 0x80)
            out += c;
        else
            out += Utf8FromWindows1252({&c, 1});
    }
    return out += '\n';
}

} // namespace vx::sim
