// SPDX-License-Identifier: MIT
#include "base/Log.h"

#include "base/LogFile.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <sstream>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

std::vector<std::string> LinesOf(const std::string& path) {
    std::istringstream in(ReadFile(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

class LogTest : public testing::Test {
protected:
    ~LogTest() override {
        ConfigureLog({});
        SetLogCategories(ReadLogCategories(kDefaultLogCategories));
    }

    /// Every line of the log in the folder, without its time.
    std::vector<std::string> Lines() const {
        FlushLog();
        std::vector<std::string> lines;
        for (const std::string& file : m_folder.Files("zantrel-"))
            for (const std::string& line : LinesOf(m_folder / file)) lines.push_back(line.substr(line.find('[')));
        return lines;
    }

    CTempFolder m_folder;
};

} // namespace

TEST_F(LogTest, AnEventIsOneLineWhateverItsBytes) {
    ASSERT_TRUE(ConfigureLog({m_folder.Path()}));
    SetLogCategories(ReadLogCategories("l1data; Connectivity"));
    Log(ELogCategory::L1Data, ELogDirection::FromServer, "Q,IBM,\r\n\xAD{}%n\x80\xE9\x81" + std::string(1, '\0'));
    Log(ELogCategory::Connectivity, ELogDirection::Status, "");
    FlushLog();
    ASSERT_THAT(m_folder.Files(), SizeIs(1));
    EXPECT_THAT(m_folder.Files()[0], MatchesRegex("zantrel-[0-9]{4}-[0-9]{2}-[0-9]{2}\\.log"));
    const auto lines = LinesOf(m_folder / m_folder.Files()[0]);
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines[0], MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} \\[L1Data.*"));
    EXPECT_THAT(Lines(), ElementsAre("[L1Data] [FROM SERVER] Q,IBM,\\x0D\\x0A\\xAD{}%n\xE2\x82\xAC\xC3\xA9\\x81\\x00",
                                     "[Connectivity] [STATUS] "));
}

TEST_F(LogTest, FilesTurnOverAtTheirSizeAndTheNewestFewStay) {
    WriteFile(m_folder / "zantrel-2001-01-01.log", "old\n");
    WriteFile(m_folder / "zantrel-notes.log", "not ours\n");
    ASSERT_TRUE(ConfigureLog({m_folder.Path(), false, 2000, 3}));
    for (int i = 0; i < 200; ++i) {
        LogInformation("event " + std::to_string(i));
        if (i % 5 == 0) FlushLog(); // or all of them would be one write into one file
    }
    FlushLog();
    const auto files = m_folder.Files("zantrel-20");
    ASSERT_THAT(files, SizeIs(3));
    EXPECT_THAT(files[0], testing::Not("zantrel-2001-01-01.log"));
    EXPECT_EQ(ReadFile(m_folder / "zantrel-notes.log"), "not ours\n");
    std::string all;
    for (const std::string& file : files) {
        EXPECT_LT(std::filesystem::file_size(m_folder / file), 2600u);
        all += ReadFile(m_folder / file);
    }
    EXPECT_THAT(all, HasSubstr("event 120\n"));
    EXPECT_THAT(all, HasSubstr("event 199\n"));
}

TEST(LogProcess, EarlyEventsComeFirstAndTheEndOfTheProgramLosesNone) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own, in which nothing was configured before
    const std::string name = (std::filesystem::temp_directory_path() / "zantrel-test-log-process").string();
    std::filesystem::remove_all(name);
    const auto run = [&] {
        for (int i = 0; i < 1005; ++i) LogInformation("early");
        ConfigureLog({name});
        for (int i = 0; i < 20'000; ++i) LogInformation("late");
        std::exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::directory_iterator(name))
        for (const std::string& line : LinesOf(entry.path().string())) lines.push_back(line);
    std::filesystem::remove_all(name);
    ASSERT_THAT(lines, SizeIs(21'001));
    EXPECT_THAT(lines[999], HasSubstr(" early"));
    EXPECT_THAT(lines[1000], HasSubstr("5 more events came before the log was started."));
    EXPECT_THAT(lines[1001], HasSubstr(" late"));
}

TEST(LogFile, TwoProgramsShareAFolderAndAThirdGoesOnWhereTheyStopped) {
    const CTempFolder folder;
    const SLogDay day{2024, 1, 31};
    CLogFile one(folder.Path(), 10, 5), two(folder.Path(), 10, 5);
    for (CLogFile* file : {&one, &two, &one, &two}) {
        file->Append(day, "123456");
        file->Flush();
    }
    CLogFile three(folder.Path(), 10, 5);
    three.Append(day, "x");
    three.Flush();
    EXPECT_EQ(ReadFile(folder / "zantrel-2024-01-31.log"), "123456\n123456\n");
    EXPECT_EQ(ReadFile(folder / "zantrel-2024-01-31.2.log"), "123456\n123456\n");
    EXPECT_EQ(ReadFile(folder / "zantrel-2024-01-31.3.log"), "x\n");
}

TEST(LogFile, LinesThatCannotBeWrittenAreCounted) {
    const CTempFolder folder;
    const std::string logs = folder / "log";
    const SLogDay day{2024, 1, 31};
    CLogFile file(logs, 1000, 5);
    WriteFile(logs, "in the way");
    testing::internal::CaptureStderr();
    for (int i = 0; i < 3; ++i) {
        file.Append(day, "2024-01-31 09:30:00.123 [Information] [STATUS] lost");
        file.Flush();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "The log in " + logs + " cannot be written: Not a directory\n");
    std::filesystem::remove(logs);
    file.Append(day, "2024-01-31 09:30:01.000 [Information] [STATUS] kept");
    file.Flush();
    EXPECT_EQ(
        ReadFile(logs + "/zantrel-2024-01-31.log"),
        "2024-01-31 09:30:01.000 [Information] [STATUS] 3 lines of the log could not be written (Not a directory).\n"
        "2024-01-31 09:30:01.000 [Information] [STATUS] kept\n");
    std::filesystem::remove_all(logs);
    file.Append(day, "after the folder was removed");
    file.Flush();
    EXPECT_EQ(ReadFile(logs + "/zantrel-2024-01-31.log"), "after the folder was removed\n");
}
