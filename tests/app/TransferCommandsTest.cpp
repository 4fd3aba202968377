#include "app/files/TransferCommands.h"

#include "app/FrameFixture.h"
#include "app/files/FileController.h"
#include "app/files/ListPrinter.h"
#include "data/catalogue/UpdateFields.h"
#include "grid/GridTheme.h"
#include "support/Dialogs.h"
#include "support/MessageBoxes.h"
#include "watchlist/dialogs/ImportDlg.h"
#include "watchlist/dialogs/QuoteDataOptions.h"
#include "watchlist/edit/CellEntry.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <set>

using namespace vx;
using namespace vx::test;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

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
        frame.show();
        doc.Update()->SetColumnsByName("Symbol;Last;Notes;");
        doc.Update()->Columns();
    }

    void Type(int row, const std::string& text) { EnterCellText(doc, row, 1, {}, text); }
    std::string At(const std::string& name) const { return folder / name; }

    /// Goes through both dialogs of an export; options: the buttons to press, by their texts.
    void Export(const std::vector<const char*>& options, const std::string& name) {
        WhenOpen<CQuoteDataOptions>([&, options](CQuoteDataOptions& dialog) {
            for (const auto* group : dialog.findChildren<QGroupBox*>()) groups << group->title();
            for (const char* option : options) dialog.findChild<QAbstractButton*>(QString::fromLatin1(option))->click();
            WhenOpen<QFileDialog>([&, name](QFileDialog& files) {
                filter = files.nameFilters().join(QLatin1Char('|')).toStdString();
                files.selectFile(QString::fromStdString(name));
                static_cast<QDialog&>(files).accept();
            });
            dialog.accept();
        });
        Do("FileExport");
    }
    std::string Status() { return frame.findChild<QLabel*>(QStringLiteral("paneStatus"))->text().toStdString(); }
    static QString Text(const CImportDlg& dialog, const char* list) {
        const auto* edit = dialog.findChild<QPlainTextEdit*>(QString::fromLatin1(list));
        return edit ? edit->toPlainText() : QString();
    }

    CMainFrame& frame = Frame();
    CWatchlistDoc& doc = frame.Document();
    CMessageBoxes boxes;
    QStringList groups;
    std::string filter;
};

} // namespace

TEST_F(CTransferCommandsTest, AnExportAsksHowAndWhereAndAppendingAsksNothingElse) {
    Type(1, "ibm");
    Type(2, "buy at the open");
    Export({"Tab Delimited", "DDE Formulas"}, At("board"));
    EXPECT_EQ(groups, (QStringList{QStringLiteral("Export"), QStringLiteral("Quote Format Options"),
                                   QStringLiteral("File Options")}));
    EXPECT_EQ(filter, "Tabular Delimited (*.txt)");
    const std::string table = ReadFile(At("board.txt"));
    EXPECT_EQ(table, "Symbol\tLast\tNotes\n=VxLink|'IBM'!'Symbol'\t\t\nbuy at the open\t\t\n");

    EXPECT_EQ(Status(), "Exported to \"" + At("board.txt") + "\"");

    Export({"Data", "Append"}, At("board.txt"));
    EXPECT_EQ(ReadFile(At("board.txt")), table + "IBM\t\t\nbuy at the open\t\t\n");
    EXPECT_EQ(Status(), "Exported to the end of \"" + At("board.txt") + "\"");
    Export({"Comma Delimited"}, At("board"));
    EXPECT_EQ(filter, "Comma Delimited (*.csv)");
    EXPECT_EQ(ReadFile(At("board.csv")), "Symbol,Last,Notes\nIBM,,\nbuy at the open,,\n");
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());

    boxes.answer = EBoxAnswer::Yes;
    doc.Update()->EmptyRow(2);
    Export({"Overwrite", "columnHeaders"}, At("board.csv"));
    EXPECT_EQ(ReadFile(At("board.csv")), "IBM,,\n");
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("The file \"" + At("board.csv") + "\" exists already. Replace it?"));
    Export({}, At("none/board")); // A file that cannot be opened is passed over.
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
    EXPECT_THAT(Status(),
                AllOf(StartsWith("Nothing was exported: "), HasSubstr("/none/board.csv\" could not be opened")));
}

TEST_F(CTransferCommandsTest, AnExportBeginsWithANewFileAndHeadersThenWithWhatWasChosenForTheList) {
    const auto offered = [&] {
        SExportOptions options;
        WhenOpen<CQuoteDataOptions>([&](CQuoteDataOptions& dialog) {
            options = dialog.Options();
            dialog.reject();
        });
        Do("FileExport");
        return options;
    };
    Type(1, "ibm");
    EXPECT_EQ(offered(), (SExportOptions{false, true, true, false, false}));
    doc.MarkSaved();
    Export({}, At("board"));
    EXPECT_FALSE(doc.IsModified());
    Export({"DDE Formulas", "Tab Delimited", "columnHeaders", "utf8", "Append"}, At("board"));
    EXPECT_TRUE(doc.IsModified()) << "a save keeps the choices";
    EXPECT_EQ(offered(), (SExportOptions{true, false, false, true, true}));
    doc.NewDocument();
    EXPECT_EQ(offered(), SExportOptions{});
}

TEST_F(CTransferCommandsTest, AnImportShowsWhatItWouldDoAndIsOneStep) {
    Type(1, "ibm");
    Type(2, "f");
    WriteFile(At("list.csv"), "Name,Symbol\nFord,f\nApple,aapl\nGE,ge\nGE,ge\nodd,12.5\n");
    const auto import = [&](bool agree) {
        WhenOpen<CImportDlg>([&, agree](CImportDlg& dialog) {
            EXPECT_EQ(Text(dialog, "toAdd"), QStringLiteral("AAPL, GE"));
            EXPECT_EQ(Text(dialog, "alreadyThere"), QStringLiteral("F"));
            EXPECT_EQ(Text(dialog, "duplicates"), QStringLiteral("GE"));
            EXPECT_EQ(Text(dialog, "notUnderstood"), QStringLiteral("line 6: 12.5"));
            QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
            EXPECT_EQ(ok->text(), QStringLiteral("Add 2 Symbols"));
            if (agree)
                ok->click();
            else
                dialog.reject();
        });
        frame.Files().TakeDropped({At("list.csv")});
    };
    frame.View().Grid().SetFocusCell(2, 1);
    import(false);
    EXPECT_EQ(doc.LastUsedRow(), 2);
    import(true);
    for (const auto& [row, symbol] : std::map<int, std::string>{{1, "IBM"}, {2, "AAPL"}, {3, "GE"}, {4, "F"}})
        EXPECT_EQ(doc.RowSymbol(row), symbol) << row;
    EXPECT_EQ(frame.View().Grid().SelectedRange().lastRow, 3);
    doc.Undo().Undo();
    EXPECT_EQ(doc.LastUsedRow(), 2);

    WriteFile(At("none.txt"), "ibm f");
    WhenOpen<CImportDlg>([](CImportDlg& dialog) {
        EXPECT_FALSE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
        EXPECT_TRUE(dialog.findChild<QWidget*>(QStringLiteral("nothing")));
        dialog.reject();
    });
    frame.Transfer().ImportFile(At("none.txt"));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CTransferCommandsTest, PrintedTextsCanBeReadOnTheBackgroundsThatTheUserChose) {
    doc.Update()->SetColumnsByName("Symbol;Last;Tick Trend;");
    doc.SetFeedReady();
    Type(1, "IBM");
    const auto feed = [&](std::string_view field, std::initializer_list<const char*> values) {
        std::string line = "Q,IBM";
        for (size_t i = 0; kUpdateFields[i].name != field; ++i) line += ',';
        for (const char* value : values) frame.Store().OnLevel1Message(line + value + ",");
    };
    feed("Last", {"12.5", "13.5"});
    feed("Tick", {"173", "175", "183"});
    doc.Update()->Columns();
    const auto printed = [&] {
        QPdfWriter paper(QString::fromStdString(At("board.pdf")));
        CListPrinter list(frame.View().Grid(), 1, {}, paper);
        EXPECT_TRUE(list.Print(1, 1, [](int) { return true; }));
        return ReadFile(At("board.pdf"));
    };
    const SGridTheme& theme = kLightGridTheme;
    for (const auto& colors = ColorsOfPdf(printed()); const QRgb color : {theme.up, theme.down, theme.unchanged})
        EXPECT_THAT(colors, Contains(color));

    constexpr QRgb kGrey = 0xFF808080;
    for (int column = 1; column <= 3; ++column) {
        SCellFormat format = doc.Formats().Effective(1, column);
        format.backColour = 0x808080;
        doc.Update()->Formats().Set(1, column, format);
    }
    const std::set<QRgb> colors = ColorsOfPdf(printed());
    EXPECT_THAT(colors, Contains(kGrey));
    for (const ETextRole role : {ETextRole::Up, ETextRole::Down, ETextRole::Unchanged}) {
        EXPECT_THAT(colors, Not(Contains(theme.RoleColor(role))));
        EXPECT_THAT(colors, Contains(ReadableRoleColor(theme, role, kGrey)));
    }
}

TEST_F(CTransferCommandsTest, PagesHoldAllRowsAndWideListsContinueBesideThem) {
    const auto pages = [&](const std::string& columns) {
        doc.Update()->SetColumnsByName(columns);
        doc.Update()->Columns();
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(At("list.pdf")));
        printer.setPageOrientation(QPageLayout::Landscape);
        CListPrinter list(frame.View().Grid(), doc.LastUsedRow(), QStringLiteral("Banks"), printer);
        int last = 0;
        EXPECT_TRUE(list.Print(1, list.PageCount(), [&](int page) { return (last = page) > 0; }));
        EXPECT_EQ(last, list.PageCount());
        EXPECT_TRUE(ReadFile(At("list.pdf")).starts_with("%PDF"));
        return last;
    };
    for (int row = 1; row <= 120; ++row) doc.Update()->PlaceSymbol(row, fmt::format("S{}", row));
    doc.Update()->Columns();
    const int narrow = pages("Symbol;Last;");
    EXPECT_GE(narrow, 3);
    EXPECT_LE(narrow, 5);
    std::string all;
    for (const char* name : {"Symbol", "Last", "Volume", "Bid", "Ask", "High", "Low", "Open", "Close", "Change"})
        all += fmt::format("{};", name);

    doc.Update()->SetColumnsByName(all);
    for (int i = 1; i < doc.Columns().Count(); ++i) doc.Update()->Columns().SetWidth(i, 400);
    doc.Update()->Columns();
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageOrientation(QPageLayout::Landscape);
    EXPECT_GE(CListPrinter(frame.View().Grid(), 1, {}, printer).PageCount(), 2) << "ten columns of 400 pixels";
}
