// SPDX-License-Identifier: MIT
#include "vxconnect/common/Options.h"

#include "vxconnect/Peer.h"

namespace vx::sim {
namespace {

SOptions Read(std::string_view arguments) { return ReadOptions(Words(arguments)); }

TEST(Options, OursAreReadAndOthersPassedOver) {
    const SOptions options =
        Read("-product ZANTREL_WATCHLIST -version 1.8.3.0 --rate=500000 --unknown=3 --seed 18446744073709551615 --stay "
             "--level1-port 0 --linger 3 --date 20241231 --burst --refuse=lookup,admin --split 7 --speed 2.5");
    EXPECT_EQ(options.error, "");
    EXPECT_THAT(options.passedOver, testing::ElementsAre("--unknown"));
    EXPECT_EQ(options.rate, 500'000u);
    EXPECT_EQ(options.seed, UINT64_MAX);
    EXPECT_EQ(options.level1Port, 0);
    EXPECT_EQ(options.lingerMs, 3000);
    EXPECT_EQ(options.date, 20241231);
    EXPECT_TRUE(options.stay && options.burst);
    EXPECT_EQ(options.refuse, kLookup | kAdmin);
    EXPECT_EQ(options.split, 7u);
    EXPECT_EQ(options.speed, 2.5);
}

TEST(Options, BadValuesAndConflictsAreNamed) {
    EXPECT_EQ(Read("--mute lookup,admin --stay").mute, kLookup | kAdmin);
    EXPECT_EQ(Read("--mute --stay").mute, kAllPorts);
    for (const char* arguments :
         {"--rate 500001", "--rate 0", "--rate -1", "--rate 5x", "--symbols 100001", "--date 20230229",
          "--refuse level2", "--mute=lookup,x", "--speed 0", "--speed nan"}) {
        const std::string_view text(arguments);
        const size_t end = text.find_first_of(" =");
        EXPECT_THAT(Read(text).error, testing::StartsWith(std::string(text.substr(0, end)) + ": \"" +
                                                          std::string(text.substr(end + 1)) + "\" is not "));
    }
    for (const char* missing : {"--rate", "--rate=", "--rate --stay", "--refuse", "--mute=", "--input"})
        EXPECT_THAT(Read(missing).error, testing::HasSubstr(" needs a value: ")) << missing;
    for (const char* wrong : {"--stay=1", "--input a --replay b", "--input a --feeder b", "--feeder a --replay b",
                              "--input a --record a", "--map Close=Last", "--input a --map Close=Nothing",
                              "--refuse level1,lookup,admin", "--level1-port 7 --admin-port 7"})
        EXPECT_NE(Read(wrong).error, "") << wrong;
}

} // namespace
} // namespace vx::sim
