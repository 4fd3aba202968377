// SPDX-License-Identifier: MIT
#include "app/workspace/CompanionPrograms.h"

#include "app/FrameFixture.h"
#include "app/workspace/RunningWindows.h"
#include "app/workspace/Workspace.h"
#include "support/FakeClock.h"

#include <QScreen>

#include <atomic>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

using namespace vx;
using namespace vx::test;

namespace {

using CCompanionProgramsTest = CSiblingFixture;

class CWindowDeskTest : public CSiblingFixture {
protected:
    static std::map<std::string, std::string> Workspace() {
        std::map<std::string, std::string> out;
        for (const auto& value : CRegistry::CurrentUser().EnumerateValues(kWorkspacesKey))
            out[value.name] = value.value.text;
        return out;
    }
    static void Store(const std::string& name, const std::string& command) {
        CRegistry::CurrentUser().WriteText(kWorkspacesKey, name, command);
    }
    static void Store(int number, const std::string& command) {
        Store("zantrel-watchlist " + std::to_string(number), command);
    }
    std::string ListAt(const char* name) const {
        WriteFile(At(name), "TrailingRows=1\r\n");
        return At(name);
    }
    /// The text with which a window of a list is stored.
    static std::string WindowOf(const std::string& file) { return "zantrel-watchlist \"" + file + "\" -max"; }
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

void Bind(int descriptor, const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

/// Another window of the program, as far as its socket goes.
class CPeerWindow {
public:
    CPeerWindow(const std::string& folder, int number, std::string command) : m_command(std::move(command)) {
        Bind(m_listener, CWindowRegistration::SocketName(folder, number));
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
    Bind(descriptor, path);
    close(descriptor);
}

} // namespace

TEST_F(CCompanionProgramsTest, ProgramsStartOnTheRowsSymbolAndAMissingOneIsNamed) {
    CFakeClock clock;
    Frame();
    Enter(1, "brk b");
    grid->SetFocusCell(1, 1);
    for (const auto& [command, program, started, current] :
         {std::tuple{ECommand::LinkChart, "vxchart", "vxchart|-symbol|BRK B|", "BRK B"},
          {ECommand::RowNews, "vxnews", "vxnews|", "before"}}) {
        const std::string name = program;
        EXPECT_EQ(Action(command).statusTip().toStdString(), "Not installed: " + name);
        Do(command);
        EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Unable to launch " + name + ".  Error Code: 2"));
        Install(name);
        clock.elapsedMs += 2000;
        EXPECT_FALSE(Action(command).statusTip().contains(QStringLiteral("installed")));
        settings.WriteText(kCurrentSymbol, "before");
        EXPECT_EQ(StartedBy(command), started);
        EXPECT_EQ(settings.ReadTextOrDefault(kCurrentSymbol), current);
    }
    grid->SetFocusCell(2, 1); // No symbol there.
    EXPECT_EQ(StartedBy(ECommand::LinkChart), "vxchart|");
    EXPECT_FALSE(IsEnabled(ECommand::RowChart));
    EXPECT_TRUE(IsEnabled(ECommand::RowNews));
}

TEST_F(CCompanionProgramsTest, TheCurrentSymbolIsFollowedWhileTheWindowStaysActive) {
    ShownFrame({}, 640, 480);
    const QAction& action = Action(ECommand::EditAddCurrentSymbol);
    EXPECT_FALSE(action.isEnabled());
    settings.WriteText(kCurrentSymbol, "IBM");
    EXPECT_TRUE(WaitUntil([&] { return action.isEnabled(); }));
    settings.WriteText(kCurrentSymbol, "<b>GE");
    EXPECT_TRUE(WaitUntil([&] { return action.statusTip().contains(QStringLiteral("Put <b>GE,")); }));
    EXPECT_FALSE(action.toolTip().contains(QStringLiteral("<b>"))) << "a tip that is read as rich text";
}

TEST_F(CWindowDeskTest, SavingTheWorkspaceReachesEveryWindowAndForgetsThoseThatAreGone) {
    if (QGuiApplication::primaryScreen()->size().width() < 800)
        GTEST_SKIP() << "on so small a screen the windows would be made narrower";
    Store(9, "of a window that is gone");
    Store("vxchart 9", "of another program");
    WriteFile(At("A $1 \"B\".vxw"), "Window=50;60;700;400;FALSE;FALSE\r\n");
    ShownFrame({}, 640, 480).move(10, 20);
    ASSERT_TRUE(frame->Files().Open(At("A $1 \"B\".vxw")));
    const char* const symbols = " -symbol \"ibm,ge\" -type \"t\" -interval \"5\"";
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
        {"zantrel-watchlist 2", std::string("zantrel-watchlist") + symbols + " -max"},
        {"vxchart 9", "of another program"}};
    EXPECT_EQ(Workspace(), expected);

    frame->showMinimized();
    expected["zantrel-watchlist 1"] = "zantrel-watchlist \"" + At("A \\$1 \\\"B\\\".vxw") + "\" -min";
    Do(ECommand::SaveWorkspace); // The menu of one window does the same for all.
    EXPECT_TRUE(WaitUntil([&] { return Workspace() == expected; }));
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty());
}

TEST_F(CWindowDeskTest, TheWorkspaceIsOpenedWithoutAShellButForWhatIsOpenOrGone) {
    Frame();
    const std::string odd = ListAt("A $HOME; `id` \"B\"\n.vxw"), here = ListAt("Here.vxw"), there = ListAt("There.vxw");
    std::filesystem::create_symlink(here, At("Link.vxw"));
    ASSERT_TRUE(frame->Files().Open(here));
    const CPeerWindow peer(At("zantrel"), 9, "zantrel-watchlist \"" + there + "\" -min");
    Install();
    SWorkspaceWindow window;
    window.file = odd;
    window.placement.maximised = true;
    Store(1, WorkspaceText(window));
    Store(2, WindowOf(At("Link.vxw")));
    Store(3, WindowOf(there));
    EXPECT_EQ(StartedBy(ECommand::OpenWorkspace),
              "zantrel-watchlist|--new-window|" + odd.substr(odd.rfind('/') + 1) + "|-max|");
    Store(1, WindowOf(At("Gone.vxw")));
    Store(4, "zantrel-watchlist \"half");
    Store(10, "zantrel-watchlist -symbol \"ibm,ge\" -top 1 -bottom 2 -left 3 -right 4");
    std::filesystem::remove(At("started"));
    Do(ECommand::OpenWorkspace);
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(At("started")); }));
    EXPECT_EQ(ReadFile(At("started")),
              "zantrel-watchlist|--new-window|-symbol|ibm,ge|-top|1|-bottom|2|-left|3|-right|4|");
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("Not every window of the workspace could be opened:\n\n\"" + At("Gone.vxw") +
                            "\" is no longer there.\nWhat is stored as \"zantrel-watchlist 4\" starts no window."));
}

TEST_F(CWindowDeskTest, AFileThatAnotherWindowHasIsShownThere) {
    const std::string mine = ListAt("Mine.vxw");
    std::filesystem::create_symlink(ListAt("Theirs.vxw"), At("Link.vxw"));
    ShownFrame({}, 640, 480);
    const CPeerWindow peer(At("zantrel"), 9, WindowOf(At("Theirs.vxw")));
    ASSERT_TRUE(frame->Files().OpenInstead(mine));
    doc->Edit({}, [](CWatchlistEdit&) {});
    EXPECT_FALSE(frame->Files().OpenInstead(At("Link.vxw")));
    EXPECT_EQ(peer.Shown(), 1);
    EXPECT_THAT(boxes.TakeTexts(), IsEmpty()) << "nothing is asked about a list that stays";
    EXPECT_EQ(frame->Files().File().Path(), mine);

    frame->showMinimized();
    bool found = false;
    Meanwhile([&] { found = ShowWindowWithFile(At("zantrel"), 0, At("./Mine.vxw")); });
    EXPECT_TRUE(found);
    EXPECT_FALSE(frame->isMinimized());
    EXPECT_FALSE(ShowWindowWithFile(At("zantrel"), 1, At("Other.vxw")));
}
