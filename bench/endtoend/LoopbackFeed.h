// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace vx::bench {

/// Nanoseconds of a clock that never goes back.
inline int64_t Now() { return std::chrono::steady_clock::now().time_since_epoch().count(); }

/// How much is sent; as many sends as lines: each line in a send of its own. No sends: nothing.
struct SPace {
    uint32_t lines = 0; ///< a second
    uint32_t sends = 0; ///< a second
    bool operator==(const SPace&) const = default;
};

/// What was sent since the feed began, and what waits.
struct SSent {
    uint64_t lines = 0;
    uint64_t sends = 0;
    uint64_t bytes = 0;
    uint64_t due = 0;     ///< Lines whose time has come.
    uint64_t refused = 0; ///< Sends for which the socket had no room.
};

/// The three ports of a feed client on loopback, which sends made-up update lines at a given pace, by the clock and not
/// by what the program takes: what it does not take waits here.
///
/// Shape   the first symbol is the probe, of which no line comes unless Stamp asks for it; the others are those of the
///         line generator, with the most traffic in the first ones unless it is spread evenly. A summary of each is
///         sent when all are watched.
/// Thread  one of its own sends and answers; the methods are for another one
class CLoopbackFeed {
public:
    enum EPort { kAdmin, kLookup, kLevel1 };
    static constexpr const char* kProbe = "PROBE.X";

    CLoopbackFeed(size_t symbols, bool evenly);
    ~CLoopbackFeed();
    CLoopbackFeed(const CLoopbackFeed&) = delete;
    CLoopbackFeed& operator=(const CLoopbackFeed&) = delete;

    uint16_t Port(EPort port) const { return m_ports[port]; }
    /// Whether the program watches all symbols and their summaries have left.
    bool IsWatched() const { return m_summariesSent; }

    void SetPace(SPace pace) { m_wanted = pace; }
    /// Of an update line, on average.
    double BytesALine() const { return static_cast<double>(m_file.size()) / static_cast<double>(m_offsets.size() - 1); }
    SSent Sent() const { return {m_lines, m_sends, m_bytes, m_due, m_refused}; }
    /// Bytes in the sockets between the two programs that the other one has not read, by what the system says.
    uint64_t BytesUnread() const;

    /// Sends the probe's other Last with the next lines.
    void Stamp() { m_stampedAt = 0, m_stampWanted = true; }
    /// When it was due, 0 before.
    int64_t StampedAt() const { return m_stampedAt; }

private:
    struct SPeer {
        int socket;
        EPort port;
        std::string heard;
    };
    void Run();
    void Wait();
    void Accept(EPort port);
    bool Hear(SPeer& peer);
    void Answer(const SPeer& peer, std::string_view line);
    void Schedule(int64_t now);
    void SendWhatIsDue();
    std::string_view NextBytes();

    const std::vector<std::string>& m_symbols;
    const std::string m_file;
    std::vector<size_t> m_offsets; ///< Where each line of the file begins, and its end.
    std::array<int, 3> m_listeners{};
    std::array<uint16_t, 3> m_ports{};
    std::vector<SPeer> m_peers;
    int m_level1 = -1;
    size_t m_watched = 0;
    std::string m_extra;    ///< Summaries or a stamp, to be sent before the next lines.
    std::string m_extraOut; ///< Those that m_out is of.
    std::string_view m_out; ///< What is left of the present send.
    bool m_stampIsHigh = false;
    SPace m_pace;
    int64_t m_paceBegan = 0, m_nextTick = 0, m_nextStatus = 0;
    uint64_t m_dueBefore = 0, m_ticks = 0;

    std::atomic<SPace> m_wanted{};
    std::atomic<bool> m_stop = false, m_summariesSent = false, m_stampWanted = false;
    std::atomic<int64_t> m_stampedAt = 0;
    std::atomic<uint64_t> m_lines = 0, m_sends = 0, m_bytes = 0, m_due = 0, m_refused = 0;
    std::thread m_thread;
};

} // namespace vx::bench
