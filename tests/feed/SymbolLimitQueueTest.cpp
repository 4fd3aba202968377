// SPDX-License-Identifier: MIT
#include "feed/session/SymbolLimitQueue.h"

#include "support/LogEvents.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

struct CSymbolLimitQueueTest : testing::Test {
    CSymbolLimitQueue queue;
    std::vector<std::string> sent;
    int shortBy = 0;

    static FeedStats Stats(uint32_t limit, uint32_t watched, const char* status = "Connected", bool valid = true) {
        FeedStats stats;
        stats.symbolLimit = limit, stats.symbolsWatched = watched, stats.status = status, stats.valid = valid;
        return stats;
    }
    void Refuse(std::initializer_list<const char*> symbols) {
        for (const char* symbol : symbols) queue.Refused(symbol, true);
    }
    uint32_t Pump(uint32_t limit, uint32_t watched, const char* status = "Connected", bool valid = true) {
        return queue.Pump(Stats(limit, watched, status, valid), [this](std::string_view command) {
            sent.emplace_back(command);
            return static_cast<int>(command.size()) - shortBy;
        });
    }
};

} // namespace

TEST_F(CSymbolLimitQueueTest, ASendThatFailsKeepsTheSymbolAndAShortOneDropsIt) {
    Refuse({"A", "B"});
    shortBy = 3;
    EXPECT_EQ(Pump(10, 0), 0u);
    EXPECT_THAT(queue.Pending(), ElementsAre("A", "B"));
    shortBy = 1;
    EXPECT_EQ(Pump(10, 9), 0u);
    EXPECT_THAT(sent, ElementsAre("wA\n", "wA\n"));
    EXPECT_THAT(queue.Pending(), ElementsAre("B"));
    EXPECT_THAT(queue.Awaiting(), IsEmpty());
}

TEST_F(CSymbolLimitQueueTest, IsBoundedWhateverTheFeedClientRefuses) {
    const CLogEvents log("L1Error");
    using Queue = CSymbolLimitQueue;
    for (int i = 0; i < 100; ++i) queue.Refused("IBM", true);
    EXPECT_EQ(queue.Pending().size(), Queue::kMostOfOne);
    for (size_t i = 0; i < 2 * Queue::kMostStrangers; ++i) queue.Refused("S" + std::to_string(i), false);
    EXPECT_EQ(queue.Pending().size(), Queue::kMostOfOne + Queue::kMostStrangers);
    for (int i = 0; i < 3; ++i) queue.Refused("W" + std::to_string(i), true);
    EXPECT_EQ(queue.Pending().back(), "W2") << "what a row holds is never dropped";
    Pump(50, 0);
    for (int i = 0; i < 100; ++i) queue.Refused("T" + std::to_string(i), false);
    EXPECT_FALSE(queue.Has("T0")) << "those on their way count too";
    EXPECT_THAT(log.texts, testing::SizeIs(1));

    Queue texts;
    for (char c = 'a'; c <= 'z'; ++c) texts.Refused(std::string(60000, c), false);
    texts.Forget(std::string(60000, 'a'));
    texts.Refused(std::string(60000, 'b'), false);
    EXPECT_EQ(texts.Pending().size(), 1u) << "its bytes were free again";
    for (int i = 0; i < 100; ++i) texts.Pump(Stats(1, 0), nullptr);
    EXPECT_EQ(texts.Pending().size(), Queue::kMostOfOne) << "without a port the first one is appended again";
}

TEST(CRecentSymbols, TheOldestAreForgottenByNumberAndByBytes) {
    CRecentSymbols recent;
    const auto name = [](size_t i) { return std::to_string(i); };
    for (size_t i = 0; i <= CRecentSymbols::kMost; ++i) recent.Note(name(i)), recent.Note(name(i));
    EXPECT_FALSE(recent.Has("0"));
    EXPECT_TRUE(recent.Has("1") && recent.Has(name(CRecentSymbols::kMost)));
    recent.Note(std::string(CRecentSymbols::kMostBytes, 'x'));
    EXPECT_FALSE(recent.Has(name(CRecentSymbols::kMost)));
    recent.Note("IBM");
    EXPECT_TRUE(recent.Has("IBM"));
}
