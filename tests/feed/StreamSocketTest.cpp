// SPDX-License-Identifier: MIT
#include "feed/socket/StreamSocket.h"
#include "support/FakeClock.h"
#include "support/ReadsSocket.h"

#include <gmock/gmock.h>

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

    /// Takes only so many bytes of each send; below 0 it fails.
    int Send(const void* buffer, int length, int) override {
        const int count = room < 0 ? -1 : std::min(room, length);
        if (count > 0) sent.append(static_cast<const char*>(buffer), static_cast<size_t>(count));
        return count;
    }
    int SendWithRoom(int bytes, std::string_view text) {
        room = bytes;
        return SendText(text);
    }

    std::vector<std::string> lines;
    int room = 0;
    std::string sent;

protected:
    void OnMessage(std::string_view line) override {
        EXPECT_EQ(line.data()[line.size()], '\0');
        lines.emplace_back(line);
    }
};

struct CZTLStreamSocketTest : testing::Test {
    CFakeClock clock;
    CLineSocket socket;
};

} // namespace

TEST_F(CZTLStreamSocketTest, ATextThatWentOutInPartIsNoBeginningOfTheNext) {
    EXPECT_EQ(socket.SendWithRoom(3, "wIBM\n"), 3);
    EXPECT_EQ(socket.SendWithRoom(-1, "wGS\n"), -1);
    EXPECT_EQ(socket.SendWithRoom(0, "wGS\n"), 0);
    EXPECT_EQ(socket.SendWithRoom(1, "wGS\n"), 0);
    EXPECT_EQ(socket.SendWithRoom(2, "wGS\n"), 2);
    EXPECT_EQ(socket.SendWithRoom(99, "wGE\n"), 4);
    EXPECT_EQ(socket.SendWithRoom(99, "wF\n"), 3);
    EXPECT_EQ(socket.sent, "wIB\nwG\nwGE\nwF\n");
    socket.SendWithRoom(2, "wX\n");
    socket.Close();
    EXPECT_EQ(socket.SendWithRoom(99, "wF\n"), 3);
    EXPECT_TRUE(socket.sent.ends_with("wXwF\n")) << "the next connection knows nothing of it";
}

TEST_F(CZTLStreamSocketTest, AnyRunOfLineEndsEndsOneLineAndANulItsText) {
    const std::pair<std::vector<std::string>, std::vector<std::string>> cases[] = {
        {{"ABC\r\nDE", "F\n"}, {"ABC", "DEF"}},
        {{"A\nB\r\rC\r\n\n\r\nD\r"}, {"A", "B", "C", "D"}},
        {{"AB\0C"s, "D\nE\0\n"s}, {"AB", "E"}},
        {{"\0AB\nC\n"s, "\0"s, "D\nE\n"}, {"C", "E"}},
    };
    for (const auto& [reads, lines] : cases) {
        CLineSocket fresh;
        for (const std::string& read : reads) fresh.Read(read);
        EXPECT_EQ(fresh.lines, lines) << reads[0];
    }
}

TEST_F(CZTLStreamSocketTest, KeepsStatisticsAndTheLastError) {
    const auto now = DateTimeFromLocal(clock.now);
    EXPECT_EQ(socket.Stats().status, "Not Connected");
    socket.OnConnect(0);
    EXPECT_EQ(socket.Stats().status, "Connected");
    EXPECT_EQ(socket.Stats().connectTime.days, now.days);
    EXPECT_FALSE(socket.Stats().lastMessageTime.valid);
    socket.Read("ABC\r\n\nDEF\nG");
    EXPECT_EQ(socket.Stats().messagesReceived.value, 2u);
    EXPECT_EQ(socket.LastReceiveCount(), 11);
    EXPECT_EQ(socket.Stats().bytesReceived.value, 11u); // The cutting's half; Receive, replaced here, adds the other.
    EXPECT_EQ(socket.Stats().lastMessageTime.days, now.days);
    for (socket.result = 0; socket.result > -2; --socket.result) socket.Read("");
    socket.result = 1;
    socket.OnReceive(10054);
    EXPECT_EQ(socket.LastError(), 10054);
    EXPECT_EQ(socket.asked.size(), 3u) << "a notification of an error receives nothing";
    EXPECT_EQ(socket.Stats().bytesReceived.value, 11u);
    socket.OnClose(10053);
    EXPECT_EQ(socket.LastError(), 10053);
    EXPECT_EQ(socket.Stats().status, "Not Connected");
    EXPECT_FALSE(socket.Stats().connectTime.valid);
    socket.Close();
    EXPECT_EQ(socket.LastError(), 0);
    EXPECT_FALSE(socket.Stats().lastMessageTime.valid);
    socket.Read("H\n");
    EXPECT_THAT(socket.lines, ElementsAre("ABC", "DEF", "H")) << "Close drops the line that waited";
}

TEST_F(CZTLStreamSocketTest, ALineWithoutEndFillsTheBufferAndThenNothingIsAskedFor) {
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
