// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/InputFields.h"
#include "vxconnect/common/SessionClock.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// The ports by name, as bits.
enum EPorts : uint8_t { kLevel1 = 1, kLookup = 2, kAdmin = 4, kAllPorts = 7 };

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
    bool log = false;           ///< All traffic goes into the log.
    bool listedOnly = false;    ///< Tickers that are not listed are unknown.
    bool burst = false;         ///< Everything of kBurstMs comes at its end, all at once.
    uint8_t mute = 0;           ///< EPorts that accept clients and never send.
    uint8_t refuse = 0;         ///< EPorts that are not opened.
    uint32_t split = 0;         ///< At most so many bytes are sent at a time; 0: no limit.
    uint64_t dropAfter = 0;     ///< Each connection is closed after so many bytes; 0: never.
    std::string input;          ///< The user's own data: a file or pipe, "-" for standard input; empty: none.
    std::string feeder;         ///< A command that writes the user's own data; empty: none.
    int feederPauseMs = 1000;   ///< From its end to its next start, at first.
    CFieldNames names;          ///< What the columns of the user's own data are.
    uint32_t staleSeconds = 30; ///< Silence after which a user's own live data count as gone; 0: never.
    std::string replay;         ///< A recording to be served; empty: none.
    std::string record;         ///< Where to record what is served; empty: nowhere.
    double speed = 1;           ///< Of a replay, as a multiple of the recording's.
    bool help = false;
    bool version = false;
    std::vector<std::string> passedOver; ///< Names that look like options of ours and are none.
    std::string error;                   ///< What is wrong with the command line; empty: nothing.

    /// What is served is not the simulated market.
    bool HasOwnData() const { return !input.empty() || !feeder.empty() || !replay.empty(); }
};

constexpr uint32_t kMaxRate = 500'000;
constexpr uint32_t kAutoRatePerSymbol = 2; ///< About what a symbol has at the pace of real time.
constexpr uint32_t kMaxAutoRate = 5'000;

constexpr int kBurstMs = 1000;
constexpr uint32_t kInputRate = 10; ///< Rows a second of an input file, unless the rate is given.

/// Reads "--name value" and "--name=value". Arguments that are not ours are passed over.
///
/// Errors  the error text names the option of ours whose value is bad, and the value
SOptions ReadOptions(std::span<const std::string> arguments);

/// The text of --help.
std::string HelpText();

} // namespace vx::sim
