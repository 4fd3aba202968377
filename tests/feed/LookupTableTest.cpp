#include "base/Log.h"
#include "feed/ListedMarkets.h"
#include "feed/LookupPeer.h"
#include "feed/LookupTables.h"
#include "feed/SecurityTypes.h"
#include "support/EventLoop.h"
#include "support/FakeClock.h"
#include "support/MessageBoxes.h"
#include "support/ScriptedFeed.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <cstring>
#include <memory>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using enum SLookupAnswer::EThen;

namespace {

constexpr int kLongMs = 60000; // For exchanges that come to an end on their own.
constexpr int kShortMs = 30;   // For those that do not.
constexpr int kFairMs = 500;   // For those that do not, after something that must come in time.
constexpr std::string_view kEnd = "!ENDMSG!,\r\n";

using Market = CListedMarkets::Entry;

/// Tells the peer from which socket it reads, so that each piece of an answer is a receive of its own.
class CPacedMarkets final : public CListedMarkets {
public:
    using CListedMarkets::CListedMarkets;
    CLookupPeer* peer = nullptr;

    bool SendRequest(std::string_view request, uint16_t port) override {
        const bool sent = CListedMarkets::SendRequest(request, port);
        if (peer) peer->ReaderIs(Connection().Descriptor());
        return sent;
    }
};

struct LookupTable : testing::Test {
    CTempFolder folder;
    CRegistry registry{folder.Path()};
    CMessageBoxes boxes;
    std::unique_ptr<CLookupPeer> peer;

    void PeerAnswers(std::vector<SLookupAnswer> answers) {
        peer = std::make_unique<CLookupPeer>(std::move(answers));
        PortIs(peer->Port());
    }
    void PortIs(uint16_t port) { registry.WriteText(kStartupKey, kLookupPortValue, std::to_string(port)); }

    /// A table that was loaded from an answer.
    std::unique_ptr<CListedMarkets> Markets(SLookupAnswer answer, int timeoutMs = kLongMs) {
        PeerAnswers({std::move(answer)});
        auto markets = std::make_unique<CPacedMarkets>(registry, timeoutMs);
        markets->peer = peer.get();
        markets->Load();
        return markets;
    }
    std::unique_ptr<CListedMarkets> MarketsOf(const std::string& lines) {
        return Markets({{lines + std::string(kEnd)}, Stays});
    }
};

/// What two receives come to, written down as literally as possible: the marker's receive is cut at the marker and
/// loses the line ends at its begin; what follows the marker is not looked at.
std::string ReplyOf(const std::string& first, const std::string& second) {
    std::string text;
    for (const std::string& received : {first, second}) {
        const char* begin = received.c_str();
        if (const char* end = std::strstr(begin, "!ENDMSG!")) {
            while (*begin == '\r' || *begin == '\n') ++begin;
            return text + std::string(begin, end);
        }
        text += begin;
    }
    return text;
}

Market EntryOf(const std::string& reply, int id) {
    Market entry;
    const std::string start = std::to_string(id) + ",";
    for (size_t at = 0; at < reply.size();
         at = reply.find('\n', at) == std::string::npos ? reply.size() : reply.find('\n', at) + 1) {
        std::string line = reply.substr(at, reply.find('\n', at) - at);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.compare(0, start.size(), start) != 0) continue;
        size_t from = start.size();
        for (size_t i = 0; i < 4 && from < line.size(); ++i) {
            const size_t comma = std::min(line.find(',', from), line.size());
            entry[i] = line.substr(from, comma - from);
            from = comma + 1;
        }
    }
    return entry;
}

} // namespace

TEST_F(LookupTable, ACompleteReplyFillsTheTableAndIsAskedForOnce) {
    PeerAnswers(
        {{{"1,A,B,C,D\r\n\r\n2,E,F,G,H\n7,ALPHA,Alpha Stock Exchange\r\n1,,X\r\n" + std::string(kEnd)}, Stays}});
    CListedMarkets markets(registry, kLongMs);
    EXPECT_FALSE(markets.IsLoaded());
    EXPECT_FALSE(markets.Has(1));
    markets.Load();
    EXPECT_TRUE(markets.IsLoaded());
    EXPECT_EQ(markets.At(1), (Market{"", "X", "C", "D"})) << "a later line overwrites as far as it goes";
    EXPECT_EQ(markets.At(2), (Market{"E", "F", "G", "H"}));
    EXPECT_EQ(markets.Name(7), "ALPHA");
    EXPECT_TRUE(markets.Has(1));
    EXPECT_FALSE(markets.Has(3));
    EXPECT_EQ(markets.Count(), 4);
    for (const int id : {-1, 256, 1000000}) EXPECT_EQ(markets.Name(id), "");
    markets.Load();
    EXPECT_THAT(peer->Heard(), ElementsAre("SLM\r\n"));
}

TEST_F(LookupTable, SecurityTypesAreKeptInReverse) {
    PeerAnswers({{{"5,S1,S2\r\n6,only\r\n7,a,b,c\r\n" + std::string(kEnd)}, Stays}});
    CSecurityTypes types(registry, kLongMs);
    types.Load();
    EXPECT_EQ(types.At(5), (CSecurityTypes::Entry{"S2", "S1"}));
    EXPECT_EQ(types.At(6), (CSecurityTypes::Entry{"", "only"}));
    EXPECT_EQ(types.At(7), (CSecurityTypes::Entry{"b", "a"}));
    EXPECT_EQ(types.Name(5), "S2");
    EXPECT_THAT(peer->Heard(), ElementsAre("SST\r\n"));
}

TEST_F(LookupTable, LinesWithoutAnIdOfTheTableAreSkipped) {
    const auto markets =
        MarketsOf("300,A\r\n-1,B\r\n256,C\r\n,D\r\n99999999999999,E\r\n\r\r\n,\r\n255,last\r\n12x,twelve\r\n"
                  " 13,blank\r\n-0,zero\r\nno comma\r\n");
    EXPECT_EQ(markets->Name(255), "last");
    EXPECT_EQ(markets->Name(12), "twelve");
    EXPECT_EQ(markets->Name(13), "blank");
    EXPECT_EQ(markets->Name(0), "zero") << "an id that is no number is 0, and this line has no texts";
    EXPECT_EQ(markets->Count(), 6);
}

TEST_F(LookupTable, AReplyMayBeCutAnywhere) {
    const std::string bytes = "1,A,B,C,D\r\n2,E,F,G,H\r\n3,I,J,K,L\r\n!ENDMSG!,\r\n";
    const size_t marker = bytes.find("!ENDMSG!");
    size_t whole = 0;
    for (size_t cut = 1; cut < bytes.size(); ++cut) {
        const bool split = cut > marker && cut < marker + 8;
        const auto markets = Markets({{bytes.substr(0, cut), bytes.substr(cut)}, split ? Closes : Stays});
        const std::string reply = ReplyOf(bytes.substr(0, cut), bytes.substr(cut));
        ASSERT_TRUE(markets->IsLoaded()) << cut;
        for (const int id : {1, 2, 3}) ASSERT_EQ(markets->At(id), EntryOf(reply, id)) << "cut at " << cut;
        whole += markets->Has(1) && markets->Has(2) && markets->Has(3) && markets->Name(3) == "I";
    }
    // All but those right before CR or between CR and LF, whose line end is then taken for one at the reply's begin.
    EXPECT_EQ(whole, bytes.size() - 1 - 4);
}

TEST_F(LookupTable, AnEndMarkerInTwoReceivesIsSeenOnceNothingMoreComes) {
    for (const auto then : {Closes, Stays}) {
        const auto markets = Markets({{"1,A,B,C,D\r\n!END", "MSG!,\r\n"}, then}, then == Closes ? kLongMs : kFairMs);
        EXPECT_TRUE(markets->IsLoaded());
        EXPECT_EQ(markets->Name(1), "A");
        EXPECT_FALSE(markets->Has(0));
    }
}

TEST_F(LookupTable, ARefusedRequestAndAnEarlyEndCountAsLoaded) {
    const SLookupAnswer refused{{"1,A\r\n", "!SYNTAX_ERROR!,\r\n"}, Stays};
    EXPECT_FALSE(Markets(refused)->Has(1)) << "a syntax error empties what came before it";
    for (const SLookupAnswer& answer : {refused, SLookupAnswer{{}, Closes}, SLookupAnswer{{}, Resets}}) {
        const auto markets = Markets(answer);
        EXPECT_TRUE(markets->IsLoaded());
        EXPECT_EQ(markets->Count(), 0);
        markets->Load();
        EXPECT_THAT(peer->Heard(), SizeIs(1));
    }
    const auto markets = Markets({{"1,A\r\n2,with no line end"}, Closes});
    EXPECT_EQ(markets->Name(2), "with no line end");
}

TEST_F(LookupTable, APortThatDoesNotComeToAnEndIsLeftAndAskedAgain) {
    PeerAnswers({{{}, Stays}, {{}, Drips}, {{"1,A\r\n"}, Floods}, {{"2,B\r\n" + std::string(kEnd)}, Stays}});
    CListedMarkets markets(registry, kShortMs);
    for (int i = 0; i < 3; ++i) {
        if (i == 2) markets.SetTimeoutMs(kLongMs); // A flood is left for its size.
        markets.Load();
        EXPECT_FALSE(markets.IsLoaded());
        EXPECT_TRUE(markets.WasUnanswered());
        EXPECT_EQ(markets.Count(), 0);
    }
    markets.Load();
    EXPECT_TRUE(markets.IsLoaded());
    EXPECT_FALSE(markets.Has(1)) << "nothing of a reply that was left";
    EXPECT_EQ(markets.Name(2), "B");
    EXPECT_THAT(peer->Heard(), SizeIs(4));
}

TEST_F(LookupTable, ARefusedPortIsSilentAndAskedAgain) {
    PortIs(FreePort());
    CListedMarkets markets(registry, kLongMs);
    markets.Load();
    markets.Load();
    EXPECT_FALSE(markets.IsLoaded());
    EXPECT_FALSE(markets.WasUnanswered());
    EXPECT_THAT(boxes.shown, IsEmpty());
    PeerAnswers({{{"1,A\r\n" + std::string(kEnd)}, Stays}});
    markets.Load();
    EXPECT_EQ(markets.Name(1), "A");
}

TEST_F(LookupTable, LongLinesAndManyOfThemAreReadWhole) {
    const std::string text(65536, 'x');
    std::string lines;
    for (int id = 0; id < 20; ++id) lines += std::to_string(id) + "," + text + "," + text.substr(0, 100) + "\r\n";
    // Only the peer's end is sure to be seen, for the receives cut such a reply anywhere.
    const auto markets = Markets({{lines}, Closes});
    EXPECT_EQ(markets->Count(), 20);
    EXPECT_EQ(markets->At(19), (Market{text, text.substr(0, 100), "", ""}));
    EXPECT_EQ(MarketsOf("1,\x80\xFF,a\tb\r\n")->At(1), (Market{"\x80\xFF", "a\tb", "", ""}));
    EXPECT_FALSE(Markets({{"1,A\r\n" + std::string(1, '\0') + "2,B\r\n"}, Closes})->Has(2))
        << "the first NUL ends a receive";
}

TEST_F(LookupTable, TheExchangeIsInTheLog) {
    std::vector<std::string> events;
    const LogSink previousSink = SetLogSink([&](const SLogEvent& event) {
        events.push_back(std::string(LogName(event.category)) + " " + std::string(LogName(event.direction)) + " " +
                         event.text);
    });
    SetLogCategories(ReadLogCategories("LookupData;LookupRequest;LookupError"));
    MarketsOf("1,A\r\n2,B\r\nE,odd\r\n");
    const uint16_t shut = FreePort();
    PortIs(shut);
    CListedMarkets markets(registry, kLongMs);
    markets.Load();
    markets.Load();
    Markets({{}, Stays}, kShortMs);
    SetLogCategories(ReadLogCategories(kDefaultLogCategories));
    MarketsOf("3,C\r\n");
    SetLogSink(previousSink);
    EXPECT_THAT(
        events,
        ElementsAre("LookupRequest TO SERVER SLM", "LookupData FROM SERVER 1,A", "LookupData FROM SERVER 2,B",
                    "LookupError FROM SERVER E,odd", "LookupData FROM SERVER !ENDMSG!,",
                    "LookupError STATUS Lookup: no connection to 127.0.0.1:" + std::to_string(shut) + ", error 10061",
                    "LookupRequest TO SERVER SLM", "LookupError STATUS Lookup: no end of the reply within 30 ms"))
        << "the same failure is not told twice";
}

TEST_F(LookupTable, TheStoresNamesComeInOneGo) {
    const SLookupAnswer markets{{"7,ALPHA,Alpha Stock Exchange,1,EQ\r\n" + std::string(kEnd)}, Stays};
    const SLookupAnswer types{{"1,EQUITY,Equity\r\n" + std::string(kEnd)}, Stays};
    PeerAnswers({markets, types});
    CLookupTables tables(registry, kLongMs);
    EXPECT_EQ(tables.MarketName(7), "");
    EXPECT_TRUE(tables.EnsureSecurityTypesLoaded());
    EXPECT_THAT(peer->Heard(), ElementsAre("SLM\r\n", "SST\r\n"));
    EXPECT_TRUE(tables.EnsureMarketsLoaded());
    EXPECT_EQ(tables.MarketName(7), "ALPHA");
    EXPECT_EQ(tables.SecurityTypeName(1), "Equity");
    EXPECT_EQ(tables.MarketName(-1).size() + tables.SecurityTypeName(256).size(), 0u);
    EXPECT_THAT(peer->Heard(), SizeIs(2));
}

TEST_F(LookupTable, AfterAFailureTheStoreWaitsLongerEachTimeItWasHeldUp) {
    CFakeClock clock;
    const SLookupAnswer silent{{}, Stays};
    PeerAnswers({silent, silent, {{"7,ALPHA\r\n" + std::string(kEnd)}, Stays}, silent, silent});
    CLookupTables tables(registry, kShortMs);
    size_t heard = 0;
    const auto hears = [&](size_t more) {
        // The peer's thread may come to a request only after its answer was given up.
        heard += more;
        return WaitUntil([&] { return peer->Heard().size() >= heard; }) && peer->Heard().size() == heard;
    };
    const auto asksAfter = [&](int64_t pauseMs, size_t times) {
        clock.elapsedMs += pauseMs - 1;
        tables.EnsureMarketsLoaded(), tables.EnsureSecurityTypesLoaded(), tables.Load();
        const bool early = peer->Heard().size() != heard;
        clock.elapsedMs += 1;
        tables.EnsureMarketsLoaded(), tables.EnsureSecurityTypesLoaded(), tables.Load();
        return !early && hears(times);
    };
    tables.Load();
    EXPECT_TRUE(hears(1));
    EXPECT_TRUE(asksAfter(5000, 1)) << "the table that was answered in vain for is the only one asked for";
    tables.SetTimeoutMs(kFairMs);
    EXPECT_TRUE(asksAfter(10000, 2)) << "the first table came, the second did not";
    EXPECT_EQ(tables.MarketName(7), "ALPHA");
    tables.SetTimeoutMs(kShortMs);
    EXPECT_TRUE(asksAfter(20000, 1));
    tables.SetTimeoutMs(kLongMs);
    PortIs(FreePort());
    clock.elapsedMs += 40000;
    EXPECT_FALSE(tables.EnsureSecurityTypesLoaded());
    PeerAnswers({{{"1,EQUITY,Equity\r\n" + std::string(kEnd)}, Stays}});
    heard = 0;
    EXPECT_TRUE(asksAfter(5000, 1)) << "a port that refuses costs no time";
    EXPECT_TRUE(tables.EnsureMarketsLoaded() && tables.EnsureSecurityTypesLoaded());
}
