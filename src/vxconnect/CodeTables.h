#pragma once

#include "vxconnect/Random.h"
#include "vxconnect/Tickers.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vx::sim {

/// One market of the simulation. All of them are invented.
struct SListedMarket {
    uint8_t id;
    std::string_view shortName;
    std::string_view longName;
    uint8_t groupId;
    std::string_view groupName;
};

/// One kind of security.
struct SSecurityType {
    uint8_t id;
    std::string_view shortName;
    std::string_view longName;
};

std::span<const SListedMarket> ListedMarkets();
std::span<const SSecurityType> SecurityTypes();

constexpr uint8_t kTypeEquity = 1;
constexpr uint8_t kTypeOption = 2;
constexpr uint8_t kTypeFund = 3;
constexpr uint8_t kSubTypeExchangeTradedFund = 1;

/// The market on which a symbol is listed.
uint8_t ListedMarketOf(ESector sector, std::string_view symbol);

/// The market of one quote or trade, busy ones more often.
uint8_t RandomMarketCenter(CRandom& random);

} // namespace vx::sim
