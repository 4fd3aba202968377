// SPDX-License-Identifier: MIT
// A user's own data that come live: a pipe, a pipe with a name, a command. What becomes of them is said on the admin
// port.

#include "support/FakeClock.h"
#include "vxconnect/Peer.h"
#include "vxconnect/data/ByteStreams.h"
#include "vxconnect/data/InputSource.h"

#include <QTemporaryDir>

#include <fstream>

#include <sys/stat.h>

namespace vx::sim {
namespace {

class LiveSource : public ServerTest {
protected:
    ~LiveSource() override { m_server.reset(); }

    bool Follow(std::unique_ptr<CByteStream> stream) {
        auto source = std::make_unique<CInputPipeSource>(m_options, std::move(stream),
                                                         [&](const std::string& text) { m_told.push_back(text); });
        if (!source->Open()) return false;
        Start(std::move(source));
        m_admin = std::make_unique<CPeer>(Server().AdminPort());
        return true;
    }
    // Whether the admin port says so, now or later.
    bool Becomes(const std::string& status) {
        constexpr size_t kStatus = 11, kGreetings = 2;
        for (;;) {
            const std::string line = m_admin->TakeLine("S,STATS,");
            if (line == "(none)") return false;
            if (++m_statusLines > kGreetings && Fields(line).at(kStatus) == status) return true;
        }
    }
    std::string Last(CPeer& peer, const std::string& beginning) {
        return Fields(peer.TakeLine(beginning))[static_cast<size_t>(EField::Last)];
    }

    std::vector<std::string> m_told;
    QTemporaryDir m_folder;
    std::unique_ptr<CPeer> m_admin;
    size_t m_statusLines = 0;
};

void Say(int descriptor, const std::string& text) {
    ASSERT_EQ(write(descriptor, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

// Whether or not somebody has taken note of it.
bool HasEnded(pid_t pid) {
    std::string number, name, state;
    std::ifstream("/proc/" + std::to_string(pid) + "/stat") >> number >> name >> state;
    return state.empty() || state == "Z";
}

using StandardInput = LiveSource;
using NamedPipe = LiveSource;
using Feeder = LiveSource;

TEST_F(StandardInput, RowsAreToldAsTheyComeAndItsEndIsNoQuietMarket) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    Say(ends[1], "{\"symbol\":\"A\",\"last\":1}\n{\"symbol\":\"A\",");
    ASSERT_TRUE(Follow(std::make_unique<CStandardInput>(ends[0])));
    EXPECT_TRUE(Becomes("Connected"));
    const auto peer = Level1Peer("wB\nwA\n");
    EXPECT_NE(peer->TakeLine("P,A,"), "(none)");
    Say(ends[1], "\"last\":2}\n{\"symbol\":\"A\",\"bid\":\"x\"}\n\nnonsense\n{\"symbol\":\"B\",\"bid\":3}\n");
    EXPECT_EQ(Last(*peer, "Q,A,"), "2");
    ASSERT_TRUE(WaitUntil([&] { return m_told.size() == 2; }));
    EXPECT_EQ(m_told[0], "standard input line 3: field \"Bid\": \"x\" is not a number");
    EXPECT_NE(peer->TakeLine("P,B,"), "(none)") << "asked for before it was there";
    Say(ends[1], "{\"symbol\":\"A\",\"last\":4}"); // No line end: the end of the stream ends it.
    close(ends[1]);
    EXPECT_EQ(Last(*peer, "Q,A,"), "4");
    EXPECT_TRUE(Becomes("Not Connected"));
    EXPECT_EQ(m_told.back(), "standard input: has ended");
    for (int i = 0; i < 2; ++i) EXPECT_NE(peer->TakeLine("T,"), "(none)") << "it serves on";
    close(ends[0]);
}

TEST_F(StandardInput, SilenceIsToldAfterItsTimeAndAnEmptyLineIsASignOfLife) {
    test::CFakeClock clock;
    m_options.staleSeconds = 20;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    Say(ends[1], "\nSymbol,Last\n\n");
    ASSERT_TRUE(Follow(std::make_unique<CStandardInput>(ends[0])));
    EXPECT_TRUE(Becomes("Not Connected")) << "no row has come yet";
    Say(ends[1], "A,1\n");
    EXPECT_TRUE(Becomes("Connected"));
    clock.elapsedMs += 19'000;
    Say(ends[1], "\n,2\n");
    ASSERT_TRUE(WaitUntil([&] { return m_told.size() == 1; })) << "a row of no symbol, which is none";
    clock.elapsedMs += 19'000;
    const auto peer = Level1Peer("wA\n");
    for (int i = 0; i < 2; ++i) EXPECT_NE(peer->TakeLine("T,"), "(none)");
    EXPECT_EQ(m_told.size(), 1u) << "it was silent for 19 seconds twice";
    clock.elapsedMs += 1'000;
    EXPECT_TRUE(Becomes("Not Connected"));
    EXPECT_EQ(m_told.back(), "standard input: no data for 20 s; an empty line would show that the source is alive");
    Say(ends[1], "A,x\n"); // A row all the same.
    EXPECT_TRUE(Becomes("Connected"));
    close(ends[1]);
    close(ends[0]);
}

TEST_F(NamedPipe, OneWriterAfterTheOtherIsFollowed) {
    const std::string path = m_folder.path().toStdString() + "/quotes";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    ASSERT_TRUE(Follow(std::make_unique<CNamedPipe>(path)));
    EXPECT_TRUE(Becomes("Not Connected")) << "nobody ever wrote";
    int writer = open(path.c_str(), O_WRONLY);
    Say(writer, "Symbol,Last\nA,1\n");
    EXPECT_TRUE(Becomes("Connected"));
    const auto peer = Level1Peer("wA\n");
    EXPECT_EQ(Last(*peer, "P,A,"), "1");
    Say(writer, "A,10"); // Perhaps 10.50.
    close(writer);
    EXPECT_TRUE(Becomes("Not Connected"));
    EXPECT_THAT(m_told, testing::ElementsAre(testing::HasSubstr("quotes line 3: no line end"),
                                             testing::EndsWith("quotes: the writer closed the pipe")));
    writer = open(path.c_str(), O_WRONLY);
    Say(writer, "Last,Symbol\n2,A\n");
    EXPECT_TRUE(Becomes("Connected"));
    EXPECT_EQ(Last(*peer, "Q,A,"), "2");
    close(writer);
    EXPECT_TRUE(Becomes("Not Connected"));
    ASSERT_EQ(unlink(path.c_str()) + mkfifo(path.c_str(), 0600), 0);
    ASSERT_TRUE(WaitUntil([&] { return (writer = open(path.c_str(), O_WRONLY | O_NONBLOCK)) >= 0; }));
    Say(writer, "{\"symbol\":\"A\",\"last\":3}\n");
    EXPECT_EQ(Last(*peer, "Q,A,"), "3") << "the pipe was made anew";
    close(writer);
}

TEST_F(Feeder, ACommandThatEndsIsStartedAgain) {
    m_options.feederPauseMs = 1;
    const std::string path = m_folder.path().toStdString();
    // Each run tells the next number, and then waits until it is allowed to end.
    const std::string command = "cd '" + path +
                                "'; echo x >>runs; echo Symbol,Last; echo A,$(wc -l <runs); "
                                "while ! [ -e end ]; do sleep 0.01; done; rm end; echo A,9; exit 3";
    ASSERT_TRUE(Follow(std::make_unique<CFeeder>(command, m_options.feederPauseMs)));
    EXPECT_TRUE(Becomes("Connected"));
    const auto peer = Level1Peer("wA\n");
    EXPECT_EQ(Last(*peer, "P,A,"), "1");
    for (const char* run : {"2", "3"}) {
        std::ofstream(path + "/end").flush();
        EXPECT_EQ(Last(*peer, "Q,A,"), "9") << "what came last is not lost";
        EXPECT_TRUE(Becomes("Not Connected"));
        EXPECT_TRUE(Becomes("Connected"));
        EXPECT_EQ(Last(*peer, "Q,A,"), run);
    }
    EXPECT_THAT(m_told, testing::ElementsAre("feeder: ended with status 3; restarting in 0.001 s",
                                             "feeder: ended with status 3; restarting in 0.002 s"));
}

TEST_F(Feeder, EndsWithAllThatItHasStarted) {
    const std::string path = m_folder.path().toStdString() + "/pid";
    ASSERT_TRUE(Follow(std::make_unique<CFeeder>(
        "sh -c 'echo $$ >" + path + "; echo Symbol; echo A; exec sleep 1000' | cat; true", 1)));
    EXPECT_TRUE(Becomes("Connected"));
    pid_t pid = 0;
    std::ifstream(path) >> pid;
    ASSERT_GT(pid, 0);
    ASSERT_EQ(kill(pid, SIGSTOP), 0) << "one that hangs as well";
    m_server.reset();
    EXPECT_TRUE(WaitUntil([&] { return HasEnded(pid); }));
}

} // namespace
} // namespace vx::sim
