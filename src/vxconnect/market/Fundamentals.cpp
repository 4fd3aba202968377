// SPDX-License-Identifier: MIT
#include "vxconnect/market/Fundamentals.h"

#include "vxconnect/common/CodeTables.h"
#include "vxconnect/market/Tickers.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace vx::sim {

namespace {

std::string DateText(PackedDate date) { return fmt::format("{}/{}/{}", date / 100 % 100, date % 100, date / 10000); }

std::string SplitText(double ratio, PackedDate date) { return fmt::format("{:.2f} {}", ratio, DateText(date)); }

// Fills the fields of a line. Every figure that is not the market's comes from the symbol's own seed, so that it is
// the same each time it is sent; the draws therefore happen for every symbol, whether or not they are used.
class CFundamentalWriter {
public:
    CFundamentalWriter(CMarket& market, CMarket::Index index)
        : m_listing(market.Listing(index)), m_now(market.At(index)), m_hasOptions(market.HasOptions(m_listing)),
          m_start(market.StartDate()),
          m_random(SymbolSeed(~market.Seed(), m_terms.prompt.empty() ? m_listing.symbol : m_terms.prompt)) {}

    std::string Line() {
        Text(0, m_listing.symbol);
        Text(FundamentalSlot("Exchange"), "SIM");
        Text(FundamentalSlot("Name"), m_listing.name);
        if (m_hasOptions) Text(FundamentalSlot("Option Symbols"), m_listing.symbol);
        Extremes();
        if (m_terms.HasCompanyFacts()) {
            Earnings();
            Balance();
        } else {
            Whole(FundamentalSlot("Avg Vol"), m_ticker.volumeMillions * 1e6);
        }
        Dates();
        Codes();
        Contract();
        return fmt::format("F,{},\r\n", fmt::join(m_fields, ","));
    }

private:
    void Text(size_t slot, std::string_view text) { m_fields[slot] = text; }
    void Number(size_t slot, double value, int places = 2) { m_fields[slot] = fmt::format("{:.{}f}", value, places); }
    void Whole(size_t slot, double value) { Number(slot, value, 0); }
    void Price(size_t slot, double value) { Number(slot, value, m_now.Decimals()); }
    void Day(size_t slot, PackedDate date) { Text(slot, DateText(date)); }
    double Last() const { return static_cast<double>(m_now.Value(EField::Last)) / kPriceUnit; }
    PackedDate DaysAgo(uint32_t least, uint32_t most) {
        return SessionDateUpTo(AddDays(m_start, -static_cast<int>(least + m_random.Below(most - least))));
    }

    void Extremes() {
        const SExtremes &year = m_now.YearExtremes(), &calendar = m_now.CalendarExtremes();
        const auto price = [](int64_t value) { return static_cast<double>(value) / kPriceUnit; };
        Price(FundamentalSlot("52wk High"), price(year.high));
        Price(FundamentalSlot("52wk Low"), price(year.low));
        Price(FundamentalSlot("Cal High"), price(calendar.high));
        Price(FundamentalSlot("Cal Low"), price(calendar.low));
        Day(FundamentalSlot("52wk High Date"), year.highDate);
        Day(FundamentalSlot("52wk Low Date"), year.lowDate);
        Day(FundamentalSlot("Cal High Date"), calendar.highDate);
        Day(FundamentalSlot("Cal Low Date"), calendar.lowDate);
    }

    void Earnings() {
        const double growth = m_random.Between(-8, 28);
        const double dividend = m_ticker.dividend, earnings = m_ticker.earnings;
        if (!m_fund) Number(FundamentalSlot("5yr Growth %"), growth);
        Number(FundamentalSlot("Beta"), std::max(0.05, m_sector.beta + 0.25 * m_random.Normal()));
        if (earnings != 0) Number(FundamentalSlot("EPS"), earnings);
        if (earnings > 0) Number(FundamentalSlot("P/E"), Last() / earnings);
        if (!m_fund && earnings != 0) Number(FundamentalSlot("Est EPS"), earnings + std::abs(earnings) * growth / 100);
        if (dividend <= 0) return;
        Number(FundamentalSlot("Div Amt"), dividend / 4, 4);
        Number(FundamentalSlot("Div Rate"), dividend, 4);
        Number(FundamentalSlot("Div Yield"), dividend / Last() * 100);
    }

    void Balance() {
        const double held = m_random.Between(35, 92);
        const double assets = m_ticker.sharesMillions * m_ticker.price * m_random.Between(0.2, 0.9);
        const double liabilities = assets * m_random.Between(0.1, 0.5);
        const double debt = assets * m_random.Between(0.02, 0.4);
        constexpr std::array<std::string_view, 6> kYearEnds = {"December",  "December", "December",
                                                               "September", "June",     "January"};
        Text(FundamentalSlot("Fisc Yr End"), kYearEnds[m_random.Below(kYearEnds.size())]);
        Number(FundamentalSlot("% Held"), held);
        if (!m_terms.IsPricedDaily()) {
            Whole(FundamentalSlot("Avg Vol"), m_ticker.volumeMillions * 1e6);
            Whole(FundamentalSlot("Shares Out"), m_ticker.sharesMillions * 1000);
        }
        if (m_fund) return;
        Number(FundamentalSlot("Assets"), assets);
        Number(FundamentalSlot("Liabilities"), liabilities);
        Whole(FundamentalSlot("LT Debt"), debt);
    }

    void Dates() {
        constexpr std::array<double, 3> kRatios = {0.50, 0.33, 0.25};
        const bool split = m_random.Below(3) == 0;
        const bool splitTwice = m_random.Below(3) == 0 && split;
        const PackedDate lastDay = DaysAgo(400, 3000), firstDay = DaysAgo(3100, 7000);
        const double lastRatio = kRatios[m_random.Below(kRatios.size())];
        const double firstRatio = kRatios[m_random.Below(kRatios.size())];
        const PackedDate exDividend = DaysAgo(5, 85);
        const double year = std::sqrt(252.0) * 100; // From a day's deviation to a year's, in percent.
        if (!m_terms.HasCompanyFacts() || m_terms.IsPricedDaily()) {
            // An option tells the volatility of its share.
            const bool own = m_terms.dayDeviation > 0 && m_terms.kind != EKind::Option;
            const double dayDeviation = own ? m_terms.dayDeviation : m_sector.dayDeviation;
            if (m_terms.kind != EKind::MoneyFund) Number(FundamentalSlot("Hist Vol"), dayDeviation * year);
            return;
        }
        if (split) Text(FundamentalSlot("Split1 Ratio"), SplitText(lastRatio, lastDay));
        if (splitTwice) Text(FundamentalSlot("Split2 Ratio"), SplitText(firstRatio, firstDay));
        if (!m_fund) Day(FundamentalSlot("Bal Date"), (m_start / 10000 - 1) * 10000 + 1231);
        if (m_ticker.dividend > 0) {
            Text(FundamentalSlot("Ex Div Date"), fmt::format("{}/{}", exDividend / 100 % 100, exDividend % 100));
            Day(FundamentalSlot("Div Pay Date"), SessionDateUpTo(AddDays(exDividend, 18)));
        }
        Whole(FundamentalSlot("SIC"), m_sector.sic);
        Number(FundamentalSlot("Hist Vol"), m_sector.dayDeviation * year * m_random.Between(0.85, 1.2));
    }

    // The names of market and type are left out: the client knows them from its tables.
    void Codes() {
        Whole(FundamentalSlot("Listed Market"), ListedMarketOf(m_terms, m_listing.symbol));
        Whole(FundamentalSlot("Security Type"), SecurityTypeOf(m_terms));
        if (SubTypeOf(m_terms) != 0) Whole(FundamentalSlot("Security SubType"), SubTypeOf(m_terms));
        if (!m_terms.HasCompanyFacts()) return;
        Whole(FundamentalSlot("NAICS"), m_sector.naics);
        if (!m_fund) Price(FundamentalSlot("Year End Close"), m_ticker.price * m_random.Between(0.95, 1.04));
    }

    void Contract() {
        if (m_terms.IsContract()) Day(FundamentalSlot("Expiration Date"), m_terms.expiration);
        if (m_terms.kind == EKind::Option) {
            Number(FundamentalSlot("Strike Price"), m_terms.strike);
            Number(FundamentalSlot("Options Premium Multipliers"), m_terms.multiplier);
            Whole(FundamentalSlot("Options Multiple Deliverables"), m_terms.nonStandard ? 1 : 0);
        }
        Text(FundamentalSlot("Exchange Root"), m_terms.root);
        Text(FundamentalSlot("Session Open Time"), "09:30:00");
        Text(FundamentalSlot("Sesson Close Time"), "16:00:00");
        Text(FundamentalSlot("Base Currency"), m_terms.currency);
        Text(FundamentalSlot("Contract Size"), m_terms.contractSize);
        Text(FundamentalSlot("Contract Months"), m_terms.contractMonths);
        Price(FundamentalSlot("Minimum Tick Size"), static_cast<double>(m_now.TickSize()) / kPriceUnit);
        if (m_terms.firstDelivery != 0) Day(FundamentalSlot("First Delivery Date"), m_terms.firstDelivery);
        Text(FundamentalSlot("FIGI"), fmt::format("SIM{:09}", m_random.Below(1'000'000'000)));
    }

    const SListing m_listing;
    const STicker& m_ticker = m_listing.ticker;
    const STerms& m_terms = m_listing.terms;
    const CInstrument& m_now;
    const SSector& m_sector = SectorOf(m_ticker.sector);
    const bool m_fund = m_terms.IsFund();
    const bool m_hasOptions;
    const PackedDate m_start;
    CRandom m_random;
    std::array<std::string, kFundamentalSlotCount> m_fields; // The first one is the symbol.
};

} // namespace

std::string FundamentalLine(CMarket& market, CMarket::Index index) { return CFundamentalWriter(market, index).Line(); }

} // namespace vx::sim
