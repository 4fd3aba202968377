#pragma once

#include "vxconnect/SessionClock.h"

#include <cstdint>
#include <string>

namespace vx::sim {

enum class EKind : uint8_t { Share, ExchangeTradedFund, MutualFund, MoneyFund, Option, Future };

/// What sets a symbol apart from an ordinary share; the defaults are those of a share.
struct STerms {
    EKind kind = EKind::Share;
    int delayMinutes = 0;    ///< How old its quotes are when they are told.
    std::string prompt;      ///< Of a delayed listing: the share that it is of, whose facts are its own.
    int64_t tickSize = 0;    ///< Ten-thousandths of a dollar; 0: a cent, below one dollar 1.
    double dayDeviation = 0; ///< Relative standard deviation of a day's move; 0: the sector's.
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
    /// Priced once a day, without quotes and trades.
    bool IsPricedDaily() const { return kind == EKind::MutualFund || kind == EKind::MoneyFund; }
    bool IsFund() const { return kind == EKind::ExchangeTradedFund || IsPricedDaily(); }
    bool HasRegions() const { return (kind == EKind::Share || kind == EKind::ExchangeTradedFund) && delayMinutes == 0; }
};

} // namespace vx::sim
