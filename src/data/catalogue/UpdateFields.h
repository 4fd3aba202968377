#pragma once

#include "data/catalogue/ParseRule.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vx {

/// One field of an update or summary line.
struct SUpdateField {
    std::string_view name; ///< The feed's own name of the field.
    EParseRule rule;
};

/// The fields that the program asks the feed for, in the order in which every update line carries them.
inline constexpr std::array kUpdateFields = {
    SUpdateField{"Symbol", EParseRule::Text},
    SUpdateField{"Exchange ID", EParseRule::Hex},
    SUpdateField{"Change", EParseRule::Number},
    SUpdateField{"Percent Change", EParseRule::Percent},
    SUpdateField{"Total Volume", EParseRule::Unsigned},
    SUpdateField{"High", EParseRule::Number},
    SUpdateField{"Low", EParseRule::Number},
    SUpdateField{"Bid", EParseRule::Number},
    SUpdateField{"Ask", EParseRule::Number},
    SUpdateField{"Bid Size", EParseRule::Integer},
    SUpdateField{"Ask Size", EParseRule::Integer},
    SUpdateField{"Tick", EParseRule::Tick},
    SUpdateField{"Range", EParseRule::Number},
    SUpdateField{"Open Interest", EParseRule::Integer},
    SUpdateField{"Open", EParseRule::Number},
    SUpdateField{"Close", EParseRule::Number},
    SUpdateField{"Spread", EParseRule::Number},
    SUpdateField{"Settle", EParseRule::Number},
    SUpdateField{"Delay", EParseRule::Integer},
    SUpdateField{"Restricted Code", EParseRule::Text},
    SUpdateField{"Net Asset Value", EParseRule::Integer},
    SUpdateField{"Average Maturity", EParseRule::Integer},
    SUpdateField{"Price-Earnings Ratio", EParseRule::Number},
    SUpdateField{"7 Day Yield", EParseRule::Number},
    SUpdateField{"Percent Off Average Volume", EParseRule::Percent},
    SUpdateField{"Bid Change", EParseRule::Number},
    SUpdateField{"Ask Change", EParseRule::Number},
    SUpdateField{"Change From Open", EParseRule::Number},
    SUpdateField{"Market Open", EParseRule::Integer},
    SUpdateField{"Volatility", EParseRule::Percent},
    SUpdateField{"Market Capitalization", EParseRule::Unsigned},
    SUpdateField{"Fraction Display Code", EParseRule::Integer},
    SUpdateField{"Decimal Precision", EParseRule::Integer},
    SUpdateField{"Days to Expiration", EParseRule::Integer},
    SUpdateField{"Previous Day Volume", EParseRule::Unsigned},
    SUpdateField{"Open Range 1", EParseRule::Number},
    SUpdateField{"Close Range 1", EParseRule::Number},
    SUpdateField{"Open Range 2", EParseRule::Number},
    SUpdateField{"Close Range 2", EParseRule::Number},
    SUpdateField{"Number of Trades Today", EParseRule::Integer},
    SUpdateField{"Bid Time", EParseRule::Text},
    SUpdateField{"Ask Time", EParseRule::Text},
    SUpdateField{"VWAP", EParseRule::Number},
    SUpdateField{"TickID", EParseRule::Unsigned},
    SUpdateField{"Financial Status Indicator", EParseRule::Text},
    SUpdateField{"Settlement Date", EParseRule::Date},
    SUpdateField{"Bid Market Center", EParseRule::BidMarketCenter},
    SUpdateField{"Ask Market Center", EParseRule::AskMarketCenter},
    SUpdateField{"Available Regions", EParseRule::Regions},
    SUpdateField{"Message Contents", EParseRule::Text},
    SUpdateField{"Most Recent Trade Conditions", EParseRule::Text},
    SUpdateField{"Most Recent Trade", EParseRule::Price},
    SUpdateField{"Most Recent Trade Size", EParseRule::Integer},
    SUpdateField{"Most Recent Trade Time", EParseRule::Text},
    SUpdateField{"Most Recent Trade Market Center", EParseRule::Text},
    SUpdateField{"Most Recent Trade Date", EParseRule::Date},
    SUpdateField{"Extended Trade", EParseRule::Price},
    SUpdateField{"Extended Trade Size", EParseRule::Integer},
    SUpdateField{"Extended Trade Time", EParseRule::Text},
    SUpdateField{"Extended Trade Market Center", EParseRule::Text},
    SUpdateField{"Extended Trade Date", EParseRule::Date},
    SUpdateField{"Extended Trading Change", EParseRule::Number},
    SUpdateField{"Extended Trading Difference", EParseRule::Number},
    SUpdateField{"Last", EParseRule::Price},
    SUpdateField{"Last Size", EParseRule::Integer},
    SUpdateField{"Last Time", EParseRule::Text},
    SUpdateField{"Last Market Center", EParseRule::Text},
    SUpdateField{"Last Date", EParseRule::Date},
    SUpdateField{"Most Recent Trade Aggressor", EParseRule::Integer},
};

inline constexpr size_t kUpdateFieldCount = kUpdateFields.size();
static_assert(kUpdateFieldCount == 69);

/// Position of an update field by the feed's name, 0 for the symbol; a name that is not in the table does not compile.
consteval size_t UpdateSlot(std::string_view name) {
    for (size_t i = 0; i < kUpdateFieldCount; ++i)
        if (kUpdateFields[i].name == name) return i;
    throw "no update field has this name";
}

/// The list of update fields as the level-1 session sends it: the names with "," between them and LF at the end.
/// The LF belongs to the text; the session's command adds one more.
const std::string& UpdateFieldList();

} // namespace vx
