// SPDX-License-Identifier: MIT
#include "support/FakeFeed.h"
#include "support/LogEvents.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

struct CL1DataStoreTest : testing::Test, CFakeFeed {
    bool Watch(std::string_view symbol) { return store.Watch(symbol, window.queue); }
    void Unwatch(std::string_view symbol) { store.Unwatch(symbol, window.queue); }
};

} // namespace

TEST_F(CL1DataStoreTest, TellsEveryListenerAtOnceWhenOneJoins) {
    CFakeWindow other{store};
    Watch("IBM");
    EXPECT_THAT(window.TakeChanged(), ElementsAre("IBM"));
    store.Watch("IBM", other.queue);
    EXPECT_THAT(window.TakeChanged(), ElementsAre("IBM"));
    EXPECT_THAT(other.TakeChanged(), ElementsAre("IBM"));
    store.Watch("C--X", other.queue);
    port.Take();
    store.RemoveListener(other.queue);
    EXPECT_THAT(port.Take(), ElementsAre("rC\n"));
    EXPECT_EQ(store.Size(), 1u);
}

TEST_F(CL1DataStoreTest, ARecordIsFoundByItsNumbersAsLongAsItIsThere) {
    constexpr size_t kMany = 3 * CRecordNumbers::kInPage;
    std::vector<SRecordIds> ids;
    for (size_t i = 0; i < kMany; ++i) {
        Watch("S" + std::to_string(i));
        ids.push_back(store.Find("S" + std::to_string(i))->Ids());
    }
    const auto stays = [](size_t i) { return i % kMany == 0 || i > kMany - CRecordNumbers::kInPage; };
    for (size_t i = 0; i < kMany; ++i)
        if (!stays(i)) Unwatch("S" + std::to_string(i));
    for (size_t i = 0; i < kMany; ++i) {
        EXPECT_EQ(store.FindById(ids[i].id1, ids[i].id2), store.Find("S" + std::to_string(i))) << i;
        EXPECT_EQ(store.Find("S" + std::to_string(i)) != nullptr, stays(i)) << i;
    }
    EXPECT_EQ(store.FindById(ids[0].id1, 4 * kMany), nullptr);
}

TEST_F(CL1DataStoreTest, ARegionalQuoteIsRequestedEveryTimeAndItsSymbolOnce) {
    Watch("ABC--X");
    EXPECT_THAT(port.Take(), ElementsAre("wABC\n", "S,REGON,ABC\n"));
    Watch("ABC--X");
    Watch("ABC--Y");
    EXPECT_THAT(port.Take(), ElementsAre("S,REGON,ABC\n", "S,REGON,ABC\n"));
    Watch("ABC");
    EXPECT_THAT(port.Take(), IsEmpty());

    Unwatch("ABC--X"), Unwatch("ABC");
    EXPECT_EQ(store.Find("ABC--X"), nullptr);
    EXPECT_THAT(port.Take(), IsEmpty());
    Unwatch("ABC--Y");
    EXPECT_THAT(port.Take(), ElementsAre("rABC\n"));
}

TEST_F(CL1DataStoreTest, AFailedWatchSendsAllAgainOncePerTurn) {
    Watch("A"), Watch("B");
    port.Take();
    port.failures = 1;
    Watch("C");
    EXPECT_THAT(port.Take(), UnorderedElementsAre("wA\n", "wB\n", "wC\n"));
    port.failures = 1, port.failWith = 2; // A part of the command went out.
    Watch("D");
    EXPECT_THAT(port.Take(), IsEmpty());
    store.NewTurn();
    port.failures = 1;
    Watch("E");
    EXPECT_THAT(port.Take(), UnorderedElementsAre("wA\n", "wB\n", "wC\n", "wD\n", "wE\n"));
}

TEST_F(CL1DataStoreTest, WatchesThatDidNotGoOutGoOnceTheConnectionOpensInTheOrderInWhichTheyCame) {
    std::vector<std::string> wanted;
    port.failures = 1000, port.open = false;
    for (int i = 30; i > 0; --i) {
        Watch("S" + std::to_string(i));
        wanted.push_back("wS" + std::to_string(i) + "\n");
    }
    Watch("S1--X");
    store.SendPendingWatches();
    port.failures = 0, port.open = true;
    store.SendPendingWatches();
    store.SendPendingWatches();
    wanted.emplace_back("S,REGON,S1\n");
    EXPECT_EQ(port.Take(), wanted);
    wanted.pop_back();
    store.NewTurn();
    store.RewatchAll();
    EXPECT_EQ(port.Take(), wanted);
}

TEST_F(CL1DataStoreTest, ASymbolMayBeUnwatchedWhileItsAlertsAreDrained) {
    Watch("IBM");
    store.SetArmedAlerts("IBM", 1);
    Update("Last=Not Found");
    window.onChange = [&](const CSymbolRec& record) {
        if (record.Base().IsNotFound()) store.Forget("IBM");
    };
    Update("Last=5");
    EXPECT_EQ(Ibm().Quote().Number(UpdateSlot("Last")), 5);
    EXPECT_FALSE(Ibm().HasListeners());
}

TEST_F(CL1DataStoreTest, KeepsALimitedNumberOfRecordsThatNobodyWatchesOldestOutFirst) {
    for (size_t i = 0; i <= CL1DataStore::kMostStrayRecords; ++i) store.OnUpdate("Q,S" + std::to_string(i) + ",");
    EXPECT_EQ(store.Size(), CL1DataStore::kMostStrayRecords);
    EXPECT_EQ(store.Find("S0"), nullptr);
    Watch("S1"); // Stays beyond the limit now, and the feed is asked for it.
    EXPECT_THAT(port.Take(), ElementsAre("wS1\n"));
    for (int i = 0; i < 3; ++i) store.OnUpdate("Q,T" + std::to_string(i) + ",");
    EXPECT_NE(store.Find("S1"), nullptr);
    EXPECT_EQ(store.Find("S2"), nullptr);
    EXPECT_EQ(store.Size(), CL1DataStore::kMostStrayRecords + 1);
}

TEST_F(CL1DataStoreTest, RecordsThatNobodyWatchesAreBoundedByTheirBytesTooAndTheLogSaysSo) {
    const CLogEvents log("L1Error");
    Watch("IBM");
    std::string texts(kFundamentalSlotCount, ',');
    for (size_t at = 0; (at = texts.find(",,", at)) != std::string::npos; at += 1000) texts.insert(at + 1, 999, 't');
    for (int i = 0; i < 9000; ++i) store.OnFundamental("F,T" + std::to_string(i) + texts);
    EXPECT_LT(store.Size(), 9000u);
    EXPECT_NE(store.Find("T8999"), nullptr);
    EXPECT_NE(store.Find("IBM"), nullptr);
    EXPECT_THAT(log.texts, testing::SizeIs(1));
}

TEST_F(CL1DataStoreTest, RefusesWhatCannotBeASymbolAndDropsLinesWithoutOneOrOfOtherKinds) {
    for (const char* symbol : {"", "--", "--X", "IBM\nrMSFT", "A\rB"}) EXPECT_FALSE(Watch(symbol)) << symbol;
    EXPECT_THAT(port.Take(), IsEmpty());
    for (const char* line :
         {"", "Q", "Q,", "Q,,1,2,", "Q,IBM", "Q, ,1,", "QXIBM,1,", "Z,IBM,1,", "F,,", "R,IBM,", "R,,X,1,"})
        store.OnLevel1Message(line);
    EXPECT_EQ(store.Size(), 0u);
}

TEST_F(CL1DataStoreTest, TellsSymbolsApartThatDifferInOneLetterOrShareTheirFirstOnes) {
    std::vector<std::string> symbols;
    for (size_t size = 1; size <= 17; ++size)
        for (size_t place = 0; place <= size; ++place)
            symbols.push_back(
                std::string(size, 'A').replace(std::min(place, size - 1), 1, 1, place == size ? 'C' : 'B'));
    for (int i = 0; i < 3000; ++i) symbols.push_back("OPTIONROOT" + std::to_string(i * 37));
    for (const std::string& symbol : symbols) Watch(symbol);
    for (size_t i = 0; i < symbols.size(); i += 2) Unwatch(symbols[i]);
    for (size_t i = 0; i < symbols.size(); ++i) EXPECT_EQ(store.Find(symbols[i]) != nullptr, i % 2 == 1) << symbols[i];
    EXPECT_EQ(store.Find("OPTIONROOT"), nullptr);
}
