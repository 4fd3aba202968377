// SPDX-License-Identifier: MIT
#include "base/Hash.h"
#include "support/ChildProcess.h"
#include "support/SimulatedDisk.h"
#include "watchlist/FileFixture.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/RecoveryKeeper.h"

#include <csignal>

// Saves and recoveries that are interrupted: on a simulated disk that fails at any call, and whose process or power may
// end there; and by the system itself.

using namespace vx;
using namespace vx::test;

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

TEST_F(CInterruptedSaveTest, UnsavedChangesAreFoundAfterAKill) {
    OpenAs("list.vxw", "Symbols=IBM:1,;\r\n");
    const pid_t child = Fork([&] {
        CRecoveryKeeper keeper(doc, file, state.Path());
        Change(2, "MSFT");
        SetNote(70, "kept");
        keeper.KeepNow({});
        WriteFile(state / "ready", "");
        for (;;) pause();
        return 0;
    });
    while (!std::filesystem::exists(state / "ready")) std::this_thread::yield();
    EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(0)) << "a running program's recovery was offered";
    kill(child, SIGKILL);
    EXPECT_EQ(ExitCode(child), -1);
    std::vector<SRecovery> found = FindRecoveries(state.Path());
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_GT(found[0].savedAt, 1'600'000'000);
    EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(0)) << "two programs were offered the same recovery";
    doc.NewDocument();
    file.Forget();
    file.OpenRecovered(found[0]);
    EXPECT_EQ(Rows() + std::string(doc.Notes().Get(70)), "IBM|MSFTkept");
    EXPECT_TRUE(doc.IsModified());
    CRecoveryKeeper keeper(doc, file, state.Path());
    keeper.Adopt(found[0]);
    EXPECT_TRUE(Save().IsDone()) << "its file is the one that it was of";
    keeper.Poll({}, 0);
    found.clear();
    EXPECT_THAT(FindRecoveries(state.Path()), SizeIs(0));
}
