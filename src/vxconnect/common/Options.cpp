// SPDX-License-Identifier: MIT
#include "vxconnect/common/Options.h"

#include "base/CommandLine.h"
#include "base/Number.h"
#include "base/Text.h"

#include <fmt/format.h>

#include <filesystem>

namespace vx::sim {

namespace {

constexpr std::string_view kPortNames = "level1, lookup or admin, or several of them with commas between";
constexpr std::string_view kAllPortNames = "level1,lookup,admin";

template <class TNumber> SOptionValue Number(TNumber& where, uint64_t least, uint64_t most) {
    return WholeNumber(least, most, [&where](uint64_t value) { where = static_cast<TNumber>(value); });
}

SOptionValue Port(std::optional<uint16_t>& where) {
    return WholeNumber(0, UINT16_MAX, [&where](uint64_t value) { where = static_cast<uint16_t>(value); });
}

// One port name or several with commas between them.
SOptionValue Ports(uint8_t& where) {
    return {std::string(kPortNames), [&where](const std::string& value) {
                where = 0;
                for (const std::string_view name : SplitCountingTail(value, ',')) {
                    const uint8_t port = name == "level1"   ? kLevel1
                                         : name == "lookup" ? kLookup
                                         : name == "admin"  ? kAdmin
                                                            : 0;
                    if (port == 0) return false;
                    where |= port;
                }
                return true;
            }};
}

SOptionValue Date(PackedDate& where) {
    return {"a day such as 20240131", [&where](const std::string& value) {
                where = ReadInt32(value);
                return std::to_string(where) == value && IsPackedDate(where);
            }};
}

SOptionValue Speed(double& where) {
    return {"a number from 0.01 to 1000", [&where](const std::string& value) {
                constexpr double kSlowest = 0.01, kFastest = 1000;
                where = ReadWholeDouble(value).value_or(0);
                return where >= kSlowest && where <= kFastest;
            }};
}

SOptionValue Map(SOptions& options) {
    return {"names, such as Stock=Symbol,Close=Last", [&options](const std::string& value) {
                const std::string wrong = options.names.Add(value);
                if (!wrong.empty() && options.error.empty()) options.error = fmt::format("--map: {}", wrong);
                return true;
            }};
}

std::vector<SCommandOption> Table(SOptions& o) {
    const std::string file = "the name of a file";
    return {
        {"--rate", "N",
         "updates a second over all watched symbols, 1 to 500000; the market's clock runs faster or slower to match "
         "(default: real time, about 2 for each watched symbol, at most 5000)",
         Number(o.rate, 1, kMaxRate)},
        {"--symbols", "N",
         "symbols that exist, 1 to 100000 (default: the well-known tickers; more are made up and called S00001, S00002 "
         "...)",
         Number(o.symbols, 1, 100'000)},
        {"--listed-only", "",
         "only listed symbols exist; otherwise any ticker of one to five letters that is not listed is made up when "
         "asked for",
         Flag(o.listedOnly)},
        {"--limit", "N", "symbols watched at once by all clients (default 2000)", Number(o.limit, 0, 1'000'000)},
        {"--seed", "N", "another market; the same number gives the same one again", Number(o.seed, 0, UINT64_MAX)},
        {"--date", "YYYYMMDD", "the day on which the simulation starts (default 20240131)", Date(o.date)},
        {"--stay", "", "keep running when the last client has gone", Flag(o.stay)},
        {"--linger", "SECONDS", "how long to wait for another client otherwise (default 5)",
         WholeNumber(0, 86'400, [&o](uint64_t seconds) { o.lingerMs = static_cast<int>(seconds) * 1000; })},
        {"--queue", "KB",
         "what may wait for a slow client before its updates are folded into the newest of each symbol (default 1024)",
         Number(o.queueKilobytes, 1, 1'000'000)},
        {"--input", "FILE",
         "serve the quotes of a file instead: CSV with a header or JSON lines; a pipe is followed, \"-\" is standard "
         "input",
         TextValue(o.input, file)},
        {"--feeder", "COMMAND",
         "serve what a command writes; when it ends, it is restarted after a pause that grows from 1 to 60 seconds",
         TextValue(o.feeder, "a command")},
        {"--map", "NAME=FIELD", "name the columns of your data: Stock=Symbol,Close=Last", Map(o)},
        {"--stale", "SECONDS",
         "a pipe or command that sends nothing for so long counts as \"Not Connected\" (default 30, 0: never)",
         Number(o.staleSeconds, 0, 86'400)},
        {"--record", "FILE", "write what is served into a file", TextValue(o.record, file)},
        {"--replay", "FILE", "serve such a file, or the traffic in the program's log", TextValue(o.replay, file)},
        {"--speed", "X", "of a replay, 0.01 to 1000 times the recorded (default 1)", Speed(o.speed)},
        {"--verbose", "", "one line of figures a second on standard error", Flag(o.verbose)},
        {"--log", "",
         "what clients say and hear, line by line and in colour on standard error; slows a busy market down",
         Flag(o.log)},
        {"--level1-port", "N", "a port other than that of the settings; 0 takes a free one", Port(o.level1Port)},
        {"--lookup-port", "N", "the same", Port(o.lookupPort)},
        {"--admin-port", "N", "the same", Port(o.adminPort)},
        {"--help", "", "this text", Flag(o.help)},
        {"-h", "", "", Flag(o.help)},
        {"--version", "", "the version", Flag(o.version)},
        {"--burst", "", "fault: a second's updates come all at once, at its end", Flag(o.burst)},
        {"--mute", "PORT",
         "fault: clients are accepted and never sent anything; PORT is level1, lookup or admin, or several (default: "
         "all)",
         Ports(o.mute), kAllPortNames},
        {"--split", "N", "fault: at most N bytes are sent at a time", Number(o.split, 1, 1'000'000)},
        {"--drop-after", "N", "fault: each connection is closed after N bytes",
         Number(o.dropAfter, 1, 1'000'000'000'000)},
        {"--refuse", "PORT", "fault: this port is not opened", Ports(o.refuse)},
    };
}

// By whatever names: links and other spellings lead to it too.
bool SameFile(const std::string& a, const std::string& b) {
    std::error_code missing;
    return !a.empty() && (a == b || std::filesystem::equivalent(a, b, missing));
}

std::string Conflict(const SOptions& options) {
    const auto same = [](std::optional<uint16_t> a, std::optional<uint16_t> b) { return a && a == b && *a != 0; };
    if (same(options.level1Port, options.lookupPort) || same(options.level1Port, options.adminPort))
        return fmt::format("port {} is given twice", *options.level1Port);
    if (same(options.lookupPort, options.adminPort)) return fmt::format("port {} is given twice", *options.lookupPort);
    if (!options.input.empty() + !options.feeder.empty() + !options.replay.empty() > 1)
        return "only one of --input, --feeder and --replay can be used";
    if (!options.names.IsEmpty() && options.input.empty() && options.feeder.empty())
        return "--map needs --input or --feeder";
    if (SameFile(options.record, options.input) || SameFile(options.record, options.replay))
        return fmt::format("--record would write over \"{}\", which is being read", options.record);
    if (options.refuse == kAllPorts) return "--refuse leaves no port to serve";
    return {};
}

} // namespace

SOptions ReadOptions(std::span<const std::string> arguments) {
    SOptions options;
    const SCommandLine line = ReadCommandLine(arguments, Table(options), EDashes::Two);
    for (const std::string& name : line.unknown)
        if (name.starts_with("--")) options.passedOver.push_back(name.substr(0, name.find('=')));
    if (!line.error.empty()) options.error = line.error;
    if (options.error.empty()) options.error = Conflict(options);
    return options;
}

std::string HelpText() {
    SOptions none;
    return "vxconnect serves a simulated market to programs on this machine (127.0.0.1).\n\n"
           "Usage: vxconnect [options]\n\n" +
           OptionsHelp(Table(none)) +
           "\nThe ports served are printed as one line. When they are already served, the\n"
           "program says so and ends with status 0 (1 with data of your own). Values\n"
           "follow after a blank or \"=\". Other arguments are passed over.\n";
}

} // namespace vx::sim
