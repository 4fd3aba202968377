#include "feed/StreamSocket.h"
#include "support/EventLoop.h"
#include "support/ScriptedFeed.h"

#include <QEventLoop>

#include <gmock/gmock.h>

#include <functional>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CWatchedSocket final : public CZTLStreamSocket {
public:
    std::vector<int> connects;
    std::vector<int> closes;
    std::vector<std::string> lines;
    std::function<void()> onLine;

    void ConnectTo(CScriptedPort& port) {
        ASSERT_TRUE(Create());
        Connect("127.0.0.1", port.Number());
        ASSERT_TRUE(WaitUntil([this] { return connects.size() == 1; }));
        ASSERT_EQ(connects[0], 0);
        ASSERT_TRUE(port.WaitForConnection());
    }

protected:
    void OnConnect(int error) override {
        CZTLStreamSocket::OnConnect(error);
        connects.push_back(error);
    }
    void OnClose(int error) override {
        CZTLStreamSocket::OnClose(error);
        closes.push_back(error);
    }
    void OnMessage(std::string_view line) override {
        lines.emplace_back(line);
        if (onLine) onLine();
    }
};

// Whether the event loop finds its rest: a notifier that is on without need would keep it busy in all the turns.
bool LoopRests() {
    TurnEventLoop(100);
    return TurnEventLoop(100) == 0;
}

} // namespace

TEST(AsyncSocket, CarriesBytesBothWays) {
    CScriptedPort port;
    CWatchedSocket socket;
    socket.ConnectTo(port);
    EXPECT_TRUE(socket.IsConnected());
    EXPECT_EQ(socket.SendText("hello\n"), 6);
    EXPECT_EQ(socket.Stats().bytesSent.value, 6u);
    EXPECT_TRUE(port.Heard("hello\n"));
    port.Says("A\r\nB\r\nC");
    ASSERT_TRUE(WaitUntil([&] { return socket.lines.size() == 2; }));
    port.Says("D\n");
    ASSERT_TRUE(WaitUntil([&] { return socket.lines.size() == 3; }));
    EXPECT_THAT(socket.lines, ElementsAre("A", "B", "CD"));
    EXPECT_EQ(socket.Stats().bytesReceived.value, 2u * 9u);
    EXPECT_TRUE(LoopRests());
}

TEST(AsyncSocket, ErrorsHaveTheNumbersThatUsersKnow) {
    CWatchedSocket socket;
    EXPECT_FALSE(socket.Connect("127.0.0.1", 1));
    EXPECT_EQ(socket.GetLastError(), 10038);
    ASSERT_TRUE(socket.Create());
    EXPECT_EQ(socket.SendText("x"), -1);
    EXPECT_EQ(socket.LastError(), 10057);
    EXPECT_FALSE(socket.Connect("127.0.0.1", FreePort()));
    EXPECT_FALSE(socket.Connect("127.0.0.1", 1));
    EXPECT_EQ(socket.GetLastError(), 10037);
    EXPECT_EQ(socket.SendText("x"), -1) << "nothing is queued for a connection that does not stand";
    ASSERT_TRUE(WaitUntil([&] { return socket.connects.size() == 1; }));
    socket.Connect("localhost", 1);
    ASSERT_TRUE(WaitUntil([&] { return socket.connects.size() == 2; }));
    socket.Connect("127.0.0.1", 65536 + 80);
    ASSERT_TRUE(WaitUntil([&] { return socket.connects.size() == 3; }));
    socket.Connect("127.0.0.1", 0);
    ASSERT_TRUE(WaitUntil([&] { return socket.connects.size() == 4; }));
    EXPECT_THAT(socket.connects, ElementsAre(10061, 11001, 10049, 10061));
    EXPECT_TRUE(LoopRests());
}

TEST(AsyncSocket, AConnectAfterFailuresStands) {
    CWatchedSocket socket;
    ASSERT_TRUE(socket.Create());
    socket.Connect("127.0.0.1", FreePort());
    ASSERT_TRUE(WaitUntil([&] { return socket.connects.size() == 1; }));
    CScriptedPort port;
    socket.Connect("127.0.0.1", port.Number());
    ASSERT_TRUE(WaitUntil([&] { return socket.connects.size() == 2; }));
    port.Says("late\n");
    ASSERT_TRUE(WaitUntil([&] { return socket.lines.size() == 1; }));
    EXPECT_THAT(socket.connects, ElementsAre(10061, 0));
}

TEST(AsyncSocket, ACloseDropsTheOutcomeThatWasUnderWay) {
    CWatchedSocket socket;
    ASSERT_TRUE(socket.Create());
    socket.Connect("nowhere", 1);
    socket.Close();
    TurnEventLoop(20);
    EXPECT_THAT(socket.connects, IsEmpty());
    EXPECT_THAT(socket.closes, ElementsAre(0));
}

TEST(AsyncSocket, APeerThatLeavesIsTellableAndQuiet) {
    CScriptedPort port;
    CWatchedSocket socket;
    socket.ConnectTo(port);
    port.Says("A\nhalf a li");
    port.HangsUp();
    ASSERT_TRUE(WaitUntil([&] { return socket.closes.size() == 1; }));
    EXPECT_THAT(socket.lines, ElementsAre("A"));
    EXPECT_THAT(socket.closes, ElementsAre(0));
    EXPECT_FALSE(socket.IsConnected());
    EXPECT_TRUE(LoopRests());

    CScriptedPort rude;
    CWatchedSocket victim;
    victim.ConnectTo(rude);
    rude.Resets();
    ASSERT_TRUE(WaitUntil([&] { return victim.closes.size() == 1; }));
    EXPECT_THAT(victim.closes, ElementsAre(10054));
    EXPECT_EQ(victim.SendText("x"), -1);
    EXPECT_EQ(victim.LastError(), 10053);
    EXPECT_TRUE(LoopRests());
}

TEST(AsyncSocket, APeerThatNeverReadsMakesSendsShortAndNothingSpins) {
    CScriptedPort port;
    port.NeverReads();
    CWatchedSocket socket;
    socket.ConnectTo(port);
    const std::string block(100000, 'x');
    uint32_t sent = 0;
    int count = 0;
    for (int i = 0; i < 1000 && count >= 0; ++i) {
        count = socket.Send(block.data(), static_cast<int>(block.size()));
        if (count > 0) sent += static_cast<uint32_t>(count);
    }
    EXPECT_EQ(count, -1);
    EXPECT_EQ(socket.LastError(), 10035);
    EXPECT_EQ(socket.Stats().bytesSent.value, sent);
    EXPECT_TRUE(LoopRests());
    port.Says("still heard\n");
    EXPECT_TRUE(WaitUntil([&] { return socket.lines.size() == 1; }));
}

TEST(AsyncSocket, ALineWithoutEndStopsTheConnectionWithoutSpinning) {
    CScriptedPort port;
    CWatchedSocket socket;
    socket.ConnectTo(port);
    port.Says(std::string(200000, 'x') + "\nQ\n");
    ASSERT_TRUE(
        WaitUntil([&] { return socket.Stats().bytesReceived.value == 2 * 65535u && socket.LastReceiveCount() == 0; }));
    EXPECT_TRUE(LoopRests());
    EXPECT_THAT(socket.lines, IsEmpty());
    EXPECT_THAT(socket.closes, IsEmpty());
}

TEST(AsyncSocket, AFloodLeavesTimersTheirTurn) {
    CScriptedPort port;
    CWatchedSocket socket;
    socket.ConnectTo(port);
    std::string flood;
    while (flood.size() < 8000000) flood += "Q,IBM,1.25,2.25,\r\n";
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++turns; });
    timer.start(0);
    port.Says(flood);
    ASSERT_TRUE(WaitUntil([&] { return socket.lines.size() == flood.size() / 18; }));
    // Each turn may take a few receives of 64 KiB, never more.
    EXPECT_GE(turns, 8000000 / 65535 / CAsyncSocket::kReceivesPerTurn);
}

TEST(AsyncSocket, AnEventLoopInsideAHandlerNeitherSpinsNorReenters) {
    CScriptedPort port;
    CWatchedSocket socket;
    socket.ConnectTo(port);
    int depth = 0;
    int deepest = 0;
    int loops = 0;
    bool rested = false;
    socket.onLine = [&] {
        deepest = std::max(deepest, ++depth);
        if (++loops == 1) {
            port.Says("B\n");
            rested = LoopRests();
        }
        --depth;
    };
    port.Says("A\n");
    ASSERT_TRUE(WaitUntil([&] { return socket.lines.size() == 2; }));
    EXPECT_EQ(deepest, 1);
    EXPECT_TRUE(rested);
}

TEST(AsyncSocket, AHandlerMayDeleteTheSocketInItsNotification) {
    CScriptedPort port;
    auto* const socket = new CWatchedSocket;
    socket->ConnectTo(port);
    bool deleted = false;
    socket->onLine = [&] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            delete socket;
            deleted = true;
            loop.quit();
        });
        loop.exec();
    };
    QEventLoop outer;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &outer, [&] {
        if (deleted) outer.quit();
    });
    port.Says("A\nB\n");
    poll.start(1);
    outer.exec();
    TurnEventLoop(20);
    EXPECT_TRUE(deleted);
}
