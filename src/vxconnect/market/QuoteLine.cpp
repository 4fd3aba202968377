// SPDX-License-Identifier: MIT
#include "vxconnect/market/QuoteLine.h"

#include "vxconnect/common/UpdateFields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace vx::sim {

namespace {

constexpr size_t kMaxField = kMaxQuoteField;

char* WriteInteger(char* out, int64_t value) { return std::to_chars(out, out + kMaxField, value).ptr; }

char* WriteTwoDigits(char* out, int64_t value) {
    *out++ = static_cast<char>('0' + value / 10);
    *out++ = static_cast<char>('0' + value % 10);
    return out;
}

// A value in units of 10^-places.
char* WriteDecimal(char* out, int64_t value, int places, int64_t unit) {
    if (value < 0) {
        *out++ = '-';
        value = -value;
    }
    out = WriteInteger(out, value / unit);
    *out = '.';
    int64_t rest = value % unit;
    for (int i = places; i > 0; --i, rest /= 10) out[i] = static_cast<char>('0' + rest % 10);
    return out + 1 + places;
}

char* WritePrice(char* out, int64_t value, int decimals) {
    constexpr std::array<int64_t, 6> kUnits = {1, 10, 100, 1000, 10'000, 100'000};
    const int64_t unit = kUnits[static_cast<size_t>(decimals)];
    return WriteDecimal(out, value / (kPriceUnit / unit), decimals, unit);
}

char* WriteTime(char* out, int64_t seconds) {
    out = WriteTwoDigits(out, seconds / 3600);
    *out++ = ':';
    out = WriteTwoDigits(out, seconds / 60 % 60);
    *out++ = ':';
    return WriteTwoDigits(out, seconds % 60);
}

char* WriteDate(char* out, int64_t date) {
    out = WriteInteger(out, date / 100 % 100);
    *out++ = '/';
    out = WriteInteger(out, date % 100);
    *out++ = '/';
    return WriteInteger(out, date / 10000);
}

char* WriteContents(char* out, uint32_t contents) {
    for (size_t i = 0; i < kContentsLetters.size(); ++i)
        if (contents & (1u << i)) *out++ = kContentsLetters[i];
    return out;
}

char* WriteHexPair(char* out, int64_t value) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    *out++ = kDigits[value >> 4 & 15];
    *out++ = kDigits[value & 15];
    return out;
}

char* WriteField(char* out, const CInstrument& instrument, EField field, uint32_t contents) {
    const int64_t value = instrument.Value(field);
    switch (FieldInfo(field).shape) {
    case EShape::Symbol:
        std::memcpy(out, instrument.Symbol().data(), instrument.Symbol().size());
        return out + instrument.Symbol().size();
    case EShape::Integer:
        return WriteInteger(out, value);
    case EShape::Hex:
        return std::to_chars(out, out + kMaxField, value, 16).ptr;
    case EShape::HexPair:
        return WriteHexPair(out, value);
    case EShape::Price:
        return WritePrice(out, value, instrument.Decimals());
    case EShape::FinePrice:
        return WritePrice(out, value, std::max(kFineDecimals, instrument.Decimals()));
    case EShape::Hundredths:
        return WriteDecimal(out, value, 2, 100);
    case EShape::Fraction:
        return WriteDecimal(out, value, 6, 1000000);
    case EShape::Time:
        return WriteTime(out, value);
    case EShape::Date:
        return WriteDate(out, value);
    case EShape::Letter:
        *out = static_cast<char>(value);
        return out + 1;
    case EShape::Contents:
        return WriteContents(out, contents);
    case EShape::Regions:
        std::memcpy(out, kRegionList.data(), kRegionList.size());
        return out + kRegionList.size();
    }
    return out;
}

} // namespace

char* WriteQuoteLine(char* out, char letter, const CInstrument& instrument, const CFieldMask& fields, uint32_t contents,
                     const CFieldSelection& selection) {
    return LayOutQuote(out, letter, fields, selection,
                       [&](char* at, EField field) { return WriteField(at, instrument, field, contents); });
}

char* WriteRegionLine(char* out, const CInstrument& instrument, size_t region) {
    const CRegionalQuotes::SQuote& quote = instrument.Regions().At(region);
    const auto side = [&](const CRegionalQuotes::SSide& values, char letter) {
        if (values.price != 0) out = WritePrice(out, values.price, instrument.Decimals());
        *out++ = ',';
        if (values.price != 0) out = WriteInteger(out, values.size);
        *out++ = ',';
        if (values.price != 0) {
            out = WriteTime(out, values.time);
            *out++ = letter;
        }
        *out++ = ',';
    };
    const auto text = [&](std::string_view value) {
        std::memcpy(out, value.data(), value.size());
        out += value.size();
        *out++ = ',';
    };
    text("R");
    text(instrument.Symbol());
    text(kRegions[region].name);
    side(quote.bid, 'b');
    side(quote.ask, 'a');
    side(quote.last, 't');
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

} // namespace vx::sim
