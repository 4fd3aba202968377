// SPDX-License-Identifier: MIT
#include "watchlist/document/CellFormatStore.h"

#include <gtest/gtest.h>

#include <string>

using namespace vx;

namespace {

const std::string kGrid = "0,0:-1,-1,32768,192,-1,0,0,0,Arial,FALSE,FALSE,9,Left,4,TRUE,;";

} // namespace

TEST(CCellFormatStore, ReadsLenientlyAndWritesBackWhatItUnderstood) {
    const struct {
        const char* text;
        std::string rewritten;
        size_t leftOut;
    } cases[] = {
        {";;", kGrid, 0},
        {"3,5:,,,,,,,,,,,,,2", kGrid + "3,5:,,,,,,,,,,,,,2,,;", 0},
        // Decimals stay between 0 and 6; the words and flags have one spelling.
        {"3,5:,,,,,,,,,,,,,7,,;3,6:,,,,,,,,,,,,,-1,,;", kGrid + "3,5:,,,,,,,,,,,,,6,,;3,6:,,,,,,,,,,,,,0,,;", 0},
        {"3,5:,,,,,,,,,TRUE,true,,center,,yes,;", kGrid + "3,5:,,,,,,,,,TRUE,,,,,FALSE,;", 0},
        {"3,5: 12z,x,,,,,,,,,,99999999999,,,,beyond,the,last;", kGrid + "3,5:12,0,,,,,,,,,,2147483647,,,,;", 0},
        // A record starts as its column's, once that has been read.
        {"0,5:,,,,,,,,,,,,,1,,;3,5:,,,,,,,,,,,,,1,,;4,5:8,,,,,,,,,,,,,,,;",
         kGrid + "0,5:,,,,,,,,,,,,,1,,;4,5:8,,,,,,,,,,,,,,,;", 0},
        {"4,5:8;0,5:,,,,,,,,,,,,,1,,;", kGrid + "0,5:,,,,,,,,,,,,,1,,;4,5:8,,,,,,,,,,,,,4,,;", 0},
        {"0,0:7;3,0:;", "0,0:7,-1,32768,192,-1,0,0,0,Arial,FALSE,FALSE,9,Left,4,TRUE,;3,0:,,,,,,,,,,,,,,,;", 0},
        // Places that no grid has.
        {"-1,5:8;3,-5:8;999999999,5:8;3,999999999:8;99999999999999,5:8;3;3,5;3:5,8;", kGrid, 8},
        {"x,y:8;", "0,0:8,-1,32768,192,-1,0,0,0,Arial,FALSE,FALSE,9,Left,4,TRUE,;", 0},
        {"100000,1000:8;100001,1:8;1,1001:8;", kGrid + "100000,1000:8,,,,,,,,,,,,,,,;", 2},
    };
    for (const auto& c : cases) {
        CCellFormatStore store;
        store.Read("1,1:8;0,3:8;"); // What was there is replaced.
        EXPECT_EQ(store.Read(c.text), c.leftOut) << c.text;
        EXPECT_EQ(store.Write(), c.rewritten) << c.text;
    }
}
