// The dialogs of sort, notes, formats and finding, driven through the program's commands.

#include "FrameFixture.h"

#include "data/CellFormatStore.h"
#include "support/MessageBoxes.h"
#include "watchlist/CellEntry.h"
#include "watchlist/Commands.h"
#include "watchlist/FormatCommands.h"

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

TEST_F(CDialogsTest, OnlyWhatWasTouchedIsFormatted) {
    CMainFrame& frame = Board({"IBM", "MSFT", "GE"});
    CCellFormatStore& formats = frame.Document().Formats();
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
