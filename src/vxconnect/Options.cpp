#include "vxconnect/Options.h"

#include <charconv>

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
        if (ReadFlag() || ReadPort()) return;
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
        else if (m_name == "--date")
            ReadDate();
    }

    bool ReadFlag() {
        if (m_name == "--stay")
            m_options.stay = true;
        else if (m_name == "--verbose")
            m_options.verbose = true;
        else if (m_name == "--help" || m_name == "-h")
            m_options.help = true;
        else if (m_name == "--version")
            m_options.version = true;
        else
            return false;
        return true;
    }

    bool ReadPort() {
        std::optional<uint16_t>* port = m_name == "--level1-port"   ? &m_options.level1Port
                                        : m_name == "--lookup-port" ? &m_options.lookupPort
                                        : m_name == "--admin-port"  ? &m_options.adminPort
                                                                    : nullptr;
        if (port) *port = static_cast<uint16_t>(Number(UINT16_MAX));
        return port != nullptr;
    }

    void ReadDate() {
        m_options.date = static_cast<PackedDate>(Number(99'999'999));
        if (m_options.error.empty() && !IsPackedDate(m_options.date)) Complain("a day such as 20240131");
    }

    uint64_t Number(uint64_t most, uint64_t least = 0) {
        if (!m_inline && m_next < m_arguments.size()) m_inline = m_arguments[m_next++];
        const std::string_view text = m_inline.value_or("");
        uint64_t value = 0;
        const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (text.empty() || status != std::errc() || end != text.data() + text.size() || value < least || value > most)
            Complain(fmt::format("a whole number from {} to {}", least, most));
        return value;
    }

    void Complain(std::string_view wanted) {
        m_options.error = fmt::format("{}: \"{}\" is not {}", m_name, m_inline.value_or(""), wanted);
    }

    std::span<const std::string> m_arguments;
    SOptions& m_options;
    size_t m_next = 0;
    std::string_view m_name;
    std::optional<std::string_view> m_inline;
};

} // namespace

SOptions ReadOptions(std::span<const std::string> arguments) {
    SOptions options;
    CReader(arguments, options).ReadAll();
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
  --limit N           symbols watched at once by all clients (default 2000)
  --seed N            another market; the same number gives the same one again
  --date YYYYMMDD     the day on which the simulation starts (default 20240131)
  --stay              keep running when the last client has gone
  --linger SECONDS    how long to wait for another client otherwise (default 5)
  --queue KB          what may wait for a slow client before its updates are
                      folded into the newest of each symbol (default 1024)
  --verbose           one line of figures a second on standard error
  --level1-port N     ports other than those of the settings; 0 takes a free one
  --lookup-port N
  --admin-port N
  --help, --version

The ports served are printed as one line. When they are already served, the
program says so and ends with status 0. Other arguments are ignored.
)";
}

} // namespace vx::sim
