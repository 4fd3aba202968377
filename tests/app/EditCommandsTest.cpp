// SPDX-License-Identifier: MIT
#include "app/BoardFixture.h"
#include "watchlist/dialogs/InsertColumns.h"
#include "watchlist/edit/CopyText.h"
#include "watchlist/file/WatchlistFile.h"

#include <QMimeData>
#include <QProgressDialog>
#include <QRadioButton>

using namespace vx;
using namespace vx::test;

namespace {

using CEditCommandsTest = CBoardFixture;
using CClipboardCommandsTest = CBoardFixture;
using CRowCommandsTest = CBoardFixture;
using enum ECommand;

/// What a label showed each time it was painted under the busy cursor.
class CPaintedBusy : public QObject {
public:
    explicit CPaintedBusy(QLabel& label) : m_label(label) { label.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        const QCursor* cursor = QApplication::overrideCursor();
        if (event->type() == QEvent::Paint && cursor && cursor->shape() == Qt::WaitCursor)
            texts.push_back(m_label.text().toStdString());
        return false;
    }
    std::vector<std::string> texts;

private:
    QLabel& m_label;
};

} // namespace

TEST_F(CEditCommandsTest, TypedTextBecomesSymbolsAndAnnotationsAndIsUndoneByName) {
    EXPECT_FALSE(IsEnabled(EditUndo));
    Steps("'ibm'");
    ASSERT_TRUE(grid->IsEditing());
    Script({{"Return; 'buy at open'; Return", "IBM|#buy at open", "type \"buy at open\""}});
    EXPECT_EQ(grid->FocusCell(), (SGridCell{3, 1}));
    EXPECT_EQ(grid->RowCount(), 3) << "an empty row stays below the last used one";
    EXPECT_TRUE(doc->IsModified());
    EXPECT_EQ(Action(EditUndo).text(), QStringLiteral("&Undo type \"buy at open\""));
    Script({{"'x'; Esc", "IBM|#buy at open"}, {"Ctrl+Z", "IBM"}});
    EXPECT_EQ(grid->FocusCell(), (SGridCell{2, 1})) << "what was undone is selected";
    EXPECT_EQ(Action(EditRedo).text(), QStringLiteral("&Redo type \"buy at open\""));
    Script({{"Ctrl+Y", "IBM|#buy at open"},
            {"Ctrl+Z; Ctrl+Shift+Z", "IBM|#buy at open"},
            {"at 3 1; 'ge'; ViewShading", "IBM|#buy at open|GE"}}); // A command takes over what is being typed.
}

TEST_F(CEditCommandsTest, AnEditThatChangesNothingMarksTheDocumentButEscapeIsNoEnd) {
    Rows(QStringLiteral("IBM"));
    const std::string undo = doc->Undo().UndoName();
    for (const char* column : {"Symbol", "Last"})
        for (const auto& [key, modified] : {std::pair{"Esc", false}, {"Return", true}}) {
            doc->MarkSaved();
            grid->BeginEdit(1, ColumnOf(column));
            Script({{key, "IBM", undo.c_str()}});
            EXPECT_EQ(doc->IsModified(), modified) << column << key;
        }
    doc->MarkSaved();
    grid->BeginEdit(1, ColumnOf("Last"));
    Script({{"'remark'; Return", "IBM"}});
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Annotations may not be placed in Symbol Rows."));
    EXPECT_TRUE(doc->IsModified());
}

TEST_F(CEditCommandsTest, F2InARejectedRowBringsBackWhatWasTyped) {
    auto& editor = Child<QLineEdit>("gridEditor");
    for (const auto& [typed, symbol, row] :
         {std::tuple{"IBM,MSFT,AAPL", kCommaSymbol, "#Symbols cannot contain commas."},
          {"Big tech", "Big tech", "#\"Big tech\" is an Invalid or Unauthorized Symbol."},
          {"big tech", "BIG TECH", "#\"BIG TECH\" is an Invalid or Unauthorized Symbol."}}) {
        Type(QLatin1String(typed));
        Steps("Return");
        doc->SymbolNotFound(symbol);
        ASSERT_EQ(Board(), row);
        EXPECT_THAT(grid->Source()->CellTip(1, 3),
                    HasSubstr("F2 brings back what was typed, to be corrected: " + std::string(typed)));
        doc->MarkSaved();
        const std::string undo = doc->Undo().UndoName();
        Steps("at 1 3; F2");
        EXPECT_EQ(editor.text(), QLatin1String(typed));
        Script({{"End; 'x'; Esc", row, undo.c_str()}});
        EXPECT_EQ(doc->RejectedSymbol(1), symbol);
        EXPECT_FALSE(doc->IsModified());

        Steps("F2");
        editor.setText(QStringLiteral("buy at open"));
        Script({{"Return", "#buy at open"}, {"EditUndo", row}, {"at 1 1; F2", row}});
        EXPECT_EQ(editor.text(), QLatin1String(typed)) << "the memory came back with the row";
        editor.setText(QStringLiteral("ko"));
        Script({{"Return", "KO"}}); // As in the symbol column of an empty row.
        EXPECT_EQ(doc->RejectedSymbol(1), "");
        Script({{"EditUndo; EditUndo; at 1 1", ""}}); // One step for each entry.
    }
    Steps("'nope'; Return");
    doc->SymbolNotFound("NOPE");
    Script({{"at 1 1; 'Old cars'; Return", "#Old cars"}}); // Typed over, it is a row of text.
}

TEST_F(CEditCommandsTest, DeleteClearsInsertAndControlDeleteAskOnlyWhereItIsUnclear) {
    Rows(QStringLiteral("A\nB\nC\nD\nE"));
    Script({{"at 5 1; Del", "A|B|C|D"},
            {"rows 3-4; Del", "A|B"},
            {"EditUndo", "A|B|C|D"},
            {"rows 2-3; Ctrl+Del", "A|D", "delete 2 rows"}});
    doc->MarkSaved();
    grid->SetFocusCell(grid->RowCount(), 1);
    Steps("Ctrl+Del");
    EXPECT_FALSE(doc->IsModified()) << "the empty row at the end is there again";
    Script({{"at 2 1; Ins", "A||D"}});

    const std::string before = Columns();
    grid->SelectRange({1, 2, 2, 3});
    InDialog<CInsertDeleteChoiceDlg>(SelectionDelete,
                                     [](CInsertDeleteChoiceDlg& dialog) { EXPECT_TRUE(dialog.IsRows()); });
    EXPECT_EQ(Board() + Columns(), "A||D" + before);
    InDialog<CInsertDeleteChoiceDlg>(SelectionDelete, [](CInsertDeleteChoiceDlg& dialog) {
        Named<QRadioButton>(dialog, "choiceColumns").click();
        dialog.accept();
    });
    EXPECT_EQ(Columns().find("Tick Trend"), std::string::npos);
    Script({{"EditUndo", "A||D"}});
    EXPECT_EQ(Columns(), before);
}

TEST_F(CEditCommandsTest, DeletingUnderAutoSortAsksFirst) {
    Rows(QStringLiteral("A\nB"));
    doc->Update()->Options().sort = {1, true, true, 60000};
    doc->Update()->Columns();
    const auto& timer = *frame->View().findChild<QTimer*>(QStringLiteral("autoSortTimer"));
    boxes.answer = EBoxAnswer::No;
    Script({{"rows 1-1; RowDelete; EditDelete", "A|B"}});
    ASSERT_EQ(boxes.shown.size(), 2u);
    EXPECT_EQ(boxes.shown[0].caption, "Turn Off Auto Sort");
    boxes.answer = EBoxAnswer::Yes;
    Script({{"RowDelete", "B"}});
    EXPECT_FALSE(timer.isActive());
    Script({{"EditUndo", "A|B", "turn off auto sort"}, {"EditUndo", "A|B"}});
    EXPECT_TRUE(timer.isActive());
}

TEST_F(CEditCommandsTest, UndoingVeryManyRowsIsSeenToBeUnderWay) {
    Rows(QStringLiteral("A\n"));
    Rows(QStringLiteral("A\n").repeated(80000));
    const CPaintedBusy painted(Child<QLabel>("paneStatus"));
    Steps("EditUndo; EditRedo");
    EXPECT_THAT(painted.texts, ElementsAre("Undoing paste 80000 rows", "Redoing paste 80000 rows"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Status(), doc->StatusText());
    Steps("EditUndo; EditUndo");
    EXPECT_EQ(painted.texts.size(), 3u) << "a short one was";
}

TEST_F(CClipboardCommandsTest, WhatIsCopiedIsTheTextOfTheCellsAndComesBackAsItWas) {
    Rows(QStringLiteral("IBM\n#Tech stocks\nMSFT"));
    Steps("cells 1-3 1-2; Ctrl+C");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("IBM\t\r\nTech stocks\r\nMSFT\t\r\n"));
    Script({{"at 4 1; Ctrl+V", "IBM|#Tech stocks|MSFT|IBM|#Tech stocks|MSFT"}});
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{4, 6, 1, grid->ColumnCount()}));
    Script({{"rows 1-2; Ctrl+X", "||MSFT|IBM|#Tech stocks|MSFT", "cut 2 rows"},
            {"EditUndo", "IBM|#Tech stocks|MSFT|IBM|#Tech stocks|MSFT"}});
}

TEST_F(CClipboardCommandsTest, TextsFromOtherProgramsHaveAnyLineEndsAndMayBeDropped) {
    QMimeData dropped;
    const auto drop = [&](int row) {
        ASSERT_TRUE(grid->AcceptsDrop(dropped));
        Q_EMIT grid->DataDropped(&dropped, row, 1);
        ProcessAll();
    };
    for (const char* end : {"\n", "\r\n", "\r"}) {
        SCOPED_TRACE(testing::PrintToString(end));
        const QString text = QStringLiteral("My WatchList -- REALTIME --~User: me~IBM  MSFT~=====~GE")
                                 .replace(QLatin1Char('~'), QLatin1String(end));
        Rows(text);
        EXPECT_EQ(Board(), "IBM|MSFT|GE");
        Steps("EditUndo");
        dropped.setText(text);
        drop(1);
        Script({{"at 1 1", "IBM|MSFT|GE"}, {"EditUndo", ""}});
    }
    Rows(QStringLiteral("IBM"));
    dropped.setText(QStringLiteral("KO\nPEP"));
    drop(2);
    EXPECT_EQ(Board(), "IBM|KO|PEP");
    QMimeData files;
    files.setUrls({QUrl(QStringLiteral("file:///tmp/list.vxw"))});
    EXPECT_FALSE(grid->AcceptsDrop(files)) << "files are opened, not pasted";
}

TEST_F(CClipboardCommandsTest, APasteIsSelectedSeenAndSaysWhatWasThereAlready) {
    QString lines;
    for (int i = 0; i < 10; ++i) lines += QStringLiteral("S%1\n").arg(i);
    const int last = 3 * (grid->Geometry().ScrolledHeight() / grid->Geometry().RowHeight());
    Rows(QStringLiteral("A\n").repeated(last));
    grid->SetFocusCell(last + 1, 2);
    Copy(lines + QStringLiteral("A\nWatchList of mine\n"));
    Do(EditPaste);
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{last + 1, last + 11, 1, grid->ColumnCount()}));
    for (const int row : {last + 1, last + 11})
        EXPECT_EQ(grid->Geometry().VisibleCellRect(row, 1).height(), grid->Geometry().RowHeight()) << row;
    const std::string said =
        "Pasted 11 rows; 1 symbol was in the list already; 1 line was left out: \"WatchList of mine\"";
    EXPECT_EQ(Status(), said);
    doc->SymbolNotFound("A"); // The feed's answer comes at once and must not wipe it away.
    EXPECT_EQ(Status(), said);
    Child<QTimer>("saidTimer").start(0);
    EXPECT_TRUE(WaitUntil([&] { return Status() == doc->StatusText(); }));
}

TEST_F(CClipboardCommandsTest, ALongPasteCanBeCancelledAndAVeryLargeTextIsRefused) {
    Rows(QStringLiteral("IBM"));
    QString lines;
    for (int i = 0; i < 60000; ++i) lines += QStringLiteral("S%1\n").arg(i);
    bool wasUp = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, frame, [&] {
        auto* box = frame->findChild<QProgressDialog*>(QStringLiteral("workProgress"));
        if (box == nullptr || !box->isVisible()) return;
        wasUp = true;
        timer.stop();
        box->cancel();
    });
    timer.start(0);
    Copy(lines);
    Do(EditPaste);
    // A machine that is faster than the moment before the box comes up has pasted everything.
    EXPECT_EQ(doc->LastUsedRow(), wasUp ? 1 : 60000);

    const std::string before = Board();
    Copy(QString((4 << 20) + 1, QLatin1Char('A')));
    Do(EditPaste);
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre(HasSubstr("at most 4 MB")));
    EXPECT_EQ(Board(), before);
}

TEST_F(CRowCommandsTest, RowsAndGroupsMoveByKeysAndDragWithWhatIsSelected) {
    Rows(QStringLiteral("A\nB\nC\nD"));
    Script({{"rows 2-3; Alt+Up", "B|C|A|D"}});
    EXPECT_EQ(grid->SelectedRange().firstRow, 1);
    EXPECT_FALSE(IsEnabled(RowMoveUp));
    Script({{"Alt+Down; Alt+Down", "A|D|B|C"}});
    Q_EMIT grid->RowsDragged(3, 4, 1);
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{1, 2, 1, grid->ColumnCount()}));
    Script({{"rows 1-2", "B|C|A|D"}, {"EditUndo; EditUndo; EditUndo; EditUndo", "A|B|C|D"}});

    doc->NewDocument();
    Rows(QStringLiteral("IBM\n#Banks of note\nJPM\nBAC\n\n#Chips\nINTC"));
    const auto focus = [&] { return doc->RowSymbol(grid->FocusCell().row); };
    Script({{"at 4 2; Alt+Shift+Down", "IBM|#Chips|INTC||#Banks of note|JPM|BAC"}});
    EXPECT_EQ(focus(), "BAC") << "the focus goes along";
    EXPECT_FALSE(IsEnabled(RowMoveGroupDown));
    Script({{"Alt+Shift+Up", "IBM|#Banks of note|JPM|BAC||#Chips|INTC"},
            {"Alt+Shift+Up", "#Banks of note|JPM|BAC|IBM||#Chips|INTC"}}); // The empty row parts them as before.
    EXPECT_EQ(focus(), "BAC");
    EXPECT_FALSE(IsEnabled(RowMoveGroupUp));
    Script({{"EditUndo", "IBM|#Banks of note|JPM|BAC||#Chips|INTC"}});
    grid->SetFocusCell(doc->RowCount(), 1);
    EXPECT_FALSE(IsEnabled(RowMoveGroupUp)) << "there is nothing to move";
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
            {"EditUndo", "D|C|B|A|E"}});
    EXPECT_EQ(grid->SelectedRange().firstRow, 2);
    EXPECT_EQ(grid->SelectedRange().lastRow, 3);
    Script({{"EditRedo", "D|(C)|(B)|A|E"}, // Redoing shows nothing of what it hides.
            {"rows 1-1; RowHide", "(D)|(C)|(B)|A|E"},
            {"at 5 1; RowInsert", "(D)|(C)|(B)|A||E"},
            {"rows 4-4; Ctrl+Shift+9", "D|C|B|A||E"}}); // Those at the selection's edge.
    EXPECT_FALSE(IsEnabled(RowShow));
    grid->SelectRange({1, grid->RowCount(), 1, grid->ColumnCount()});
    EXPECT_FALSE(IsEnabled(RowHide)) << "a row is left";
    grid->SelectRange({2, grid->RowCount(), 1, grid->ColumnCount()});
    Do(RowHide);
    EXPECT_EQ(grid->FocusCell().row, 1);
    EXPECT_FALSE(IsEnabled(RowHide) || IsEnabled(RowMoveDown));
}

TEST_F(CRowCommandsTest, HiddenRowsAreLeftAloneByACutAndKeptInTheFile) {
    Rows(QStringLiteral("D\nC\nB\nA\nE"));
    Script({{"rows 3-3; RowHide; rows 2-4; EditCut", "D||(B)||E"}});
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
    Script({{"EditUndo", "D|C|(B)|A|E"}, {"RowShow; rows 3-3; EditDelete", "D|C||A|E"}});
    doc->Update()->SetHidden(3, true);
    Script({{"EditUndo", "D|C|B|A|E"}}); // What was undone is seen.
    EXPECT_EQ(grid->SelectedRange().firstRow, 3);

    CWatchlistFile file(*doc, At("state"));
    ASSERT_TRUE(file.SaveAs(At("list.vxw"), {}).IsDone());
    doc->SetRowsHidden({2, 3, 5}, true);
    EXPECT_TRUE(doc->IsModified());
    EXPECT_TRUE(file.Save({}).IsDone());
    EXPECT_FALSE(doc->IsModified());
    doc->NewDocument();
    EXPECT_TRUE(grid->Geometry().HiddenRows().empty());
    ASSERT_TRUE(file.Open(At("list.vxw")).IsDone());
    EXPECT_EQ(Board(), "D|(C)|(B)|A|(E)");
    EXPECT_FALSE(doc->Undo().CanUndo() || doc->IsModified());
}
