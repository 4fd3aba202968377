// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx {

/// How the text of one field of a data line becomes the stored value.
enum class EParseRule : uint8_t {
    None = 0,
    Hex = 1,        ///< Hexadecimal integer, unsigned; no direction of its own.
    Integer = 2,    ///< Decimal integer, signed.
    Unsigned = 3,   ///< Decimal integer, unsigned.
    Number = 4,     ///< Decimal number.
    Percent = 5,    ///< A fraction, stored times 100.
    Text = 6,       ///< Text as it stands.
    Date = 8,       ///< Month/day/year.
    MonthDay = 9,   ///< Month/day.
    Time = 10,      ///< Hours:minutes:seconds and one letter.
    Split = 11,     ///< A ratio, a blank and a date.
    Price = 12,     ///< Decimal number, or "Not Found".
    Month = 13,     ///< Name of a month.
    Tick = 14,      ///< Tick code; builds the tick trend.
    Integer15 = 15, ///< 15 to 20: decimal integers, signed.
    Integer16 = 16,
    Integer17 = 17,
    Integer18 = 18,
    BidMarketCenter = 19, ///< Market id.
    AskMarketCenter = 20, ///< Market id.
    Regions = 21,         ///< List with ";" between its entries.
    SecurityType = 22     ///< Security type id.
};

/// Where a rule keeps what it read.
enum class EStorage : uint8_t { None, Integer, Unsigned, Double, Date, Time, Text };

constexpr EStorage StorageOf(EParseRule rule) {
    switch (rule) {
    case EParseRule::None:
        return EStorage::None;
    case EParseRule::Hex:
    case EParseRule::Unsigned:
        return EStorage::Unsigned;
    case EParseRule::Number:
    case EParseRule::Percent:
    case EParseRule::Split:
    case EParseRule::Price:
        return EStorage::Double;
    case EParseRule::Text:
    case EParseRule::Tick:
    case EParseRule::Regions:
        return EStorage::Text;
    case EParseRule::Date:
    case EParseRule::MonthDay:
        return EStorage::Date;
    case EParseRule::Time:
        return EStorage::Time;
    default:
        return EStorage::Integer;
    }
}

/// Whether the rule keeps a text beside, or instead of, a number.
constexpr bool KeepsText(EParseRule rule) {
    return StorageOf(rule) == EStorage::Text || StorageOf(rule) == EStorage::Time;
}

/// The rules whose rising and falling a summary takes back to unchanged.
constexpr bool IsFlattenedBySummary(EParseRule rule) {
    return rule == EParseRule::Integer || rule == EParseRule::Unsigned || rule == EParseRule::Number ||
           rule == EParseRule::Percent || rule == EParseRule::Price;
}

/// How a column's value is stored and turned into text.
enum class EValueClass : uint8_t {
    Character = 0,
    Date = 1,
    Fixed = 2, ///< Number with the column's own places.
    Text = 3,
    Price = 4, ///< Number with the symbol's places.
    Integer = 5,
    Unsigned = 6,
    Ratio = 8,      ///< Ratio or percentage.
    Contents = 9,   ///< Message contents, shown in words.
    Aggressor = 10, ///< Side that started the trade.
    FourPlaces = 11 ///< Number, always with four places.
};

/// Whether values of a class are numbers: shown right aligned, and sorted as numbers.
constexpr bool IsNumberClass(EValueClass valueClass) {
    switch (valueClass) {
    case EValueClass::Fixed:
    case EValueClass::Price:
    case EValueClass::Integer:
    case EValueClass::Unsigned:
    case EValueClass::Ratio:
    case EValueClass::FourPlaces:
        return true;
    default:
        return false;
    }
}

/// What a column shows of the field in whose row it stands.
enum class EColumnShows : uint8_t {
    Value,
    Difference, ///< Its value, a difference: the sign is what its colour tells.
    MarketName, ///< The name of the market whose id it holds.
    StoredName  ///< Its value, which the record keeps as a name; a user's own data have the id.
};

/// A column whose decimals are the grid's, until somebody chooses others.
inline constexpr int8_t kGridPlaces = -1;

/// How the feed client writes the stored integer of a field.
enum class EShape : uint8_t {
    Symbol,     ///< The ticker itself.
    Integer,    ///< As it is.
    Hex,        ///< Hexadecimal, as many digits as it takes.
    HexPair,    ///< Two hexadecimal digits.
    Price,      ///< Hundred-thousandths, written with the symbol's own decimals.
    FinePrice,  ///< Hundred-thousandths, written with the symbol's own decimals, at least four.
    Hundredths, ///< Hundredths, written with two decimals.
    Fraction,   ///< Millionths, written with six decimals; 0.01 is one percent.
    Time,       ///< Seconds of the day, written hh:mm:ss.
    Date,       ///< year * 10000 + month * 100 + day, written m/d/yyyy.
    Letter,     ///< One character.
    Contents,   ///< A set of letters.
    Regions     ///< The names of the regional quotes, with ";" between them.
};

/// How a value of a user's own data is read; docs/vxconnect.md says it for the user.
enum class EInputKind : uint8_t {
    Symbol,
    Text,
    Integer,
    Size,   ///< A whole number from 0 to the largest signed one; rounded and cut to that.
    Volume, ///< The same up to the largest number without a sign.
    Number,
    Percent,
    Hex,
    Time,
    Date,
    MonthDay,
    Split,
    Contents,
    Tick
};

} // namespace vx
