// SPDX-License-Identifier: MIT
#include "vxconnect/common/Options.h"

#include "vxconnect/Peer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vx::sim {
namespace {

SOptions Read(std::string_view arguments) { return ReadOptions(Words(arguments)); }

TEST(Options, OursAreReadAndOthersPassedOver) {
    const SOptions options =
        Read("-product ZANTREL_WATCHLIST -version 1.8.3.0 --rate=500000 --symbols 100000 --limit 0 --unknown=3 --seed "
             "18446744073709551615 --stay --level1-port 0 --admin-port=65535 --linger 3 --date 20241231 --burst "
             "--refuse=lookup,admin --split 7 --drop-after 99 --replay a.log --record=b.log --speed 2.5");
    EXPECT_EQ(options.error, "");
    EXPECT_THAT(options.passedOver, testing::ElementsAre("--unknown"));
    EXPECT_EQ(options.rate, 500'000u);
    EXPECT_EQ(options.symbols, 100'000u);
    EXPECT_EQ(options.limit, 0u);
    EXPECT_EQ(options.seed, UINT64_MAX);
    EXPECT_EQ(options.level1Port, 0);
    EXPECT_EQ(options.lookupPort, std::nullopt);
    EXPECT_EQ(options.adminPort, 65535);
    EXPECT_EQ(options.lingerMs, 3000);
    EXPECT_EQ(options.date, 20241231);
    EXPECT_TRUE(options.stay && options.burst);
    EXPECT_FALSE(options.help || options.version || options.listedOnly);
    EXPECT_EQ(options.refuse, kLookup | kAdmin);
    EXPECT_EQ(options.split, 7u);
    EXPECT_EQ(options.dropAfter, 99u);
    EXPECT_EQ(options.replay + options.record, "a.logb.log");
    EXPECT_EQ(options.speed, 2.5);
}

TEST(Options, OwnDataMayBeACommandWithNamesOfItsOwn) {
    const std::vector<std::string> arguments = {
        "--feeder", "curl x | jq -c .", "--map=Stock=Symbol,Close=Last", "--map", "Note=", "--stale=0"};
    const SOptions options = ReadOptions(arguments);
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.feeder, "curl x | jq -c .");
    EXPECT_TRUE(options.HasOwnData());
    EXPECT_EQ(options.staleSeconds, 0u);
    EXPECT_EQ(options.names.Find("close").field, FindInputField("Last"));
    EXPECT_EQ(options.names.Find("STOCK").field, FindInputField("Symbol"));
    EXPECT_TRUE(options.names.Find("note").leftOut);
    EXPECT_EQ(options.names.Find("bid").field, FindInputField("Bid"));
}

TEST(Options, PortsOfMuteMayFollowInBothWaysOrBeLeftOut) {
    EXPECT_EQ(Read("--mute=level1").mute, kLevel1);
    EXPECT_EQ(Read("--mute lookup,admin --stay").mute, kLookup | kAdmin);
    for (const char* all : {"--mute", "--mute --stay", "--mute -product X"})
        EXPECT_EQ(Read(all).mute, kAllPorts) << all;
}

TEST(Options, BadValuesAndConflictsAreNamed) {
    for (const char* arguments : {"--rate 500001", "--rate 0", "--rate -1", "--rate 5x", "--symbols 100001",
                                  "--admin-port 65536", "--seed abc", "--date 20230229", "--split 0", "--drop-after -1",
                                  "--refuse level2", "--mute level2", "--mute=lookup,x", "--speed 0", "--speed nan"}) {
        const std::string_view text(arguments);
        const size_t end = text.find_first_of(" =");
        EXPECT_THAT(Read(text).error, testing::StartsWith(std::string(text.substr(0, end)) + ": \"" +
                                                          std::string(text.substr(end + 1)) + "\" is not "));
    }
    for (const char* missing : {"--rate", "--rate=", "--rate --stay", "--refuse", "--mute=", "--input", "--speed",
                                "--feeder", "--map", "--stale"})
        EXPECT_THAT(Read(missing).error, testing::HasSubstr(" needs a value: ")) << missing;
    for (const char* wrong : {"--stay=1", "--input a --replay b", "--input a --feeder b", "--feeder a --replay b",
                              "--input a --record a", "--map Close=Last", "--input a --map Close=Nothing",
                              "--refuse level1,lookup,admin", "--level1-port 7 --admin-port 7"})
        EXPECT_NE(Read(wrong).error, "") << wrong;
}

} // namespace
} // namespace vx::sim
