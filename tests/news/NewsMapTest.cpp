// SPDX-License-Identifier: MIT
#include "news/NewsMap.h"
#include "support/FakeClock.h"

#include <gtest/gtest.h>

#include <limits>

using namespace vx;
using namespace vx::test;

namespace {

class CNewsMapTest : public testing::Test {
protected:
    CNewsMapTest() {
        news.AddSymbol("IBM");
        news.AddSymbol("MSFT");
    }
    int Stories(std::string_view symbol) const { return news.Find(symbol)->storyCount; }

    CNewsMap news;
};

} // namespace

TEST_F(CNewsMapTest, AHeadlineReachesTheSymbolsThatAreInTheList) {
    EXPECT_EQ(news.ApplyHeadline("N,SIM,1001,XYZ:MSFT,20240131 093000,Up, up, and away,"), "MSFT,");
    EXPECT_EQ(Stories("MSFT"), 1);
    EXPECT_EQ(news.HeadlineText("MSFT"), "Up, up, and away,");
    EXPECT_EQ(news.Find("XYZ"), nullptr);
    for (const char* line : {"", "N", "N,SIM,1001,IBM", "N,SIM,1001,IBM,20240131 093000", "N,SIM,1001,,today,no symbol",
                             "N,SIM,1001,ibm,today,other case"})
        EXPECT_EQ(news.ApplyHeadline(line), "") << line;
    EXPECT_EQ(Stories("IBM"), 0);
    const std::string huge = "100%s " + std::string(60'000, 'x');
    EXPECT_EQ(news.ApplyHeadline("N,SIM,1002,MSFT:IBM,today," + huge), "MSFT,IBM,");
    EXPECT_EQ(news.Find("MSFT")->headline, huge);
    EXPECT_EQ(news.HeadlineText("MSFT"), huge.substr(0, 255));
    EXPECT_EQ(Stories("MSFT"), 2);
}

TEST_F(CNewsMapTest, AReplyOnlyRaisesCounts) {
    for (int i = 0; i < 5; ++i) news.ApplyHeadline("N,SIM,1,IBM,today,text");
    news.ApplyCountsReply("<NewsCounts>\r\n<symbol Name=\"IBM\" StoryCount=\"3\"/>"
                          "<other Name='IBM' StoryCount='50'/>text<symbol StoryCount='9'/><symbol Name='IBM'/>"
                          "<symbol Name=\"MSFT\" StoryCount=\"7\"/><symbol Name='XYZ' StoryCount='2'/></NewsCounts>");
    EXPECT_EQ(Stories("IBM"), 5);
    EXPECT_EQ(Stories("MSFT"), 7);
    EXPECT_EQ(news.GetFresh("MSFT"), 0u);
    EXPECT_EQ(news.Find("XYZ"), nullptr);
    news.ApplyCountsReply("<a><symbol Name='MSFT' StoryCount='99999999999'/></a>");
    news.ApplyHeadline("N,SIM,1,MSFT,today,text");
    EXPECT_EQ(Stories("MSFT"), std::numeric_limits<int32_t>::max()) << "does not wrap";
}

TEST_F(CNewsMapTest, AnyOtherReplyChangesNothing) {
    std::string deep, attributes = "<a><b";
    for (int i = 0; i < 60'000; ++i) deep += "<a>", attributes += " a" + std::to_string(i) + "='1'";
    const std::string symbol = "<symbol Name='IBM' StoryCount='3'/>";
    const std::string entities = "<!DOCTYPE a [<!ENTITY x \"&y;&y;&y;&y;\"><!ENTITY y \"&x;\">]>";
    for (const std::string& xml :
         {std::string{}, std::string("no xml"), symbol, "<a>" + symbol, "<a>" + symbol + "</b>", deep,
          "<a>" + symbol + deep, attributes + "/>" + symbol + "</a>", "<a><b>" + symbol + "</b></a>",
          "<a>" + symbol + "<symbol Name='IBM</a>", entities + "<a><symbol Name='&x;' StoryCount='3'/></a>",
          std::string("<a>\0</a>", 8), "<a>" + symbol + std::string(CNewsMap::kMostReplyBytes, ' ') + "</a>",
          std::string("<a><symbol Name='IBM' StoryCount='-3'/><symbol Name='IBM' StoryCount='many'/></a>")}) {
        news.ApplyCountsReply(xml);
        EXPECT_EQ(Stories("IBM"), 0) << xml.substr(0, 80);
    }
    news.ApplyCountsReply(entities + "<a>" + symbol + "<symbol Name='M&#83;FT' StoryCount='4'/></a>");
    EXPECT_EQ(Stories("IBM"), 3);
    EXPECT_EQ(Stories("MSFT"), 4);
}

TEST(NewsRequest, AsksForTheSymbolsOfToday) {
    CFakeClock clock;
    clock.now = {2024, 3, 7, 23, 59, 0, 0};
    const std::vector<std::string> symbols{"IBM", "", "A,B", "A:B", "A\nB", std::string(100'000, 'A'), "BRK.B", "/ES"};
    EXPECT_EQ(NewsCountsRequests(symbols), (std::vector<std::string>{"NSC,IBM:BRK.B:/ES,x,,20240307,LNewsCounts\r\n"}));
    // A huge list, in several lines that a peer takes.
    std::vector<std::string> many;
    std::string expected, all;
    for (size_t i = 1000; i < 2501; ++i) {
        many.push_back(std::to_string(i) + std::string(i % 2 * 1000, 'x'));
        expected += many.back() + ':';
    }
    for (const std::string& request : NewsCountsRequests(many)) {
        EXPECT_LE(request.size(), kMostNewsRequestBytes);
        all += request.substr(4, request.find(",x,,") - 4) + ':';
    }
    EXPECT_EQ(all, expected) << "every symbol once, in its order";
}
