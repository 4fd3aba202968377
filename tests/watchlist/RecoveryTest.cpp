// SPDX-License-Identifier: MIT
#include "watchlist/FileFixture.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/RecoveryKeeper.h"

using namespace vx;
using namespace vx::test;

namespace {

class CRecoveryKeeperTest : public CFileFixture {
protected:
    CRecoveryKeeperTest() {
        OpenAs("list.vxw", "Symbols=IBM:1,;\r\n");
        PollAt(0);
    }
    void PollAt(int64_t ms) {
        keeper.Poll({}, ms);
        keeper.Flush();
    }
    std::vector<std::string> RecoveryFiles() const {
        std::vector<std::string> out;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(state / "recovery", none))
            if (entry.path().extension() == ".recovery") out.push_back(ReadFile(entry.path().string()));
        return out;
    }
    /// What the one recovery file holds.
    SRecovery Kept() const {
        const std::vector<std::string> found = RecoveryFiles();
        return found.size() == 1 ? ParseRecovery(found.front()).value_or(SRecovery{}) : SRecovery{};
    }
    std::vector<SRecovery> Found() const { return FindRecoveries(state.Path()); }

    CRecoveryKeeper keeper{doc, file, state.Path()};
};

bool HasThreadNamed(std::string_view name) {
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task"))
        if (ReadFile(task.path().string() + "/comm") == std::string(name) + "\n") return true;
    return false;
}

} // namespace

TEST_F(CRecoveryKeeperTest, WritesWhenTheUserPausesAndWhileTheyDoNot) {
    Change(2, "A");
    PollAt(10);
    PollAt(900);
    EXPECT_THAT(RecoveryFiles(), IsEmpty()) << "written while the user still types";
    PollAt(1010);
    EXPECT_EQ(Kept().text, Written());
    const std::string first = Kept().text;
    for (int64_t now = 2000; now <= 6000; now += 500) {
        Change(2, fmt::format("S{}", now));
        PollAt(now);
        EXPECT_EQ(Kept().text, first) << now;
    }
    Change(2, "LAST");
    PollAt(7000);
    EXPECT_EQ(Kept().text, Written()) << "changes without a pause are never written";
    EXPECT_TRUE(HasThreadNamed(CRecoveryWriter::kThreadName));
    // It goes with the save and with the document.
    Save();
    PollAt(7001);
    EXPECT_TRUE(std::filesystem::is_empty(state / "recovery"));
    Change(2, "B");
    keeper.KeepNow({});
    EXPECT_EQ(Kept().text, Written());
    doc.CloseDocument();
    PollAt(7002);
    EXPECT_THAT(RecoveryFiles(), IsEmpty());
}

TEST_F(CRecoveryKeeperTest, WhatFailedIsTriedAgainWithoutAnotherChangeAndToldOnce) {
    const auto inTheWay = [&] {
        std::filesystem::remove_all(state / "recovery");
        WriteFile(state / "recovery", "in the way");
    };
    inTheWay();
    Change(2, "A");
    PollAt(0);
    PollAt(1000);
    EXPECT_TRUE(keeper.HasFailed());
    EXPECT_THAT(keeper.TakeError(), testing::HasSubstr("part of its path is not a folder. Save the watchlist"));
    std::filesystem::remove(state / "recovery");
    PollAt(1000 + CRecoveryKeeper::kRetryMs - 1);
    EXPECT_THAT(RecoveryFiles(), IsEmpty()) << "tried again at once";
    EXPECT_EQ(keeper.TakeError(), "") << "told twice";
    PollAt(1000 + CRecoveryKeeper::kRetryMs);
    EXPECT_EQ(Kept().text, Written());
    EXPECT_FALSE(keeper.HasFailed());
    EXPECT_EQ(keeper.TakeError(), "");
    inTheWay(); // The disk fails later than at the first file.
    Change(2, "B");
    keeper.KeepNow({});
    EXPECT_TRUE(keeper.HasFailed());
    EXPECT_NE(keeper.TakeError(), "") << "failed again after it was kept";
}

TEST_F(CRecoveryKeeperTest, NamesTheFileThatASaveLeftWhileTheUserWasTyping) {
    Change(2, "A");
    const SSaveJob job = file.BeginSave(At("other.vxw"), {});
    Change(3, "B");
    PollAt(0);
    PollAt(1000);
    file.EndSave(job, file.Saver().Save(job));
    ASSERT_TRUE(doc.IsModified());
    Change(4, "C");
    PollAt(1010);
    EXPECT_EQ(Kept().originalPath, At("other.vxw"));
    EXPECT_EQ(Kept().knownHash, file.KnownHash());
    EXPECT_EQ(Kept().text, Written()) << "what is kept is older than what was saved";
}

TEST_F(CRecoveryKeeperTest, WhatWasSavedBeforeTheProgramDiedIsNotOffered) {
    Change(2, "A");
    keeper.KeepNow({});
    WriteFile(state / "recovery/1.recovery", RecoveryFiles().at(0));
    EXPECT_THAT(Found(), SizeIs(1));
    ASSERT_TRUE(Save().IsDone());
    EXPECT_THAT(Found(), IsEmpty());
    EXPECT_EQ(RecoveryFiles().size(), 1u) << "the one of a running program stays";
}
