// SPDX-License-Identifier: MIT
#include "vxconnect/market/Instrument.h"

#include "vxconnect/common/CodeTables.h"
#include "vxconnect/common/SendQueue.h"
#include "vxconnect/market/QuoteLine.h"
#include "vxconnect/market/Tickers.h"

#include <algorithm>
#include <cmath>

namespace vx::sim {

namespace {

constexpr int kBusyPaceMs = 250;
constexpr int kQuietPaceMs = 650;
constexpr double kBusyMillions = 25; // Shares a day.
constexpr double kTradesPerEvent = 0.37;
constexpr int kWarmUpEvents = 60;
constexpr int kSettlingEvents = 20; // At the usual pace, so that quote and last trade belong together.
constexpr int64_t kShareLot = 100;
constexpr int64_t kCurrencyLot = 1000;
constexpr int64_t kFraction = 1'000'000;

// How much more the price moves in each half hour of the session than on average.
constexpr std::array<double, 13> kHalfHours = {1.8, 1.3, 1.1, 0.9, 0.8, 0.75, 0.7, 0.7, 0.75, 0.85, 0.95, 1.1, 1.4};

int64_t Rounded(double value) { return static_cast<int64_t>(std::llround(value)); }

int64_t Ratio(int64_t numerator, int64_t denominator, int64_t unit) {
    if (denominator == 0) return 0;
    return Rounded(static_cast<double>(numerator) * static_cast<double>(unit) / static_cast<double>(denominator));
}

// As many places as the smallest step needs, at least those of a cent.
int DecimalsOf(int64_t tickSize) {
    int places = 2;
    for (int64_t unit = kPriceUnit / 100; tickSize % unit != 0; unit /= 10) ++places;
    return places;
}

} // namespace

CInstrument::CInstrument(std::string symbol, const STicker& ticker, STerms terms, uint64_t seed, PackedDate date)
    : m_random(SymbolSeed(seed, symbol)), m_date(date), m_terms(std::move(terms)),
      m_delayMs(MarketMs{m_terms.delayMinutes} * 60'000), m_symbol(std::move(symbol)) {
    const double dayDeviation = m_terms.dayDeviation > 0 ? m_terms.dayDeviation : SectorOf(ticker.sector).dayDeviation;
    const double tick = m_terms.tick > 0 ? m_terms.tick : ticker.price >= 1 ? 0.01 : 0.0001;
    m_tickSize = Rounded(tick * kPriceUnit);
    m_decimals = DecimalsOf(m_tickSize);
    m_lot = m_terms.IsContract() ? 1 : m_terms.kind == EKind::Currency ? kCurrencyLot : kShareLot;
    m_base = OnGrid(ticker.price * kPriceUnit);
    m_sharesThousands = Rounded(ticker.sharesMillions * 1000);
    m_averageVolume = Rounded(ticker.volumeMillions * 1e6);
    m_earnings = Rounded(ticker.earnings * kPriceUnit);
    const double busy = std::min(1.0, ticker.volumeMillions / kBusyMillions);
    m_paceMs = kQuietPaceMs - static_cast<int>(busy * (kQuietPaceMs - kBusyPaceMs));
    m_eventsPerSession = static_cast<double>(kSessionMs) / m_paceMs;
    m_eventDeviation = dayDeviation / std::sqrt(m_eventsPerSession);
    m_meanTradeSize = std::max(1.0, static_cast<double>(m_averageVolume) / (m_eventsPerSession * kTradesPerEvent));
    const double priceTicks = static_cast<double>(m_base) / static_cast<double>(m_tickSize);
    m_spreadTicks = std::max(1.0, priceTicks * (ticker.volumeMillions > 10 ? 0.00008 : 0.0003));

    Put(EField::Symbol, 0);
    Put(EField::ExchangeId, ListedMarketOf(m_terms, m_symbol));
    Put(EField::Close, m_base);
    Put(EField::Delay, m_terms.delayMinutes);
    Put(EField::RestrictedCode, IsRestricted(m_terms, ticker.price) ? 'R' : 'N');
    Put(EField::FinancialStatusIndicator, 'N');
    Put(EField::MarketOpen, 1);
    Put(EField::FractionDisplayCode, 14);
    Put(EField::DecimalPrecision, Decimals());
    PutTerms();
    CRandom past(SymbolSeed(seed + 1, m_terms.prompt.empty() ? m_symbol : m_terms.prompt));
    if (!m_terms.IsPricedDaily())
        Put(EField::PreviousDayVolume, Rounded(static_cast<double>(m_averageVolume) * past.Between(0.7, 1.3)));
    MakePast(past);
    StartSession(OnGrid(static_cast<double>(m_base) * (1 + dayDeviation * 0.4 * m_random.Normal())));
    MakeFirstHalfHour();
    PlanNext();
}

void CInstrument::MakeFirstHalfHour() {
    const MarketMs pace = (-kFirstSessionBegin - m_delayMs) / (kWarmUpEvents + 2);
    // Each event counts for as many as its time would have held.
    for (int i = 0; i < kWarmUpEvents; ++i, m_now += pace) Step(static_cast<int>(pace) / m_paceMs);
    for (m_now = -m_delayMs - kSettlingEvents * m_paceMs; m_now < -m_delayMs; m_now += m_paceMs) Step(1);
    m_now = -m_delayMs;
    m_regions.TakeChanged();
}

// The year before the simulation: its extremes lie around the price it starts from.
void CInstrument::MakePast(CRandom& past) {
    if (m_terms.kind == EKind::MoneyFund) {
        m_calendarExtremes = m_yearExtremes = {m_base, m_base, m_date, m_date};
        return;
    }
    const double base = static_cast<double>(m_base);
    const auto day = [&](uint32_t least, uint32_t most) {
        return SessionDateUpTo(AddDays(m_date, -static_cast<int>(least + past.Below(most - least))));
    };
    const auto dayOfThisYear = [&] {
        const PackedDate date = day(1, 29);
        return date / 10000 == m_date / 10000 ? date : m_date;
    };
    m_calendarExtremes = {OnGrid(base * past.Between(1.005, 1.06)), OnGrid(base * past.Between(0.94, 0.995)),
                          dayOfThisYear(), dayOfThisYear()};
    m_yearExtremes = {OnGrid(static_cast<double>(m_calendarExtremes.high) * past.Between(1.0, 1.35)),
                      OnGrid(static_cast<double>(m_calendarExtremes.low) * past.Between(0.62, 1.0)), day(32, 364),
                      day(32, 364)};
}

SUpdate CInstrument::Tick() {
    m_changed = {};
    m_contents = 0;
    m_newExtreme = false;
    SUpdate out;
    m_now = m_next;
    if (m_now >= m_sessionBegin + kSessionMs) {
        EndSession();
        out.newSession = true;
    } else {
        Step(1);
    }
    PlanNext();
    Announce(EField::MessageContents, m_contents);
    out.changed = m_changed;
    out.newFundamentals = m_newExtreme;
    out.regions = m_regions.TakeChanged();
    return out;
}

void CInstrument::Put(EField field, int64_t value) {
    int64_t& stored = m_values[static_cast<size_t>(field)];
    if (stored == value && m_present.Has(field)) return;
    Announce(field, value);
}

void CInstrument::Announce(EField field, int64_t value) {
    m_values[static_cast<size_t>(field)] = value;
    m_present.Set(field);
    m_changed.Set(field);
}

int64_t CInstrument::OnGrid(double price) const {
    const double ticks = price / static_cast<double>(m_tickSize);
    return std::max<int64_t>(10, Rounded(ticks)) * m_tickSize;
}

void CInstrument::PlanNext() {
    m_next = m_now + 1 + m_random.Below(static_cast<uint32_t>(2 * m_paceMs - 1));
    const MarketMs nextSession = m_sessionBegin + kSessionMs;
    if (m_next >= nextSession) m_next = nextSession + m_random.Below(1000);
}

void CInstrument::SkipTo(MarketMs now) {
    while (now >= m_sessionBegin + kSessionMs) {
        m_now = m_sessionBegin + kSessionMs;
        EndSession();
    }
    m_now = std::max(m_now, now);
    PlanNext();
}

void CInstrument::Step(int weight) {
    if (m_terms.IsPricedDaily()) return;
    MoveMid(weight);
    if (m_random.Unit() < 1 - kTradesPerEvent) {
        Quote();
    } else {
        Trade(weight);
    }
}

void CInstrument::MoveMid(int weight) {
    constexpr double kFloor = 0.02, kShock = 0.05, kMemory = 0.93; // Together 1: the variance keeps its mean.
    const double pull = 2 / m_eventsPerSession;
    const double shock = m_random.Normal();
    const int64_t halfHour = std::clamp<int64_t>((Seconds() - kSessionOpen) / 1800, 0, kHalfHours.size() - 1);
    const double deviation = m_eventDeviation * kHalfHours[static_cast<size_t>(halfHour)] *
                             std::sqrt(m_variance * static_cast<double>(weight));
    m_mid += m_mid * deviation * shock + (m_anchor - m_mid) * pull * weight;
    m_mid = std::clamp(m_mid, m_anchor * 0.5, m_anchor * 1.5);
    m_variance = std::clamp(kFloor + m_variance * (kShock * shock * shock + kMemory), 0.1, 25.0);
}

void CInstrument::StartSession(int64_t open) {
    if (m_terms.IsPricedDaily()) return PriceFund(open);
    m_mid = static_cast<double>(open);
    m_anchor = m_mid * (1 + m_eventDeviation * std::sqrt(m_eventsPerSession) * 0.5 * m_random.Normal());
    m_notional = m_qualifying = 0;
    Put(EField::TotalVolume, 0);
    Put(EField::TradesToday, 0);
    Put(EField::TickId, 0);
    Put(EField::Open, open);
    Put(EField::High, open);
    Put(EField::Low, open);
    m_contents |= kContentsOpen;
    if (m_terms.kind == EKind::Future) {
        Put(EField::OpenRange1, open - m_tickSize);
        Put(EField::OpenRange2, open + m_tickSize);
    }
    Quote();
    if (m_terms.HasRegions()) m_regions.Open(SideOf(true), SideOf(false), m_tickSize);
    LastTrade(open, TradeSize(), 1);
}

void CInstrument::EndSession() {
    const int64_t last = Value(EField::Last);
    const PackedDate newYear = m_date / 10000 * 10000 + 1231;
    m_date = NextSessionDate(m_date);
    m_sessionBegin += kSessionMs;
    if (m_date > newYear) m_calendarExtremes = {last, last, m_date, m_date};
    Put(EField::Close, last);
    if (!m_terms.IsPricedDaily()) Put(EField::PreviousDayVolume, Value(EField::TotalVolume));
    m_contents |= kContentsClose;
    if (m_terms.IsContract()) SettleDay(last);
    const double night = m_eventDeviation * std::sqrt(m_eventsPerSession) * 0.4 * m_random.Normal();
    const double level = static_cast<double>(m_base) + 0.98 * static_cast<double>(last - m_base);
    StartSession(
        OnGrid(std::clamp(level * (1 + night), 0.2 * static_cast<double>(m_base), 5.0 * static_cast<double>(m_base))));
}

void CInstrument::Quote() {
    const double wide = m_spreadTicks * std::sqrt(m_variance) * m_random.Between(0.6, 1.4);
    const int64_t ticks = std::max<int64_t>(1, Rounded(wide));
    const double lower = m_mid - static_cast<double>(ticks * m_tickSize) / 2;
    const int64_t bid = OnGrid(lower);
    const int64_t ask = bid + ticks * m_tickSize;
    const bool bidMoves = bid != Value(EField::Bid), askMoves = ask != Value(EField::Ask);
    const bool sizeOnly = !bidMoves && !askMoves;
    const bool bidSide = m_random.Below(2) == 0;
    if (bidMoves || (sizeOnly && bidSide)) QuoteSide(true, bid, !bidMoves);
    if (askMoves || (sizeOnly && !bidSide)) QuoteSide(false, ask, !askMoves);
    Put(EField::Spread, ask - bid);
    if (!m_terms.HasRegions()) return;
    m_regions.Bid(bidMoves || (sizeOnly && bidSide) ? Value(EField::BidMarketCenter) : -1, SideOf(true), m_tickSize);
    m_regions.Ask(askMoves || (sizeOnly && !bidSide) ? Value(EField::AskMarketCenter) : -1, SideOf(false), m_tickSize);
}

void CInstrument::QuoteSide(bool bid, int64_t price, bool newSize) {
    const EField priceField = bid ? EField::Bid : EField::Ask;
    const EField sizeField = bid ? EField::BidSize : EField::AskSize;
    const int64_t old = Value(priceField);
    if (m_present.Has(priceField) && price != old) Put(bid ? EField::BidChange : EField::AskChange, price - old);
    Put(priceField, price);
    int64_t lots = m_random.Below(8);
    if (m_random.Below(6) == 0) lots *= 10;
    ++lots;
    if (newSize && lots * m_lot == Value(sizeField)) ++lots;
    Put(sizeField, lots * m_lot);
    Put(bid ? EField::BidTime : EField::AskTime, Seconds());
    Put(bid ? EField::BidMarketCenter : EField::AskMarketCenter, Center());
    m_contents |= bid ? kContentsBid : kContentsAsk;
}

int64_t CInstrument::TradeSize() {
    double size = m_meanTradeSize * m_random.Between(0.1, 1.5);
    if (m_random.Below(64) == 0) size *= 12;
    const int64_t shares = std::max<int64_t>(1, Rounded(size));
    const bool oddLot = shares < 100 || m_random.Below(5) == 0;
    return oddLot ? shares : shares / 100 * 100;
}

void CInstrument::Trade(int weight) {
    const int64_t bid = Value(EField::Bid), ask = Value(EField::Ask);
    const uint32_t where = m_random.Below(100);
    const int64_t inside = bid + (ask - bid) / m_tickSize / 2 * m_tickSize;
    const int64_t price = where < 46 ? ask : where < 92 ? bid : inside;
    const int64_t size = TradeSize();
    Put(EField::RecentAggressor, price == ask ? 1 : price == bid ? 2 : 3);
    const uint32_t kind = m_random.Below(100);
    if (kind < 90) {
        LastTrade(price, size, weight);
    } else if (kind < 97) {
        RecentTrade(price, std::min<int64_t>(size, 99), 0x0D);
        AddVolume(std::min<int64_t>(size, 99));
        m_contents |= kContentsOtherTrade | kContentsVolume;
    } else {
        RecentTrade(price, size, 0x1A);
        ExtendedTrade(price, size);
        AddVolume(size);
        Put(EField::ExtendedDifference, price - Value(EField::Last));
        m_contents |= kContentsExtendedTrade | kContentsVolume;
    }
    if (m_random.Below(10) < 4) Quote();
}

void CInstrument::LastTrade(int64_t price, int64_t size, int weight) {
    const int64_t before = Value(EField::Last);
    Announce(EField::Tick, price > before ? kTickUp : price < before ? kTickDown : kTickSame);
    RecentTrade(price, size, 0x01);
    ExtendedTrade(price, size);
    Put(EField::ExtendedDifference, 0);
    Put(EField::Last, price);
    Put(EField::LastSize, size);
    Put(EField::LastTime, Seconds());
    Put(EField::LastMarketCenter, Value(EField::RecentMarketCenter));
    Put(EField::LastDate, m_date);
    if (price > Value(EField::High)) {
        Put(EField::High, price);
        m_contents |= kContentsHigh;
    }
    if (price < Value(EField::Low)) {
        Put(EField::Low, price);
        m_contents |= kContentsLow;
    }
    m_newExtreme |= m_calendarExtremes.Include(price, m_date);
    m_newExtreme |= m_yearExtremes.Include(price, m_date);
    m_notional += price * size * weight;
    m_qualifying += size * weight;
    const int64_t vwapUnit = m_decimals > kFineDecimals ? 1 : kPriceUnit / 10'000; // What its line can hold.
    Put(EField::Vwap, (m_notional / vwapUnit + m_qualifying / 2) / m_qualifying * vwapUnit);
    Put(EField::TradesToday, Value(EField::TradesToday) + weight - 1);
    AddVolume(size * weight);
    Derive();
    m_contents |= kContentsTrade;
}

void CInstrument::RecentTrade(int64_t price, int64_t size, int conditions) {
    Put(EField::RecentTrade, price);
    Put(EField::RecentSize, size);
    Put(EField::RecentTime, Seconds());
    Put(EField::RecentDate, m_date);
    Put(EField::RecentMarketCenter, Center());
    Put(EField::RecentConditions, conditions);
    if (m_terms.HasRegions())
        m_regions.Trade(Value(EField::RecentMarketCenter),
                        {price, static_cast<int32_t>(size), static_cast<int32_t>(Seconds())});
}

void CInstrument::ExtendedTrade(int64_t price, int64_t size) {
    Put(EField::ExtendedTrade, price);
    Put(EField::ExtendedSize, size);
    Put(EField::ExtendedTime, Seconds());
    Put(EField::ExtendedDate, m_date);
    Put(EField::ExtendedMarketCenter, Value(EField::RecentMarketCenter));
    Put(EField::ExtendedChange, price - Value(EField::Close));
}

void CInstrument::AddVolume(int64_t size) {
    Put(EField::TotalVolume, Value(EField::TotalVolume) + size);
    Put(EField::TradesToday, Value(EField::TradesToday) + 1);
    Put(EField::TickId, Value(EField::TickId) + 1);
    Put(EField::PercentOffAverageVolume,
        Ratio(Value(EField::TotalVolume) - m_averageVolume, m_averageVolume, kFraction));
}

void CInstrument::Derive() {
    const int64_t last = Value(EField::Last), close = Value(EField::Close);
    Put(EField::Change, last - close);
    Put(EField::PercentChange, Ratio(last - close, close, kFraction));
    Put(EField::ChangeFromOpen, last - Value(EField::Open));
    Put(EField::Range, Value(EField::High) - Value(EField::Low));
    Put(EField::Volatility, Ratio(Value(EField::Range), last, kFraction));
    if (m_sharesThousands > 0) Put(EField::MarketCapitalization, Ratio(last, kPriceUnit, m_sharesThousands));
    if (m_earnings > 0) Put(EField::PriceEarningsRatio, Ratio(last, m_earnings, 100));
}

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
