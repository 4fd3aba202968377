// SPDX-License-Identifier: MIT
#include "feed/session/FeedSession.h"

#include "feed/socket/ClientAppSocket.h"
#include "support/FakeClock.h"
#include "support/MessageBoxes.h"
#include "support/ScriptedFeed.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

const std::string kHello = "S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,VxWatchlist\n";
const std::string kLevel1Hello = kHello + "S,SELECT UPDATE FIELDS,Symbol,Last\n\n";

class CSession final : public CFeedSession {
public:
    using CFeedSession::CFeedSession;

    int connected = 0, disconnected = 0, ready = 0;
    std::vector<std::string> system, updates;

    void OnSystemMessage(std::string_view line) override {
        system.emplace_back(line);
        if (HandleReadyLine(line)) ++ready;
    }
    void OnUpdateMessage(std::string_view line) override { updates.emplace_back(line); }

protected:
    void OnFeedConnected() override {
        ++connected;
        OpenDataPorts("Symbol,Last\n");
    }
    void OnFeedDisconnected() override { ++disconnected; }
};

struct CFeedSessionTest : testing::Test {
    CTempFolder folder;
    CRegistry registry{folder.Path()};
    CScriptedFeed feed;
    CMessageBoxes boxes;
    CSession session{registry};

    CFeedSessionTest() { Announce(feed.admin.Number(), feed.lookup.Number(), feed.level1.Number()); }

    void Announce(uint16_t admin, uint16_t lookup, uint16_t level1) {
        for (const auto& [name, port] : {std::pair{"AdminPort", admin}, {"LookupPort", lookup}, {"Level1Port", level1}})
            registry.WriteText(kStartupKey, name, std::to_string(port));
    }
    bool EndsAs(EFeedEnd end) {
        return WaitUntil([&] { return session.FeedEnd() == end; });
    }
    static void Box(CSession& of, const char* text) { of.PostMessageBox({text, "", EBoxButtons::Ok, EBoxIcon::None}); }
    bool ShowsBoxes(size_t count) {
        return WaitUntil([&] { return boxes.shown.size() == count; });
    }
    void BringUp() {
        session.OpenAdminPort();
        feed.admin.Says(StatusLine("Connected"));
        ASSERT_TRUE(feed.lookup.Heard(kHello));
        ASSERT_TRUE(feed.level1.Heard(kLevel1Hello));
    }
    void BringUpReady() {
        BringUp();
        feed.level1.Says("S,IP,127.0.0.1,5009\r\n");
        ASSERT_TRUE(feed.level1.Heard(kLevel1Hello + "S,NEWSON\r\n"));
        ASSERT_EQ(session.ready, 1);
    }
};

} // namespace

TEST_F(CFeedSessionTest, TheFirstConnectedStatusOpensTheDataPortsOnce) {
    session.OpenAdminPort();
    ASSERT_TRUE(feed.admin.Heard(kHello));
    feed.admin.Says("S,STATS,,,,,,,,,,,Connected,,,,,,,,\r\n"); // The text after the last comma is empty: 20 fields.
    feed.admin.Says(StatusLine("Not Connected"));
    ASSERT_TRUE(WaitUntil([&] { return session.disconnected == 1; }));
    EXPECT_EQ(session.connected, 0);
    feed.admin.Says(StatusLine("Connected") + StatusLine("Connected", 7, 3));
    ASSERT_TRUE(feed.lookup.Heard(kHello));
    ASSERT_TRUE(feed.level1.Heard(kLevel1Hello));
    EXPECT_EQ(session.connected, 1);
    EXPECT_EQ(session.Stats().symbolLimit, 7u);
    EXPECT_EQ(session.Stats().symbolsWatched, 3u);

    feed.admin.Says(StatusLine("Not Connected") + StatusLine("Resting") + StatusLine("Connected"));
    ASSERT_TRUE(WaitUntil([&] { return session.connected == 2; }));
    TurnEventLoop(50);
    EXPECT_EQ(session.disconnected, 2);
    EXPECT_EQ(feed.lookup.Connections() + feed.level1.Connections() + feed.admin.Connections(), 3);
    EXPECT_THAT(session.system, SizeIs(7)) << "every system line reaches the frame, whatever became of it";
}

TEST_F(CFeedSessionTest, AllOfAStatusLineIsKept) {
    session.ReceiveSystemLine(
        "S,STATS,host,-1,abc,12x,1,2,3,99999999999,20240131 09:30:05,never,Resting,a,b,1.5,x,-2,1e3,,7");
    const FeedStats& stats = session.Stats();
    EXPECT_EQ(stats.field2 + stats.status + stats.field13 + stats.field14, "hostRestingab");
    EXPECT_EQ(stats.symbolsWatched, 12u);
    EXPECT_THAT(stats.fields15To20, ElementsAre(1.5, 0, -2, 1000, 0, 7));
}

TEST_F(CFeedSessionTest, TheEndOfAConnectionIsKnownAlthoughItsStatusStays) {
    BringUpReady();
    EXPECT_EQ(session.FeedEnd(), EFeedEnd::None);
    feed.lookup.HangsUp();
    feed.admin.HangsUp();
    EXPECT_TRUE(EndsAs(EFeedEnd::Status));
    feed.level1.Resets();
    EXPECT_TRUE(EndsAs(EFeedEnd::Quotes));
}

TEST_F(CFeedSessionTest, AConnectionThatIsStuckHasEndedToo) {
    BringUpReady();
    feed.level1.Says(std::string(CZTLStreamSocket::kCapacity, 'Q'));
    EXPECT_TRUE(EndsAs(EFeedEnd::Quotes));
}

TEST_F(CFeedSessionTest, WithoutTheStatusPortNoQuoteWillCome) {
    session.OpenAdminPort();
    ASSERT_TRUE(feed.admin.Heard(kHello));
    EXPECT_EQ(session.FeedEnd(), EFeedEnd::None);
    feed.admin.HangsUp();
    EXPECT_TRUE(EndsAs(EFeedEnd::Quotes));
    const CFakeClock clock;
    CSession other(registry);
    Announce(FreePort(), 0, 0);
    other.OpenAdminPort();
    EXPECT_TRUE(WaitUntil([&] { return other.FeedEnd() == EFeedEnd::Unreachable; }));
}

TEST_F(CFeedSessionTest, ARefusedLookupPortNeverKeepsLevel1Away) {
    CFakeClock clock;
    Announce(feed.admin.Number(), FreePort(), feed.level1.Number());
    session.OpenAdminPort();
    feed.admin.Says(StatusLine("Connected"));
    ASSERT_TRUE(feed.level1.Heard(kLevel1Hello));
    EXPECT_LT(clock.sleeps.size(), 240u);
    ASSERT_TRUE(ShowsBoxes(1));
    EXPECT_THAT(clock.sleeps, SizeIs(240));
}

TEST_F(CFeedSessionTest, ABoxIsShownAfterTheNotificationWhileDataArrivesAndMayOutliveTheSession) {
    BringUpReady();
    bool inHandler = true;
    boxes.whileOpen = [&] {
        EXPECT_FALSE(inHandler);
        if (boxes.shown.size() > 1) return;
        Box(session, "second");
        feed.level1.Says("Q,IBM,1\nQ,IBM,2\n");
        EXPECT_TRUE(WaitUntil([&] { return session.updates.size() == 2; }));
        TurnEventLoop(20);
        EXPECT_THAT(boxes.shown, SizeIs(1)) << "one box at a time";
    };
    Box(session, "first");
    EXPECT_THAT(boxes.shown, IsEmpty());
    inHandler = false;
    ASSERT_TRUE(ShowsBoxes(2));

    auto other = std::make_unique<CSession>(registry);
    boxes.whileOpen = [&] { other.reset(); };
    for (const char* text : {"third", "never"}) Box(*other, text);
    ASSERT_TRUE(ShowsBoxes(3));
    TurnEventLoop(20);
    EXPECT_THAT(boxes.shown, SizeIs(3));
}

TEST_F(CFeedSessionTest, AFeedClientThatIsNotThereIsSaidAndNothingElseHappens) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    session.LaunchFeedClient();
    qputenv("PATH", path);
    EXPECT_THAT(boxes.shown, IsEmpty());
    ASSERT_TRUE(ShowsBoxes(1));
    EXPECT_EQ(boxes.shown[0].text, "Unable to launch vxconnect.exe.  Error Code: 2 hInst: 2");
    BringUp();
}
