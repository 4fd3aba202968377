// SPDX-License-Identifier: MIT
#include "endtoend/LoopbackFeed.h"

#include "LinesInput.h"
#include "base/fields/QuoteFields.h"

#include <fmt/format.h>

#include <algorithm>
#include <arpa/inet.h>
#include <cstdio>
#include <fstream>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace vx::bench {

namespace {

constexpr int64_t kSecond = 1'000'000'000;
constexpr int64_t kIdleWait = 5'000'000;
constexpr int kSendBuffer = 262144;
constexpr uint64_t kMostLinesOfSend = 4096;
constexpr const char* kStampLow = "1111.11";
constexpr const char* kStampHigh = "8888.88";

using Fields = std::initializer_list<std::pair<size_t, std::string_view>>;

std::string Line(char kind, std::string_view symbol, Fields fields) {
    std::array<std::string_view, kUpdateFieldCount> texts{symbol};
    for (const auto& [slot, text] : fields) texts[slot] = text;
    std::string line{kind, ','};
    for (const std::string_view text : texts) line.append(text).append(",");
    return line + "\n";
}

std::string Summary(std::string_view symbol) {
    return Line('P', symbol,
                {{UpdateSlot("Last"), "250.25"},
                 {UpdateSlot("Change"), "1.25"},
                 {UpdateSlot("Percent Change"), "0.005"},
                 {UpdateSlot("Total Volume"), "1200300"},
                 {UpdateSlot("Bid"), "250.20"},
                 {UpdateSlot("Ask"), "250.30"},
                 {UpdateSlot("Bid Size"), "300"},
                 {UpdateSlot("Ask Size"), "500"},
                 {UpdateSlot("High"), "252.00"},
                 {UpdateSlot("Low"), "248.50"},
                 {UpdateSlot("Open"), "249.10"},
                 {UpdateSlot("Close"), "249.00"},
                 {UpdateSlot("Spread"), "0.10"},
                 {UpdateSlot("VWAP"), "250.0101"},
                 {UpdateSlot("Last Time"), "09:30:00.000000"},
                 {UpdateSlot("Message Contents"), "Cbaohlc"}});
}

// The same lines, each of any of the symbols.
std::string SpreadEvenly(const SLines& lines) {
    test::CRandom random(1);
    std::string file;
    file.reserve(lines.file.size() + lines.file.size() / 16);
    for (size_t at = 0, end; at < lines.file.size(); at = end + 1) {
        end = lines.file.find('\n', at);
        const size_t fields = lines.file.find(',', at + 2); // After "Q," and the symbol.
        file.append("Q,").append(lines.symbols[random.Below(static_cast<uint32_t>(lines.symbols.size()))]);
        file.append(lines.file, fields, end + 1 - fields);
    }
    return file;
}

void SendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return;
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
}

} // namespace

CLoopbackFeed::CLoopbackFeed(size_t symbols, bool evenly)
    : m_symbols(Lines(symbols - 1).symbols),
      m_file(evenly ? SpreadEvenly(Lines(symbols - 1)) : Lines(symbols - 1).file), m_offsets{0} {
    for (size_t at = 0; (at = m_file.find('\n', at)) != std::string::npos;) m_offsets.push_back(++at);
    for (const EPort port : {kAdmin, kLookup, kLevel1}) {
        const int listener = m_listeners[port] = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener, 8) != 0 ||
            getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
            throw std::runtime_error("no port on loopback");
        m_ports[port] = ntohs(address.sin_port);
    }
    m_thread = std::thread([this] { Run(); });
}

CLoopbackFeed::~CLoopbackFeed() {
    m_stop = true;
    m_thread.join();
    for (const int listener : m_listeners) close(listener);
    for (const SPeer& peer : m_peers) close(peer.socket);
}

uint64_t CLoopbackFeed::BytesUnread() const {
    uint64_t bytes = 0;
    std::ifstream table("/proc/net/tcp");
    for (std::string row; std::getline(table, row);) {
        unsigned local = 0, remote = 0, sending = 0, received = 0;
        if (std::sscanf(row.c_str(), " %*d: %*x:%x %*x:%x %*x %x:%x", &local, &remote, &sending, &received) != 4 ||
            remote == 0)
            continue;
        if (local == Port(kLevel1)) bytes += sending;
        if (remote == Port(kLevel1)) bytes += received;
    }
    return bytes;
}

void CLoopbackFeed::Run() {
    prctl(PR_SET_TIMERSLACK, 1);
    while (!m_stop) {
        const int64_t now = Now();
        if (now >= m_nextStatus) {
            m_nextStatus = now + kSecond;
            for (const SPeer& peer : m_peers)
                if (peer.port == kAdmin)
                    SendAll(peer.socket, "S,STATS,127.0.0.1,60002,100000,0,1,2,3,4,20240131 09:30:05,1/31/2024 9:30:05 "
                                         "AM,Connected,1.8.3.0,ABCD,0.5,1.5,2.5,3.5,4.5,5.5,\r\n");
        }
        Schedule(now);
        if (m_level1 >= 0) SendWhatIsDue();
        Wait();
    }
}

void CLoopbackFeed::Wait() {
    std::vector<pollfd> polled;
    for (const int listener : m_listeners) polled.push_back({listener, POLLIN, 0});
    for (const SPeer& peer : m_peers)
        polled.push_back({peer.socket,
                          static_cast<short>(peer.socket == m_level1 && !m_out.empty() ? POLLIN | POLLOUT : POLLIN),
                          0});
    const int64_t now = Now();
    const int64_t left = std::clamp<int64_t>((m_pace.sends != 0 ? m_nextTick : now + kIdleWait) - now, 0, kIdleWait);
    const timespec timeout{0, left};
    if (ppoll(polled.data(), polled.size(), &timeout, nullptr) <= 0) return;
    for (size_t i = polled.size(); i-- > m_listeners.size();)
        if (const size_t peer = i - m_listeners.size(); (polled[i].revents & ~POLLOUT) != 0 && !Hear(m_peers[peer])) {
            close(polled[i].fd);
            if (polled[i].fd == m_level1) m_level1 = -1;
            m_peers.erase(m_peers.begin() + static_cast<ptrdiff_t>(peer));
        }
    for (const EPort port : {kAdmin, kLookup, kLevel1})
        if (polled[port].revents != 0) Accept(port);
}

void CLoopbackFeed::Accept(EPort port) {
    const int peer = accept4(m_listeners[port], nullptr, nullptr, SOCK_CLOEXEC);
    if (peer < 0) return;
    const int on = 1;
    setsockopt(peer, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    m_peers.push_back({peer, port, {}});
    if (port == kAdmin) m_nextStatus = 0;
    if (port != kLevel1) return;
    setsockopt(peer, SOL_SOCKET, SO_SNDBUF, &kSendBuffer, sizeof kSendBuffer);
    SendAll(peer, "S,IP,127.0.0.1,60002\r\n");
    m_level1 = peer;
}

bool CLoopbackFeed::Hear(SPeer& peer) {
    std::array<char, 65536> block;
    const auto count = recv(peer.socket, block.data(), block.size(), MSG_DONTWAIT);
    if (count <= 0) return false;
    peer.heard.append(block.data(), static_cast<size_t>(count));
    size_t begin = 0;
    for (size_t end; (end = peer.heard.find('\n', begin)) != std::string::npos; begin = end + 1)
        Answer(peer, std::string_view(peer.heard).substr(begin, end - begin));
    peer.heard.erase(0, begin);
    return true;
}

void CLoopbackFeed::Answer(const SPeer& peer, std::string_view line) {
    if (peer.port == kLookup && line.starts_with("SLM")) {
        std::string markets;
        for (int id = 0; id < 256; ++id) markets += fmt::format("{0},M{0},Market {0},1,EQ\r\n", id);
        SendAll(peer.socket, markets + "!ENDMSG!\r\n");
    } else if (peer.port == kLookup && line.starts_with("SST")) {
        SendAll(peer.socket, "1,EQUITY,Equity\r\n!ENDMSG!\r\n");
    } else if (peer.port == kLookup && line.starts_with("NSC")) {
        SendAll(peer.socket, "LNewsCounts,!ENDMSG!,\r\n");
    } else if (peer.port == kLevel1 && line.starts_with("w") && ++m_watched == m_symbols.size() + 1) {
        m_extra = Summary(kProbe);
        for (const std::string& symbol : m_symbols) m_extra += Summary(symbol);
    }
}

// What becomes due by the clock, whatever the socket takes.
void CLoopbackFeed::Schedule(int64_t now) {
    if (const SPace wanted = m_wanted; !(wanted == m_pace)) {
        m_pace = wanted;
        m_ticks = 0;
        m_paceBegan = m_nextTick = now;
        m_dueBefore = m_due;
    }
    while (m_pace.sends != 0 && m_nextTick <= now) {
        ++m_ticks;
        m_due = m_dueBefore + m_ticks * m_pace.lines / m_pace.sends;
        m_nextTick = m_paceBegan + static_cast<int64_t>(m_ticks * kSecond / m_pace.sends);
    }
    if (m_stampWanted.exchange(false)) {
        m_stampIsHigh = !m_stampIsHigh;
        m_extra =
            Line('Q', kProbe,
                 {{UpdateSlot("Last"), m_stampIsHigh ? kStampHigh : kStampLow}, {UpdateSlot("Message Contents"), "C"}});
        m_stampedAt = now;
    }
}

// Straight from the generated lines: what is sent is not copied here.
std::string_view CLoopbackFeed::NextBytes() {
    if (!m_extra.empty()) return m_extraOut = std::exchange(m_extra, {});
    if (m_lines == m_due) return {};
    const size_t count = m_offsets.size() - 1;
    const size_t first = m_lines % count;
    const size_t lines = std::min({m_due - m_lines, count - first, m_pace.sends < m_pace.lines ? kMostLinesOfSend : 1});
    m_lines += lines;
    return std::string_view(m_file).substr(m_offsets[first], m_offsets[first + lines] - m_offsets[first]);
}

void CLoopbackFeed::SendWhatIsDue() {
    for (;;) {
        if (m_out.empty()) m_out = NextBytes();
        if (m_out.empty()) break;
        const auto sent = send(m_level1, m_out.data(), m_out.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent <= 0) {
            ++m_refused;
            return;
        }
        ++m_sends;
        m_bytes += static_cast<uint64_t>(sent);
        m_out.remove_prefix(static_cast<size_t>(sent));
    }
    if (m_watched > m_symbols.size()) m_summariesSent = true;
}

} // namespace vx::bench
