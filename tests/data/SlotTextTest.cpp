// SPDX-License-Identifier: MIT
#include "data/record/SlotText.h"

#include <gtest/gtest.h>

#include <string>

using namespace vx;

TEST(CSlotText, KeepsTextsOfEveryLengthThroughManyChanges) {
    CSlotText slot;
    for (const size_t size : {0, 1, 2, 3, 4, 7, 8, 15, 16, 17, 22, 23, 24, 63, 64, 1024, 40, 23, 1, 0, 24, 5000, 3}) {
        std::string text;
        for (size_t i = 0; i < size; ++i) text += static_cast<char>('a' + (i + size) % 26);
        slot.Assign(text);
        EXPECT_EQ(slot.View(), text.substr(0, CSlotText::kMostSize));
        std::string readable = text + std::string(CSlotText::kInlineSize + 1, '#');
        slot.AssignReadable(std::string_view{readable}.substr(0, size));
        EXPECT_EQ(slot.View(), text.substr(0, CSlotText::kMostSize));
    }
}
