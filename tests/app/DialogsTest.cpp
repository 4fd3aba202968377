// SPDX-License-Identifier: MIT
// The dialogs of sort, notes, formats and finding, driven through the program's commands.

#include "app/ContextFixture.h"
#include "app/commands/FindCommands.h"
#include "app/commands/FormatDialogs.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/edit/ColumnMoves.h"
#include "watchlist/edit/FormatCommands.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QSpinBox>

using namespace vx;
using namespace vx::test;

namespace {

/// A board of a few rows, and hands for the dialogs that a command opens.
class CDialogsTest : public CContextFixture {
protected:
    void List(std::initializer_list<std::string_view> rows) {
        int row = 0;
        for (const std::string_view text : rows) Enter(++row, text);
    }
    using Use = std::function<void(QDialog&)>;
    /// The dialog of a command for some cells, taken over.
    void Accept(ECommand command, const SGridRange& range, const Use& use) {
        grid->SelectRange(range);
        InDialog(command, Use([&](QDialog& dialog) {
                     use(dialog);
                     dialog.accept();
                 }));
    }
    static Use Checks(const char* box, bool before, bool after) {
        return [=](QDialog& dialog) {
            EXPECT_EQ(Named<QCheckBox>(dialog, box).isChecked(), before);
            Named<QCheckBox>(dialog, box).setChecked(after);
        };
    }
    static Use Sets(const char* box, int number) {
        return [=](QDialog& dialog) { Named<QSpinBox>(dialog, box).setValue(number); };
    }
    const SCellFormat& Format(int row, const char* column) { return doc->Formats().Effective(row, ColumnOf(column)); }

    CFormatDialogs formatDialogs{context};
    CFindCommands findCommands{context};
};

using CFormatDialogsTest = CDialogsTest;
using CFindCommandsTest = CDialogsTest;

} // namespace

TEST_F(CFormatDialogsTest, ANoteLosesItsSeparatorsKeepsItsLinesAndIsUndone) {
    List({"IBM"});
    doc->Update()->Notes().Set(1, "one\r\ntwo");
    InDialog(ECommand::EditNote, Use([](QDialog& dialog) {
                 auto& note = Named<QPlainTextEdit>(dialog, "noteText");
                 EXPECT_EQ(note.toPlainText(), QStringLiteral("one\ntwo"));
                 Named<QPushButton>(dialog, "clearNote").click();
                 dialog.activateWindow();
                 ProcessAll();
                 QTest::keyClicks(&note, QStringLiteral("buy: 1, then;"));
                 QTest::keyClick(&note, Qt::Key_Return);
                 QTest::keyClicks(&note, QStringLiteral("sell"));
                 QTest::keyClick(&note, Qt::Key_Return, Qt::ControlModifier);
                 EXPECT_FALSE(dialog.isVisible());
             }));
    EXPECT_EQ(doc->Notes().Get(1), "buy 1 then\r\nsell");
    Do(ECommand::EditUndo);
    EXPECT_EQ(doc->Notes().Get(1), "one\r\ntwo");
}

TEST_F(CFormatDialogsTest, OnlyWhatWasTouchedIsFormatted) {
    List({"IBM", "MSFT", "GE"});
    CCellFormatStore& formats = doc->Update()->Formats();
    const int last = ColumnOf("Last");
    SCellFormat bold = formats.Effective(2, last);
    bold.bold = true;
    formats.Set(2, last, bold);
    Accept(ECommand::FormatCells, {1, 2, last, last}, [](QDialog& dialog) {
        EXPECT_FALSE(Named<QComboBox>(dialog, "alignment").isEnabled());
        Named<QSpinBox>(dialog, "decimals").setValue(1);
    });
    for (const auto& [row, isBold] : {std::pair{1, false}, {2, true}}) {
        EXPECT_EQ(Format(row, "Last").decimals, 1);
        EXPECT_EQ(Format(row, "Last").bold, isBold);
    }
    // A whole column: its own format, and that of its cells.
    Accept(ECommand::FormatCells, {1, doc->RowCount(), last, last}, Checks("italic", false, true));
    EXPECT_TRUE(formats.ColumnFormat(last).italic);
    EXPECT_TRUE(Format(2, "Last").italic && Format(2, "Last").bold);
    EXPECT_EQ(formats.Find(3, last), nullptr);
    Do(ECommand::EditUndo);
    EXPECT_FALSE(Format(2, "Last").italic);
}

TEST_F(CFormatDialogsTest, ABorderAndAKindAreChosenWhereTheyHaveAMeaning) {
    List({"IBM", "MSFT"});
    const int last = ColumnOf("Last"), symbol = ColumnOf("Symbol");
    const auto kinds = [](QDialog& dialog) {
        auto& box = Named<QComboBox>(dialog, "cellKind");
        QString out;
        for (int i = 0; i < box.count(); ++i) {
            const bool offered = (box.model()->flags(box.model()->index(i, 0)) & Qt::ItemIsEnabled) != 0;
            EXPECT_NE(offered, !box.itemData(i, Qt::ToolTipRole).toString().isEmpty()) << "the tip says why not";
            out += offered ? QLatin1Char('y') : QLatin1Char('n');
        }
        return out.toStdString();
    };
    Accept(ECommand::FormatCells, {1, 1, last, last}, [&](QDialog& dialog) {
        EXPECT_EQ(kinds(dialog), "yyyy");
        Named<QComboBox>(dialog, "border").setCurrentIndex(2);
        Named<QComboBox>(dialog, "cellKind").setCurrentIndex(1);
    });
    EXPECT_EQ(Format(1, "Last").borderStyle, 2);
    EXPECT_EQ(Format(1, "Last").cellKind, 1);
    Accept(ECommand::FormatCells, {1, 1, symbol, symbol}, [&](QDialog& dialog) { EXPECT_EQ(kinds(dialog), "ynnn"); });
    // What a later version wrote stays until another one is chosen.
    SCellFormat unknown = Format(1, "Last");
    unknown.borderStyle = 77;
    doc->Update()->Formats().Set(1, last, unknown);
    Accept(ECommand::FormatCells, {1, 1, last, last}, [&](QDialog& dialog) {
        EXPECT_EQ(Named<QComboBox>(dialog, "border").currentIndex(), -1);
        Named<QComboBox>(dialog, "cellKind").setCurrentIndex(0);
    });
    EXPECT_EQ(Format(1, "Last").borderStyle, 77);
    Do(ECommand::EditUndo);
    EXPECT_EQ(Format(1, "Last").cellKind, 1);
}

TEST_F(CFormatDialogsTest, SymbolsAndHeadingsAreFormattedAsTheyAreDrawn) {
    List({"IBM", "A heading of words", "Another one of them", "GE"});
    const auto drawn = [&](std::initializer_list<int> rows) {
        doc->Update()->Columns();
        grid->EnterAllFonts();
        std::string out;
        for (const int row : rows) {
            const SGridFont& font = grid->Fonts().Font(Cell(row, "Symbol").font);
            out += std::to_string(static_cast<int>(font.size)) + (font.bold ? "b " : " ");
        }
        return out;
    };
    const int last = ColumnOf("Last");
    Accept(ECommand::FormatCells, {2, 2, last, last}, Sets("fontSize", 14));
    EXPECT_EQ(drawn({2, 3, 1}), "14b 9b 9b ");
    Accept(ECommand::FormatCells, {1, 3, last, last}, Sets("fontSize", 20));
    EXPECT_EQ(drawn({2}), "14b ") << "headings among others are meant where they are covered";
    Accept(ECommand::FormatCells, {1, 3, ColumnOf("Symbol"), last}, Sets("fontSize", 12));
    EXPECT_EQ(drawn({2, 1}), "12b 12b ");
    RemoveColumn(*doc, ColumnOf("Symbol"));
    EXPECT_EQ(drawn({2}), "12b ");
    Steps("EditUndo");
    Accept(ECommand::FormatGrid, {1, 1, 1, 1}, [](QDialog& dialog) {
        Checks("useDefaultAlignment", true, false)(dialog);
        for (const auto& [box, number] : {std::pair{"fontSize", 11}, {"trailingRows", 5}}) Sets(box, number)(dialog);
    });
    EXPECT_EQ(drawn({4}), "11b ");
    EXPECT_EQ(doc->RowCount(), 9);
    Do(ECommand::EditUndo);
    EXPECT_TRUE(doc->Options().useDefaultAlignment);
}

TEST_F(CFormatDialogsTest, TheRuleOfColoursIsChosenAndWhatAFieldDoesByItselfIsNoChoice) {
    List({"IBM"});
    const auto rule = [&](const char* column) -> std::string {
        const SCellFormat& format = Format(1, column);
        const char* names[] = {"field", "direction", "sign"};
        return format.colourByDirection ? names[static_cast<size_t>(format.colourRule)] : "none";
    };
    for (const auto& [shown, choice, rules] : {std::tuple{"Automatic (sign)", "Direction", "direction field"},
                                               {"Direction", "Nothing", "none none"},
                                               {"Nothing", "Automatic (sign)", "field field"}}) {
        Accept(ECommand::FormatCells, {1, 1, ColumnOf("Change"), ColumnOf("Last")},
               [shown = shown, choice = choice](QDialog& dialog) {
                   auto& list = Named<QComboBox>(dialog, "colourRule");
                   EXPECT_EQ(list.currentText().toStdString(), shown);
                   list.setCurrentText(QString::fromLatin1(choice));
                   EXPECT_EQ(Named<QWidget>(dialog, "upColour").isEnabled(), std::string_view(choice) != "Nothing");
               });
        EXPECT_EQ(rule("Change") + " " + rule("Last"), rules);
    }
}

TEST_F(CFindCommandsTest, FindingFollowsTheTypingAndGoesRound) {
    List({"IBM", "first and second words", "INTC", "IBM"});
    for (const auto& [steps, row] :
         {std::pair{"EditFind; 'ib'", 1}, {"Return", 4}, {"Return", 1}, {"Shift+Return", 4}}) {
        Steps(steps);
        EXPECT_EQ(grid->FocusCell().row, row) << steps;
    }
    Steps("'s'");
    EXPECT_EQ(TextOf(*mainWindow, "findMessage"), "Not found");
    Steps("Esc");
    EXPECT_FALSE(Child<QLineEdit>("findText").isVisible());

    Accept(ECommand::EditGoToSymbol, {1, 1, 1, 1}, [](QDialog& dialog) {
        Named<QLineEdit>(dialog, "goToSymbol").setText(QStringLiteral("XYZ"));
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        Named<QLineEdit>(dialog, "goToSymbol").setText(QStringLiteral("int"));
    });
    EXPECT_EQ(grid->FocusCell().row, 3);
}
