// SPDX-License-Identifier: MIT
#include "data/catalogue/Catalogue.h"
#include "data/catalogue/DataInfo.h"
#include "data/catalogue/FieldLayout.h"
#include "data/catalogue/UpdateFields.h"

#include <gmock/gmock.h>

#include <set>

using namespace vx;

namespace {

EParseRule RuleOf(const SFieldEntry& entry) {
    using enum ESource;
    return entry.source == Quote         ? kUpdateLayout[entry.slot].rule
           : entry.source == Fundamental ? kFundamentalLayout[entry.slot].rule
           : entry.source == SplitDate   ? EParseRule::Date
           : entry.source == MarketName  ? EParseRule::Text
                                         : EParseRule::None;
}

EStorage StorageNeededBy(EValueClass valueClass) {
    using enum EValueClass;
    if (valueClass == Date) return EStorage::Date;
    if (valueClass == Text || valueClass == Contents) return EStorage::Text;
    if (valueClass == Unsigned) return EStorage::Unsigned;
    if (valueClass == Integer || valueClass == Aggressor || valueClass == Character) return EStorage::Integer;
    return EStorage::Double;
}

} // namespace

TEST(Catalogue, EveryColumnReadsAFieldThatIsStoredAsItsClassNeeds) {
    for (const SFieldEntry& entry : Catalogue()) {
        if (entry.source == ESource::None || entry.name == "Symbol") continue;
        EXPECT_EQ(StorageOf(RuleOf(entry)), StorageNeededBy(entry.valueClass)) << entry.name;
        if (entry.regionSlot != kNoRegionSlot) {
            const EParseRule regional = kRegionLayout[static_cast<size_t>(entry.regionSlot)].rule;
            EXPECT_TRUE(StorageOf(regional) == StorageNeededBy(entry.valueClass) || KeepsText(regional)) << entry.name;
        }
    }
}

TEST(Catalogue, NamesAreDistinctAndFitTheirRecords) {
    std::set<std::string_view> names;
    for (const SFieldEntry& entry : Catalogue()) {
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
        EXPECT_LT(entry.name.size(), 40u);
        EXPECT_LT(entry.format.size(), 20u);
        EXPECT_EQ(entry.description.empty(), entry.group == EFieldGroup::RowNumber) << entry.name;
        EXPECT_EQ(&entry, FindField(entry.name));
    }
}

TEST(Catalogue, TheGroupsFollowEachOther) {
    const std::tuple<int, const char*, EFieldGroup> places[] = {
        {0, " ", EFieldGroup::RowNumber},
        {1, "Symbol", EFieldGroup::Level1},
        {75, "Trade Aggressor", EFieldGroup::Level1},
        {76, "Exchange", EFieldGroup::Fundamental},
        {133, "Security SubType Name", EFieldGroup::Fundamental},
        {134, "Alerts", EFieldGroup::Own},
        {137, "Latest Headline", EFieldGroup::Own}};
    for (const auto& [index, name, group] : places) {
        EXPECT_EQ(FieldIndex(name), index) << name;
        EXPECT_EQ(Catalogue()[static_cast<size_t>(index)].group, group) << name;
    }
}

TEST(Catalogue, NamesAreMatchedExactlyAndHavePlaces) {
    EXPECT_NE(FieldIndex("% Chg"), kNoField);
    for (const char* name : {"% chg", "%Chg", "% Chg ", "", "Session Close Time", "ET Change"})
        EXPECT_EQ(FieldIndex(name), kNoField) << name;
    EXPECT_NE(FieldIndex("Sesson Close Time"), kNoField);
    const std::pair<const char*, std::optional<int>> places[] = {
        {"MRT Price", 4}, {"Bid Chg", 2}, {"ET Change", 4}, {"ET Chg", {}}, {"last", {}}};
    for (const auto& [name, decimals] : places) EXPECT_EQ(CDataInfo::DecimalPlaces(name), decimals) << name;
}

TEST(Catalogue, OddTextsStayAsTheyAre) {
    const std::tuple<const char*, const char*, int, const char*> entries[] = {
        {"ET Diff", "%+0.*lf", 4,
         "Extended Trading Difference\n Difference in price since market close (ET Last - Last)"},
        {"MRT Time", "%s", 3, "Most Recent Trade Time - includes extended, last-qualifying, and and other trades."},
        {"Mkt Cap", "%u", 6, "Total market capitilization (Last Price * Common Shares Outstanding)"},
        {"Ex Div Date", "%m/%d", 1, "Interval of time between the announcement and payment of a confirmed dividend."},
        {"Split2 Date", "%m/%d/%y", 1, "2nd Split Date "},
        {"Beta", "%0.*lf", 8,
         "Measures a stock\x92"
         "s volatility in relation to the rest of the market as measured by the S&P 500 index"}};
    for (const auto& [name, format, valueClass, description] : entries) {
        const SFieldEntry& entry = *FindField(name);
        EXPECT_EQ(entry.format, format) << name;
        EXPECT_EQ(static_cast<int>(entry.valueClass), valueClass) << name;
        EXPECT_EQ(entry.description, description) << name;
    }
}

TEST(Catalogue, TheUpdateFieldListIsSentByteForByte) {
    EXPECT_EQ(
        UpdateFieldList(),
        "Symbol,Exchange ID,Change,Percent Change,Total Volume,High,Low,Bid,Ask,Bid Size,Ask Size,Tick,Range,Open "
        "Interest,Open,Close,Spread,Settle,Delay,Restricted Code,Net Asset Value,Average Maturity,Price-Earnings "
        "Ratio,7 Day Yield,Percent Off Average Volume,Bid Change,Ask Change,Change From Open,Market "
        "Open,Volatility,Market Capitalization,Fraction Display Code,Decimal Precision,Days to "
        "Expiration,Previous Day Volume,Open Range 1,Close Range 1,Open Range 2,Close Range 2,Number of Trades "
        "Today,Bid Time,Ask Time,VWAP,TickID,Financial Status Indicator,Settlement Date,Bid Market Center,Ask "
        "Market Center,Available Regions,Message Contents,Most Recent Trade Conditions,Most Recent Trade,Most "
        "Recent Trade Size,Most Recent Trade Time,Most Recent Trade Market Center,Most Recent Trade "
        "Date,Extended Trade,Extended Trade Size,Extended Trade Time,Extended Trade Market Center,Extended Trade "
        "Date,Extended Trading Change,Extended Trading Difference,Last,Last Size,Last Time,Last Market "
        "Center,Last Date,Most Recent Trade Aggressor\n");
}
