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

} // namespace vx
