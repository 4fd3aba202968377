#include "vxconnect/DerivedFigures.h"

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
    constexpr size_t kMost = 6;
    const size_t point = number.find('.');
    return point == std::string_view::npos ? 0 : std::min(kMost, number.size() - point - 1);
}

SRowValue Value(EField field, std::string text) { return {static_cast<size_t>(field), std::move(text)}; }

int TickOf(std::string_view before, std::string_view after) {
    constexpr int kUp = 173, kDown = 175, kSame = 183;
    const double change = before.empty() ? 0 : ReadDouble(after) - ReadDouble(before);
    return change > 0 ? kUp : change < 0 ? kDown : kSame;
}

} // namespace

std::vector<SRowValue> DerivedFigures(const CDataRecord& record, const CFieldMask& touched, std::string_view before) {
    std::vector<SRowValue> out;
    for (const SDifference& difference : kDifferences) {
        const std::string_view from = record.Get(difference.from), minus = record.Get(difference.minus);
        if ((!touched.Has(difference.from) && !touched.Has(difference.minus)) || from.empty() || minus.empty())
            continue;
        const double value = ReadDouble(from) - ReadDouble(minus);
        out.push_back(
            Value(difference.figure, fmt::format("{:.{}f}", value, std::max(PlacesOf(from), PlacesOf(minus)))));
        if (difference.figure == EField::Change && ReadDouble(minus) != 0)
            out.push_back(Value(EField::PercentChange, fmt::format("{:.6f}", value / ReadDouble(minus))));
    }
    if (touched.Has(EField::Last))
        out.push_back(Value(EField::Tick, std::to_string(TickOf(before, record.Get(EField::Last)))));
    return out;
}

} // namespace vx::sim
