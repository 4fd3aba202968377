// SPDX-License-Identifier: MIT
#include "app/files/TransferCommands.h"

#include "app/ContextFixture.h"
#include "app/files/FileController.h"
#include "app/files/ListPrinter.h"
#include "watchlist/dialogs/ImportDlg.h"
#include "watchlist/dialogs/QuoteDataOptions.h"

#include <QFileDialog>
#include <QPlainTextEdit>
#include <QPrinter>

using namespace vx;
using namespace vx::test;

namespace {

class CTransferCommandsTest : public CContextFixture {
protected:
    CTransferCommandsTest() { ColumnsAre("Symbol;Last;Notes;"); }

    /// Goes through both dialogs of an export; options: the buttons to press, by their texts. Returns what is written.
    std::string Export(const std::vector<const char*>& options, const std::string& name, const char* suffix = "") {
        WhenOpen<CQuoteDataOptions>([&, options](CQuoteDataOptions& dialog) {
            offered = dialog.Options();
            for (const char* option : options) Named<QAbstractButton>(dialog, option).click();
            if (name.empty()) return dialog.reject();
            WhenOpen<QFileDialog>([&, name](QFileDialog& chooser) {
                chooser.selectFile(QString::fromStdString(At(name)));
                static_cast<QDialog&>(chooser).accept();
            });
            dialog.accept();
        });
        Do(ECommand::FileExport);
        return name.empty() ? name : ReadFile(At(name + suffix));
    }
    std::string Exported(const std::string& name) { return " \"" + At(name) + "\""; }

    CFileController files{context, CRegistry::CurrentUser()};
    CTransferCommands transfer{context, files};
    SExportOptions offered;
};

} // namespace

TEST_F(CTransferCommandsTest, AnExportAsksHowAndWhereAndAppendingAsksNothingElse) {
    Enter(1, "ibm");
    Enter(2, "buy at the open");
    const std::string table = "Symbol\tLast\tNotes\n=VxLink|'IBM'!'Symbol'\t\t\nbuy at the open\t\t\n";
    EXPECT_EQ(Export({"Tab Delimited", "DDE Formulas"}, "board", ".txt"), table);
    EXPECT_EQ(Export({"Data", "Append"}, "board.txt"), table + "IBM\t\t\nbuy at the open\t\t\n");
    EXPECT_EQ(Status(), "Exported to the end of" + Exported("board.txt"));
    EXPECT_EQ(Export({"Comma Delimited"}, "board", ".csv"), "Symbol,Last,Notes\nIBM,,\nbuy at the open,,\n");
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());

    boxes.answer = EBoxAnswer::Yes;
    doc->Update()->EmptyRow(2);
    EXPECT_EQ(Export({"Overwrite", "columnHeaders"}, "board.csv"), "IBM,,\n");
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("The file" + Exported("board.csv") + " exists already. Replace it?"));
    Export({}, "none/board");
    EXPECT_THAT(Status(), StartsWith("Nothing was exported: "));
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
            agree ? ok->click() : dialog.reject();
        });
        files.TakeDropped({At("list.csv")});
    };
    grid->SetFocusCell(2, 1);
    import(false);
    EXPECT_EQ(doc->LastUsedRow(), 2);
    import(true);
    for (const auto& [row, symbol] : {std::pair{1, "IBM"}, {2, "AAPL"}, {3, "GE"}, {4, "F"}})
        EXPECT_EQ(doc->RowSymbol(row), symbol) << row;
    Do(ECommand::EditUndo);
    EXPECT_EQ(doc->LastUsedRow(), 2);
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
    EXPECT_THAT(ReadFile(At("list.pdf")), StartsWith("%PDF"));
    EXPECT_TRUE(last >= 3 && last <= 5) << last;

    ColumnsAre("Symbol;Last;Volume;Bid;Ask;High;Low;Open;Close;Change;");
    for (int i = 1; i < doc->Columns().Count(); ++i) doc->Update()->Columns().SetWidth(i, 400);
    doc->Update()->Columns();
    EXPECT_GE(CListPrinter(*grid, 1, {}, printer).PageCount(), 2) << "ten columns of 400 pixels";
}
