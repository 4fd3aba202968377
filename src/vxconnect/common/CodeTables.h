// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Random.h"
#include "vxconnect/common/SessionClock.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vx::sim {

constexpr int64_t kPriceUnit = 100'000; ///< Prices are integers in hundred-thousandths of a dollar.

enum class EKind : uint8_t { Share, ExchangeTradedFund, MutualFund, MoneyFund, Option, Future, Currency };

/// What sets a symbol apart from an ordinary share; the defaults are those of a share.
struct STerms {
    EKind kind = EKind::Share;
    int delayMinutes = 0;    ///< How old its quotes are when they are sent.
    std::string prompt;      ///< Of a delayed listing: the share that it is of, whose facts are its own.
    double tick = 0;         ///< The smallest step of its price, dollars; 0: a cent, below one dollar 0.0001.
    double dayDeviation = 0; ///< Relative standard deviation of a day's move; 0: the sector's.
    std::string currency = "USD";
    // Of options and futures:
    PackedDate expiration = 0;
    PackedDate firstDelivery = 0;
    double strike = 0; ///< Dollars.
    std::string root;  ///< The share or product behind the contract.
    int multiplier = 0;
    bool nonStandard = false; ///< An option on more than 100 shares of one company.
    std::string contractSize;
    std::string contractMonths; ///< Month letters with ";" between them.
    int64_t openInterest = 0;

    bool IsContract() const { return kind == EKind::Option || kind == EKind::Future; }
    /// Has earnings, a balance and dividends to tell of.
    bool HasCompanyFacts() const { return !IsContract() && kind != EKind::Currency; }
    /// Priced once a day, without quotes and trades.
    bool IsPricedDaily() const { return kind == EKind::MutualFund || kind == EKind::MoneyFund; }
    bool IsFund() const { return kind == EKind::ExchangeTradedFund || IsPricedDaily(); }
    bool HasRegions() const { return (kind == EKind::Share || kind == EKind::ExchangeTradedFund) && delayMinutes == 0; }
};

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
