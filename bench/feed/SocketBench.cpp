// SPDX-License-Identifier: MIT
// What one line costs the receiver from the socket to the handler, beside a bare receive loop that only looks for the
// line ends.

#include "feed/socket/ClientAppSocket.h"
#include "feed/socket/FeedLog.h"
#include "feed/socket/FeedOwner.h"
#include "feed/socket/Ports.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

using namespace vx;

namespace {

constexpr int kPairs = 31;
constexpr int kWarmUps = 2;
constexpr int kRounds = 2; // How often the stream is sent in one run.
constexpr double kBar = 1.2;

// Update lines as a feed sends them: 69 fields of which some are filled, 60 % quotes, 30 % trades, 10 % heavier.
struct SStream {
    std::string bytes;
    size_t lines = 0;

    explicit SStream(size_t count) {
        std::mt19937 random(20240131);
        for (; lines < count; ++lines) {
            const uint32_t kind = random() % 10;
            const uint32_t filled = kind < 6 ? 8 : kind < 9 ? 20 : 40;
            bytes += "Q,SYM" + std::to_string(random() % 1000);
            for (uint32_t field = 1; field < 69; ++field) {
                bytes += ',';
                if (random() % 69 < filled)
                    bytes += std::to_string(random() % 100000) + "." + std::to_string(random() % 100);
            }
            bytes += ",\r\n";
        }
    }
};

const SStream& Stream() {
    static const SStream stream(400000);
    return stream;
}

size_t LinesInAll() { return Stream().lines * kRounds; }

double ThreadCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Sends the whole stream to the first who connects, from a thread of its own.
class CSender {
public:
    CSender() {
        m_listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        if (bind(m_listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(m_listener, 1) != 0 ||
            getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
            std::abort();
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this] { Run(); });
    }
    ~CSender() {
        m_thread.join();
        close(m_listener);
    }
    CSender(const CSender&) = delete;
    CSender& operator=(const CSender&) = delete;
    uint16_t Port() const { return m_port; }

private:
    static void SendAll(int peer, std::string_view bytes) {
        while (!bytes.empty()) {
            const auto count = send(peer, bytes.data(), std::min<size_t>(bytes.size(), 262144), MSG_NOSIGNAL);
            if (count < 0) std::abort();
            bytes.remove_prefix(static_cast<size_t>(count));
        }
    }
    void Run() const {
        const int peer = accept(m_listener, nullptr, nullptr);
        for (int round = 0; round < kRounds; ++round) SendAll(peer, Stream().bytes);
        shutdown(peer, SHUT_WR);
        char rest;
        while (recv(peer, &rest, 1, 0) > 0) {
        }
        close(peer);
    }

    int m_listener;
    uint16_t m_port = 0;
    std::thread m_thread;
};

// The limit: blocking receives of 64 KiB and memchr from line end to line end.
size_t ReceiveBare(uint16_t port) {
    const int peer = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(peer, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) std::abort();
    std::vector<char> buffer(65536);
    size_t lines = 0;
    for (;;) {
        const auto count = recv(peer, buffer.data(), buffer.size(), 0);
        if (count <= 0) break;
        const char* at = buffer.data();
        const char* const end = at + count;
        while ((at = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at))))) {
            ++lines;
            if (++at == end) break;
        }
    }
    close(peer);
    return lines;
}

class CCountingOwner final : public CFeedOwner {
public:
    size_t lines = 0;
    size_t bytes = 0;

    void OnUpdateMessage(std::string_view line) override { bytes += line.size(), ++lines; }
    void ReceiveSystemLine(std::string_view) override {}
    void ReceiveTimeLine(std::string_view) override {}
    void ReceiveFundamentalLine(std::string_view) override {}
    void PostMessageBox(SMessageBox) override { std::abort(); }
};

size_t ReceiveByProduct(uint16_t port) {
    CCountingOwner owner;
    CZantrelClientAppSocket socket(0);
    socket.SetOwner(&owner);
    socket.SetLog(&FeedLogOf(kLevel1Socket));
    if (!socket.Create()) std::abort();
    socket.Connect("127.0.0.1", port);
    QEventLoop loop;
    while (owner.lines < LinesInAll()) loop.processEvents(QEventLoop::WaitForMoreEvents);
    return owner.bytes > 0 ? owner.lines : 0;
}

double Seconds(size_t (*receive)(uint16_t)) {
    CSender sender;
    const double before = ThreadCpuSeconds();
    const size_t lines = receive(sender.Port());
    const double seconds = ThreadCpuSeconds() - before;
    if (lines != LinesInAll()) std::abort();
    return seconds;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

// Both take turns, so that what else the machine does meets both; each pair gives one ratio.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Stream(); // Made before anything is timed.
    std::vector<double> bare;
    std::vector<double> product;
    std::vector<double> ratios;
    for (int pair = 0; pair < kPairs + kWarmUps; ++pair) {
        const bool bareFirst = pair % 2 == 0;
        const double first = Seconds(bareFirst ? ReceiveBare : ReceiveByProduct);
        const double second = Seconds(bareFirst ? ReceiveByProduct : ReceiveBare);
        if (pair < kWarmUps) continue;
        bare.push_back(bareFirst ? first : second);
        product.push_back(bareFirst ? second : first);
        ratios.push_back(product.back() / bare.back());
    }
    const double nsPerLine = 1e9 / static_cast<double>(LinesInAll());
    std::sort(ratios.begin(), ratios.end());
    const double median = Median(ratios);
    std::printf("%zu lines of %zu bytes, %d pairs; CPU of the receiving thread per line, median\n", LinesInAll(),
                Stream().bytes.size() / Stream().lines, kPairs);
    std::printf("bare recv and memchr %6.1f ns\nsocket to handler    %6.1f ns\n", Median(bare) * nsPerLine,
                Median(product) * nsPerLine);
    std::printf("ratio, median of the pairs %.2f (bar %.2f), quartiles %.2f and %.2f\n", median, kBar,
                ratios[ratios.size() / 4], ratios[ratios.size() * 3 / 4]);
    return median <= kBar ? 0 : 1;
}
