#include "feed/SymbolLimitQueue.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct SymbolLimitQueue : testing::Test {
    CSymbolLimitQueue queue;
    std::vector<std::string> sent;
    int shortBy = 0;

    void Refuse(std::initializer_list<const char*> symbols) {
        for (const char* symbol : symbols) queue.Refused(symbol);
    }
    uint32_t Pump(uint32_t limit, uint32_t watched, const char* status = "Connected", bool valid = true) {
        FeedStats stats;
        stats.symbolLimit = limit;
        stats.symbolsWatched = watched;
        stats.status = status;
        stats.valid = valid;
        return queue.Pump(stats, [this](std::string_view command) {
            sent.emplace_back(command);
            return static_cast<int>(command.size()) - shortBy;
        });
    }
};

} // namespace

TEST_F(SymbolLimitQueue, SendsAsManyAsThereIsRoomForOnceTheFeedIsThere) {
    Refuse({"A", "B", "C"});
    EXPECT_EQ(Pump(10, 0, "Not Connected") + Pump(10, 0, "Connected", false) + Pump(0, 0) + Pump(10, 4294967295u), 0u);
    EXPECT_THAT(queue.Pending(), ElementsAre("A", "B", "C"));
    EXPECT_EQ(Pump(10, 8), 2u);
    EXPECT_THAT(sent, ElementsAre("wA\n", "wB\n"));
    EXPECT_THAT(queue.Pending(), ElementsAre("C"));
    EXPECT_EQ(Pump(10, 8), 0u) << "those on their way take room";
    queue.Arrived("A");
    EXPECT_EQ(Pump(10, 8), 1u);
    EXPECT_THAT(queue.Awaiting(), ElementsAre("B", "C"));
    EXPECT_THAT(queue.Pending(), IsEmpty());
}

TEST_F(SymbolLimitQueue, ASendThatFailsKeepsTheSymbolAndAShortOneDropsIt) {
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

TEST_F(SymbolLimitQueue, ARefusedSymbolIsNoLongerAwaitedAndAForgottenOneIsGone) {
    Refuse({"ABC", "ABC", "X"});
    Pump(10, 8);
    ASSERT_THAT(queue.Awaiting(), ElementsAre("ABC", "ABC"));
    queue.Refused("ABC");
    EXPECT_THAT(queue.Awaiting(), IsEmpty());
    EXPECT_THAT(queue.Pending(), ElementsAre("X", "ABC"));
    queue.Forget(queue.Pending().front());
    Refuse({"X", "ABC", "Y"});
    Pump(10, 9);
    queue.Forget("ABC");
    EXPECT_THAT(queue.Pending(), ElementsAre("X", "Y"));
    EXPECT_THAT(queue.Awaiting(), IsEmpty());
}
