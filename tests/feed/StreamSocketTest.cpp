// SPDX-License-Identifier: MIT
#include "feed/socket/StreamSocket.h"
#include "support/ReadsSocket.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using namespace std::string_literals;
using testing::ElementsAre;

namespace {

class CLineSocket : public CReadsSocket<CZTLStreamSocket> {
public:
    /// Takes only so many bytes of each send.
    int Send(const void* buffer, int length, int) override {
        const int count = std::min(room, length);
        sent.append(static_cast<const char*>(buffer), static_cast<size_t>(count));
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
    CLineSocket socket;
};

} // namespace

TEST_F(CZTLStreamSocketTest, ATextThatWentOutInPartIsNoBeginningOfTheNext) {
    EXPECT_EQ(socket.SendWithRoom(3, "wIBM\n"), 3);
    EXPECT_EQ(socket.SendWithRoom(0, "wGS\n"), 0);
    EXPECT_EQ(socket.SendWithRoom(1, "wGS\n"), 0);
    EXPECT_EQ(socket.SendWithRoom(2, "wGS\n"), 2);
    EXPECT_EQ(socket.SendWithRoom(99, "wGE\n"), 4);
    EXPECT_EQ(socket.SendWithRoom(99, "wF\n"), 3);
    EXPECT_EQ(socket.sent, "wIB\nwG\nwGE\nwF\n");
    socket.SendWithRoom(2, "wX\n");
    socket.Read("half a li");
    socket.Close();
    EXPECT_EQ(socket.SendWithRoom(99, "wF\n"), 3);
    EXPECT_TRUE(socket.sent.ends_with("wXwF\n")) << "the next connection knows nothing of it";
    socket.Read("H\n");
    EXPECT_THAT(socket.lines, ElementsAre("H")) << "nor of the line that waited";
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

TEST_F(CZTLStreamSocketTest, ALineThatFillsTheBufferIsRead) {
    CLineSocket whole;
    whole.Read(std::string(65534, 'x') + "\nA\n");
    whole.Read("");
    EXPECT_THAT(whole.asked, ElementsAre(65535, 65535));
    EXPECT_THAT(whole.lines, ElementsAre(std::string(65534, 'x'), "A"));
}
