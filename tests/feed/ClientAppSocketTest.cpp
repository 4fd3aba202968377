#include "feed/ClientAppSocket.h"

#include "feed/LineHandlers.h"
#include "feed/ReadsSocket.h"
#include "support/EventLoop.h"
#include "support/FakeClock.h"
#include "support/ScriptedFeed.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

// Writes down which handler got which line; the ones of an ordinary session are not of interest here.
class COwner final : public CFeedOwner {
public:
    std::vector<std::string> calls;
    std::vector<SMessageBox> boxes;

    void OnUpdateMessage(std::string_view line) override { Note("update", line); }
    void OnSummaryMessage(std::string_view line) override { Note("summary", line); }
    void OnRegionalMessage(std::string_view line) override { Note("regional", line); }
    void OnNewsMessage(std::string_view line) override { Note("news", line); }
    void OnSymbolNotFound(std::string_view line) override { Note("not found", line); }
    void OnLookupMessage(std::string_view line) override { Note("lookup", line); }
    void OnDepthMessageZ(std::string_view line) override { Note("depth", line); }
    void OnDepthMessageM(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage0(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage2(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage3(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage4(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage5(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage6(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage7(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage8(std::string_view line) override { Note("depth", line); }
    void OnDepthMessage9(std::string_view line) override { Note("depth", line); }
    void OnMessageq(std::string_view line) override { Note("q", line); }
    void OnMessageA(std::string_view line) override { Note("A", line); }
    void OnUnknownMessage(std::string_view line) override { Note("unknown", line); }
    void ReceiveSystemLine(std::string_view line) override { Note("system", line); }
    void ReceiveTimeLine(std::string_view line) override { Note("time", line); }
    void ReceiveFundamentalLine(std::string_view line) override { Note("fundamental", line); }
    void PostMessageBox(SMessageBox box) override { boxes.push_back(std::move(box)); }

private:
    void Note(const char* handler, std::string_view line) {
        calls.push_back(std::string(handler) + " " + std::string(line));
    }
};

std::string HandlerOf(char first) {
    COwner owner;
    CReadsSocket<CZantrelClientAppSocket> socket(0u);
    socket.SetOwner(&owner);
    socket.Read(std::string(1, first) + ",x\n");
    return owner.calls.size() == 1 ? owner.calls[0].substr(0, owner.calls[0].size() - 4) : "none";
}

} // namespace

TEST(ClientAppSocket, TheFirstByteChoosesTheHandler) {
    EXPECT_EQ(HandlerOf('Q'), "update");
    EXPECT_EQ(HandlerOf('P'), "summary");
    EXPECT_EQ(HandlerOf('F'), "fundamental");
    EXPECT_EQ(HandlerOf('R'), "regional");
    EXPECT_EQ(HandlerOf('N'), "news");
    EXPECT_EQ(HandlerOf('S'), "system");
    EXPECT_EQ(HandlerOf('T'), "time");
    EXPECT_EQ(HandlerOf('n'), "not found");
    EXPECT_EQ(HandlerOf('L'), "lookup");
    for (const char c : std::string("ZM023456789")) EXPECT_EQ(HandlerOf(c), "depth") << c;
    EXPECT_EQ(HandlerOf('q'), "q");
    EXPECT_EQ(HandlerOf('A'), "A");
    for (const char c : std::string("E1sft \x01\x7F\x80\xC1\xFF")) EXPECT_EQ(HandlerOf(c), "unknown") << int(c);
    EXPECT_EQ(std::count(kLineHandlers.begin(), kLineHandlers.end(), &CFeedOwner::OnUnknownMessage), 256 - 22);
}

TEST(ClientAppSocket, SaysTheHandshakeThatItHasInOrder) {
    CScriptedPort port;
    CZantrelClientAppSocket socket(0);
    socket.SetHandshake({"6.2", "VxWatchlist", "Symbol,Last\n", "x\ny\n"});
    ASSERT_TRUE(socket.Create());
    socket.Connect("127.0.0.1", port.Number());
    EXPECT_TRUE(port.Heard("S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,VxWatchlist\n"
                           "S,SELECT UPDATE FIELDS,Symbol,Last\n\nx\ny\n"));
    EXPECT_EQ(socket.Stats().messagesSent.value, 5u);
    EXPECT_EQ(socket.Stats().bytesSent.value, port.HeardSoFar().size());

    CScriptedPort shy;
    CZantrelClientAppSocket quiet(0);
    quiet.SetHandshake({"6.2", "", "", ""});
    ASSERT_TRUE(quiet.Create());
    quiet.Connect("127.0.0.1", shy.Number());
    EXPECT_TRUE(shy.Heard("S,SET PROTOCOL,6.2\n"));
}

TEST(ClientAppSocket, AFailedConnectIsTriedAgainAndThenShownOnce) {
    CFakeClock clock;
    COwner owner;
    CZantrelClientAppSocket socket(2);
    socket.SetOwner(&owner);
    socket.SetHandshake({"6.2", "VxWatchlist", "", ""});
    ASSERT_TRUE(socket.Create());
    socket.Connect("127.0.0.1", FreePort());
    ASSERT_TRUE(WaitUntil([&] { return !owner.boxes.empty(); }));
    TurnEventLoop(50);
    EXPECT_THAT(clock.sleeps, ElementsAre(250, 250));
    ASSERT_THAT(owner.boxes, SizeIs(1));
    EXPECT_EQ(owner.boxes[0].text, "VxWatchlist is unable to connect to Zantrel.\nPlease restart the application.\n"
                                   "If the error persists, please contact customer service.\nError Code: 10061");
    EXPECT_EQ(owner.boxes[0].buttons, EBoxButtons::Ok);
    EXPECT_EQ(socket.LastError(), 10061);
    EXPECT_EQ(socket.Stats().status, "Not Connected");
}

TEST(ClientAppSocket, APortThatIsLateIsReached) {
    const uint16_t number = FreePort();
    CFakeClock clock;
    QTcpServer late;
    clock.onSleep = [&] {
        if (clock.sleeps.size() == 5) late.listen(QHostAddress::LocalHost, number);
    };
    CZantrelClientAppSocket socket(240);
    ASSERT_TRUE(socket.Create());
    socket.Connect("127.0.0.1", number);
    ASSERT_TRUE(WaitUntil([&] { return socket.IsConnected(); }));
    EXPECT_THAT(clock.sleeps, ElementsAre(250, 250, 250, 250, 250));
    EXPECT_EQ(socket.RetriesLeft(), 235u);
}

TEST(ClientAppSocket, TheEndOfTheConnectionChangesNothing) {
    CScriptedPort port;
    CZantrelClientAppSocket socket(240);
    ASSERT_TRUE(socket.Create());
    socket.Connect("127.0.0.1", port.Number());
    port.HangsUp();
    ASSERT_TRUE(WaitUntil([&] { return socket.Stats().status == "Connected" && !socket.IsConnected(); }));
    TurnEventLoop(50);
    EXPECT_EQ(socket.Stats().status, "Connected");
    EXPECT_TRUE(socket.Stats().connectTime.valid);
    EXPECT_EQ(port.Connections(), 1);
    EXPECT_EQ(socket.RetriesLeft(), 240u);
    socket.Close();
    EXPECT_EQ(socket.Stats().status, "Connected");
}
