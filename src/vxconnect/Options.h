#pragma once

#include "vxconnect/SessionClock.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vx::sim {

/// What the command line asks for.
struct SOptions {
    std::optional<uint16_t> level1Port; ///< 0: any free port. Without one the port settings count.
    std::optional<uint16_t> lookupPort;
    std::optional<uint16_t> adminPort;
    uint64_t seed = 1;
    uint32_t symbols = 0;  ///< 0: the well-known tickers.
    uint32_t rate = 0;     ///< Updates a second over all symbols; 0: those of real time.
    uint32_t limit = 2000; ///< Symbols watched at once, over all clients.
    PackedDate date = kFirstSessionDate;
    bool stay = false;
    int lingerMs = 5000;            ///< From the last client's leaving to the end.
    int firstClientMs = 60000;      ///< From the start to the end when no client ever comes.
    uint32_t queueKilobytes = 1024; ///< Beyond so much for one client, updates fold.
    bool verbose = false;
    bool help = false;
    bool version = false;
    std::string error; ///< What is wrong with the command line; empty: nothing.
};

constexpr uint32_t kMaxRate = 500'000;
constexpr uint32_t kAutoRatePerSymbol = 2; ///< About what a symbol has at the pace of real time.
constexpr uint32_t kMaxAutoRate = 5'000;

/// Reads "--name value" and "--name=value". Arguments that are not ours are passed over.
///
/// Errors  a bad value of an option of ours is told in the error text, which names both
SOptions ReadOptions(std::span<const std::string> arguments);

/// The text of --help.
std::string_view HelpText();

} // namespace vx::sim
