// Saves and recoveries on a disk that fails at any call, and whose process or power may end there.

#include "base/Hash.h"
#include "support/SimulatedDisk.h"
#include "watchlist/file/FileSaver.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/RecoveryWriter.h"
#include "watchlist/file/StateFiles.h"

#include <gmock/gmock.h>

#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

using namespace vx;
using namespace vx::test;
using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsSupersetOf;
using testing::SizeIs;

namespace {

constexpr const char* kFile = "/home/list.vxw";
constexpr const char* kState = "/state";

/// Contents that a block of the reader does not hold; no part of one is part of another.
const std::string& Version(size_t number) {
    static const std::vector<std::string> versions = [] {
        std::vector<std::string> out(6);
        for (size_t i = 0; i < out.size(); ++i)
            for (int line = 0; line < 800; ++line) out[i] += fmt::format("version {} line {}\r\n", i, line);
        return out;
    }();
    return versions.at(number);
}

/// "version 3", or what it is when it is none, short enough for a message.
std::string NameOf(const std::string& text) {
    for (size_t number = 1; number <= 5; ++number)
        if (text == Version(number)) return fmt::format("version {}", number);
    return fmt::format("{} bytes: {}", text.size(), text.substr(0, 20));
}

SFileResult Save(const std::string& former, const std::string& text) {
    SSaveJob job;
    job.path = kFile;
    job.text = text;
    job.knownHash = ContentHash(former);
    return CFileSaver(kState).Save(job);
}

std::vector<std::string> Kept(const CSimulatedDisk& disk) {
    std::vector<std::string> out;
    for (const SBackup& backup : CFileBackups(kState).List(kFile))
        out.push_back(NameOf(disk.Content(backup.path).value()));
    return out;
}

std::string Recovery(const std::string& text) {
    SRecovery recovery;
    recovery.text = text;
    return FormatRecovery(recovery);
}

std::vector<std::string> FoundTexts() {
    std::vector<std::string> out;
    for (const SRecovery& recovery : FindRecoveries(kState)) out.push_back(NameOf(recovery.text));
    return out;
}

bool Write(const std::string& text) {
    std::vector<SRecovery> found = FindRecoveries(kState);
    CRecoveryWriter writer(kState);
    if (!found.empty()) writer.Adopt(found.front().file, std::exchange(found.front().claim, {}));
    writer.Write(Recovery(text));
    writer.Flush();
    return writer.Error() == 0;
}

} // namespace

TEST(DiskFaults, ASaveLeavesTheOldOrTheNewFileAndKeepsTheFormerOnes) {
    const std::string first = Version(1), second = Version(2), old = Version(3), next = Version(4);
    TryEveryFault(
        [&](CSimulatedDisk& disk) {
            disk.Put(kFile, first);
            disk.Put("/state/there", "");
            ASSERT_TRUE(Save(first, second).IsDone());
            ASSERT_TRUE(Save(second, old).IsDone());
        },
        [&] { return Save(old, next).IsDone(); },
        [&](CSimulatedDisk& disk, const SDiskOutcome& outcome) {
            const std::string text = disk.Content(kFile).value_or("none");
            const std::string now = NameOf(text);
            EXPECT_THAT(now, AnyOf("version 3", "version 4"));
            if (outcome.saidDone) {
                EXPECT_EQ(now, "version 4");
            }
            if (outcome.saidFailed) {
                EXPECT_EQ(now, "version 3");
            }
            EXPECT_THAT(Kept(disk), Each(AnyOf("version 1", "version 2", "version 3")));
            EXPECT_THAT(Kept(disk), IsSupersetOf({"version 1", "version 2"}));
            if (now == "version 4") {
                EXPECT_THAT(Kept(disk), Contains("version 3"));
            }
            EXPECT_TRUE(Save(text, Version(5)).IsDone());
            EXPECT_EQ(Kept(disk).front(), now);
            EXPECT_THAT(disk.Names("/home"), ElementsAre("list.vxw")) << "what was begun stays";
        });
}

TEST(DiskFaults, AnotherRecoveryTakesThePlaceOfTheFormerOneWhole) {
    const std::string old = Version(1), next = Version(2);
    TryEveryFault(
        [&](CSimulatedDisk& disk) {
            disk.Put("/state/there", "");
            ASSERT_TRUE(Write(old));
            disk.Restart();
        },
        [&] { return Write(next); },
        [&](CSimulatedDisk&, const SDiskOutcome& outcome) {
            const std::vector<std::string> found = FoundTexts();
            // Where the former one could not be read it stays, beside the new one.
            EXPECT_THAT(found, Each(AnyOf("version 1", "version 2")));
            EXPECT_THAT(found, AnyOf(SizeIs(1), ElementsAre("version 1", "version 2")));
            if (outcome.saidDone) {
                EXPECT_THAT(found, Contains("version 2"));
            }
            if (outcome.saidFailed) {
                EXPECT_THAT(found, Contains("version 1"));
            }
        });
}

TEST(DiskFaults, AFirstRecoveryIsThereOrIsNot) {
    const std::string text = Version(1);
    TryEveryFault([](CSimulatedDisk& disk) { disk.Put("/state/there", ""); }, [&] { return Write(text); },
                  [&](CSimulatedDisk& disk, const SDiskOutcome& outcome) {
                      const std::vector<std::string> found = FoundTexts();
                      EXPECT_THAT(found, Each("version 1"));
                      EXPECT_EQ(found.size(), outcome.saidDone ? 1u : outcome.saidFailed ? 0u : found.size());
                      EXPECT_THAT(disk.Names(RecoveryFolder(kState)),
                                  Each(AnyOf(EndsWith(".recovery"), EndsWith(".lock"))));
                  });
}
