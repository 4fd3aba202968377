#include "vxconnect/data/DerivedFigures.h"

#include "base/Number.h"

#include <algorithm>
#include <array>
#include <optional>

#include <fmt/format.h>

namespace vx::sim {

namespace {

struct SDifference {
    EField figure;
    EField from;
    EField minus;
};
constexpr std::array<SDifference, 4> kDifferences = {{
    {EField::Change, EField::Last, EField::Close},
    {EField::ChangeFromOpen, EField::Last, EField::Open},
    {EField::Range, EField::High, EField::Low},
    {EField::Spread, EField::Ask, EField::Bid},
}};

size_t PlacesOf(std::string_view number) {
    constexpr size_t kMost = 15;
    const size_t point = number.find('.');
    return point == std::string_view::npos ? 0 : std::min(kMost, number.size() - point - 1);
}

// A number with decimals, zero without a sign.
std::string Fixed(double value, size_t places) {
    std::string out = fmt::format("{:.{}f}", value, places);
    if (out.find_first_not_of("-0.") == std::string::npos && out.starts_with('-')) out.erase(0, 1);
    return out;
}

// A change other than zero never has a percentage of zero.
std::string Fraction(double value) {
    constexpr size_t kPlaces = 6, kMore = 15;
    const std::string out = Fixed(value, kPlaces);
    return value == 0 || ReadDouble(out) != 0 ? out : Fixed(value, kMore);
}

SRowValue Value(EField field, std::string text) { return {static_cast<size_t>(field), std::move(text)}; }

int TickOf(std::string_view before, std::string_view after) {
    constexpr int kUp = 173, kDown = 175, kSame = 183;
    const double change = before.empty() ? 0 : ReadDouble(after) - ReadDouble(before);
    return change > 0 ? kUp : change < 0 ? kDown : kSame;
}

} // namespace

size_t PlacesShown(std::string_view number) {
    constexpr size_t kMost = 6, kMostDigits = 15;
    const auto digits =
        static_cast<size_t>(std::count_if(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; }));
    if (digits < kMostDigits) return std::min(kMost, PlacesOf(number));
    std::string rounded = fmt::format("{:.9f}", ReadDouble(number));
    rounded.erase(rounded.find_last_not_of('0') + 1);
    return std::min(kMost, PlacesOf(rounded));
}

std::vector<SRowValue> DerivedFigures(const CDataRecord& record, const CFieldMask& touched, std::string_view before) {
    std::vector<SRowValue> out;
    for (const SDifference& difference : kDifferences) {
        const std::string_view from = record.Get(difference.from), minus = record.Get(difference.minus);
        if ((!touched.Has(difference.from) && !touched.Has(difference.minus)) || from.empty() || minus.empty())
            continue;
        const std::string value =
            Fixed(ReadDouble(from) - ReadDouble(minus), std::max(PlacesOf(from), PlacesOf(minus)));
        out.push_back(Value(difference.figure, value));
        if (difference.figure == EField::Change && ReadDouble(minus) != 0)
            out.push_back(Value(EField::PercentChange, Fraction(ReadDouble(value) / ReadDouble(minus))));
    }
    if (touched.Has(EField::Last))
        out.push_back(Value(EField::Tick, std::to_string(TickOf(before, record.Get(EField::Last)))));
    return out;
}

} // namespace vx::sim
