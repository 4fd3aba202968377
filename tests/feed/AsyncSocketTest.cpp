// SPDX-License-Identifier: MIT
#include "feed/socket/StreamSocket.h"
#include "support/ScriptedFeed.h"

#include <gmock/gmock.h>

#include <functional>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

class CWatchedSocket final : public CZTLStreamSocket {
public:
    std::vector<int> connects, closes;
    std::vector<std::string> lines;
    std::function<void()> onLine;

    void ConnectTo(CScriptedPort& port) {
        ASSERT_TRUE(Create());
        EXPECT_THAT(Try("127.0.0.1", port.Number()), ElementsAre(0));
        ASSERT_TRUE(port.WaitForConnection());
    }
    /// The outcomes so far, this attempt's the last.
    const std::vector<int>& Try(const char* host, unsigned port) {
        const size_t before = connects.size();
        Connect(host, port);
        EXPECT_TRUE(WaitUntil([&] { return connects.size() > before; }));
        return connects;
    }
    bool Hears(size_t count) {
        return WaitUntil([&] { return lines.size() >= count; }) && lines.size() == count;
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

struct CAsyncSocketTest : testing::Test {
    CScriptedPort port;
    CWatchedSocket socket;

    // Whether a turn of the event loop finds nothing to do: a notifier that is on without need leaves no such turn.
    // Timers and bytes that are late, on a busy machine, only take single turns.
    static bool LoopRests() {
        TurnEventLoop(100);
        int turns = 0;
        while (turns < 10000 && TurnEventLoop(1) > 0) ++turns;
        return turns < 10000;
    }
};

} // namespace

TEST_F(CAsyncSocketTest, ErrorsHaveTheNumbersThatUsersKnow) {
    ASSERT_TRUE(socket.Create());
    EXPECT_FALSE(socket.Connect("127.0.0.1", FreePort()));
    EXPECT_FALSE(socket.Connect("127.0.0.1", 1));
    EXPECT_EQ(socket.GetLastError(), 10037);
    ASSERT_TRUE(WaitUntil([&] { return socket.connects.size() == 1; }));
    socket.Try("localhost", 1);
    EXPECT_THAT(socket.Try("127.0.0.1", 65536 + 80), ElementsAre(10061, 11001, 10049));
    socket.Connect("nowhere", 1);
    socket.Close();
    EXPECT_TRUE(LoopRests());
    EXPECT_EQ(socket.connects.size(), 3u) << "a close drops the outcome that was under way";
}

TEST_F(CAsyncSocketTest, APeerThatLeavesIsTellableAndQuiet) {
    socket.ConnectTo(port);
    port.Says("A\nhalf a li");
    port.HangsUp();
    ASSERT_TRUE(WaitUntil([&] { return socket.closes.size() == 1; }));
    EXPECT_THAT(socket.lines, ElementsAre("A"));
    EXPECT_FALSE(socket.IsConnected());
    EXPECT_TRUE(LoopRests());

    CScriptedPort rude;
    CWatchedSocket victim;
    victim.ConnectTo(rude);
    rude.Resets();
    ASSERT_TRUE(WaitUntil([&] { return victim.closes.size() == 1; }));
    EXPECT_EQ(victim.SendText("x"), -1);
    EXPECT_EQ(victim.LastError(), 10053);
    EXPECT_TRUE(LoopRests());
    EXPECT_EQ(socket.closes[0] + victim.closes[0], 10054);
}

TEST_F(CAsyncSocketTest, APeerThatNeverReadsMakesSendsShortAndNothingSpins) {
    port.NeverReads();
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
    EXPECT_TRUE(socket.Hears(1));
}

TEST_F(CAsyncSocketTest, ALineWithoutEndStopsTheConnectionWithoutSpinning) {
    socket.ConnectTo(port);
    port.Says(std::string(200000, 'x') + "\nQ\n");
    ASSERT_TRUE(
        WaitUntil([&] { return socket.Stats().bytesReceived.value == 2 * 65535u && socket.LastReceiveCount() == 0; }));
    EXPECT_TRUE(LoopRests());
    EXPECT_THAT(socket.lines, IsEmpty());
    EXPECT_THAT(socket.closes, IsEmpty());
}

TEST_F(CAsyncSocketTest, AFloodLeavesTimersTheirTurn) {
    socket.ConnectTo(port);
    std::string flood;
    while (flood.size() < 8000000) flood += "Q,IBM,1.25,2.25,\r\n";
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++turns; });
    timer.start(0);
    port.Says(flood);
    ASSERT_TRUE(socket.Hears(flood.size() / 18));
    // Each turn may take a few receives of 64 KiB, never more.
    EXPECT_GE(turns, 8000000 / 65535 / CAsyncSocket::kReceivesPerTurn);
}

TEST_F(CAsyncSocketTest, AnEventLoopInsideAHandlerNeitherSpinsNorReenters) {
    socket.ConnectTo(port);
    int depth = 0;
    socket.onLine = [&] {
        EXPECT_EQ(++depth, 1);
        if (socket.lines.size() == 1) port.Says("B\n");
        EXPECT_TRUE(LoopRests());
        --depth;
    };
    port.Says("A\n");
    EXPECT_TRUE(socket.Hears(2));
}

TEST_F(CAsyncSocketTest, AHandlerMayDeleteTheSocketInItsNotification) {
    auto* const gone = new CWatchedSocket;
    gone->ConnectTo(port);
    int lines = 0;
    gone->onLine = [&lines, gone] {
        ++lines;
        delete gone;
    };
    port.Says("A\nB\n");
    EXPECT_TRUE(WaitUntil([&] { return lines == 1; }));
    TurnEventLoop(20);
    EXPECT_EQ(lines, 1);
}
