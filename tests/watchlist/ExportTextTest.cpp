#include "watchlist/exchange/ExportText.h"
#include "watchlist/DocFixture.h"
#include "watchlist/edit/CopyText.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace vx;
using namespace vx::test;

namespace {

/// Columns 1 Last, 2 Bid (hidden), 3 Symbol, 4 Notes, 5 a name that no field has; row 3 is an annotation, row 2 empty.
class CExportText : public CDocFixture {
protected:
    CExportText() {
        FeedIsReady();
        doc.Update()->Columns().Clear();
        doc.Update()->SetColumnsByName("Last;Bid;Symbol;Notes;No Such;News;Ask;");
        doc.Update()->Columns().SetWidth(2, 0);
        doc.Update()->EnterSymbol(1, "IBM");
        doc.Update()->SetAnnotation(3, "Old, cars");
        doc.Update()->EnterSymbol(4, "GE");
        FeedSets("IBM", "Last", "12.5");
        doc.Update()->Notes().Set(1, "a note");
        doc.OnNewsLine("N,S,1,IBM,20240131 093000,Up");
    }
    std::string FileAfter(const SExportOptions& options) {
        outcome = ExportToFile(doc, options, path).outcome;
        return File(path);
    }
    static std::string File(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    /// Of an export that must not succeed.
    EExportOutcome OutcomeAt(const std::string& at, bool append = false) {
        SExportOptions options;
        options.append = append;
        return ExportToFile(doc, options, at).outcome;
    }

    static rlimit Limit() {
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        return limit;
    }
    static void SetLimit(const rlimit& limit) {
        std::signal(SIGXFSZ, SIG_IGN); // The write fails instead.
        setrlimit(RLIMIT_FSIZE, &limit);
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
    doc.Update()->Columns().SetWidth(3, 0);
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
    doc.Update()->Columns().SetNames("Symbol;Last;");
    const std::string headers = "Symbol,Last\n", row = "IBM,12.5000\n";
    SExportOptions options;
    options.append = true;
    EXPECT_EQ(FileAfter(options), headers + row);
    EXPECT_EQ(FileAfter(options), headers + row + row);
    options.append = false;
    EXPECT_EQ(FileAfter(options), headers + row);
    options.columnHeaders = false;
    EXPECT_EQ(FileAfter(options), row);
    EXPECT_EQ(outcome, EExportOutcome::Written);
    EXPECT_EQ(OutcomeAt(folder.Path()), EExportOutcome::NotOpened);
    EXPECT_EQ(OutcomeAt(folder.Path() + "/none/file"), EExportOutcome::NotOpened);
    EXPECT_EQ(OutcomeAt("/dev/full"), EExportOutcome::Torn);
    ASSERT_EQ(mkfifo((folder.Path() + "/pipe").c_str(), 0600), 0);
    EXPECT_EQ(OutcomeAt(folder.Path() + "/pipe"), EExportOutcome::NotOpened) << "it has no reader";
}

TEST_F(CExportText, AFileThatCannotTakeAllKeepsWhatItHeld) {
    std::ofstream(path) << "precious\n";
    const rlimit before = Limit();
    SetLimit({12, before.rlim_max}); // Longer than what is there, shorter than what comes.
    const EExportOutcome replaced = OutcomeAt(path), appended = OutcomeAt(path, true);
    SetLimit(before);
    EXPECT_EQ(replaced, EExportOutcome::Failed);
    EXPECT_EQ(appended, EExportOutcome::Failed);
    EXPECT_EQ(File(path), "precious\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1) << "something was left there";
}

TEST_F(CExportText, AReplacedFileIsFollowedThroughItsLinkAndKeepsItsMode) {
    std::ofstream(path) << "old\n";
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const std::string link = folder.Path() + "/link";
    ASSERT_EQ(symlink(path.c_str(), link.c_str()), 0);
    EXPECT_EQ(OutcomeAt(link), EExportOutcome::Written);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(File(path), ExportText(doc, {}, true));
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST_F(CExportText, OnlyUtf8TurnsTheTickTrendIntoSigns) {
    doc.DeleteRows(2, 9);
    doc.Update()->Columns().Clear();
    doc.Update()->SetColumnsByName("Symbol;Tick Trend;Notes;");
    doc.Update()->Notes().Set(1, "\xE9 \xAD");
    for (const char* tick : {"173", "183", "175"}) FeedSets("IBM", "Tick", tick); // The newest comes first.
    SExportOptions options;
    EXPECT_EQ(FileAfter(options), "Symbol,Tick Trend,Notes\nIBM,\xAF\xB7\xAD,\xE9 \xAD\n");
    options.utf8 = true;
    EXPECT_EQ(FileAfter(options), "Symbol,Tick Trend,Notes\nIBM,\u25BC\u2022\u25B2,\u00E9 \u00AD\n");
    EXPECT_EQ(CopyText(doc, {1, 1, 1, 3}), "IBM\t\u25BC\u2022\u25B2\t\u00E9 \u00AD\r\n");
    doc.Update()->SetAnnotation(1, "\xB7 a heading");
    doc.Update()->Columns().SetWidth(1, 0);
    EXPECT_EQ(CopyText(doc, {1, 1, 1, 3}), "\u00B7 a heading\r\n") << "it is in the trend's column";
}
