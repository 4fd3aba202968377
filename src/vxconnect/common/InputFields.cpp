#include "vxconnect/common/InputFields.h"

#include "base/Text.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vx::sim {

namespace {

EInputKind KindOf(EField field) {
    switch (field) {
    case EField::Tick:
        return EInputKind::Tick;
    case EField::TotalVolume:
    case EField::PreviousDayVolume:
    case EField::MarketCapitalization:
    case EField::TickId:
        return EInputKind::Volume;
    case EField::BidSize:
    case EField::AskSize:
    case EField::LastSize:
    case EField::RecentSize:
    case EField::ExtendedSize:
    case EField::OpenInterest:
    case EField::NetAssetValue:
    case EField::AverageMaturity:
    case EField::TradesToday:
        return EInputKind::Size;
    default:
        break;
    }
    switch (kFields[static_cast<size_t>(field)].shape) {
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

// The names of columns whose field has another name, and those that files of prices have. Columns that show the name
// behind an id have none of their own.
constexpr auto kColumns = std::to_array<SColumn>({
    {"Tick Vol", EField::LastSize, EInputKind::Size},
    {"T Time", EField::LastTime, EInputKind::Time},
    {"Trade Time", EField::LastTime, EInputKind::Time},
    {"Trade Date", EField::LastDate, EInputKind::Date},
    {"Trade Market Center", EField::LastMarketCenter, EInputKind::Integer},
    {"LQT Price", EField::Last, EInputKind::Number},
    {"LQT Size", EField::LastSize, EInputKind::Size},
    {"LQT Time", EField::LastTime, EInputKind::Time},
    {"LQT Market Center", EField::LastMarketCenter, EInputKind::Integer},
    {"LQT Date", EField::LastDate, EInputKind::Date},
    {"ET Chg", EField::ExtendedChange, EInputKind::Number},
    {"ET Diff", EField::ExtendedDifference, EInputKind::Number},
    {"ET Last", EField::ExtendedTrade, EInputKind::Number},
    {"ET Price", EField::ExtendedTrade, EInputKind::Number},
    {"ET Size", EField::ExtendedSize, EInputKind::Size},
    {"ET Time", EField::ExtendedTime, EInputKind::Time},
    {"ET Market Center", EField::ExtendedMarketCenter, EInputKind::Integer},
    {"ET Date", EField::ExtendedDate, EInputKind::Date},
    {"MRT Price", EField::RecentTrade, EInputKind::Number},
    {"MRT Size", EField::RecentSize, EInputKind::Size},
    {"MRT Time", EField::RecentTime, EInputKind::Time},
    {"MRT Market Center", EField::RecentMarketCenter, EInputKind::Integer},
    {"MRT Date", EField::RecentDate, EInputKind::Date},
    {"MRT Conditions", EField::RecentConditions, EInputKind::Hex},
    {"A Size", EField::AskSize, EInputKind::Size},
    {"B Size", EField::BidSize, EInputKind::Size},
    {"Volume", EField::TotalVolume, EInputKind::Volume},
    {"% Chg", EField::PercentChange, EInputKind::Percent},
    {"Tick Trend", EField::Tick, EInputKind::Tick},
    {"7day Yield", EField::SevenDayYield, EInputKind::Number},
    {"NAV", EField::NetAssetValue, EInputKind::Size},
    {"Restricted", EField::RestrictedCode, EInputKind::Text},
    {"Avg Mat", EField::AverageMaturity, EInputKind::Size},
    {"Tot Assets", EField::NetAssetValue, EInputKind::Size},
    {"Open Int", EField::OpenInterest, EInputKind::Size},
    {"Type", EField::MessageContents, EInputKind::Contents},
    {"% OffAvgVol", EField::PercentOffAverageVolume, EInputKind::Percent},
    {"Bid Chg", EField::BidChange, EInputKind::Number},
    {"Ask Chg", EField::AskChange, EInputKind::Number},
    {"ChgFrmOpn", EField::ChangeFromOpen, EInputKind::Number},
    {"Mkt Cap", EField::MarketCapitalization, EInputKind::Volume},
    {"Days to Exp", EField::DaysToExpiration, EInputKind::Integer},
    {"Prev Vol", EField::PreviousDayVolume, EInputKind::Volume},
    {"Trades Today", EField::TradesToday, EInputKind::Size},
    {"Tick ID", EField::TickId, EInputKind::Volume},
    {"FSI", EField::FinancialStatusIndicator, EInputKind::Text},
    {"Trade Aggressor", EField::RecentAggressor, EInputKind::Integer},
    {"Ticker", EField::Symbol, EInputKind::Symbol},
    {"Date", EField::LastDate, EInputKind::Date},
    {"Time", EField::LastTime, EInputKind::Time},
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
    {"Avg Vol", EInputKind::Size},
    {"Shares Out", EInputKind::Size},
    {"Assets", EInputKind::Number},
    {"Liabilities", EInputKind::Number},
    {"Fisc Yr End", EInputKind::Text},
    {"LT Debt", EInputKind::Size},
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
        out.emplace(PlainName(kFields[i].name), SInputField{kFields[i].name, i, KindOf(field)});
    }
    for (const SColumn& column : kColumns)
        out.emplace(PlainName(column.name), SInputField{column.name, static_cast<size_t>(column.field), column.kind});
    for (size_t i = 0; i < kFundamentals.size(); ++i)
        out.emplace(PlainName(kFundamentals[i].name),
                    SInputField{kFundamentals[i].name, kFieldCount + i + 1, kFundamentals[i].kind});
    return out;
}

const NameMap& Names() {
    static const NameMap names = BuildNames();
    return names;
}

// How many letters have to be put in, taken out or changed to make one text of the other.
size_t Distance(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < b.size(); ++j)
            diagonal = std::exchange(row[j + 1], std::min({row[j + 1] + 1, row[j] + 1, diagonal + (a[i] != b[j])}));
    }
    return row.back();
}

// Smaller is nearer. One name within the other counts for more than a few letters in common.
size_t Farness(std::string_view a, std::string_view b) {
    const bool within = !a.empty() && (ContainsText(a, b) || ContainsText(b, a));
    return Distance(a, b) * (within ? 1 : 3);
}

} // namespace

std::string PlainName(std::string_view name) {
    std::string out = LowerAscii(name);
    std::erase_if(out, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x80 && !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9') && c != '%';
    });
    return out;
}

const SInputField* FindInputField(std::string_view name) {
    const auto found = Names().find(PlainName(name));
    return found == Names().end() ? nullptr : &found->second;
}

std::string NearestFields(std::string_view name) {
    constexpr size_t kMostLooked = 60, kMost = 3;
    const std::string plain = PlainName(name.substr(0, kMostLooked));
    std::vector<std::pair<size_t, std::string_view>> fields;
    for (const auto& [own, field] : Names()) fields.emplace_back(Farness(plain, own), field.name);
    std::partial_sort(fields.begin(), fields.begin() + kMost, fields.end());
    std::string out;
    for (size_t i = 0; i < kMost; ++i) out += fmt::format("{}\"{}\"", i > 0 ? ", " : "", fields[i].second);
    return out;
}

std::string CFieldNames::Add(std::string_view map) {
    for (const std::string_view pair : SplitCountingTail(map, ',')) {
        const size_t equals = pair.find('=');
        const std::string name = PlainName(pair.substr(0, equals));
        if (equals == std::string_view::npos || name.empty())
            return fmt::format("\"{}\" is not NAME=FIELD, such as Close=Last", Shown(pair));
        const std::string_view wanted = TrimBlanks(pair.substr(equals + 1));
        const SInputField* const field = FindInputField(wanted);
        if (!field && !wanted.empty())
            return fmt::format("\"{}\" is not a field; the nearest are {}", Shown(wanted), NearestFields(wanted));
        m_fields[name] = field;
    }
    return {};
}

CFieldNames::SFound CFieldNames::Find(std::string_view name) const {
    const auto found = m_fields.find(PlainName(name));
    if (found != m_fields.end()) return {found->second, found->second == nullptr};
    return {FindInputField(name), false};
}

} // namespace vx::sim
