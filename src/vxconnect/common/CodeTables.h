#pragma once

#include "vxconnect/common/Random.h"
#include "vxconnect/common/Terms.h"

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
constexpr uint8_t kTypeMoneyFund = 4;
constexpr uint8_t kTypeFuture = 7;
constexpr uint8_t kTypeCurrency = 10;
constexpr uint8_t kSubTypeExchangeTradedFund = 1; ///< Of funds.
constexpr uint8_t kSubTypeNonStandardOption = 2;  ///< Of options.

/// The security type of a symbol.
uint8_t SecurityTypeOf(const STerms& terms);

/// The subtype of a symbol, 0 for none.
uint8_t SubTypeOf(const STerms& terms);

/// The market on which a symbol is listed.
uint8_t ListedMarketOf(const STerms& terms, std::string_view symbol);

/// Whether selling short is restricted: shares whose price is below kRestrictedBelow on the first day.
///
/// Units   price: dollars
bool IsRestricted(const STerms& terms, double price);
constexpr double kRestrictedBelow = 5;

/// The market of one quote or trade, busy ones more often.
uint8_t RandomMarketCenter(CRandom& random);

} // namespace vx::sim
