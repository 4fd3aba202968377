// SPDX-License-Identifier: MIT
#include "vxconnect/data/DataRecord.h"

#include "base/Number.h"
#include "base/Text.h"
#include "base/fields/FundamentalFields.h"
#include "vxconnect/common/SendQueue.h"
#include "vxconnect/common/SessionClock.h"
#include "vxconnect/common/UpdateFields.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace vx::sim {

namespace {

uint32_t ContentsOf(std::string_view letters) {
    uint32_t out = 0;
    for (size_t i = 0; i < kContentsLetters.size(); ++i)
        if (letters.find(kContentsLetters[i]) != std::string_view::npos) out |= 1u << i;
    return out;
}

std::string LettersOf(uint32_t contents) {
    std::string out;
    for (size_t i = 0; i < kContentsLetters.size(); ++i)
        if (contents >> i & 1) out += kContentsLetters[i];
    return out;
}

// What an update is about when its row does not say it.
uint32_t ContentsOf(const CFieldMask& fields) {
    struct SSign {
        EField field;
        uint32_t contents;
    };
    constexpr auto kSigns = std::to_array<SSign>({
        {EField::Last, kContentsTrade},
        {EField::LastSize, kContentsTrade},
        {EField::LastTime, kContentsTrade},
        {EField::ExtendedTrade, kContentsExtendedTrade},
        {EField::RecentTrade, kContentsOtherTrade},
        {EField::Open, kContentsOpen},
        {EField::High, kContentsHigh},
        {EField::Low, kContentsLow},
        {EField::Close, kContentsClose},
        {EField::Settle, kContentsSettlement},
        {EField::TotalVolume, kContentsVolume},
        {EField::Bid, kContentsBid},
        {EField::BidSize, kContentsBid},
        {EField::Ask, kContentsAsk},
        {EField::AskSize, kContentsAsk},
    });
    uint32_t out = 0;
    for (const SSign& sign : kSigns)
        if (fields.Has(sign.field)) out |= sign.contents;
    return out;
}

// What a symbol costs. Figures that follow from these may have more places.
constexpr std::array kPrices = {EField::Last, EField::Bid,   EField::Ask,         EField::Open,         EField::High,
                                EField::Low,  EField::Close, EField::RecentTrade, EField::ExtendedTrade};

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

// The decimals of a price as it was meant: those of its text, at most 6, without the digits that a program's arithmetic
// has added (10.299999999999999 has 1).
size_t PlacesShown(std::string_view number) {
    constexpr size_t kMost = 6, kMostDigits = 15;
    const auto digits =
        static_cast<size_t>(std::count_if(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; }));
    if (digits < kMostDigits) return std::min(kMost, PlacesOf(number));
    std::string rounded = fmt::format("{:.9f}", ReadDouble(number));
    rounded.erase(rounded.find_last_not_of('0') + 1);
    return std::min(kMost, PlacesOf(rounded));
}

// The figures of a quote that follow from others, for data that do not hold them. Only those whose parts the row
// touches, and only as far as they can be worked out. before: the last price before the row, empty for none.
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

} // namespace

int64_t DayOf(std::string_view text) {
    const auto parts = SplitCountingTail(text, '/');
    if (parts.size() != 3) return 0;
    const int64_t day = ReadInt32(parts[2]) * int64_t{10000} + ReadInt32(parts[0]) * 100 + ReadInt32(parts[1]);
    return day <= INT32_MAX && IsPackedDate(static_cast<PackedDate>(day)) ? day : 0;
}

std::string_view CSlotTexts::Get(size_t slot) const {
    const auto found = std::lower_bound(m_texts.begin(), m_texts.end(), slot,
                                        [](const auto& entry, size_t value) { return entry.first < value; });
    return found != m_texts.end() && found->first == slot ? std::string_view(found->second) : std::string_view();
}

bool CSlotTexts::Set(size_t slot, std::string_view text) {
    auto found = std::lower_bound(m_texts.begin(), m_texts.end(), slot,
                                  [](const auto& entry, size_t value) { return entry.first < value; });
    if (found == m_texts.end() || found->first != slot) found = m_texts.insert(found, {slot, {}});
    if (found->second == text) return false;
    found->second = text;
    return true;
}

CDataRecord::CDataRecord(std::string symbol) : m_symbol(std::move(symbol)) {
    Put(static_cast<size_t>(EField::Symbol), m_symbol);
}

bool CDataRecord::Put(size_t slot, std::string_view text) {
    if (slot < kUpdateFieldCount) m_present.Set(static_cast<EField>(slot));
    return m_texts.Set(slot, text);
}

bool CDataRecord::Differs(const SRow& row) const {
    return std::any_of(row.values.begin(), row.values.end(),
                       [&](const SRowValue& value) { return Get(value.slot) != value.text; });
}

SUpdate CDataRecord::Merge(const SRow& row, bool repeated) {
    SUpdate out;
    const std::string before(Get(EField::Last)), dayBefore(Get(EField::LastDate));
    for (const SRowValue& value : row.values) {
        const bool changed = Put(value.slot, value.text);
        if (value.slot >= kUpdateFieldCount) {
            out.newFundamentals |= changed;
            continue;
        }
        const auto field = static_cast<EField>(value.slot);
        m_given.Set(field);
        if (changed || repeated || field == EField::MessageContents) out.changed.Set(field);
    }
    if (!repeated) WorkOut(out.changed, before, dayBefore);
    m_contents = out.changed.Has(EField::MessageContents) ? ContentsOf(Get(EField::MessageContents)) : 0;
    return out;
}

// Sets a field that no row has given.
bool CDataRecord::Derive(EField field, std::string_view text, CFieldMask& changed) {
    if (m_given.Has(field) || !Put(static_cast<size_t>(field), text)) return false;
    changed.Set(field);
    return true;
}

void CDataRecord::WorkOut(CFieldMask& changed, std::string_view lastBefore, std::string_view dayBefore) {
    if (changed.Empty()) return;
    if (!changed.Has(EField::MessageContents)) {
        Put(static_cast<size_t>(EField::MessageContents), LettersOf(ContentsOf(changed)));
        changed.Set(EField::MessageContents);
    }
    const bool nextDay =
        changed.Has(EField::LastDate) && !dayBefore.empty() && DayOf(Get(EField::LastDate)) > DayOf(dayBefore);
    if (nextDay && !lastBefore.empty()) Derive(EField::Close, lastBefore, changed);
    bool priced = false;
    for (const EField price : kPrices) {
        if (!changed.Has(price)) continue;
        m_places = std::max(m_places, PlacesShown(Get(price)));
        priced = true;
    }
    if (priced) Derive(EField::DecimalPrecision, std::to_string(m_places), changed);
    for (const SRowValue& value : DerivedFigures(*this, changed, lastBefore)) {
        const auto field = static_cast<EField>(value.slot);
        if (!Derive(field, value.text, changed) && field == EField::Tick && !m_given.Has(field)) changed.Set(field);
    }
}

SUpdate CDataRecord::MergeRegion(std::string_view region, std::string_view line) {
    constexpr size_t kMostRegions = 64;
    const auto same = [&](const auto& entry) { return entry.first == region; };
    auto found = std::find_if(m_regions.begin(), m_regions.end(), same);
    if (found == m_regions.end()) {
        if (m_regions.size() == kMostRegions) return {};
        found = m_regions.insert(found, {std::string(region), {}});
    }
    found->second = line;
    SUpdate out;
    out.regions = uint64_t{1} << (found - m_regions.begin());
    return out;
}

void CDataRecord::AppendQuote(CSendQueue& out, char letter, std::string_view symbol, const CFieldMask& fields,
                              uint32_t contents, const CFieldSelection& selection) const {
    std::string line;
    LayOutQuote(std::back_inserter(line), letter, fields, selection, [&](auto at, EField field) {
        if (field == EField::Symbol) return std::copy(symbol.begin(), symbol.end(), at);
        // Several updates in one are about what any of them was about.
        const bool folded = field == EField::MessageContents && contents != m_contents;
        const std::string text = folded ? LettersOf(contents) : std::string(Get(field));
        return std::copy(text.begin(), text.end(), at);
    });
    out.Append(line);
}

void CDataRecord::AppendRegion(CSendQueue& out, std::string_view symbol, size_t region) const {
    constexpr std::string_view kLetter = "R,";
    const std::string_view line = m_regions[region].second;
    out.Append(kLetter);
    out.Append(symbol);
    out.Append(line.substr(line.find(',', kLetter.size())));
}

std::string CDataRecord::FundamentalLine(std::string_view symbol) const {
    std::string out = fmt::format("F,{},", symbol);
    for (size_t slot = 1; slot < kFundamentalSlotCount; ++slot) {
        out += Get(kUpdateFieldCount + slot);
        out += ',';
    }
    return out + "\r\n";
}

} // namespace vx::sim
