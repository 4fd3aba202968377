// SPDX-License-Identifier: MIT
#include "watchlist/file/FileSaver.h"

#include "support/ChildProcess.h"
#include "watchlist/FileFixture.h"
#include "watchlist/ScratchDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/file/RecoveryKeeper.h"

#include <barrier>
#include <sys/stat.h>
#include <thread>

using namespace vx;
using namespace vx::test;

namespace {

class CFileSaverTest : public CFileFixture {
protected:
    CFileSaverTest() { OpenAs("banks.vxw", kFirst); }

    static struct stat StatOf(const std::string& path) {
        struct stat status {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return status;
    }
    SFileResult SaveWith(const SSaveConsent& consent) { return file.Save({}, consent); }
    std::string OnDisk() const { return ReadFile(At("banks.vxw")); }
    /// A save that asks before it replaces the file, and has not touched it.
    void ExpectAsks(const SFileResult& asked, EFileOutcome outcome, const std::string& words = "banks.vxw") {
        EXPECT_EQ(asked.outcome, outcome);
        EXPECT_THAT(asked.error, HasSubstr(words));
        EXPECT_TRUE(doc.IsModified());
    }
    std::string Quoted() const { return "\"" + At("banks.vxw") + "\""; }

    static constexpr const char* kFirst = "Symbols=JPM:1,;\r\n";
};

} // namespace

TEST_F(CFileSaverTest, WritesTheFileAndKeepsWhatItReplaces) {
    Change(2, "BAC");
    ASSERT_TRUE(file.Save({1, 2, 300, 400, true, false}).IsDone());
    EXPECT_EQ(OnDisk(), Written());
    EXPECT_EQ(WrittenLine("Window"), "1;2;300;400;TRUE;FALSE");
    EXPECT_FALSE(doc.IsModified());
    EXPECT_EQ(settings.ReadText(kMyWatchlists), files.Path() + "/");
    EXPECT_THAT(BackupTexts(), ElementsAre(kFirst));
    EXPECT_THAT(files.Files(), ElementsAre("banks.vxw"));
    Save();
    EXPECT_EQ(file.Backups().size(), 1u) << "a save that changed nothing pushed a backup out";
    std::string second;
    for (int i = 0; i < 6; ++i) {
        Change(3, fmt::format("S{}", i));
        second = OnDisk();
        Save();
    }
    ASSERT_EQ(file.Backups().size(), CFileBackups::kKept);
    EXPECT_EQ(BackupTexts().front(), second);
    EXPECT_EQ(file.Backups().front().number, 7);
    EXPECT_EQ(file.Backups().front().bytes, second.size());
    EXPECT_GT(file.Backups().front().savedAt, 1'600'000'000);
    // Under another name.
    ASSERT_TRUE(SaveAs("more.banks.vxw").IsDone());
    EXPECT_EQ(file.Path(), At("more.banks.vxw"));
    EXPECT_EQ(shown.title, "more.banks");
    EXPECT_THAT(file.Backups(), IsEmpty());
}

TEST_F(CFileSaverTest, FollowsLinksAndKeepsPermissions) {
    std::filesystem::create_symlink("banks.vxw", At("link.vxw"));
    std::filesystem::create_symlink(At("new.vxw"), At("to_nothing.vxw"));
    chmod(At("banks.vxw").c_str(), 0640);
    ASSERT_TRUE(SaveAs("link.vxw").IsDone());
    EXPECT_EQ(OnDisk(), Written());
    EXPECT_TRUE(S_ISLNK(StatOf(At("link.vxw")).st_mode));
    EXPECT_EQ(StatOf(At("banks.vxw")).st_mode & 0777, 0640u);
    ASSERT_TRUE(SaveAs("to_nothing.vxw").IsDone());
    EXPECT_EQ(ReadFile(At("new.vxw")), Written());
}

TEST_F(CFileSaverTest, AFileThatAnotherProgramChangedIsNotOverwrittenUnasked) {
    WriteFile(At("banks.vxw"), kFirst);
    EXPECT_TRUE(Save().IsDone()) << "the same content written again is no change";
    WriteFile(At("banks.vxw"), "Symbols=BAC:1,;\r\n");
    Change(2, "GS");
    ExpectAsks(Save(), EFileOutcome::ChangedOnDisk);
    EXPECT_EQ(OnDisk(), "Symbols=BAC:1,;\r\n");
    EXPECT_TRUE(SaveWith({.overwriteChanged = true}).IsDone());
    EXPECT_THAT(BackupTexts(), ElementsAre("Symbols=BAC:1,;\r\n", kFirst));
    WriteFile(At("banks.vxw"), "Symbols=BAC:1,;\r\n");
    Change(2, "MS");
    EXPECT_TRUE(SaveWith({.overwriteChanged = true}).IsDone());
    EXPECT_EQ(file.Backups().size(), 2u) << "the same content was kept twice";
    std::filesystem::remove(At("banks.vxw"));
    EXPECT_TRUE(Save().IsDone()) << "a file that is gone is made again";
    file.Forget();
    EXPECT_EQ(Save().outcome, EFileOutcome::Failed);
}

TEST_F(CFileSaverTest, AFileOfWhichNotAllWasReadIsNotOverwrittenUnasked) {
    const std::string mixed = "Symbols=JPM:1,;\r\n[more]\r\nNotes=1:lost;\r\n";
    for (const std::string& text : {mixed, std::string("[Watchlist]\nSymbols=JPM\nSymbolNumbers=1\n")}) {
        const SFileResult opened = OpenAs("banks.vxw", text);
        EXPECT_THAT(text == mixed ? opened.notices.at(0) : opened.remark,
                    HasSubstr(text == mixed ? "Line 2 of \"" : "Nothing in the file"));
        Change(2, "GS");
        ExpectAsks(Save(), EFileOutcome::NotAllRead);
        EXPECT_EQ(OnDisk(), text);
        EXPECT_TRUE(SaveAs("other.vxw").IsDone());
        OpenAs("banks.vxw", text);
        EXPECT_TRUE(SaveWith({.overwriteUnread = true}).IsDone());
        EXPECT_EQ(BackupTexts().front(), text);
        EXPECT_TRUE(Save().IsDone()) << "asked again";
        OpenAs("banks.vxw", text);
        OpenAs("banks.vxw", "");
        EXPECT_TRUE(Save().IsDone()) << "an empty file holds nothing";
    }
}

TEST_F(CFileSaverTest, WhatANewFileCannotTakeOverFromTheFormerOneIsTold) {
    std::filesystem::create_hard_link(At("banks.vxw"), At("second name.vxw"));
    Change(2, "GS");
    EXPECT_THAT(Save().notices, ElementsAre(Quoted() + " had 1 other name (hard link). The old content stays there."));
    EXPECT_EQ(ReadFile(At("second name.vxw")), kFirst);
}

TEST_F(CFileSaverTest, OfTwoWindowsInTheSameInstantOneIsAsked) {
    CScratchDoc other;
    CWatchlistFile otherFile(other.doc, state.Path());
    for (int round = 0; round < 50; ++round) {
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
        ASSERT_EQ(OnDisk(), jobs[first].text);
    }
}

TEST_F(CFileSaverTest, WhatIsEditedMeanwhileLeavesTheDocumentModified) {
    const auto type = [&](int row, std::string_view symbol) { EnterCellText(doc, row, 1, "old", symbol); };
    UseColumns("Symbol;");
    Change(2, "GS");
    type(3, "MS");
    const SSaveJob job = file.BeginSave({}, {});
    type(4, "BAC");
    file.EndSave(job, file.Saver().Save(job));
    EXPECT_EQ(OnDisk().find("BAC"), std::string::npos);
    EXPECT_TRUE(doc.IsModified());
    doc.Undo().Undo();
    EXPECT_FALSE(doc.IsModified()) << "this is what was saved";
    doc.Undo().Undo();
    EXPECT_TRUE(doc.IsModified());

    const SSaveJob second = file.BeginSave({}, {});
    doc.Edit({}, [](CWatchlistEdit&) {}); // Something that is no edit.
    file.EndSave(second, file.Saver().Save(second));
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(CFileSaverTest, OnlyItsUserReadsWhatIsKeptBesideAFile) {
    Change(2, "GS");
    ASSERT_TRUE(Save().IsDone());
    CRecoveryKeeper keeper(doc, file, state.Path());
    Change(3, "MS");
    keeper.KeepNow({});
    int found = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(state.Path())) {
        EXPECT_EQ(StatOf(entry.path().string()).st_mode & 0077, 0u) << entry.path();
        found += entry.is_regular_file();
    }
    EXPECT_GE(found, 4);
}

TEST_F(CFileSaverTest, AFormerContentThatCannotBeKeptIsNotReplacedUnasked) {
    std::filesystem::remove_all(state / "generations");
    WriteFile(state / "generations", "in the way");
    Change(2, "GS");
    ExpectAsks(Save(), EFileOutcome::BackupNotKept,
               "The backup of " + Quoted() + " could not be made: part of its path is not a folder.");
    EXPECT_EQ(OnDisk(), kFirst);
    WriteFile(At("banks.vxw"), "Symbols=BAC:1,;\r\n");
    ExpectAsks(SaveWith({.withoutBackup = true}), EFileOutcome::ChangedOnDisk);
    EXPECT_TRUE(SaveAs("new.vxw").IsDone()) << "nothing is replaced";
    const SFileResult agreed = file.SaveAs(At("banks.vxw"), {}, {.withoutBackup = true});
    EXPECT_TRUE(agreed.IsDone());
    EXPECT_THAT(agreed.notices, ElementsAre(HasSubstr("could not be made")));
    EXPECT_EQ(OnDisk(), Written());
}

TEST_F(CFileSaverTest, WhatIsNoFileIsNeitherOpenedNorReplaced) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    for (const auto& [path, reason] : {std::pair{At("pipe"), "it is not a file but a pipe, a device or a socket."},
                                       {files.Path(), "it is a folder."},
                                       {"/dev/zero", "it is not a file but a pipe, a device or a socket."}}) {
        Change(2, "GS");
        const std::string before = Written();
        for (const SFileResult& result : {file.Open(path), file.SaveAs(path, {})}) {
            ExpectAsks(result, EFileOutcome::Failed, "The watchlist \"" + path + "\" could not be ");
            EXPECT_THAT(result.error, HasSubstr(reason)) << path;
        }
        EXPECT_EQ(Written(), before);
        EXPECT_EQ(file.Path(), At("banks.vxw"));
    }
    ASSERT_EQ(truncate(At("banks.vxw").c_str(), kMostWatchlistBytes + 1), 0);
    EXPECT_THAT(file.Open(At("banks.vxw")).error, HasSubstr("it is larger than 256 MB, which no watchlist is."));
    EXPECT_TRUE(S_ISFIFO(StatOf(At("pipe")).st_mode));
}

TEST_F(CFileSaverTest, RejectedSymbolsAreWrittenAfterTheOthersAndNotAmongTheAnnotations) {
    OpenAs("list.vxw", "Symbols=NOPE:1,5,;IBM:2,;\r\nAnnotations=3:#a;\r\n");
    doc.SymbolNotFound("NOPE");
    EXPECT_EQ(WrittenLine("Symbols"), "IBM:2,;NOPE:1,5,;");
    EXPECT_EQ(WrittenLine("Annotations"), "3:#a;");
    for (const int row : {1, 5}) doc.Update()->PlaceSymbol(row, "GS");
    EXPECT_EQ(WrittenLine("Symbols"), "GS:1,5,;IBM:2,;") << "a rejected symbol that is in no row is not written";
}
