// SPDX-License-Identifier: MIT
#include "app/files/FileController.h"

#include "app/ContextFixture.h"
#include "app/files/FileMenus.h"
#include "app/frame/Dialogs.h"
#include "support/FakeClock.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QProgressDialog>

using namespace vx;
using namespace vx::test;
using enum vx::EBoxAnswer;
using enum vx::ECommand;

namespace {

class CFileControllerTest : public CContextFixture {
protected:
    CFileControllerTest() { files.SetPatienceMs(30'000); } // A save is done when its command returns.

    /// Answers the next file dialog with what a user would type, or gives it up.
    void Choose(const std::string& name) {
        WhenOpen<QFileDialog>([this, name](QFileDialog& dialog) {
            directory = dialog.directory().path().toStdString();
            if (name.empty()) return dialog.reject();
            dialog.selectFile(QString::fromStdString(name));
            static_cast<QDialog&>(dialog).accept();
        });
    }
    /// IBM is opened and MSFT typed below it.
    void OpenAndType() {
        path = FileOf("Banks.vxw", "IBM");
        ASSERT_TRUE(files.OpenInstead(path));
        Enter(2, "msft");
    }
    /// Saves of the file wait until slowDisk is reset, as on a disk that takes its time; the window does not.
    void SaveSlowly() {
        ASSERT_EQ(CFileBackups(At("zantrel")).Lock(path, slowDisk), 0);
        files.SetPatienceMs(0);
        Do(FileSave);
        EXPECT_TRUE(files.IsSaving());
    }
    void Save(const std::vector<EBoxAnswer>& answers = {}) {
        boxes.answers = answers;
        Do(FileSave);
    }
    bool IsSaved() {
        return WaitUntil([this] { return !files.IsSaving(); });
    }
    std::string Content() const { return ReadFile(path); }
    QList<QAction*> Menu(const char* menu) {
        QMenu& named = menus.Named(menu);
        Q_EMIT named.aboutToShow();
        return named.actions();
    }
    QStringList Entries(const char* menu) {
        QStringList texts;
        for (const QAction* action : Menu(menu))
            if (!action->isSeparator()) texts.push_back(action->text());
        return texts;
    }

    CFileController files{context, CRegistry::CurrentUser()};
    CFileMenus fileMenus{files, menus};
    std::string directory, path;
    std::optional<CFileLock> slowDisk;
};

} // namespace

TEST_F(CFileControllerTest, AnUntitledListIsSavedUnderANameThatGetsTheSuffixAndTheNextDialogOpensThere) {
    Enter(1, "ibm");
    files.ShowModified();
    EXPECT_TRUE(mainWindow->isWindowModified());
    std::filesystem::create_directory(At("lists"));
    path = At("lists/Banks.vxw");
    Choose(At("lists/Banks"));
    Do(FileSave);
    EXPECT_THAT(Content(), HasSubstr("Symbols=IBM:1,;\r\n"));
    EXPECT_EQ(mainWindow->windowTitle(), QStringLiteral("Banks[*]"));
    EXPECT_FALSE(mainWindow->isWindowModified());
    Choose({});
    Do(FileOpen);
    EXPECT_EQ(directory, At("lists"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, UnsavedChangesAreAskedAboutBeforeNewOpenAndExit) {
    OpenAndType();
    const std::string question = "Save changes to \"Banks\"?";
    boxes.answers = {Cancel, Cancel, Yes};
    Do(FileNew);
    EXPECT_FALSE(files.MayClose());
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question, question));
    EXPECT_EQ(doc->RowSymbol(2), "MSFT");
    Do(FileNew);
    EXPECT_THAT(Content(), HasSubstr("Symbols=IBM:1,;MSFT:2,;\r\n"));
    EXPECT_EQ(doc->SymbolCount(), 0U);
    EXPECT_EQ(mainWindow->windowTitle(), QStringLiteral("[*]"));

    Enter(1, "ge"); // Yes for an untitled list leads to the dialog; giving that up is Cancel.
    boxes.TakeTexts();
    boxes.answers = {Yes};
    Choose({});
    EXPECT_FALSE(files.OpenInstead(path));
    EXPECT_EQ(doc->RowSymbol(1), "GE");
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Save changes to \"Untitled\"?"));

    grid->BeginEdit(2, 1, "f"); // What is in an open editor counts as typed.
    boxes.answers = {Cancel, No};
    EXPECT_FALSE(files.MayClose());
    EXPECT_EQ(doc->RowSymbol(2), "F");
    EXPECT_TRUE(files.MayClose());
    EXPECT_THAT(Content(), HasSubstr("Symbols=IBM:1,;MSFT:2,;\r\n"));
}

TEST_F(CFileControllerTest, ASaveThatFailsNamesFileAndReasonAndTheListStaysModified) {
    OpenAndType();
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    Do(FileSave);
    const std::string failed = "The watchlist \"" + path + "\" could not be saved: it is a folder.";
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(failed));
    EXPECT_TRUE(doc->IsModified());
    const std::string none = At("none.vxw");
    boxes.answers = {Yes};
    EXPECT_FALSE(files.OpenInstead(none)) << "it could not be saved";
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Save changes to \"Banks\"?", failed));
    doc->MarkSaved();
    EXPECT_FALSE(files.OpenInstead(none));
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("The watchlist \"" + none + "\" could not be opened: there is no such file or folder."));
    EXPECT_EQ(doc->RowSymbol(2), "MSFT");
}

TEST_F(CFileControllerTest, WhatAnotherProgramWroteIsOverwrittenOnlyAfterAQuestion) {
    OpenAndType();
    const std::string question = "The file \"" + path +
                                 "\" was changed by another program since it was opened.\n\nOverwrite it with this "
                                 "watchlist? \"No\" saves under another name.";
    WriteFile(path, "Symbols=GE:1,;\r\n");
    Save({Cancel});
    EXPECT_EQ(Content(), "Symbols=GE:1,;\r\n");
    EXPECT_TRUE(doc->IsModified());

    boxes.answers = {No, No, Yes}; // Elsewhere; and there, first a file that is to stay, then one that may go.
    const std::string other = FileOf("Other.vxw", "F");
    Choose(other);
    QTimer::singleShot(0, [&] { Choose(other); });
    Do(FileSave);
    EXPECT_EQ(Content(), "Symbols=GE:1,;\r\n");
    EXPECT_THAT(ReadFile(other), HasSubstr("IBM:1,;MSFT:2,;"));
    const std::string replace = "The file \"" + other + "\" exists already. Replace it?";
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question, question, replace, replace));

    doc->MarkSaved();
    OpenAndType();
    WriteFile(path, "Symbols=F:1,;\r\n");
    Save({Yes});
    EXPECT_THAT(Content(), HasSubstr("Symbols=IBM:1,;MSFT:2,;\r\n"));
}

TEST_F(CFileControllerTest, ASlowDiskHoldsNeitherTheWindowNorWhatIsTypedMeanwhile) {
    OpenAndType();
    SaveSlowly();
    EXPECT_THAT(Status(), StartsWith("Saving Watchlist \"" + path));
    Enter(3, "ge");
    Do(FileSave);
    Enter(4, "ford");
    EXPECT_THAT(Content(), Not(HasSubstr("MSFT"))) << "the disk is not slow";
    slowDisk.reset();
    ASSERT_TRUE(IsSaved());
    EXPECT_THAT(Content(), HasSubstr("Symbols=IBM:1,;MSFT:2,;GE:3,;\r\n"));
    EXPECT_TRUE(doc->IsModified());
    Do(EditUndo);
    EXPECT_FALSE(doc->IsModified()) << "this is what the second save has written";
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());

    Enter(2, "gm");
    SaveSlowly();
    WriteFile(path, "Symbols=F:1,;\r\n"); // Another program is quicker.
    boxes.answers = {Cancel};
    slowDisk.reset();
    ASSERT_TRUE(IsSaved());
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(HasSubstr("changed by another program")));
    EXPECT_EQ(Content(), "Symbols=F:1,;\r\n");
    EXPECT_TRUE(doc->IsModified());
}

TEST_F(CFileControllerTest, AQuestionThatComesLateTakesNoKeyThatWasTypedForTheWindow) {
    OpenAndType();
    SaveSlowly();
    WriteFile(path, "Symbols=F:1,;\r\n");
    const MessageBoxHandler recording = SetMessageBoxHandler({});
    InstallQtMessageBoxes(mainWindow);
    CFakeClock clock;
    std::string afterKeys;
    WhenOpen<QMessageBox>([&](QMessageBox& box) {
        clock.elapsedMs += CStrayKeyGuard::kQuietMs - 1;
        QTest::keyClick(&box, Qt::Key_Return);
        EXPECT_TRUE(box.isVisible());
        clock.elapsedMs += CStrayKeyGuard::kQuietMs;
        QTest::keyClick(&box, Qt::Key_Escape);
        afterKeys = Content();
    });
    slowDisk.reset();
    EXPECT_TRUE(WaitUntil([&] { return !afterKeys.empty() && !files.IsSaving(); }));
    SetMessageBoxHandler(recording);
    EXPECT_EQ(afterKeys, "Symbols=F:1,;\r\n");
    EXPECT_TRUE(doc->IsModified());
}

TEST_F(CFileControllerTest, WhoLeavesWhileItIsSavedWaitsOrGoesBack) {
    OpenAndType();
    SaveSlowly();
    WhenOpen<QProgressDialog>([](QProgressDialog& dialog) { dialog.cancel(); });
    EXPECT_FALSE(files.MayClose());
    EXPECT_TRUE(files.IsSaving());
    WhenOpen<QProgressDialog>([this](QProgressDialog&) { slowDisk.reset(); });
    EXPECT_TRUE(files.MayClose());
    EXPECT_THAT(Content(), HasSubstr("MSFT:2,;"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, AFileOfWhichNotAllWasReadSaysSoAndIsReplacedOnlyWhenTheUserAgrees) {
    path = At("Banks.vxw");
    WriteFile(path, "Symbols=IBM:1,;\r\n[x]\r\nNotes=1:lost;\r\n");
    ASSERT_TRUE(files.OpenInstead(path));
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(StartsWith("Line 2 of \"" + path + "\" begins with \"[\":")));
    Save({Cancel, Yes});
    EXPECT_THAT(Content(), HasSubstr("lost"));
    Do(FileSave);
    EXPECT_THAT(Content(), Not(HasSubstr("lost")));
}

TEST_F(CFileControllerTest, AFormerContentThatCannotBeKeptIsNamedAndNothingElseIs) {
    OpenAndType();
    WriteFile(At("zantrel/generations"), "in the way of the folder");
    const std::string question =
        "The backup of \"" + path + "\" could not be made: part of its path is not a folder.\n\nSave all the same?";
    Save({No, Yes});
    EXPECT_TRUE(doc->IsModified());
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question));
    doc->Update()->Notes().Set(2, "above the number of notes");
    Do(FileSave);
    EXPECT_FALSE(doc->IsModified());
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question, HasSubstr("could not be made")));
    std::filesystem::remove(At("zantrel/generations"));
    Enter(3, "ge");
    Do(FileSave);
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, RecentFilesAreTenWithTheLatestFirstAndMissingOnesAreOfferedForRemoval) {
    const char* const recent = CMainMenus::kRecentFiles;
    EXPECT_EQ(Entries(recent), QStringList{QStringLiteral("No file was opened yet")});
    for (int i = 1; i <= 11; ++i) ASSERT_TRUE(files.OpenInstead(FileOf("list " + std::to_string(i) + ".vxw", "IBM")));
    ASSERT_TRUE(files.OpenInstead(FileOf("M&A.vxw", "GE")));
    ASSERT_TRUE(files.OpenInstead(At("list 5.vxw")));
    EXPECT_EQ(Entries(recent).size(), 11) << "ten files, and clearing the list";
    EXPECT_TRUE(Entries(recent)[0].endsWith(QStringLiteral("list 5.vxw")));
    Menu(recent)[1]->trigger();
    EXPECT_EQ(doc->RowSymbol(1), "GE");
    std::filesystem::remove(At("list 5.vxw"));
    boxes.answers = {Yes};
    Menu(recent)[1]->trigger();
    EXPECT_EQ(Entries(recent).size(), 10);
}

TEST_F(CFileControllerTest, AFormerContentOpensAsUnsavedChangesOfTheFile) {
    const char* const versions = CMainMenus::kBackupsMenu;
    path = FileOf("Banks.vxw", "IBM");
    ASSERT_TRUE(files.OpenInstead(path));
    Enter(1, "msft");
    Do(FileSave);
    ASSERT_EQ(Entries(versions).size(), 3);
    Menu(versions)[0]->trigger();
    EXPECT_EQ(doc->RowSymbol(1), "IBM");
    EXPECT_TRUE(doc->IsModified());
    EXPECT_THAT(Content(), HasSubstr("Symbols=MSFT:1,;\r\n"));
    Do(FileSave);
    EXPECT_THAT(Content(), HasSubstr("Symbols=IBM:1,;\r\n"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}
