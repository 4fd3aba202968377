// SPDX-License-Identifier: MIT
#include "feed/session/FeedSession.h"
#include "feed/socket/ClientAppSocket.h"
#include "support/LogEvents.h"
#include "support/ReadsSocket.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

struct CLookupRepliesTest : testing::Test, CNewsCountsReceiver {
    CTempFolder folder;
    CRegistry registry{folder.Path()};
    CFeedSession session{registry};
    CReadsSocket<CZantrelClientAppSocket> lookup{0u};
    CSearchResults& search = session.LookupReplies().search;
    std::vector<std::string> counts;

    CLookupRepliesTest() {
        lookup.SetOwner(&session);
        session.LookupReplies().newsCounts.SetReceiver(this);
    }
    void OnNewsCounts(std::string_view xml) override { counts.emplace_back(xml); }
    void Reads(std::string_view bytes) { lookup.Read(bytes); }
    void Sends() { search.Clear(), search.Expect(); }
    std::string Found() {
        std::string symbols;
        for (const SSearchResult& result : search.Results()) symbols += result.symbol + " ";
        return symbols;
    }
};

} // namespace

TEST(SymbolSearchRequest, CarriesTextAndOneFilter) {
    using enum ESearchBy;
    EXPECT_EQ(SymbolSearchRequest(Symbol, "IBM", "", ""), "SBF,s,IBM,,,LSearch\r\n");
    EXPECT_EQ(SymbolSearchRequest(Description, "gold mine", "7 11", ""), "SBF,d,gold mine,e,7 11,LSearch\r\n");
    EXPECT_EQ(SymbolSearchRequest(Symbol, "IBM", "7", "1"), "SBF,s,IBM,e,7,LSearch\r\n");
    EXPECT_EQ(SymbolSearchRequest(Symbol, "A,B\r\nSLM\t%s\xE9", "7,8", ""), "SBF,s,A B  SLM %s\xE9,e,7 8,LSearch\r\n");
}

TEST_F(CLookupRepliesTest, GoWhereTheirFirstThreeCharactersSay) {
    Reads("LSearch,LS,IBM,7,1,Intl "
          "Machines,\r\nLNewsCounts,LN,<a>\r\nLSearch,LS,X,8,2,Last\r\nE,!NO_DATA!,,,,,\r\n!SYNTAX_ERROR!,\r\n"
          "LSearch,LS,five,8,2,\r\nLSX,LS,no,1,1,no,\r\nLNewsCounts,LN,</a>\r\nLSearch,!ENDMSG!,\r\n"
          "LNewsCounts,!ENDMSG!,\r\n");
    EXPECT_THAT(search.Results(),
                ElementsAre(SSearchResult{"IBM", "Intl Machines", "7", "1"}, SSearchResult{"X", "Last", "8", "2"}));
    EXPECT_TRUE(search.Ended());
    EXPECT_THAT(counts, ElementsAre("<a></a>"));
}

TEST_F(CLookupRepliesTest, ASearchWithoutResultsSaysSoOnce) {
    Reads("LSearch,!ENDMSG!,\nLSearch,!ENDMSG!,\n");
    EXPECT_THAT(search.Results(), ElementsAre(SSearchResult{"No Results Found", "", "", ""}));
    session.SymbolSearch(ESearchBy::Symbol, "", "", "");
    EXPECT_THAT(search.Results(), SizeIs(1)) << "an empty text is no search";
    EXPECT_FALSE(session.SymbolSearch(ESearchBy::Symbol, "IBM", "", "")) << "there is no lookup port";
    Reads("LSearch,!ENDMSG\nLSearch,LS,a,,,\nLSearch\n");
    EXPECT_THAT(search.Results(), IsEmpty());
    EXPECT_FALSE(search.Ended());
}

TEST_F(CLookupRepliesTest, AFormerSearchesReplyGivesWayToThePresentOne) {
    Sends();
    Sends();
    Reads("LSearch,LS,B,,,b,\nLSearch,!ENDMSG!,\n");
    EXPECT_EQ(Found(), "B ") << "the former search may never be answered";
    Reads("LSearch,LS,C,,,c,\n");
    EXPECT_EQ(Found(), "C ");
    EXPECT_FALSE(search.Ended());
    Reads("LSearch,!ENDMSG!,\nLSearch,LS,D,,,d,\nLSearch,!ENDMSG!,\n");
    EXPECT_EQ(Found(), "C D ") << "nothing more is owed";
}

TEST_F(CLookupRepliesTest, ARepliesSizeIsBounded) {
    const CLogEvents log("LookupError");
    for (size_t i = 0; i <= CSearchResults::kMostResults + 1; ++i) Reads("LSearch,LS,IBM,7,1,d,\n");
    EXPECT_THAT(search.Results(), SizeIs(CSearchResults::kMostResults));
    search.Clear();
    Reads("LSearch,LS,IBM,7,1," + std::string(60000, 'd') + ",\n");
    EXPECT_EQ(search.Results()[0].description, std::string(CSearchResults::kMostTextBytes, 'd'));

    const std::string line = "LNewsCounts,LN," + std::string(65000, 'n') + "\n";
    for (size_t bytes = 0; bytes <= CNewsCountsReply::kMostBytes + 200000; bytes += 65000) Reads(line);
    Reads("LNewsCounts,!ENDMSG!,\n");
    EXPECT_THAT(counts, IsEmpty()) << "a part of a reply would not be one";
    Reads("LNewsCounts,LN,next\nLNewsCounts,!ENDMSG!,\n");
    EXPECT_THAT(counts, ElementsAre("next"));
    EXPECT_THAT(log.texts,
                ElementsAre("LookupError STATUS Lookup: a search has more than 10000 results",
                            "LookupError STATUS Lookup: a reply with news counts has more than 16777216 bytes"));
}
