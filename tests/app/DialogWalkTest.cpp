// Every dialog of the program, gone through by Tab.

#include "app/BoardFixture.h"

#include "alerts/rules/FiredAlert.h"
#include "alerts/ui/ResetAlert.h"
#include "app/commands/GridCommands.h"
#include "app/files/FileController.h"
#include "app/files/RecoveryDlg.h"
#include "support/DialogWalk.h"
#include "support/EventLoop.h"
#include "watchlist/file/RecoveryFile.h"

#include <gmock/gmock.h>

#include <algorithm>

using namespace vx;
using namespace vx::test;
using testing::IsEmpty;

namespace {

class CDialogWalkTest : public CBoardFixture {
protected:
    CDialogWalkTest() {
        Rows(QStringLiteral("IBM\nMSFT\nGE"));
        grid->SetFocusCell(1, ColumnOf("Last"));
    }

    void Look(QWidget& window, const char* name) {
        const CDialogWalk walk(window);
        EXPECT_THAT(walk.Faults(), IsEmpty()) << name;
        EXPECT_GT(walk.Stops(), 0U);
        ++m_looked;
    }
    /// Goes through the dialog that a command opens, and closes it.
    void LookAtDialog(ECommand command, const char* name) {
        m_looked = 0;
        InNext<QDialog>([&](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName().toStdString(), name);
            Look(dialog, name);
            dialog.reject();
        });
        Do(command);
        EXPECT_TRUE(WaitUntil([&] { return m_looked == 1; })) << name;
    }
    /// The same for a window that stays open beside the board.
    void LookAtWindow(ECommand command, const char* name) {
        Do(command);
        auto* window = frame->findChild<QDialog*>(QString::fromLatin1(name));
        ASSERT_NE(window, nullptr) << name;
        Look(*window, name);
        window->close();
    }

    int m_looked = 0;
};

} // namespace

TEST_F(CDialogWalkTest, TheKeyboardAndTheDefaultButtonAreToldApart) {
    QDialog dialog;
    auto* text = new QLineEdit(&dialog);
    auto* button = new QPushButton(QStringLiteral("OK"), &dialog);
    button->move(0, 40);
    button->setAutoDefault(false);
    dialog.show();
    dialog.activateWindow();
    for (const char* theme : {"light", "dark"}) {
        frame->GridCommands().UseTheme(QString::fromLatin1(theme), false);
        std::vector<QImage> looks;
        for (const bool isDefault : {false, true})
            for (QWidget* keyboard : {static_cast<QWidget*>(text), static_cast<QWidget*>(button)}) {
                button->setDefault(isDefault);
                keyboard->setFocus(Qt::TabFocusReason);
                ProcessAll();
                const QImage look = button->grab().toImage();
                EXPECT_EQ(std::ranges::count(looks, look), 0) << theme << " " << isDefault << button->hasFocus();
                looks.push_back(look);
            }
    }
}

TEST_F(CDialogWalkTest, DialogsOfTheBoard) {
    LookAtDialog(ECommand::EditNote, "noteDialog");
    LookAtDialog(ECommand::EditGoToSymbol, "goToSymbolDialog");
    LookAtDialog(ECommand::ColumnInsert, "insertColumns");
    LookAtDialog(ECommand::FormatCells, "cellSettingsDialog");
    LookAtDialog(ECommand::FormatGrid, "gridSettingsDialog");
    LookAtDialog(ECommand::SortDialog, "sortDialog");
    grid->SelectRange({1, 2, 2, 3});
    LookAtDialog(ECommand::SelectionInsert, "insertDeleteChoice");
    LookAtDialog(ECommand::SelectionDelete, "insertDeleteChoice");
}

TEST_F(CDialogWalkTest, DialogsOfFilesAndOfTheProgram) {
    LookAtDialog(ECommand::FileExport, "quoteDataOptions");
    LookAtDialog(ECommand::About, "aboutDialog");
    WriteFile(folder / "List.txt", "IBM\nNEW\nNEW\nnot understood at all, is it\n");
    InNext<QDialog>([&](QDialog& dialog) {
        Look(dialog, "importDialog");
        dialog.reject();
    });
    frame->Files().TakeDropped({folder / "List.txt"});
    EXPECT_TRUE(WaitUntil([&] { return m_looked == 2; }));
    std::vector<SRecovery> found(2);
    CRecoveryDlg recovery(std::move(found), frame);
    recovery.show();
    Look(recovery, "recoveryDialog");
    LookAtWindow(ECommand::HelpGuide, "guide");
    LookAtWindow(ECommand::HelpKeys, "keysWindow");
}

TEST_F(CDialogWalkTest, DialogsOfAlertsAndWindowsBesideTheBoard) {
    LookAtDialog(ECommand::AlertNew, "newAlertDlg");
    LookAtDialog(ECommand::AlertsEdit, "alertsDlg");
    LookAtDialog(ECommand::SymbolSearch, "symbolSearch");
    LookAtWindow(ECommand::AlertHistory, "alertHistory");
    LookAtWindow(ECommand::Headlines, "headlinesWindow");
    LookAtWindow(ECommand::TimeAndSales, "timeAndSales");
    SAlertRecord notice;
    notice.symbol = "IBM";
    notice.fieldName = "Last";
    CResetAlert reset(notice, frame);
    reset.show();
    Look(reset, "resetAlert");
}
