#include "vxconnect/Options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace vx::sim {
namespace {

SOptions Read(const std::vector<std::string>& arguments) { return ReadOptions(arguments); }

TEST(Options, OursAreReadAndOthersPassedOver) {
    const SOptions options = Read({"-product",
                                   "ZANTREL_WATCHLIST",
                                   "-version",
                                   "1.8.3.0",
                                   "--rate=500000",
                                   "--symbols",
                                   "100000",
                                   "--limit",
                                   "0",
                                   "--unknown=3",
                                   "--seed",
                                   "18446744073709551615",
                                   "--stay",
                                   "--level1-port",
                                   "0",
                                   "--admin-port=65535",
                                   "--linger",
                                   "3",
                                   "--date",
                                   "20241231"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.rate, 500'000u);
    EXPECT_EQ(options.symbols, 100'000u);
    EXPECT_EQ(options.limit, 0u);
    EXPECT_EQ(options.seed, UINT64_MAX);
    EXPECT_EQ(options.level1Port, 0);
    EXPECT_EQ(options.lookupPort, std::nullopt);
    EXPECT_EQ(options.adminPort, 65535);
    EXPECT_EQ(options.lingerMs, 3000);
    EXPECT_EQ(options.date, 20241231);
    EXPECT_TRUE(options.stay);
    EXPECT_FALSE(options.help || options.version);
}

TEST(Options, FaultsAndFilesAreReadAndConflictsTold) {
    const SOptions options = Read({"--burst", "--mute", "--refuse=lookup,admin", "--split", "7", "--drop-after", "99",
                                   "--replay", "a.log", "--record=b.log", "--speed", "2.5"});
    EXPECT_EQ(options.error, "");
    EXPECT_TRUE(options.burst);
    EXPECT_EQ(options.mute, kAllPorts);
    EXPECT_EQ(options.refuse, kLookup | kAdmin);
    EXPECT_EQ(options.split, 7u);
    EXPECT_EQ(options.dropAfter, 99u);
    EXPECT_EQ(options.replay + options.record, "a.logb.log");
    EXPECT_EQ(options.speed, 2.5);
    EXPECT_EQ(Read({"--mute=level1"}).mute, kLevel1);
    EXPECT_EQ(Read({"--mute", "level1"}).mute, kAllPorts) << "a value follows only after =";
    EXPECT_NE(Read({"--input", "a", "--replay", "b"}).error, "");
    EXPECT_NE(Read({"--input", "a", "--record", "a"}).error, "");
    EXPECT_NE(Read({"--refuse", "level1,lookup,admin"}).error, "");
}

TEST(Options, BadValuesAreNamed) {
    const std::vector<std::vector<std::string>> cases = {{"--rate", "500001"},
                                                         {"--rate", "0"},
                                                         {"--rate", "-1"},
                                                         {"--rate", "5x"},
                                                         {"--rate="},
                                                         {"--rate"},
                                                         {"--symbols", "100001"},
                                                         {"--admin-port", "65536"},
                                                         {"--seed", "abc"},
                                                         {"--date", "20230229"},
                                                         {"--split", "0"},
                                                         {"--drop-after", "-1"},
                                                         {"--refuse", "level2"},
                                                         {"--refuse"},
                                                         {"--mute=", ""},
                                                         {"--input"},
                                                         {"--speed", "0"},
                                                         {"--speed", "nan"}};
    for (const auto& arguments : cases) {
        const SOptions options = Read(arguments);
        EXPECT_THAT(options.error, testing::StartsWith(arguments[0].substr(0, 6)));
        if (arguments.size() > 1) {
            EXPECT_THAT(options.error, testing::HasSubstr(arguments[1]));
        }
    }
}

} // namespace
} // namespace vx::sim
