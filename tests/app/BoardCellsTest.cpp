#include "app/BoardFixture.h"

#include "alerts/rules/AlertInfo.h"
#include "data/record/L1SymbolRec.h"
#include "support/Allocations.h"
#include "watchlist/fileformat/WatchlistReader.h"

#include <QFile>
#include <QStyle>

using namespace vx;
using namespace vx::test;

namespace {

/// A board with two symbols and a heading, and values from a feed.
class CBoardCellsTest : public CBoardFixture {
protected:
    CBoardCellsTest() {
        Rows(QStringLiteral("IBM\nMSFT\n#Heading of some length"));
        doc->SetFeedReady();
        doc->Update()->SetColumnsByName("Symbol;Last;Bid;Notes;Alerts;News;Latest Headline;Tick Trend;");
        doc->Update()->Columns();
        Update("IBM", "Last", "10");
        Update("IBM", "Last", "11.5");
        ProcessAll();
    }

    SCell Cell(int row, std::string_view column) const {
        SCell cell;
        grid->Source()->FillCell(row, ColumnOf(column), cell);
        return cell;
    }
    std::string Text(int row, std::string_view column) const { return std::string(Cell(row, column).Text()); }
    std::string Tip(int row, std::string_view column) const { return grid->Source()->CellTip(row, ColumnOf(column)); }
    void Format(int row, std::string_view column, const std::function<void(SCellFormat&)>& change) {
        SCellFormat format = doc->Formats().Effective(row, ColumnOf(column));
        change(format);
        ASSERT_TRUE(doc->Update()->Formats().Set(row, ColumnOf(column), format));
    }
};

} // namespace

TEST_F(CBoardCellsTest, ACellLooksAsItsOwnFormatSaysElseItsColumnsElseTheGrids) {
    EXPECT_EQ(Text(1, "Last"), "11.5000");
    EXPECT_EQ(Cell(1, "Last").role, ETextRole::Up);
    EXPECT_EQ(Cell(1, "Last").align, EAlign::Right);
    EXPECT_EQ(Cell(1, "Bid").background, kAutomaticColor);

    doc->Update()->Formats().Set(0, 0, [] {
        SCellFormat all;
        all.backColour = 0x101010;
        return all;
    }());
    EXPECT_EQ(Cell(1, "Symbol").background, 0x101010);
    Format(0, "Last", [](SCellFormat& format) {
        format.decimals = 2;
        format.backColour = 0x202020;
        format.upColour = 0xFF8800;
    });
    EXPECT_EQ(Text(1, "Last"), "11.50");
    EXPECT_EQ(Cell(2, "Last").background, 0x202020) << "the column's, where there is no value either";
    EXPECT_EQ(Cell(1, "Last").role, ETextRole::Explicit);
    EXPECT_EQ(Cell(1, "Last").textColor, 0xFF8800);
    Format(1, "Last", [](SCellFormat& format) {
        format.colourByDirection = false;
        format.textColour = 0x0000FF;
        format.decimals = 1;
    });
    EXPECT_EQ(Text(1, "Last"), "11.5");
    Update("IBM", "Decimal Precision", "5");
    Update("IBM", "Bid", "1.23456");
    EXPECT_EQ(Text(1, "Bid"), "1.23456") << "no place that the symbol has is lost";
    EXPECT_EQ(Cell(1, "Last").textColor, 0x0000FF);
    doc->Update()->Options().useGridPrecision = true;
    EXPECT_EQ(Text(1, "Last") + Text(1, "Bid"), "11.50001.2346") << "in every cell";
    doc->Update()->Options().useDefaultAlignment = false;
    Format(1, "Last", [](SCellFormat& format) { format.alignment = ECellAlign::Center; });
    EXPECT_EQ(Cell(1, "Last").align, EAlign::Center);
}

TEST_F(CBoardCellsTest, ChangeAndPercentChangeNeverContradictEachOther) {
    doc->Update()->SetColumnsByName("Symbol;Change;% Chg;Last;");
    doc->Update()->Columns();
    Update("IBM", "Change", "2.00");
    Update("IBM", "Percent Change", "0.02");
    Update("IBM", "Percent Change", "0.01");
    EXPECT_EQ(Cell(1, "Change").role, ETextRole::Up);
    EXPECT_EQ(Cell(1, "% Chg").role, ETextRole::Up) << "lower than before, and above zero";
    Format(1, "% Chg", [](SCellFormat& format) { format.colourRule = EColourRule::Direction; });
    EXPECT_EQ(Cell(1, "% Chg").role, ETextRole::Down);
    Format(1, "% Chg", [](SCellFormat& format) { format.colourByDirection = false; });
    EXPECT_EQ(Cell(1, "% Chg").role, ETextRole::Normal);
    Update("IBM", "Change", "0");
    EXPECT_EQ(Cell(1, "Change").role, ETextRole::Unchanged);
}

TEST_F(CBoardCellsTest, AChangedCellIsRepaintedWhoeverAskedForItOrPaintedAPartOfItBefore) {
    Update("IBM", "Last", "12");
    EXPECT_EQ(Text(1, "Last"), "12.0000");
    grid->viewport()->repaint({Middle(1, ColumnOf("Last")), QSize(3, 3)});
    const int64_t before = grid->Counters().cells;
    frame->View().OnRepaintTimer();
    ProcessAll();
    EXPECT_GT(grid->Counters().cells, before);
}

TEST_F(CBoardCellsTest, AFontIsEnteredAfterPaintingAndShownInTheNext) {
    EXPECT_NE(Cell(1, "Symbol").font, 0) << "symbols stand out";
    EXPECT_EQ(Cell(1, "Last").font, 0);
    Format(1, "Last", [](SCellFormat& format) {
        format.fontFace = "Courier New";
        format.fontSizePt = 14;
    });
    const int height = grid->Geometry().RowHeight();
    EXPECT_EQ(Cell(1, "Last").font, 0) << "not known yet";
    grid->UpdateAll();
    ProcessAll();
    ProcessAll();
    EXPECT_GT(Cell(1, "Last").font, 0);
    EXPECT_NE(Cell(1, "Last").font, Cell(1, "Symbol").font);
    EXPECT_GT(grid->Geometry().RowHeight(), height);
    doc->Update()->Formats().Reset(1, ColumnOf("Last"));
    doc->Update()->Columns();
    EXPECT_EQ(grid->Geometry().RowHeight(), height) << "no cell has the tall font any more";
    EXPECT_NE(Cell(1, "Symbol").font, 0);
}

TEST_F(CBoardCellsTest, NotesAlertsAndNewsShowThatThereIsMoreAndTipsSayIt) {
    doc->Update()->Notes().Set(1, "first line\r\nsecond line");
    A_INFO alert{1, 0, 0, 100.0, AlertFieldId("Last").value(), 0, 0, {}};
    doc->AlertRules().Add("IBM", alert);
    alert.value = 200;
    doc->AlertRules().Add("IBM", alert);
    EXPECT_EQ(Text(1, "Alerts"), "2");
    alert.value = 300;
    alert.enabled = 0;
    doc->AlertRules().Add("IBM", alert);
    const std::string headline(300, 'h');
    doc->OnNewsLine("N,SIM,1,IBM,20240131 093000," + headline);

    EXPECT_EQ(Text(1, "Notes"), "\xB6 first line");
    EXPECT_EQ(Tip(1, "Notes"), "first line\nsecond line");
    EXPECT_EQ(grid->EditText(1, ColumnOf("Notes")), "first line") << "the mark is no text";
    EXPECT_EQ(Text(2, "Notes"), "");
    EXPECT_EQ(Text(1, "Alerts"), "2/1");
    EXPECT_EQ(Tip(1, "Alerts"), "2 armed, 1 fired or off");
    alert.enabled = 1;
    alert.fieldId = AlertFieldId("Listed Market Name").value();
    doc->AlertRules().Add("IBM", alert);
    EXPECT_EQ(Text(1, "Alerts"), "2/2");
    EXPECT_EQ(Tip(1, "Alerts"), "2 armed, 1 fired or off, 1 cannot fire");
    EXPECT_EQ(Tip(1, "Latest Headline"), headline) << "the cell holds 255 bytes of it";
    EXPECT_EQ(Cell(1, "News").role, ETextRole::Up);
    EXPECT_EQ(Cell(1, "News").font, Cell(1, "Symbol").font) << "fresh news stands out without colour too";
    EXPECT_EQ(Tip(3, "Notes"), "") << "headings have no tips of cells";
}

TEST_F(CBoardCellsTest, TheSymbolSaysThatItsRowHasANoteAndAlerts) {
    const auto marks = [&](int row) { return int{Cell(row, "Symbol").marks}; };
    EXPECT_EQ(marks(1), 0);
    EXPECT_EQ(Tip(1, "Symbol"), "");
    doc->Update()->Notes().Set(1, "one\r\ntwo\r\nthree\r\nfour");
    doc->Update()->Notes().Set(7, "of an empty row");
    doc->Update()->Columns();
    EXPECT_EQ(marks(1), kNoteMark);
    EXPECT_EQ(marks(7), kNoteMark);
    A_INFO alert{1, 0, 0, 250.5, FieldIndex("Last") - 1, 2, 0, {}};
    ProcessAll();
    const int64_t before = grid->Counters().cells;
    doc->AlertRules().Add("IBM", alert);
    ProcessAll();
    EXPECT_GT(grid->Counters().cells, before) << "it is seen at once";
    EXPECT_EQ(marks(1), kNoteMark | kArmedMark);
    alert.enabled = 0;
    alert.value = 100;
    doc->AlertRules().Add("IBM", alert);
    EXPECT_EQ(marks(1), kNoteMark | kArmedMark | kFiredMark);
    EXPECT_EQ(Tip(1, "Symbol"), "IBM\nNote: one\ntwo\nthree\n...\nAlert armed: Last greater than or equal to 250.5\n"
                                "Alert fired or off: Last greater than or equal to 100");
    alert.enabled = 1;
    alert.fieldId = FieldIndex("Exchange") - 1;
    doc->AlertRules().Add("IBM", alert);
    EXPECT_TRUE(Tip(1, "Symbol").ends_with("\nAlert cannot fire: Exchange greater than or equal to 100"));
    alert.enabled = 0;
    alert.fieldId = FieldIndex("Last") - 1;
    EXPECT_EQ(Tip(7, "Symbol"), "Note: of an empty row");
    for (int i = 0; i < 9; ++i) {
        alert.value = i;
        doc->AlertRules().Add("MSFT", alert);
    }
    EXPECT_EQ(marks(2), kFiredMark);
    EXPECT_TRUE(Tip(2, "Symbol").ends_with("equal to 4\nand 4 more that fired or are off")) << Tip(2, "Symbol");
}

TEST_F(CBoardCellsTest, TheSymbolStaysInSightUntilThatIsSwitchedOff) {
    frame->resize(400, 600);
    ProcessAll();
    grid->EnsureVisible(1, ColumnOf("Tick Trend"));
    const auto seen = [&] { return grid->Geometry().VisibleCellRect(1, ColumnOf("Symbol")).width(); };
    EXPECT_EQ(seen(), kDefaultColumnWidthPx);
    ProcessAll();
    const int64_t before = grid->Counters().cells;
    doc->Update()->Notes().Set(1, "new");
    doc->Update()->ShowText(1, {});
    ProcessAll();
    const int notes = grid->Geometry().VisibleCellRect(1, ColumnOf("Notes")).isEmpty() ? 0 : 1;
    EXPECT_EQ(grid->Counters().cells, before + notes + 1) << "the note where it is seen, and the symbol with its mark";
    Do(ECommand::ViewSymbolInSight);
    EXPECT_EQ(seen(), 0);
    EXPECT_FALSE(settings.ReadBoolean(kSymbolInSight));
    Do(ECommand::ViewSymbolInSight);
    doc->Update()->Columns().Move(ColumnOf("Symbol"), 3);
    doc->Update()->Columns();
    EXPECT_EQ(seen(), kDefaultColumnWidthPx) << "wherever it is";
}

TEST_F(CBoardCellsTest, TheStarterListsColumnsFitTheirTexts) {
    QFile starter(QStringLiteral(ZW_SOURCE_DIR "/src/app/resources/starter.vxw"));
    ASSERT_TRUE(starter.open(QIODevice::ReadOnly));
    OpenText(*doc, starter.readAll().toStdString(), {});
    Update("GOOGL", "Decimal Precision", "2");
    const std::pair<const char*, const char*> values[] = {
        {"Last", "1999.99"},           {"Bid", "1999.98"},        {"Ask", "1999.99"},
        {"High", "2000.00"},           {"Low", "1888.88"},        {"Change", "-199.99"},
        {"Bid Size", "10000"},         {"Ask Size", "10000"},     {"Percent Change", "-0.1999"},
        {"Total Volume", "999999999"}, {"Last Time", "10:00:00"}, {"Delay", "15"}};
    for (const auto& [field, value] : values) Update("GOOGL", field, value);
    const std::pair<const char*, const char*> pair[] = {{"Decimal Precision", "5"}, {"Last", "1.07798"},
                                                        {"Bid", "1.07794"},         {"Ask", "1.07802"},
                                                        {"Change", "-0.00652"},     {"Total Volume", "4294967295"}};
    for (const auto& [field, value] : pair) Update("EURUSD", field, value);
    for (int i = 0; i < 10; ++i) Update("GOOGL", "Tick", "173");
    doc->OnNewsLine("N,SIM,1,GOOGL,20240131 093000,Simulated: Alphabet names a new chief financial officer");
    for (int column = 1; column <= grid->ColumnCount(); ++column)
        EXPECT_LE(grid->FitWidth(column), grid->ColumnWidth(column)) << doc->Columns().At(column).name;
    EXPECT_LE(grid->Geometry().ContentWidth(), 1320 - grid->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
}

TEST_F(CBoardCellsTest, NotesOfHeadingsAndEmptyRowsAreSeenToo) {
    doc->Update()->Notes().Set(3, "of the heading");
    doc->Update()->Notes().Set(7, "of a row");
    doc->Update()->Columns();
    EXPECT_EQ(grid->ShownText(3, 1), "\xB6 Heading of some length");
    EXPECT_EQ(grid->EditText(3, 1), "Heading of some length");
    EXPECT_EQ(Tip(3, "Bid"), "Heading of some length\nof the heading");
    EXPECT_EQ(grid->RowCount(), 7);
    EXPECT_EQ(Text(7, "Notes"), "\xB6 of a row");
    EXPECT_EQ(Tip(7, "Notes"), "of a row");
    EXPECT_EQ(Text(7, "Symbol") + Text(7, "Last") + Tip(7, "Alerts") + Tip(7, "News"), "");
    grid->SetFocusCell(7, ColumnOf("Notes"));
    Do(ECommand::EditDelete);
    EXPECT_FALSE(doc->Notes().Has(7));
    EXPECT_EQ(grid->RowCount(), 4);
}

TEST_F(CBoardCellsTest, ADoubleClickOpensWhatACellStandsFor) {
    std::vector<ECommand> opened;
    for (const ECommand command : {ECommand::AlertsEdit, ECommand::EditNote, ECommand::Headlines})
        frame->Commands().Bind(command, [&opened, command] { opened.push_back(command); });
    frame->Commands().Refresh();
    for (const char* column : {"Alerts", "Notes", "News", "Latest Headline"})
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, Middle(1, ColumnOf(column)));
    ProcessAll();
    EXPECT_EQ(opened, (std::vector<ECommand>{ECommand::AlertsEdit, ECommand::EditNote, ECommand::Headlines,
                                             ECommand::Headlines}));
    EXPECT_FALSE(grid->IsEditing());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, Middle(1, ColumnOf("Last")));
    EXPECT_TRUE(grid->IsEditing());
}

TEST_F(CBoardCellsTest, FillingCellsAllocatesNothing) {
    Format(1, "Last", [](SCellFormat& format) {
        format.fontFace = "Some Font With A Long Name";
        format.italic = true;
    });
    doc->Update()->Notes().Set(1, "a note of a certain length, more than fits a small string");
    SCell cell;
    const auto fillAll = [&] {
        for (int row = 1; row <= grid->RowCount(); ++row)
            for (int column = 1; column <= grid->ColumnCount(); ++column) {
                cell.Reset();
                if (!grid->Source()->FillSpan(row, cell)) grid->Source()->FillCell(row, column, cell);
            }
    };
    const size_t before = Allocations();
    fillAll();
    fillAll();
    EXPECT_EQ(Allocations() - before, 0u);
}

TEST_F(CBoardCellsTest, AnEmptyWatchlistSaysHowToBegin) {
    const auto inked = [&] {
        ProcessAll();
        const QImage image = GrabImage(*grid->viewport());
        const QRect room(0, grid->Geometry().ContentBottom() + 1, image.width(), 60);
        return CountColor(image, room, grid->Theme().base) < room.width() * room.height();
    };
    EXPECT_FALSE(inked());
    doc->NewDocument();
    EXPECT_TRUE(inked());
    OpenText(*doc, "TrailingRows=0\r\nColumns=Symbol:1000;RowNumbers:900;\r\n", "none");
    EXPECT_EQ(grid->RowCount(), 1) << "a row to type into";
    EXPECT_EQ(grid->ColumnWidth(0), 90);
    doc->NewDocument();
    EXPECT_LT(grid->ColumnWidth(0), 90);
}
