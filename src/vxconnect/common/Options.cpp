#include "vxconnect/common/Options.h"

#include "base/Number.h"
#include "base/Text.h"

#include <charconv>
#include <filesystem>

#include <fmt/format.h>

namespace vx::sim {

namespace {

// Takes the value of one option off the arguments and reads it.
class CReader {
public:
    CReader(std::span<const std::string> arguments, SOptions& options) : m_arguments(arguments), m_options(options) {}

    void ReadAll() {
        while (m_next < m_arguments.size() && m_options.error.empty()) ReadOne();
    }

private:
    void ReadOne() {
        const std::string_view argument = m_arguments[m_next++];
        const size_t equals = argument.find('=');
        m_name = argument.substr(0, equals);
        m_inline = equals == std::string_view::npos ? std::nullopt : std::optional(argument.substr(equals + 1));
        if (ReadFlag() || ReadPort() || ReadFault() || ReadFile()) return;
        if (m_name == "--seed")
            m_options.seed = Number(UINT64_MAX);
        else if (m_name == "--symbols")
            m_options.symbols = static_cast<uint32_t>(Number(100'000, 1));
        else if (m_name == "--rate")
            m_options.rate = static_cast<uint32_t>(Number(kMaxRate, 1));
        else if (m_name == "--limit")
            m_options.limit = static_cast<uint32_t>(Number(1'000'000));
        else if (m_name == "--queue")
            m_options.queueKilobytes = static_cast<uint32_t>(Number(1'000'000, 1));
        else if (m_name == "--linger")
            m_options.lingerMs = static_cast<int>(Number(86'400)) * 1000;
        else if (m_name == "--stale")
            m_options.staleSeconds = static_cast<uint32_t>(Number(86'400));
        else if (m_name == "--date")
            ReadDate();
        else if (m_name == "--map")
            ReadMap();
        else if (m_name.starts_with("--"))
            m_options.passedOver.emplace_back(m_name);
    }

    bool NextIsValue() const { return m_next < m_arguments.size() && !m_arguments[m_next].starts_with('-'); }

    bool ReadFlag() {
        bool* const flag = m_name == "--stay"                     ? &m_options.stay
                           : m_name == "--verbose"                ? &m_options.verbose
                           : m_name == "--log"                    ? &m_options.log
                           : m_name == "--burst"                  ? &m_options.burst
                           : m_name == "--listed-only"            ? &m_options.listedOnly
                           : m_name == "--help" || m_name == "-h" ? &m_options.help
                           : m_name == "--version"                ? &m_options.version
                                                                  : nullptr;
        if (flag && m_inline) m_options.error = fmt::format("{} takes no value", m_name);
        if (flag) *flag = true;
        return flag != nullptr;
    }

    bool ReadPort() {
        std::optional<uint16_t>* port = m_name == "--level1-port"   ? &m_options.level1Port
                                        : m_name == "--lookup-port" ? &m_options.lookupPort
                                        : m_name == "--admin-port"  ? &m_options.adminPort
                                                                    : nullptr;
        if (port) *port = static_cast<uint16_t>(Number(UINT16_MAX));
        return port != nullptr;
    }

    bool ReadFault() {
        if (m_name == "--mute")
            m_options.mute = m_inline || NextIsValue() ? Ports() : uint8_t{kAllPorts};
        else if (m_name == "--refuse")
            m_options.refuse = Ports();
        else if (m_name == "--split")
            m_options.split = static_cast<uint32_t>(Number(1'000'000, 1));
        else if (m_name == "--drop-after")
            m_options.dropAfter = Number(1'000'000'000'000, 1);
        else
            return false;
        return true;
    }

    bool ReadFile() {
        std::string* path = m_name == "--input"    ? &m_options.input
                            : m_name == "--replay" ? &m_options.replay
                            : m_name == "--record" ? &m_options.record
                                                   : nullptr;
        if (path && TakeValue().empty()) Complain("the name of a file");
        if (path) *path = m_inline.value_or("");
        if (m_name == "--feeder" && TakeValue().empty()) Complain("a command");
        if (m_name == "--feeder") m_options.feeder = m_inline.value_or("");
        if (m_name == "--speed") ReadSpeed();
        return path || m_name == "--feeder" || m_name == "--speed";
    }

    void ReadMap() {
        if (TakeValue().empty()) return Complain("names, such as Stock=Symbol,Close=Last");
        if (const std::string wrong = m_options.names.Add(*m_inline); !wrong.empty())
            m_options.error = fmt::format("--map: {}", wrong);
    }

    void ReadSpeed() {
        constexpr double kSlowest = 0.01, kFastest = 1000;
        const auto value = ReadWholeDouble(TakeValue());
        if (!value || !(*value >= kSlowest && *value <= kFastest)) return Complain("a number from 0.01 to 1000");
        m_options.speed = *value;
    }

    // One port name or several with commas between them.
    uint8_t Ports() {
        uint8_t ports = 0;
        for (const std::string_view name : SplitCountingTail(TakeValue(), ',')) {
            const uint8_t port = name == "level1" ? kLevel1 : name == "lookup" ? kLookup : name == "admin" ? kAdmin : 0;
            if (port == 0) {
                ports = 0;
                break;
            }
            ports |= port;
        }
        if (ports == 0) Complain("level1, lookup or admin, or several of them with commas between");
        return ports;
    }

    void ReadDate() {
        m_options.date = static_cast<PackedDate>(Number(99'999'999));
        if (m_options.error.empty() && !IsPackedDate(m_options.date)) Complain("a day such as 20240131");
    }

    std::string_view TakeValue() {
        // What begins like an option is none's value: it was forgotten.
        if (!m_inline && m_next < m_arguments.size() && !m_arguments[m_next].starts_with("--"))
            m_inline = m_arguments[m_next++];
        return m_inline.value_or("");
    }

    uint64_t Number(uint64_t most, uint64_t least = 0) {
        const std::string_view text = TakeValue();
        uint64_t value = 0;
        const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (text.empty() || status != std::errc() || end != text.data() + text.size() || value < least || value > most)
            Complain(fmt::format("a whole number from {} to {}", least, most));
        return value;
    }

    void Complain(std::string_view wanted) {
        const std::string_view value = m_inline.value_or("");
        m_options.error = value.empty() ? fmt::format("{} needs a value: {}", m_name, wanted)
                                        : fmt::format("{}: \"{}\" is not {}", m_name, value, wanted);
    }

    std::span<const std::string> m_arguments;
    SOptions& m_options;
    size_t m_next = 0;
    std::string_view m_name;
    std::optional<std::string_view> m_inline;
};

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
    CReader(arguments, options).ReadAll();
    if (options.error.empty()) options.error = Conflict(options);
    return options;
}

std::string_view HelpText() {
    return R"(vxconnect serves a simulated market to programs on this machine (127.0.0.1).

Usage: vxconnect [options]

  --rate N            updates a second over all watched symbols, 1 to 500000;
                      the market's clock runs faster or slower to match
                      (default: real time, about 2 for each watched symbol,
                      at most 5000)
  --symbols N         symbols that exist, 1 to 100000 (default: the well-known
                      tickers; more are made up and called S00001, S00002 ...)
  --listed-only       only listed symbols exist; otherwise any ticker of one to
                      five letters that is not listed is made up when asked for
  --limit N           symbols watched at once by all clients (default 2000)
  --seed N            another market; the same number gives the same one again
  --date YYYYMMDD     the day on which the simulation starts (default 20240131)
  --stay              keep running when the last client has gone
  --linger SECONDS    how long to wait for another client otherwise (default 5)
  --queue KB          what may wait for a slow client before its updates are
                      folded into the newest of each symbol (default 1024)
  --input FILE        serve the quotes of a file instead: CSV with a header or
                      JSON lines; a pipe is followed, "-" is standard input
  --feeder COMMAND    serve what a command writes; when it ends, it is restarted
                      after a pause that grows from 1 to 60 seconds
  --map NAME=FIELD    name the columns of your data: Stock=Symbol,Close=Last
  --stale SECONDS     a pipe or command that sends nothing for so long counts as
                      "Not Connected" (default 30, 0: never)
  --record FILE       write what is served into a file
  --replay FILE       serve such a file, or the traffic in the program's log
  --speed X           of a replay, 0.01 to 1000 times the recorded (default 1)
  --verbose           one line of figures a second on standard error
  --log               what clients say and hear, line by line and in colour
                      on standard error; slows a busy market down
  --level1-port N     ports other than those of the settings; 0 takes a free one
  --lookup-port N
  --admin-port N
  --help, --version

Faults, to see what a client makes of them:

  --burst             a second's updates come all at once, at its end
  --mute [PORT]       clients are accepted and never sent anything; PORT is
                      level1, lookup or admin, or several (default: all)
  --split N           at most N bytes are sent at a time
  --drop-after N      each connection is closed after N bytes
  --refuse PORT       this port is not opened

The ports served are printed as one line. When they are already served, the
program says so and ends with status 0 (1 with data of your own). Values follow after a blank or "=".
Other arguments are passed over.
)";
}

} // namespace vx::sim
