// SPDX-License-Identifier: MIT
#include "app/ContextFixture.h"
#include "watchlist/exchange/RowCellText.h"
#include "watchlist/view/NumberText.h"

#include <QMenu>

using namespace vx;
using namespace vx::test;

namespace {

using enum ECommand;

std::string Drawn(std::string_view text, bool shortForms, bool separators) {
    CellBuffer buffer;
    std::ranges::copy(text, buffer.begin());
    const SColumnLook look{.separators = separators, .shortForms = shortForms};
    return {buffer.data(), DrawNumber(look, buffer, text.size())};
}

class CColumnLooksTest : public CContextFixture {
protected:
    CColumnLooksTest() {
        Rows(QStringLiteral("IBM\nMSFT"));
        doc->SetFeedReady();
        ColumnsAre("Symbol;Last;Volume;T Time;");
        grid->SetStale(false);
        for (const char* price : {"1000.5", "1234.5"}) Receive("IBM", "Last", price);
        for (const char* volume : {"1200000", "1234567"}) Receive("IBM", "Total Volume", volume);
    }
    std::string Held(std::string_view column) const {
        CellBuffer text;
        return {text.data(), CColumnReader(*doc, ColumnOf(column)).Read(1, text)};
    }
};

} // namespace

TEST(DrawnNumber, IsShorterOrHasSeparatorsAndKeepsWhatIsAroundIt) {
    EXPECT_EQ(Drawn("1234567", true, false), "1.2 M");
    EXPECT_EQ(Drawn("999", true, true), "999");
    EXPECT_EQ(Drawn("1000.0000", true, false), "1.0 K");
    EXPECT_EQ(Drawn("-999949", true, false), "-999.9 K");
    EXPECT_EQ(Drawn("999950", true, false), "1.0 M") << "not 1000.0 K";
    EXPECT_EQ(Drawn("+2500000000.12%", true, false), "+2.5 B%");
    EXPECT_EQ(Drawn("1234567890123456789", true, true), "1,234,567.9 T");
    EXPECT_EQ(Drawn("1234567", false, true), "1,234,567");
    EXPECT_EQ(Drawn("-123456.7891", false, true), "-123,456.7891");
    EXPECT_EQ(Drawn("1000 min", false, true), "1,000 min");
    for (const char* text : {"", "-", "N/A", "inf", "12:30:45", "-.5"}) EXPECT_EQ(Drawn(text, true, true), text);
    EXPECT_EQ(Drawn(std::string(kMostCellText, '9'), false, true), std::string(kMostCellText, '9')) << "no room";
}

TEST_F(CColumnLooksTest, ChangeWhatIsDrawnAndNotWhatTheCellHolds) {
    Steps("columns 2-3; ColumnShortForms");
    EXPECT_EQ(Shown(1, "Volume"), "1.2 M");
    EXPECT_EQ(Shown(1, "Last"), "1.2 K");
    EXPECT_EQ(Held("Volume"), "1234567");
    EXPECT_EQ(grid->Source()->CellTip(1, ColumnOf("Volume")), "1234567");
    EXPECT_EQ(doc->Undo().UndoName(), "change the numbers of 2 columns");
    Steps("at 1 3; ColumnShortForms; ColumnSeparators; DirectionArrow");
    EXPECT_EQ(Shown(1, "Volume"), "1,234,567");
    EXPECT_EQ(Cell(1, "Volume").directionMark, EDirectionMark::Arrow);
    EXPECT_EQ(Cell(1, "Volume").direction, ETextRole::Up);
    EXPECT_EQ(Cell(1, "Volume").role, ETextRole::Normal);
    EXPECT_EQ(Cell(1, "Last").role, ETextRole::Up) << "the other column";
    Steps("columns 3-3; Alt+Left");
    EXPECT_EQ(Shown(1, 2), "1,234,567") << "it goes along";
    Steps("ColumnDelete; EditUndo");
    EXPECT_EQ(Shown(1, 2), "1,234,567") << "and comes back";
    Steps("EditUndo; EditUndo; EditUndo");
    EXPECT_EQ(Shown(1, "Volume"), "1234567");
    EXPECT_EQ(Cell(1, "Volume").role, ETextRole::Up);
}

TEST_F(CColumnLooksTest, ADirectionIsABackgroundOrNothingAndAnOwnColourCounts) {
    Steps("at 1 2; DirectionBackground");
    EXPECT_EQ(Cell(1, "Last").directionMark, EDirectionMark::Background);
    EXPECT_EQ(Cell(1, "Last").background, kAutomaticColor);
    SCellFormat format = doc->Formats().Effective(1, 2);
    format.upColour = 0x112233;
    doc->Update()->Formats().Set(1, 2, format);
    EXPECT_EQ(Cell(1, "Last").background, 0x112233);
    grid->SetStale(true);
    EXPECT_EQ(Cell(1, "Last").background, kAutomaticColor) << "no feed, no direction";
    grid->SetStale(false);
    Steps("DirectionNone");
    EXPECT_EQ(Cell(1, "Last").role, ETextRole::Normal);
    EXPECT_EQ(Cell(1, "Last").background, kAutomaticColor);
}

TEST_F(CColumnLooksTest, ColumnsWithoutNumbersAreLeftAloneAndSayWhy) {
    Steps("columns 1-1");
    EXPECT_FALSE(IsEnabled(ColumnSeparators) || IsEnabled(DirectionArrow));
    EXPECT_EQ(Action(DirectionArrow).toolTip(), QStringLiteral("The selected columns hold no numbers"));
    Steps("columns 1-4; DirectionArrow");
    EXPECT_EQ(doc->Undo().UndoName(), "show the direction of 2 columns");
    EXPECT_EQ(doc->Columns().At(1).look, SColumnLook{});
    SCellFormat format = doc->Formats().ColumnFormat(2);
    format.colourByDirection = false;
    doc->Update()->Formats().Set(0, 2, format);
    Steps("columns 2-2");
    EXPECT_TRUE(IsEnabled(ColumnSeparators));
    EXPECT_FALSE(IsEnabled(DirectionArrow));

    Q_EMIT grid->ContextMenuRequested(EGridPart::ColumnHeader, 0, 2, grid->mapToGlobal(QPoint(5, 5)));
    ProcessAll();
    auto& menu = Named<QMenu>(*mainWindow, "gridMenu");
    QStringList titles;
    for (const QAction* action : menu.actions()) titles += action->text();
    EXPECT_TRUE(titles.contains(QStringLiteral("Show Nu&mbers As")) &&
                titles.contains(QStringLiteral("Show Direction As")));
    menu.close();
}
