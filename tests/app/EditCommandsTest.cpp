// SPDX-License-Identifier: MIT
#include "app/ContextFixture.h"
#include "watchlist/dialogs/InsertColumns.h"
#include "watchlist/edit/CopyText.h"

#include <QMimeData>
#include <QRadioButton>

using namespace vx;
using namespace vx::test;

namespace {

using CEditCommandsTest = CContextFixture;
using CClipboardCommandsTest = CContextFixture;
using CRowCommandsTest = CContextFixture;
using enum ECommand;

} // namespace

TEST_F(CEditCommandsTest, TypedTextBecomesSymbolsAndAnnotationsAndIsUndoneByName) {
    Script({{"'ibm'; Return; 'buy at open'; Return", "IBM|#buy at open", "type \"buy at open\""}});
    EXPECT_EQ(grid->FocusCell(), (SGridCell{3, 1}));
    EXPECT_EQ(Action(EditUndo).text(), QStringLiteral("&Undo type \"buy at open\""));
    Script({{"'x'; Esc", "IBM|#buy at open"}, {"Ctrl+Z", "IBM"}});
    EXPECT_EQ(grid->FocusCell(), (SGridCell{2, 1})) << "what was undone is selected";
    Script({{"Ctrl+Y", "IBM|#buy at open"},
            {"Ctrl+Z; Ctrl+Shift+Z", "IBM|#buy at open"},
            {"at 3 1; 'ge'; ViewShading", "IBM|#buy at open|GE"}}); // A command takes over what is being typed.
}

TEST_F(CEditCommandsTest, F2InARejectedRowBringsBackWhatWasTyped) {
    const auto& editor = Child<QLineEdit>("gridEditor");
    for (const auto& [typed, symbol, row] :
         {std::tuple{"IBM,MSFT,AAPL", kCommaSymbol, "#Symbols cannot contain commas."},
          {"big tech", "BIG TECH", "#\"BIG TECH\" is an Invalid or Unauthorized Symbol."}}) {
        Type(QLatin1String(typed));
        Steps("Return");
        doc->SymbolNotFound(symbol);
        Script({{"at 1 3; F2; End; 'x'; Esc; F2", row}});
        EXPECT_EQ(editor.text(), QLatin1String(typed));
        Script({{"Ctrl+A; 'buy at open'; Return", "#buy at open"}, {"EditUndo", row}, {"at 1 1; F2", row}});
        EXPECT_EQ(editor.text(), QLatin1String(typed)) << "the memory came back with the row";
        Script({{"Ctrl+A; 'ko'; Return", "KO"}, {"EditUndo; EditUndo; at 1 1", ""}}); // One step for each entry.
    }
}

TEST_F(CEditCommandsTest, DeleteClearsInsertAndControlDeleteAskOnlyWhereItIsUnclear) {
    Rows(QStringLiteral("A\nB\nC\nD\nE"));
    Script({{"at 5 1; Del", "A|B|C|D"}, {"rows 2-3; Ctrl+Del", "A|D", "delete 2 rows"}, {"at 2 1; Ins", "A||D"}});
    const std::string before = Columns();
    grid->SelectRange({1, 2, 2, 3});
    InDialog<CInsertDeleteChoiceDlg>(SelectionDelete, [](CInsertDeleteChoiceDlg& dialog) {
        Named<QRadioButton>(dialog, "choiceColumns").click();
        dialog.accept();
    });
    EXPECT_EQ(Columns().find("Tick Trend"), std::string::npos);
    Script({{"EditUndo", "A||D"}});
    EXPECT_EQ(Columns(), before);
}

TEST_F(CClipboardCommandsTest, TextsOfOtherProgramsMayBeDropped) {
    Rows(QStringLiteral("IBM"));
    QMimeData dropped, files;
    dropped.setText(QStringLiteral("KO\rPEP"));
    ASSERT_TRUE(grid->AcceptsDrop(dropped));
    Q_EMIT grid->DataDropped(&dropped, 2, 1);
    Script({{"at 1 1", "IBM|KO|PEP"}});
    files.setUrls({QUrl(QStringLiteral("file:///tmp/list.vxw"))});
    EXPECT_FALSE(grid->AcceptsDrop(files)) << "files are opened, not pasted";
}

TEST_F(CClipboardCommandsTest, APasteIsSelectedSeenAndSaysWhatWasThereAlready) {
    Rows(QStringLiteral("A\n").repeated(200));
    grid->SetFocusCell(201, 2);
    Copy(QStringLiteral("B\nC\nA\nWatchList of mine\n"));
    Do(EditPaste);
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{201, 203, 1, grid->ColumnCount()}));
    EXPECT_FALSE(grid->Geometry().VisibleCellRect(203, 1).isEmpty());
    const std::string said =
        "Pasted 3 rows; 1 symbol was in the list already; 1 line was left out: \"WatchList of mine\"";
    doc->SymbolNotFound("A"); // The feed's answer comes at once and must not wipe it away.
    EXPECT_EQ(Status(), said);
    Child<QTimer>("saidTimer").start(0);
    EXPECT_TRUE(WaitUntil([&] { return Status() == doc->StatusText(); }));
}

TEST_F(CRowCommandsTest, RowsAndGroupsMoveByKeysAndDragWithWhatIsSelected) {
    Rows(QStringLiteral("A\nB\nC\nD"));
    Script({{"rows 2-3; Alt+Up", "B|C|A|D"}});
    EXPECT_FALSE(IsEnabled(RowMoveUp));
    Script({{"Alt+Down; Alt+Down", "A|D|B|C"}});
    Q_EMIT grid->RowsDragged(3, 4, 1);
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{1, 2, 1, grid->ColumnCount()}));
    Script({{"rows 1-2", "B|C|A|D"}, {"EditUndo; EditUndo; EditUndo; EditUndo", "A|B|C|D"}});

    doc->NewDocument();
    Rows(QStringLiteral("IBM\n#Banks of note\nJPM\nBAC\n\n#Chips\nINTC"));
    Script({{"at 4 2; Alt+Shift+Down", "IBM|#Chips|INTC||#Banks of note|JPM|BAC"}});
    EXPECT_EQ(doc->RowSymbol(grid->FocusCell().row), "BAC") << "the focus goes along";
    EXPECT_FALSE(IsEnabled(RowMoveGroupDown));
    Script({{"Alt+Shift+Up", "IBM|#Banks of note|JPM|BAC||#Chips|INTC"},
            {"Alt+Shift+Up", "#Banks of note|JPM|BAC|IBM||#Chips|INTC"}}); // The empty row parts them as before.
    EXPECT_FALSE(IsEnabled(RowMoveGroupUp));
}

TEST_F(CRowCommandsTest, RowsAreHiddenAndShownByKeysAndMoveWithSortingAndUndo) {
    Rows(QStringLiteral("D\nC\nB\nA\nE"));
    Script({{"rows 2-3; Ctrl+9", "D|(C)|(B)|A|E", "hide 2 rows"}});
    EXPECT_EQ(grid->FocusCell().row, 4);
    EXPECT_EQ(CopyText(*doc, {1, 5, 1, 1}), "D\r\nA\r\nE\r\n");
    Steps("columns 1-1");
    Q_EMIT grid->HeaderDoubleClicked(1);
    ProcessAll();
    Script({{"rows 1-4", "A|(B)|(C)|D|E"},
            {"RowDelete", "E"},
            {"EditUndo", "A|(B)|(C)|D|E"}, // What was hidden comes back hidden.
            {"EditUndo", "D|(C)|(B)|A|E"}, // The sort.
            {"EditUndo", "D|C|B|A|E"},
            {"EditRedo", "D|(C)|(B)|A|E"}, // Redoing shows nothing of what it hides.
            {"rows 1-1; RowHide", "(D)|(C)|(B)|A|E"},
            {"rows 4-4; Ctrl+Shift+9", "D|C|B|A|E"}}); // Those at the selection's edge.
    EXPECT_FALSE(IsEnabled(RowShow));
    Steps("EditSelectAll");
    EXPECT_FALSE(IsEnabled(RowHide)) << "a row is left";
}

TEST_F(CRowCommandsTest, HiddenRowsAreLeftAloneByACutAndShownAgainByANewList) {
    Rows(QStringLiteral("D\nC\nB\nA\nE"));
    Script({{"rows 3-3; RowHide; rows 2-4; EditCut", "D||(B)||E"}});
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
    Script({{"EditUndo", "D|C|(B)|A|E"}, {"RowShow; rows 3-3; EditDelete", "D|C||A|E"}});
    doc->Update()->SetHidden(3, true);
    Script({{"EditUndo", "D|C|B|A|E"}}); // What was undone is seen.
    doc->SetRowsHidden({2}, true);
    doc->NewDocument();
    EXPECT_TRUE(grid->Geometry().HiddenRows().empty());
}
