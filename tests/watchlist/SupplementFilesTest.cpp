// SPDX-License-Identifier: MIT
// What older versions of the program kept beside a file comes back once, and is in the file from the next save on.

#include "base/Hash.h"
#include "watchlist/FileFixture.h"
#include "watchlist/file/StateFiles.h"

using namespace vx;
using namespace vx::test;

namespace {

constexpr std::string_view kFileText = "LockedColumns=1\r\nSort=2;TRUE;FALSE;5\r\nColumns=Symbol:700;Bid:700;\r\n"
                                       "Symbols=JPM:1,;\r\nAnnotations=6:#buy;\r\n"
                                       "Alerts=JPM:Last,<=,0.000000,TRUE,FALSE,0,FALSE,;\r\n";
constexpr std::string_view kSupplement = "zantrel watchlist supplement 1\n"
                                         "note 9 \"far\\r\\ndown \\xFC\"\n"
                                         "symbol 4 \"LSE:VOD\"\n"
                                         "annotation 6 \"#buy; sell; hold\"\n"
                                         "alert \"JPM\" \"Last\" \"\" 1e-07 4 1 0 0 0\n"
                                         "column 70 \"Symbol\"\n"
                                         "column 0 \"Last\"\n"
                                         "column 70 \"Bid\"\n"
                                         "sorted 3\n"
                                         "locked 2\n"
                                         "formats \"0,0:-1,-1,32768,192,-1,0,0,0,Arial,FALSE,FALSE,9,Left,4,TRUE,;\"\n"
                                         "hidden 3-5,8\n"
                                         "end\n";

class CSupplementFilesTest : public CFileFixture {
protected:
    /// Puts a file with its supplement where an older version has left them.
    void Leave(std::string_view name, std::string_view text, std::string_view supplement = kSupplement) {
        WriteFile(At(name), text);
        std::filesystem::create_directories(state / "recovery");
        WriteFile(Place(name, text), fmt::format("path {}\n{}", PathKey(At(name)), supplement));
    }
    std::string Place(std::string_view name, std::string_view text) const {
        return fmt::format("{}/recovery/{}-{}.supplement", state.Path(), HashName(ContentHash(PathKey(At(name)))),
                           HashName(ContentHash(text)));
    }
    SFileResult Open(std::string_view name) { return file.Open(At(name)); }
    std::vector<std::string> Left() const {
        std::vector<std::string> out;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(state.Path()))
            if (entry.path().extension() == ".supplement")
                out.push_back(entry.path().lexically_relative(state.Path()).string().substr(0, 5));
        return out;
    }
    void ExpectAll() const {
        EXPECT_EQ(doc.Notes().Get(9), "far\r\ndown \xFC");
        EXPECT_EQ(Row(4) + Row(6), "LSE:VOD#buy; sell; hold");
        ASSERT_EQ(doc.Alerts().Count("JPM"), 1);
        EXPECT_EQ(doc.Alerts().Get("JPM")[0].value, 1e-7);
        EXPECT_EQ(Columns(), "Symbol=70 Last=0 Bid=70 ");
        EXPECT_EQ(doc.Options().sort.column, 3);
        EXPECT_EQ(doc.Options().lockedColumns, 2);
        EXPECT_THAT(doc.HiddenRows(), ElementsAre(3, 4, 5, 8));
    }
};

} // namespace

TEST_F(CSupplementFilesTest, AreReadAndGoWithTheNextSaveWhichPutsThemIntoTheFile) {
    Leave("list.vxw", kFileText);
    EXPECT_THAT(Open("list.vxw").notices, IsEmpty());
    ExpectAll();
    EXPECT_THAT(Left(), ElementsAre("recov")) << "nothing goes before its content is in the file";
    Change(2, "GS");
    const std::string all = Written();
    ASSERT_TRUE(Save().IsDone());
    EXPECT_THAT(Left(), ElementsAre("gener"));
    EXPECT_THAT(Open("list.vxw").notices, IsEmpty());
    EXPECT_EQ(Written(), all);
    ASSERT_TRUE(file.OpenBackup(file.Backups().front()).IsDone());
    EXPECT_TRUE(doc.IsModified());
    ExpectAll();
    EXPECT_EQ(doc.RowSymbol(2), "");
    for (int i = 0; i < 6; ++i) {
        Change(3, fmt::format("S{}", i));
        Save();
    }
    EXPECT_THAT(Left(), IsEmpty()) << "it outlives the former content";
}

TEST_F(CSupplementFilesTest, BelongToOneContentOfOneFile) {
    Leave("list.vxw", kFileText);
    std::filesystem::copy(At("list.vxw"), At("copy.vxw"));
    Open("copy.vxw");
    EXPECT_EQ(doc.Notes().Get(9), "") << "a copy is another file";
    std::filesystem::rename(At("list.vxw"), At("moved.vxw"));
    Open("moved.vxw");
    ExpectAll();

    WriteFile(At("list.vxw"), std::string(kFileText) + "Symbols=GS:2,;\r\n");
    EXPECT_THAT(Open("list.vxw").notices, ElementsAre(HasSubstr("changed by another program")));
    EXPECT_EQ(doc.Notes().Get(9), "");
    Leave("list.vxw", kFileText, kSupplement.substr(0, kSupplement.size() - 4));
    EXPECT_THAT(Open("list.vxw").notices, ElementsAre(HasSubstr("is damaged")));
    for (const char* line : {"hidden 3-2", "hidden 5,4", "hidden 1-100001", "hidden x", "note 0 \"a\""})
        EXPECT_FALSE(ParseSupplement(std::string("zantrel watchlist supplement 1\n") + line + "\nend\n")) << line;
}
