#include "watchlist/DocFixture.h"

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class CDocNews : public CDocFixture {
protected:
    void HeadlineFor(std::string_view symbols) {
        doc.OnNewsLine("N,SIM,1001," + std::string(symbols) + ",20240131 093000,Up, and away");
    }
};

constexpr std::string_view kCounts = "<NewsCounts><symbol Name=\"IBM\" StoryCount=\"3\"/></NewsCounts>";

} // namespace

TEST_F(CDocNews, CountsAreAskedForWhenSymbolsAreSubscribedAndOnlyThen) {
    Open("Symbols=IBM:1,2,;MSFT:3,;IBM--NYS:4,;\r\n");
    EXPECT_THAT(counts.Take(), IsEmpty());
    FeedIsReady();
    const std::vector<std::string> lists = counts.Take();
    ASSERT_EQ(lists.size(), 1u) << "one request for all symbols";
    EXPECT_TRUE(lists[0] == "IBM:MSFT" || lists[0] == "MSFT:IBM") << lists[0];
    FeedIsReady();
    EXPECT_THAT(counts.Take(), IsEmpty());
    doc.PlaceCommandLineSymbols({"A", "B", "A"});
    EXPECT_THAT(counts.Take(), ElementsAre("A:B"));
}

TEST_F(CDocNews, AHeadlineChangesTheRowsOfItsSymbolsAtTheNextRepaint) {
    FeedIsReady();
    Open("Symbols=IBM:1,3,;MSFT:2,;\r\n");
    doc.OnPaintMessage();
    doc.RepaintChangedRows();
    shown.TakeRows();
    shown.pending = false;
    HeadlineFor("NONE:IBM");
    EXPECT_TRUE(shown.pending);
    EXPECT_THAT(shown.TakeRows(), IsEmpty());
    doc.RepaintChangedRows();
    EXPECT_THAT(shown.TakeRows(), UnorderedElementsAre(1, 3));
    EXPECT_EQ(doc.News().HeadlineText("IBM"), "Up, and away");
    const int rebuilds = shown.rebuilds;
    doc.OnNewsCounts(kCounts);
    EXPECT_GT(shown.rebuilds, rebuilds) << "the counts were not shown";
    EXPECT_EQ(doc.News().CountText("IBM"), "3");
    shown.pending = false;
    HeadlineFor("NONE");
    doc.OnNewsLine("N,broken");
    EXPECT_FALSE(shown.pending);
}

TEST_F(CDocNews, ASymbolThatComesBackCountsAnew) {
    FeedIsReady();
    doc.Update()->EnterSymbol(1, "IBM");
    HeadlineFor("IBM");
    doc.Update()->EnterSymbol(2, "IBM");
    EXPECT_EQ(doc.News().GetFresh("IBM"), 1u) << "a second row is no new symbol";
    doc.DeleteRows(1, 2);
    doc.Update()->EnterSymbol(1, "IBM");
    EXPECT_EQ(doc.News().GetFresh("IBM"), 0u);
    EXPECT_EQ(doc.News().CountText("IBM"), "");
    EXPECT_EQ(doc.News().HeadlineText("IBM"), "Up, and away");
}

TEST_F(CDocNews, AlertsOutliveTheLastRowAndAreJudgedAgainWhenTheSymbolReturns) {
    FeedIsReady();
    doc.Update()->EnterSymbol(1, "IBM");
    A_INFO alert;
    alert.enabled = 1;
    alert.fieldId = FieldIndex("Last") - 1;
    alert.condition = 1;
    alert.value = 100;
    doc.AlertRules().Add("IBM", alert);
    doc.DeleteRows(1, 1);
    FeedSets("IBM", "Last", "150");
    EXPECT_EQ(doc.Alerts().ArmedCount("IBM"), 1) << "judged although nobody watches";
    doc.Update()->EnterSymbol(1, "IBM");
    FeedSets("IBM", "Last", "150");
    EXPECT_EQ(doc.Alerts().ArmedCount("IBM"), 0);
}
