#include "app/BoardFixture.h"

#include "base/Registry.h"
#include "watchlist/dialogs/InsertDeleteChoiceDlg.h"

#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressDialog>
#include <QRadioButton>

using namespace vx;
using namespace vx::test;

namespace {

using CBoardEditTest = CBoardFixture;
using enum ECommand;

/// What a label showed each time it was painted under the busy cursor.
class CPaintedBusy : public QObject {
public:
    explicit CPaintedBusy(QLabel& label) : m_label(label) { label.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        const QCursor* cursor = QApplication::overrideCursor();
        if (event->type() == QEvent::Paint && cursor && cursor->shape() == Qt::WaitCursor) texts << m_label.text();
        return false;
    }
    QStringList texts;

private:
    QLabel& m_label;
};

} // namespace

TEST_F(CBoardEditTest, TypedTextBecomesSymbolsAndAnnotationsAndIsUndoneByName) {
    EXPECT_FALSE(IsEnabled(EditUndo));
    Type(QStringLiteral("ibm"));
    ASSERT_TRUE(grid->IsEditing());
    Key(Qt::Key_Return);
    Type(QStringLiteral("buy at open"));
    Key(Qt::Key_Return);
    EXPECT_EQ(Board(), "IBM|#buy at open");
    EXPECT_EQ(grid->FocusCell(), (SGridCell{3, 1}));
    EXPECT_EQ(grid->RowCount(), 3) << "an empty row stays below the last used one";
    EXPECT_TRUE(doc->IsModified());

    Type(QStringLiteral("x"));
    Key(Qt::Key_Escape);
    EXPECT_EQ(Board(), "IBM|#buy at open");
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo type \"buy at open\""));
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Board(), "IBM");
    EXPECT_EQ(grid->FocusCell(), (SGridCell{2, 1})) << "what was undone is selected";
    EXPECT_EQ(TextOf(EditRedo), QStringLiteral("&Redo type \"buy at open\""));
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Board(), "IBM|#buy at open");
}

TEST_F(CBoardEditTest, AnEditThatChangesNothingMarksTheDocumentButEscapeIsNoEnd) {
    Rows(QStringLiteral("IBM"));
    for (const char* column : {"Symbol", "Last"}) {
        doc->MarkSaved();
        grid->BeginEdit(1, ColumnOf(column));
        Key(Qt::Key_Escape);
        EXPECT_FALSE(doc->IsModified()) << column;
        const std::string undo = doc->Undo().UndoName();
        grid->BeginEdit(1, ColumnOf(column));
        Key(Qt::Key_Return);
        EXPECT_TRUE(doc->IsModified()) << column;
        EXPECT_EQ(doc->Undo().UndoName(), undo) << "there is nothing to undo";
    }
    EXPECT_EQ(Board(), "IBM");
}

TEST_F(CBoardEditTest, AnEntryThatTheRowForbidsIsRefusedAndMarksTheDocument) {
    Rows(QStringLiteral("IBM"));
    doc->MarkSaved();
    grid->BeginEdit(1, ColumnOf("Last"));
    Type(QStringLiteral("remark"));
    Key(Qt::Key_Return);
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_EQ(boxes.shown[0].text, "Annotations may not be placed in Symbol Rows.");
    EXPECT_EQ(Board(), "IBM");
    EXPECT_TRUE(doc->IsModified());
}

TEST_F(CBoardEditTest, F2InARejectedRowBringsBackWhatWasTyped) {
    const struct {
        const char *typed, *symbol, *row;
    } cases[] = {
        {"IBM,MSFT,AAPL", kCommaSymbol, "#Symbols cannot contain commas."},
        {"Big tech", "Big tech", "#\"Big tech\" is an Invalid or Unauthorized Symbol."},
        {"big tech", "BIG TECH", "#\"BIG TECH\" is an Invalid or Unauthorized Symbol."},
    };
    auto* editor = grid->findChild<QLineEdit*>(QStringLiteral("gridEditor"));
    for (const auto& c : cases) {
        Type(QLatin1String(c.typed));
        Key(Qt::Key_Return);
        doc->SymbolNotFound(c.symbol);
        ASSERT_EQ(Board(), c.row);
        EXPECT_NE(grid->Source()->CellTip(1, 3).find("F2 brings back what was typed, to be corrected: " +
                                                     std::string(c.typed)),
                  std::string::npos)
            << grid->Source()->CellTip(1, 3);
        doc->MarkSaved();
        const std::string undo = doc->Undo().UndoName();
        grid->SetFocusCell(1, 3);
        Key(Qt::Key_F2);
        EXPECT_EQ(editor->text(), QLatin1String(c.typed));
        Key(Qt::Key_End);
        Type(QStringLiteral("x"));
        Key(Qt::Key_Escape);
        EXPECT_EQ(Board(), c.row);
        EXPECT_EQ(doc->RejectedSymbol(1), c.symbol);
        EXPECT_FALSE(doc->IsModified());
        EXPECT_EQ(doc->Undo().UndoName(), undo);

        Key(Qt::Key_F2);
        editor->setText(QStringLiteral("buy at open"));
        Key(Qt::Key_Return);
        EXPECT_EQ(Board(), "#buy at open");
        Undo();
        EXPECT_EQ(Board(), c.row);
        grid->SetFocusCell(1, 1);
        Key(Qt::Key_F2);
        EXPECT_EQ(editor->text(), QLatin1String(c.typed)) << "the memory came back with the row";
        editor->setText(QStringLiteral("ko"));
        Key(Qt::Key_Return);
        EXPECT_EQ(Board(), "KO") << "as in the symbol column of an empty row";
        EXPECT_EQ(doc->RejectedSymbol(1), "");
        Undo();
        Undo();
        EXPECT_EQ(Board(), "") << "one step for each entry";
        grid->SetFocusCell(1, 1);
    }
    Type(QStringLiteral("nope"));
    Key(Qt::Key_Return);
    doc->SymbolNotFound("NOPE");
    grid->SetFocusCell(1, 1);
    Type(QStringLiteral("Old cars"));
    Key(Qt::Key_Return);
    EXPECT_EQ(Board(), "#Old cars") << "typed over, it is a row of text";
}

TEST_F(CBoardEditTest, DeleteClearsInsertAndControlDeleteAskOnlyWhereItIsUnclear) {
    Rows(QStringLiteral("A\nB\nC\nD\nE"));
    grid->SetFocusCell(5, 1);
    Key(Qt::Key_Delete);
    EXPECT_EQ(Board(), "A|B|C|D");
    SelectRows(3, 4);
    Key(Qt::Key_Delete);
    EXPECT_EQ(Board(), "A|B");
    Undo();
    EXPECT_EQ(Board(), "A|B|C|D");
    SelectRows(2, 3);
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(Board(), "A|D");
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo delete 2 rows"));
    doc->MarkSaved();
    grid->SetFocusCell(grid->RowCount(), 1);
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_FALSE(doc->IsModified()) << "the empty row at the end is there again";
    grid->SetFocusCell(2, 1);
    Key(Qt::Key_Insert);
    EXPECT_EQ(Board(), "A||D");

    const std::string before = Columns();
    grid->SelectRange({1, 2, 2, 3});
    InNext<CInsertDeleteChoiceDlg>([](CInsertDeleteChoiceDlg& dialog) {
        EXPECT_TRUE(dialog.IsRows());
        dialog.reject();
    });
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(Board(), "A||D");
    EXPECT_EQ(Columns(), before);
    InNext<CInsertDeleteChoiceDlg>([](CInsertDeleteChoiceDlg& dialog) {
        dialog.findChild<QRadioButton*>(QStringLiteral("choiceColumns"))->click();
        dialog.accept();
    });
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(Columns().find("Tick Trend"), std::string::npos);
    EXPECT_EQ(Board(), "A||D");
    Undo();
    EXPECT_EQ(Columns(), before);
}

TEST_F(CBoardEditTest, DeletingUnderAutoSortAsksFirst) {
    Rows(QStringLiteral("A\nB"));
    doc->Update()->Options().sort = {1, true, true, 60000};
    doc->Update()->Columns();
    SelectRows(1, 1);
    boxes.answer = EBoxAnswer::No;
    Do(RowDelete);
    Do(EditDelete);
    EXPECT_EQ(Board(), "A|B");
    ASSERT_EQ(boxes.shown.size(), 2u);
    EXPECT_EQ(boxes.shown[0].caption, "Turn Off Auto Sort");
    boxes.answer = EBoxAnswer::Yes;
    Do(RowDelete);
    EXPECT_EQ(Board(), "B");
    EXPECT_FALSE(frame->View().findChild<QTimer*>(QStringLiteral("autoSortTimer"))->isActive());
    Undo();
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo turn off auto sort")) << "nothing but an answer, yet saved";
    Undo();
    EXPECT_TRUE(frame->View().findChild<QTimer*>(QStringLiteral("autoSortTimer"))->isActive());
}

TEST_F(CBoardEditTest, WhatIsCopiedIsTheTextOfTheCellsAndComesBackAsItWas) {
    Rows(QStringLiteral("IBM\n#Tech stocks\nMSFT"));
    grid->SelectRange({1, 3, 1, 2});
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("IBM\t\r\nTech stocks\r\nMSFT\t\r\n"));
    grid->SetFocusCell(4, 1);
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Board(), "IBM|#Tech stocks|MSFT|IBM|#Tech stocks|MSFT");
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{4, 6, 1, grid->ColumnCount()}));
    SelectRows(1, 2);
    Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Board(), "||MSFT|IBM|#Tech stocks|MSFT");
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo cut 2 rows"));
    Undo();
    EXPECT_EQ(Board(), "IBM|#Tech stocks|MSFT|IBM|#Tech stocks|MSFT");
}

TEST_F(CBoardEditTest, ACopiedReportAndADroppedTextBecomeTheirWords) {
    Rows(QStringLiteral("WatchList  Morning\r\nUser: me\r\n-- REALTIME --\r\nIBM  MSFT\r\n-----\r\nGE"));
    EXPECT_EQ(Board(), "IBM|MSFT|GE");
    QMimeData files;
    files.setUrls({QUrl(QStringLiteral("file:///tmp/list.vxw"))});
    EXPECT_FALSE(grid->AcceptsDrop(files)) << "files are opened, not pasted";
    QMimeData text;
    text.setText(QStringLiteral("KO\nPEP"));
    ASSERT_TRUE(grid->AcceptsDrop(text));
    Q_EMIT grid->DataDropped(&text, 4, 1);
    ProcessAll();
    EXPECT_EQ(Board(), "IBM|MSFT|GE|KO|PEP");
}

TEST_F(CBoardEditTest, APasteIsSelectedSeenAndSaysWhatWasThereAlready) {
    Rows(QStringLiteral("IBM"));
    auto* status = frame->findChild<QLabel*>(QStringLiteral("paneStatus"));
    QString lines;
    for (int i = 0; i < 10; ++i) lines += QStringLiteral("S%1\n").arg(i);
    const int rows = grid->Geometry().ScrolledHeight() / grid->Geometry().RowHeight();
    grid->SetFocusCell(1, 1);
    Rows(QStringLiteral("A\n").repeated(3 * rows));
    grid->SetFocusCell(3 * rows + 1, 2);
    QGuiApplication::clipboard()->setText(lines + QStringLiteral("A\nWatchList of mine\n"));
    Do(EditPaste);
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{3 * rows + 1, 3 * rows + 11, 1, grid->ColumnCount()}));
    for (const int row : {3 * rows + 1, 3 * rows + 11})
        EXPECT_EQ(grid->Geometry().VisibleCellRect(row, 1).height(), grid->Geometry().RowHeight()) << row;
    const QString said = QStringLiteral("Pasted 11 rows; 1 symbol was in the list already; 1 line was left out: "
                                        "\"WatchList of mine\"");
    EXPECT_EQ(status->text(), said);
    doc->SymbolNotFound("A"); // The feed's answer comes at once and must not wipe it away.
    EXPECT_EQ(status->text(), said);
    frame->findChild<QTimer*>(QStringLiteral("saidTimer"))->start(0);
    EXPECT_TRUE(WaitFor([&] { return status->text().toStdString() == doc->StatusText(); }));
}

TEST_F(CBoardEditTest, TextsFromOtherProgramsHaveAnyLineEnds) {
    for (const char* end : {"\n", "\r\n", "\r"}) {
        const QString text = QStringList{QStringLiteral("My WatchList -- REALTIME --"), QStringLiteral("User: me"),
                                         QStringLiteral("IBM  MSFT"), QStringLiteral("====="), QStringLiteral("GE")}
                                 .join(QLatin1String(end));
        Rows(text);
        EXPECT_EQ(Board(), "IBM|MSFT|GE") << testing::PrintToString(end);
        Undo();
        QMimeData dropped;
        dropped.setText(text);
        Q_EMIT grid->DataDropped(&dropped, 1, 1);
        ProcessAll();
        EXPECT_EQ(Board(), "IBM|MSFT|GE") << testing::PrintToString(end);
        Undo();
    }
}

TEST_F(CBoardEditTest, UndoingVeryManyRowsIsSeenToBeUnderWay) {
    Rows(QStringLiteral("A\n"));
    Rows(QStringLiteral("A\n").repeated(80000));
    auto* status = frame->findChild<QLabel*>(QStringLiteral("paneStatus"));
    CPaintedBusy painted(*status);
    Undo();
    Do(EditRedo);
    EXPECT_EQ(painted.texts,
              QStringList({QStringLiteral("Undoing paste 80000 rows"), QStringLiteral("Redoing paste 80000 rows")}));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(status->text().toStdString(), doc->StatusText());
    Undo();
    Undo();
    EXPECT_EQ(painted.texts.size(), 3) << "a short one was";
}

TEST_F(CBoardEditTest, ALongPasteCanBeCancelledAndAVeryLargeTextIsRefused) {
    Rows(QStringLiteral("IBM"));
    QString lines;
    for (int i = 0; i < 60000; ++i) lines += QStringLiteral("S%1\n").arg(i);
    bool wasUp = false;
    auto* timer = new QTimer(frame);
    QObject::connect(timer, &QTimer::timeout, frame, [&wasUp, timer, this] {
        auto* box = frame->findChild<QProgressDialog*>(QStringLiteral("workProgress"));
        if (box == nullptr || !box->isVisible()) return;
        wasUp = true;
        timer->stop();
        box->cancel();
    });
    timer->start(0);
    QGuiApplication::clipboard()->setText(lines);
    Do(EditPaste);
    // A machine that is faster than the moment before the box comes up has pasted everything.
    EXPECT_EQ(doc->LastUsedRow(), wasUp ? 1 : 60000);
    delete timer;

    const std::string before = Board().substr(0, 100);
    QGuiApplication::clipboard()->setText(QString((4 << 20) + 1, QLatin1Char('A')));
    Do(EditPaste);
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_NE(boxes.shown[0].text.find("at most 4 MB"), std::string::npos) << boxes.shown[0].text;
    EXPECT_EQ(Board().substr(0, 100), before);
}

TEST_F(CBoardEditTest, RowsMoveByKeysAndDragWithWhatIsSelected) {
    Rows(QStringLiteral("A\nB\nC\nD"));
    SelectRows(2, 3);
    Key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(Board(), "B|C|A|D");
    EXPECT_EQ(grid->SelectedRange().firstRow, 1);
    EXPECT_FALSE(IsEnabled(RowMoveUp));
    Key(Qt::Key_Down, Qt::AltModifier);
    Key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Board(), "A|D|B|C");
    Q_EMIT grid->RowsDragged(3, 4, 1);
    EXPECT_EQ(Board(), "B|C|A|D");
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{1, 2, 1, grid->ColumnCount()}));
    for (int i = 0; i < 4; ++i) Undo();
    EXPECT_EQ(Board(), "A|B|C|D");
}

TEST_F(CBoardEditTest, TheCurrentSymbolIsAddedOnlyWhenThereIsOne) {
    EXPECT_FALSE(IsEnabled(EditAddCurrentSymbol));
    settings.WriteText(kCurrentSymbol, "GE");
    Do(EditAddCurrentSymbol);
    EXPECT_EQ(Board(), "GE");
}
