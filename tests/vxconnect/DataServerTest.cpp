// SPDX-License-Identifier: MIT
#include "support/TempFolder.h"
#include "vxconnect/Peer.h"
#include "vxconnect/data/InputSource.h"
#include "vxconnect/data/Recording.h"
#include "vxconnect/data/ReplaySource.h"

namespace vx::sim {
namespace {

// A server whose data come from a file or a pipe.
class DataServer : public ServerTest {
protected:
    std::string Write(const std::string& name, const std::string& text) {
        test::WriteFile(m_folder / name, text);
        return m_folder / name;
    }
    std::vector<std::string> StartInput(const std::string& text) {
        std::vector<std::string> told;
        m_options.input = Write("input.csv", text);
        auto source = std::make_unique<CInputFileSource>(
            m_options, [&](const std::string& line) { told.push_back(line.substr(line.rfind('/') + 1)); });
        if (source->Open()) Start(std::move(source));
        return told;
    }
    std::string StartReplay(const std::string& text) {
        m_options.replay = Write("traffic.log", text);
        auto source = std::make_unique<CReplaySource>(m_options);
        auto error = source->Open();
        if (error.empty()) Start(std::move(source));
        return error;
    }

    test::CTempFolder m_folder;
};

using InputFile = DataServer;
using Replay = DataServer;

TEST_F(InputFile, FirstRowsAreThereAndTheOthersFollowAsDeltas) {
    m_options.rate = 50;
    ASSERT_THAT(StartInput("Symbol,Name,Last,Close,T Time,Trade Date\r\nA,Alpha,10.25,10,09:30:00,2024-01-31\r\n"
                           "A,,10.50,,09:30:02,\r\nA,,10.50,,09:30:02,\r\nA,,10.40,,,\r\n"),
                testing::IsEmpty());
    const auto peer = Level1Peer("wA\nwIBM\n");
    EXPECT_EQ(Fields(peer->TakeLine("F,A,"))[2], "Alpha");
    CMergedRecord record;
    record.Merge(peer->TakeLine("P,A,"));
    EXPECT_EQ(record.Get(EField::Last), "10.25");
    EXPECT_EQ(record.Get(EField::Change), "0.25");
    EXPECT_EQ(peer->TakeLine("n,"), "n,IBM");
    const std::vector<std::string> second = Fields(peer->TakeLine("Q,A,"));
    EXPECT_EQ(second[static_cast<size_t>(EField::Last)], "10.50");
    EXPECT_EQ(second[static_cast<size_t>(EField::Close)], "") << "unchanged";
    EXPECT_EQ(Fields(peer->TakeLine("Q,A,"))[static_cast<size_t>(EField::Last)], "10.40") << "nothing new in between";
    EXPECT_EQ(Server().Board().ClockText(), "20240131 09:30:02");
    CPeer lookup(Server().LookupPort());
    lookup.Send("SBF,d,alp,,,L\r\nNSC,A:X,x,,,L\r\n");
    EXPECT_EQ(lookup.TakeLine(""), "L,A,0,0,Alpha,");
    EXPECT_EQ(lookup.TakeLine("L,<"), "L,<NewsCounts><symbol Name=\"A\" StoryCount=\"0\"/></NewsCounts>");
}

TEST_F(InputFile, WhatIsWrongIsToldWithFileLineAndFieldAndTheRestServed) {
    EXPECT_THAT(
        StartInput("Symbol,Last,Bid\nA,1,1\nB,x,2\nC,2,3,4\na,5,5\nA,6,y\nD,7,\n"),
        testing::ElementsAre("input.csv line 3: field \"Last\": \"x\" is not a number",
                             "input.csv line 4: 4 values where the header names 3",
                             "input.csv line 5: symbol \"a\" differs from \"A\" only in letter case and is refused",
                             "input.csv line 6: field \"Bid\": \"y\" is not a number"));
    const auto peer = Level1Peer("wB\nwA\nwD\n");
    const auto b = Fields(peer->TakeLine("P,B,"));
    EXPECT_EQ(b[static_cast<size_t>(EField::Bid)] + "|" + b[static_cast<size_t>(EField::Last)], "2|");
    EXPECT_NE(peer->TakeLine("P,D,"), "(none)");
    EXPECT_EQ(Fields(peer->TakeLine("Q,A,"))[static_cast<size_t>(EField::Last)], "6") << "its twin was refused";
}

TEST_F(InputFile, AFileWithNothingToServeIsNotServed) {
    const std::string none = "input.csv: no rows, nothing to serve";
    EXPECT_THAT(StartInput("Symbol,Last\n"), testing::ElementsAre(none));
    EXPECT_THAT(StartInput("nonsense\nmore\n"), testing::ElementsAre(testing::HasSubstr("no column"), none))
        << "the header is the one thing that is wrong";
    EXPECT_THAT(StartInput("Symbol,Last\n\"A" + std::string(2'000'000, '1') + "\n"),
                testing::ElementsAre(testing::HasSubstr("line 2: longer than"), none));
}

TEST_F(InputFile, SymbolsAreFoundInAnyLettersAndNamedAsAskedFor) {
    m_options.rate = 5;
    StartInput("Symbol,Last\nAcme.l,1\n\"B\xC3\xA9ta\",2\nAcme.l,3\n");
    const auto peer = Level1Peer("wACME.L\nwacme.L\nwB\xE9TA\nwBETA\n");
    for (const char* beginning : {"F,ACME.L,", "P,ACME.L,", "F,acme.L,", "P,acme.L,", "P,B\xE9TA,"})
        EXPECT_NE(peer->TakeLine(beginning), "(none)") << beginning;
    EXPECT_EQ(peer->TakeLine("n,"), "n,BETA");
    for (const char* beginning : {"Q,ACME.L,", "Q,acme.L,"})
        EXPECT_EQ(Fields(peer->TakeLine(beginning))[static_cast<size_t>(EField::Last)], "3");
    peer->Send("rACME.L\nrB\xE9TA\n");
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().WatchedCount() == 1; })) << "the other spelling stays";
    CPeer lookup(Server().LookupPort());
    lookup.Send("SBF,s,ACME,,,L\r\n");
    EXPECT_EQ(lookup.TakeLine("L,Ac"), "L,Acme.l,0,0,,");
}

TEST_F(InputFile, TheNewestDailyBarStaysWhicheverWayTheFileRuns) {
    m_options.rate = 1000;
    ASSERT_EQ(m_options.names.Add("close=Last"), "");
    EXPECT_THAT(StartInput("date,close,ticker\n2024-01-31,3,NEW\n2024-01-29,1,OLD\n2024-01-30,2,NEW\n2024-01-30,2,OLD\n"
                           "2024-01-31,3,OLD\n2024-01-29,9,NEW\n2024-01-31,4,OLD\n"),
                testing::IsEmpty());
    const auto peer = Level1Peer("wNEW\nwOLD\n");
    CMergedRecord older, newer;
    newer.Merge(peer->TakeLine("P,NEW,"));
    older.Merge(peer->TakeLine("P,OLD,"));
    while (older.Get(EField::Last) != "4") {
        const std::string line = peer->TakeLine("Q,");
        ASSERT_THAT(line, testing::StartsWith("Q,OLD,")) << "the newest of the other is there from the start";
        older.Merge(line);
    }
    EXPECT_EQ(older.Get(EField::Close) + "|" + older.Get(EField::Change), "2|2") << "of the day before";
    EXPECT_EQ(newer.Get(EField::Last), "3");
}

TEST(TrafficLine, LinesOfTheLogAreReadAndOthersPassedOver) {
    const auto text = [](std::string_view line) {
        const auto read = ReadTrafficLine(line);
        return read ? read->text : std::string("(none)");
    };
    EXPECT_EQ(text("2024-01-31 09:30:00.123 [L1Data] [FROM SERVER] Q,IBM,5,"), "Q,IBM,5,");
    EXPECT_EQ(text("2024-01-31 09:30:00.123 [L1Data] [FROM SERVER] N,a,b,IBM,d,Caf\xC3\xA9\\x92\\x0A\\xZZ"),
              "N,a,b,IBM,d,Caf\xE9\x92 \\xZZ");
    EXPECT_EQ(text("Q,IBM,5,"), "Q,IBM,5,");
    for (const char* other :
         {"2024-01-31 09:30:00.123 [L1Request] [TO SERVER] wIBM", "2024-01-31 09:30:00.123 [Information] [STATUS] Q,x",
          "2024-01-31 09:30:00.123 [LookupData] [FROM SERVER] N,IBM,", "", "Q", "Q,", "hello", "[L1Data"})
        EXPECT_EQ(text(other), "(none)") << other;
    const auto a = ReadTrafficLine("2024-01-31 23:59:59.999 [L1Data] [FROM SERVER] T,x");
    const auto b = ReadTrafficLine("2024-02-01 00:00:00.001 [L1Data] [FROM SERVER] T,x");
    ASSERT_TRUE(a && b && a->timeMs && b->timeMs);
    EXPECT_EQ(*b->timeMs - *a->timeMs, 2);
}

TEST_F(Replay, RecordingComesBackLineForLine) {
    m_options.rate = 3'000;
    m_options.record = m_folder / "recording.log";
    std::vector<std::string> lived;
    {
        Start();
        const auto peer = Level1Peer("wIBM\nS,REGON,IBM\n");
        ASSERT_TRUE(WaitUntil([&] {
            peer->Read();
            return Server().Board().EventCount() > 1'500;
        }));
        lived = peer->TakeLines();
        m_server.reset();
    }
    const std::string recorded = test::ReadFile(m_options.record);
    m_options.record.clear();
    m_options.speed = 1000;
    ASSERT_EQ(StartReplay(recorded), "");
    const auto peer = Level1Peer("wIBM\nS,REGON,IBM\nwKO\n");
    const uint64_t events = static_cast<uint64_t>(std::count(recorded.begin(), recorded.end(), '\n')) / 2;
    ASSERT_TRUE(WaitUntil([&] {
        peer->Read();
        return Server().Board().EventCount() > events;
    }));
    const std::vector<std::string> replayed = peer->TakeLines();
    const auto only = [](const std::vector<std::string>& lines, std::string_view beginning) {
        std::vector<std::string> out;
        for (const std::string& line : lines)
            if (line.starts_with(beginning)) out.push_back(line);
        return out;
    };
    EXPECT_EQ(only(replayed, "n,"), std::vector<std::string>{"n,KO"});
    for (const char* kind : {"F,IBM,", "P,IBM,", "Q,IBM,", "R,IBM,HARBOR,"}) {
        auto first = only(lived, kind), second = only(replayed, kind);
        // The first regional line answered the command; it is not of the feed.
        if (kind[0] == 'R') first.erase(first.begin());
        const size_t count = std::min(first.size(), second.size());
        EXPECT_GE(count, kind[0] == 'Q' || kind[0] == 'R' ? 20u : 1u) << kind;
        first.resize(count);
        second.resize(count);
        EXPECT_EQ(first, second);
    }
}

TEST_F(Replay, PaceFollowsTheTimeStampsAndHeadlinesAreCounted) {
    m_options.speed = 1;
    const std::string time = "2024-01-31 09:30:0", kind = " [L1Data] [FROM SERVER] ";
    ASSERT_EQ(StartReplay(time + "0.000" + kind + "T,20240131 09:29:59\n" + time + "0.100" + kind + "Q,A,,1.5,\n" +
                          time + "0.200" + kind + "N,S,1,A:B,20240131 093000,One, two\n" + time + "0.300" + kind +
                          "P,A,,2.5,,,,,\n2024-01-31 09:31:00.000" + kind + "Q,A,,3.5,\n"),
              "");
    EXPECT_EQ(Server().Board().ClockText(), "20240131 09:29:59");
    const auto peer = Level1Peer("wA\n");
    EXPECT_EQ(peer->TakeLine("N,"), "N,S,1,A:B,20240131 093000,One, two");
    EXPECT_EQ(peer->TakeLine("P,A,,2").substr(0, 9), "P,A,,2.5,");
    EXPECT_NE(peer->TakeLine("T,"), "(none)");
    EXPECT_EQ(peer->Text().find("Q,A,,3.5"), std::string::npos) << "a minute later";
    CPeer lookup(Server().LookupPort());
    lookup.Send("NSC,A:B,x,,,L\r\n");
    EXPECT_EQ(lookup.TakeLine(""), "L,<NewsCounts><symbol Name=\"A\" StoryCount=\"1\"/></NewsCounts>");
}

} // namespace
} // namespace vx::sim
