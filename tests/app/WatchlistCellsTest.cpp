// SPDX-License-Identifier: MIT
#include "alerts/rules/AlertInfo.h"
#include "app/ContextFixture.h"
#include "data/record/L1SymbolRec.h"
#include "support/Allocations.h"
#include "watchlist/edit/FormatCommands.h"
#include "watchlist/view/WatchlistView.h"

#include <fmt/format.h>

using namespace vx;
using namespace vx::test;

namespace {

/// A board with two symbols and a heading, and values from a feed.
class CWatchlistCellsTest : public CContextFixture {
protected:
    CWatchlistCellsTest() {
        Rows(QStringLiteral("IBM\nMSFT\n#Heading of some length"));
        doc->SetFeedReady();
        ColumnsAre("Symbol;Last;Bid;Notes;Alerts;News;Latest Headline;Tick Trend;");
        Receive("IBM", "Last", "10");
        Receive("IBM", "Last", "11.5");
    }

    std::string Tip(int row, std::string_view column) const { return grid->Source()->CellTip(row, ColumnOf(column)); }
    ETextRole Role(std::string_view column) const { return Cell(1, column).role; }
    int Marks(int row) const { return int{Cell(row, "Symbol").marks}; }
    void Format(int row, std::string_view column, const std::function<void(SCellFormat&)>& change) {
        SCellFormat format = doc->Formats().Effective(row, ColumnOf(column));
        change(format);
        ASSERT_TRUE(doc->Update()->Formats().Set(row, ColumnOf(column), format));
    }
    void AddAlert(const char* field, double value, bool enabled = true, const char* symbol = "IBM") {
        doc->AlertRules().Add(symbol, {enabled, 0, 0, value, AlertFieldId(field).value(), 2, 0, {}});
    }
    bool IsPainted(const std::function<void()>& after) {
        ProcessAll();
        const int64_t before = grid->Counters().cells;
        after();
        ProcessAll();
        return grid->Counters().cells > before;
    }
};

} // namespace

TEST_F(CWatchlistCellsTest, ACellLooksAsItsOwnFormatSaysElseItsColumnsElseTheGrids) {
    EXPECT_EQ(Shown(1, "Last"), "11.5000");
    EXPECT_EQ(Role("Last"), ETextRole::Up);

    doc->Update()->Formats().Set(0, 0, SCellFormat{.backColour = 0x101010});
    EXPECT_EQ(Cell(1, "Symbol").background, 0x101010);
    Format(0, "Last", [](SCellFormat& format) {
        format.decimals = 2;
        format.backColour = 0x202020;
        format.upColour = 0xFF8800;
    });
    EXPECT_EQ(Shown(1, "Last"), "11.50");
    EXPECT_EQ(Cell(2, "Last").background, 0x202020) << "the column's, where there is no value either";
    EXPECT_EQ(Role("Last"), ETextRole::Explicit);
    EXPECT_EQ(Cell(1, "Last").textColor, 0xFF8800);
    Format(1, "Last", [](SCellFormat& format) {
        format.colourByDirection = false;
        format.textColour = 0x0000FF;
        format.decimals = 1;
        format.alignment = ECellAlign::Center;
    });
    EXPECT_EQ(Shown(1, "Last"), "11.5");
    EXPECT_EQ(Cell(1, "Last").textColor, 0x0000FF);
    Receive("IBM", "Decimal Precision", "5");
    Receive("IBM", "Bid", "1.23456");
    EXPECT_EQ(Shown(1, "Bid"), "1.23456") << "no place that the symbol has is lost";
    doc->Update()->Options().useGridPrecision = true;
    EXPECT_EQ(Shown(1, "Last") + Shown(1, "Bid"), "11.50001.2346") << "in every cell";
    EXPECT_EQ(Cell(1, "Last").align, EAlign::Right);
    doc->Update()->Options().useDefaultAlignment = false;
    EXPECT_EQ(Cell(1, "Last").align, EAlign::Center);
}

TEST_F(CWatchlistCellsTest, ChangeAndPercentChangeNeverContradictEachOther) {
    ColumnsAre("Symbol;Change;% Chg;Last;");
    Receive("IBM", "Change", "2.00");
    for (const char* percent : {"0.02", "0.01"}) Receive("IBM", "Percent Change", percent);
    EXPECT_EQ(Role("Change"), ETextRole::Up);
    EXPECT_EQ(Role("% Chg"), ETextRole::Up) << "lower than before, and above zero";
    Format(1, "% Chg", [](SCellFormat& format) { format.colourRule = EColourRule::Direction; });
    EXPECT_EQ(Role("% Chg"), ETextRole::Down);
    Format(1, "% Chg", [](SCellFormat& format) { format.colourByDirection = false; });
    EXPECT_EQ(Role("% Chg"), ETextRole::Normal);
}

TEST_F(CWatchlistCellsTest, NeighboursShareTheLinesBetweenThem) {
    const auto borders = [&](int firstRow, int lastRow, EBorder border) {
        SFormatChange change;
        change.border = border;
        EXPECT_TRUE(FormatCells(*doc, {firstRow, lastRow, 1, 3}, change));
        std::string out;
        for (int row = firstRow; row <= lastRow; ++row)
            for (const char* column : {"Symbol", "Last", "Bid"}) {
                const int sides = Cell(row, column).borders;
                for (const auto& [side, name] : {std::pair{kLeftBorder, "l"},
                                                 {kTopBorder, "t"},
                                                 {kRightBorder, "r"},
                                                 {kBottomBorder, "b"},
                                                 {kThickBorders, "+"}})
                    if ((sides & side) != 0) out += name;
                out += row == lastRow && column == std::string_view("Bid") ? ""
                       : column == std::string_view("Bid")                 ? "|"
                                                                           : " ";
            }
        return out;
    };
    EXPECT_EQ(borders(1, 2, EBorder::Box), "lt t tr|lb b rb");
    grid->SetHiddenRows({1});
    EXPECT_EQ(borders(2, 2, EBorder::Box), "ltb tb trb") << "its neighbour is hidden";
    grid->SetHiddenRows({});
    EXPECT_EQ(borders(1, 2, EBorder::Thin), "ltrb trb trb|lrb rb rb");
    EXPECT_EQ(borders(2, 2, EBorder::Thick), "ltrb+ trb+ trb+") << "over the thin ones";
    EXPECT_EQ(borders(1, 2, EBorder::Bottom), "b b b|b b b");
    SCellFormat unknown;
    unknown.borderStyle = unknown.cellKind = 77;
    doc->Update()->Formats().Set(2, 2, unknown);
    EXPECT_EQ(Cell(2, "Last").borders, 0);
}

TEST_F(CWatchlistCellsTest, NumbersAreDrawnBesideTheGreatestOfTheirColumn) {
    ColumnsAre("Symbol;Volume;Change;Last;");
    SFormatChange bars, range;
    bars.cellKind = ECellKind::Bar;
    range.cellKind = ECellKind::Range;
    for (const char* column : {"Volume", "Change"})
        FormatCells(*doc, {1, doc->RowCount(), ColumnOf(column), ColumnOf(column)}, bars);
    FormatCells(*doc, {1, 1, ColumnOf("Last"), ColumnOf("Last")}, range);
    const auto shape = [&](int row, const char* column) { return Cell(row, column).shape; };
    const auto bar = [&](int row, const char* column) {
        const SCellShape of = shape(row, column);
        return of.kind == ECellShape::Bar ? fmt::format("{}-{}", of.from / 100, of.to / 100) : "none";
    };
    EXPECT_EQ(bar(1, "Volume"), "none");
    Receive("IBM", "Total Volume", "2000");
    Receive("MSFT", "Total Volume", "500");
    EXPECT_EQ(bar(1, "Volume") + " " + bar(2, "Volume"), "0-100 0-25");
    EXPECT_TRUE(IsPainted([&] {
        Receive("MSFT", "Total Volume", "8000");
        view->OnRepaintTimer();
    }));
    EXPECT_EQ(bar(1, "Volume") + " " + bar(2, "Volume"), "0-20 0-80");
    Receive("IBM", "Change", "-4");
    EXPECT_EQ(bar(1, "Change"), "10-50");
    EXPECT_EQ(shape(1, "Change").role, ETextRole::Down);
    EXPECT_EQ(shape(1, "Last").kind, ECellShape::None) << "Low and High are not known";
    Receive("IBM", "Low", "10");
    EXPECT_TRUE(IsPainted([&] {
        Receive("IBM", "High", "20");
        view->OnRepaintTimer();
    })) << "in a cell whose text stays";
    EXPECT_EQ(shape(1, "Last").strongMark, 1500);
    EXPECT_EQ(Shown(1, "Last"), "11.5000") << "the number is there all the same";

    for (int i = 0; i < 3; ++i) { // The greatest is gone when a whole pass over the rows did not meet it.
        Receive("MSFT", "Total Volume", "500");
        view->OnRepaintTimer();
    }
    EXPECT_EQ(bar(2, "Volume"), "0-10");
}

TEST_F(CWatchlistCellsTest, NotesAlertsAndNewsShowThatThereIsMoreAndTipsSayIt) {
    doc->Update()->Notes().Set(1, "first line\r\nsecond line");
    EXPECT_EQ(Shown(1, "Notes"), "\xB6 first line");
    EXPECT_EQ(Tip(1, "Notes"), "first line\nsecond line");
    EXPECT_EQ(grid->EditText(1, ColumnOf("Notes")), "first line") << "the mark is no text";

    for (const double value : {100, 200}) AddAlert("Last", value);
    EXPECT_EQ(Shown(1, "Alerts"), "2");
    AddAlert("Last", 300, false);
    AddAlert("Listed Market Name", 300);
    EXPECT_EQ(Shown(1, "Alerts"), "2/2");
    EXPECT_EQ(Tip(1, "Alerts"), "2 armed, 1 fired or off, 1 cannot fire");

    const std::string headline(300, 'h');
    doc->OnNewsLine("N,SIM,1,IBM,20240131 093000," + headline);
    EXPECT_EQ(Tip(1, "Latest Headline"), headline) << "the cell holds 255 bytes of it";
    EXPECT_EQ(Role("News"), ETextRole::Up);
}

TEST_F(CWatchlistCellsTest, TheSymbolSaysThatItsRowHasANoteAndAlerts) {
    EXPECT_EQ(Marks(1), 0);
    doc->Update()->Notes().Set(1, "one\r\ntwo\r\nthree\r\nfour");
    EXPECT_EQ(Marks(1), kNoteMark);
    EXPECT_TRUE(IsPainted([&] { AddAlert("Last", 250.5); })) << "it is seen at once";
    AddAlert("Last", 100, false);
    EXPECT_EQ(Marks(1), kNoteMark | kArmedMark | kFiredMark);
    AddAlert("Exchange", 100);
    EXPECT_EQ(Tip(1, "Symbol"), "IBM\nNote: one\ntwo\nthree\n...\nAlert armed: Last greater than or equal to 250.5\n"
                                "Alert fired or off: Last greater than or equal to 100\n"
                                "Alert cannot fire: Exchange greater than or equal to 100");
    for (int i = 0; i < 9; ++i) AddAlert("Last", i, false, "MSFT");
    EXPECT_THAT(Tip(2, "Symbol"), EndsWith("equal to 4\nand 4 more that fired or are off"));
}

TEST_F(CWatchlistCellsTest, ADoubleClickOpensWhatACellStandsFor) {
    std::vector<ECommand> opened;
    for (const ECommand command : {ECommand::AlertsEdit, ECommand::EditNote, ECommand::Headlines})
        commands->Bind(command, [&opened, command] { opened.push_back(command); });
    commands->Refresh();
    for (const char* column : {"Alerts", "Notes", "News", "Latest Headline"})
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, Middle(1, ColumnOf(column)));
    ProcessAll();
    using enum ECommand;
    EXPECT_THAT(opened, testing::ElementsAre(AlertsEdit, EditNote, Headlines, Headlines));
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, Middle(1, ColumnOf("Last")));
    EXPECT_TRUE(grid->IsEditing());
}

TEST_F(CWatchlistCellsTest, FillingCellsAllocatesNothing) {
    Format(1, "Last", [](SCellFormat& format) {
        format.fontFace = "Some Font With A Long Name";
        format.italic = true;
    });
    doc->Update()->Notes().Set(1, "a note of a certain length, more than fits a small string");
    SCell cell;
    const size_t before = Allocations();
    for (int i = 0; i < 2; ++i)
        for (int row = 1; row <= grid->RowCount(); ++row)
            for (int column = 1; column <= grid->ColumnCount(); ++column) {
                cell.Reset();
                if (!grid->Source()->FillSpan(row, cell)) grid->Source()->FillCell(row, column, cell);
            }
    EXPECT_EQ(Allocations() - before, 0u);
}
