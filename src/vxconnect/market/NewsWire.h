// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Random.h"
#include "vxconnect/common/SessionClock.h"
#include "vxconnect/market/Market.h"
#include "vxconnect/market/Tickers.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::sim {

/// A made-up headline about a company, Windows-1252. It begins with "Simulated:", so that it never passes for news.
///
/// Shape   no line end, at most a few hundred bytes; may hold commas
std::string HeadlineText(std::string_view company, ESector sector, CRandom& random);

/// The headlines of the simulated market. Every ticker, and each of the first kMostCompanies made-up companies, has up
/// to kMostStoriesADay of them a day, at times that depend on seed, symbol and day alone; some name other symbols of
/// the same sector too.
///
/// Thread  any one
class CNewsWire {
public:
    static constexpr uint32_t kMostCompanies = 1000;
    static constexpr uint32_t kMostStoriesADay = 5;

    /// The market outlives it. What came before the clock's time counts as told.
    CNewsWire(const CMarket& market, const CSessionClock& clock);

    /// Called with each headline: an "N" line with its line end.
    std::function<void(const std::string& line)> OnHeadline;

    /// Tells what is due by the clock's time; a new day starts the counts anew.
    void RunTo(const CSessionClock& clock);

    /// Today's headlines so far that name a symbol.
    uint32_t Count(CMarket::Index symbol) const;

private:
    struct SStory {
        int32_t second = 0; // Of the day.
        CMarket::Index subject = 0;
        uint32_t number = 0; // Of the subject's stories of the day.
    };

    void PlanDay(PackedDate date);
    void Release(size_t place, bool tell);
    std::vector<CMarket::Index> SymbolsOf(const SStory& story, const STicker& ticker, CRandom& random) const;

    const CMarket& m_market;
    PackedDate m_date = 0;
    std::vector<SStory> m_stories; // Of the day, by time.
    size_t m_next = 0;
    std::unordered_map<CMarket::Index, uint32_t> m_counts;
};

} // namespace vx::sim
