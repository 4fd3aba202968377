#include "vxconnect/common/UpdateFields.h"

#include "base/Text.h"

namespace vx::sim {

const std::array<SFieldInfo, kFieldCount> kFields = {{
    {"Symbol", EShape::Symbol},
    {"Exchange ID", EShape::Hex},
    {"Change", EShape::Price},
    {"Percent Change", EShape::Fraction},
    {"Total Volume", EShape::Integer},
    {"High", EShape::Price},
    {"Low", EShape::Price},
    {"Bid", EShape::Price},
    {"Ask", EShape::Price},
    {"Bid Size", EShape::Integer},
    {"Ask Size", EShape::Integer},
    {"Tick", EShape::Integer},
    {"Range", EShape::Price},
    {"Open Interest", EShape::Integer},
    {"Open", EShape::Price},
    {"Close", EShape::Price},
    {"Spread", EShape::Price},
    {"Settle", EShape::Price},
    {"Delay", EShape::Integer},
    {"Restricted Code", EShape::Letter},
    {"Net Asset Value", EShape::Integer},
    {"Average Maturity", EShape::Integer},
    {"Price-Earnings Ratio", EShape::Hundredths},
    {"7 Day Yield", EShape::Hundredths},
    {"Percent Off Average Volume", EShape::Fraction},
    {"Bid Change", EShape::Price},
    {"Ask Change", EShape::Price},
    {"Change From Open", EShape::Price},
    {"Market Open", EShape::Integer},
    {"Volatility", EShape::Fraction},
    {"Market Capitalization", EShape::Integer},
    {"Fraction Display Code", EShape::Integer},
    {"Decimal Precision", EShape::Integer},
    {"Days to Expiration", EShape::Integer},
    {"Previous Day Volume", EShape::Integer},
    {"Open Range 1", EShape::Price},
    {"Close Range 1", EShape::Price},
    {"Open Range 2", EShape::Price},
    {"Close Range 2", EShape::Price},
    {"Number of Trades Today", EShape::Integer},
    {"Bid Time", EShape::Time},
    {"Ask Time", EShape::Time},
    {"VWAP", EShape::FinePrice},
    {"TickID", EShape::Integer},
    {"Financial Status Indicator", EShape::Letter},
    {"Settlement Date", EShape::Date},
    {"Bid Market Center", EShape::Integer},
    {"Ask Market Center", EShape::Integer},
    {"Available Regions", EShape::Regions},
    {"Message Contents", EShape::Contents},
    {"Most Recent Trade Conditions", EShape::HexPair},
    {"Most Recent Trade", EShape::Price},
    {"Most Recent Trade Size", EShape::Integer},
    {"Most Recent Trade Time", EShape::Time},
    {"Most Recent Trade Market Center", EShape::Integer},
    {"Most Recent Trade Date", EShape::Date},
    {"Extended Trade", EShape::Price},
    {"Extended Trade Size", EShape::Integer},
    {"Extended Trade Time", EShape::Time},
    {"Extended Trade Market Center", EShape::Integer},
    {"Extended Trade Date", EShape::Date},
    {"Extended Trading Change", EShape::Price},
    {"Extended Trading Difference", EShape::Price},
    {"Last", EShape::Price},
    {"Last Size", EShape::Integer},
    {"Last Time", EShape::Time},
    {"Last Market Center", EShape::Integer},
    {"Last Date", EShape::Date},
    {"Most Recent Trade Aggressor", EShape::Integer},
}};

static_assert(static_cast<size_t>(EField::RecentAggressor) + 1 == kFieldCount);

int FindField(std::string_view name) {
    for (size_t i = 0; i < kFields.size(); ++i)
        if (kFields[i].name == name) return static_cast<int>(i);
    return -1;
}

CFieldSelection::CFieldSelection() : m_standard(true) {
    for (size_t i = 0; i < kFieldCount; ++i) {
        m_order.push_back(static_cast<int16_t>(i));
        m_mask.Set(static_cast<EField>(i));
    }
}

CFieldSelection::CFieldSelection(std::string_view names) {
    for (const std::string_view name : SplitCountingTail(names, ',')) {
        if (m_order.size() == kMaxSelected) break;
        const int field = FindField(TrimBlanks(name));
        m_order.push_back(static_cast<int16_t>(field));
        if (field >= 0) m_mask.Set(static_cast<EField>(field));
    }
    m_standard = *this == CFieldSelection();
}

} // namespace vx::sim
