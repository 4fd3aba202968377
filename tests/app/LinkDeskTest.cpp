#include "app/LinkDesk.h"

#include "app/FileDesk.h"
#include "app/SiblingFixture.h"
#include "app/WindowSlot.h"
#include "watchlist/CellEntry.h"
#include "watchlist/Commands.h"

#include <QGuiApplication>
#include <QScreen>

#include <gmock/gmock.h>

#include <atomic>
#include <map>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CLinkDeskTest : public CSiblingFixture {
protected:
    std::map<std::string, std::string> Workspace() {
        std::map<std::string, std::string> out;
        for (const auto& value : CRegistry::CurrentUser().EnumerateValues(kWorkspacesKey))
            out[value.name] = value.value.text;
        return out;
    }
};

/// A socket file whose listener died.
void LeaveStaleSocket(const std::string& path) {
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(descriptor);
}

} // namespace

TEST_F(CLinkDeskTest, SiblingProgramsStartOnTheRowsSymbolAndAMissingOneIsNamed) {
    CMainFrame& frame = Frame();
    EnterCellText(frame.Document(), 1, 1, {}, "brk b");
    frame.View().Grid().SetFocusCell(1, 1);
    struct SCase {
        const char* command;
        int number;
        const char* program;
        bool symbol;
    };
    for (const SCase& link : {SCase{"LinkSnapQuote", 45044, "vxsnapquote", true},
                              {"LinkChart", 45045, "vxchart", true},
                              {"LinkTimeAndSales", 45046, "vxtimesales", true},
                              {"LinkNews", 45047, "vxnews", false},
                              {"LinkOptionChains", 45049, "vxoptions", true},
                              {"LinkMarketDepth", 45050, "vxdepth", true},
                              {"LinkMarketScans", 45051, "vxscans", true},
                              {"RowSnapQuote", 45052, "vxsnapquote", true},
                              {"RowChart", 45053, "vxchart", true},
                              {"RowTimeAndSales", 45054, "vxtimesales", true},
                              {"RowNews", 45055, "vxnews", false},
                              {"RowOptionChains", 45056, "vxoptions", true},
                              {"RowMarketDepth", 45057, "vxdepth", true}}) {
        const std::string name = link.program;
        EXPECT_EQ(frame.findChild<QAction*>(QString::fromLatin1(link.command))->data().toInt(), link.number);
        std::filesystem::remove(At(name));
        Do(link.command);
        EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Unable to launch " + name + ".  Error Code: 2"));
        Install(name);
        EXPECT_EQ(StartedBy(link.command), name + (link.symbol ? "|-symbol|BRK B|" : "|")) << link.command;
    }
    Install("zantrel-watchlist");
    EXPECT_EQ(StartedBy("LinkWatchlist"), "zantrel-watchlist|");

    frame.View().Grid().SetFocusCell(2, 1); // No symbol there.
    EXPECT_EQ(StartedBy("LinkChart"), "vxchart|");
    frame.Commands().Refresh();
    EXPECT_FALSE(frame.findChild<QAction*>(QStringLiteral("RowChart"))->isEnabled());
    EXPECT_TRUE(frame.findChild<QAction*>(QStringLiteral("RowNews"))->isEnabled());
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CLinkDeskTest, SavingTheWorkspaceReachesEveryWindowAndForgetsThoseThatAreGone) {
    if (QGuiApplication::primaryScreen()->size().width() < 800)
        GTEST_SKIP() << "on so small a screen the windows would be made narrower";
    CRegistry::CurrentUser().WriteText(kWorkspacesKey, "zantrel-watchlist 9", "of a window that is gone");
    CRegistry::CurrentUser().WriteText(kWorkspacesKey, "vxchart 9", "of another program");
    WriteFile(At("A $1 \"B\".vxw"), "Window=50;60;700;400;FALSE;FALSE\r\n");
    CMainFrame& first = Frame();
    first.ShowSized(640, 480);
    first.move(10, 20);
    ASSERT_TRUE(first.Files().Open(At("A $1 \"B\".vxw")));
    CMainFrame second(settings, CNorvCommandLineInfo({"-symbol", "ibm,ge", "-type", "t", "-interval", "5", "-max"}));
    second.KeepFeedClosed();
    second.ShowPlaced();
    LeaveStaleSocket(At("zantrel/watchlist-7.socket"));

    SWorkspaceCall call;
    std::atomic<bool> done = false;
    std::thread caller([&] {
        call = CallWindows(At("zantrel"), 10000);
        done = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return done.load(); }));
    caller.join();
    EXPECT_EQ(call.windows, 2);
    EXPECT_EQ(call.saved, 2);
    EXPECT_FALSE(std::filesystem::exists(At("zantrel/watchlist-7.socket")));
    std::map<std::string, std::string> expected{
        {"zantrel-watchlist 1",
         "zantrel-watchlist \"" + At("A \\$1 \\\"B\\\".vxw") + "\" -top 60 -bottom 460 -left 50 -right 750"},
        {"zantrel-watchlist 2", "zantrel-watchlist -symbol \"ibm,ge\" -type \"t\" -interval \"5\" -max"},
        {"vxchart 9", "of another program"}};
    EXPECT_EQ(Workspace(), expected);

    CRegistry::CurrentUser().Delete(kWorkspacesKey, "zantrel-watchlist 1");
    CRegistry::CurrentUser().Delete(kWorkspacesKey, "zantrel-watchlist 2");
    second.showMinimized();
    expected["zantrel-watchlist 2"] = "zantrel-watchlist -symbol \"ibm,ge\" -type \"t\" -interval \"5\" -max";
    Do("SaveWorkspace"); // The menu of one window does the same for all.
    EXPECT_TRUE(WaitUntil([&] { return Workspace().size() == 3; }));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());

    struct stat status {};
    ASSERT_EQ(stat(At("zantrel").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(CLinkDeskTest, AWorkspaceThatCannotBeWrittenIsSaidByEachWindow) {
    Frame();
    CRegistry::CurrentUser().WriteText(kWorkspacesKey, "any", "value");
    std::filesystem::remove(At("zantrel/registry.txt"));
    std::filesystem::create_directory(At("zantrel/registry.txt"));
    Do("SaveWorkspace");
    TurnEventLoop(2);
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].caption, "Zantrel Workspace Create Error");
    EXPECT_EQ(boxes.shown[0].text,
              "Unable to open workspace with name zantrel-watchlist 1 in application Zantrel Watchlist. Error:31");
}
