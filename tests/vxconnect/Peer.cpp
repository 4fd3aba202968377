// SPDX-License-Identifier: MIT
#include "vxconnect/Peer.h"

#include "base/Text.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vx::sim {

void NeedEventLoop() {
    static int argc = 1;
    static char name[] = "vxconnect_tests";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
}

bool WaitUntil(const std::function<bool()>& condition) {
    constexpr int kAbsurdMs = 20000, kLookAgainMs = 2;
    QElapsedTimer elapsed;
    elapsed.start();
    QTimer wake; // The condition may depend on a socket that the event loop does not know.
    wake.start(kLookAgainMs);
    while (!condition()) {
        if (elapsed.elapsed() > kAbsurdMs) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

CPeer::CPeer(uint16_t port) : m_socket(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) m_closed = true;
    fcntl(m_socket, F_SETFL, O_NONBLOCK);
}

CPeer::~CPeer() { close(m_socket); }

size_t CPeer::Send(std::string_view bytes) {
    const ssize_t count = send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    return count > 0 ? static_cast<size_t>(count) : 0;
}

void CPeer::Read() {
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = recv(m_socket, block.data(), block.size(), 0);
        if (count == 0) m_closed = true;
        if (count <= 0) return;
        m_text.append(block.data(), static_cast<size_t>(count));
    }
}

void CPeer::EndSending() { shutdown(m_socket, SHUT_WR); }

void CPeer::Reset() {
    const linger hard{1, 0};
    setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
    close(m_socket);
    m_socket = -1;
}

std::string CPeer::TakeLine(std::string_view beginning) {
    std::string found = "(none)";
    WaitUntil([&] {
        Read();
        for (size_t begin = 0, end; (end = m_text.find("\r\n", begin)) != std::string::npos; begin = end + 2) {
            if (m_text.compare(begin, beginning.size(), beginning) != 0) continue;
            found = m_text.substr(begin, end - begin);
            m_text.erase(0, end + 2);
            return true;
        }
        return false;
    });
    return found;
}

std::vector<std::string> CPeer::TakeLines() {
    std::vector<std::string> lines;
    size_t begin = 0;
    for (size_t end; (end = m_text.find("\r\n", begin)) != std::string::npos; begin = end + 2)
        lines.push_back(m_text.substr(begin, end - begin));
    m_text.erase(0, begin);
    return lines;
}

bool IsClosed(CPeer& peer) {
    return WaitUntil([&] {
        peer.Read();
        return peer.IsClosedByServer();
    });
}

std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> out;
    for (const std::string_view word : SplitCountingTail(text, ' ')) out.emplace_back(word);
    return out;
}

std::vector<std::string> Fields(std::string_view line) {
    std::vector<std::string> out;
    for (const std::string_view field : SplitTerminated(line.substr(2), ',')) out.emplace_back(field);
    return out;
}

void CMergedRecord::Merge(std::string_view line) {
    const std::vector<std::string> fields = Fields(line);
    ASSERT_EQ(fields.size(), kUpdateFieldCount) << line;
    for (size_t i = 0; i < fields.size(); ++i)
        if (!fields[i].empty()) m_fields[i] = fields[i];
}

std::vector<std::string> CMergedRecord::DifferencesTo(std::string_view line) const {
    std::vector<std::string> out;
    const std::vector<std::string> fields = Fields(line);
    for (size_t i = 0; i < kUpdateFieldCount; ++i)
        if (static_cast<EField>(i) != EField::MessageContents && (i >= fields.size() || fields[i] != m_fields[i]))
            out.push_back(std::string(kUpdateFields[i].name) + ": \"" + m_fields[i] + "\"");
    return out;
}

ServerTest::ServerTest() {
    NeedEventLoop();
    m_options.level1Port = m_options.lookupPort = m_options.adminPort = uint16_t{0};
}

ServerTest::~ServerTest() = default;

CServer& ServerTest::Start() { return Start(nullptr); }

CServer& ServerTest::Start(std::unique_ptr<CSource> source) {
    m_server = std::make_unique<CServer>(m_options, std::move(source));
    EXPECT_EQ(m_server->Start(), CServer::EStart::Serving) << m_server->Message();
    return *m_server;
}

std::unique_ptr<CPeer> ServerTest::Level1Peer(std::string_view watches) {
    auto peer = std::make_unique<CPeer>(m_server->Level1Port());
    std::string names;
    for (const SUpdateField& field : kUpdateFields)
        names += std::string(names.empty() ? "" : ",") + std::string(field.name);
    peer->Send("S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,Tests\nS,SELECT UPDATE FIELDS," + names + "\n\n");
    EXPECT_EQ(peer->TakeLine("S,IP,"), "S,IP,127.0.0.1," + std::to_string(m_server->Level1Port()));
    peer->Send("S,NEWSON\r\n");
    peer->Send(watches);
    return peer;
}

} // namespace vx::sim
