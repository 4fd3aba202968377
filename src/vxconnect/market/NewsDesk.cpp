#include "vxconnect/market/NewsDesk.h"

#include "vxconnect/market/Headline.h"

#include <algorithm>
#include <tuple>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr uint32_t kFirstStoryId = 1001;

} // namespace

CNewsDesk::CNewsDesk(const CMarket& market, const CSessionClock& clock) : m_market(market) { RunTo(clock); }

void CNewsDesk::PlanDay(PackedDate date) {
    m_date = date;
    m_next = 0;
    m_stories.clear();
    m_counts.clear();
    const auto subjects = static_cast<CMarket::Index>(
        std::min<size_t>(m_market.SymbolCount(), m_market.Tickers().size() + kMostCompanies));
    for (CMarket::Index subject = 0; subject < subjects; ++subject) {
        CRandom random(SymbolSeed(m_market.Seed() + static_cast<uint64_t>(date), m_market.Listing(subject).symbol));
        const uint32_t count = random.Below(kMostStoriesADay + 1);
        for (uint32_t i = 0; i < count; ++i) {
            const uint32_t second = random.Below(kSessionClose - kSessionOpen);
            m_stories.push_back({kSessionOpen + static_cast<int32_t>(second), subject, i});
        }
    }
    std::sort(m_stories.begin(), m_stories.end(), [](const SStory& a, const SStory& b) {
        return std::tie(a.second, a.subject, a.number) < std::tie(b.second, b.subject, b.number);
    });
}

void CNewsDesk::RunTo(const CSessionClock& clock) {
    const bool first = m_date == 0;
    if (clock.Date() != m_date) PlanDay(clock.Date());
    for (; m_next < m_stories.size() && m_stories[m_next].second <= clock.SecondOfDay(); ++m_next)
        Release(m_next, !first);
}

std::vector<CMarket::Index> CNewsDesk::SymbolsOf(const SStory& story, const STicker& ticker, CRandom& random) const {
    std::vector<CMarket::Index> out = {story.subject};
    constexpr int kTries = 6; // At a symbol of the same sector, for one story in three.
    const auto tickers = m_market.Tickers();
    if (random.Below(3) != 0 || tickers.empty()) return out;
    for (int i = 0; i < kTries && out.size() < 3; ++i) {
        const auto other = random.Below(static_cast<uint32_t>(tickers.size()));
        if (tickers[other].sector == ticker.sector && std::find(out.begin(), out.end(), other) == out.end())
            out.push_back(other);
    }
    return out;
}

void CNewsDesk::Release(size_t place, bool tell) {
    const SStory& story = m_stories[place];
    const SListing listing = m_market.Listing(story.subject);
    CRandom random(SymbolSeed(m_market.Seed() ^ static_cast<uint64_t>(m_date), listing.symbol) + story.number);
    const std::vector<CMarket::Index> symbols = SymbolsOf(story, listing.ticker, random);
    std::string names;
    for (const CMarket::Index symbol : symbols) {
        ++m_counts[symbol];
        if (!names.empty()) names += ':';
        names += m_market.Listing(symbol).symbol;
    }
    if (!tell || !OnHeadline) return;
    const int32_t second = story.second;
    OnHeadline(fmt::format("N,SIM,{},{},{:08} {:02}{:02}{:02},{}\r\n", kFirstStoryId + place, names, m_date,
                           second / 3600, second / 60 % 60, second % 60,
                           HeadlineText(listing.name, listing.ticker.sector, random)));
}

uint32_t CNewsDesk::Count(CMarket::Index symbol) const {
    const auto found = m_counts.find(symbol);
    return found == m_counts.end() ? 0 : found->second;
}

} // namespace vx::sim
