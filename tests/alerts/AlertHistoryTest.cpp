// SPDX-License-Identifier: MIT
#include "alerts/rules/AlertHistory.h"
#include "alerts/rules/WaveFile.h"
#include "support/ChildProcess.h"
#include "support/TempFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <set>

using namespace vx;
using namespace vx::test;

namespace {

SAlertFiring Firing(const char* symbol, int64_t firedMs, int64_t awaySinceMs = 0) {
    return FiringOf({.condition = "greater than",
                     .symbol = symbol,
                     .value = 190.1,
                     .last = 190.1,
                     .bid = -0.5,
                     .ask = 1e308,
                     .threshold = 1e-7,
                     .fieldName = "Last",
                     .soundFile = {},
                     .otherThresholds = {},
                     .headline = {}},
                    firedMs, awaySinceMs);
}

using Texts = std::vector<std::string>;

Texts Symbols(const std::vector<SAlertFiring>& firings) {
    Texts out;
    for (const SAlertFiring& firing : firings) out.push_back(firing.symbol);
    return out;
}

class CAlertHistoryTest : public testing::Test {
protected:
    CTempFolder folder;
    CAlertHistory history{folder / "state"};
};

} // namespace

TEST_F(CAlertHistoryTest, KeepsEveryFiringAndWhatBecameOfIt) {
    const std::string strange = "<b>\"%s\\\x01\n end\xE9";
    const std::string first = history.NoteFired(Firing("IBM", 1000));
    const std::string second = history.NoteFired(Firing(strange.c_str(), 2000, 1500));
    history.NoteFired(Firing("MSFT", 3000));
    history.NoteEnded(second, EFiringEnd::Reset, 4000, 12.5);
    history.NoteEnded(first, EFiringEnd::Dismissed, 5000);
    history.NoteEnded("nobody", EFiringEnd::Dismissed, 5000);
    const std::vector<SAlertFiring> read = CAlertHistory(folder / "state").Read();
    ASSERT_EQ(read.size(), 3u);
    EXPECT_EQ((std::vector<double>{read[0].value, read[0].threshold, read[0].bid, read[0].ask, read[0].last}),
              (std::vector<double>{190.1, 1e-7, -0.5, 1e308, 190.1}));
    EXPECT_EQ(read[0].condition, "greater than");
    EXPECT_EQ(read[0].endedMs, 5000);
    EXPECT_EQ(read[1].symbol, strange);
    EXPECT_EQ(EndText(read[1]), "Reset to 12.5");
    EXPECT_EQ(LastAbsence(read), 1500);
    EXPECT_FALSE(FiredWhileAway(read[2], 1500));
}

TEST_F(CAlertHistoryTest, TellsHowANoticeWasMetAndWhichAlertAResetChanged) {
    Texts ids;
    for (int i = 0; i < 6; ++i) ids.push_back(history.NoteFired(Firing("IBM", 1000 + i)));
    for (int i = 1; i < 5; ++i) history.NoteSeen(ids[i], 2000);
    history.NoteEnded(ids[2], EFiringEnd::Dismissed, 10'999);
    history.NoteEnded(ids[3], EFiringEnd::Armed, 5000);
    history.NoteEnded(ids[4], EFiringEnd::ResetOther, 2000 + 3'725'000, 12.5, "Last less than \"5\"");
    history.NoteEnded(ids[5], EFiringEnd::Together, 5000);
    Texts ends;
    for (const SAlertFiring& firing : history.Read()) ends.push_back(EndText(firing));
    EXPECT_EQ(ends, (Texts{"Never seen", "Seen", "Dismissed after 8 s", "Armed again",
                           "Dismissed after 1 h 2 min; reset Last less than \"5\" to 12.5", "Dismissed together"}));

    history.NoteEnded(ids[5], EFiringEnd::Reset, 6000, 7);
    history.NoteEnded(ids[5], EFiringEnd::Dismissed, 7000);
    const std::vector<SAlertFiring> read = history.Read();
    EXPECT_EQ(EndText(read[5]), "Reset to 7") << "closing its notice later does not disarm it";
    const SAlertFiring* found = FindFiring(read, Firing("IBM", 0));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, ids[4]) << "the latest that was not reset";
    SAlertFiring other = Firing("IBM", 0);
    other.threshold = 5;
    EXPECT_FALSE(FindFiring(read, other));
}

// Wherever a kill cuts the last line, the lines before it and those that follow are whole.
TEST_F(CAlertHistoryTest, ALineCutOffAnywhereIsPassedOver) {
    history.NoteFired(Firing("IBM", 1000));
    const std::string whole = ReadFile(history.FilePath());
    for (size_t cut = 0; cut < whole.size(); ++cut) {
        WriteFile(history.FilePath(), whole + whole.substr(0, cut));
        history.NoteFired(Firing("MSFT", 2000));
        EXPECT_EQ(Symbols(history.Read()),
                  cut + 1 == whole.size() ? (Texts{"IBM", "IBM", "MSFT"}) : (Texts{"IBM", "MSFT"}))
            << cut;
    }
}

TEST_F(CAlertHistoryTest, TheFilesStayBounded) {
    history.NoteFired(Firing("OLDEST", 1));
    Texts ids;
    for (int round = 0; round < 3; ++round) {
        std::filesystem::resize_file(history.FilePath(), CAlertHistory::kMostFileBytes);
        ids.push_back(history.NoteFired(Firing(fmt::format("ROUND{}", round).c_str(), 1)));
    }
    history.NoteEnded(ids[1], EFiringEnd::Dismissed, 7);
    const std::vector<SAlertFiring> read = history.Read();
    EXPECT_EQ(Symbols(read), (Texts{"ROUND1", "ROUND2"}));
    EXPECT_EQ(read[0].end, EFiringEnd::Dismissed) << "it ended in the newer file";
    EXPECT_LT(std::filesystem::file_size(history.FilePath()), 1000u);
    EXPECT_LE(std::filesystem::file_size(history.OlderFilePath()), CAlertHistory::kMostFileBytes + 1000);
}

TEST_F(CAlertHistoryTest, ProgramsThatWriteAtOnceLeaveWholeLinesOfTheirOwn) {
    constexpr int kPrograms = 4;
    constexpr int kEach = 200;
    std::vector<pid_t> children;
    for (int number = 0; number < kPrograms; ++number)
        children.push_back(Fork([this] {
            CAlertHistory own(folder / "state");
            for (int i = 0; i < kEach; ++i) own.NoteFired(Firing("IBM", 1));
            return 0;
        }));
    for (const pid_t child : children) EXPECT_EQ(ExitCode(child), 0);
    std::set<std::string> ids;
    for (const SAlertFiring& firing : history.Read()) ids.insert(firing.id);
    EXPECT_EQ(ids.size(), static_cast<size_t>(kPrograms * kEach));
}

TEST_F(CAlertHistoryTest, ATableForSpreadsheetsComputesNothing) {
    SAlertFiring firing = Firing("=cmd|'x'!A1", 0, 1);
    firing.field = "La\"st";
    SAlertFiring news = Firing("IBM", 0);
    news.isNews = true;
    news.condition.clear();
    news.end = EFiringEnd::Reset;
    const std::vector<SAlertFiring> both = {firing, news};
    EXPECT_EQ(HistoryCsv(both),
              "Fired,Symbol,Field,Condition,Threshold,Value,Bid,Ask,Last,While Away,Outcome,Closed\r\n"
              ",\"'=cmd|'x'!A1\",\"La\"\"st\",\"greater than\",1e-07,190.1,-0.5,1e+308,190.1,yes,\"Never seen\",\r\n"
              ",\"IBM\",\"Last\",\"\",,,,,,no,\"Reset\",\r\n");
}

TEST(WaveFile, OnlyWavesThatCanBePlayedAreTaken) {
    std::string wave = "RIFF....WAVELIST\x03" + std::string(3, '\0') + "abc" + std::string(1, '\0') + "fmt " +
                       std::string("\x10\0\0\0\1\0\2\0\x40\x1F\0\0\0\x7D\0\0\4\0\x10\0", 20) + "data" +
                       std::string("\0\x7D\0\0", 4);
    const size_t format = wave.find("fmt ") + 8;
    wave += std::string(32'000, '\0');
    const auto parsed = [](const std::string& bytes) {
        return ParseWaveInfo(bytes, static_cast<int64_t>(bytes.size()));
    };
    ASSERT_TRUE(parsed(wave));
    EXPECT_EQ(parsed(wave)->durationMs, 1000);
    EXPECT_EQ(parsed(wave.substr(0, wave.size() - 16'000))->durationMs, 500) << "a file that was cut off";
    for (const auto& [place, byte] : std::map<size_t, char>{{0, 'X'},
                                                            {format, 2},      // compressed
                                                            {format + 2, 0},  // no channel
                                                            {format + 12, 0}, // no bytes a sample
                                                            {format + 7, 1}}) {
        std::string broken = wave;
        broken[place] = byte;
        EXPECT_FALSE(parsed(broken)) << place;
    }
    for (size_t cut = 0; cut < wave.find("data") + 9; ++cut) EXPECT_FALSE(parsed(wave.substr(0, cut))) << cut;
}
