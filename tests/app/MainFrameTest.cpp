#include "app/FrameFixture.h"

#include "app/commands/Commands.h"
#include "app/files/FileController.h"
#include "app/frame/FramePlacement.h"
#include "app/shell/AboutDlg.h"
#include "data/catalogue/UpdateFields.h"
#include "news/NewsMap.h"
#include "support/EventLoop.h"
#include "support/ScriptedFeed.h"
#include "watchlist/fileformat/WatchlistReader.h"

#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <fmt/format.h>
#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::HasSubstr;

namespace {

const std::string kGreeting = "S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,VxWatchlist\n";

class CMainFrameTest : public CFrameFixture {
protected:
    CMainFrameTest() { PortsAre(feed.level1.Number(), feed.lookup.Number(), feed.admin.Number()); }

    /// Brings the session up to the point where watches may begin.
    void Connect(CMainFrame& frame) {
        frame.OpenAdminPort();
        feed.admin.Says(StatusLine("Connected"));
        feed.level1.Says("S,IP,127.0.0.1,5009\r\n");
        m_heard = kGreeting + "S,SELECT UPDATE FIELDS," + UpdateFieldList() + "\nS,NEWSON\r\n";
    }
    testing::AssertionResult Level1Heard(const std::string& more) { return feed.level1.Heard(m_heard += more); }

    QString Pane(CMainFrame& frame, const char* name) {
        return frame.findChild<QLabel*>(QString::fromLatin1(name))->text();
    }

    CScriptedFeed feed;
    std::string m_heard;
};

} // namespace

TEST_F(CMainFrameTest, PortsComeUpInOrderAndSymbolsAreWatchedWhenTheFeedIsReady) {
    CMainFrame& frame = Frame({"-symbol", "ibm, msft"});
    frame.OpenAdminPort();
    EXPECT_TRUE(feed.admin.Heard(kGreeting));
    EXPECT_EQ(feed.level1.Connections(), 0);
    Connect(frame);
    EXPECT_TRUE(feed.lookup.Heard(kGreeting + NewsCountsRequest("IBM:MSFT")));
    EXPECT_TRUE(Level1Heard("wIBM\nwMSFT\n"));
    EXPECT_EQ(Shown(1, 1), "IBM");
    EXPECT_EQ(frame.View().Grid().RowCount(), 5);
    EXPECT_EQ(Pane(frame, "paneStatus"), QStringLiteral("Symbols:  2"));

    feed.level1.Says("S,IP,127.0.0.1,5009\r\nT,20240131 09:30:05\r\n");
    EXPECT_TRUE(Level1Heard("S,NEWSON\r\n")) << "a second ready line asks for news alone";
    EXPECT_TRUE(WaitUntil([&] { return Pane(frame, "paneClock").contains(QStringLiteral("09:30:05")); }));
}

TEST_F(CMainFrameTest, CommandLineSymbolsOverTheRowsOfAFileAreUnsavedChanges) {
    WriteFile(folder / "Banks.vxw", "Columns=Symbol:1000;\r\nSymbols=MSFT:1,;\r\n");
    CMainFrame& frame = Frame({"-symbol", "IBM"});
    ASSERT_TRUE(frame.Files().Open(folder / "Banks.vxw"));
    EXPECT_FALSE(frame.Document().IsModified());
    Connect(frame);
    ASSERT_TRUE(WaitUntil([&] { return frame.Document().RowSymbol(1) == "IBM"; }));
    EXPECT_TRUE(frame.Document().IsModified());
}

TEST_F(CMainFrameTest, AnUpdateReachesTheScreenWithinABeatAndOnlyItsCellsAreRepainted) {
    CMainFrame& frame = Frame({"-symbol", "IBM,MSFT"});
    frame.ShowSized(1300, 500);
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wIBM\nwMSFT\n"));
    const int last = ColumnOf("Bid");
    feed.level1.Says("Q,IBM,,,,,,,100.25,100.50,\r\nQ,MSFT,,,,,,,50,\r\n");
    ASSERT_TRUE(WaitUntil([&] { return Shown(1, last) == "100.2500"; }));
    ASSERT_TRUE(WaitUntil([&] { return frame.View().Grid().Counters().cells > 0; }));

    // Two quiet beats later nothing of the first painting is on its way any more.
    const auto painted = [&] { return frame.View().Grid().Counters().cells; };
    int64_t before = -1;
    ASSERT_TRUE(WaitUntil([&] {
        frame.View().OnRepaintTimer();
        TurnEventLoop(3);
        return std::exchange(before, painted()) == painted();
    }));
    feed.level1.Says("Q,IBM,,,,,,,100.25,\r\nQ,IBM,,,,,,,100.75,\r\n");
    ASSERT_TRUE(WaitUntil([&] { return Shown(1, last) == "100.7500"; }));
    ASSERT_TRUE(WaitUntil([&] { return painted() > before; })) << "a text that was read counts as painted";
    // The cell may have been lit by both updates and put out again by now; a row has more cells.
    EXPECT_LE(painted() - before, 4) << "more than the changed cell was painted";
}

// The scripted port takes the request and cannot answer while the frame waits for it.
TEST_F(CMainFrameTest, ALookupPortThatNeverAnswersHoldsTheFrameOnce) {
    CMainFrame& frame = Frame({"-symbol", "ibm"});
    frame.LookupTables().SetTimes({30, 30});
    Connect(frame);
    ASSERT_TRUE(Level1Heard("wIBM\n"));
    EXPECT_TRUE(feed.lookup.Heard(kGreeting + NewsCountsRequest("IBM"))) << "nothing is to be named yet";
    for (int i = 1; i <= 50; ++i) {
        std::string line = "Q,IBM" + std::string(UpdateSlot("Last"), ',') + std::to_string(i);
        line += std::string(UpdateSlot("Last Market Center") - UpdateSlot("Last"), ',') + "7,\r\n";
        feed.level1.Says(line);
    }
    const int last = ColumnOf("Last");
    EXPECT_TRUE(WaitUntil([&] { return Shown(1, last) == "50.0000"; })) << Shown(1, last);
    EXPECT_TRUE(feed.lookup.Heard(kGreeting + NewsCountsRequest("IBM") + "SLM\r\n"));
}

TEST_F(CMainFrameTest, AnUnknownSymbolsRowSaysSo) {
    CMainFrame& frame = Frame({"-symbol", "NOPE"});
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wNOPE\n"));
    feed.level1.Says("n,NOPE\r\n");
    ASSERT_TRUE(WaitUntil([&] { return frame.Document().SymbolCount() == 0; }));
    EXPECT_EQ(frame.Document().AnnotationText(1), "\"NOPE\" is an Invalid or Unauthorized Symbol.");
    EXPECT_EQ(Pane(frame, "paneStatus"), QStringLiteral("Symbols:  0"));
}

TEST_F(CMainFrameTest, AnUnwatchedSymbolNoLongerWaitsForRoom) {
    CMainFrame& frame = Frame({"-symbol", "IBM"});
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wIBM\n"));
    feed.level1.Says("S,SYMBOL LIMIT REACHED,IBM\r\n");
    ASSERT_TRUE(WaitUntil([&] { return !frame.LimitedSymbols().Pending().empty(); }));
    frame.Document().Update()->EmptyRow(1);
    EXPECT_TRUE(frame.LimitedSymbols().Pending().empty());
    EXPECT_TRUE(Level1Heard("rIBM\n"));
    feed.level1.Says("S,SYMBOL LIMIT REACHED,NEVER\r\nS,SYMBOL LIMIT REACHED,IBM\r\nT,20240131 09:30:05\r\n");
    EXPECT_TRUE(Level1Heard("wNEVER\n")) << "IBM's refusal has crossed its unwatch";
}

TEST_F(CMainFrameTest, ARefusedSymbolsRowSaysThatItWaitsUntilDataComes) {
    CMainFrame& frame = Frame({"-symbol", "IBM,MSFT,MSFT--X"});
    frame.ShowSized(1300, 500);
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wIBM\nwMSFT\nS,REGON,MSFT\n"));
    const CWatchlistGrid& grid = frame.View().Grid();
    const auto painted = [&] { return grid.Counters().cells; };
    int64_t before = -1;
    ASSERT_TRUE(WaitUntil([&] { return std::exchange(before, painted()) == painted() && before > 0; }));
    feed.level1.Says("S,SYMBOL LIMIT REACHED,MSFT\r\n");
    const std::string notice = "waiting for room: limit of 500 reached";
    ASSERT_TRUE(WaitUntil([&] { return Notice(2) == notice && painted() > before; }));
    EXPECT_EQ(Notice(1) + Notice(4), "");
    EXPECT_EQ(Notice(3), notice);
    EXPECT_EQ(grid.Source()->CellTip(2, 1), notice);
    EXPECT_EQ(Shown(2, 1), "MSFT");
    for (int column = 2; column <= grid.ColumnCount(); ++column) EXPECT_EQ(grid.ShownText(2, column), "");
    feed.admin.Says(StatusLine("Connected", 400, 400));
    ASSERT_TRUE(WaitUntil([&] { return Notice(2) == "waiting for room: limit of 400 reached"; }));
    ASSERT_TRUE(WaitUntil([&] { return std::exchange(before, painted()) == painted(); }));
    feed.level1.Says("F,MSFT,\r\n");
    ASSERT_TRUE(WaitUntil([&] { return Notice(2).empty() && painted() > before; }));
    EXPECT_THAT(Notice(3), HasSubstr("waiting")) << "the region has no data yet";
}

TEST_F(CMainFrameTest, AConnectionThatEndsIsShownAndARestartOffered) {
    CMainFrame& frame = Frame({"-symbol", "IBM"});
    frame.ShowSized(1300, 500);
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wIBM\n"));
    feed.level1.Says("Q,IBM,,,,,,,100.25,\r\n");
    ASSERT_TRUE(WaitUntil([&] { return !Shown(1, ColumnOf("Bid")).empty(); }));
    const auto* bar = frame.findChild<QWidget*>(QStringLiteral("feedEndBar"));
    EXPECT_FALSE(bar->isVisible() || frame.Commands().Action(ECommand::Restart).isEnabled());
    const auto role = [&] {
        SCell cell;
        frame.View().Grid().Source()->FillCell(1, ColumnOf("Bid"), cell);
        return cell.role;
    };
    EXPECT_NE(role(), ETextRole::Stale);
    feed.admin.HangsUp();
    ASSERT_TRUE(WaitUntil([&] { return bar->isVisible(); }));
    EXPECT_NE(role(), ETextRole::Stale) << "quotes still come";
    feed.level1.HangsUp();
    ASSERT_TRUE(WaitUntil([&] { return role() == ETextRole::Stale; }));
    EXPECT_EQ(Pane(frame, "paneFeed"), QStringLiteral("Feed: connection ended"));
    EXPECT_TRUE(Pane(frame, "feedEndText").contains(QStringLiteral("has ended. The values are the last ones")));
    frame.Document().Update()->EnterSymbol(2, "MSFT");
    EXPECT_EQ(Notice(2), "not watched: no connection to the feed client");
    EXPECT_EQ(Notice(1), "") << "it shows its last values";
}

TEST_F(CMainFrameTest, WatchesThatFoundNoConnectionGoOutWhenThereIsOne) {
    CMainFrame& frame = Frame({"-symbol", "IBM"});
    frame.OpenAdminPort();
    feed.admin.Says("S,IP,127.0.0.1,5009\r\n");
    ASSERT_TRUE(WaitUntil([&] { return frame.Document().IsFeedReady(); }));
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wIBM\n"));
}

TEST_F(CMainFrameTest, HeadlinesAndCountsReachTheBoard) {
    CMainFrame& frame = Frame({"-symbol", "IBM,MSFT"});
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wIBM\nwMSFT\n"));
    ASSERT_TRUE(feed.lookup.Heard(kGreeting + NewsCountsRequest("IBM:MSFT")));
    feed.lookup.Says("LNewsCounts,LN,<NewsCounts><symbol Name=\"IBM\" StoryCount=\"3\"/></NewsCounts>\r\n"
                     "LNewsCounts,!ENDMSG!,\r\n");
    ASSERT_TRUE(WaitUntil([&] { return Shown(1, ColumnOf("News")) == "3"; }));
    feed.level1.Says("N,SIM,1001,IBM:MSFT,20240131 093000,Simulated: up, and <b>away</b>\r\n");
    ASSERT_TRUE(WaitUntil([&] { return Shown(1, ColumnOf("News")) == "4"; }));
    EXPECT_EQ(Shown(2, ColumnOf("News")), "1");
    EXPECT_EQ(Shown(2, ColumnOf("Latest Headline")), "Simulated: up, and <b>away</b>");
}

TEST_F(CMainFrameTest, ARefusedSymbolThatIsUnknownMakesRoomForTheNext) {
    CMainFrame& frame = Frame({"-symbol", "BAD,GOOD"});
    Connect(frame);
    EXPECT_TRUE(Level1Heard("wBAD\nwGOOD\n"));
    feed.level1.Says("S,SYMBOL LIMIT REACHED,BAD\r\nS,SYMBOL LIMIT REACHED,GOOD\r\n");
    feed.admin.Says(StatusLine("Connected", 10, 9));
    ASSERT_TRUE(WaitUntil([&] { return frame.Stats().symbolsWatched == 9; }));
    feed.level1.Says("T,20240131 09:30:05\r\n");
    EXPECT_TRUE(Level1Heard("wBAD\n"));
    feed.level1.Says("n,BAD\r\nT,20240131 09:30:06\r\n");
    EXPECT_TRUE(Level1Heard("wGOOD\n"));
}

TEST_F(CMainFrameTest, TheCommandLinePlacesTheWindowBeforeTheFileAndTheLastRun) {
    if (QGuiApplication::primaryScreen()->size().width() < 800)
        GTEST_SKIP() << "on so small a screen the windows would be made narrower";
    settings.WriteInteger(kRectWidth, 640);
    settings.WriteInteger(kRectHeight, 360);
    settings.WriteInteger(kRectLeft, 30);
    CMainFrame& stored = Frame();
    stored.ShowPlaced();
    EXPECT_EQ(QRect(stored.pos(), stored.size()), QRect(30, 0, 640, 360));
    CMainFrame& named = Frame({"-left", "100", "-right", "780", "-top", "20"});
    OpenText(named.Document(), "Window=10;60;700;300;FALSE;FALSE\r\n", "Test");
    named.ShowPlaced();
    EXPECT_EQ(QRect(named.pos(), named.size()), QRect(100, 20, 680, 300));
    for (const bool maximised : {false, true}) {
        named.showMaximized();
        OpenText(named.Document(),
                 fmt::format("Window=40;50;600;{};{};FALSE\r\n", 400 + maximised, maximised ? "TRUE" : "FALSE"),
                 "Other");
        EXPECT_EQ(named.isMaximized(), maximised);
        EXPECT_EQ(named.Place().Placement().height, 400 + maximised);
    }
}

TEST_F(CMainFrameTest, TheFirstWindowIsAsWideAsItsColumnsAndTheScreenAllow) {
    const int screen = QGuiApplication::primaryScreen()->availableGeometry().width();
    CMainFrame& frame = Frame();
    frame.ShowPlaced();
    const int columns = frame.View().Grid().Geometry().ContentWidth();
    EXPECT_GT(frame.width(), std::min(columns, screen - 40)) << "screen of " << screen;
    EXPECT_LT(frame.width(), screen);
    CMainFrame& few = Frame();
    few.Document().Update()->SetColumnsByName("Symbol;Last;");
    few.Document().Update()->Columns();
    few.ShowPlaced();
    EXPECT_EQ(few.width(), std::min(1320, screen * 9 / 10));
}

TEST_F(CMainFrameTest, TheTitleIsTheProgramsAndTheDocumentsWithThePlatformsMark) {
    CMainFrame& frame = Frame();
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("Zantrel Watchlist[*]"));
    OpenText(frame.Document(), "TrailingRows=1\r\n", "Banks");
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("Zantrel Watchlist - Banks[*]"));
    frame.Document().CloseDocument();
    EXPECT_EQ(frame.windowTitle(), QStringLiteral("Zantrel Watchlist[*]"));
}

TEST_F(CMainFrameTest, TheAboutBoxShowsTheConnections) {
    CMainFrame& frame = Frame();
    Connect(frame);
    EXPECT_TRUE(Level1Heard(""));
    CAboutDlg about(frame, nullptr);
    const std::string text =
        about.findChild<QPlainTextEdit*>(QStringLiteral("statistics"))->toPlainText().toStdString();
    EXPECT_THAT(text, testing::StartsWith("Level1: 127.0.0.1:" + std::to_string(feed.level1.Number()) +
                                          "\n\tMessages Sent:4\tReceived:1\n"));
    EXPECT_THAT(text, HasSubstr("Lookup: 127.0.0.1:"));
    EXPECT_THAT(text, HasSubstr("Admin: 127.0.0.1:"));
}

TEST_F(CMainFrameTest, AlwaysOnTopKeepsTheWindowsPlaceAndIsKept) {
    CMainFrame& frame = Frame();
    frame.ShowPlaced();
    auto* action = frame.findChild<QAction*>(QStringLiteral("AlwaysOnTop"));
    EXPECT_EQ(action->data().toInt(), 10101);
    ASSERT_TRUE(WaitUntil([&] { return !frame.findChild<QTimer*>(QStringLiteral("placeTimer"))->isActive(); }));
    frame.move(40, 50);
    frame.resize(700, 400);
    const QPointer<QWindow> window = frame.windowHandle();
    action->trigger();
    EXPECT_TRUE(window) << "the windows that belong to it would fall behind a new one";
    EXPECT_TRUE(frame.isVisible());
    EXPECT_TRUE(frame.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(frame.size(), QSize(700, 400));
    EXPECT_EQ(frame.pos(), QPoint(40, 50));
    frame.close();
    EXPECT_TRUE(settings.ReadBoolean(kAlwaysOnTop));
    EXPECT_EQ(settings.ReadInteger(kRectWidth), 700);
}
