// The dialogs of sort, notes, formats and finding, driven through the program's commands.

#include "FrameFixture.h"

#include "app/commands/Commands.h"
#include "support/MessageBoxes.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/edit/ColumnMoves.h"
#include "watchlist/edit/FormatCommands.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QtTest/QTest>

#include <functional>

namespace vx::test {

namespace {

class CDialogsTest : public CFrameFixture {
protected:
    CMainFrame& Board(std::initializer_list<std::string_view> rows) {
        CMainFrame& frame = Frame();
        int row = 0;
        for (const std::string_view text : rows) EnterCellText(frame.Document(), ++row, 1, {}, text);
        m_frame = &frame;
        return frame;
    }

    /// Carries a command out and uses the dialog that it opens.
    template <typename Use> void InDialog(ECommand command, Use use) {
        bool used = false;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            used = true;
            use(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
        m_frame->Commands().Action(command).trigger();
        EXPECT_TRUE(used);
    }
    template <typename Widget> static Widget& In(QDialog& dialog, const char* name) {
        return *dialog.findChild<Widget*>(QString::fromLatin1(name));
    }

    CMessageBoxes boxes;

private:
    CMainFrame* m_frame = nullptr;
};

} // namespace

TEST_F(CDialogsTest, TheSortDialogRefusesWhatItCannotTimeAndShowsAnIntervalByItsOwnRule) {
    CMainFrame& frame = Board({"IBM"});
    CWatchlistDoc& doc = frame.Document();
    frame.View().Grid().SetFocusCell(1, ColumnOf("Bid"));
    InDialog(ECommand::SortDialog, [&](QDialog& dialog) {
        EXPECT_EQ(In<QComboBox>(dialog, "sortColumn").currentText(), QStringLiteral("Bid")) << "the focus column";
        In<QCheckBox>(dialog, "autoSort").setChecked(true);
        In<QComboBox>(dialog, "sortColumn").setCurrentIndex(-1);
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        In<QComboBox>(dialog, "sortColumn").setCurrentText(QStringLiteral("Last"));
        In<QSpinBox>(dialog, "interval").setValue(4);
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        In<QSpinBox>(dialog, "interval").setValue(720);
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible());
    });
    ASSERT_EQ(boxes.shown.size(), 2U);
    EXPECT_EQ(boxes.shown[0].text, "Please select a column to sort the Watchlist.");
    EXPECT_EQ(boxes.shown[1].text,
              "Please select time between:  5 - 36000 Seconds; 1 - 600 Minute(s); or 1 - 10 Hour(s)");
    EXPECT_EQ(doc.Options().sort.intervalMs, 720'000);
    EXPECT_EQ(doc.Options().sort.column, ColumnOf("Last"));

    InDialog(ECommand::SortDialog, [&](QDialog& dialog) {
        EXPECT_EQ(In<QSpinBox>(dialog, "interval").value(), 2);
        EXPECT_EQ(In<QComboBox>(dialog, "intervalUnit").currentIndex(), 1);
        dialog.accept();
    });
    EXPECT_EQ(doc.Options().sort.intervalMs, 120'000);
}

TEST_F(CDialogsTest, ANoteLosesItsSeparatorsKeepsItsLinesAndIsUndone) {
    CWatchlistDoc& doc = Board({"IBM"}).Document();
    InDialog(ECommand::EditNote, [](QDialog& dialog) {
        In<QPlainTextEdit>(dialog, "noteText").setPlainText(QStringLiteral("buy: 100, then\nsell;"));
        dialog.accept();
    });
    EXPECT_EQ(doc.Notes().Get(1), "buy 100 then\r\nsell");
    InDialog(ECommand::EditNote, [](QDialog& dialog) {
        EXPECT_EQ(In<QPlainTextEdit>(dialog, "noteText").toPlainText(), QStringLiteral("buy 100 then\nsell"));
        In<QPushButton>(dialog, "clearNote").click();
        In<QPlainTextEdit>(dialog, "noteText").setPlainText(QStringLiteral(";:,"));
        dialog.accept();
    });
    EXPECT_FALSE(doc.Notes().Has(1));
    doc.Undo().Undo();
    EXPECT_EQ(doc.Notes().Get(1), "buy 100 then\r\nsell");
}

TEST_F(CDialogsTest, CtrlEnterKeepsANote) {
    CWatchlistDoc& doc = Board({"IBM"}).Document();
    InDialog(ECommand::EditNote, [](QDialog& dialog) {
        auto& text = In<QPlainTextEdit>(dialog, "noteText");
        dialog.activateWindow();
        QApplication::processEvents();
        QTest::keyClicks(&text, QStringLiteral("buy"));
        QTest::keyClick(&text, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClicks(&text, QStringLiteral("now"));
        QTest::keyClick(&text, Qt::Key_Return, Qt::ControlModifier);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(doc.Notes().Get(1), "buy\r\nnow");
}

TEST_F(CDialogsTest, OnlyWhatWasTouchedIsFormatted) {
    CMainFrame& frame = Board({"IBM", "MSFT", "GE"});
    CCellFormatStore& formats = frame.Document().Update()->Formats();
    const int last = ColumnOf("Last");
    SCellFormat bold = formats.Effective(2, last);
    bold.bold = true;
    formats.Set(2, last, bold);
    frame.View().Grid().SelectRange({1, 2, last, last});
    InDialog(ECommand::FormatCells, [](QDialog& dialog) {
        EXPECT_FALSE(In<QComboBox>(dialog, "alignment").isEnabled());
        In<QSpinBox>(dialog, "decimals").setValue(1);
        dialog.accept();
    });
    EXPECT_EQ(formats.Effective(1, last).decimals, 1);
    EXPECT_FALSE(formats.Effective(1, last).bold);
    EXPECT_TRUE(formats.Effective(2, last).bold);
    EXPECT_EQ(formats.Effective(2, last).decimals, 1);
    EXPECT_NE(formats.Effective(3, last).decimals, 1);

    // A whole column: its own format, and that of its cells.
    frame.View().Grid().SelectRange({1, frame.Document().RowCount(), last, last});
    InDialog(ECommand::FormatCells, [](QDialog& dialog) {
        In<QCheckBox>(dialog, "italic").setChecked(true);
        dialog.accept();
    });
    EXPECT_TRUE(formats.ColumnFormat(last).italic);
    EXPECT_TRUE(formats.Effective(2, last).italic && formats.Effective(2, last).bold);
    EXPECT_EQ(formats.Find(3, last), nullptr);
    frame.Document().Undo().Undo();
    EXPECT_FALSE(formats.Effective(2, last).italic);
    frame.View().Grid().SelectRange({1, 2, last, last});
    frame.Commands().Action(ECommand::FormatClear).trigger();
    EXPECT_EQ(formats.Find(2, last), nullptr);
}

TEST_F(CDialogsTest, SymbolsAndHeadingsAreFormattedAsTheyAreDrawn) {
    CMainFrame& frame = Board({"IBM", "A heading of words", "Another one of them", "GE"});
    CWatchlistDoc& doc = frame.Document();
    CWatchlistGrid& grid = frame.View().Grid();
    const auto drawn = [&](int row) {
        doc.Update()->Columns();
        grid.EnterAllFonts();
        SCell cell;
        if (!grid.Source()->FillSpan(row, cell)) grid.Source()->FillCell(row, ColumnOf("Symbol"), cell);
        const SGridFont& font = grid.Fonts().Font(cell.font);
        return std::to_string(static_cast<int>(font.size)) + (font.bold ? " bold" : "");
    };
    const auto format = [&](const SGridRange& range, const auto& use) {
        grid.SelectRange(range);
        InDialog(ECommand::FormatCells, [&](QDialog& dialog) {
            use(dialog);
            dialog.accept();
        });
    };
    const auto sizeIs = [](int points) {
        return [points](QDialog& dialog) {
            EXPECT_TRUE(In<QCheckBox>(dialog, "bold").isChecked());
            In<QSpinBox>(dialog, "fontSize").setValue(points);
        };
    };
    const auto boldIs = [](bool before, bool after) {
        return [=](QDialog& dialog) {
            EXPECT_EQ(In<QCheckBox>(dialog, "bold").isChecked(), before);
            In<QCheckBox>(dialog, "bold").setChecked(after);
        };
    };
    const int last = ColumnOf("Last");
    const int symbol = ColumnOf("Symbol");

    format({2, 2, last, last}, sizeIs(14));
    EXPECT_EQ(drawn(2) + ", " + drawn(3) + ", " + drawn(1), "14 bold, 9 bold, 9 bold");
    format({2, 3, last, last}, sizeIs(13));
    EXPECT_EQ(drawn(2) + ", " + drawn(3), "13 bold, 13 bold");
    format({1, 3, last, last}, [](QDialog& dialog) { In<QSpinBox>(dialog, "fontSize").setValue(20); });
    EXPECT_EQ(drawn(2), "13 bold") << "headings among others are meant where they are covered";
    format({1, 3, symbol, last}, sizeIs(12));
    EXPECT_EQ(drawn(2) + ", " + drawn(1), "12 bold, 12 bold");

    InsertColumn(doc, 1, "Spread");
    EXPECT_EQ(drawn(2), "12 bold");
    RemoveColumn(doc, ColumnOf("Symbol"));
    EXPECT_EQ(drawn(2), "12 bold");
    InsertColumn(doc, 4, "Symbol");
    EXPECT_EQ(drawn(2), "12 bold");
    for (int i = 0; i < 3; ++i) doc.Undo().Undo();
    EXPECT_EQ(drawn(2), "12 bold");
    frame.Commands().Action(ECommand::FormatClear).trigger();
    EXPECT_EQ(drawn(2), "9 bold");

    format({1, 2, symbol, symbol}, boldIs(true, false));
    EXPECT_EQ(drawn(1) + ", " + drawn(2), "9, 9");
    format({1, 2, symbol, symbol}, boldIs(false, true));
    EXPECT_EQ(drawn(1) + ", " + drawn(2), "9 bold, 9 bold");
    InDialog(ECommand::FormatGrid, [](QDialog& dialog) {
        In<QSpinBox>(dialog, "fontSize").setValue(11);
        dialog.accept();
    });
    EXPECT_EQ(drawn(4), "11 bold");
}

TEST_F(CDialogsTest, TheRuleOfColoursIsChosenAndWhatAFieldDoesByItselfIsNoChoice) {
    CMainFrame& frame = Board({"IBM"});
    CCellFormatStore& formats = frame.Document().Update()->Formats();
    const int change = ColumnOf("Change");
    const auto choose = [&](const char* shown, const char* choice) {
        frame.View().Grid().SelectRange({1, 1, change, ColumnOf("Last")});
        InDialog(ECommand::FormatCells, [=](QDialog& dialog) {
            auto& rule = In<QComboBox>(dialog, "colourRule");
            EXPECT_EQ(rule.currentText().toStdString(), shown);
            rule.setCurrentText(QString::fromLatin1(choice));
            EXPECT_EQ(In<QWidget>(dialog, "upColour").isEnabled(), std::string_view(choice) != "Nothing");
            dialog.accept();
        });
        const auto name = [&](const char* column) {
            const SCellFormat& format = formats.Effective(1, ColumnOf(column));
            const char* names[] = {"field", "direction", "sign"};
            return format.colourByDirection ? names[static_cast<size_t>(format.colourRule)] : "none";
        };
        return std::string(name("Change")) + " " + name("Last");
    };
    EXPECT_EQ(choose("Automatic (sign)", "Sign"), "field sign");
    EXPECT_EQ(choose("Automatic (sign)", "Direction"), "direction field");
    EXPECT_EQ(choose("Direction", "Nothing"), "none none");
    EXPECT_EQ(choose("Nothing", "Automatic (sign)"), "field field");
    frame.Document().Undo().Undo();
    EXPECT_EQ(formats.Effective(1, change).colourByDirection, false);
}

TEST_F(CDialogsTest, NumbersStayRightWhenDefaultAlignmentGoes) {
    CWatchlistDoc& doc = Board({"IBM"}).Document();
    InDialog(ECommand::FormatGrid, [](QDialog& dialog) {
        In<QCheckBox>(dialog, "useDefaultAlignment").setChecked(false);
        In<QSpinBox>(dialog, "trailingRows").setValue(5);
        dialog.accept();
    });
    EXPECT_FALSE(doc.Options().useDefaultAlignment);
    EXPECT_EQ(doc.RowCount(), 6);
    EXPECT_EQ(doc.Formats().Effective(1, ColumnOf("Last")).alignment, ECellAlign::Right);
    EXPECT_EQ(doc.Formats().Effective(1, ColumnOf("Symbol")).alignment, ECellAlign::Left);
    doc.Undo().Undo();
    EXPECT_TRUE(doc.Options().useDefaultAlignment);
    EXPECT_EQ(doc.RowCount(), 2);
}

TEST_F(CDialogsTest, FindingFollowsTheTypingAndGoesRound) {
    CMainFrame& frame = Board({"IBM", "first and second words", "INTC", "IBM"});
    frame.show();
    frame.Commands().Action(ECommand::EditFind).trigger();
    auto* text = frame.findChild<QLineEdit*>(QStringLiteral("findText"));
    auto* message = frame.findChild<QLabel*>(QStringLiteral("findMessage"));
    ASSERT_TRUE(text->isVisible());
    const auto row = [&] { return frame.View().Grid().FocusCell().row; };
    QTest::keyClicks(text, QStringLiteral("ib"));
    EXPECT_EQ(row(), 1);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(row(), 4);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(row(), 1);
    EXPECT_EQ(message->text(), QStringLiteral("Went on at the other end"));
    QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(row(), 4);
    text->clear();
    QTest::keyClicks(text, QStringLiteral("second"));
    EXPECT_EQ(row(), 2);
    QTest::keyClicks(text, QStringLiteral("s"));
    EXPECT_EQ(message->text(), QStringLiteral("Not found"));
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_FALSE(text->isVisible());

    InDialog(ECommand::EditGoToSymbol, [](QDialog& dialog) {
        In<QLineEdit>(dialog, "goToSymbol").setText(QStringLiteral("XYZ"));
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(In<QLabel>(dialog, "goToMessage").text(), QStringLiteral("The symbol is not in the watchlist."));
        In<QLineEdit>(dialog, "goToSymbol").setText(QStringLiteral("int"));
        dialog.accept();
    });
    EXPECT_EQ(row(), 3);
}

} // namespace vx::test
