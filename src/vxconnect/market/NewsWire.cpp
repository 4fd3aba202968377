// SPDX-License-Identifier: MIT
#include "vxconnect/market/NewsWire.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <tuple>

namespace vx::sim {

namespace {

constexpr uint32_t kFirstStoryId = 1001;

} // namespace

CNewsWire::CNewsWire(const CMarket& market, const CSessionClock& clock) : m_market(market) { RunTo(clock); }

void CNewsWire::PlanDay(PackedDate date) {
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

void CNewsWire::RunTo(const CSessionClock& clock) {
    const bool first = m_date == 0;
    if (clock.Date() != m_date) PlanDay(clock.Date());
    for (; m_next < m_stories.size() && m_stories[m_next].second <= clock.SecondOfDay(); ++m_next)
        Release(m_next, !first);
}

std::vector<CMarket::Index> CNewsWire::SymbolsOf(const SStory& story, const STicker& ticker, CRandom& random) const {
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

void CNewsWire::Release(size_t place, bool tell) {
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

uint32_t CNewsWire::Count(CMarket::Index symbol) const {
    const auto found = m_counts.find(symbol);
    return found == m_counts.end() ? 0 : found->second;
}

namespace {

// {0} is the company, {1} a number.
constexpr std::array<std::string_view, 16> kCompanyNews = {
    "{0} raises its outlook for the year",
    "{0} lowers its outlook, cites weaker demand",
    "{0} names a new chief financial officer",
    "{0} to buy back {1} million shares",
    "{0} opens a second plant, adds {1} jobs",
    "{0} reports quarterly sales up {1}%",
    "{0} reports quarterly sales down {1}%",
    "Analyst raises price target on {0}",
    "Analyst cuts {0}, sees \x93limited upside\x94",
    "{0} in talks with suppliers, sources say",
    "{0}\x92s shares move on heavy volume",
    "{0} wins a contract worth ${1} million",
    "{0} delays its new product by {1} weeks",
    "{0} declares its quarterly dividend",
    "{0} and partners agree on a joint study, terms not disclosed",
    "{0} to present at a conference on the {1}th",
};
constexpr std::array<std::string_view, 4> kFundNews = {
    "{0} sees inflows for the {1}th day",
    "{0} rebalances, {1} holdings change",
    "Options volume in {0} {1}% above average",
    "{0}: what {1} strategists expect, and why they disagree",
};

template <size_t kCount> std::string_view PickOne(const std::array<std::string_view, kCount>& texts, CRandom& random) {
    return texts[random.Below(kCount)];
}

} // namespace

std::string HeadlineText(std::string_view company, ESector sector, CRandom& random) {
    const std::string_view text = sector == ESector::Fund ? PickOne(kFundNews, random) : PickOne(kCompanyNews, random);
    const uint32_t number = 4 + random.Below(17);
    return "Simulated: " + fmt::format(fmt::runtime(text), company, number);
}

} // namespace vx::sim
