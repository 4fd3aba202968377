#include "base/Log.h"
#include "feed/ClientAppSocket.h"
#include "feed/FeedSession.h"
#include "feed/ReadsSocket.h"
#include "support/EventLoop.h"
#include "support/FakeClock.h"
#include "support/ScriptedFeed.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

struct LookupReplies : testing::Test, CNewsCountsReceiver {
    CTempFolder folder;
    CRegistry registry{folder.Path()};
    CFeedSession session{registry};
    CReadsSocket<CZantrelClientAppSocket> lookup{0u};
    std::vector<std::string> counts;
    std::vector<std::string> errors;
    LogSink previousSink;

    LookupReplies() {
        lookup.SetOwner(&session);
        session.LookupReplies().newsCounts.SetReceiver(this);
        previousSink = SetLogSink([this](const SLogEvent& event) {
            if (event.category == ELogCategory::LookupError) errors.push_back(event.text);
        });
    }
    ~LookupReplies() override { SetLogSink(previousSink); }

    void OnNewsCounts(std::string_view xml) override { counts.emplace_back(xml); }
    void Reads(std::string_view bytes) { lookup.Read(bytes); }
    const CSearchResults& Search() { return session.LookupReplies().search; }
    const std::vector<SSearchResult>& Results() { return Search().Results(); }
};

} // namespace

TEST(SymbolSearchRequest, CarriesTextAndOneFilter) {
    using enum ESearchBy;
    EXPECT_EQ(SymbolSearchRequest(Symbol, "IBM", "", ""), "SBF,s,IBM,,,LSearch\r\n");
    EXPECT_EQ(SymbolSearchRequest(Description, "gold mine", "7 11", ""), "SBF,d,gold mine,e,7 11,LSearch\r\n");
    EXPECT_EQ(SymbolSearchRequest(Symbol, "IBM", "", "1"), "SBF,s,IBM,t,1,LSearch\r\n");
    EXPECT_EQ(SymbolSearchRequest(Symbol, "IBM", "7", "1"), "SBF,s,IBM,e,7,LSearch\r\n");
    EXPECT_EQ(SymbolSearchRequest(Symbol, "A,B\r\nSLM\t%s\xE9", "7,8", ""), "SBF,s,A B  SLM %s\xE9,e,7 8,LSearch\r\n");
}

TEST_F(LookupReplies, AreTheSameHoweverTheyAreCut) {
    const std::string bytes = "LSearch,LS,IBM,7,1,Intl Machines,\r\nLNewsCounts,LN,<a>\r\nLSearch,LS,X,8,2,Last\r\n"
                              "LSearch,LS,five,8,2,\r\nLSX,LS,no,1,1,no,\r\nLNewsCounts,LN,</a>\r\n!SYNTAX_ERROR!,\r\n"
                              "LSearch,!ENDMSG!,\r\nLNewsCounts,!ENDMSG!,\r\n";
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        session.LookupReplies().search.Clear();
        counts.clear();
        Reads(bytes.substr(0, cut));
        Reads(bytes.substr(cut));
        ASSERT_THAT(Results(),
                    ElementsAre(SSearchResult{"IBM", "Intl Machines", "7", "1"}, SSearchResult{"X", "Last", "8", "2"}))
            << "cut at " << cut;
        ASSERT_THAT(counts, ElementsAre("<a></a>")) << "cut at " << cut;
        EXPECT_TRUE(Search().Ended());
    }
}

TEST_F(LookupReplies, ASearchWithoutResultsSaysSoOnce) {
    Reads("LSearch,!ENDMSG!,\nLSearch,!ENDMSG!,\n");
    EXPECT_THAT(Results(), ElementsAre(SSearchResult{"No Results Found", "", "", ""}));
    session.SymbolSearch(ESearchBy::Symbol, "", "", "");
    EXPECT_THAT(Results(), SizeIs(1)) << "an empty text is no search";
    EXPECT_FALSE(session.SymbolSearch(ESearchBy::Symbol, "IBM", "", "")) << "there is no lookup port";
    EXPECT_THAT(Results(), IsEmpty());
    EXPECT_FALSE(Search().Ended());
    Reads("LSearch,!ENDMSG\nLSearch,LS,a,,,\nLSearch\n");
    EXPECT_THAT(Results(), IsEmpty());
    Reads("LSearch,LS,,,,d\nLSearch,!ENDMSG!,\n");
    EXPECT_THAT(Results(), ElementsAre(SSearchResult{"", "d", "", ""}));
}

TEST_F(LookupReplies, ASearchGoesOutOnTheLookupPort) {
    CScriptedPort port;
    ASSERT_TRUE(session.CreateFeedSocket(kLookupSlot, 0));
    session.FeedSocket(kLookupSlot)->SetOwner(&session);
    session.FeedSocket(kLookupSlot)->Connect("127.0.0.1", port.Number());
    ASSERT_TRUE(WaitUntil([&] { return session.FeedSocket(kLookupSlot)->IsConnected(); }));
    EXPECT_TRUE(session.SymbolSearch(ESearchBy::Description, "gold", "", ""));
    EXPECT_TRUE(port.Heard("SBF,d,gold,,,LSearch\r\n"));
    EXPECT_EQ(session.FeedSocket(kLookupSlot)->Stats().messagesSent.value, 1u);
    port.Says("LSearch,LS,GLD,1,1,Gold,\r\nLSearch,!ENDMSG!,\r\n");
    EXPECT_TRUE(WaitUntil([&] { return Search().Ended(); }));
    EXPECT_EQ(Results()[0].symbol, "GLD");
}

TEST_F(LookupReplies, AFormerSearchesResultsDoNotMixWithThePresentOnes) {
    CFakeClock clock;
    CSearchResults results;
    const auto search = [&] {
        results.Clear();
        results.Expect();
    };
    const auto reads = [&](std::initializer_list<const char*> lines) {
        for (const char* line : lines) results.OnLine(line);
    };
    search();
    reads({"LSearch,LS,A,,,a,"});
    search();
    search();
    reads({"LSearch,LS,B,,,b,", "LSearch,!ENDMSG!,", "LSearch,LS,C,,,c,"});
    EXPECT_THAT(results.Results(), IsEmpty());
    reads({"LSearch,!ENDMSG!,"});
    EXPECT_FALSE(results.Ended());
    reads({"LSearch,LS,D,,,d,", "LSearch,!ENDMSG!,"});
    EXPECT_THAT(results.Results(), ElementsAre(SSearchResult{"D", "d", "", ""}));
    EXPECT_TRUE(results.Ended());

    search();
    clock.elapsedMs += CSearchResults::kLostMs;
    search();
    reads({"LSearch,LS,E,,,e,", "LSearch,!ENDMSG!,"});
    EXPECT_THAT(results.Results(), SizeIs(1)) << "one that was never answered owes nothing";

    search();
    results.Refuse();
    EXPECT_TRUE(results.IsRefused());
    search();
    EXPECT_FALSE(results.IsRefused());
    reads({"LSearch,LS,F,,,f,", "LSearch,!ENDMSG!,"});
    EXPECT_THAT(results.Results(), SizeIs(1)) << "nor does one that was refused without an end";
    EXPECT_TRUE(results.Ended());
    search();
    results.Refuse();
    reads({"LSearch,!ENDMSG!,"});
    search();
    search();
    reads({"LSearch,!ENDMSG!,"});
    EXPECT_FALSE(results.Ended()) << "a refusal with its end forgives no other";
}

TEST_F(LookupReplies, NewsCountsStandBehindFifteenCharacters) {
    Reads("LNe\nLNewsCounts,LN\nLNewsCounts,LN,\nLNewsCounts,LN,1\nLNe456789012345,<b>,</b>\nx\n");
    EXPECT_THAT(counts, IsEmpty());
    Reads("LNe and then !ENDMSG! anywhere\nLNewsCounts,LN,2\nLNewsCounts,!ENDMSG!,\nLNewsCounts,!ENDMSG!,\n");
    EXPECT_THAT(counts, ElementsAre("1,<b>,</b>", "2", ""));
    session.LookupReplies().newsCounts.SetReceiver(nullptr);
    Reads("LNewsCounts,LN,lost\nLNewsCounts,!ENDMSG!,\n");
    session.LookupReplies().newsCounts.SetReceiver(this);
    Reads("LNewsCounts,LN,3\nLNewsCounts,!ENDMSG!,\n");
    EXPECT_EQ(counts.back(), "3");
}

TEST_F(LookupReplies, ARepliesSizeIsBounded) {
    for (size_t i = 0; i <= CSearchResults::kMostResults + 1; ++i) Reads("LSearch,LS,IBM,7,1,d,\n");
    EXPECT_THAT(Results(), SizeIs(CSearchResults::kMostResults));
    session.LookupReplies().search.Clear();
    Reads("LSearch,LS,IBM,7,1," + std::string(60000, 'd') + ",\n");
    EXPECT_EQ(Results()[0].description, std::string(CSearchResults::kMostTextBytes, 'd'));

    const std::string line = "LNewsCounts,LN," + std::string(65000, 'n') + "\n";
    for (size_t bytes = 0; bytes <= CNewsCountsReply::kMostBytes + 200000; bytes += 65000) Reads(line);
    Reads("LNewsCounts,!ENDMSG!,\n");
    EXPECT_THAT(counts, IsEmpty()) << "a part of a reply would not be one";
    Reads("LNewsCounts,LN,next\nLNewsCounts,!ENDMSG!,\n");
    EXPECT_THAT(counts, ElementsAre("next"));
    EXPECT_THAT(errors, ElementsAre("Lookup: a search has more than 10000 results",
                                    "Lookup: a reply with news counts has more than 16777216 bytes"));
}
