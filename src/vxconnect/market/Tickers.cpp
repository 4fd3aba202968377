#include "vxconnect/market/Tickers.h"

#include "vxconnect/common/Random.h"

#include <array>
#include <utility>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr std::array<std::string_view, 24> kFirstWords = {
    "Alder",    "Beacon",  "Cobalt",   "Delta",    "Ember",  "Fairfield", "Granite", "Harbor",
    "Ironwood", "Juniper", "Keystone", "Lakeside", "Meadow", "North",     "Orchard", "Pinnacle",
    "Quarry",   "Ridge",   "Summit",   "Timber",   "Union",  "Valley",    "Willow",  "Zenith"};
struct STrade {
    std::string_view word;
    ESector sector;
};
constexpr std::array<STrade, 20> kTrades = {
    {{"Devices", ESector::Technology},  {"Circuits", ESector::Semiconductors}, {"Software", ESector::Software},
     {"Media", ESector::Media},         {"Stores", ESector::Retail},           {"Foods", ESector::Consumer},
     {"Motors", ESector::Autos},        {"Bancorp", ESector::Banks},           {"Assurance", ESector::Insurance},
     {"Health", ESector::Health},       {"Therapeutics", ESector::Pharma},     {"Tools", ESector::Industry},
     {"Aviation", ESector::Aerospace},  {"Freight", ESector::Transport},       {"Petroleum", ESector::Energy},
     {"Power", ESector::Utilities},     {"Metals", ESector::Materials},        {"Networks", ESector::Telecom},
     {"Properties", ESector::Property}, {"Resorts", ESector::Leisure}}};
constexpr std::array<std::string_view, 4> kForms = {"Inc.", "Corp.", "Group", "Holdings"};

} // namespace

SMadeUpTicker MakeTicker(uint32_t number, uint64_t seed) { return MakeTicker(fmt::format("S{:05}", number), {}, seed); }

SMadeUpTicker MakeTicker(std::string symbol, std::string_view firstWord, uint64_t seed) {
    SMadeUpTicker out;
    out.symbol = std::move(symbol);
    CRandom random(SymbolSeed(seed, out.symbol));
    const STrade& trade = kTrades[random.Below(kTrades.size())];
    const std::string_view drawn = kFirstWords[random.Below(kFirstWords.size())];
    const std::string_view form = kForms[random.Below(kForms.size())];
    out.name = fmt::format("{} {} {}", firstWord.empty() ? drawn : firstWord, trade.word, form);
    STicker& ticker = out.ticker;
    ticker.sector = trade.sector;
    const double spread = random.Unit();
    ticker.price = random.Below(20) == 0 ? random.Between(0.2, 0.99) : 2 + 400 * spread * spread * spread;
    ticker.sharesMillions = random.Between(8, 900);
    ticker.earnings = ticker.price / random.Between(-15, 45);
    ticker.dividend = random.Below(3) == 0 ? ticker.price * random.Between(0.005, 0.05) : 0;
    ticker.volumeMillions = ticker.sharesMillions * random.Between(0.002, 0.015);
    return out;
}

uint32_t MadeUpNumber(std::string_view symbol) {
    if (symbol.size() != 6 || symbol[0] != 'S') return 0;
    uint32_t number = 0;
    for (const char c : symbol.substr(1)) {
        if (c < '0' || c > '9') return 0;
        number = number * 10 + static_cast<uint32_t>(c - '0');
    }
    return number;
}

} // namespace vx::sim
