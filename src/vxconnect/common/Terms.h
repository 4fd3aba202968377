#pragma once

#include "vxconnect/common/SessionClock.h"

#include <cstdint>
#include <string>

namespace vx::sim {

constexpr int64_t kPriceUnit = 100'000; ///< Prices are integers in hundred-thousandths of a dollar.

enum class EKind : uint8_t { Share, ExchangeTradedFund, MutualFund, MoneyFund, Option, Future, Currency };

/// What sets a symbol apart from an ordinary share; the defaults are those of a share.
struct STerms {
    EKind kind = EKind::Share;
    int delayMinutes = 0;    ///< How old its quotes are when they are told.
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

} // namespace vx::sim
