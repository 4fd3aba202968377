// SPDX-License-Identifier: MIT
// What one event after the other leaves in an instrument, and in the lines that tell it.

#include "vxconnect/Peer.h"
#include "vxconnect/market/Market.h"
#include "vxconnect/market/QuoteLine.h"

namespace vx::sim {
namespace {

class Instrument : public testing::Test {
protected:
    CInstrument& At(std::string_view symbol) { return m_market.At(m_market.Find(symbol).value()); }
    CMarket m_market{7, 1000, 20240202}; // A Friday.
};

int SignOf(int64_t value) { return value > 0 ? 1 : value < 0 ? -1 : 0; }
double Exact(int64_t value) { return static_cast<double>(value); }
uint32_t ContentsOf(const CInstrument& now) { return static_cast<uint32_t>(now.Value(EField::MessageContents)); }

std::string Line(char letter, const CInstrument& now, const CFieldMask& fields, const CFieldSelection& selection = {}) {
    std::string out(kMaxQuoteLine, '\0');
    out.resize(
        static_cast<size_t>(WriteQuoteLine(out.data(), letter, now, fields, ContentsOf(now), selection) - out.data()));
    return out;
}

void ExpectFiguresAgree(const CInstrument& now) {
    const auto value = [&](EField field) { return now.Value(field); };
    const int64_t last = value(EField::Last), close = value(EField::Close), open = value(EField::Open);
    const int64_t high = value(EField::High), low = value(EField::Low);
    ASSERT_GT(low, 0);
    for (const EField inside : {EField::Last, EField::Open, EField::Vwap})
        ASSERT_TRUE(low <= value(inside) && value(inside) <= high) << FieldInfo(inside).name;
    ASSERT_EQ(value(EField::Change), last - close);
    ASSERT_EQ(SignOf(value(EField::Change)), SignOf(value(EField::PercentChange)));
    ASSERT_EQ(value(EField::ChangeFromOpen), last - open);
    ASSERT_EQ(value(EField::Range), high - low);
    ASSERT_GT(value(EField::Spread), 0);
    ASSERT_EQ(value(EField::Spread), value(EField::Ask) - value(EField::Bid));
    ASSERT_NEAR(Exact(value(EField::PercentChange)), 1e6 * Exact(last - close) / Exact(close), 0.51);
    ASSERT_NEAR(Exact(value(EField::Volatility)), 1e6 * Exact(high - low) / Exact(last), 0.51);
    ASSERT_EQ(value(EField::ExtendedChange), value(EField::ExtendedTrade) - close);
    ASSERT_EQ(value(EField::ExtendedDifference), value(EField::ExtendedTrade) - last);
    const SExtremes &calendar = now.CalendarExtremes(), &year = now.YearExtremes();
    ASSERT_TRUE(high <= calendar.high && calendar.high <= year.high);
    ASSERT_TRUE(low >= calendar.low && calendar.low >= year.low);
    for (const EField price : {EField::Last, EField::Bid, EField::Ask, EField::Open, EField::Close, EField::High})
        ASSERT_EQ(value(price) % now.TickSize(), 0);
    ASSERT_LE(value(EField::TotalVolume), int64_t{UINT32_MAX});
    ASSERT_LE(value(EField::MarketCapitalization), int64_t{UINT32_MAX});
}

// What an event within a session says of itself, beside what was before.
void ExpectEventAgrees(const CInstrument& now, const SUpdate& update, const SExtremes& year, int64_t last,
                       int64_t volume, int64_t trades) {
    const uint32_t contents = ContentsOf(now);
    const bool trade = (contents & (kContentsTrade | kContentsExtendedTrade | kContentsOtherTrade)) != 0;
    ASSERT_TRUE(trade || (contents & (kContentsBid | kContentsAsk)) != 0);
    ASSERT_EQ(now.Value(EField::TotalVolume), volume + (trade ? now.Value(EField::RecentSize) : 0));
    ASSERT_EQ(now.Value(EField::TradesToday), trades + trade);
    ASSERT_EQ(update.changed.Has(EField::Tick), (contents & kContentsTrade) != 0);
    ASSERT_EQ(update.changed.Has(EField::High), (contents & kContentsHigh) != 0);
    const int64_t after = now.Value(EField::Last);
    if (contents & kContentsTrade)
        ASSERT_EQ(now.Value(EField::Tick), after > last ? kTickUp : after < last ? kTickDown : kTickSame);
    else
        ASSERT_EQ(after, last);
    ASSERT_TRUE(update.newFundamentals || (now.YearExtremes().high == year.high && now.YearExtremes().low == year.low));
}

TEST_F(Instrument, EverythingAgreesAfterEveryEventOfTwoSessions) {
    for (const char* symbol : {"IBM", "NKLA", "BKNG", "SPY", "S00003", "EURUSD", "NGH24"}) {
        SCOPED_TRACE(symbol);
        CInstrument& now = At(symbol);
        int sessions = 0;
        while (sessions < 2 && !HasFailure()) {
            const int64_t last = now.Value(EField::Last), volume = now.Value(EField::TotalVolume);
            const int64_t trades = now.Value(EField::TradesToday);
            const SExtremes year = now.YearExtremes();
            const SUpdate update = now.Tick();
            ExpectFiguresAgree(now);
            if (!update.newSession) ExpectEventAgrees(now, update, year, last, volume, trades);
            sessions += update.newSession;
        }
        EXPECT_EQ(now.Date(), 20240206);
    }
}

TEST_F(Instrument, LinesCarryOnlyWhatChangedAndAddUpToTheSummary) {
    for (const char* symbol : {"IBM", "NKLA"}) {
        CInstrument& now = At(symbol);
        now.SkipTo(kFirstSessionBegin + kSessionMs - 200'000); // Near the end of the session.
        CMergedRecord record;
        record.Merge(Line('P', now, now.Present()));
        for (int i = 0; i < 1'500 && !HasFatalFailure(); ++i) {
            const SUpdate update = now.Tick();
            const std::string line = Line('Q', now, update.changed);
            const std::vector<std::string> fields = Fields(line);
            for (size_t at = 0; at < kUpdateFieldCount && !update.newSession; ++at) {
                const auto field = static_cast<EField>(at);
                if (field == EField::Symbol || field == EField::Tick || field == EField::MessageContents) continue;
                ASSERT_TRUE(fields[at].empty() || fields[at] != record.Get(field)) << FieldInfo(field).name << line;
            }
            record.Merge(line);
        }
        EXPECT_THAT(record.DifferencesTo(Line('P', now, now.Present())), testing::IsEmpty());
        EXPECT_EQ(record.Get(EField::LastDate), "2/5/2024");
    }
}

TEST(SessionClock, JumpsOverNightsAndWeekends) {
    CSessionClock clock(20240202);
    for (const auto& [now, text] : {std::pair<MarketMs, const char*>{0, "20240202 10:00:00"},
                                    {6 * 3'600'000 - 1, "20240202 15:59:59"},
                                    {6 * 3'600'000 + 5'000, "20240205 09:30:05"},
                                    {0, "20240205 09:30:05"}}) {
        clock.MoveTo(now);
        EXPECT_EQ(clock.Text(), text);
    }
    EXPECT_EQ(NextSessionDate(20241231), 20250101);
    EXPECT_EQ(AddDays(20240301, -1), 20240229);
}

} // namespace
} // namespace vx::sim
