#include "settings/Settings.h"
#include "support/ChildProcess.h"
#include "watchlist/FileFixture.h"
#include "watchlist/ScratchDoc.h"
#include "watchlist/file/RecoveryKeeper.h"

#include <barrier>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class WatchlistSave : public CFileFixture {
protected:
    WatchlistSave() { OpenAs("banks.vxw", "Symbols=JPM:1,;\r\n"); }

    mode_t ModeOf(const std::string& path) const {
        struct stat status {};
        return lstat(path.c_str(), &status) == 0 ? status.st_mode : 0;
    }
    std::vector<std::string> BackupTexts() const {
        std::vector<std::string> out;
        for (const SBackup& backup : file.Backups()) out.push_back(ReadFile(backup.path));
        return out;
    }
};

} // namespace

TEST_F(WatchlistSave, WritesTheFileAndKeepsWhatItReplaces) {
    Change(2, "BAC");
    shown.statuses.clear();
    ASSERT_TRUE(Save().IsDone());
    EXPECT_EQ(ReadFile(At("banks.vxw")), Written());
    EXPECT_FALSE(doc.IsModified());
    EXPECT_EQ(shown.statuses.front(), "Saving Watchlist \"" + At("banks.vxw") + "\"");
    EXPECT_EQ(shown.Status(), doc.StatusText());
    EXPECT_EQ(settings.ReadText(kMyWatchlists), files.Path() + "/");
    EXPECT_THAT(BackupTexts(), ElementsAre("Symbols=JPM:1,;\r\n"));
    EXPECT_THAT(files.Files(), ElementsAre("banks.vxw"));

    Save();
    EXPECT_EQ(file.Backups().size(), 1u) << "a save that changed nothing pushed a backup out";
    std::string second = Written();
    for (int i = 0; i < 6; ++i) {
        Change(3, fmt::format("S{}", i));
        if (i == 5) second = ReadFile(At("banks.vxw"));
        Save();
    }
    ASSERT_EQ(file.Backups().size(), CFileBackups::kKept);
    EXPECT_EQ(BackupTexts().front(), second);
    EXPECT_EQ(file.Backups().front().number, 7);
    EXPECT_EQ(file.Backups().front().bytes, second.size());
    EXPECT_GT(file.Backups().front().savedAt, 1'600'000'000);
}

TEST_F(WatchlistSave, UnderAnotherNameTakesOverNameAndTitle) {
    ASSERT_TRUE(SaveAs("more.banks.vxw").IsDone());
    EXPECT_EQ(file.Path(), At("more.banks.vxw"));
    EXPECT_EQ(shown.title, "more.banks");
    EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=JPM:1,;\r\n");
    EXPECT_THAT(file.Backups(), IsEmpty());
}

TEST_F(WatchlistSave, FollowsLinksAndKeepsPermissions) {
    std::filesystem::create_symlink("banks.vxw", At("link.vxw"));
    std::filesystem::create_symlink(At("new.vxw"), At("to_nothing.vxw"));
    chmod(At("banks.vxw").c_str(), 0640);
    ASSERT_TRUE(SaveAs("link.vxw").IsDone());
    EXPECT_EQ(ReadFile(At("banks.vxw")), Written());
    EXPECT_TRUE(S_ISLNK(ModeOf(At("link.vxw"))));
    EXPECT_EQ(ModeOf(At("banks.vxw")) & 0777, 0640u);
    EXPECT_THAT(BackupTexts(), ElementsAre("Symbols=JPM:1,;\r\n"));
    ASSERT_TRUE(SaveAs("to_nothing.vxw").IsDone());
    EXPECT_EQ(ReadFile(At("new.vxw")), Written());
    const std::string longest(251, 'n');
    EXPECT_TRUE(SaveAs(longest + ".vxw").IsDone());
}

TEST_F(WatchlistSave, AFileThatAnotherProgramChangedIsNotOverwrittenUnasked) {
    WriteFile(At("banks.vxw"), "Symbols=JPM:1,;\r\n");
    EXPECT_TRUE(Save().IsDone()) << "the same content written again is no change";
    WriteFile(At("banks.vxw"), "Symbols=BAC:1,;\r\n");
    Change(2, "GS");
    const SFileResult asked = Save();
    EXPECT_EQ(asked.outcome, EFileOutcome::ChangedOnDisk);
    EXPECT_THAT(asked.error, HasSubstr("banks.vxw"));
    EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=BAC:1,;\r\n");
    EXPECT_TRUE(doc.IsModified());
    EXPECT_TRUE(file.Save({}, {.overwriteChanged = true}).IsDone());
    EXPECT_THAT(BackupTexts(), ElementsAre("Symbols=BAC:1,;\r\n", "Symbols=JPM:1,;\r\n"));
    std::filesystem::remove(At("banks.vxw"));
    EXPECT_TRUE(Save().IsDone()) << "a file that is gone is made again";
    file.Forget();
    EXPECT_EQ(Save().outcome, EFileOutcome::Failed);
}

TEST_F(WatchlistSave, AFileOfWhichNotAllWasReadIsNotOverwrittenUnasked) {
    const std::string mixed = "Symbols=JPM:1,;\r\n[more]\r\nNotes=1:lost;\r\n";
    const std::string lineFeeds = "[Watchlist]\nSymbols=JPM\nSymbolNumbers=1\n";
    for (const std::string& text : {mixed, lineFeeds}) {
        const SFileResult opened = OpenAs("banks.vxw", text);
        EXPECT_THAT(text == mixed ? opened.notices.at(0) : opened.remark,
                    HasSubstr(text == mixed ? "Line 2 of \"" : "Nothing in the file"));
        Change(2, "GS");
        const SFileResult asked = Save();
        EXPECT_EQ(asked.outcome, EFileOutcome::NotAllRead);
        EXPECT_THAT(asked.error, HasSubstr("banks.vxw"));
        EXPECT_EQ(ReadFile(At("banks.vxw")), text);
        EXPECT_TRUE(doc.IsModified());
        EXPECT_TRUE(SaveAs("other.vxw").IsDone());
        OpenAs("banks.vxw", text);
        EXPECT_TRUE(file.Save({}, {.overwriteUnread = true}).IsDone());
        EXPECT_EQ(BackupTexts().front(), text);
        EXPECT_TRUE(Save().IsDone()) << "asked again";
    }
    OpenAs("banks.vxw", "");
    EXPECT_TRUE(Save().IsDone()) << "an empty file holds nothing";
}

TEST_F(WatchlistSave, AFileThatCannotBeReadIsToldAsThat) {
    if (!HasOrdinaryUser()) GTEST_SKIP() << kNoOrdinaryUser;
    Change(2, "GS");
    for (const std::string& path : {folder.Path(), state.Path(), files.Path()}) chmod(path.c_str(), 0777);
    for (const std::string& path : {state / "generations", state / "recovery"}) std::filesystem::remove_all(path);
    chmod(At("banks.vxw").c_str(), 0222);
    EXPECT_EQ(RunAsOrdinaryUser([&] {
                  const SFileResult asked = Save();
                  if (asked.outcome != EFileOutcome::BackupNotKept) return 1;
                  if (asked.error !=
                      fmt::format("The file \"{}\" cannot be read: you are not allowed to. What it holds "
                                  "could not be kept.",
                                  At("banks.vxw")))
                      return 2;
                  return file.Save({}, {.withoutBackup = true}).IsDone() ? 0 : 3;
              }),
              0);
    EXPECT_EQ(ReadFile(At("banks.vxw")), Written());
}

TEST_F(WatchlistSave, WhatANewFileCannotTakeOverFromTheFormerOneIsTold) {
    std::filesystem::create_hard_link(At("banks.vxw"), At("second name.vxw"));
    Change(2, "GS");
    EXPECT_THAT(Save().notices, ElementsAre(fmt::format("\"{}\" had 1 other name (hard link). The old content stays "
                                                        "there.",
                                                        At("banks.vxw"))));
    EXPECT_EQ(ReadFile(At("second name.vxw")), "Symbols=JPM:1,;\r\n");
    Change(2, "BAC");
    EXPECT_THAT(Save().notices, IsEmpty());
    if (geteuid() != 0 || !HasOrdinaryUser()) GTEST_SKIP() << "no file of another user can be made";
    ASSERT_EQ(chown(At("banks.vxw").c_str(), 1234, 1234), 0);
    chmod(At("banks.vxw").c_str(), 0646);
    Change(2, "MS");
    EXPECT_THAT(Save().notices, IsEmpty());
    struct stat status {};
    ASSERT_EQ(stat(At("banks.vxw").c_str(), &status), 0);
    EXPECT_TRUE(status.st_uid == 1234 && status.st_gid == 1234 && (status.st_mode & 0777) == 0646);
    std::filesystem::remove_all(state / "generations");
    for (const std::string& path : {folder.Path(), state.Path(), files.Path()}) chmod(path.c_str(), 0777);
    Change(2, "GE");
    EXPECT_EQ(RunAsOrdinaryUser([&] {
                  const SFileResult result = Save();
                  return result.IsDone() && result.notices.size() == 2 &&
                                 result.notices[0].find("belonged to another user") != std::string::npos
                             ? 0
                             : 1;
              }),
              0);
}

TEST_F(WatchlistSave, OfTwoWindowsInTheSameInstantOneIsAsked) {
    CScratchDoc other;
    CWatchlistFile otherFile(other.doc, state.Path());
    constexpr int kRounds = 50;
    for (int round = 0; round < kRounds; ++round) {
        ASSERT_TRUE(file.Open(At("banks.vxw")).IsDone() && otherFile.Open(At("banks.vxw")).IsDone());
        Change(2, fmt::format("A{}", round));
        other.doc.Update()->PlaceSymbol(2, fmt::format("B{}", round));
        const SSaveJob jobs[] = {file.BeginSave({}, {}), otherFile.BeginSave({}, {})};
        SFileResult results[2];
        std::barrier together(2);
        std::thread second([&] {
            together.arrive_and_wait();
            results[1] = otherFile.Saver().Save(jobs[1]);
        });
        together.arrive_and_wait();
        results[0] = file.Saver().Save(jobs[0]);
        second.join();
        const size_t first = results[0].IsDone() ? 0 : 1;
        ASSERT_TRUE(results[first].IsDone()) << "round " << round;
        ASSERT_EQ(results[1 - first].outcome, EFileOutcome::ChangedOnDisk) << "round " << round;
        ASSERT_EQ(ReadFile(At("banks.vxw")), jobs[first].text);
    }
}

TEST_F(WatchlistSave, WhatIsEditedMeanwhileLeavesTheDocumentModified) {
    Change(2, "GS");
    const auto type = [&](int row, std::string_view symbol) {
        doc.Edit("type", [&](CWatchlistEdit& edit) { edit.EnterSymbol(row, symbol); });
    };
    type(3, "MS");
    const SSaveJob job = file.BeginSave({}, {});
    type(4, "BAC");
    file.EndSave(job, file.Saver().Save(job));
    EXPECT_EQ(ReadFile(At("banks.vxw")).find("BAC"), std::string::npos);
    EXPECT_TRUE(doc.IsModified());
    doc.Undo().Undo();
    EXPECT_FALSE(doc.IsModified()) << "this is what was saved";
    doc.Undo().Undo();
    EXPECT_TRUE(doc.IsModified());
    doc.Undo().Redo();

    const SSaveJob second = file.BeginSave({}, {});
    doc.Edit({}, [](CWatchlistEdit&) {}); // Something that is no edit.
    file.EndSave(second, file.Saver().Save(second));
    EXPECT_TRUE(doc.IsModified());
    type(5, "C");
    doc.Undo().Undo();
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(WatchlistSave, OnlyItsUserReadsWhatIsKeptBesideAFile) {
    Change(2, "GS");
    ASSERT_TRUE(Save().IsDone());
    CRecoveryKeeper keeper(doc, file, state.Path());
    Change(3, "MS");
    keeper.KeepNow({});
    int found = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(state.Path())) {
        EXPECT_EQ(ModeOf(entry.path().string()) & 0077, 0u) << entry.path();
        found += entry.is_regular_file();
    }
    EXPECT_GE(found, 4);
}

TEST_F(WatchlistSave, AContentWithoutABackupIsNotReplacedUnasked) {
    std::filesystem::remove_all(state / "generations");
    WriteFile(state / "generations", "in the way");
    Change(2, "GS");
    for (const SFileResult& asked : {Save(), SaveAs("banks.vxw")}) {
        EXPECT_EQ(asked.outcome, EFileOutcome::BackupNotKept);
        EXPECT_EQ(asked.error, fmt::format("The backup of \"{}\" could not be made: part of its path is not a "
                                           "folder.",
                                           At("banks.vxw")));
        EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=JPM:1,;\r\n");
        EXPECT_TRUE(doc.IsModified());
    }
    WriteFile(At("banks.vxw"), "Symbols=BAC:1,;\r\n");
    EXPECT_EQ(file.Save({}, {.withoutBackup = true}).outcome, EFileOutcome::ChangedOnDisk);
    EXPECT_EQ(file.Save({}, {.overwriteChanged = true}).outcome, EFileOutcome::BackupNotKept);
    EXPECT_TRUE(SaveAs("new.vxw").IsDone()) << "nothing is replaced";
    const SFileResult agreed = file.SaveAs(At("banks.vxw"), {}, {.withoutBackup = true});
    EXPECT_TRUE(agreed.IsDone());
    EXPECT_THAT(agreed.notices, ElementsAre(HasSubstr("could not be made")));
    EXPECT_EQ(ReadFile(At("banks.vxw")), Written());
}

TEST_F(WatchlistSave, WhatIsNoFileIsNeitherOpenedNorReplaced) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(At("folder"));
    std::filesystem::create_symlink("loop", At("loop"));
    struct SCase {
        std::string path;
        const char* reason;
    };
    for (const SCase& c : {SCase{At("pipe"), "it is not a file but a pipe, a device or a socket."},
                           {At("folder"), "it is a folder."},
                           {"/dev/zero", "it is not a file but a pipe, a device or a socket."},
                           {At("banks.vxw/x"), "part of its path is not a folder."},
                           {At("loop"), "its links lead nowhere."}}) {
        Change(2, "GS");
        const std::string before = Written();
        for (const SFileResult& result : {file.Open(c.path), file.SaveAs(c.path, {})}) {
            EXPECT_EQ(result.outcome, EFileOutcome::Failed) << c.path;
            EXPECT_THAT(result.error, StartsWith("The watchlist \"" + c.path + "\" could not be ")) << c.path;
            EXPECT_THAT(result.error, HasSubstr(c.reason)) << c.path;
        }
        EXPECT_EQ(Written(), before);
        EXPECT_TRUE(doc.IsModified());
        EXPECT_EQ(file.Path(), At("banks.vxw"));
    }
    EXPECT_THAT(file.Open(At("none.vxw")).error, HasSubstr("there is no such file or folder."));
    EXPECT_THAT(SaveAs("none/list.vxw").error, HasSubstr("there is no such file or folder."));
    ASSERT_EQ(truncate(At("banks.vxw").c_str(), kMostWatchlistBytes + 1), 0);
    EXPECT_THAT(file.Open(At("banks.vxw")).error, HasSubstr("it is larger than 256 MB, which no watchlist is."));
    EXPECT_TRUE(S_ISFIFO(ModeOf(At("pipe"))));
}

TEST_F(WatchlistSave, WithoutPermissionTheOldFileStaysAndTheDocumentIsModified) {
    if (!HasOrdinaryUser()) GTEST_SKIP() << kNoOrdinaryUser;
    Change(2, "BAC");
    const auto fails = [&](const std::string& path) {
        const SFileResult result = file.SaveAs(path, {}, {.withoutBackup = true});
        const bool named = result.error.find("could not be saved: you are not allowed to.") != std::string::npos;
        return !result.IsDone() && named && doc.IsModified();
    };
    // Modes that stop the owner too: the tests may run as an ordinary user themselves.
    for (const std::string& path : {folder.Path(), state.Path()}) chmod(path.c_str(), 0755);
    chmod(files.Path().c_str(), 0555);
    chmod(At("banks.vxw").c_str(), 0644);
    EXPECT_EQ(RunAsOrdinaryUser([&] { return fails(At("banks.vxw")) && fails(At("new.vxw")) ? 0 : 1; }), 0);
    chmod(files.Path().c_str(), 0777);
    chmod(At("banks.vxw").c_str(), 0444);
    EXPECT_EQ(RunAsOrdinaryUser([&] { return fails(At("banks.vxw")) ? 0 : 1; }), 0);
    chmod(At("banks.vxw").c_str(), 0000);
    EXPECT_EQ(RunAsOrdinaryUser([&] { return file.Open(At("banks.vxw")).IsDone() ? 1 : 0; }), 0);
    chmod(At("banks.vxw").c_str(), 0644);
    EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=JPM:1,;\r\n");
    EXPECT_THAT(files.Files(), ElementsAre("banks.vxw"));
}

TEST_F(WatchlistSave, RejectedSymbolsStandBehindTheOthersAndNotAmongTheAnnotations) {
    OpenAs("list.vxw", "Symbols=NOPE:1,5,;IBM:2,;\r\nAnnotations=3:#a;\r\n");
    doc.SymbolNotFound("NOPE");
    EXPECT_EQ(WrittenLine("Symbols"), "IBM:2,;NOPE:1,5,;");
    EXPECT_EQ(WrittenLine("Annotations"), "3:#a;");
    doc.Update()->PlaceSymbol(1, "GS");
    doc.Update()->PlaceSymbol(5, "GS");
    EXPECT_EQ(WrittenLine("Symbols"), "GS:1,5,;IBM:2,;") << "a rejected symbol that stands nowhere is not written";
}
