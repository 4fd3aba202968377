#include "data/SymbolMap.h"
#include "data/MarketClock.h"
#include "data/SymbolHash.h"
#include "data/SymbolUpdateMap.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

// "\x01" + 33 and "\x22" + 0 in the place behind it give the same sum.
const std::string kTwinA = "\x22"
                           "A";
const std::string kTwinB = "\x01"
                           "B";

std::vector<uint32_t> RowsOf(const CSymbolMap& map, std::string_view symbol) {
    const SYMBOL_DATA* data = map.Find(symbol);
    return data ? data->rows : std::vector<uint32_t>{};
}

} // namespace

TEST(SymbolHash, GoesFromTheLastCharacterToTheFirstWithSignedCharacters) {
    EXPECT_EQ(SymbolHash(""), 0u);
    EXPECT_EQ(SymbolHash("AB"), 66u * 33 + 65);
    EXPECT_EQ(SymbolHash("\xFF"), 0xFFFFFFFFu);
    EXPECT_EQ(SymbolHash(kTwinA), SymbolHash(kTwinB));
}

TEST(SymbolMap, ASymbolOnTwoRowsIsOneEntry) {
    CSymbolMap map;
    map.Add(" IBM ", 3, 1), map.Add("IBM", 7), map.Add("ibm", 8), map.Add("   ", 9), map.Add("IBM", 7, 1);
    EXPECT_EQ(map.Count(), 2);
    EXPECT_THAT(RowsOf(map, "IBM"), ElementsAre(3, 7));
    EXPECT_EQ(map.Find("IBM")->flag, 1u);
    EXPECT_EQ(map.SymbolAt(7), "IBM");
    EXPECT_EQ(map.SymbolAt(9), "");
}

TEST(SymbolMap, SymbolsOfOneHashAreToldApartByTheirText) {
    CSymbolMap map;
    map.Add(kTwinA, 1), map.Add(kTwinB, 2);
    ASSERT_NE(map.FindHash(SymbolHash(kTwinA)), nullptr);
    EXPECT_EQ(map.FindHash(SymbolHash(kTwinA))->size(), 2u);
    EXPECT_THAT(map.RemoveSymbol(kTwinA), ElementsAre(1));
    EXPECT_THAT(RowsOf(map, kTwinB), ElementsAre(2));
    EXPECT_EQ(map.Find(kTwinA), nullptr);
}

TEST(SymbolMap, ARowHoldsOneSymbolAndASymbolGoesWithItsLastRow) {
    CSymbolMap map;
    map.Add("A", 1), map.Add("A", 2), map.Add("B", 1);
    EXPECT_THAT(RowsOf(map, "A"), ElementsAre(2));
    EXPECT_EQ(map.RemoveRow(2), "A");
    EXPECT_EQ(map.RemoveRow(2), "");
    EXPECT_EQ(map.Count(), 1);
    EXPECT_THAT(map.RemoveSymbol("A"), IsEmpty());
    map.Clear();
    EXPECT_EQ(map.Count(), 0);
    EXPECT_EQ(map.SymbolAt(1), "");
}

TEST(SymbolMap, RowsAreRenumberedTogether) {
    CSymbolMap map;
    map.Add("A", 1), map.Add("B", 2), map.Add("A", 3);
    map.RenumberRows([](uint32_t row) { return 4 - row; }); // Turned upside down: numbers trade places.
    EXPECT_THAT(RowsOf(map, "A"), UnorderedElementsAre(3, 1));
    map.RenumberRows([](uint32_t row) { return row + 10; });
    EXPECT_EQ(map.SymbolAt(12), "B");
    EXPECT_EQ(map.SymbolAt(2), "");
    EXPECT_EQ(map.RemoveRow(11), "A");
    std::vector<std::string> symbols;
    map.ForEach([&](const SYMBOL_DATA& data) { symbols.push_back(data.symbol); });
    EXPECT_THAT(symbols, UnorderedElementsAre("A", "B"));
}

TEST(SymbolUpdateMap, HoldsEachSymbolOnceUntilItIsTaken) {
    CSymbolUpdateMap map;
    map.Add("IBM"), map.Add("IBM"), map.Add(kTwinA), map.Add(kTwinB);
    EXPECT_EQ(map.Size(), 3u);
    EXPECT_TRUE(map.Remove(kTwinA));
    EXPECT_FALSE(map.Remove(kTwinA));
    EXPECT_THAT(map.TakeAll(), UnorderedElementsAre("IBM", kTwinB));
    EXPECT_TRUE(map.IsEmpty());
}

TEST(MarketClock, TakesTimesAndIgnoresEverythingElse) {
    CMarketClock clock;
    EXPECT_EQ(clock.Text(), "");
    EXPECT_TRUE(clock.OnTimeMessage("T,20240131 09:30:05"));
    for (const char* line :
         {"", "T", "T,", "T,20240131", "T,20240131 9:30:05", "T,20240231 09:30:05", "T,20240131 24:00:00",
          "T,20240131 09:61:05", "T,2024013a 09:30:05", "X,20240131 09:30:05", "T,20240131 09:30:05x"})
        EXPECT_FALSE(clock.OnTimeMessage(line)) << line;
    EXPECT_EQ(clock.Text(), "01/31/24 09:30:05");
    EXPECT_TRUE(clock.OnTimeMessage("T,20241231 23:59:59,"));
    EXPECT_EQ(clock.Time()->month, 12);
}
