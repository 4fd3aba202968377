#include "feed/StreamSocket.h"
#include "feed/ReadsSocket.h"
#include "support/FakeClock.h"

#include <gmock/gmock.h>

#include <functional>

using namespace vx;
using namespace vx::test;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CLineSocket : public CReadsSocket<CZTLStreamSocket> {
public:
    using CZTLStreamSocket::OnClose;
    using CZTLStreamSocket::OnConnect;
    using CZTLStreamSocket::OnReceive;

    std::vector<std::string> lines;
    std::function<void()> onLine;

protected:
    void OnMessage(std::string_view line) override {
        EXPECT_EQ(line.data()[line.size()], '\0');
        lines.emplace_back(line);
        if (onLine) onLine();
    }
};

std::vector<std::string> LinesOf(std::initializer_list<std::string> reads) {
    CLineSocket socket;
    for (const std::string& read : reads) socket.Read(read);
    return socket.lines;
}

/// Takes only so many bytes of each send.
class CNarrowSocket : public CZTLStreamSocket {
public:
    int Send(const void* buffer, int length, int) override {
        const int count = room < 0 ? -1 : std::min(room, length);
        if (count > 0) sent.append(static_cast<const char*>(buffer), static_cast<size_t>(count));
        return count;
    }
    int SendWithRoom(int bytes, std::string_view text) {
        room = bytes;
        return SendText(text);
    }

    int room = 0;
    std::string sent;
};

} // namespace

TEST(StreamSocket, ATextThatWentOutInPartIsNoBeginningOfTheNext) {
    CNarrowSocket socket;
    EXPECT_EQ(socket.SendWithRoom(3, "wIBM\n"), 3);
    EXPECT_EQ(socket.SendWithRoom(-1, "wGS\n"), -1);
    EXPECT_EQ(socket.SendWithRoom(0, "wGS\n"), 0);
    EXPECT_EQ(socket.SendWithRoom(1, "wGS\n"), 0);
    EXPECT_EQ(socket.SendWithRoom(2, "wGS\n"), 2);
    EXPECT_EQ(socket.SendWithRoom(99, "wGE\n"), 4);
    EXPECT_EQ(socket.SendWithRoom(99, "wF\n"), 3);
    EXPECT_EQ(socket.sent, "wIB\nwG\nwGE\nwF\n");
}

TEST(StreamSocket, AnyRunOfLineEndsEndsOneLine) {
    EXPECT_THAT(LinesOf({"ABC\r\nDE", "F\n"}), ElementsAre("ABC", "DEF"));
    EXPECT_THAT(LinesOf({"\r\n\r\n\n"}), IsEmpty());
    EXPECT_THAT(LinesOf({"A\nB\r\rC\r\n\n\r\nD\r"}), ElementsAre("A", "B", "C", "D"));
    EXPECT_THAT(LinesOf({"A\r", "\nB\r", "\n"}), ElementsAre("A", "B"));
    EXPECT_THAT(LinesOf({"A", "B", "\n", "C"}), ElementsAre("AB"));
    EXPECT_THAT(LinesOf({"caf\xE9 \xFF\n\x80\n"}), ElementsAre("caf\xE9 \xFF", "\x80"));
}

TEST(StreamSocket, ALineEndsAtItsFirstNul) {
    EXPECT_THAT(LinesOf({"AB\0CD\0E\nF\n"s}), ElementsAre("AB", "F"));
    EXPECT_THAT(LinesOf({"AB\0C"s, "D\nE\0\n"s}), ElementsAre("AB", "E"));
    EXPECT_THAT(LinesOf({"\0AB\nC\n"s, "\0"s, "D\nE\n"}), ElementsAre("C", "E"));
}

TEST(StreamSocket, CountsLinesOnceAndReceivedBytesTwice) {
    CFakeClock clock;
    CLineSocket socket;
    socket.OnConnect(0);
    EXPECT_EQ(socket.Stats().status, "Connected");
    const auto now = DateTimeFromLocal(clock.now);
    EXPECT_EQ(socket.Stats().connectTime.days, now.days);
    EXPECT_FALSE(socket.Stats().lastMessageTime.valid);
    socket.Read("ABC\r\n\nDEF\nG");
    EXPECT_EQ(socket.Stats().messagesReceived.value, 2u);
    EXPECT_EQ(socket.LastReceiveCount(), 11);
    EXPECT_EQ(socket.Stats().bytesReceived.value, 11u); // The cutting's half; Receive, replaced here, adds the other.
    EXPECT_EQ(socket.Stats().lastMessageTime.days, now.days);
    socket.ReadNothing(0);
    socket.ReadNothing(-1);
    EXPECT_EQ(socket.Stats().bytesReceived.value, 11u);
    socket.Close();
    EXPECT_EQ(socket.Stats().status, "Not Connected");
    EXPECT_FALSE(socket.Stats().connectTime.valid);
    EXPECT_FALSE(socket.Stats().lastMessageTime.valid);
    EXPECT_EQ(socket.Stats().messagesReceived.value, 2u);
    socket.Read("H\n");
    EXPECT_EQ(socket.lines.back(), "H") << "Close drops the line that waited";
}

TEST(StreamSocket, ErrorsOfNotificationsAreKept) {
    CLineSocket socket;
    socket.OnReceive(10054);
    EXPECT_EQ(socket.LastError(), 10054);
    EXPECT_THAT(socket.asked, IsEmpty());
    socket.OnConnect(10061);
    EXPECT_EQ(socket.LastError(), 10061);
    EXPECT_EQ(socket.Stats().status, "Not Connected");
    socket.OnClose(10053);
    EXPECT_EQ(socket.LastError(), 10053);
}

TEST(StreamSocket, ALineWithoutEndFillsTheBufferAndThenNothingIsAskedFor) {
    CLineSocket socket;
    socket.Read(std::string(65534, 'x'));
    socket.Read(std::string(9, 'y') + "\nZ\n");
    socket.Read("more\n");
    EXPECT_THAT(socket.asked, ElementsAre(65535, 1, 0));
    EXPECT_THAT(socket.lines, IsEmpty());

    CLineSocket whole;
    whole.Read(std::string(65534, 'x') + "\nA\n");
    whole.Read("");
    EXPECT_THAT(whole.asked, ElementsAre(65535, 65535));
    EXPECT_THAT(whole.lines, ElementsAre(std::string(65534, 'x'), "A"));
}

TEST(StreamSocket, AHandlerMayDeleteTheSocket) {
    auto* const socket = new CLineSocket;
    std::vector<std::string> seen;
    socket->onLine = [&] {
        seen = socket->lines;
        delete socket;
    };
    socket->Read("A\nB\n");
    EXPECT_THAT(seen, ElementsAre("A"));
}
