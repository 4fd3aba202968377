#include "vxconnect/InputFields.h"

#include "base/Text.h"

#include <array>
#include <unordered_map>

namespace vx::sim {

namespace {

constexpr EInputKind KindOf(EShape shape) {
    switch (shape) {
    case EShape::Symbol:
        return EInputKind::Symbol;
    case EShape::Integer:
        return EInputKind::Integer;
    case EShape::Hex:
    case EShape::HexPair:
        return EInputKind::Hex;
    case EShape::Price:
    case EShape::FinePrice:
    case EShape::Hundredths:
    case EShape::Fraction:
        return EInputKind::Number;
    case EShape::Time:
        return EInputKind::Time;
    case EShape::Date:
        return EInputKind::Date;
    case EShape::Contents:
        return EInputKind::Contents;
    case EShape::Letter:
    case EShape::Regions:
        break;
    }
    return EInputKind::Text;
}

struct SColumn {
    std::string_view name;
    EField field;
    EInputKind kind;
};

// The names of columns whose field has another name. Columns that show the name behind an id have none of their own.
constexpr auto kColumns = std::to_array<SColumn>({
    {"Tick Vol", EField::LastSize, EInputKind::Integer},
    {"T Time", EField::LastTime, EInputKind::Time},
    {"Trade Time", EField::LastTime, EInputKind::Time},
    {"Trade Date", EField::LastDate, EInputKind::Date},
    {"Trade Market Center", EField::LastMarketCenter, EInputKind::Integer},
    {"LQT Price", EField::Last, EInputKind::Number},
    {"LQT Size", EField::LastSize, EInputKind::Integer},
    {"LQT Time", EField::LastTime, EInputKind::Time},
    {"LQT Market Center", EField::LastMarketCenter, EInputKind::Integer},
    {"LQT Date", EField::LastDate, EInputKind::Date},
    {"ET Chg", EField::ExtendedChange, EInputKind::Number},
    {"ET Diff", EField::ExtendedDifference, EInputKind::Number},
    {"ET Last", EField::ExtendedTrade, EInputKind::Number},
    {"ET Price", EField::ExtendedTrade, EInputKind::Number},
    {"ET Size", EField::ExtendedSize, EInputKind::Integer},
    {"ET Time", EField::ExtendedTime, EInputKind::Time},
    {"ET Market Center", EField::ExtendedMarketCenter, EInputKind::Integer},
    {"ET Date", EField::ExtendedDate, EInputKind::Date},
    {"MRT Price", EField::RecentTrade, EInputKind::Number},
    {"MRT Size", EField::RecentSize, EInputKind::Integer},
    {"MRT Time", EField::RecentTime, EInputKind::Time},
    {"MRT Market Center", EField::RecentMarketCenter, EInputKind::Integer},
    {"MRT Date", EField::RecentDate, EInputKind::Date},
    {"MRT Conditions", EField::RecentConditions, EInputKind::Hex},
    {"A Size", EField::AskSize, EInputKind::Integer},
    {"B Size", EField::BidSize, EInputKind::Integer},
    {"Volume", EField::TotalVolume, EInputKind::Integer},
    {"% Chg", EField::PercentChange, EInputKind::Percent},
    {"Tick Trend", EField::Tick, EInputKind::Tick},
    {"7day Yield", EField::SevenDayYield, EInputKind::Number},
    {"NAV", EField::NetAssetValue, EInputKind::Integer},
    {"Restricted", EField::RestrictedCode, EInputKind::Text},
    {"Avg Mat", EField::AverageMaturity, EInputKind::Integer},
    {"Tot Assets", EField::NetAssetValue, EInputKind::Integer},
    {"Open Int", EField::OpenInterest, EInputKind::Integer},
    {"Type", EField::MessageContents, EInputKind::Contents},
    {"% OffAvgVol", EField::PercentOffAverageVolume, EInputKind::Percent},
    {"Bid Chg", EField::BidChange, EInputKind::Number},
    {"Ask Chg", EField::AskChange, EInputKind::Number},
    {"ChgFrmOpn", EField::ChangeFromOpen, EInputKind::Number},
    {"Mkt Cap", EField::MarketCapitalization, EInputKind::Integer},
    {"Days to Exp", EField::DaysToExpiration, EInputKind::Integer},
    {"Prev Vol", EField::PreviousDayVolume, EInputKind::Integer},
    {"Trades Today", EField::TradesToday, EInputKind::Integer},
    {"Tick ID", EField::TickId, EInputKind::Integer},
    {"FSI", EField::FinancialStatusIndicator, EInputKind::Text},
    {"Trade Aggressor", EField::RecentAggressor, EInputKind::Integer},
});

struct SFundamental {
    std::string_view name;
    EInputKind kind;
};

// The fields of a fundamental line behind the symbol, in its order, by the names of their columns.
constexpr auto kFundamentals = std::to_array<SFundamental>({
    {"Exchange", EInputKind::Text},
    {"Name", EInputKind::Text},
    {"Option Symbols", EInputKind::Text},
    {"52wk High", EInputKind::Number},
    {"52wk Low", EInputKind::Number},
    {"5yr Growth %", EInputKind::Number},
    {"Beta", EInputKind::Number},
    {"Cal High", EInputKind::Number},
    {"Cal Low", EInputKind::Number},
    {"EPS", EInputKind::Number},
    {"Div Amt", EInputKind::Number},
    {"Div Rate", EInputKind::Number},
    {"Div Yield", EInputKind::Number},
    {"Est EPS", EInputKind::Number},
    {"P/E", EInputKind::Number},
    {"% Held", EInputKind::Number},
    {"Avg Vol", EInputKind::Integer},
    {"Shares Out", EInputKind::Integer},
    {"Assets", EInputKind::Number},
    {"Liabilities", EInputKind::Number},
    {"Fisc Yr End", EInputKind::Text},
    {"LT Debt", EInputKind::Integer},
    {"Split1 Ratio", EInputKind::Split},
    {"Split2 Ratio", EInputKind::Split},
    {"Bal Date", EInputKind::Date},
    {"Ex Div Date", EInputKind::MonthDay},
    {"Div Pay Date", EInputKind::Date},
    {"SIC", EInputKind::Integer},
    {"Hist Vol", EInputKind::Number},
    {"52wk High Date", EInputKind::Date},
    {"52wk Low Date", EInputKind::Date},
    {"Cal High Date", EInputKind::Date},
    {"Cal Low Date", EInputKind::Date},
    {"Listed Market", EInputKind::Integer},
    {"Security Type", EInputKind::Integer},
    {"Listed Market Name", EInputKind::Text},
    {"Security Type Name", EInputKind::Text},
    {"NAICS", EInputKind::Integer},
    {"Year End Close", EInputKind::Number},
    {"Maturity Date", EInputKind::Date},
    {"Coupon Rate", EInputKind::Number},
    {"Expiration Date", EInputKind::Date},
    {"Strike Price", EInputKind::Number},
    {"Exchange Root", EInputKind::Text},
    {"Options Premium Multipliers", EInputKind::Number},
    {"Options Multiple Deliverables", EInputKind::Integer},
    {"Session Open Time", EInputKind::Time},
    {"Sesson Close Time", EInputKind::Time},
    {"Base Currency", EInputKind::Text},
    {"Contract Size", EInputKind::Text},
    {"Contract Months", EInputKind::Text},
    {"Minimum Tick Size", EInputKind::Text},
    {"First Delivery Date", EInputKind::Text},
    {"FIGI", EInputKind::Text},
    {"Security SubType", EInputKind::Integer},
    {"Security SubType Name", EInputKind::Text},
});
static_assert(kFundamentals.size() + 1 == kFundamentalSlots);

using NameMap = std::unordered_map<std::string, SInputField>;

NameMap BuildNames() {
    NameMap out;
    for (size_t i = 0; i < kFieldCount; ++i) {
        const auto field = static_cast<EField>(i);
        const EInputKind kind = field == EField::Tick ? EInputKind::Tick : KindOf(kFields[i].shape);
        out.emplace(LowerAscii(kFields[i].name), SInputField{kFields[i].name, i, kind});
    }
    for (const SColumn& column : kColumns)
        out.emplace(LowerAscii(column.name), SInputField{column.name, static_cast<size_t>(column.field), column.kind});
    for (size_t i = 0; i < kFundamentals.size(); ++i)
        out.emplace(LowerAscii(kFundamentals[i].name),
                    SInputField{kFundamentals[i].name, kFieldCount + i + 1, kFundamentals[i].kind});
    return out;
}

} // namespace

const SInputField* FindInputField(std::string_view name) {
    static const NameMap names = BuildNames();
    const auto found = names.find(LowerAscii(TrimBlanks(name)));
    return found == names.end() ? nullptr : &found->second;
}

} // namespace vx::sim
