// SPDX-License-Identifier: MIT
#include "app/files/TransferCommands.h"

#include "app/FrameFixture.h"
#include "app/files/ListPrinter.h"
#include "grid/GridTheme.h"
#include "watchlist/dialogs/ImportDlg.h"
#include "watchlist/dialogs/QuoteDataOptions.h"

#include <QFileDialog>
#include <QGroupBox>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QRegularExpression>

#include <fmt/format.h>

#include <set>

using namespace vx;
using namespace vx::test;

namespace {

/// The colours that a PDF file fills with.
std::set<QRgb> ColorsOfPdf(const std::string& file) {
    static const QRegularExpression fill(QStringLiteral("/CSp cs ([0-9.]+) ([0-9.]+) ([0-9.]+) scn"));
    std::set<QRgb> colors;
    for (size_t at = 0; (at = file.find("stream\n", at)) != std::string::npos;) {
        at += 7;
        const std::string packed = file.substr(at, file.find("endstream", at) - at);
        if (!packed.starts_with('x')) continue; // Not compressed: no page.
        const QByteArray page = qUncompress(QByteArray("\0\1\0\0", 4) + QByteArray::fromStdString(packed));
        for (auto found = fill.globalMatch(QString::fromLatin1(page)); found.hasNext();) {
            const QRegularExpressionMatch color = found.next();
            const auto part = [&](int i) { return qRound(color.captured(i).toDouble() * 255); };
            colors.insert(qRgb(part(1), part(2), part(3)));
        }
    }
    return colors;
}

class CTransferCommandsTest : public CFrameFixture {
protected:
    CTransferCommandsTest() {
        Frame().show();
        ColumnsAre("Symbol;Last;Notes;");
    }

    /// Goes through both dialogs of an export; options: the buttons to press, by their texts. Returns what is written.
    std::string Export(const std::vector<const char*>& options, const std::string& name, const char* suffix = "") {
        WhenOpen<CQuoteDataOptions>([&, options](CQuoteDataOptions& dialog) {
            offered = dialog.Options();
            for (const auto* group : dialog.findChildren<QGroupBox*>()) groups << group->title();
            for (const char* option : options) Named<QAbstractButton>(dialog, option).click();
            if (name.empty()) return dialog.reject();
            WhenOpen<QFileDialog>([&, name](QFileDialog& files) {
                filter = files.nameFilters().join(QLatin1Char('|')).toStdString();
                files.selectFile(QString::fromStdString(At(name)));
                static_cast<QDialog&>(files).accept();
            });
            dialog.accept();
        });
        Do(ECommand::FileExport);
        return name.empty() ? name : ReadFile(At(name + suffix));
    }
    std::string Exported(const std::string& name) { return " \"" + At(name) + "\""; }

    QStringList groups;
    SExportOptions offered;
    std::string filter;
};

} // namespace

TEST_F(CTransferCommandsTest, AnExportAsksHowAndWhereAndAppendingAsksNothingElse) {
    Enter(1, "ibm");
    Enter(2, "buy at the open");
    const std::string table = "Symbol\tLast\tNotes\n=VxLink|'IBM'!'Symbol'\t\t\nbuy at the open\t\t\n";
    EXPECT_EQ(Export({"Tab Delimited", "DDE Formulas"}, "board", ".txt"), table);
    EXPECT_EQ(groups.join(QLatin1Char('|')), QStringLiteral("Export|Quote Format Options|File Options"));
    EXPECT_EQ(filter, "Tabular Delimited (*.txt)");
    EXPECT_EQ(Status(), "Exported to" + Exported("board.txt"));
    EXPECT_EQ(Export({"Data", "Append"}, "board.txt"), table + "IBM\t\t\nbuy at the open\t\t\n");
    EXPECT_EQ(Status(), "Exported to the end of" + Exported("board.txt"));
    EXPECT_EQ(Export({"Comma Delimited"}, "board", ".csv"), "Symbol,Last,Notes\nIBM,,\nbuy at the open,,\n");
    EXPECT_EQ(filter, "Comma Delimited (*.csv)");
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());

    boxes.answer = EBoxAnswer::Yes;
    doc->Update()->EmptyRow(2);
    EXPECT_EQ(Export({"Overwrite", "columnHeaders"}, "board.csv"), "IBM,,\n");
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("The file" + Exported("board.csv") + " exists already. Replace it?"));
    Export({}, "none/board"); // A file that cannot be opened is passed over.
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
    EXPECT_THAT(Status(),
                AllOf(StartsWith("Nothing was exported: "), HasSubstr("/none/board.csv\" could not be opened")));
}

TEST_F(CTransferCommandsTest, AnExportBeginsWithANewFileAndHeadersThenWithWhatWasChosenForTheList) {
    Enter(1, "ibm");
    doc->MarkSaved();
    Export({}, "board");
    EXPECT_EQ(offered, (SExportOptions{false, true, true, false, false}));
    EXPECT_FALSE(doc->IsModified());
    Export({"DDE Formulas", "Tab Delimited", "columnHeaders", "utf8", "Append"}, "board");
    EXPECT_TRUE(doc->IsModified()) << "a save keeps the choices";
    Export({}, {});
    EXPECT_EQ(offered, (SExportOptions{true, false, false, true, true}));
    doc->NewDocument();
    Export({}, {});
    EXPECT_EQ(offered, SExportOptions{});
}

TEST_F(CTransferCommandsTest, AnImportShowsWhatItWouldDoAndIsOneStep) {
    Enter(1, "ibm");
    Enter(2, "f");
    WriteFile(At("list.csv"), "Name,Symbol\nFord,f\nApple,aapl\nGE,ge\nGE,ge\nodd,12.5\n");
    const auto import = [&](bool agree) {
        WhenOpen<CImportDlg>([&, agree](CImportDlg& dialog) {
            for (const auto& [list, text] : {std::pair{"toAdd", "AAPL, GE"},
                                             {"alreadyThere", "F"},
                                             {"duplicates", "GE"},
                                             {"notUnderstood", "line 6: 12.5"}})
                EXPECT_EQ(Named<QPlainTextEdit>(dialog, list).toPlainText().toStdString(), text);
            QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
            EXPECT_EQ(ok->text(), QStringLiteral("Add 2 Symbols"));
            agree ? ok->click() : dialog.reject();
        });
        frame->Files().TakeDropped({At("list.csv")});
    };
    grid->SetFocusCell(2, 1);
    import(false);
    EXPECT_EQ(doc->LastUsedRow(), 2);
    import(true);
    for (const auto& [row, symbol] : {std::pair{1, "IBM"}, {2, "AAPL"}, {3, "GE"}, {4, "F"}})
        EXPECT_EQ(doc->RowSymbol(row), symbol) << row;
    EXPECT_EQ(grid->SelectedRange().lastRow, 3);
    Do(ECommand::EditUndo);
    EXPECT_EQ(doc->LastUsedRow(), 2);

    WriteFile(At("none.txt"), "ibm f");
    WhenOpen<CImportDlg>([](CImportDlg& dialog) {
        EXPECT_FALSE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
        EXPECT_TRUE(dialog.findChild<QWidget*>(QStringLiteral("nothing")));
        dialog.reject();
    });
    frame->Transfer().ImportFile(At("none.txt"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CTransferCommandsTest, PrintedTextsCanBeReadOnTheBackgroundsThatTheUserChose) {
    ColumnsAre("Symbol;Last;Tick Trend;");
    doc->SetFeedReady();
    Enter(1, "IBM");
    for (const auto& [field, value] :
         {std::pair{"Last", "12.5"}, {"Last", "13.5"}, {"Tick", "173"}, {"Tick", "175"}, {"Tick", "183"}})
        frame->Store().OnLevel1Message(Update("IBM", field, value));
    doc->Update()->Columns();
    const auto printed = [&] {
        QPdfWriter paper(QString::fromStdString(At("board.pdf")));
        CListPrinter list(*grid, 1, {}, paper);
        EXPECT_TRUE(list.Print(1, 1, [](int) { return true; }));
        return ColorsOfPdf(ReadFile(At("board.pdf")));
    };
    const SGridTheme& theme = kLightGridTheme;
    for (const auto& colors = printed(); const QRgb color : {theme.up, theme.down, theme.unchanged})
        EXPECT_THAT(colors, Contains(color));

    constexpr QRgb kGrey = 0xFF808080;
    for (int column = 1; column <= 3; ++column) {
        SCellFormat format = doc->Formats().Effective(1, column);
        format.backColour = 0x808080;
        doc->Update()->Formats().Set(1, column, format);
    }
    const std::set<QRgb> colors = printed();
    EXPECT_THAT(colors, Contains(kGrey));
    for (const ETextRole role : {ETextRole::Up, ETextRole::Down, ETextRole::Unchanged}) {
        EXPECT_THAT(colors, Not(Contains(theme.RoleColor(role))));
        EXPECT_THAT(colors, Contains(ReadableRoleColor(theme, role, kGrey)));
    }
}

TEST_F(CTransferCommandsTest, PagesHoldAllRowsAndWideListsContinueBesideThem) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(At("list.pdf")));
    printer.setPageOrientation(QPageLayout::Landscape);
    for (int row = 1; row <= 120; ++row) doc->Update()->PlaceSymbol(row, fmt::format("S{}", row));
    ColumnsAre("Symbol;Last;");
    CListPrinter list(*grid, doc->LastUsedRow(), QStringLiteral("Banks"), printer);
    int last = 0;
    EXPECT_TRUE(list.Print(1, list.PageCount(), [&](int page) { return (last = page) > 0; }));
    EXPECT_EQ(last, list.PageCount());
    EXPECT_THAT(ReadFile(At("list.pdf")), StartsWith("%PDF"));
    EXPECT_GE(last, 3);
    EXPECT_LE(last, 5);

    ColumnsAre("Symbol;Last;Volume;Bid;Ask;High;Low;Open;Close;Change;");
    for (int i = 1; i < doc->Columns().Count(); ++i) doc->Update()->Columns().SetWidth(i, 400);
    doc->Update()->Columns();
    EXPECT_GE(CListPrinter(*grid, 1, {}, printer).PageCount(), 2) << "ten columns of 400 pixels";
}
