// SPDX-License-Identifier: MIT
// Every dialog of the program, gone through by Tab, at the usual font, at one half as large again and at one twice as
// large.

#include "support/DialogWalk.h"
#include "alerts/rules/FiredAlert.h"
#include "alerts/ui/ResetAlert.h"
#include "app/FrameFixture.h"
#include "app/files/RecoveryDlg.h"
#include "watchlist/file/RecoveryFile.h"

using namespace vx;
using namespace vx::test;
using enum ECommand;

namespace {

/// Before any window is made.
class CFontOfSize {
protected:
    CFontOfSize() {
        QFont font = m_usual;
        font.setPointSizeF(font.pointSizeF() * testing::WithParamInterface<double>::GetParam());
        QApplication::setFont(font);
    }
    ~CFontOfSize() { QApplication::setFont(m_usual); }

private:
    const QFont m_usual = QApplication::font();
};

class CDialogWalkTest : protected CFontOfSize, public CFrameFixture, public testing::WithParamInterface<double> {
protected:
    CDialogWalkTest() {
        ShownFrame();
        Rows(QStringLiteral("IBM\nMSFT\nGE"));
        grid->SetFocusCell(1, ColumnOf("Last"));
    }

    static void Look(QDialog& dialog, const char* name) {
        EXPECT_EQ(dialog.objectName().toStdString(), name);
        const CDialogWalk walk(dialog);
        EXPECT_THAT(walk.Faults(), testing::IsEmpty()) << name;
        EXPECT_GT(walk.Stops(), 0U);
        EXPECT_EQ(dialog.size().boundedTo(dialog.screen()->size()), dialog.size()) << name;
    }
    void LookAtDialog(ECommand command, const char* name) {
        InDialog(command, std::function<void(QDialog&)>([&](QDialog& dialog) { Look(dialog, name); }));
    }
    /// The same for a window that stays open beside the board.
    void LookAtWindow(ECommand command, const char* name) {
        Do(command);
        auto& window = Child<QDialog>(name);
        Look(window, name);
        window.close();
    }
    template <class Dialog> void LookAtShown(Dialog&& dialog, const char* name) {
        dialog.show();
        Look(dialog, name);
    }
};

} // namespace

TEST_P(CDialogWalkTest, DialogsOfTheBoard) {
    for (const auto& [command, name] : {std::pair{EditNote, "noteDialog"},
                                        {EditGoToSymbol, "goToSymbolDialog"},
                                        {ColumnInsert, "insertColumns"},
                                        {FormatCells, "cellSettingsDialog"},
                                        {FormatGrid, "gridSettingsDialog"},
                                        {SortDialog, "sortDialog"}})
        LookAtDialog(command, name);
    grid->SelectRange({1, 2, 2, 3});
    LookAtDialog(SelectionInsert, "insertDeleteChoice");
    LookAtDialog(SelectionDelete, "insertDeleteChoice");
}

TEST_P(CDialogWalkTest, DialogsOfFilesAndOfTheProgram) {
    LookAtDialog(FileExport, "quoteDataOptions");
    LookAtDialog(About, "aboutDialog");
    WriteFile(At("List.txt"), "IBM\nNEW\nNEW\nnot understood at all, is it\n");
    bool isImport = false;
    WhenOpen<QDialog>([&](QDialog& dialog) {
        Look(dialog, "importDialog");
        isImport = true;
        dialog.reject();
    });
    frame->Files().TakeDropped({At("List.txt")});
    EXPECT_TRUE(isImport);
    LookAtShown(CRecoveryDlg(std::vector<SRecovery>(2), frame), "recoveryDialog");
    LookAtWindow(HelpGuide, "guide");
    LookAtWindow(HelpKeys, "keysWindow");
}

TEST_P(CDialogWalkTest, DialogsOfAlertsAndWindowsBesideTheBoard) {
    LookAtDialog(AlertNew, "newAlertDlg");
    LookAtDialog(AlertsEdit, "alertsDlg");
    LookAtDialog(SymbolSearch, "symbolSearch");
    LookAtWindow(AlertHistory, "alertHistory");
    LookAtWindow(Headlines, "headlinesWindow");
    LookAtWindow(TimeAndSales, "timeAndSales");
    SAlertRecord notice;
    notice.symbol = "IBM";
    notice.fieldName = "Last";
    LookAtShown(CResetAlert(notice, frame), "resetAlert");
}

INSTANTIATE_TEST_SUITE_P(Fonts, CDialogWalkTest, testing::Values(1.0, 1.5, 2.0),
                         [](const auto& given) { return std::to_string(int(given.param * 100)); });
