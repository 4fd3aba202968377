// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vx::sim {

/// The trade a company is in; it decides its industry codes and how much its price moves.
enum class ESector : uint8_t {
    Technology,
    Semiconductors,
    Software,
    Media,
    Retail,
    Consumer,
    Autos,
    Banks,
    Insurance,
    Health,
    Pharma,
    Industry,
    Aerospace,
    Transport,
    Energy,
    Utilities,
    Materials,
    Telecom,
    Property,
    Leisure,
    Fund,
};

/// What all companies of one sector share.
struct SSector {
    ESector sector;
    double dayDeviation; ///< Relative standard deviation of a day's move.
    int sic;             ///< Standard industrial classification.
    int naics;           ///< North American industry classification.
    double beta;         ///< Around which a company's own beta lies.
};

const SSector& SectorOf(ESector sector);

/// What the simulated market starts from for one symbol. Only ticker and name are those of the world: every figure is
/// a round starting point of the simulation.
struct STicker {
    std::string_view symbol;
    std::string_view name;
    ESector sector = ESector::Industry;
    double price = 0;          ///< Yesterday's close on the first day, dollars.
    double sharesMillions = 0; ///< Shares outstanding.
    double earnings = 0;       ///< Per share, last twelve months, dollars; 0 or less: no price-earnings ratio.
    double dividend = 0;       ///< Per share and year, dollars.
    double volumeMillions = 0; ///< Average shares traded a day.
};

/// The well-known tickers, in no order that means anything.
std::span<const STicker> KnownTickers();

/// A made-up company.
struct SMadeUpTicker {
    std::string symbol;
    std::string name;
    STicker ticker; ///< Its texts are empty: they are the two above.
};

/// Makes the company of a symbol, the same for the same symbol and seed. Its name begins with a word, or with one that
/// is drawn when it is empty.
SMadeUpTicker MakeTicker(std::string symbol, std::string_view firstWord, uint64_t seed);

/// Makes the company number 1 to 99,999, "S" and five digits.
SMadeUpTicker MakeTicker(uint32_t number, uint64_t seed);

/// The number of a made-up symbol ("S00042" -> 42), 0 for any other text.
uint32_t MadeUpNumber(std::string_view symbol);

} // namespace vx::sim
