#include "vxconnect/data/DataRecord.h"

#include "vxconnect/common/SendQueue.h"
#include "vxconnect/common/UpdateFields.h"
#include "vxconnect/data/DataClock.h"
#include "vxconnect/data/DerivedFigures.h"

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

} // namespace

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
    if (slot < kFieldCount) m_present.Set(static_cast<EField>(slot));
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
        if (value.slot >= kFieldCount) {
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
    for (size_t slot = 1; slot < kFundamentalSlots; ++slot) {
        out += Get(kFieldCount + slot);
        out += ',';
    }
    return out + "\r\n";
}

} // namespace vx::sim
