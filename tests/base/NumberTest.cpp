// SPDX-License-Identifier: MIT
#include "base/Number.h"

#include <gtest/gtest.h>

using namespace vx;

TEST(Number, IntegersAreReadLenientlyAndSaturate) {
    struct SCase {
        const char* text;
        int32_t asSigned;
        uint32_t asUnsigned;
    };
    for (const SCase& c : {SCase{"12", 12, 12},
                           {" \t12abc", 12, 12},
                           {"+7", 7, 7},
                           {"-7", -7, 0},
                           {"", 0, 0},
                           {"abc", 0, 0},
                           {"--5", 0, 0},
                           {"1e5", 1, 1},
                           {"2147483648", 2147483647, 2147483648u},
                           {"-2147483648", -2147483647 - 1, 0},
                           {"-99999999999999999999", -2147483647 - 1, 0},
                           {"99999999999999999999", 2147483647, 4294967295u}}) {
        EXPECT_EQ(ReadInt32(c.text), c.asSigned) << c.text;
        EXPECT_EQ(ReadUInt32(c.text), c.asUnsigned) << c.text;
    }
    EXPECT_EQ(ReadHex32("1F"), 31u);
    EXPECT_EQ(ReadHex32("0xff"), 255u);
    EXPECT_EQ(ReadHex32("0xg"), 0u);
    EXPECT_EQ(ReadHex32("FFFFFFFFFF"), 4294967295u);
}

TEST(Number, AWholeDoubleAllowsNothingBehindIt) {
    EXPECT_EQ(ReadWholeDouble("1e3"), 1000.0);
    EXPECT_EQ(ReadWholeDouble("-.5"), -0.5);
    for (const char* text : {"", "12a", "1.5 ", "1,5", "e3", "0x", "-"}) EXPECT_FALSE(ReadWholeDouble(text)) << text;
}
