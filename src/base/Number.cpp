// SPDX-License-Identifier: MIT
#include "base/Number.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace vx {

namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string_view SkipSpace(std::string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    return text;
}

struct SSignedDigits {
    bool negative = false;
    uint64_t value = 0; ///< Saturates well above 32 bits.
};

int DigitOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 99;
}

SSignedDigits ReadDigits(std::string_view text, unsigned base) {
    text = SkipSpace(text);
    SSignedDigits out;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        out.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (base == 16 && text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') && DigitOf(text[2]) < 16)
        text.remove_prefix(2);
    for (const char c : text) {
        const int digit = DigitOf(c);
        if (digit >= static_cast<int>(base)) break;
        if (out.value < (uint64_t(1) << 40)) out.value = out.value * base + static_cast<unsigned>(digit);
    }
    return out;
}

uint32_t Saturate(const SSignedDigits& digits) {
    if (digits.negative) return 0;
    return digits.value > std::numeric_limits<uint32_t>::max() ? std::numeric_limits<uint32_t>::max()
                                                               : static_cast<uint32_t>(digits.value);
}

struct SDoublePrefix {
    double value = 0;
    size_t used = 0; ///< 0 when the text starts with no number.
};

SDoublePrefix ReadDoublePrefix(std::string_view text) {
    const std::string_view body = SkipSpace(text);
    const size_t skipped = text.size() - body.size();
    const bool plus = !body.empty() && body.front() == '+';
    const bool minus = !body.empty() && body.front() == '-';
    const std::string_view digits = body.substr(plus || minus ? 1 : 0);
    if (digits.empty() || digits.front() == '-' || digits.front() == '+') return {};
    const size_t signs = body.size() - digits.size();

    double value = 0;
    const bool hex = digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X') &&
                     (DigitOf(digits[2]) < 16 || digits[2] == '.');
    const char* first = digits.data() + (hex ? 2 : 0);
    const char* last = digits.data() + digits.size();
    // from_chars takes a second sign in the exponent of a hexadecimal number, the C library none.
    const size_t exponent = hex ? digits.find_first_of("pP") : std::string_view::npos;
    if (exponent != std::string_view::npos && digits.substr(exponent + 1).starts_with("+-"))
        last = digits.data() + exponent;
    const auto [end, error] =
        std::from_chars(first, last, value, hex ? std::chars_format::hex : std::chars_format::general);
    if (error == std::errc::invalid_argument) return hex ? SDoublePrefix{0.0, skipped + signs + 1} : SDoublePrefix{};
    if (error == std::errc::result_out_of_range) {
        // from_chars does not say which way the number ran out: the C library does, and it is only reached here.
        value = std::strtod(std::string(digits.data(), end).c_str(), nullptr);
    }
    return {minus ? -value : value, skipped + signs + static_cast<size_t>(end - digits.data())};
}

} // namespace

int32_t ReadInt32(std::string_view text) {
    const SSignedDigits digits = ReadDigits(text, 10);
    constexpr uint64_t kMax = std::numeric_limits<int32_t>::max();
    if (digits.negative)
        return digits.value > kMax ? std::numeric_limits<int32_t>::min() : -static_cast<int32_t>(digits.value);
    return digits.value > kMax ? std::numeric_limits<int32_t>::max() : static_cast<int32_t>(digits.value);
}

uint32_t ReadUInt32(std::string_view text) { return Saturate(ReadDigits(text, 10)); }

uint32_t ReadHex32(std::string_view text) { return Saturate(ReadDigits(text, 16)); }

double ReadDouble(std::string_view text) { return ReadDoublePrefix(text).value; }

std::optional<double> ReadWholeDouble(std::string_view text) {
    const SDoublePrefix prefix = ReadDoublePrefix(text);
    if (prefix.used == 0 || prefix.used != text.size()) return std::nullopt;
    return prefix.value;
}

void AppendInteger(std::string& out, int64_t value) {
    char digits[std::numeric_limits<int64_t>::digits10 + 2];
    out.append(digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr);
}

} // namespace vx
