// SPDX-License-Identifier: MIT
#include "base/Hash.h"
#include "support/ChildProcess.h"
#include "support/SimulatedDisk.h"
#include "watchlist/FileFixture.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/RecoveryKeeper.h"

#include <array>
#include <csignal>
#include <sys/resource.h>
#include <thread>

// Saves and recoveries that are interrupted: on a simulated disk that fails at any call, and whose process or power may
// end there; and by the system itself.

using namespace vx;
using namespace vx::test;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr const char* kFile = "/home/list.vxw";
constexpr const char* kState = "/state";

/// Contents that a block of the reader does not hold; no part of one is part of another.
const std::string& Version(size_t number) {
    static std::array<std::string, 10> versions;
    std::string& out = versions.at(number);
    for (int line = 0; out.size() < 20'000; ++line) out += fmt::format("version {} line {}\r\n", number, line);
    return out;
}

/// "version 3", or what it is when it is none, short enough for a message.
std::string NameOf(const std::string& text) {
    const std::string name = text.substr(0, std::string_view("version 1").size());
    return name.size() == 9 && text == Version(static_cast<size_t>(name.back() - '0')) ? name : "broken: " + name;
}

bool SaveOver(const std::string& former, const std::string& text) {
    SSaveJob job;
    job.path = kFile;
    job.text = text;
    job.knownHash = ContentHash(former);
    return CFileSaver(kState).Save(job).IsDone();
}

std::vector<std::string> Kept(const CSimulatedDisk& disk) {
    std::vector<std::string> out;
    for (const SBackup& backup : CFileBackups(kState).List(kFile))
        out.push_back(NameOf(disk.Content(backup.path).value()));
    return out;
}

using CInterruptedSaveTest = CFileFixture;

} // namespace

TEST(CFileSaver, LeavesTheOldOrTheNewFileAndKeepsTheFormerOnesOnAnyFault) {
    const std::string first = Version(1), second = Version(2), old = Version(3), next = Version(4);
    TryEveryFault(
        [&](CSimulatedDisk& disk) {
            disk.Put(kFile, first);
            disk.Put("/state/there", "");
            ASSERT_TRUE(SaveOver(first, second) && SaveOver(second, old));
        },
        [&] { return SaveOver(old, next); },
        [&](CSimulatedDisk& disk, const SDiskOutcome& outcome) {
            const std::string text = disk.Content(kFile).value_or("none"), now = NameOf(text);
            EXPECT_THAT(now, AnyOf("version 3", "version 4"));
            EXPECT_TRUE(!outcome.saidDone || now == "version 4");
            EXPECT_TRUE(!outcome.saidFailed || now == "version 3");
            EXPECT_THAT(Kept(disk), Each(AnyOf("version 1", "version 2", "version 3")));
            EXPECT_THAT(Kept(disk), testing::IsSupersetOf({"version 1", "version 2"}));
            EXPECT_TRUE(now == "version 3" || Kept(disk).front() == "version 3");
            EXPECT_TRUE(SaveOver(text, Version(5)));
            EXPECT_EQ(Kept(disk).front(), now);
            EXPECT_THAT(disk.Names("/home"), ElementsAre("list.vxw")) << "what was begun stays";
        });
}

TEST_F(CInterruptedSaveTest, ThatTheSystemRefusesLeavesTheFileAndWhatIsKeptAndSaysWhy) {
    OpenAs("list.vxw", "Symbols=IBM:1,;\r\n");
    for (size_t i = 0; i <= CFileBackups::kKept; ++i) {
        Change(2, fmt::format("S{}", i));
        ASSERT_TRUE(Save().IsDone());
    }
    const std::vector<std::string> before = BackupTexts();
    const std::string old = ReadFile(At("list.vxw"));
    EXPECT_EQ(ExitCode(Fork([&] {
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{3072, 3072}; // Enough for what is replaced, not for what replaces it.
                  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
                  for (int row = 1; row <= 400; ++row) Change(row, fmt::format("SYMBOL{}", row));
                  const std::string error = file.Save({}, {.withoutBackup = true}).error;
                  const bool named = error.find(file.Path()) != std::string::npos && doc.IsModified();
                  return named && error.ends_with("could not be saved: it is too large.") ? 0 : 1;
              })),
              0);
    EXPECT_EQ(ReadFile(At("list.vxw")), old);
    EXPECT_EQ(BackupTexts(), before);
    EXPECT_THAT(files.Files(), ElementsAre("list.vxw"));
    EXPECT_THAT(file.Open(At("list.vxw")).notices, testing::IsEmpty()) << "nobody else changed the file";
}

TEST_F(CInterruptedSaveTest, UnsavedChangesAreFoundAfterAKill) {
    OpenAs("list.vxw", "Symbols=IBM:1,;\r\n");
    for (size_t kills = 0; kills < 3; ++kills) {
        const pid_t child = Fork([&] {
            CRecoveryKeeper keeper(doc, file, state.Path());
            Change(2, "MSFT");
            SetNote(70, fmt::format("kept{}", kills));
            keeper.KeepNow({});
            WriteFile(state / fmt::format("ready{}", kills), "");
            for (;;) pause();
            return 0;
        });
        while (!std::filesystem::exists(state / fmt::format("ready{}", kills))) std::this_thread::yield();
        EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(kills)) << "a running program's recovery was offered";
        kill(child, SIGKILL);
        EXPECT_EQ(ExitCode(child), -1);
    }
    std::vector<SRecovery> found = FindRecoveries(state.Path());
    ASSERT_THAT(found, SizeIs(3));
    EXPECT_EQ(found[0].originalPath, At("list.vxw"));
    EXPECT_GT(found[0].savedAt, 1'600'000'000);
    EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(0)) << "two programs were offered the same recovery";

    doc.NewDocument();
    file.Forget();
    file.OpenRecovered(found[0]);
    EXPECT_EQ(Rows() + std::string(doc.Notes().Get(70)), "IBM|MSFTkept0");
    EXPECT_EQ(shown.title, "list");
    EXPECT_TRUE(doc.IsModified());
    CRecoveryKeeper keeper(doc, file, state.Path());
    keeper.Adopt(found[0]);
    EXPECT_TRUE(Save().IsDone()) << "its file is the one that it was of";
    keeper.Poll({}, 0);
    found.clear();
    EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(2));
}
