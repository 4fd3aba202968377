// SPDX-License-Identifier: MIT
#include "app/frame/FramePlacement.h"
#include "app/frame/NorvCommandLineInfo.h"
#include "app/shell/FeedHealth.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;
using Info = CNorvCommandLineInfo;

namespace {

QRect RectOf(const SPlacement& p) { return {p.left, p.top, p.width, p.height}; }

} // namespace

TEST(CNorvCommandLineInfo, OptionsTakeTheirValuesAndFilesAreNoOptions) {
    const Info info({"-symbol", " ibm, msft ,,-x", "-TOP", "12abc", "--left=-5", "-right", "-900", "-interval", "1d",
                     "/tmp/a list.vxw", "second.vxw", "-nonsense", "-type"});
    EXPECT_THAT(info.Symbols(), ElementsAre("IBM", "MSFT", "-X"));
    EXPECT_EQ(info.top, 12);
    EXPECT_EQ(info.left, -5);
    EXPECT_EQ(info.right, -900);
    EXPECT_FALSE(info.bottom);
    EXPECT_EQ(info.interval, "1d");
    EXPECT_EQ(info.file, "/tmp/a list.vxw");
    EXPECT_THAT(info.otherFiles, ElementsAre("second.vxw"));
    EXPECT_THAT(info.unknown, ElementsAre("-nonsense", "-type"));
    EXPECT_EQ(info.error, "");
    EXPECT_EQ(Info({"-max", "-min"}).show, Info::EShow::Maximised) << "the first wins";
    EXPECT_EQ(Info({"-", "-maximum"}).show, Info::EShow::Normal);
}

TEST(CNorvCommandLineInfo, BadValuesOfItsOwnOptionsAreSaid) {
    for (const char* good : {"--theme=DARK", "--scale=1.5", "--seconds=0", "--width=8192", "--screenshot=a=b.png"})
        EXPECT_EQ(Info({good}).error, "");
    for (const char* bad : {"--theme=blue", "--scale=nan", "--seconds=4s", "--height=99999999999", "--screenshot"})
        EXPECT_NE(Info({bad}).error, "") << bad;
}

TEST(FramePlacement, CommandLineEdgesReplaceTheStoredOnes) {
    const SPlacement stored{100, 50, 800, 600, true, false};
    const auto placed = [&](const std::vector<std::string>& arguments) {
        return WithCommandLineEdges(stored, Info(arguments));
    };
    EXPECT_EQ(RectOf(placed({"-left", "10", "-right", "510"})), QRect(10, 50, 500, 600));
    EXPECT_FALSE(placed({"-min"}).maximised);
    EXPECT_EQ(placed({"-left", "-2147483648", "-right", "2147483647"}).width, 32767);
}

TEST(FramePlacement, AWindowThatIsNotWhollyOnScreensIsBroughtInside) {
    const std::vector<SScreenArea> screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
    struct SCase {
        SPlacement wanted;
        QRect placed;
        const char* why;
    };
    for (const SCase& each : {SCase{{1900, 10, 800, 600}, {1900, 10, 800, 600}, "it lies on two screens"},
                              {{1900, 500, 800, 600}, {1920, 392, 800, 600}, "the second one shows most of it"},
                              {{-5000, 10, 800, 600}, {0, 10, 800, 600}, "left"},
                              {{0, 0, 1920, 1080}, {0, 0, 1916, 1048}, "its frame counts"},
                              {{9000, 9000, INT_MAX, INT_MAX}, {0, 0, 1916, 1048}, "too far and too large"},
                              {{INT_MIN, INT_MIN, 800, 600}, {0, 0, 800, 600}, "too far"}})
        EXPECT_EQ(RectOf(BroughtInside(each.wanted, screens, {2, 30, 2, 2})), each.placed) << each.why;
    EXPECT_EQ(BroughtInside({-5000, 10, 800, 600}, {}).left, -5000);
}

TEST(CFeedHealth, ASilentFeedIsNoQuietMarket) {
    CFeedHealth health(1000);
    const auto at = [&](int64_t ms) {
        health.Tick(ms);
        return health.StateText() + ", " + health.AgeText() + (health.IsLive() ? ", live" : "");
    };
    health.SetStatusWord("Connected");
    health.NoteData();
    EXPECT_EQ(at(2000), "Feed: Connected, Data: now, live");
    health.NoteLine();
    EXPECT_EQ(at(6000), "Feed: Connected, Data: 4 s ago, live");
    EXPECT_EQ(at(13000), "Feed: silent 7 s, Data: 11 s ago");
}
