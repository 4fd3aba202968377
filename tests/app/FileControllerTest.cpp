#include "app/files/FileController.h"

#include "app/FrameFixture.h"
#include "app/commands/MainMenus.h"
#include "app/files/FileMenus.h"
#include "app/frame/Dialogs.h"
#include "support/Dialogs.h"
#include "support/EventLoop.h"
#include "support/FakeClock.h"
#include "support/MessageBoxes.h"
#include "watchlist/edit/CellEntry.h"

#include <QDropEvent>
#include <QFileDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressDialog>
#include <QTest>
#include <QUrl>

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;
using enum vx::EBoxAnswer;

namespace {

class CFileControllerTest : public CFrameFixture {
protected:
    CFileControllerTest() { frame.show(); }

    void Type(int row, const std::string& text) { EnterCellText(doc, row, 1, {}, text); }
    std::string At(const std::string& name) const { return folder / name; }

    /// Writes a watchlist of one symbol and returns its path.
    std::string FileOf(const std::string& name, const std::string& symbol) const {
        WriteFile(At(name), "Columns=Symbol:1000;\r\nSymbols=" + symbol + ":1,;\r\n");
        return At(name);
    }
    /// Answers the next file dialog with what a user would type, or gives it up.
    void Choose(const std::string& name) {
        WhenOpen<QFileDialog>([this, name](QFileDialog& dialog) {
            titles.push_back(dialog.windowTitle().toStdString());
            filters = dialog.nameFilters().join(QLatin1Char('|')).toStdString();
            directory = dialog.directory().path().toStdString();
            if (name.empty()) return dialog.reject();
            dialog.selectFile(QString::fromStdString(name));
            static_cast<QDialog&>(dialog).accept();
        });
    }
    /// From now on saves of a file wait until EndSlowDisk, as on a disk that takes its time; the window does not.
    void BeginSlowDisk(const std::string& path) {
        ASSERT_EQ(CFileBackups(At("zantrel")).Lock(path, slowDisk), 0);
        frame.Files().SetPatienceMs(0);
    }
    void EndSlowDisk() { slowDisk.reset(); }
    std::string StatusText() { return frame.findChild<QLabel*>(QStringLiteral("paneStatus"))->text().toStdString(); }
    void Drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths) urls.push_back(QUrl::fromLocalFile(QString::fromStdString(path)));
        data.setUrls(urls);
        // As the platform has it: the deepest widget is asked first.
        QWidget* under = frame.View().Grid().viewport();
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(under, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent event(QPointF(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(under, &event);
        EXPECT_EQ(event.dropAction(), Qt::CopyAction) << "the sender must not remove the file";
        TurnEventLoop(2);
    }
    QStringList Entries(const char* menu) {
        QMenu& named = frame.Menus().Named(menu);
        Q_EMIT named.aboutToShow();
        QStringList texts;
        for (const QAction* action : named.actions())
            if (!action->isSeparator()) texts.push_back(action->text());
        return texts;
    }
    QAction& Entry(const char* menu, int index) {
        QMenu& named = frame.Menus().Named(menu);
        Q_EMIT named.aboutToShow();
        return *named.actions().at(index);
    }

    CMainFrame& frame = Frame();
    CWatchlistDoc& doc = frame.Document();
    CMessageBoxes boxes;
    std::vector<std::string> titles;
    std::string filters, directory;
    std::optional<CFileLock> slowDisk;
};

} // namespace

TEST_F(CFileControllerTest, AnUntitledListIsSavedUnderANameThatGetsTheSuffixAndTheNextDialogOpensThere) {
    EXPECT_FALSE(frame.isWindowModified());
    Type(1, "ibm");
    frame.Files().ShowModified();
    EXPECT_TRUE(frame.isWindowModified());
    std::filesystem::create_directory(At("lists"));
    Choose(At("lists/Banks"));
    Do("FileSave");
    EXPECT_THAT(titles, ElementsAre("Save Watchlist As"));
    EXPECT_EQ(filters, "Watchlists (*.vxw)|All Files (*)");
    EXPECT_THAT(ReadFile(At("lists/Banks.vxw")), testing::HasSubstr("Symbols=IBM:1,;\r\n"));
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("Zantrel Watchlist - Banks[*]"));
    EXPECT_FALSE(frame.isWindowModified());
    EXPECT_THAT(frame.Files().Recent().List(), ElementsAre(At("lists/Banks.vxw")));

    Type(2, "msft");
    Do("FileSave");
    EXPECT_THAT(ReadFile(At("lists/Banks.vxw")), testing::HasSubstr("Symbols=IBM:1,;MSFT:2,;\r\n"));
    Choose({});
    Do("FileOpen");
    EXPECT_THAT(titles, ElementsAre("Save Watchlist As", "Open Watchlist"));
    EXPECT_EQ(directory, At("lists"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, UnsavedChangesAreAskedAboutBeforeNewOpenAndExit) {
    const std::string path = FileOf("Banks.vxw", "IBM");
    const std::string question = "Save changes to \"Banks\"?";
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    Type(2, "msft");

    for (const char* command : {"FileNew", "FileExit"}) { // Cancel: nothing happens.
        boxes.answers = {Cancel};
        Do(command);
        EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question)) << command;
        EXPECT_EQ(doc.RowSymbol(2), "MSFT") << command;
    }
    EXPECT_TRUE(frame.isVisible());

    boxes.answers = {Yes}; // Yes: saved, then on.
    Do("FileNew");
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("Symbols=IBM:1,;MSFT:2,;\r\n"));
    EXPECT_EQ(doc.SymbolCount(), 0U);
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("Zantrel Watchlist[*]"));

    Type(1, "ge"); // Yes for an untitled list leads to the dialog; giving that up is Cancel.
    boxes.TakeTexts();
    boxes.answers = {Yes};
    Choose({});
    EXPECT_FALSE(frame.Files().OpenInstead(path));
    EXPECT_EQ(doc.RowSymbol(1), "GE");
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Save changes to \"Untitled\"?"));

    frame.View().Grid().BeginEdit(2, 1, "f"); // What stands in an open editor counts as typed.
    boxes.answers = {Cancel};
    frame.close();
    EXPECT_EQ(doc.RowSymbol(2), "F");
    boxes.answers = {No}; // No: gone.
    frame.close();
    EXPECT_FALSE(frame.isVisible());
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("Symbols=IBM:1,;MSFT:2,;\r\n"));
}

TEST_F(CFileControllerTest, ASaveThatFailsNamesFileAndReasonAndTheListStaysModified) {
    ASSERT_TRUE(frame.Files().OpenInstead(FileOf("Banks.vxw", "IBM")));
    Type(2, "msft");
    std::filesystem::remove(At("Banks.vxw"));
    std::filesystem::create_directory(At("Banks.vxw"));
    Do("FileSave");
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("The watchlist \"" + At("Banks.vxw") + "\" could not be saved: it is a folder."));
    EXPECT_TRUE(doc.IsModified());
    EXPECT_FALSE(frame.Files().OpenInstead(At("none.vxw"))); // "Ok" to "Save changes?" is no answer: it stays.
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Save changes to \"Banks\"?"));
    doc.MarkSaved();
    EXPECT_FALSE(frame.Files().OpenInstead(At("none.vxw")));
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("The watchlist \"" + At("none.vxw") +
                                               "\" could not be opened: there is no such file or folder."));
    EXPECT_EQ(doc.RowSymbol(2), "MSFT");
}

TEST_F(CFileControllerTest, WhatAnotherProgramWroteIsOverwrittenOnlyAfterAQuestion) {
    const std::string path = FileOf("Banks.vxw", "IBM");
    const std::string question = "The file \"" + path +
                                 "\" was changed by another program since it was opened.\n\nOverwrite it with this "
                                 "watchlist? \"No\" saves under another name.";
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    Type(2, "msft");
    WriteFile(path, "Symbols=GE:1,;\r\n");
    boxes.answers = {Cancel};
    Do("FileSave");
    EXPECT_EQ(ReadFile(path), "Symbols=GE:1,;\r\n");
    EXPECT_TRUE(doc.IsModified());

    boxes.answers = {No, No, Yes}; // Elsewhere; and there, first a file that is to stay, then one that may go.
    FileOf("Other.vxw", "F");
    Choose(At("Other.vxw"));
    QTimer::singleShot(0, [this] { Choose(At("Other.vxw")); });
    Do("FileSave");
    EXPECT_EQ(ReadFile(path), "Symbols=GE:1,;\r\n");
    EXPECT_THAT(ReadFile(At("Other.vxw")), testing::HasSubstr("IBM:1,;MSFT:2,;"));
    const std::string replace = "The file \"" + At("Other.vxw") + "\" exists already. Replace it?";
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question, question, replace, replace));

    doc.MarkSaved();
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    Type(2, "ba");
    WriteFile(path, "Symbols=F:1,;\r\n");
    boxes.answers = {Yes};
    Do("FileSave");
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("Symbols=GE:1,;BA:2,;\r\n"));
}

TEST_F(CFileControllerTest, ASlowDiskHoldsNeitherTheWindowNorWhatIsTypedMeanwhile) {
    const std::string path = FileOf("Banks.vxw", "IBM");
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    BeginSlowDisk(path);
    Type(2, "msft");
    Do("FileSave");
    EXPECT_TRUE(frame.Files().IsSaving());
    EXPECT_THAT(StatusText(), testing::StartsWith("Saving Watchlist \"" + path));
    Type(3, "ge");
    Do("FileSave");
    Type(4, "ford");
    EXPECT_THAT(ReadFile(path), testing::Not(testing::HasSubstr("MSFT"))) << "the disk is not slow";
    EndSlowDisk();
    ASSERT_TRUE(WaitUntil([this] { return !frame.Files().IsSaving(); }));
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("Symbols=IBM:1,;MSFT:2,;GE:3,;\r\n"));
    EXPECT_TRUE(doc.IsModified());
    Do("EditUndo");
    EXPECT_FALSE(doc.IsModified()) << "this is what the second save has written";
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
    EXPECT_EQ(frame.Files().File().Backups().size(), 2u);

    BeginSlowDisk(path);
    Type(2, "gm");
    Do("FileSave");
    WriteFile(path, "Symbols=F:1,;\r\n"); // Another program is quicker.
    boxes.answers = {Cancel};
    EndSlowDisk();
    ASSERT_TRUE(WaitUntil([this] { return !frame.Files().IsSaving(); }));
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(testing::HasSubstr("changed by another program")));
    EXPECT_EQ(ReadFile(path), "Symbols=F:1,;\r\n");
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(CFileControllerTest, AQuestionThatComesLateTakesNoKeyThatWasTypedForTheWindow) {
    const std::string path = FileOf("Banks.vxw", "IBM");
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    BeginSlowDisk(path);
    Type(2, "msft");
    Do("FileSave");
    WriteFile(path, "Symbols=F:1,;\r\n");
    const MessageBoxHandler recording = SetMessageBoxHandler({});
    InstallQtMessageBoxes(&frame);
    CFakeClock clock;
    std::string afterKeys;
    WhenOpen<QMessageBox>([&](QMessageBox& box) {
        for (int i = 0; i < 3; ++i) {
            clock.elapsedMs += CStrayKeyGuard::kQuietMs - 1;
            QTest::keyClick(&box, Qt::Key_Return);
        }
        EXPECT_TRUE(box.isVisible());
        clock.elapsedMs += CStrayKeyGuard::kQuietMs;
        QTest::keyClick(&box, Qt::Key_Escape);
        afterKeys = ReadFile(path);
    });
    EndSlowDisk();
    EXPECT_TRUE(WaitUntil([&] { return !afterKeys.empty() && !frame.Files().IsSaving(); }));
    SetMessageBoxHandler(recording);
    EXPECT_EQ(afterKeys, "Symbols=F:1,;\r\n");
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(CFileControllerTest, WhoLeavesWhileItIsSavedWaitsOrGoesBack) {
    const std::string path = FileOf("Banks.vxw", "IBM");
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    BeginSlowDisk(path);
    Type(2, "msft");
    Do("FileSave");
    WhenOpen<QProgressDialog>([](QProgressDialog& dialog) {
        EXPECT_EQ(dialog.labelText(), QStringLiteral("Saving \"Banks\""));
        dialog.cancel();
    });
    EXPECT_FALSE(frame.close());
    EXPECT_TRUE(frame.isVisible() && frame.Files().IsSaving());
    WhenOpen<QProgressDialog>([this](QProgressDialog&) { EndSlowDisk(); });
    EXPECT_TRUE(frame.close());
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("MSFT:2,;"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, WhatCannotBeReadIsStillSaidWhenTheFeedComes) {
    WriteFile(At("lf.vxw"), "[Watchlist]\nSymbols=JPM\n");
    ASSERT_TRUE(frame.Files().Open(At("lf.vxw")));
    frame.Document().SetFeedReady();
    const auto* status = frame.findChild<QLabel*>(QStringLiteral("paneStatus"));
    EXPECT_TRUE(status->text().startsWith(QStringLiteral("Nothing in the file"))) << status->text().toStdString();
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, AFileOfWhichNotAllWasReadIsReplacedOnlyWhenTheUserAgrees) {
    const std::string path = At("Banks.vxw");
    WriteFile(path, "Symbols=IBM:1,;\r\n[x]\r\nNotes=1:lost;\r\n");
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(testing::StartsWith("Line 2 of \"" + path + "\" begins with \"[\":")));
    boxes.answers = {Cancel, Yes};
    Do("FileSave");
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("lost"));
    Do("FileSave");
    EXPECT_THAT(ReadFile(path), testing::Not(testing::HasSubstr("lost")));
    Do("FileSave");
    EXPECT_EQ(boxes.TakeTexts().size(), 2u);
}

TEST_F(CFileControllerTest, ABackupThatCannotBeMadeIsNamedAndNothingElseIs) {
    const std::string path = FileOf("Banks.vxw", "IBM");
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    WriteFile(At("zantrel/generations"), "in the way of the folder");
    Type(2, "msft");
    const std::string question =
        "The backup of \"" + path + "\" could not be made: part of its path is not a folder.\n\nSave all the same?";
    boxes.answers = {No};
    Do("FileSave");
    EXPECT_TRUE(doc.IsModified());
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question));

    doc.Update()->Notes().Set(2, "above the number of notes");
    boxes.answers = {Yes};
    Do("FileSave");
    EXPECT_FALSE(doc.IsModified());
    const auto said = boxes.TakeTexts();
    ASSERT_EQ(said.size(), 2U);
    EXPECT_EQ(said[0], question);
    EXPECT_THAT(said[1], testing::HasSubstr("could not be made"));
    std::filesystem::remove(At("zantrel/generations"));
    Type(3, "ge");
    Do("FileSave");
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, RecentFilesAreTenWithTheLatestFirstAndMissingOnesAreOfferedForRemoval) {
    EXPECT_EQ(Entries(CMainMenus::kRecentFiles), QStringList{QStringLiteral("No file was opened yet")});
    for (int i = 1; i <= 11; ++i)
        ASSERT_TRUE(frame.Files().OpenInstead(FileOf("list " + std::to_string(i) + ".vxw", "IBM")));
    ASSERT_TRUE(frame.Files().OpenInstead(FileOf("M&A.vxw", "GE")));
    ASSERT_TRUE(frame.Files().OpenInstead(At("list 5.vxw")));
    const QStringList entries = Entries(CMainMenus::kRecentFiles);
    ASSERT_EQ(entries.size(), 11) << "ten files, and clearing the list";
    EXPECT_TRUE(entries[0].startsWith(QStringLiteral("&1  ")) && entries[0].endsWith(QStringLiteral("list 5.vxw")));
    EXPECT_TRUE(entries[1].endsWith(QStringLiteral("M&&A.vxw")));
    EXPECT_TRUE(entries[9].startsWith(QStringLiteral("10  "))) << entries[9].toStdString();

    Entry(CMainMenus::kRecentFiles, 1).trigger();
    EXPECT_EQ(doc.RowSymbol(1), "GE");
    std::filesystem::remove(At("list 5.vxw"));
    boxes.answers = {Yes};
    Entry(CMainMenus::kRecentFiles, 1).trigger();
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("The file \"" + At("list 5.vxw") +
                                               "\" is no longer there. Remove it from the list of recent files?"));
    EXPECT_EQ(Entries(CMainMenus::kRecentFiles).size(), 10);

    const QFontMetrics metrics{QFont()};
    const QString shortened = RecentFileLabel(1, "/a/" + std::string(300, 'x') + "/Banks.vxw", metrics);
    EXPECT_LT(metrics.horizontalAdvance(shortened), 560);
    EXPECT_TRUE(shortened.endsWith(QStringLiteral("/Banks.vxw")));
    EXPECT_EQ(RecentFileLabel(10, "/R&D/a\tb.vxw", metrics), QStringLiteral("10  /R&&D/a b.vxw"));
}

TEST_F(CFileControllerTest, ABackupOpensAsUnsavedChangesOfTheFile) {
    const std::string path = FileOf("Banks.vxw", "IBM");
    EXPECT_EQ(Entries(CMainMenus::kBackupsMenu).front(), QStringLiteral("This watchlist has no file yet"));
    ASSERT_TRUE(frame.Files().OpenInstead(path));
    Type(1, "msft");
    Do("FileSave");
    const QStringList entries = Entries(CMainMenus::kBackupsMenu);
    ASSERT_EQ(entries.size(), 3);
    EXPECT_TRUE(entries[0].startsWith(QStringLiteral("1.  ")) && entries[0].endsWith(QStringLiteral("39 bytes")))
        << entries[0].toStdString();
    EXPECT_EQ(entries[1], QStringLiteral("Opens as an unsaved copy"));

    Entry(CMainMenus::kBackupsMenu, 0).trigger();
    EXPECT_EQ(doc.RowSymbol(1), "IBM");
    EXPECT_TRUE(doc.IsModified());
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("Zantrel Watchlist - Banks[*]"));
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("Symbols=MSFT:1,;\r\n"));
    Do("FileSave");
    EXPECT_THAT(ReadFile(path), testing::HasSubstr("Symbols=IBM:1,;\r\n"));
    EXPECT_EQ(Entries(CMainMenus::kBackupsMenu).size(), 4);
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CFileControllerTest, DroppedFilesOpenTheFirstAndListsOfSymbolsAreImported) {
    Drop({FileOf("A.vxw", "IBM")});
    EXPECT_EQ(doc.RowSymbol(1), "IBM");
    Drop({FileOf("B.vxw", "GE"), At("A.vxw"), At("c.txt")});
    EXPECT_EQ(doc.RowSymbol(1), "GE");
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("Only \"" + At("B.vxw") +
                            "\" is opened: a window shows one watchlist. The other 2 files were left "
                            "alone."));
}

TEST_F(CFileControllerTest, SymbolsOfTheCommandLineBelongToTheFirstDocumentOnly) {
    CMainFrame& started = Frame({"-symbol", "ibm"});
    ASSERT_TRUE(started.Files().OpenInstead(FileOf("B.vxw", "GE")));
    EXPECT_THAT(started.CommandLine().Symbols(), IsEmpty());
}
