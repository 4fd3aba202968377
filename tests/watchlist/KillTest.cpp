// Saves that are interrupted: by kill -9 at any instant, and by a disk that is full.

#include "base/AtomicFile.h"
#include "support/ChildProcess.h"
#include "watchlist/FileFixture.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/RecoveryKeeper.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <random>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <thread>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr int kKills = 60; // A simulated disk stops a save at each of its calls; here the system itself is tried.

/// A child tells its parent that it is at work.
class CReadySignal {
public:
    CReadySignal() { EXPECT_EQ(pipe(m_ends), 0); }
    CReadySignal(const CReadySignal&) = delete;
    CReadySignal& operator=(const CReadySignal&) = delete;
    ~CReadySignal() {
        close(m_ends[0]);
        close(m_ends[1]);
    }
    void Give() const { EXPECT_EQ(write(m_ends[1], "x", 1), 1); }
    void Await() const {
        char byte;
        EXPECT_EQ(read(m_ends[0], &byte, 1), 1);
    }

private:
    int m_ends[2];
};

class InterruptedSave : public CFileFixture {
protected:
    /// A list whose every line says which one it is, so that a mixture of two is seen.
    void Fill(int version) {
        for (int row = 1; row <= 400; ++row) doc.Update()->PlaceSymbol(row, fmt::format("V{}R{}", version % 10, row));
        doc.Update()->Notes().Set(900, fmt::format("version {}", version % 10));
        doc.Edit({}, [](CWatchlistEdit&) {});
    }
    /// Kills a child some time after it began, up to maxMicroseconds, and says whether it was killed.
    bool KillAfter(pid_t child, int microseconds) {
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
        kill(child, SIGKILL);
        return ExitCode(child) == -1;
    }
    /// How long a save takes here, at least a millisecond, so that kills fall into saves and not before them.
    int TimeOfASave() {
        constexpr int kSaves = 10;
        const auto begin = std::chrono::steady_clock::now();
        for (int version = 1; version <= kSaves; ++version) {
            Fill(version);
            EXPECT_TRUE(Save().IsDone());
        }
        const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - begin;
        return std::clamp(static_cast<int>(taken.count() / kSaves), 1000, 25000);
    }
    bool FailsWhole(std::string_view reason) {
        Fill(2);
        const SFileResult result = file.Save({}, {.withoutBackup = true});
        return !result.IsDone() && result.error.find(reason) != std::string::npos &&
               result.error.find(file.Path()) != std::string::npos && doc.IsModified();
    }
};

} // namespace

TEST_F(InterruptedSave, LeavesTheOldOrTheNewFileWholeWhenKilledAtAnyInstant) {
    std::vector<std::string> whole;
    for (int version = 0; version < 10; ++version) {
        Fill(version);
        whole.push_back(Written());
    }
    Fill(0);
    ASSERT_TRUE(SaveAs("list.vxw").IsDone());
    const int saveMicroseconds = TimeOfASave();
    std::mt19937 random(3);
    std::string last = whole[0];
    int killed = 0, changed = 0;
    for (int i = 1; i <= kKills; ++i) {
        CReadySignal ready;
        const pid_t child = Fork([&] {
            for (int version = i;; ++version) {
                Fill(version);
                if (!file.Save({}, {.overwriteChanged = true}).IsDone()) return 1;
                if (version == i) ready.Give(); // The kill falls into one of the saves that follow.
            }
        });
        ready.Await();
        killed += KillAfter(child, static_cast<int>(random() % static_cast<unsigned>(2 * saveMicroseconds)));
        const std::string now = ReadFile(At("list.vxw"));
        ASSERT_THAT(whole, testing::Contains(now)) << "after kill " << i << ": " << now.size() << " bytes";
        changed += now != last;
        last = now;
    }
    EXPECT_EQ(killed, kKills);
    EXPECT_GT(changed, kKills / 10) << "the kills came before anything was saved";
    for (const SBackup& backup : file.Backups()) EXPECT_THAT(whole, testing::Contains(ReadFile(backup.path)));
    ASSERT_TRUE(file.Open(At("list.vxw")).IsDone());
    EXPECT_EQ(doc.Notes().Get(900), fmt::format("version {}", doc.RowSymbol(1).substr(1, 1)));
    Save();
    EXPECT_THAT(files.Files(), ElementsAre("list.vxw")) << "what killed saves left beside the file stays";
}

TEST_F(InterruptedSave, ByALimitOfTheFileSizeLeavesTheOldFileAndSaysWhy) {
    Fill(1);
    ASSERT_TRUE(SaveAs("list.vxw").IsDone());
    const std::string old = ReadFile(At("list.vxw"));
    EXPECT_EQ(ExitCode(Fork([&] {
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{2048, 2048};
                  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
                  return FailsWhole("could not be saved: it is too large.") ? 0 : 1;
              })),
              0);
    EXPECT_EQ(ReadFile(At("list.vxw")), old);
    EXPECT_THAT(files.Files(), ElementsAre("list.vxw"));
}

TEST_F(InterruptedSave, ByAFailureTakesNothingOfWhatIsKept) {
    OpenAs("list.vxw", "Symbols=IBM:1,;\r\n");
    for (size_t i = 0; i <= CFileBackups::kKept; ++i) {
        Change(2, fmt::format("S{}", i));
        ASSERT_TRUE(Save().IsDone());
    }
    const auto kept = [&] {
        std::vector<std::string> out;
        for (const SBackup& backup : file.Backups()) out.push_back(ReadFile(backup.path));
        return out;
    };
    const std::vector<std::string> before = kept();
    EXPECT_EQ(ExitCode(Fork([&] {
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{3072, 3072}; // Enough for what is replaced, not for what replaces it.
                  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
                  return FailsWhole("could not be saved: it is too large.") ? 0 : 1;
              })),
              0);
    EXPECT_EQ(kept(), before);
    EXPECT_THAT(file.Open(At("list.vxw")).notices, testing::IsEmpty()) << "nobody else changed the file";
}

TEST_F(InterruptedSave, ByAFullDiskLeavesTheOldFileAndSaysWhy) {
    const std::string disk = At("disk");
    std::filesystem::create_directory(disk);
    constexpr int kNotPermitted = 77;
    const int code = ExitCode(Fork([&] {
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=12k") != 0)
            return kNotPermitted;
        Fill(1);
        if (!file.SaveAs(disk + "/list.vxw", {}).IsDone()) return 2;
        const std::string old = ReadFile(disk + "/list.vxw");
        if (!FailsWhole("could not be saved: the disk is full.")) return 3;
        return ReadFile(disk + "/list.vxw") == old ? 0 : 4;
    }));
    if (code == kNotPermitted) GTEST_SKIP() << "no disk of our own may be mounted here";
    EXPECT_EQ(code, 0);
}

TEST_F(InterruptedSave, UnsavedChangesAreFoundAfterAKill) {
    OpenAs("list.vxw", "Symbols=IBM:1,;\r\n");
    for (int kills = 0; kills < 3; ++kills) {
        CReadySignal ready;
        const pid_t child = Fork([&] {
            CRecoveryKeeper keeper(doc, file, state.Path());
            Change(2, "MSFT");
            Change(3, fmt::format("S{}", kills));
            doc.Update()->Notes().Set(70, "kept");
            keeper.Poll({}, 0);
            keeper.Poll({}, CRecoveryKeeper::kQuietMs);
            keeper.Flush();
            ready.Give();
            for (;;) pause();
            return 0;
        });
        ready.Await();
        EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(kills)) << "a running program's recovery was offered";
        EXPECT_TRUE(KillAfter(child, 0));
    }
    std::vector<SRecovery> found = FindRecoveries(state.Path());
    ASSERT_THAT(found, SizeIs(3));
    EXPECT_EQ(found[0].originalPath, At("list.vxw"));
    EXPECT_GT(found[0].savedAt, 1'600'000'000);
    EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(0)) << "two programs were offered the same recovery";

    doc.NewDocument();
    file.Forget();
    file.OpenRecovered(found[0]);
    EXPECT_EQ(doc.RowSymbol(2), "MSFT");
    EXPECT_EQ(doc.Notes().Get(70), "kept");
    EXPECT_EQ(shown.title, "list");
    EXPECT_TRUE(doc.IsModified());
    CRecoveryKeeper keeper(doc, file, state.Path());
    keeper.Adopt(found[0]);
    ASSERT_TRUE(Save().IsDone());
    keeper.Poll({}, 0);
    found.clear();
    EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(2));
}
