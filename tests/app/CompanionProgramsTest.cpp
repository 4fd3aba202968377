#include "app/workspace/CompanionPrograms.h"

#include "app/SiblingFixture.h"
#include "app/commands/Commands.h"
#include "app/files/FileController.h"
#include "app/workspace/RunningWindows.h"
#include "app/workspace/Workspace.h"
#include "support/FakeClock.h"
#include "watchlist/edit/CellEntry.h"

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

class CCompanionProgramsTest : public CSiblingFixture {
protected:
    std::map<std::string, std::string> Workspace() {
        std::map<std::string, std::string> out;
        for (const auto& value : CRegistry::CurrentUser().EnumerateValues(kWorkspacesKey))
            out[value.name] = value.value.text;
        return out;
    }
    void Store(int number, const std::string& command) {
        CRegistry::CurrentUser().WriteText(kWorkspacesKey, "zantrel-watchlist " + std::to_string(number), command);
    }
};

/// Does something on another thread while the windows of this one live.
template <typename Work> void Meanwhile(Work work) {
    std::atomic<bool> done = false;
    std::thread thread([&] {
        work();
        done = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return done.load(); }));
    thread.join();
}

/// Another window of the program, as far as its socket goes.
class CPeerWindow {
public:
    CPeerWindow(const std::string& folder, int number, std::string command) : m_command(std::move(command)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        CWindowRegistration::SocketName(folder, number).copy(address.sun_path, sizeof address.sun_path - 1);
        bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        listen(m_listener, 8);
        m_thread = std::thread([this] { Serve(); });
    }
    ~CPeerWindow() {
        shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        close(m_listener);
    }
    int Shown() const { return m_shown; }

private:
    void Serve() {
        for (int peer = accept(m_listener, nullptr, nullptr); peer >= 0; peer = accept(m_listener, nullptr, nullptr)) {
            std::string request(64, '\0');
            request.resize(static_cast<size_t>(std::max<ssize_t>(0, read(peer, request.data(), request.size()))));
            m_shown += request == CWindowRegistration::kShowRequest;
            const std::string answer = request == CWindowRegistration::kTellRequest ? m_command : "shown\n";
            EXPECT_EQ(write(peer, answer.data(), answer.size()), static_cast<ssize_t>(answer.size()));
            close(peer);
        }
    }

    std::string m_command;
    int m_listener = socket(AF_UNIX, SOCK_STREAM, 0);
    std::atomic<int> m_shown = 0;
    std::thread m_thread;
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

TEST_F(CCompanionProgramsTest, SiblingProgramsStartOnTheRowsSymbolAndAMissingOneIsNamed) {
    CFakeClock clock;
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
        const auto tip = [&] {
            frame.Commands().Refresh();
            const auto* action = frame.findChild<QAction*>(QString::fromLatin1(link.command));
            EXPECT_TRUE(action->toolTip().startsWith(action->statusTip()));
            return action->statusTip().toStdString();
        };
        EXPECT_EQ(frame.findChild<QAction*>(QString::fromLatin1(link.command))->data().toInt(), link.number);
        std::filesystem::remove(At(name));
        clock.elapsedMs += 2000;
        EXPECT_EQ(tip(), "Not installed: " + name);
        Do(link.command);
        EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Unable to launch " + name + ".  Error Code: 2"));
        Install(name);
        clock.elapsedMs += 2000;
        EXPECT_THAT(tip(), testing::Not(testing::HasSubstr("installed")));
        settings.WriteText(kCurrentSymbol, "before");
        EXPECT_EQ(StartedBy(link.command), name + (link.symbol ? "|-symbol|BRK B|" : "|")) << link.command;
        EXPECT_EQ(settings.ReadTextOrDefault(kCurrentSymbol), link.symbol ? "BRK B" : "before") << link.command;
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

TEST_F(CCompanionProgramsTest, TheCurrentSymbolIsFollowedWhileTheWindowStaysActive) {
    CMainFrame& frame = Frame();
    frame.ShowSized(640, 480);
    frame.activateWindow();
    const auto* action = frame.findChild<QAction*>(QStringLiteral("EditAddCurrentSymbol"));
    frame.Commands().Refresh();
    EXPECT_FALSE(action->isEnabled());
    settings.WriteText(kCurrentSymbol, "IBM");
    EXPECT_TRUE(WaitUntil([&] { return action->isEnabled(); }));
    settings.WriteText(kCurrentSymbol, "<b>GE");
    EXPECT_TRUE(WaitUntil([&] { return action->statusTip().contains(QStringLiteral("Put <b>GE,")); }));
    EXPECT_FALSE(action->toolTip().contains(QStringLiteral("<b>"))) << "a tip that is read as rich text";
}

TEST_F(CCompanionProgramsTest, SavingTheWorkspaceReachesEveryWindowAndForgetsThoseThatAreGone) {
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
    Meanwhile([&] { call = CallWindows(At("zantrel"), 10000); });
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

TEST_F(CCompanionProgramsTest, AWorkspaceThatCannotBeWrittenIsSaidByEachWindow) {
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

TEST_F(CCompanionProgramsTest, TheWorkspaceIsOpenedWithoutAShellButForWhatIsOpenOrGone) {
    CMainFrame& frame = Frame();
    Do("OpenWorkspace");
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("No workspace is stored. File > Save Workspace notes the windows that are open."));
    const std::string odd = At("A $HOME; `id` \"B\"\n.vxw");
    for (const std::string& path : {odd, At("Here.vxw"), At("There.vxw")}) WriteFile(path, "TrailingRows=1\r\n");
    std::filesystem::create_symlink(At("Here.vxw"), At("Link.vxw"));
    ASSERT_TRUE(frame.Files().Open(At("Here.vxw")));
    const CPeerWindow peer(At("zantrel"), 9, "zantrel-watchlist \"" + At("There.vxw") + "\" -min");
    Install("zantrel-watchlist");
    SWorkspaceWindow window;
    window.file = odd;
    window.placement.maximised = true;
    Store(1, WorkspaceText(window));
    Store(2, "zantrel-watchlist \"" + At("Link.vxw") + "\" -max");
    Store(3, "zantrel-watchlist \"" + At("There.vxw") + "\" -max");
    EXPECT_EQ(StartedBy("OpenWorkspace"),
              "zantrel-watchlist|--new-window|" + odd.substr(odd.rfind('/') + 1) + "|-max|");
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());

    Store(1, "zantrel-watchlist \"" + At("Gone.vxw") + "\" -max");
    Store(4, "zantrel-watchlist \"half");
    Store(10, "zantrel-watchlist -symbol \"ibm,ge\" -top 1 -bottom 2 -left 3 -right 4");
    std::filesystem::remove(At("started"));
    Do("OpenWorkspace");
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(At("started")); }));
    EXPECT_EQ(ReadFile(At("started")),
              "zantrel-watchlist|--new-window|-symbol|ibm,ge|-top|1|-bottom|2|-left|3|-right|4|");
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("Not every window of the workspace could be opened:\n\n\"" + At("Gone.vxw") +
                            "\" is no longer there.\nWhat is stored as \"zantrel-watchlist 4\" starts "
                            "no window."));
}

TEST_F(CCompanionProgramsTest, AFileThatAnotherWindowHasIsShownThere) {
    const std::string mine = At("Mine.vxw");
    for (const char* name : {"Mine.vxw", "Theirs.vxw"}) WriteFile(At(name), "TrailingRows=1\r\n");
    std::filesystem::create_symlink(At("Theirs.vxw"), At("Link.vxw"));
    CMainFrame& frame = Frame();
    frame.ShowSized(640, 480);
    const CPeerWindow peer(At("zantrel"), 9, "zantrel-watchlist \"" + At("Theirs.vxw") + "\" -max");
    ASSERT_TRUE(frame.Files().OpenInstead(mine));
    frame.Document().Edit({}, [](CWatchlistEdit&) {});
    EXPECT_FALSE(frame.Files().OpenInstead(At("Link.vxw")));
    EXPECT_EQ(peer.Shown(), 1);
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty()) << "nothing is asked about a list that stays";
    EXPECT_EQ(frame.Files().File().Path(), mine);

    frame.showMinimized();
    bool found = false;
    Meanwhile([&] { found = ShowWindowWithFile(At("zantrel"), 0, At("./Mine.vxw")); });
    EXPECT_TRUE(found);
    EXPECT_FALSE(frame.isMinimized());
    EXPECT_FALSE(ShowWindowWithFile(At("zantrel"), 1, At("Other.vxw")));
}

TEST_F(CCompanionProgramsTest, ANewWindowStandsBesideTheOthersAndTheNextRunWhereTheLastOneStood) {
    Install("zantrel-watchlist");
    settings.WriteInteger(kRectLeft, 40);
    settings.WriteInteger(kRectTop, 50);
    settings.WriteInteger(kRectWidth, 600);
    settings.WriteInteger(kRectHeight, 400);
    Frame();
    EXPECT_EQ(StartedBy("FileNewWindow"), "zantrel-watchlist|--new-window|");
    const CPeerWindow peer(At("zantrel"), 9, "zantrel-watchlist -top 50 -bottom 450 -left 40 -right 640");
    CMainFrame& aside = Frame();
    aside.ShowPlaced();
    EXPECT_GT(aside.pos().x(), 50);
    EXPECT_GT(aside.pos().y(), 60);
    aside.close();
    EXPECT_EQ(settings.ReadInteger(kRectLeft), 40);
    CMainFrame& moved = Frame({"--theme", "dark"});
    EXPECT_EQ(StartedBy("FileNewWindow"), "zantrel-watchlist|--new-window|--theme|dark|");
    moved.ShowPlaced();
    ASSERT_TRUE(WaitUntil([&] { return !moved.findChild<QTimer*>(QStringLiteral("placeTimer"))->isActive(); }));
    moved.move(120, 130);
    moved.close();
    EXPECT_EQ(settings.ReadInteger(kRectLeft), 120);
}
