// SPDX-License-Identifier: MIT
#include "watchlist/LiteralInsertion.h"
#include "watchlist/edit/SortRows.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>
#include <string>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;

TEST(RowOrder, TheResultIsThatOfTheLiteralInsertion) {
    std::mt19937 random(7);
    const auto below = [&](uint32_t n) { return static_cast<uint32_t>(random() % n); };
    const std::string letters = "aAbBzZ\xC4\xE4 9-";
    for (int round = 0; round < 400; ++round) {
        const size_t count = below(40);
        std::vector<std::string> texts(count);
        for (std::string& text : texts) {
            text = std::string(below(3) == 0 ? below(12) : 0, 'x');
            for (uint32_t i = below(4); i > 0; --i) text += letters[below(static_cast<uint32_t>(letters.size()))];
        }
        const std::vector<std::string_view> keys(texts.begin(), texts.end());
        std::vector<double> numbers;
        for (size_t i = 0; i < count; ++i) numbers.push_back((static_cast<int>(below(7)) - 3) * 0.5);
        const size_t middle = count == 0 ? 0 : below(static_cast<uint32_t>(count)); // Where another block begins.
        const auto inBlocks = [&](auto insert, const auto& all, bool ascending) {
            const auto at = all.begin() + static_cast<ptrdiff_t>(middle);
            std::vector<uint32_t> out = insert({all.begin(), at}, ascending);
            for (const uint32_t i : insert({at, all.end()}, ascending))
                out.push_back(static_cast<uint32_t>(middle) + i);
            return out;
        };
        for (const bool ascending : {true, false}) {
            const size_t ends[] = {middle, count};
            ASSERT_EQ(OrderByText(keys, ascending, ends), inBlocks(InsertTexts, keys, ascending)) << round;
            ASSERT_EQ(OrderByNumber(numbers, ascending, ends), inBlocks(InsertNumbers, numbers, ascending)) << round;
        }
    }
}

TEST(RowOrder, CellTextsReadAsTheNumbersTheyShow) {
    EXPECT_EQ(SortNumber("+1.23%"), 1.23);
    EXPECT_EQ(SortNumber("-5 min"), -5);
    for (const char* zero : {"", "Not Found", "nan", "-0", "0x"}) EXPECT_EQ(SortNumber(zero), 0.0) << zero;
    const double nan = std::nan("");
    EXPECT_THAT(OrderByNumber({1, nan, 0}, true), ElementsAre(2, 1, 0));
}
