#include "vxconnect/market/Fundamentals.h"

#include "vxconnect/common/CodeTables.h"
#include "vxconnect/market/Sector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string_view>

#include <fmt/format.h>

namespace vx::sim {

namespace {

std::string DateText(PackedDate date) { return fmt::format("{}/{}/{}", date / 100 % 100, date % 100, date / 10000); }

std::string SplitText(double ratio, PackedDate date) { return fmt::format("{:.2f} {}", ratio, DateText(date)); }

// Writes a line field by field. Every figure that is not the market's comes from the symbol's own seed, so that it is
// the same each time it is told; the draws therefore happen for every symbol, whether or not they are used.
class CFundamentalWriter {
public:
    CFundamentalWriter(CMarket& market, CMarket::Index index)
        : m_listing(market.Listing(index)), m_now(market.At(index)), m_hasOptions(market.HasOptions(m_listing)),
          m_start(market.StartDate()),
          m_random(SymbolSeed(~market.Seed(), m_terms.prompt.empty() ? m_listing.symbol : m_terms.prompt)) {}

    std::string Line() {
        m_line.reserve(512);
        Text("F");
        Text(m_listing.symbol);
        Text("SIM");
        Text(m_listing.name);
        Text(m_hasOptions ? m_listing.symbol : "");
        Extremes(m_now.YearExtremes());
        Earnings();
        Balance();
        Dates();
        Codes();
        Contract();
        m_line += "\r\n";
        return std::move(m_line);
    }

private:
    void Text(std::string_view text) {
        m_line += text;
        m_line += ',';
    }
    void Empty(int count = 1) { m_line.append(static_cast<size_t>(count), ','); }
    void Number(double value, int places = 2) { fmt::format_to(std::back_inserter(m_line), "{:.{}f},", value, places); }
    void Whole(double value) { Number(value, 0); }
    void Price(double value) { Number(value, m_now.Decimals()); }
    double Last() const { return static_cast<double>(m_now.Value(EField::Last)) / kPriceUnit; }
    PackedDate DaysAgo(uint32_t least, uint32_t most) {
        return SessionDateUpTo(AddDays(m_start, -static_cast<int>(least + m_random.Below(most - least))));
    }

    void Extremes(const SExtremes& extremes) {
        Price(static_cast<double>(extremes.high) / kPriceUnit);
        Price(static_cast<double>(extremes.low) / kPriceUnit);
    }

    void Earnings() {
        if (!m_terms.HasCompanyFacts()) {
            Empty(2); // Growth and beta.
            Extremes(m_now.CalendarExtremes());
            return Empty(6); // Earnings and dividends.
        }
        const double growth = m_random.Between(-8, 28);
        const double beta = std::max(0.05, m_sector.beta + 0.25 * m_random.Normal());
        const double dividend = m_ticker.dividend, earnings = m_ticker.earnings;
        m_fund ? Empty() : Number(growth);
        Number(beta);
        Extremes(m_now.CalendarExtremes());
        earnings != 0 ? Number(earnings) : Empty();
        dividend > 0 ? Number(dividend / 4, 4) : Empty();
        dividend > 0 ? Number(dividend, 4) : Empty();
        dividend > 0 ? Number(dividend / Last() * 100) : Empty();
        m_fund || earnings == 0 ? Empty() : Number(earnings + std::abs(earnings) * growth / 100);
        earnings > 0 ? Number(Last() / earnings) : Empty();
    }

    void Balance() {
        if (!m_terms.HasCompanyFacts()) {
            Empty(); // Percent held.
            Whole(m_ticker.volumeMillions * 1e6);
            return Empty(5);
        }
        const double held = m_random.Between(35, 92);
        const double assets = m_ticker.sharesMillions * m_ticker.price * m_random.Between(0.2, 0.9);
        const double liabilities = assets * m_random.Between(0.1, 0.5);
        const double debt = assets * m_random.Between(0.02, 0.4);
        constexpr std::array<std::string_view, 6> kYearEnds = {"December",  "December", "December",
                                                               "September", "June",     "January"};
        const std::string_view yearEnd = kYearEnds[m_random.Below(kYearEnds.size())];
        Number(held);
        m_terms.IsPricedDaily() ? Empty(2) : SharesAndVolume();
        m_fund ? Empty() : Number(assets);
        m_fund ? Empty() : Number(liabilities);
        Text(yearEnd);
        m_fund ? Empty() : Whole(debt);
    }

    void SharesAndVolume() {
        Whole(m_ticker.volumeMillions * 1e6);
        Whole(m_ticker.sharesMillions * 1000);
    }

    void Dates() {
        constexpr std::array<double, 3> kRatios = {0.50, 0.33, 0.25};
        const bool split = m_random.Below(3) == 0;
        const bool splitTwice = m_random.Below(3) == 0 && split;
        const PackedDate lastDay = DaysAgo(400, 3000), firstDay = DaysAgo(3100, 7000);
        const double lastRatio = kRatios[m_random.Below(kRatios.size())];
        const double firstRatio = kRatios[m_random.Below(kRatios.size())];
        const PackedDate balance = (m_start / 10000 - 1) * 10000 + 1231;
        const PackedDate exDividend = DaysAgo(5, 85), paid = SessionDateUpTo(AddDays(exDividend, 18));
        if (!m_terms.HasCompanyFacts() || m_terms.IsPricedDaily()) {
            Empty(6);
            // An option tells the volatility of its share.
            const bool own = m_terms.dayDeviation > 0 && m_terms.kind != EKind::Option;
            const double dayDeviation = own ? m_terms.dayDeviation : m_sector.dayDeviation;
            m_terms.kind == EKind::MoneyFund ? Empty() : Number(dayDeviation * std::sqrt(252.0) * 100);
            return ExtremeDates();
        }
        Text(split ? SplitText(lastRatio, lastDay) : std::string());
        Text(splitTwice ? SplitText(firstRatio, firstDay) : std::string());
        m_fund ? Empty() : Text(DateText(balance));
        const bool pays = m_ticker.dividend > 0;
        pays ? Text(fmt::format("{}/{}", exDividend / 100 % 100, exDividend % 100)) : Empty();
        pays ? Text(DateText(paid)) : Empty();
        Whole(m_sector.sic);
        Number(m_sector.dayDeviation * std::sqrt(252.0) * 100 * m_random.Between(0.85, 1.2));
        ExtremeDates();
    }

    void ExtremeDates() {
        for (const SExtremes& extremes : {m_now.YearExtremes(), m_now.CalendarExtremes()}) {
            Text(DateText(extremes.highDate));
            Text(DateText(extremes.lowDate));
        }
    }

    void Codes() {
        Whole(ListedMarketOf(m_terms, m_listing.symbol));
        Whole(SecurityTypeOf(m_terms));
        Empty(2); // The names of the two, which the client knows from its tables.
        !m_terms.HasCompanyFacts() ? Empty() : Whole(m_sector.naics);
        m_fund || !m_terms.HasCompanyFacts() ? Empty() : Price(m_ticker.price * m_random.Between(0.95, 1.04));
    }

    void Contract() {
        const bool option = m_terms.kind == EKind::Option;
        Empty(2); // Maturity and coupon, of bonds.
        m_terms.IsContract() ? Text(DateText(m_terms.expiration)) : Empty();
        option ? Number(m_terms.strike) : Empty();
        Text(m_terms.root);
        option ? Number(m_terms.multiplier) : Empty();
        option ? Whole(m_terms.nonStandard ? 1 : 0) : Empty();
        Text("09:30:00");
        Text("16:00:00");
        Text(m_terms.currency);
        Text(m_terms.contractSize);
        Text(m_terms.contractMonths);
        Number(static_cast<double>(m_now.TickSize()) / kPriceUnit, m_now.Decimals());
        Text(m_terms.firstDelivery != 0 ? DateText(m_terms.firstDelivery) : std::string());
        Text(fmt::format("SIM{:09}", m_random.Below(1'000'000'000)));
        SubTypeOf(m_terms) != 0 ? Whole(SubTypeOf(m_terms)) : Empty();
        Empty();
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
    std::string m_line;
};

} // namespace

std::string FundamentalLine(CMarket& market, CMarket::Index index) { return CFundamentalWriter(market, index).Line(); }

} // namespace vx::sim
