// SPDX-License-Identifier: MIT
#include "support/Agreement.h"

#include <fmt/format.h>

#include <cmath>

namespace vx::test {

namespace {

bool SameNumber(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

bool SameDate(const SDate& date, const SPlainValue& plain) {
    if (plain.invalidDate) return date.state == EDateState::Invalid;
    const EDateState state = plain.day == 0 ? EDateState::Empty : EDateState::Valid;
    return date.state == state && date.year == plain.year && date.month == plain.month && date.day == plain.day;
}

bool SameTime(const STimeOfDay& time, const SPlainValue& plain) {
    // Never set: the letter of the plain value is 0.
    const bool letter = time.letter == static_cast<char>(plain.number) || plain.direction == 0;
    return letter && time.hour == plain.year && time.minute == plain.month && time.second == plain.day;
}

template <typename TBlock> bool SameValue(const TBlock& block, EParseRule rule, size_t slot, const SPlainValue& plain) {
    if (static_cast<int>(block.Direction(slot)) != plain.direction) return false;
    if (block.HasText(slot) && block.Text(slot) != plain.text) return false;
    if (plain.direction == 0) return true;
    switch (StorageOf(rule)) {
    case EStorage::Integer:
        return block.Integer(slot) == plain.number;
    case EStorage::Unsigned:
        return block.Unsigned(slot) == plain.number;
    case EStorage::Double:
        return SameNumber(block.Number(slot), plain.number);
    case EStorage::Date:
        return SameDate(block.Date(slot), plain);
    case EStorage::Time:
        return SameTime(block.Time(slot), plain);
    default:
        return true;
    }
}

template <typename TBlock>
std::string Describe(const char* what, size_t slot, const TBlock& block, const SPlainValue& plain) {
    return fmt::format("{} slot {}: direction {} or {}, text '{}' or '{}', number {} or {}", what, slot,
                       static_cast<int>(block.Direction(slot)), plain.direction,
                       block.HasText(slot) ? block.Text(slot) : "", plain.text, block.Number(slot), plain.number);
}

std::string QuoteDifference(const CQuoteData& quote, const SPlainRecord& plain) {
    for (size_t slot = 1; slot < kUpdateFieldCount; ++slot)
        if (!SameValue(quote, kUpdateFields[slot].rule, slot, plain.quote[slot]))
            return Describe("quote", slot, quote, plain.quote[slot]);
    return {};
}

std::string FundamentalDifference(const CFundamentalData& data, const SPlainRecord& plain) {
    for (size_t slot = 1; slot < kFundamentalSlotCount; ++slot) {
        const EParseRule rule = kFundamentalLayout[slot].rule;
        if (!SameValue(data, rule, slot, plain.fundamentals[slot]) ||
            (rule == EParseRule::Split && !SameDate(data.SplitDate(slot), plain.splitDates[slot])))
            return Describe("fundamental", slot, data, plain.fundamentals[slot]);
    }
    return {};
}

std::string RegionDifference(const sRegQuoteData& region, const SPlainRecord& plain) {
    if (region.notFound != plain.notFound) return region.Symbol() + ": status";
    for (size_t slot = 2; slot < kRegionFieldCount; ++slot)
        if (!SameValue(region.data, kRegionFields[slot].rule, slot, plain.quote[slot]))
            return Describe("region", slot, region.data, plain.quote[slot]);
    return {};
}

bool SameTrade(const sTimeAndSalesRec& trade, const SPlainTrade& plain) {
    return trade.number == plain.number && std::string_view{trade.time.data()} == plain.time.c_str() &&
           SameNumber(trade.price, plain.price) && trade.size == plain.size &&
           SameNumber(trade.extendedPrice, plain.extendedPrice) && trade.extendedSize == plain.extendedSize;
}

std::string TradeDifference(const CTimeAndSales* history, const SPlainRecord& plain) {
    if ((history ? history->Size() : 0) != plain.trades.size()) return "number of trades";
    for (size_t i = 0; i < plain.trades.size(); ++i)
        if (!SameTrade(history->At(i), plain.trades[i])) return fmt::format("trade {}", i);
    return {};
}

} // namespace

std::string Difference(const CL1SymbolRec& record, const SPlainRecord& plain) {
    if (record.IsNotFound() != plain.notFound) return "status";
    for (const std::string& part :
         {QuoteDifference(record.Quote(), plain), FundamentalDifference(record.Fundamentals(), plain),
          TradeDifference(record.History(), plain)})
        if (!part.empty()) return part;
    for (const auto& [name, region] : plain.regions) {
        const sRegQuoteData* other = record.FindRegion(record.Symbol() + "--" + name);
        if (!other) return "region " + name + " is missing";
        if (const std::string part = RegionDifference(*other, region); !part.empty()) return part;
    }
    return {};
}

std::string Difference(const CL1DataStore& store, const CPlainStore& plain) {
    if (store.Size() != plain.Records().size())
        return fmt::format("{} records or {}", store.Size(), plain.Records().size());
    for (const auto& [symbol, record] : plain.Records()) {
        const CL1SymbolRec* other = store.FindSymbol(symbol);
        if (!other) return symbol + " is missing";
        if (const std::string part = Difference(*other, record); !part.empty()) return symbol + ": " + part;
    }
    return {};
}

} // namespace vx::test
