#include "vxconnect/market/Market.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace vx::sim {
namespace {

constexpr int kSeveralSessions = 200'000;

CInstrument& Find(CMarket& market, std::string_view symbol) { return market.At(market.Find(symbol).value()); }

int SignOf(int64_t value) { return value > 0 ? 1 : value < 0 ? -1 : 0; }

double Exact(int64_t value) { return static_cast<double>(value); }

void ExpectFiguresAgree(const CInstrument& now) {
    const auto value = [&](EField field) { return now.Value(field); };
    const int64_t last = value(EField::Last), close = value(EField::Close), open = value(EField::Open);
    const int64_t high = value(EField::High), low = value(EField::Low);
    ASSERT_GT(low, 0);
    ASSERT_LE(low, last);
    ASSERT_LE(last, high);
    ASSERT_LE(low, open);
    ASSERT_LE(open, high);
    ASSERT_LE(low, value(EField::Vwap));
    ASSERT_LE(value(EField::Vwap), high);
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
    ASSERT_LE(high, now.CalendarExtremes().high);
    ASSERT_LE(now.CalendarExtremes().high, now.YearExtremes().high);
    ASSERT_GE(low, now.CalendarExtremes().low);
    ASSERT_GE(now.CalendarExtremes().low, now.YearExtremes().low);
    for (const EField price : {EField::Last, EField::Bid, EField::Ask, EField::Open, EField::Close, EField::High})
        ASSERT_EQ(value(price) % now.TickSize(), 0);
    ASSERT_LE(value(EField::TotalVolume), int64_t{UINT32_MAX});
    ASSERT_LE(value(EField::MarketCapitalization), int64_t{UINT32_MAX});
}

TEST(Instrument, FiguresAgreeAfterEveryEventOfSeveralSessions) {
    CMarket market(7, 1000, kFirstSessionDate);
    for (const char* symbol : {"AAPL", "NKLA", "BKNG", "SPY", "S00003", "EURUSD", "NGH24"}) {
        SCOPED_TRACE(symbol);
        CInstrument& instrument = Find(market, symbol);
        for (int i = 0; i < kSeveralSessions && !testing::Test::HasFatalFailure(); ++i) {
            instrument.Tick();
            ExpectFiguresAgree(instrument);
        }
        EXPECT_GT(instrument.Date(), AddDays(kFirstSessionDate, 1));
    }
}

TEST(Instrument, TickCodesAndCountersFollowTheTrades) {
    CMarket market(1, 0, kFirstSessionDate);
    CInstrument& instrument = Find(market, "F");
    int trades = 0, quotes = 0;
    for (int i = 0; i < 20'000; ++i) {
        const int64_t before = instrument.Value(EField::Last);
        const int64_t volume = instrument.Value(EField::TotalVolume);
        const int64_t count = instrument.Value(EField::TradesToday);
        const SUpdate update = instrument.Tick();
        const auto contents = static_cast<uint32_t>(instrument.Value(EField::MessageContents));
        const int64_t after = instrument.Value(EField::Last);
        ASSERT_EQ(update.changed.Has(EField::Tick), (contents & kContentsTrade) != 0);
        if (contents & (kContentsTrade | kContentsExtendedTrade | kContentsOtherTrade)) {
            ++trades;
            ASSERT_EQ(instrument.Value(EField::TotalVolume), volume + instrument.Value(EField::RecentSize));
            ASSERT_EQ(instrument.Value(EField::TradesToday), count + 1);
        } else {
            ++quotes;
            ASSERT_NE(contents & (kContentsBid | kContentsAsk), 0u);
            ASSERT_EQ(instrument.Value(EField::TotalVolume), volume);
        }
        if (contents & kContentsTrade) {
            ASSERT_EQ(instrument.Value(EField::Tick), after > before   ? kTickUp
                                                      : after < before ? kTickDown
                                                                       : kTickSame);
        } else {
            ASSERT_EQ(after, before);
        }
        ASSERT_EQ((contents & kContentsHigh) != 0, update.changed.Has(EField::High));
    }
    EXPECT_GT(trades, 5'000);
    EXPECT_GT(quotes, 10'000);
}

TEST(Instrument, NewSessionTakesTheOldOneOver) {
    CMarket market(3, 0, 20240202); // A Friday.
    CInstrument& instrument = Find(market, "KO");
    int64_t last = 0, volume = 0;
    SUpdate update;
    while (!update.newSession) {
        last = instrument.Value(EField::Last);
        volume = instrument.Value(EField::TotalVolume);
        update = instrument.Tick();
    }
    EXPECT_EQ(instrument.Date(), 20240205);
    EXPECT_EQ(instrument.Value(EField::Close), last);
    EXPECT_EQ(instrument.Value(EField::PreviousDayVolume), volume);
    EXPECT_EQ(instrument.Value(EField::LastDate), 20240205);
    EXPECT_EQ(instrument.Value(EField::Open), instrument.Value(EField::Last));
    EXPECT_EQ(instrument.Value(EField::TotalVolume), instrument.Value(EField::LastSize));
    // What a liquid share trades in a day, give or take its days.
    EXPECT_GT(volume, 13'000'000 / 3);
    EXPECT_LT(volume, 13'000'000 * 3);
}

TEST(Instrument, VolatilityComesInClustersAndADayStaysADay) {
    CMarket market(5, 0, kFirstSessionDate);
    CInstrument& instrument = Find(market, "MSFT");
    std::vector<double> moves;
    double before = Exact(instrument.Value(EField::Ask) + instrument.Value(EField::Bid));
    for (int i = 0; i < 40'000; ++i) {
        if (instrument.Tick().newSession) break;
        const double now = Exact(instrument.Value(EField::Ask) + instrument.Value(EField::Bid));
        if (now != before) moves.push_back(std::abs(now - before) / before);
        before = now;
    }
    double mean = 0, variance = 0, covariance = 0;
    for (const double move : moves) mean += move / static_cast<double>(moves.size());
    for (size_t i = 1; i < moves.size(); ++i) {
        variance += (moves[i] - mean) * (moves[i] - mean);
        covariance += (moves[i] - mean) * (moves[i - 1] - mean);
    }
    EXPECT_GT(covariance / variance, 0.1) << "a large move is no more likely after a large one";
    EXPECT_LT(std::abs(Exact(instrument.Value(EField::PercentChange))), 100'000) << "more than ten percent";
    EXPECT_GT(instrument.Value(EField::Range), instrument.Value(EField::Last) / 400) << "hardly any move";
}

TEST(SessionClock, JumpsOverNightsAndWeekends) {
    CSessionClock clock(20240202);
    EXPECT_EQ(clock.Text(), "20240202 10:00:00");
    clock.MoveTo((6 * 3600 - 1) * 1000 + 999);
    EXPECT_EQ(clock.Text(), "20240202 15:59:59");
    clock.MoveTo((6 * 3600 + 5) * 1000);
    EXPECT_EQ(clock.Text(), "20240205 09:30:05");
    clock.MoveTo(0);
    EXPECT_EQ(clock.Text(), "20240205 09:30:05");
    EXPECT_EQ(NextSessionDate(20241231), 20250101);
    EXPECT_EQ(AddDays(20240301, -1), 20240229);
    EXPECT_EQ(AddDays(20230228, 1), 20230301);
}

} // namespace
} // namespace vx::sim
