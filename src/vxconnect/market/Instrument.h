// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/CodeTables.h"
#include "vxconnect/common/Feed.h"
#include "vxconnect/common/Random.h"
#include "vxconnect/common/SessionClock.h"
#include "vxconnect/common/UpdateFields.h"
#include "vxconnect/market/RegionalQuotes.h"
#include "vxconnect/market/Tickers.h"

#include <array>
#include <cstdint>
#include <string>

namespace vx::sim {

/// The highest and the lowest price of a period and the days on which they were set.
///
/// Units   hundred-thousandths of a dollar
struct SExtremes {
    int64_t high = 0;
    int64_t low = 0;
    PackedDate highDate = 0;
    PackedDate lowDate = 0;

    /// Takes in one more price; true when it is a new extreme.
    bool Include(int64_t price, PackedDate date) {
        if (price > high) {
            high = price;
            highDate = date;
            return true;
        }
        if (price < low) {
            low = price;
            lowDate = date;
            return true;
        }
        return false;
    }
};

constexpr int kFineDecimals = 4; ///< Of a fine price, at least.
constexpr int kTickUp = 173;     ///< Tick codes: how a last-qualifying trade compares with the one before.
constexpr int kTickDown = 175;
constexpr int kTickSame = 183;

/// One simulated security: its quote, its trades and every figure derived from them.
///
/// The price is a random walk on the exchange's tick grid: its volatility comes in clusters, is higher after the open
/// and before the close, and it is drawn slowly back to the day's own level. The n-th event depends on nothing but
/// the seed, the symbol and n; its time stamp comes from the symbol's own clock, which an event moves on by 250 to 650
/// milliseconds on average, the less the more the symbol is traded.
///
/// Units   money in hundred-thousandths of a dollar, fractions in millionths, times in seconds of the day
/// Thread  any one
class CInstrument final : public CSecurity {
public:
    /// Starts on the given day after half an hour of trading.
    CInstrument(std::string symbol, const STicker& ticker, STerms terms, uint64_t seed, PackedDate date);

    /// Makes the next event happen; never allocates.
    SUpdate Tick();
    /// When the last event was, on this symbol's own clock, and when the next one will be.
    MarketMs Now() const { return m_now; }
    MarketMs Next() const { return m_next; }
    /// Puts the symbol's own clock forward without an event, over the nights in between if need be.
    void SkipTo(MarketMs now);

    const std::string& Symbol() const override { return m_symbol; }
    /// The value of a field that Present() holds, else 0; the shape is the one of kUpdateFields.
    int64_t Value(EField field) const { return m_values[static_cast<size_t>(field)]; }
    const CFieldMask& Present() const override { return m_present; }
    uint32_t Contents() const override { return static_cast<uint32_t>(Value(EField::MessageContents)); }
    void AppendQuote(CSendQueue& out, char letter, std::string_view symbol, const CFieldMask& fields, uint32_t contents,
                     const CFieldSelection& selection) const override;
    size_t RegionCount() const override { return m_terms.HasRegions() ? kRegions.size() : 0; }
    void AppendRegion(CSendQueue& out, std::string_view symbol, size_t region) const override;

    const STerms& Terms() const { return m_terms; }
    const CRegionalQuotes& Regions() const { return m_regions; }
    /// How far its own clock is kept behind the market's.
    MarketMs DelayMs() const { return m_delayMs; }
    /// Places after the point of this symbol's prices, 2 to 5.
    int Decimals() const { return m_decimals; }
    /// The smallest step of the price, in hundred-thousandths.
    int64_t TickSize() const { return m_tickSize; }
    PackedDate Date() const { return m_date; }
    /// Of the last 52 weeks and of the calendar year; no qualifying trade lies outside.
    const SExtremes& YearExtremes() const { return m_yearExtremes; }
    const SExtremes& CalendarExtremes() const { return m_calendarExtremes; }

private:
    void Put(EField field, int64_t value);
    void Announce(EField field, int64_t value);
    void Step(int weight);
    void PlanNext();
    void MoveMid(int weight);
    void MakePast(CRandom& past);
    void MakeFirstHalfHour();
    void PutTerms();
    void SettleDay(int64_t price);
    void PriceFund(int64_t price);
    uint8_t Center();
    CRegionalQuotes::SSide SideOf(bool bid) const;
    void StartSession(int64_t open);
    void EndSession();
    void Quote();
    void QuoteSide(bool bid, int64_t price, bool newSize);
    void Trade(int weight);
    void LastTrade(int64_t price, int64_t size, int weight);
    void RecentTrade(int64_t price, int64_t size, int conditions);
    void ExtendedTrade(int64_t price, int64_t size);
    void AddVolume(int64_t size);
    void Derive();
    int64_t TradeSize();
    int64_t OnGrid(double price) const;
    int64_t Seconds() const { return kSessionOpen + (m_now - m_sessionBegin) / 1000; }

    std::array<int64_t, kUpdateFieldCount> m_values{};
    CFieldMask m_present;
    CFieldMask m_changed;
    CRandom m_random;
    uint32_t m_contents = 0;
    PackedDate m_date;
    MarketMs m_now = kFirstSessionBegin;
    MarketMs m_next = 0;
    MarketMs m_sessionBegin = kFirstSessionBegin;
    int m_paceMs; // Mean time between two events.
    double m_eventsPerSession;
    double m_mid = 0;        // Where the price really is, between the ticks.
    double m_anchor = 0;     // The level that the day is drawn to.
    double m_variance = 1;   // Of one event, as a multiple of its long-run mean.
    double m_eventDeviation; // Relative, of one event.
    double m_spreadTicks;    // Mean distance of bid and ask.
    double m_meanTradeSize;
    int64_t m_tickSize;
    int m_decimals;
    int64_t m_base; // The price that the years are drawn to.
    int64_t m_sharesThousands;
    int64_t m_averageVolume;
    int64_t m_earnings;
    int64_t m_notional = 0;   // Of today's qualifying trades.
    int64_t m_qualifying = 0; // Shares of today's qualifying trades.
    const STerms m_terms;
    const MarketMs m_delayMs;
    int64_t m_lot; // What sizes of quotes are multiples of.
    CRegionalQuotes m_regions;
    SExtremes m_yearExtremes;
    SExtremes m_calendarExtremes;
    bool m_newExtreme = false;
    const std::string m_symbol;
};

} // namespace vx::sim
