// SPDX-License-Identifier: MIT
#include "app/files/RecoveryController.h"

#include "app/FrameFixture.h"
#include "app/files/RecoveryDlg.h"
#include "watchlist/file/RecoveryFile.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTreeWidget>

#include <csignal>

using namespace vx;
using namespace vx::test;
using enum vx::EBoxAnswer;

namespace {

class CRecoveryControllerTest : public CFrameFixture {
protected:
    std::vector<std::string> Kept() const {
        std::vector<std::string> out;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(At("zantrel/recovery"), error))
            if (entry.path().extension() == ".recovery") out.push_back(entry.path().string());
        return out;
    }
    /// A run that ends without a save: symbols in rows 1, 2, ... of a list with a file, or of an untitled one.
    void LoseRun(const std::string& file, const std::vector<std::string>& symbols) {
        Frame();
        if (!file.empty()) {
            if (!std::filesystem::exists(file)) WriteFile(file, "Columns=Symbol:1000;\r\n");
            ASSERT_TRUE(frame->Files().Open(file));
        }
        int row = 0;
        for (const std::string& symbol : symbols) Enter(++row, symbol);
        frame->Recovery().KeepNow();
        DropFrame();
    }
    /// Offers what is kept, and presses buttons of the dialog; returns what it lists.
    std::vector<std::string> Offer(std::initializer_list<const char*> buttons, bool userAsked = false) {
        std::vector<std::string> out;
        WhenOpen<CRecoveryDlg>([&](CRecoveryDlg& dialog) {
            auto& list = Named<QTreeWidget>(dialog, "recoveries");
            for (int i = 0; i < list.topLevelItemCount(); ++i)
                out.push_back(list.topLevelItem(i)->text(0).toStdString() + ' ' +
                              list.topLevelItem(i)->text(2).toStdString());
            if (const auto a = list.findItems(QStringLiteral("A"), Qt::MatchExactly); !a.empty())
                list.setCurrentItem(a.front());
            for (const char* button : buttons) {
                Click(dialog, button);
                left.push_back(list.topLevelItemCount());
            }
        });
        frame->Recovery().Offer(userAsked);
        return out;
    }
    /// The program, with its window there: its socket is; the handlers follow before the event loop runs.
    testing::AssertionResult Start(QProcess& program, const QStringList& arguments) {
        program.start(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"), arguments);
        if (!program.waitForStarted() ||
            !WaitUntil([&] { return std::filesystem::exists(At("zantrel/watchlist-1.socket")); }))
            return testing::AssertionFailure() << "no window";
        return testing::AssertionSuccess();
    }

    std::vector<int> left; ///< How many the dialog listed after each button.
};

} // namespace

TEST_F(CRecoveryControllerTest, LostChangesAreOfferedAndBecomeUnsavedChangesOfTheirFileAgain) {
    LoseRun(At("Banks.vxw"), {"IBM", "GE"});
    Frame();
    EXPECT_THAT(Offer({"recover"}), ElementsAre("Banks 2"));
    EXPECT_EQ(doc->RowSymbol(2), "GE");
    EXPECT_TRUE(doc->IsModified());
    EXPECT_EQ(frame->Files().File().Path(), At("Banks.vxw"));
    EXPECT_THAT(Kept(), SizeIs(1)) << "it is kept until it is saved";
    Do(ECommand::FileSave);
    frame->Recovery().Flush();
    EXPECT_THAT(Kept(), IsEmpty());
    EXPECT_THAT(ReadFile(At("Banks.vxw")), HasSubstr("Symbols=IBM:1,;GE:2,;"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CRecoveryControllerTest, OfSeveralEachIsRecoveredDiscardedOrLeftAndNoneIsLost) {
    LoseRun(At("A.vxw"), {"IBM"});
    LoseRun({}, {"F", "GM", "TM"});
    LoseRun(At("C.vxw"), {"GE"});
    Frame();
    boxes.answers = {No, Yes};
    EXPECT_THAT(Offer({"discard", "discard", "later"}), testing::UnorderedElementsAre("A 1", "C 1", "Untitled 3"));
    EXPECT_THAT(left, ElementsAre(3, 2, 2));
    EXPECT_THAT(boxes.TakeTexts(), SizeIs(2));
    EXPECT_EQ(doc->SymbolCount(), 0U);
    EXPECT_THAT(Kept(), SizeIs(2));

    Offer({"recover"}, true);
    EXPECT_GT(doc->SymbolCount(), 0U);
    boxes.answers = {Cancel}; // The other one would replace it: the user thinks better of it.
    Offer({"recover"}, true);
    EXPECT_THAT(boxes.TakeTexts(), SizeIs(1));
    EXPECT_THAT(Kept(), SizeIs(2));
    boxes.answers = {No};
    Offer({"recover"}, true);
    EXPECT_THAT(Kept(), SizeIs(1)) << "what the user gave up is gone, the other one stays";
}

TEST_F(CRecoveryControllerTest, AnOpenEditorIsKeptTooUntilTheUserDoesNotWantToSave) {
    Frame();
    for (const char* typed : {"ibm", "#refused in the row of a symbol"}) {
        ASSERT_TRUE(grid->BeginEdit(1, 1, typed));
        frame->Recovery().KeepNow();
    }
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
    ASSERT_THAT(Kept(), SizeIs(1));
    EXPECT_THAT(ReadFile(Kept().front()), HasSubstr("Symbols=IBM:1,;"));
    boxes.answers = {No};
    frame->close();
    DropFrame();
    EXPECT_THAT(Kept(), IsEmpty());
}

TEST_F(CRecoveryControllerTest, ASignalEndsTheProgramWithoutAQuestionAndTheChangesAreKeptAndResumed) {
    LoseRun(At("Banks.vxw"), {"IBM"});
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        QProcess program;
        QStringList arguments{QStringLiteral("-platform"), QStringLiteral("offscreen")};
        if (signal != SIGTERM) arguments << QStringLiteral("--resume") << QString::fromStdString(Kept().front());
        ASSERT_TRUE(Start(program, arguments));
        EXPECT_TRUE(signal == SIGTERM || WaitUntil([&] { return FindRecoveries(At("zantrel")).empty(); }));
        EXPECT_EQ(
            QProcess::execute(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"), {QStringLiteral("--save-workspace")}),
            0);
        ASSERT_EQ(kill(static_cast<pid_t>(program.processId()), signal), 0);
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 128 + signal);
        std::filesystem::remove(At("zantrel/watchlist-1.socket"));
    }
    ASSERT_THAT(Kept(), SizeIs(1)) << "a recovery on offer outlives the program";
    EXPECT_THAT(ReadFile(Kept().front()), HasSubstr("Symbols=IBM:1,;"));
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
    ASSERT_TRUE(Start(program, {}));
    QProcess keys;
    keys.setProcessEnvironment(environment);
    keys.start(QStringLiteral("xdotool"),
               QStringLiteral("search --sync --onlyvisible --name Zantrel windowfocus --sync key i b m Return g o o g")
                   .split(QLatin1Char(' ')));
    ASSERT_TRUE(keys.waitForFinished());
    ASSERT_EQ(keys.exitCode(), 0) << keys.readAllStandardError().toStdString();
    // A second after the first entry it is kept: by then the second one is in the editor.
    ASSERT_TRUE(WaitUntil([&] { return Kept().size() == 1; }));
    EXPECT_THAT(ReadFile(Kept().front()), HasSubstr("Symbols=IBM:1,;\r\n"));
    display.kill();
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    ASSERT_THAT(Kept(), SizeIs(1));
    EXPECT_THAT(ReadFile(Kept().front()), HasSubstr("Symbols=IBM:1,;GOOG:2,;\r\n"));
    display.waitForFinished();
}
