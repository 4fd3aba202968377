#include "data/catalogue/Level1Columns.h"

#include "data/catalogue/RegionFields.h"
#include "data/catalogue/UpdateFields.h"

namespace vx {

namespace {

using C = EValueClass;

struct SBinding {
    ESource source;
    size_t slot;
    EColourRule colourRule = EColourRule::Direction;
};

struct SRegionSlot {
    int slot = kNoRegionSlot;
};

struct SRow {
    std::string_view name;
    std::string_view format;
    EValueClass valueClass;
    SBinding binding;
    SRegionSlot region;
    std::string_view description;
};

consteval SBinding Quote(std::string_view updateField) { return {ESource::Quote, UpdateSlot(updateField)}; }
/// A slot whose value is a difference: its sign is what its colour tells.
consteval SBinding Difference(std::string_view updateField) {
    return {ESource::Quote, UpdateSlot(updateField), EColourRule::Sign};
}
consteval SBinding Market(std::string_view updateField) { return {ESource::MarketName, UpdateSlot(updateField)}; }
consteval SRegionSlot Region(std::string_view field) { return {static_cast<int>(RegionSlot(field))}; }

constexpr SRegionSlot kNone{};

constexpr auto kRows = std::to_array<SRow>({
    {"Symbol", "%s", C::Text, Quote("Symbol"), Region("Symbol"), "Ticker symbol"},
    {"Last", "%0.*lf", C::Price, Quote("Last"), Region("Last"),
     "Last Qualifying Price - includes only last-qualifying trades."},
    {"Tick Vol", "%d", C::Integer, Quote("Last Size"), Region("Last Size"),
     "Last Qualifying Trade Size - includes only last-qualifying trades."},
    {"T Time", "%s", C::Text, Quote("Last Time"), Region("Last Time"),
     "Last Qualifying Trade Time - includes only last-qualifying trades."},
    {"Trade Time", "%s", C::Text, Quote("Last Time"), kNone,
     "Last Qualifying Trade Time - includes only last-qualifying trades."},
    {"Trade Date", "%m/%d/%y", C::Date, Quote("Last Date"), kNone,
     "Last Qualifying Trade Date - includes only last-qualifying trades."},
    {"Trade Market Center", "%s", C::Text, Quote("Last Market Center"), kNone,
     "Last Qualifying Trade Market Center - includes only last-qualifying trades."},
    {"LQT Price", "%0.*lf", C::Price, Quote("Last"), kNone,
     "Last Qualifying Price - includes only last-qualifying trades."},
    {"LQT Size", "%d", C::Integer, Quote("Last Size"), kNone,
     "Last Qualifying Trade Size - includes only last-qualifying trades."},
    {"LQT Time", "%s", C::Text, Quote("Last Time"), kNone,
     "Last Qualifying Trade Time - includes only last-qualifying trades."},
    {"LQT Market Center", "%s", C::Text, Quote("Last Market Center"), kNone,
     "Last Qualifying Trade Market Center - includes only last-qualifying trades."},
    {"LQT Date", "%m/%d/%y", C::Date, Quote("Last Date"), kNone,
     "Last Qualifying Trade Date - includes only last-qualifying trades."},
    {"ET Chg", "%+0.*lf", C::Price, Difference("Extended Trading Change"), kNone,
     "Extended Trading Change \n(ET Last - yesterday's Close)"},
    {"ET Diff", "%+0.*lf", C::Price, Difference("Extended Trading Difference"), kNone,
     "Extended Trading Difference\n Difference in price since market close (ET Last - Last)"},
    {"ET Last", "%0.*lf", C::Price, Quote("Extended Trade"), kNone,
     "Extended Trading Last - includes extended and last-qualifying trades."},
    {"ET Price", "%0.*lf", C::Price, Quote("Extended Trade"), kNone,
     "Extended Trade Price - includes extended and last-qualifying trades."},
    {"ET Size", "%d", C::Integer, Quote("Extended Trade Size"), kNone,
     "Extended Trade Size - includes extended and last-qualifying trades."},
    {"ET Time", "%s", C::Text, Quote("Extended Trade Time"), kNone,
     "Extended Trade Time - includes extended and last-qualifying trades."},
    {"ET Market Center", "%s", C::Text, Quote("Extended Trade Market Center"), kNone,
     "Extended Trade Market Center - includes extended and last-qualifying trades."},
    {"ET Date", "%m/%d/%y", C::Date, Quote("Extended Trade Date"), kNone,
     "Extended Trade Date - includes extended and last-qualifying trades."},
    {"MRT Price", "%0.*lf", C::Price, Quote("Most Recent Trade"), kNone,
     "Most Recent Trade Price - includes extended, last-qualifying, and and other trades."},
    {"MRT Size", "%d", C::Integer, Quote("Most Recent Trade Size"), kNone,
     "Most Recent Trade Size - includes extended, last-qualifying, and other trades."},
    {"MRT Time", "%s", C::Text, Quote("Most Recent Trade Time"), kNone,
     "Most Recent Trade Time - includes extended, last-qualifying, and and other trades."},
    {"MRT Market Center", "%s", C::Text, Quote("Most Recent Trade Market Center"), kNone,
     "Most Recent Trade Market Center - includes extended, last-qualifying, and other trades."},
    {"MRT Date", "%m/%d/%y", C::Date, Quote("Most Recent Trade Date"), kNone,
     "Most Recent Trade Date - includes extended, last-qualifying, and other trades."},
    {"MRT Conditions", "%s", C::Text, Quote("Most Recent Trade Conditions"), kNone,
     "Most Recent Trade Conditions - includes extended, last-qualifying, and other trades."},
    {"Ask", "%0.*lf", C::Price, Quote("Ask"), Region("Ask"),
     "The lowest price a stock or commodity is offered for sale.  Displays the best ask currently available"},
    {"A Size", "%d", C::Integer, Quote("Ask Size"), Region("Ask Size"),
     "Ask Size - Total number of shares represented by the ask price"},
    {"Bid", "%0.*lf", C::Price, Quote("Bid"), Region("Bid"),
     "The highest price a prospective buyer is prepared to pay for a security.  Displays the best bid currently "
     "available"},
    {"B Size", "%d", C::Integer, Quote("Bid Size"), Region("Bid Size"),
     "Bid Size - Total number of shares represented by the bid price"},
    {"Delay", "%d min", C::Integer, Quote("Delay"), kNone,
     "Number of minutes data is intentionally delayed by our servers based on user authorizations (Delayed symbols "
     "only)"},
    {"Change", "%+0.*lf", C::Price, Difference("Change"), kNone, "Today's change (Last - Close)"},
    {"Open", "%0.*lf", C::Price, Quote("Open"), kNone, "Today's opening trade price"},
    {"Close", "%0.*lf", C::Price, Quote("Close"), kNone, "Yesterday's closing trade price"},
    {"High", "%0.*lf", C::Price, Quote("High"), kNone, "Today's highest trade price"},
    {"Low", "%0.*lf", C::Price, Quote("Low"), kNone, "Today's lowest trade price"},
    {"Volume", "%u", C::Unsigned, Quote("Total Volume"), kNone, "Today's cumulative volume"},
    {"% Chg", "%+0.*lf%%", C::Ratio, Difference("Percent Change"), kNone, "Ratio of Change / Close"},
    {"Tick Trend", "%s", C::Text, Quote("Tick"), kNone,
     "Indicates if the current trade is higher, lower, or the same as the previous trade. Displays the last 8 values."},
    {"7day Yield", "%+0.*lf", C::Price, Quote("7 Day Yield"), kNone,
     "Yield is the income generated by an investment over a seven-day period (after expenses)."},
    {"NAV", "%d", C::Integer, Quote("Net Asset Value"), kNone,
     "Net Asset Value - The market value of a mutual fund share equal to the net asset of a fund divided by the total "
     "number of shares outstanding"},
    {"Restricted", "%s", C::Text, Quote("Restricted Code"), kNone,
     "Identifies if a stock is restricted from short sales"},
    {"Avg Mat", "%d", C::Integer, Quote("Average Maturity"), kNone,
     "Average number of days until maturity (Money Markets)"},
    {"Tot Assets", "%d", C::Integer, Quote("Net Asset Value"), kNone,
     "Current Assets for Money Market Funds (millions)"},
    {"Open Int", "%d", C::Integer, Quote("Open Interest"), kNone,
     "Open Interest - The total number of futures or option contracts that are still open"},
    {"Range", "%0.*lf", C::Price, Quote("Range"), kNone, "Trading range for the current day  (high - low)"},
    {"Settle", "%0.*lf", C::Price, Quote("Settle"), kNone, "Settlement price for today"},
    {"Spread", "%0.*lf", C::Price, Quote("Spread"), kNone, "Difference between Bid & Ask price"},
    {"Type", "%s", C::Contents, Quote("Message Contents"), kNone, "Message contents"},
    {"% OffAvgVol", "%+0.*lf%%", C::Price, Quote("Percent Off Average Volume"), kNone,
     "Percentage of the current volume in comparison to the previous 4 weeks average volume, as provided in the "
     "fundamental data."},
    {"Bid Chg", "%0.*lf", C::Price, Difference("Bid Change"), kNone,
     "The difference between the current Bid price and the previous Bid Price"},
    {"Ask Chg", "%0.*lf", C::Price, Difference("Ask Change"), kNone,
     "The difference between the current Ask price and the previous Ask Price"},
    {"ChgFrmOpn", "%+0.*lf", C::Price, Difference("Change From Open"), kNone,
     "Change in Price from the Open (Last - Open)"},
    {"Volatility", "%0.*lf%%", C::Ratio, Quote("Volatility"), kNone,
     "Todays Volatility in relation to its current price (Todays Range / Last Price)"},
    {"Mkt Cap", "%u", C::Unsigned, Quote("Market Capitalization"), kNone,
     "Total market capitilization (Last Price * Common Shares Outstanding)"},
    {"Days to Exp", "%d", C::Integer, Quote("Days to Expiration"), kNone, "Number of Days before Contract Expires"},
    {"Prev Vol", "%u", C::Unsigned, Quote("Previous Day Volume"), kNone, "Volume from the previous day"},
    {"Open Range 1", "%0.*lf", C::Price, Quote("Open Range 1"), kNone, "Open Range 1"},
    {"Close Range 1", "%0.*lf", C::Price, Quote("Close Range 1"), kNone, "Close Range 1"},
    {"Open Range 2", "%0.*lf", C::Price, Quote("Open Range 2"), kNone, "Open Range 2"},
    {"Close Range 2", "%0.*lf", C::Price, Quote("Close Range 2"), kNone, "Close Range 2"},
    {"Trades Today", "%d", C::Integer, Quote("Number of Trades Today"), kNone, "Number of trades for today"},
    {"Bid Time", "%s", C::Text, Quote("Bid Time"), Region("Bid Time"), "Time of last bid"},
    {"Ask Time", "%s", C::Text, Quote("Ask Time"), Region("Ask Time"), "Time of last ask"},
    {"VWAP", "%0.*lf", C::Price, Quote("VWAP"), kNone, "Volume weighted average price"},
    {"Tick ID", "%u", C::Unsigned, Quote("TickID"), kNone, "Tick identifier"},
    {"FSI", "%s", C::Text, Quote("Financial Status Indicator"), kNone, "Financial status indicator"},
    {"Settlement Date", "%m/%d/%y", C::Date, Quote("Settlement Date"), kNone,
     "The date that the Settle field is valid for"},
    {"Trade Market Center Name", "%s", C::Text, Quote("Last Market Center"), kNone, "Trade Market Center Name"},
    {"Bid Market Center", "%d", C::Integer, Quote("Bid Market Center"), kNone, "Bid Market Center Code"},
    {"Bid Market Center Name", "%s", C::Text, Market("Bid Market Center"), kNone, "Bid Market Center Name"},
    {"Ask Market Center", "%d", C::Integer, Quote("Ask Market Center"), kNone, "Ask Market Center Code"},
    {"Ask Market Center Name", "%s", C::Text, Market("Ask Market Center"), kNone, "Ask Market Center Name"},
    {"Available Regions", "%s", C::Text, Quote("Available Regions"), kNone, "Available Regions"},
    {"Trade Aggressor", "%d", C::Aggressor, Quote("Most Recent Trade Aggressor"), kNone, "Most Recent Trade Aggressor"},
});

constexpr auto kEntries = [] {
    std::array<SFieldEntry, kRows.size()> entries;
    for (size_t i = 0; i < kRows.size(); ++i) {
        const SRow& row = kRows[i];
        entries[i] = {row.name,
                      row.format,
                      row.valueClass,
                      EFieldGroup::Level1,
                      row.binding.source,
                      static_cast<uint8_t>(row.binding.slot),
                      static_cast<int8_t>(row.region.slot),
                      row.description,
                      row.binding.colourRule};
    }
    return entries;
}();

} // namespace

std::span<const SFieldEntry, kLevel1ColumnCount> Level1Columns() { return kEntries; }

} // namespace vx
