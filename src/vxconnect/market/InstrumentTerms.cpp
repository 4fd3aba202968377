// What options, futures, funds and delayed symbols have beside the quotes and trades of a share.

#include "vxconnect/common/CodeTables.h"
#include "vxconnect/common/SendQueue.h"
#include "vxconnect/market/Instrument.h"
#include "vxconnect/market/QuoteLine.h"

#include <algorithm>

namespace vx::sim {

// The market knows a symbol in one spelling only: it is its own.
void CInstrument::AppendQuote(CSendQueue& out, char letter, std::string_view, const CFieldMask& fields,
                              uint32_t contents, const CFieldSelection& selection) const {
    out.Commit(WriteQuoteLine(out.Reserve(kMaxQuoteLine), letter, *this, fields, contents, selection));
}

void CInstrument::AppendRegion(CSendQueue& out, std::string_view, size_t region) const {
    out.Commit(WriteRegionLine(out.Reserve(kMaxRegionLine), *this, region));
}

CRegionalQuotes::SSide CInstrument::SideOf(bool bid) const {
    return {Value(bid ? EField::Bid : EField::Ask),
            static_cast<int32_t>(Value(bid ? EField::BidSize : EField::AskSize)),
            static_cast<int32_t>(Value(bid ? EField::BidTime : EField::AskTime))};
}

uint8_t CInstrument::Center() {
    if (!m_terms.HasCompanyFacts()) return ListedMarketOf(m_terms, m_symbol);
    return RandomMarketCenter(m_random);
}

// The values of the day before the first one.
void CInstrument::PutTerms() {
    if (m_terms.HasRegions()) Put(EField::AvailableRegions, 0);
    if (m_terms.IsContract()) {
        Put(EField::OpenInterest, m_terms.openInterest);
        SettleDay(m_base);
    }
    if (m_terms.kind != EKind::MoneyFund) return;
    constexpr int64_t kLeastAssets = 800, kAssetsSpan = 90'000; // Millions of dollars.
    Put(EField::NetAssetValue, kLeastAssets + m_random.Below(kAssetsSpan));
    Put(EField::SevenDayYield, 480 + m_random.Below(60)); // Hundredths of a percent.
    Put(EField::AverageMaturity, 20 + m_random.Below(35));
}

// The day's settlement; the day shown is the one that ended.
void CInstrument::SettleDay(int64_t price) {
    const PackedDate ended = PreviousSessionDate(m_date);
    Put(EField::DaysToExpiration, std::max(0, DaysBetween(m_date, m_terms.expiration)));
    Put(EField::Settle, price);
    Put(EField::SettlementDate, ended);
    m_contents |= kContentsSettlement;
    const auto change = static_cast<int64_t>(m_random.Between(-0.02, 0.02) * static_cast<double>(m_terms.openInterest));
    Put(EField::OpenInterest, std::max<int64_t>(0, Value(EField::OpenInterest) + change));
    if (m_terms.kind != EKind::Future) return;
    Put(EField::CloseRange1, price - m_tickSize);
    Put(EField::CloseRange2, price + m_tickSize);
}

// A fund's price of the day.
void CInstrument::PriceFund(int64_t price) {
    if (m_terms.kind == EKind::MoneyFund) {
        price = m_base; // It is meant to stay at one dollar.
        Put(EField::SevenDayYield, Value(EField::SevenDayYield) + m_random.Below(5) - 2);
        Put(EField::NetAssetValue, Value(EField::NetAssetValue) * (995 + m_random.Below(11)) / 1000);
    } else {
        Put(EField::NetAssetValue, (price + kPriceUnit / 2) / kPriceUnit);
    }
    Put(EField::Last, price);
    Put(EField::LastDate, m_date);
    Put(EField::LastTime, Seconds());
    Put(EField::Change, price - Value(EField::Close));
    Put(EField::PercentChange, (price - Value(EField::Close)) * 1'000'000 / Value(EField::Close));
    m_newExtreme |= m_calendarExtremes.Include(price, m_date);
    m_newExtreme |= m_yearExtremes.Include(price, m_date);
    m_contents |= kContentsTrade;
}

} // namespace vx::sim
