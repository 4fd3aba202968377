// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx::sim {

/// A market that shows a quote of its own beside the best one of all.
struct SRegion {
    uint8_t center; ///< Its market id.
    std::string_view name;
};

/// The regions, in the order of their numbers; names as in the market table.
inline constexpr std::array<SRegion, 4> kRegions = {{{2, "HARBOR"}, {5, "BRIDGE"}, {8, "LANTERN"}, {14, "QUAY"}}};
/// Their names as the field Available Regions holds them.
inline constexpr std::string_view kRegionList = "HARBOR;BRIDGE;LANTERN;QUAY";

/// The regional quotes of one symbol, which follow from its quotes and trades: what a region's market quotes or trades
/// is that region's newest, and no region stays better than the best quote.
///
/// Units   prices in hundred-thousandths of a dollar, times in seconds of the day
class CRegionalQuotes {
public:
    struct SSide {
        int64_t price = 0; ///< 0: never set.
        int32_t size = 0;
        int32_t time = 0;
    };
    struct SQuote {
        SSide bid;
        SSide ask;
        SSide last;
    };

    const SQuote& At(size_t region) const { return m_quotes[region]; }

    /// A new session: every region quotes a little worse than the best.
    void Open(const SSide& bestBid, const SSide& bestAsk, int64_t tick);
    /// The best bid or ask came from a market; regions that would be better than it give way.
    void Bid(int64_t center, const SSide& best, int64_t tick);
    void Ask(int64_t center, const SSide& best, int64_t tick);
    /// A market traded.
    void Trade(int64_t center, const SSide& trade);

    /// The regions that changed since the last call, bit n for number n.
    uint64_t TakeChanged();

private:
    void Put(SSide& side, size_t region, const SSide& value);

    std::array<SQuote, kRegions.size()> m_quotes;
    uint64_t m_changed = 0;
};

} // namespace vx::sim
