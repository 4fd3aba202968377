#include "app/files/RecoveryController.h"

#include "app/FrameFixture.h"
#include "app/files/FileController.h"
#include "app/files/RecoveryDlg.h"
#include "support/Dialogs.h"
#include "support/EventLoop.h"
#include "support/MessageBoxes.h"
#include "watchlist/edit/CellEntry.h"

#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTreeWidget>

#include <gmock/gmock.h>

#include <csignal>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using enum vx::EBoxAnswer;

namespace {

class CRecoveryControllerTest : public CFrameFixture {
protected:
    std::string At(const std::string& name) const { return folder / name; }
    std::vector<std::string> Kept() const {
        std::vector<std::string> out;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(At("zantrel/recovery"), error))
            if (entry.path().extension() == ".recovery") out.push_back(entry.path().string());
        return out;
    }
    /// A run that ends without a save: symbols in rows 1, 2, ... of a list with a file, or of an untitled one.
    void LoseRun(const std::string& file, const std::vector<std::string>& symbols) {
        CMainFrame& frame = Frame();
        if (!file.empty()) {
            if (!std::filesystem::exists(file)) WriteFile(file, "Columns=Symbol:1000;\r\n");
            ASSERT_TRUE(frame.Files().Open(file));
        }
        int row = 0;
        for (const std::string& symbol : symbols) EnterCellText(frame.Document(), ++row, 1, {}, symbol);
        frame.Recovery().KeepNow();
        DropFrame();
    }
    void Press(CRecoveryDlg& dialog, const char* button) {
        dialog.findChild<QPushButton*>(QString::fromLatin1(button))->click();
    }
    QStringList Names(CRecoveryDlg& dialog) {
        QStringList out;
        auto* list = dialog.findChild<QTreeWidget*>();
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            out << list->topLevelItem(i)->text(0) + QLatin1Char(' ') + list->topLevelItem(i)->text(2);
        out.sort();
        return out;
    }

    CMessageBoxes boxes;
};

} // namespace

TEST_F(CRecoveryControllerTest, LostChangesAreOfferedAndBecomeUnsavedChangesOfTheirFileAgain) {
    LoseRun(At("Banks.vxw"), {"IBM", "GE"});
    CMainFrame& frame = Frame();
    QStringList offered;
    WhenOpen<CRecoveryDlg>([&](CRecoveryDlg& dialog) {
        offered = Names(dialog);
        Press(dialog, "recover");
    });
    frame.Recovery().Offer(false);
    EXPECT_EQ(offered, QStringList{QStringLiteral("Banks 2")});
    EXPECT_EQ(frame.Document().RowSymbol(2), "GE");
    EXPECT_TRUE(frame.Document().IsModified());
    EXPECT_EQ(frame.Files().File().Path(), At("Banks.vxw"));
    EXPECT_THAT(Kept(), SizeIs(1)) << "it is kept until it is saved";
    Do("FileSave");
    frame.Recovery().Flush();
    EXPECT_THAT(Kept(), IsEmpty());
    EXPECT_THAT(ReadFile(At("Banks.vxw")), testing::HasSubstr("Symbols=IBM:1,;GE:2,;"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CRecoveryControllerTest, OfSeveralEachIsRecoveredDiscardedOrLeftAndNoneIsLost) {
    LoseRun(At("A.vxw"), {"IBM"});
    LoseRun({}, {"F", "GM", "TM"});
    LoseRun(At("C.vxw"), {"GE"});
    CMainFrame& frame = Frame();
    WhenOpen<CRecoveryDlg>([&](CRecoveryDlg& dialog) {
        EXPECT_EQ(Names(dialog),
                  (QStringList{QStringLiteral("A 1"), QStringLiteral("C 1"), QStringLiteral("Untitled 3")}));
        auto* list = dialog.findChild<QTreeWidget*>();
        list->setCurrentItem(list->findItems(QStringLiteral("A"), Qt::MatchExactly).front());
        boxes.answers = {No, Yes};
        Press(dialog, "discard");
        EXPECT_EQ(list->topLevelItemCount(), 3);
        Press(dialog, "discard");
        EXPECT_EQ(list->topLevelItemCount(), 2);
        Press(dialog, "later");
    });
    frame.Recovery().Offer(false);
    const std::string question = "Discard the unsaved changes of \"A\"? They cannot be brought back.";
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(question, question));
    EXPECT_EQ(frame.Document().SymbolCount(), 0U);

    const auto recoverFirst = [&] {
        WhenOpen<CRecoveryDlg>([this](CRecoveryDlg& dialog) { Press(dialog, "recover"); });
        frame.Recovery().Offer(true);
    };
    recoverFirst();
    EXPECT_GT(frame.Document().SymbolCount(), 0U);
    boxes.answers = {Cancel}; // The other one would replace it: the user thinks better of it.
    recoverFirst();
    EXPECT_THAT(boxes.TakeTexts(), SizeIs(1));
    EXPECT_THAT(Kept(), SizeIs(2));
    boxes.answers = {No};
    recoverFirst();
    boxes.TakeTexts();
    EXPECT_THAT(Kept(), SizeIs(1)) << "what the user gave up is gone, the other one stays";
    frame.Recovery().Offer(true);
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("There are no unsaved changes of an earlier run."));
}

TEST_F(CRecoveryControllerTest, WhatTheUserDidNotWantToSaveIsNotOfferedAgain) {
    CMainFrame& frame = Frame();
    EnterCellText(frame.Document(), 1, 1, {}, "ibm");
    frame.Recovery().KeepNow();
    EXPECT_THAT(Kept(), SizeIs(1));
    boxes.answers = {No};
    frame.close();
    DropFrame();
    EXPECT_THAT(Kept(), IsEmpty());
}

TEST_F(CRecoveryControllerTest, TheUserHearsOnceThatNothingCanBeKept) {
    CMainFrame& frame = Frame();
    std::filesystem::create_directories(At("zantrel"));
    WriteFile(At("zantrel/recovery"), "in the way of the folder");
    EnterCellText(frame.Document(), 1, 1, {}, "ibm");
    frame.Recovery().KeepNow();
    for (int i = 0; i < 3; ++i) frame.Recovery().Poll();
    TurnEventLoop(3);
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Unsaved changes cannot be kept in \"" + At("zantrel/recovery") +
                                               "\": part of its path is not a folder. Save the watchlist so that they "
                                               "are not lost."));
}

TEST_F(CRecoveryControllerTest, AnOpenEditorIsKeptToo) {
    CMainFrame& frame = Frame();
    for (const char* typed : {"ibm", "#refused in the row of a symbol"}) {
        ASSERT_TRUE(frame.View().Grid().BeginEdit(1, 1, typed));
        frame.Recovery().KeepNow();
    }
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
    ASSERT_THAT(Kept(), SizeIs(1));
    EXPECT_THAT(ReadFile(Kept().front()), testing::HasSubstr("Symbols=IBM:1,;"));
}

TEST_F(CRecoveryControllerTest, ASignalEndsTheProgramWithoutAQuestionAndTheChangesAreKept) {
    LoseRun(At("Banks.vxw"), {"IBM"});
    ASSERT_THAT(Kept(), SizeIs(1));
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        QProcess program;
        program.start(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"),
                      {QStringLiteral("-platform"), QStringLiteral("offscreen")});
        ASSERT_TRUE(program.waitForStarted());
        // The window is there when its socket is; the handlers follow before the event loop runs.
        ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(At("zantrel/watchlist-1.socket")); }));
        QProcess save;
        save.start(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"), {QStringLiteral("--save-workspace")});
        ASSERT_TRUE(save.waitForFinished());
        EXPECT_EQ(save.exitCode(), 0) << save.readAllStandardError().toStdString();
        ASSERT_EQ(kill(static_cast<pid_t>(program.processId()), signal), 0);
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 128 + signal);
        std::filesystem::remove(At("zantrel/watchlist-1.socket"));
    }
    EXPECT_THAT(Kept(), SizeIs(1)) << "a recovery on offer outlives the program";
}

TEST_F(CRecoveryControllerTest, ALostDisplayLeavesTheChangesAndTheOpenEditorToTheNextStart) {
    for (const char* tool : {"Xvfb", "xdotool"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) GTEST_SKIP() << "no " << tool;
    QProcess display;
    display.start(QStringLiteral("Xvfb"), {QStringLiteral("-displayfd"), QStringLiteral("1")});
    ASSERT_TRUE(display.waitForReadyRead());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QLatin1Char(':') + QString::fromLatin1(display.readLine().trimmed()));
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"), {});
    ASSERT_TRUE(program.waitForStarted());
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(At("zantrel/watchlist-1.socket")); }));
    QProcess keys;
    keys.setProcessEnvironment(environment);
    keys.start(QStringLiteral("xdotool"),
               QStringLiteral("search --sync --onlyvisible --name Zantrel windowfocus --sync key i b m Return g o o g")
                   .split(QLatin1Char(' ')));
    ASSERT_TRUE(keys.waitForFinished());
    ASSERT_EQ(keys.exitCode(), 0) << keys.readAllStandardError().toStdString();
    // A second after the first entry it is kept: by then the second one is in the editor.
    ASSERT_TRUE(WaitUntil([&] { return Kept().size() == 1; }));
    EXPECT_THAT(ReadFile(Kept().front()), testing::HasSubstr("Symbols=IBM:1,;\r\n"));
    display.kill();
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    ASSERT_THAT(Kept(), SizeIs(1));
    EXPECT_THAT(ReadFile(Kept().front()), testing::HasSubstr("Symbols=IBM:1,;GOOG:2,;\r\n"));
    display.waitForFinished();
}
