// SPDX-License-Identifier: MIT
#include "vxconnect/market/RegionalQuotes.h"

#include <algorithm>
#include <utility>

namespace vx::sim {

namespace {

// How many ticks a region's quote is worse than the best one when it is not the best.
int64_t TicksBehind(size_t region) { return static_cast<int64_t>(region) + 1; }

} // namespace

void CRegionalQuotes::Put(SSide& side, size_t region, const SSide& value) {
    side = value;
    m_changed |= uint64_t{1} << region;
}

void CRegionalQuotes::Open(const SSide& bestBid, const SSide& bestAsk, int64_t tick) {
    for (size_t i = 0; i < kRegions.size(); ++i) {
        const int64_t behind = TicksBehind(i) * tick;
        Put(m_quotes[i].bid, i, {std::max(tick, bestBid.price - behind), 100, bestBid.time});
        Put(m_quotes[i].ask, i, {bestAsk.price + behind, 100, bestAsk.time});
    }
}

void CRegionalQuotes::Bid(int64_t center, const SSide& best, int64_t tick) {
    for (size_t i = 0; i < kRegions.size(); ++i) {
        if (kRegions[i].center == center) {
            Put(m_quotes[i].bid, i, best);
        } else if (m_quotes[i].bid.price > best.price) {
            const int64_t price = std::max(tick, best.price - TicksBehind(i) * tick);
            Put(m_quotes[i].bid, i, {price, m_quotes[i].bid.size, best.time});
        }
    }
}

void CRegionalQuotes::Ask(int64_t center, const SSide& best, int64_t tick) {
    for (size_t i = 0; i < kRegions.size(); ++i) {
        if (kRegions[i].center == center) {
            Put(m_quotes[i].ask, i, best);
        } else if (m_quotes[i].ask.price != 0 && m_quotes[i].ask.price < best.price) {
            Put(m_quotes[i].ask, i, {best.price + TicksBehind(i) * tick, m_quotes[i].ask.size, best.time});
        }
    }
}

void CRegionalQuotes::Trade(int64_t center, const SSide& trade) {
    for (size_t i = 0; i < kRegions.size(); ++i)
        if (kRegions[i].center == center) Put(m_quotes[i].last, i, trade);
}

uint64_t CRegionalQuotes::TakeChanged() { return std::exchange(m_changed, 0); }

} // namespace vx::sim
