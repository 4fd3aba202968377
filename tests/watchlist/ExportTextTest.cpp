#include "watchlist/ExportText.h"
#include "watchlist/DocFixture.h"

#include <fstream>
#include <sstream>
#include <sys/stat.h>

using namespace vx;
using namespace vx::test;

namespace {

/// Columns 1 Last, 2 Bid (hidden), 3 Symbol, 4 Notes, 5 a name that no field has; row 3 is an annotation, row 2 empty.
class CExportText : public CDocFixture {
protected:
    CExportText() {
        FeedIsReady();
        doc.Columns().Clear();
        doc.SetColumnsByName("Last;Bid;Symbol;Notes;No Such;News;Ask;");
        doc.Columns().SetWidth(2, 0);
        doc.EnterSymbol(1, "IBM");
        doc.SetAnnotation(3, "Old, cars");
        doc.EnterSymbol(4, "GE");
        FeedSets("IBM", "Last", "12.5");
        doc.Notes().Set(1, "a note");
        doc.OnNewsLine("N,S,1,IBM,20240131 093000,Up");
    }
    std::string FileAfter(const SExportOptions& options) {
        outcome = ExportToFile(doc, options, path);
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    std::string path = folder.Path() + "/out.csv";
    EExportOutcome outcome = EExportOutcome::Written;
};

} // namespace

TEST_F(CExportText, WritesTheTableAsShownOrAsFormulas) {
    EXPECT_EQ(ExportText(doc, {false, false, false, true}, false),
              "12.5000\tIBM\ta note\t\t1\t\n\t\t\t\t\t\nOld, cars\t\t\t\t\t\n\tGE\t\t\t\t\n");
    EXPECT_EQ(ExportText(doc, {true, false, true, true}, true),
              "Last\tSymbol\tNotes\tNo Such\tNews\tAsk\n"
              "=VxLink|'IBM'!'Last'\t=VxLink|'IBM'!'Symbol'\ta note\t\t1\t\n"
              "\t\t\t\t\t\nOld, cars\t\t\t\t\t\n\t=VxLink|'GE'!'Symbol'\t\t\t\t\n");
    doc.Columns().SetWidth(3, 0);
    doc.DeleteRows(2, 3);
    EXPECT_EQ(ExportText(doc, {true, true, true, true}, true),
              "Last,Notes,No Such,News,Ask\n=VxLink|'IBM'!'Last',a note,,1,\n");
}

TEST_F(CExportText, ATextWithACommaSpreadsOverTwoFields) {
    doc.DeleteRows(1, 2);
    doc.DeleteRows(2, 1);
    EXPECT_EQ(ExportText(doc, {false, true, false, true}, false), "Old, cars,,,,,\n");
}

TEST_F(CExportText, AppendsOrOverwritesWithHeadersWhereATableBeginsAFile) {
    doc.DeleteRows(2, 9);
    doc.Columns().SetNames("Symbol;Last;");
    const std::string headers = "Symbol,Last\n", row = "IBM,12.5000\n";
    SExportOptions options;
    options.columnHeaders = true;
    EXPECT_EQ(FileAfter(options), headers + row);
    EXPECT_EQ(FileAfter(options), headers + row + row);
    options.append = false;
    EXPECT_EQ(FileAfter(options), headers + row);
    options.columnHeaders = false;
    EXPECT_EQ(FileAfter(options), row);
    EXPECT_EQ(outcome, EExportOutcome::Written);
    EXPECT_EQ(ExportToFile(doc, options, folder.Path()), EExportOutcome::NotOpened);
    EXPECT_EQ(ExportToFile(doc, options, "/dev/full"), EExportOutcome::Failed);
    ASSERT_EQ(mkfifo((folder.Path() + "/pipe").c_str(), 0600), 0);
    EXPECT_EQ(ExportToFile(doc, options, folder.Path() + "/pipe"), EExportOutcome::NotOpened) << "it has no reader";
}
