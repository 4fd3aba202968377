// SPDX-License-Identifier: MIT
#include "watchlist/view/NumberText.h"

#include "data/record/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace vx {

namespace {

constexpr double kThousand = 1000;
constexpr double kLeastOfNextUnit = 999.95; // It would be rounded to 1000.0.
constexpr std::array kUnits = {'K', 'M', 'B', 'T'};
constexpr size_t kGroup = 3;

using Text = std::span<char, kMostCellText>;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Where the digits before the decimal point are.
struct SDigits {
    size_t first;
    size_t end;
};

SDigits FindDigits(Text text, size_t length) {
    SDigits out{length > 0 && (text[0] == '-' || text[0] == '+') ? size_t{1} : size_t{0}, 0};
    for (out.end = out.first; out.end < length && IsDigit(text[out.end]);) ++out.end;
    return out;
}

size_t Replace(Text text, size_t length, size_t first, size_t end, std::string_view by) {
    const size_t after = length - (end - first) + by.size();
    if (after > text.size()) return length;
    std::memmove(text.data() + first + by.size(), text.data() + end, length - end);
    std::copy(by.begin(), by.end(), text.begin() + static_cast<std::ptrdiff_t>(first));
    return after;
}

size_t Shorten(Text text, size_t length, const SDigits& digits) {
    double value = 0;
    const auto [end, error] =
        std::from_chars(text.data() + digits.first, text.data() + length, value, std::chars_format::fixed);
    if (error != std::errc() || value < kThousand) return length;
    size_t unit = 0;
    for (value /= kThousand; value >= kLeastOfNextUnit && unit + 1 < kUnits.size(); ++unit) value /= kThousand;
    CellBuffer shortened;
    size_t size = WriteFixed(value, 1, false, std::span(shortened).first(shortened.size() - 2));
    shortened[size++] = ' ';
    shortened[size++] = kUnits[unit];
    return Replace(text, length, digits.first, static_cast<size_t>(end - text.data()), {shortened.data(), size});
}

size_t Separate(Text text, size_t length) {
    const SDigits digits = FindDigits(text, length);
    const size_t count = digits.end - digits.first;
    if (count <= kGroup || length + (count - 1) / kGroup > text.size()) return length;
    for (size_t place = digits.end; place > digits.first + kGroup;) {
        place -= kGroup;
        length = Replace(text, length, place, place, ",");
    }
    return length;
}

} // namespace

size_t DrawNumber(const SColumnLook& look, Text text, size_t length) {
    if (!look.shortForms && !look.separators) return length;
    const SDigits digits = FindDigits(text, length);
    if (digits.end <= digits.first + kGroup) return length; // Nothing to shorten or to separate.
    if (look.shortForms) length = Shorten(text, length, digits);
    return look.separators ? Separate(text, length) : length;
}

} // namespace vx
