#include "settings/Settings.h"
#include "support/ChildProcess.h"
#include "watchlist/FileFixture.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class WatchlistSave : public CFileFixture {
protected:
    WatchlistSave() { OpenAs("banks.vxw", "Symbols=JPM:1,;\r\n"); }

    mode_t ModeOf(const std::string& path) const {
        struct stat status {};
        return lstat(path.c_str(), &status) == 0 ? status.st_mode : 0;
    }
    std::vector<std::string> GenerationTexts() const {
        std::vector<std::string> out;
        for (const SGeneration& generation : file.Generations()) out.push_back(ReadFile(generation.path));
        return out;
    }
};

} // namespace

TEST_F(WatchlistSave, WritesTheFileAndKeepsWhatItReplaces) {
    Change(2, "BAC");
    shown.statuses.clear();
    ASSERT_TRUE(Save().IsDone());
    EXPECT_EQ(ReadFile(At("banks.vxw")), Written());
    EXPECT_FALSE(doc.IsModified());
    EXPECT_EQ(shown.statuses.front(), "Saving Watchlist \"" + At("banks.vxw") + "\"");
    EXPECT_EQ(shown.Status(), doc.StatusText());
    EXPECT_EQ(settings.ReadText(kMyWatchlists), files.Path() + "/");
    EXPECT_THAT(GenerationTexts(), ElementsAre("Symbols=JPM:1,;\r\n"));
    EXPECT_THAT(files.Files(), ElementsAre("banks.vxw"));

    Save();
    EXPECT_EQ(file.Generations().size(), 1u) << "a save that changed nothing pushed a generation out";
    std::string second = Written();
    for (int i = 0; i < 6; ++i) {
        Change(3, fmt::format("S{}", i));
        if (i == 5) second = ReadFile(At("banks.vxw"));
        Save();
    }
    ASSERT_EQ(file.Generations().size(), CFileGenerations::kKept);
    EXPECT_EQ(GenerationTexts().front(), second);
    EXPECT_EQ(file.Generations().front().number, 7);
    EXPECT_EQ(file.Generations().front().bytes, second.size());
    EXPECT_GT(file.Generations().front().savedAt, 1'600'000'000);
}

TEST_F(WatchlistSave, UnderAnotherNameTakesOverNameAndTitle) {
    ASSERT_TRUE(SaveAs("more.banks.vxw").IsDone());
    EXPECT_EQ(file.Path(), At("more.banks.vxw"));
    EXPECT_EQ(shown.title, "more.banks");
    EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=JPM:1,;\r\n");
    EXPECT_THAT(file.Generations(), IsEmpty());
}

TEST_F(WatchlistSave, FollowsLinksAndKeepsPermissions) {
    std::filesystem::create_symlink("banks.vxw", At("link.vxw"));
    std::filesystem::create_symlink(At("new.vxw"), At("to_nothing.vxw"));
    chmod(At("banks.vxw").c_str(), 0640);
    ASSERT_TRUE(SaveAs("link.vxw").IsDone());
    EXPECT_EQ(ReadFile(At("banks.vxw")), Written());
    EXPECT_TRUE(S_ISLNK(ModeOf(At("link.vxw"))));
    EXPECT_EQ(ModeOf(At("banks.vxw")) & 0777, 0640u);
    EXPECT_THAT(GenerationTexts(), ElementsAre("Symbols=JPM:1,;\r\n"));
    ASSERT_TRUE(SaveAs("to_nothing.vxw").IsDone());
    EXPECT_EQ(ReadFile(At("new.vxw")), Written());
    const std::string longest(251, 'n');
    EXPECT_TRUE(SaveAs(longest + ".vxw").IsDone());
}

TEST_F(WatchlistSave, AFileThatAnotherProgramChangedIsNotOverwrittenUnasked) {
    WriteFile(At("banks.vxw"), "Symbols=JPM:1,;\r\n");
    EXPECT_TRUE(Save().IsDone()) << "the same content written again is no change";
    WriteFile(At("banks.vxw"), "Symbols=BAC:1,;\r\n");
    Change(2, "GS");
    const SFileResult asked = Save();
    EXPECT_EQ(asked.outcome, EFileOutcome::ChangedOnDisk);
    EXPECT_THAT(asked.error, HasSubstr("banks.vxw"));
    EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=BAC:1,;\r\n");
    EXPECT_TRUE(doc.IsModified());
    EXPECT_TRUE(file.Save({}, {.overwriteChanged = true}).IsDone());
    EXPECT_THAT(GenerationTexts(), ElementsAre("Symbols=BAC:1,;\r\n", "Symbols=JPM:1,;\r\n"));
    std::filesystem::remove(At("banks.vxw"));
    EXPECT_TRUE(Save().IsDone()) << "a file that is gone is made again";
    file.Forget();
    EXPECT_EQ(Save().outcome, EFileOutcome::Failed);
}

TEST_F(WatchlistSave, AFormerContentThatCannotBeKeptIsNotReplacedUnasked) {
    std::filesystem::remove_all(state / "generations");
    WriteFile(state / "generations", "in the way");
    Change(2, "GS");
    for (const SFileResult& asked : {Save(), SaveAs("banks.vxw")}) {
        EXPECT_EQ(asked.outcome, EFileOutcome::FormerNotKept);
        EXPECT_EQ(asked.error, fmt::format("The former content of \"{}\" could not be kept: a part of its path is no "
                                           "folder.",
                                           At("banks.vxw")));
        EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=JPM:1,;\r\n");
        EXPECT_TRUE(doc.IsModified());
    }
    WriteFile(At("banks.vxw"), "Symbols=BAC:1,;\r\n");
    EXPECT_EQ(file.Save({}, {.withoutFormer = true}).outcome, EFileOutcome::ChangedOnDisk);
    EXPECT_EQ(file.Save({}, {.overwriteChanged = true}).outcome, EFileOutcome::FormerNotKept);
    EXPECT_TRUE(SaveAs("new.vxw").IsDone()) << "nothing is replaced";
    const SFileResult agreed = file.SaveAs(At("banks.vxw"), {}, {.withoutFormer = true});
    EXPECT_TRUE(agreed.IsDone());
    EXPECT_THAT(agreed.notices, ElementsAre(HasSubstr("could not be kept")));
    EXPECT_EQ(ReadFile(At("banks.vxw")), Written());
}

TEST_F(WatchlistSave, WhatIsNoFileIsNeitherOpenedNorReplaced) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(At("folder"));
    std::filesystem::create_symlink("loop", At("loop"));
    struct SCase {
        std::string path;
        const char* reason;
    };
    for (const SCase& c : {SCase{At("pipe"), "it is no file but a pipe, a device or a socket."},
                           {At("folder"), "it is a folder."},
                           {"/dev/zero", "it is no file but a pipe, a device or a socket."},
                           {At("banks.vxw/x"), "a part of its path is no folder."},
                           {At("loop"), "its links lead nowhere."}}) {
        Change(2, "GS");
        const std::string before = Written();
        for (const SFileResult& result : {file.Open(c.path), file.SaveAs(c.path, {})}) {
            EXPECT_EQ(result.outcome, EFileOutcome::Failed) << c.path;
            EXPECT_THAT(result.error, StartsWith("The watchlist \"" + c.path + "\" could not be ")) << c.path;
            EXPECT_THAT(result.error, HasSubstr(c.reason)) << c.path;
        }
        EXPECT_EQ(Written(), before);
        EXPECT_TRUE(doc.IsModified());
        EXPECT_EQ(file.Path(), At("banks.vxw"));
    }
    EXPECT_THAT(file.Open(At("none.vxw")).error, HasSubstr("there is no such file or folder."));
    EXPECT_THAT(SaveAs("none/list.vxw").error, HasSubstr("there is no such file or folder."));
    ASSERT_EQ(truncate(At("banks.vxw").c_str(), CWatchlistFile::kMostBytes + 1), 0);
    EXPECT_THAT(file.Open(At("banks.vxw")).error, HasSubstr("it is larger than 256 MB, which no watchlist is."));
    EXPECT_TRUE(S_ISFIFO(ModeOf(At("pipe"))));
}

TEST_F(WatchlistSave, WithoutPermissionTheOldFileStaysAndTheDocumentIsModified) {
    Change(2, "BAC");
    const auto fails = [&](const std::string& path) {
        const SFileResult result = file.SaveAs(path, {}, {.withoutFormer = true});
        const bool named = result.error.find("could not be saved: you are not allowed to.") != std::string::npos;
        return !result.IsDone() && named && doc.IsModified();
    };
    // Modes that stop the owner too: the tests may run as an ordinary user themselves.
    for (const std::string& path : {folder.Path(), state.Path()}) chmod(path.c_str(), 0755);
    chmod(files.Path().c_str(), 0555);
    chmod(At("banks.vxw").c_str(), 0644);
    EXPECT_EQ(RunAsOrdinaryUser([&] { return fails(At("banks.vxw")) && fails(At("new.vxw")) ? 0 : 1; }), 0);
    chmod(files.Path().c_str(), 0777);
    chmod(At("banks.vxw").c_str(), 0444);
    EXPECT_EQ(RunAsOrdinaryUser([&] { return fails(At("banks.vxw")) ? 0 : 1; }), 0);
    chmod(At("banks.vxw").c_str(), 0000);
    EXPECT_EQ(RunAsOrdinaryUser([&] { return file.Open(At("banks.vxw")).IsDone() ? 1 : 0; }), 0);
    chmod(At("banks.vxw").c_str(), 0644);
    EXPECT_EQ(ReadFile(At("banks.vxw")), "Symbols=JPM:1,;\r\n");
    EXPECT_THAT(files.Files(), ElementsAre("banks.vxw"));
}

TEST_F(WatchlistSave, WhatTheFileCannotCarryIsNamedAndComesBack) {
    doc.PlaceSymbol(4, "LSE:VOD");
    doc.PlaceSymbol(5, "A;B");
    doc.SetAnnotation(6, "buy; sell; hold");
    doc.Notes().Set(1, "in the file");
    doc.Notes().Set(9, "far\r\ndown \xFC");
    A_INFO alert;
    alert.enabled = 1;
    alert.value = 1e-7;
    alert.fieldId = FieldIndex("Last") - 1;
    alert.condition = 4;
    doc.Alerts().Add("LSE:VOD", alert);
    doc.Alerts().Add("JPM", alert);
    const SFileResult result = Save();
    ASSERT_TRUE(result.IsDone());
    EXPECT_THAT(result.uncarried,
                ElementsAre("The note of row 9: the file holds notes up to row 2, the number of notes in the list.",
                            StartsWith("The symbols of rows 4 and 5, beginning with \"LSE:VOD\":"),
                            StartsWith("The whole text of the annotation of row 6:"),
                            StartsWith("1 alert, beginning with one of \"LSE:VOD\":"),
                            StartsWith("The whole threshold of 1 alert, beginning with one of \"JPM\":")));
    EXPECT_EQ(WrittenLine("Symbols"), "JPM:1,;");
    EXPECT_EQ(WrittenLine("Annotations"), "6:#buy;");
    EXPECT_EQ(WrittenLine("Notes"), "1:in the file;");
    EXPECT_EQ(WrittenLine("Alerts"), "JPM:Last,<=,0.000000,TRUE,FALSE,0,FALSE,;");

    doc.NewDocument();
    ASSERT_TRUE(file.Open(At("banks.vxw")).IsDone());
    EXPECT_EQ(doc.RowSymbol(4), "LSE:VOD");
    EXPECT_EQ(doc.RowSymbol(5), "A;B");
    EXPECT_EQ(doc.AnnotationText(6), "buy; sell; hold");
    EXPECT_EQ(doc.Notes().Get(9), "far\r\ndown \xFC");
    EXPECT_THAT(doc.Alerts().Get("LSE:VOD"), ElementsAre(alert));
    EXPECT_THAT(doc.Alerts().Get("JPM"), ElementsAre(alert));
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(WatchlistSave, AlertsThatTheFileRoundsIntoOneComeBackInTheirOrder) {
    for (const double threshold : {1e-7, 5.0, 2e-7, 0.0}) {
        A_INFO alert;
        alert.value = threshold;
        alert.fieldId = FieldIndex("Last") - 1;
        alert.condition = 4;
        doc.Alerts().Add("JPM", alert);
    }
    const CAlertArray before = doc.Alerts().Get("JPM");
    EXPECT_THAT(Save().uncarried, ElementsAre(StartsWith("The whole threshold of 2 alerts,")));
    file.Open(At("banks.vxw"));
    EXPECT_EQ(doc.Alerts().Get("JPM"), before);
}

TEST_F(WatchlistSave, HiddenColumnsComeBackWithAllThatStandsByColumn) {
    OpenAs("list.vxw", "Columns=Symbol:700;Last:700;Bid:700;Ask:700;Volume:700;\r\nSymbols=JPM:1,;\r\n");
    for (const int column : {2, 3, 4}) {
        SCellFormat format;
        format.fontSizePt = 10 + column;
        doc.Formats().Set(1, column, format);
    }
    doc.Options().sort.column = 4;
    doc.Options().lockedColumns = 3;
    doc.Columns().SetWidth(2, 0);
    const auto layout = [&] {
        std::string out = fmt::format("{} {}", doc.Options().sort.column, doc.Options().lockedColumns);
        for (const sColumnInfo& column : doc.Columns().Columns())
            out += fmt::format(" {}={}", column.name, column.width);
        return out + doc.Formats().Write();
    };
    const std::string before = layout();
    EXPECT_THAT(Save().uncarried, ElementsAre(StartsWith("The column \"Last\":")));
    EXPECT_EQ(WrittenLine("Columns"), "Symbol:700;Bid:700;Ask:700;Volume:700;");
    file.Open(At("list.vxw"));
    EXPECT_EQ(layout(), before);

    const std::string text = Written();
    ASSERT_TRUE(OpenAs("elsewhere.vxw", text).IsDone());
    EXPECT_EQ(doc.Options().sort.column, 3) << "without the hidden one the columns that are left keep what is theirs";
    EXPECT_EQ(doc.Options().lockedColumns, 2);
    EXPECT_EQ(doc.Formats().Effective(1, 2).fontSizePt, 13);
    EXPECT_EQ(doc.Formats().Effective(1, 3).fontSizePt, 14);
    EXPECT_EQ(Written(), text);
    doc.Columns().SetWidth(3, 0);
    EXPECT_EQ(WrittenLine("Sort").substr(0, 3), "-1;");
    for (int column = 1; column < doc.Columns().Count(); ++column) doc.Columns().SetWidth(column, 0);
    SaveAs("elsewhere.vxw");
    file.Open(At("elsewhere.vxw"));
    EXPECT_EQ(doc.Columns().Count(), 5);
    EXPECT_EQ(doc.Columns().At(1).width, 0);
}

TEST_F(WatchlistSave, AFormerContentComesBackWithWhatItsFileCouldNotCarry) {
    doc.Notes().Set(9, "far");
    ASSERT_TRUE(Save().IsDone());
    doc.PlaceSymbol(2, "GS");
    doc.Notes().Remove(9);
    ASSERT_TRUE(Save().IsDone());
    ASSERT_THAT(file.Generations(), testing::Not(IsEmpty()));
    const std::string former = file.Generations().front().path;
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(file.Open(former).IsDone());
        EXPECT_EQ(doc.RowSymbol(2), "");
        EXPECT_EQ(doc.Notes().Get(9), "far");
    }
}

TEST_F(WatchlistSave, WhatIsKeptBelongsToOneContentOfOneFile) {
    doc.Notes().Set(9, "far");
    Save();
    const std::string text = ReadFile(At("banks.vxw"));
    std::filesystem::rename(At("banks.vxw"), At("moved.vxw"));
    file.Open(At("moved.vxw"));
    EXPECT_EQ(doc.Notes().Get(9), "far") << "the file was moved";
    std::filesystem::copy(At("moved.vxw"), At("copy.vxw"));
    file.Open(At("copy.vxw"));
    EXPECT_EQ(doc.Notes().Get(9), "") << "a copy is another file";

    file.Open(At("moved.vxw"));
    WriteFile(At("moved.vxw"), text + "Symbols=GS:2,;\r\n");
    EXPECT_THAT(file.Open(At("moved.vxw")).notices, ElementsAre(HasSubstr("changed by another program")));
    EXPECT_EQ(doc.Notes().Get(9), "");
    WriteFile(At("moved.vxw"), text);
    file.Open(At("moved.vxw"));
    EXPECT_EQ(doc.Notes().Get(9), "far");
    doc.Notes().Remove(9);
    Save();
    EXPECT_EQ(ReadFile(At("moved.vxw")), text);
    file.Open(At("moved.vxw"));
    EXPECT_EQ(doc.Notes().Get(9), "") << "a note that was deleted came back";
    Change(3, "GS");
    Save();
    EXPECT_THAT(file.Open(At("moved.vxw")).notices, IsEmpty()) << "nobody else changed the file";
}

TEST_F(WatchlistSave, RejectedSymbolsStandBehindTheOthersAndNotAmongTheAnnotations) {
    OpenAs("list.vxw", "Symbols=NOPE:1,5,;IBM:2,;\r\nAnnotations=3:#a;\r\n");
    doc.SymbolNotFound("NOPE");
    EXPECT_EQ(WrittenLine("Symbols"), "IBM:2,;NOPE:1,5,;");
    EXPECT_EQ(WrittenLine("Annotations"), "3:#a;");
    doc.PlaceSymbol(1, "GS");
    doc.PlaceSymbol(5, "GS");
    EXPECT_EQ(WrittenLine("Symbols"), "GS:1,5,;IBM:2,;") << "a rejected symbol that stands nowhere is not written";
}
