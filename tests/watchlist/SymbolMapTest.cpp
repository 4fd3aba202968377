#include "watchlist/document/SymbolMap.h"
#include "data/record/SymbolKey.h"
#include "watchlist/document/SymbolUpdateMap.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<uint32_t> Taken(CSymbolUpdateMap& map) {
    std::vector<uint32_t> numbers;
    map.TakeAll([&](const SRecordIds& record) { numbers.push_back(record.id2); });
    return numbers;
}

} // namespace

TEST(SymbolHash, RunsFromTheLastCharacterToTheFirstWithSignedCharacters) {
    EXPECT_EQ(SymbolHash("AB"), 33u * 'B' + 'A');
    EXPECT_EQ(SymbolHash("\xFF"), 0xFFFFFFFFu);
    EXPECT_EQ(SymbolHash(""), 0u);
}

TEST(CSymbolMap, ASymbolHasOneEntryWithAllItsRows) {
    CSymbolMap map;
    for (const uint32_t row : {7u, 3u, 7u}) map.Add(" IBM ", row, 1);
    map.Add("ibm", 4);
    map.Add("   ", 5);
    ASSERT_NE(map.Find("IBM"), nullptr);
    EXPECT_THAT(map.Find("IBM")->rows, ElementsAre(3, 7));
    EXPECT_EQ(map.Find("IBM")->flag, 1u);
    EXPECT_EQ(map.Count(), 2);
    EXPECT_FALSE(map.Remove("IBM", 4));
    EXPECT_TRUE(map.Remove("IBM", 3));
    EXPECT_TRUE(map.Remove("IBM", 7));
    EXPECT_EQ(map.Find("IBM"), nullptr);
    EXPECT_EQ(map.Count(), 1);
}

TEST(CSymbolMap, SymbolsOfOneHashAreToldApartByTheirText) {
    const std::string first = "AB";
    const std::string twin = "bA"; // 33 more in the first character is one less in the second.
    ASSERT_EQ(SymbolHash(twin), SymbolHash(first));
    CSymbolMap map;
    map.Add(first, 1);
    map.Add(twin, 2);
    ASSERT_NE(map.FindHash(SymbolHash(twin)), nullptr);
    EXPECT_EQ(map.FindHash(SymbolHash(twin))->size(), 2u);
    EXPECT_THAT(map.RemoveSymbol(first), ElementsAre(1));
    EXPECT_THAT(map.Find(twin)->rows, ElementsAre(2));
    EXPECT_EQ(map.Find(first), nullptr);
}

TEST(CSymbolMap, ManySymbolsOfOneHashKeepTheirOwnRows) {
    constexpr uint32_t kMany = 4 * CSymbolRecArray::kMostWalked;
    const auto name = [](uint32_t number) {
        std::string symbol;
        for (int pair = 0; pair < 8; ++pair) symbol += number >> pair & 1 ? "AB" : "bA";
        return symbol;
    };
    CSymbolMap map;
    for (uint32_t i = 1; i < kMany; ++i) map.Add(name(i), i);
    ASSERT_EQ(map.FindHash(SymbolHash(name(1)))->size(), kMany - 1);
    for (uint32_t i = 1; i < kMany; i += 2) EXPECT_THAT(map.RemoveSymbol(name(i)), ElementsAre(i));
    for (uint32_t i = 1; i < kMany; ++i) {
        const SYMBOL_DATA* data = map.Find(name(i));
        ASSERT_EQ(data != nullptr, i % 2 == 0) << i;
        if (data) {
            EXPECT_THAT(data->rows, ElementsAre(i));
        }
    }
    map.Add(name(1), 5);
    EXPECT_THAT(map.Find(name(1))->rows, ElementsAre(5));
    EXPECT_EQ(map.Renumber([](int row) { return row == 5 ? 0 : row + 1; }), std::vector{name(1)});
    EXPECT_THAT(map.Find(name(2))->rows, ElementsAre(3));
}

TEST(CSymbolUpdateMap, ARecordIsTakenOnceHoweverOftenItChanged) {
    CSymbolUpdateMap map;
    for (uint32_t round = 0; round < 3; ++round) {
        for (uint32_t i = 0; i < 3000; ++i) map.Add({i % 7, i % 1000});
        EXPECT_FALSE(map.IsEmpty());
        size_t count = 0;
        map.TakeAll([&](const SRecordIds& record) {
            if (count++ < 5) map.Add(record);
        });
        EXPECT_EQ(count, 3000u) << "7 and 1000 have no common divisor: every pair is another";
        EXPECT_THAT(Taken(map), ElementsAre(0, 1, 2, 3, 4)) << "what was added while taking stays";
        EXPECT_THAT(Taken(map), IsEmpty());
    }
    map.Add({1, 2});
    map.Add({1, 2});
    map.Add({1, 3});
    EXPECT_THAT(Taken(map), ElementsAre(2, 3));
    map.Add({1, 2});
    map.Clear();
    EXPECT_TRUE(map.IsEmpty());
}
