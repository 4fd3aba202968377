// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FieldKinds.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace vx {

/// One fundamental column and the field of a fundamental line that fills it.
struct SFundamentalField {
    std::string_view name;
    std::string_view format;
    EValueClass valueClass;
    EParseRule rule;  ///< None: the line has no field of its own for it, the split before it fills it.
    EInputKind input; ///< Means nothing where the rule is None.
    int8_t places;    ///< Decimals until somebody chooses others, or kGridPlaces.
    std::string_view description;
};

/// The fundamental columns in catalogue order. A fundamental line carries the symbol and then one field for every row
/// whose rule is not None.
inline constexpr std::array kFundamentalFields = [] {
    using C = EValueClass;
    using R = EParseRule;
    using I = EInputKind;
    return std::to_array<SFundamentalField>({
        {"Exchange", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Exchange the symbol is traded on"},
        {"Name", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Ticker Name or Description"},
        {"Option Symbols", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Base Option symbol(s)"},
        {"52wk High", "%0.*lf", C::Price, R::Number, I::Number, 4, "Highest trade price in the last 52 weeks"},
        {"52wk Low", "%0.*lf", C::Price, R::Number, I::Number, 4, "Lowest Trade price in the last 52 weeks"},
        {"5yr Growth %", "%0.*lf%%", C::Ratio, R::Number, I::Number, 2, "5 Year Growth Percentage"},
        {"Beta", "%0.*lf", C::Ratio, R::Number, I::Number, 2,
         "Measures a stock\x92"
         "s volatility in relation to the rest of the market as measured by the S&P 500 index"},
        {"Cal High", "%0.*lf", C::Price, R::Number, I::Number, 4, "Calendar year high"},
        {"Cal Low", "%0.*lf", C::Price, R::Number, I::Number, 4, "Calendar year low"},
        {"EPS", "%0.*lf", C::Ratio, R::Number, I::Number, 2, "Trailing 12 Months Earnings Per Share"},
        {"Div Amt", "%0.4lf", C::FourPlaces, R::Number, I::Number, 2, "Most recent dividend amount"},
        {"Div Rate", "%0.4lf", C::FourPlaces, R::Number, I::Number, 2,
         "Indicated annual dividend rate based on the latest payment"},
        {"Div Yield", "%0.*lf%%", C::Ratio, R::Number, I::Number, 2,
         "Dividend Yield - The latest annual dividend divided by the last price of the security multiplied by 100"},
        {"Est EPS", "%0.*lf", C::Ratio, R::Number, I::Number, 2, "Next year earnings per share estimate"},
        {"P/E", "%0.*lf", C::Ratio, R::Number, I::Number, 2,
         "Price to Earnings ratio - The price of a stock divided by the reported earnings from the latest 12-months"},
        {"% Held", "%0.*lf%%", C::Ratio, R::Number, I::Number, 2, "Percent held by institutions"},
        {"Avg Vol", "%d", C::Integer, R::Integer, I::Size, kGridPlaces, "4 week average trading volume"},
        {"Shares Out", "%d", C::Integer, R::Integer, I::Size, kGridPlaces, "Common shares outstanding(thousands)"},
        {"Assets", "%0.*lf", C::Ratio, R::Number, I::Number, 2, "Assets"},
        {"Liabilities", "%0.*lf", C::Ratio, R::Number, I::Number, 2, "Current Liabilities(millions)"},
        {"Fisc Yr End", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Fiscal year end"},
        {"LT Debt", "%d", C::Integer, R::Integer, I::Size, kGridPlaces, "Long Term Debt"},
        {"Split1 Ratio", "%0.*lf", C::Fixed, R::Split, I::Split, 2, "Split Ratio"},
        {"Split1 Date", "%m/%d/%y", C::Date, R::None, I::Text, kGridPlaces, "1st Split Date"},
        {"Split2 Ratio", "%0.*lf", C::Fixed, R::Split, I::Split, 2, "Split Ratio"},
        {"Split2 Date", "%m/%d/%y", C::Date, R::None, I::Text, kGridPlaces, "2nd Split Date "},
        {"Bal Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces, "Balance sheet date"},
        {"Ex Div Date", "%m/%d", C::Date, R::MonthDay, I::MonthDay, kGridPlaces,
         "Interval of time between the announcement and payment of a confirmed dividend."},
        {"Div Pay Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces, "Dividend Pay Date"},
        {"SIC", "%d", C::Integer, R::Integer, I::Integer, kGridPlaces, "Standard Industry Classification Code"},
        {"Hist Vol", "%0.*lf", C::Price, R::Number, I::Number, 4, "30 day historical volatility"},
        {"52wk High Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces, "Date 52 Week High was set"},
        {"52wk Low Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces, "Date 52 Week Low was set"},
        {"Cal High Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces, "Date Calendar Year High was set"},
        {"Cal Low Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces, "Date Calendar Year Low was set"},
        {"Listed Market", "%d", C::Integer, R::Integer, I::Integer, kGridPlaces, "Listed Market Index"},
        {"Security Type", "%d", C::Integer, R::SecurityType, I::Integer, kGridPlaces, "Security Type Index"},
        {"Listed Market Name", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Listed Market Short Name"},
        {"Security Type Name", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Security Type Name"},
        {"NAICS", "%d", C::Integer, R::Integer, I::Integer, kGridPlaces,
         "North American Industry Classification System Code"},
        {"Year End Close", "%0.*lf", C::Price, R::Number, I::Number, kGridPlaces,
         "Price of Year End Close. (Equities Only)"},
        {"Maturity Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces, "Date of maturity for a Bond"},
        {"Coupon Rate", "%0.*lf", C::Price, R::Number, I::Number, kGridPlaces, "Interest Rate for a Bond"},
        {"Expiration Date", "%m/%d/%y", C::Date, R::Date, I::Date, kGridPlaces,
         "Date the contract expires (IEOptions, Futures, FutureOptions, and SSFutures only)"},
        {"Strike Price", "%0.*lf", C::Fixed, R::Number, I::Number, kGridPlaces, "Strike Price"},
        {"Exchange Root", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Exchange Root"},
        {"Options Premium Multipliers", "%0.*lf", C::Fixed, R::Number, I::Number, kGridPlaces,
         "Options Premium Multiplier"},
        {"Options Multiple Deliverables", "%d", C::Integer, R::Integer, I::Integer, kGridPlaces,
         "Options Multiple Deliverables"},
        {"Session Open Time", "%s", C::Text, R::Text, I::Time, kGridPlaces, "Session Open Time"},
        {"Sesson Close Time", "%s", C::Text, R::Text, I::Time, kGridPlaces, "Session Close Time"},
        {"Base Currency", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Base Currency"},
        {"Contract Size", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Contract Size"},
        {"Contract Months", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Contract Months"},
        {"Minimum Tick Size", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Minimum Tick Size"},
        {"First Delivery Date", "%s", C::Text, R::Text, I::Text, kGridPlaces, "First Delivery Date"},
        {"FIGI", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Financial Instrument Global Identifier"},
        {"Security SubType", "%d", C::Integer, R::Integer, I::Integer, kGridPlaces, "Security SubType"},
        {"Security SubType Name", "%s", C::Text, R::Text, I::Text, kGridPlaces, "Security SubType Name"},
    });
}();

inline constexpr size_t kFundamentalColumnCount = kFundamentalFields.size();

/// Position of a row's field in a fundamental line, 0 for the symbol; for a split's date, the position of the split.
constexpr size_t FundamentalSlotOfRow(size_t row) {
    size_t slot = 0;
    for (size_t i = 0; i <= row; ++i)
        if (kFundamentalFields[i].rule != EParseRule::None) ++slot;
    return slot;
}

/// Fields of a fundamental line, the symbol included.
inline constexpr size_t kFundamentalSlotCount = FundamentalSlotOfRow(kFundamentalColumnCount - 1) + 1;

/// Position of a fundamental field by its column's name; a name that is not in the table does not compile.
consteval size_t FundamentalSlot(std::string_view name) {
    for (size_t i = 0; i < kFundamentalColumnCount; ++i)
        if (kFundamentalFields[i].name == name) return FundamentalSlotOfRow(i);
    throw "no fundamental column has this name";
}

} // namespace vx
