// SPDX-License-Identifier: MIT
#include "feed/socket/ClientAppSocket.h"

#include "feed/socket/FeedOwner.h"
#include "support/FakeClock.h"
#include "support/ReadsSocket.h"
#include "support/ScriptedFeed.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

class COwner final : public CFeedOwner {
public:
    std::vector<std::string> updates, unknown;
    std::vector<SMessageBox> boxes;

    void OnUpdateMessage(std::string_view line) override { updates.emplace_back(line); }
    void OnUnknownMessage(std::string_view line) override { unknown.emplace_back(line); }
    void ReceiveSystemLine(std::string_view) override {}
    void ReceiveTimeLine(std::string_view) override {}
    void ReceiveFundamentalLine(std::string_view) override {}
    void PostMessageBox(SMessageBox box) override { boxes.push_back(std::move(box)); }
};

struct CZantrelClientAppSocketTest : testing::Test {
    COwner owner;
    CFakeClock clock;
    CZantrelClientAppSocket socket{2};

    CZantrelClientAppSocketTest() {
        socket.SetOwner(&owner);
        socket.Create();
    }
};

} // namespace

TEST_F(CZantrelClientAppSocketTest, TheFirstByteChoosesTheHandler) {
    CReadsSocket<CZantrelClientAppSocket> reads(0u);
    reads.SetOwner(&owner);
    reads.Read("E,x\r\n\x80,y\n\xFF\nQ,IBM,\xE9\n1\n");
    EXPECT_THAT(owner.unknown, ElementsAre("E,x", "\x80,y", "\xFF", "1"));
    EXPECT_THAT(owner.updates, ElementsAre("Q,IBM,\xE9"));
}

TEST_F(CZantrelClientAppSocketTest, AFailedConnectIsTriedAgainAndThenShownOnce) {
    socket.SetHandshake({"6.2", "VxWatchlist", "", ""});
    socket.Connect("127.0.0.1", FreePort());
    ASSERT_TRUE(WaitUntil([&] { return !owner.boxes.empty(); }));
    TurnEventLoop(50);
    EXPECT_THAT(clock.sleeps, ElementsAre(250, 250));
    ASSERT_THAT(owner.boxes, SizeIs(1));
    EXPECT_EQ(owner.boxes[0].text, "VxWatchlist is unable to connect to Zantrel.\nPlease restart the application.\n"
                                   "If the error persists, please contact customer service.\nError Code: 10061");
    EXPECT_EQ(socket.Stats().status, "Not Connected");
}

TEST_F(CZantrelClientAppSocketTest, APortThatIsLateIsReachedAndItsEndChangesNothing) {
    const uint16_t number = FreePort();
    QTcpServer late;
    clock.onSleep = [&] {
        if (clock.sleeps.size() == 2) late.listen(QHostAddress::LocalHost, number);
    };
    socket.Connect("127.0.0.1", number);
    ASSERT_TRUE(WaitUntil([&] { return socket.IsConnected() && late.hasPendingConnections(); }));
    EXPECT_THAT(clock.sleeps, SizeIs(2));
    QTcpSocket* const peer = late.nextPendingConnection();
    peer->write("Q,late\nQ,half a li");
    peer->disconnectFromHost();
    ASSERT_TRUE(WaitUntil([&] { return !socket.IsConnected(); }));
    EXPECT_THAT(owner.updates, ElementsAre("Q,late"));
    socket.Close();
    TurnEventLoop(50);
    EXPECT_EQ(socket.Stats().status, "Connected");
    EXPECT_FALSE(late.hasPendingConnections());
    EXPECT_THAT(clock.sleeps, SizeIs(2));
}
