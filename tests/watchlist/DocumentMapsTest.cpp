// SPDX-License-Identifier: MIT
#include "data/record/SymbolKey.h"
#include "watchlist/document/SymbolMap.h"
#include "watchlist/document/SymbolUpdateMap.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;

namespace {

std::vector<uint32_t> Taken(CSymbolUpdateMap& map) {
    std::vector<uint32_t> numbers;
    map.TakeAll([&](const SRecordIds& record) { numbers.push_back(record.id2); });
    return numbers;
}

} // namespace

TEST(CSymbolMap, SymbolsOfOneHashAreToldApartByTheirText) {
    ASSERT_EQ(SymbolHash("bA"), SymbolHash("AB")); // 33 more in the first character is one less in the second.
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
        ASSERT_TRUE(!data || (data->rows.size() == 1 && data->rows.front() == i)) << i;
    }
    map.Add(name(1), 5);
    EXPECT_THAT(map.Find(name(1))->rows, ElementsAre(5));
    EXPECT_EQ(map.Renumber([](int row) { return row == 5 ? 0 : row + 1; }), std::vector{name(1)});
    EXPECT_THAT(map.Find(name(2))->rows, ElementsAre(3));
}

TEST(CSymbolUpdateMap, ARecordIsTakenOnceHoweverOftenItChanged) {
    CSymbolUpdateMap map;
    for (uint32_t i = 0; i < 6000; ++i) map.Add({i % 7, i % 1000});
    size_t count = 0;
    map.TakeAll([&](const SRecordIds& record) {
        if (count++ < 2) map.Add(record);
    });
    EXPECT_EQ(count, 6000u) << "7 and 1000 have no common divisor: every pair is another";
    EXPECT_THAT(Taken(map), ElementsAre(0, 1)) << "what was added while taking stays";
    for (const uint32_t number : {2u, 2u, 3u}) map.Add({1, number});
    EXPECT_THAT(Taken(map), ElementsAre(2, 3));
}
