#include "vxconnect/market/Headline.h"

#include <array>

#include <fmt/format.h>

namespace vx::sim {

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
