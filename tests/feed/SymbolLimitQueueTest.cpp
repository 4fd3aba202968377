#include "feed/SymbolLimitQueue.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct SLevel1 {
    std::vector<std::string> sent;
    int shortBy = 0;
    bool fails = false;

    int operator()(std::string_view command) {
        if (fails) return -1;
        sent.emplace_back(command);
        return static_cast<int>(command.size()) - shortBy;
    }
};

FeedStats Room(uint32_t limit, uint32_t watched) {
    FeedStats stats;
    stats.symbolLimit = limit;
    stats.symbolsWatched = watched;
    stats.status = "Connected";
    stats.valid = true;
    return stats;
}

CSymbolLimitQueue Pending(std::initializer_list<const char*> symbols) {
    CSymbolLimitQueue queue;
    for (const char* symbol : symbols) queue.Refused(symbol);
    return queue;
}

} // namespace

TEST(SymbolLimitQueue, SendsAsManyAsThereIsRoomFor) {
    CSymbolLimitQueue queue = Pending({"A", "B", "C"});
    SLevel1 level1;
    EXPECT_EQ(queue.Pump(Room(10, 8), std::ref(level1)), 2u);
    EXPECT_THAT(level1.sent, ElementsAre("wA\n", "wB\n"));
    EXPECT_THAT(queue.Pending(), ElementsAre("C"));
    EXPECT_EQ(queue.Pump(Room(10, 8), std::ref(level1)), 0u) << "those on their way take room";
    queue.Arrived("A");
    EXPECT_EQ(queue.Pump(Room(10, 8), std::ref(level1)), 1u);
    EXPECT_THAT(queue.Awaiting(), ElementsAre("B", "C"));
    EXPECT_THAT(queue.Pending(), IsEmpty());
}

TEST(SymbolLimitQueue, SendsNothingBeforeTheFeedIsKnownToBeThere) {
    CSymbolLimitQueue queue = Pending({"A"});
    SLevel1 level1;
    FeedStats notConnected = Room(10, 0);
    notConnected.status = "Not Connected";
    FeedStats neverTold = Room(10, 0);
    neverTold.valid = false;
    for (const FeedStats& stats : {FeedStats{}, notConnected, neverTold, Room(0, 0), Room(10, 4294967295u)})
        EXPECT_EQ(queue.Pump(stats, std::ref(level1)), 0u);
    EXPECT_THAT(level1.sent, IsEmpty());
    EXPECT_THAT(queue.Pending(), ElementsAre("A"));
}

TEST(SymbolLimitQueue, ASendThatFailsKeepsTheSymbolAndAShortOneDropsIt) {
    CSymbolLimitQueue queue = Pending({"A", "B"});
    SLevel1 level1;
    level1.fails = true;
    EXPECT_EQ(queue.Pump(Room(10, 0), std::ref(level1)), 0u);
    EXPECT_THAT(queue.Pending(), ElementsAre("A", "B"));
    level1 = {{}, 1, false};
    EXPECT_EQ(queue.Pump(Room(10, 9), std::ref(level1)), 0u);
    EXPECT_THAT(level1.sent, ElementsAre("wA\n"));
    EXPECT_THAT(queue.Pending(), ElementsAre("B"));
    EXPECT_THAT(queue.Awaiting(), IsEmpty());
    EXPECT_EQ(queue.Pump(Room(10, 0), nullptr), 0u);
    EXPECT_THAT(queue.Pending(), ElementsAre("B", "B"));
}

TEST(SymbolLimitQueue, ARefusedSymbolIsNoLongerAwaited) {
    CSymbolLimitQueue queue = Pending({"ABC", "ABC", "X"});
    SLevel1 level1;
    queue.Pump(Room(10, 8), std::ref(level1));
    ASSERT_THAT(queue.Awaiting(), ElementsAre("ABC", "ABC"));
    queue.Refused("ABC");
    EXPECT_THAT(queue.Awaiting(), IsEmpty());
    EXPECT_THAT(queue.Pending(), ElementsAre("X", "ABC"));
    queue.Forget(queue.Pending().front());
    EXPECT_THAT(queue.Pending(), ElementsAre("ABC"));
    for (const char* symbol : {"X", "ABC", "Y"}) queue.Refused(symbol);
    queue.Pump(Room(10, 9), std::ref(level1));
    queue.Forget("ABC");
    EXPECT_THAT(queue.Pending(), ElementsAre("X", "Y"));
    EXPECT_THAT(queue.Awaiting(), IsEmpty());
}
