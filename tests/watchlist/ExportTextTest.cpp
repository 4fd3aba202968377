// SPDX-License-Identifier: MIT
#include "watchlist/exchange/ExportText.h"
#include "support/ChildProcess.h"
#include "watchlist/DocFixture.h"
#include "watchlist/edit/CopyText.h"

#include <csignal>
#include <sys/resource.h>

using namespace vx;
using namespace vx::test;

namespace {

/// Columns 1 Last, 2 Bid (hidden), 3 Symbol, 4 Notes, 5 a name that no field has; row 3 is an annotation, row 2 empty.
class CExportText : public CDocFixture {
protected:
    CExportText() {
        FeedIsReady();
        UseColumns("Last;Bid;Symbol;Notes;No Such;News;Ask;");
        SetWidth(2, 0);
        doc.Update()->EnterSymbol(1, "IBM");
        doc.Update()->SetAnnotation(3, "Old, cars");
        doc.Update()->EnterSymbol(4, "GE");
        FeedSets("IBM", "Last", "12.5");
        SetNote(1, "a note");
        doc.OnNewsLine("N,S,1,IBM,20240131 093000,Up");
    }
    EExportOutcome Export(const std::string& at, const SExportOptions& options = {}) {
        return ExportToFile(doc, options, at).outcome;
    }
    std::string FileAfter(const SExportOptions& options) {
        EXPECT_EQ(Export(path, options), EExportOutcome::Written);
        return ReadFile(path);
    }

    const std::string path = folder / "out.csv";
};

constexpr SExportOptions kAppending{.append = true};

} // namespace

TEST_F(CExportText, WritesTheTableAsShownOrAsFormulas) {
    EXPECT_EQ(ExportText(doc, {false, false, false, true}, false),
              "12.5000\tIBM\ta note\t\t1\t\n\t\t\t\t\t\nOld, cars\t\t\t\t\t\n\tGE\t\t\t\t\n");
    EXPECT_EQ(ExportText(doc, {true, false, true, true}, true),
              "Last\tSymbol\tNotes\tNo Such\tNews\tAsk\n"
              "=VxLink|'IBM'!'Last'\t=VxLink|'IBM'!'Symbol'\ta note\t\t1\t\n"
              "\t\t\t\t\t\nOld, cars\t\t\t\t\t\n\t=VxLink|'GE'!'Symbol'\t\t\t\t\n");
    SetWidth(3, 0);
    doc.DeleteRows(2, 1);
    EXPECT_EQ(ExportText(doc, {true, true, true, true}, true),
              "Last,Notes,No Such,News,Ask\n=VxLink|'IBM'!'Last',a note,,1,\nOld, cars,,,,\n,,,,\n");
}

TEST_F(CExportText, AppendsOrOverwritesWithHeadersWhereATableBeginsAFile) {
    doc.DeleteRows(2, 9);
    UseColumns("Symbol;Last;");
    const std::string headers = "Symbol,Last\n", row = "IBM,12.5000\n";
    EXPECT_EQ(FileAfter(kAppending), headers + row);
    EXPECT_EQ(FileAfter(kAppending), headers + row + row);
    EXPECT_EQ(FileAfter({}), headers + row);
    EXPECT_EQ(FileAfter({.columnHeaders = false}), row);
    for (const std::string& at : {folder.Path(), folder / "none/file"})
        EXPECT_EQ(Export(at), EExportOutcome::NotOpened) << at;
    EXPECT_EQ(Export("/dev/full"), EExportOutcome::Torn);
}

TEST_F(CExportText, AFileThatCannotTakeAllKeepsWhatItHeld) {
    WriteFile(path, "precious\n");
    for (const SExportOptions& options : {SExportOptions{}, kAppending})
        EXPECT_EQ(ExitCode(Fork([&] {
                      std::signal(SIGXFSZ, SIG_IGN);   // The write fails instead.
                      constexpr rlimit kLimit{12, 12}; // Longer than what is there, shorter than what comes.
                      setrlimit(RLIMIT_FSIZE, &kLimit);
                      return Export(path, options) == EExportOutcome::Failed ? 0 : 1;
                  })),
                  0);
    EXPECT_EQ(ReadFile(path), "precious\n");
    EXPECT_THAT(folder.Files(), testing::SizeIs(1)) << "something was left there";
}

TEST_F(CExportText, AReplacedFileIsFollowedThroughItsLink) {
    WriteFile(path, "old\n");
    std::filesystem::create_symlink(path, folder / "link");
    EXPECT_EQ(Export(folder / "link"), EExportOutcome::Written);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(ReadFile(path), ExportText(doc, {}, true));
}

TEST_F(CExportText, OnlyUtf8TurnsTheTickTrendIntoSigns) {
    doc.DeleteRows(2, 9);
    UseColumns("Symbol;Tick Trend;Notes;");
    SetNote(1, "\xE9 \xAD");
    for (const char* tick : {"173", "183", "175"}) FeedSets("IBM", "Tick", tick); // The newest comes first.
    EXPECT_EQ(FileAfter({}), "Symbol,Tick Trend,Notes\nIBM,\xAF\xB7\xAD,\xE9 \xAD\n");
    EXPECT_EQ(FileAfter({.utf8 = true}), "Symbol,Tick Trend,Notes\nIBM,\u25BC\u2022\u25B2,\u00E9 \u00AD\n");
    EXPECT_EQ(CopyText(doc, {1, 1, 1, 3}), "IBM\t\u25BC\u2022\u25B2\t\u00E9 \u00AD\r\n");
    doc.Update()->SetAnnotation(1, "\xB7 a heading");
    SetWidth(1, 0);
    EXPECT_EQ(CopyText(doc, {1, 1, 1, 3}), "\u00B7 a heading\r\n") << "it is in the trend's column";
}
