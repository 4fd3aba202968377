// SPDX-License-Identifier: MIT
#include "data/text/CellText.h"

#include "base/Windows1252.h"
#include "data/catalogue/CellFormat.h"
#include "data/record/FieldText.h"
#include "data/record/L1SymbolRec.h"
#include "data/record/NumberText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vx {

namespace {

constexpr std::array kWords = std::to_array<std::pair<char, std::string_view>>({{'C', "TRADE"},
                                                                                {'E', "EXTENDED TRADE"},
                                                                                {'O', "OTHER TRADE"},
                                                                                {'b', "BID"},
                                                                                {'a', "ASK"},
                                                                                {'o', "OPEN"},
                                                                                {'h', "HIGH"},
                                                                                {'l', "LOW"},
                                                                                {'c', "CLOSE"},
                                                                                {'s', "SETTLEMENT"},
                                                                                {'v', "VOLUME"}});

} // namespace

size_t ContentsText(std::string_view contents, std::span<char> out) {
    size_t size = 0;
    const auto append = [&](std::string_view text) {
        const size_t part = std::min(text.size(), out.size() - size);
        std::copy_n(text.data(), part, out.data() + size);
        size += part;
    };
    if (contents == "SUMMARY") {
        append(contents);
        return size;
    }
    for (size_t i = contents.size(); i-- > 0 && size < out.size();) {
        if (size > 0) append("/");
        const auto word = std::ranges::find(kWords, contents[i], &std::pair<char, std::string_view>::first);
        append(word == kWords.end() ? contents.substr(i, 1) : word->second);
    }
    return size;
}

namespace {

constexpr std::string_view kInvalidDate = "Invalid DateTime";
constexpr int32_t kBuy = 1; ///< Trade aggressor codes.
constexpr int32_t kSell = 2;

/// One slot of a record, wherever it stands.
struct SCellValue {
    SFieldValue value;
    EDirection direction = EDirection::NeverSet;
    std::string_view text;
};

template <typename TBlock> SCellValue FromBlock(const TBlock& block, size_t slot) {
    return {block.Value(slot), block.Direction(slot), block.HasText(slot) ? block.Text(slot) : std::string_view{}};
}

bool IsSymbolColumn(const SFieldEntry& entry) { return entry.source == ESource::Quote && entry.slot == 0; }

// The row of a regional quote shows the quote of its region and the fundamentals of its base symbol.
bool ShowsRegion(const CSymbolRec& record, const SFieldEntry& entry) {
    return record.AsRegion() && (entry.source == ESource::Quote || entry.source == ESource::MarketName);
}

SCellValue ReadBase(const CL1SymbolRec& record, const SFieldEntry& entry) {
    switch (entry.source) {
    case ESource::Quote:
        return FromBlock(record.Quote(), entry.slot);
    case ESource::Fundamental:
        return FromBlock(record.Fundamentals(), entry.slot);
    case ESource::SplitDate: {
        SCellValue out = FromBlock(record.Fundamentals(), entry.slot);
        out.value.date = record.Fundamentals().SplitDate(entry.slot);
        return out;
    }
    case ESource::MarketName: {
        SCellValue out = FromBlock(record.Quote(), entry.slot);
        if (out.direction != EDirection::NeverSet) out.text = record.MarketName(static_cast<int>(out.value.whole));
        return out;
    }
    case ESource::None:
        break;
    }
    return {};
}

SCellValue Read(const CSymbolRec& record, const SFieldEntry& entry) {
    if (IsSymbolColumn(entry)) {
        const sRegQuoteData* region = record.AsRegion();
        const bool notFound = record.Base().IsNotFound() || (region && region->notFound);
        return {{}, EDirection::Unchanged, notFound ? kNotFoundText : std::string_view{record.Symbol()}};
    }
    if (!ShowsRegion(record, entry)) return ReadBase(record.Base(), entry);
    if (entry.regionSlot == kNoRegionSlot) return {};
    return FromBlock(record.AsRegion()->data, static_cast<size_t>(entry.regionSlot));
}

bool IsPercent(const SFieldEntry& entry) { return entry.format.back() == '%'; }

// A number too long for a cell is cut at its end, and keeps the percent sign.
size_t Number(double value, int decimals, const SFieldEntry& entry, std::span<char, kMostCellText> out) {
    const bool plus = entry.format[1] == '+';
    const bool percent = IsPercent(entry);
    size_t size = WriteFixed(value, decimals, plus, out.first(out.size() - (percent ? 1 : 0)));
    if (percent) out[size++] = '%';
    return size;
}

size_t Integer(int32_t value, const SFieldEntry& entry, std::span<char, kMostCellText> out) {
    const size_t size = WriteInteger(value, out);
    const std::string_view unit = entry.format.substr(entry.format.find('d') + 1); // "%d min" has one.
    std::ranges::copy(unit, out.begin() + static_cast<std::ptrdiff_t>(size));
    return size + unit.size();
}

size_t Copy(std::string_view text, std::span<char, kMostCellText> out) {
    const size_t size = std::min(text.size(), out.size());
    std::copy_n(text.data(), size, out.data());
    return size;
}

size_t Date(const SDate& date, std::string_view format, std::span<char, kMostCellText> out) {
    if (date.state == EDateState::Empty) return 0;
    if (date.state == EDateState::Invalid) return Copy(kInvalidDate, out);
    size_t size = 0;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            out[size++] = format[i];
            continue;
        }
        const char part = format[++i];
        const int number = part == 'm' ? date.month : part == 'd' ? date.day : date.year % 100;
        out[size++] = static_cast<char>('0' + number / 10);
        out[size++] = static_cast<char>('0' + number % 10);
    }
    return size;
}

size_t TickTrend(std::string_view marks, std::span<char, kMostCellText> out) {
    const size_t size = Copy(marks, out);
    for (char& c : out.first(size)) c = c == '+' ? kTickUp : c == '-' ? kTickDown : c == '.' ? kTickDot : c;
    return size;
}

} // namespace

bool IsTickTrend(const SFieldEntry& entry) {
    return entry.source == ESource::Quote && kUpdateLayout[entry.slot].rule == EParseRule::Tick;
}

size_t CellText(const CSymbolRec& record, const SFieldEntry& entry, int decimals, std::span<char, kMostCellText> out) {
    const SCellValue cell = Read(record, entry);
    const bool set = cell.direction != EDirection::NeverSet;
    switch (entry.valueClass) {
    case EValueClass::Text:
        return IsTickTrend(entry) ? TickTrend(cell.text, out) : Copy(cell.text, out);
    case EValueClass::Contents:
        return ContentsText(cell.text, out);
    case EValueClass::Date:
        return set ? Date(cell.value.date, entry.format, out) : 0;
    case EValueClass::Fixed:
    case EValueClass::Price:
    case EValueClass::Ratio:
        return set ? Number(cell.value.number, decimals, entry, out) : 0;
    case EValueClass::FourPlaces:
        return set ? Number(cell.value.number, 4, entry, out) : 0;
    case EValueClass::Integer:
        return set ? Integer(static_cast<int32_t>(cell.value.whole), entry, out) : 0;
    case EValueClass::Unsigned:
        return set ? WriteUnsigned(static_cast<uint32_t>(cell.value.whole), out) : 0;
    case EValueClass::Aggressor:
        return cell.value.whole == kBuy ? Copy("BUY", out) : cell.value.whole == kSell ? Copy("SELL", out) : 0;
    case EValueClass::Character:
        if (!set) return 0;
        out[0] = static_cast<char>(cell.value.whole);
        return 1;
    }
    return 0;
}

std::optional<double> CellTextNumber(const CSymbolRec& record, const SFieldEntry& entry, int decimals) {
    const SCellValue cell = Read(record, entry);
    const bool set = cell.direction != EDirection::NeverSet;
    switch (entry.valueClass) {
    case EValueClass::Fixed:
    case EValueClass::Price:
    case EValueClass::Ratio:
        return set ? RoundedAsWritten(cell.value.number, decimals) : 0;
    case EValueClass::FourPlaces:
        return set ? RoundedAsWritten(cell.value.number, 4) : 0;
    case EValueClass::Integer:
        return set ? static_cast<double>(static_cast<int32_t>(cell.value.whole)) : 0;
    case EValueClass::Unsigned:
        return set ? static_cast<double>(static_cast<uint32_t>(cell.value.whole)) : 0;
    default:
        return std::nullopt;
    }
}

void PrefetchCell(const CSymbolRec& record, const SFieldEntry& entry) {
    const CL1SymbolRec& base = record.Base();
    if (entry.source != ESource::Quote || record.AsRegion()) return;
    base.Quote().Prefetch(entry.slot);
    base.Quote().Prefetch(UpdateSlot("Decimal Precision"));
}

double CellNumber(const CSymbolRec& record, const SFieldEntry& entry) {
    const sRegQuoteData* region = ShowsRegion(record, entry) ? record.AsRegion() : nullptr;
    const bool received =
        region ? region->updated || region->hasData : record.Base().IsUpdated() || record.Base().HasData();
    if (!received) return 0;
    switch (entry.valueClass) {
    case EValueClass::Integer:
    case EValueClass::Unsigned:
        return static_cast<double>(Read(record, entry).value.whole);
    case EValueClass::Fixed:
    case EValueClass::Price:
    case EValueClass::Ratio:
        return Read(record, entry).value.number;
    default:
        return 0;
    }
}

EDirection CellDirection(const CSymbolRec& record, const SFieldEntry& entry) { return Read(record, entry).direction; }

EDirection ColourDirection(const CSymbolRec& record, const SFieldEntry& entry, EColourRule rule) {
    const SCellValue cell = Read(record, entry);
    if (rule == EColourRule::OfField) rule = entry.colourRule;
    if (rule == EColourRule::Direction || cell.direction == EDirection::NeverSet) return cell.direction;
    const bool whole = entry.valueClass == EValueClass::Integer || entry.valueClass == EValueClass::Unsigned;
    const double number = whole ? static_cast<double>(cell.value.whole) : cell.value.number;
    return number > 0 ? EDirection::Up : number < 0 ? EDirection::Down : EDirection::Unchanged;
}

int DecimalsToShow(const CSymbolRec& record, const SFieldEntry& entry, int cellDecimals, bool chosen) {
    const int precision = record.Base().DecimalPrecision();
    if (entry.valueClass != EValueClass::Price || precision < 0) return cellDecimals;
    const bool ofSymbol =
        !chosen && !IsPercent(entry) && (cellDecimals == kUnchosenDecimals || cellDecimals == entry.places);
    return std::min(precision, ofSymbol ? kMostDecimals : cellDecimals);
}

} // namespace vx
