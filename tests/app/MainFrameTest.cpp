// SPDX-License-Identifier: MIT
#include "app/shell/MainFrame.h"

#include "app/FrameFixture.h"
#include "app/shell/AboutDlg.h"
#include "support/ScriptedFeed.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPlainTextEdit>

using namespace vx;
using namespace vx::test;

namespace {

/// A main frame with a feed that says what the test tells it to.
class CMainFrameTest : public CFrameFixture {
protected:
    CMainFrameTest() { PortsAre(feed.level1.Number(), feed.lookup.Number(), feed.admin.Number()); }

    /// Brings the session up to the point where watches may begin.
    void Connect() {
        frame->OpenAdminPort();
        feed.admin.Says(StatusLine("Connected"));
        feed.level1.Says("S,IP,127.0.0.1,5009\r\n");
        heard = kGreeting + "S,SELECT UPDATE FIELDS," + UpdateFieldList() + "\nS,NEWSON\r\n";
    }
    testing::AssertionResult Level1Heard(const std::string& more) { return feed.level1.Heard(heard += more); }
    /// A frame with symbols, which the feed has heard of; shown where it is to be looked at.
    void Connected(const char* symbols, const std::string& watched, bool shown = false) {
        shown ? ShownFrame({"-symbol", symbols}, 1300, 500) : Frame({"-symbol", symbols});
        Connect();
        EXPECT_TRUE(Level1Heard(watched));
    }
    void Drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& each : paths) urls.push_back(QUrl::fromLocalFile(QString::fromStdString(each)));
        data.setUrls(urls);
        // As the platform has it: the deepest widget is asked first.
        QWidget* under = grid->viewport();
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(under, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent event(QPointF(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(under, &event);
        EXPECT_EQ(event.dropAction(), Qt::CopyAction) << "the sender must not remove the file";
        TurnEventLoop(2);
    }
    int64_t Painted() const { return grid->Counters().cells; }
    /// How much was painted when nothing is on its way any more.
    int64_t PaintedAtRest() {
        int64_t before = -1;
        EXPECT_TRUE(WaitUntil([&] {
            frame->View().OnRepaintTimer();
            TurnEventLoop(3);
            return std::exchange(before, Painted()) == Painted() && before > 0;
        }));
        return before;
    }

    const std::string kGreeting = "S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,VxWatchlist\n";
    CScriptedFeed feed;
    std::string heard;
};

} // namespace

TEST_F(CMainFrameTest, PortsComeUpInOrderAndSymbolsAreWatchedWhenTheFeedIsReady) {
    Frame({"-symbol", "ibm, msft"}).OpenAdminPort();
    EXPECT_TRUE(feed.admin.Heard(kGreeting));
    EXPECT_EQ(feed.level1.Connections(), 0);
    Connect();
    EXPECT_TRUE(feed.lookup.Heard(kGreeting + NewsCountsRequest("IBM:MSFT")));
    EXPECT_TRUE(Level1Heard("wIBM\nwMSFT\n"));
    EXPECT_EQ(Status(), "Symbols:  2");
    EXPECT_FALSE(doc->IsModified());
    feed.level1.Says("S,IP,127.0.0.1,5009\r\nT,20240131 09:30:05\r\n");
    EXPECT_TRUE(Level1Heard("S,NEWSON\r\n")) << "a second ready line asks for news alone";
    EXPECT_TRUE(WaitUntil([&] { return Pane("paneClock").find("09:30:05") != std::string::npos; }));

    feed.lookup.Says("LNewsCounts,LN,<NewsCounts><symbol Name=\"IBM\" StoryCount=\"3\"/></NewsCounts>\r\n"
                     "LNewsCounts,!ENDMSG!,\r\n");
    ASSERT_TRUE(Shows(1, "News", "3"));
    feed.level1.Says("N,SIM,1001,IBM:MSFT,20240131 093000,Simulated: up, and <b>away</b>\r\n");
    ASSERT_TRUE(Shows(1, "News", "4"));
    EXPECT_EQ(Shown(2, "News") + Shown(2, "Latest Headline"), "1Simulated: up, and <b>away</b>");

    CAboutDlg about(*frame, nullptr);
    EXPECT_THAT(Named<QPlainTextEdit>(about, "statistics").toPlainText().toStdString(),
                StartsWith(fmt::format("Level1: 127.0.0.1:{}\n\tMessages Sent:7\t", feed.level1.Number())));
}

TEST_F(CMainFrameTest, CommandLineSymbolsOverTheRowsOfAFileAreUnsavedChanges) {
    Frame({"-symbol", "IBM"});
    ASSERT_TRUE(frame->Files().Open(FileOf("Banks.vxw", "MSFT")));
    EXPECT_FALSE(doc->IsModified());
    frame->OpenAdminPort();
    feed.admin.Says("S,IP,127.0.0.1,5009\r\n"); // Watches that find no connection go out when there is one.
    ASSERT_TRUE(WaitUntil([&] { return doc->IsFeedReady(); }));
    EXPECT_EQ(doc->RowSymbol(1), "IBM");
    EXPECT_TRUE(doc->IsModified());
    Connect();
    EXPECT_TRUE(Level1Heard("wIBM\n"));
}

TEST_F(CMainFrameTest, AnUpdateReachesTheScreenWithinABeatAndOnlyItsCellsAreRepainted) {
    Connected("IBM,MSFT", "wIBM\nwMSFT\n", true);
    feed.level1.Says("Q,IBM,,,,,,,100.25,100.50,\r\nQ,MSFT,,,,,,,50,\r\n");
    ASSERT_TRUE(Shows(1, "Bid", "100.2500"));
    ASSERT_TRUE(WaitUntil([&] { return Pane("paneFeed") == "Feed: Connected"; })) << "values are no longer grey";
    const int64_t before = PaintedAtRest();
    feed.level1.Says("Q,IBM,,,,,,,100.25,\r\nQ,IBM,,,,,,,100.75,\r\n");
    ASSERT_TRUE(Shows(1, "Bid", "100.7500"));
    ASSERT_TRUE(WaitUntil([&] { return Painted() > before; })) << "a text that was read counts as painted";
    // The cell may have been lit by both updates and put out again by now; a row has more cells.
    EXPECT_LE(Painted() - before, 4) << "more than the changed cell was painted";
}

// The scripted port takes the request and cannot answer while the frame waits for it.
TEST_F(CMainFrameTest, ALookupPortThatNeverAnswersHoldsTheFrameOnce) {
    Frame({"-symbol", "ibm"}).LookupTables().SetTimes({30, 30});
    Connect();
    ASSERT_TRUE(Level1Heard("wIBM\n"));
    EXPECT_TRUE(feed.lookup.Heard(kGreeting + NewsCountsRequest("IBM"))) << "nothing is to be named yet";
    for (int i = 1; i <= 50; ++i)
        feed.level1.Says(DataLine('Q', "IBM", fmt::format("Last={},Last Market Center=7", i)) + "\r\n");
    EXPECT_TRUE(Shows(1, "Last", "50.0000"));
    EXPECT_TRUE(feed.lookup.Heard(kGreeting + NewsCountsRequest("IBM") + "SLM\r\n"));
}

TEST_F(CMainFrameTest, ASymbolThatIsUnwatchedOrUnknownNoLongerWaitsForRoom) {
    Connected("BAD,GOOD,IBM", "wBAD\nwGOOD\nwIBM\n");
    feed.level1.Says("S,SYMBOL LIMIT REACHED,BAD\r\nS,SYMBOL LIMIT REACHED\r\nS,SYMBOL LIMIT REACHED,GOOD\r\n");
    feed.admin.Says(StatusLine("Connected", 10, 9));
    ASSERT_TRUE(WaitUntil([&] { return frame->Stats().symbolsWatched == 9; }));
    feed.level1.Says("T,20240131 09:30:05\r\n");
    EXPECT_TRUE(Level1Heard("wBAD\n"));
    feed.level1.Says("n,BAD\r\nT,20240131 09:30:06\r\n");
    EXPECT_TRUE(Level1Heard("wGOOD\n"));
    EXPECT_EQ(Status(), "Symbols:  2");

    feed.level1.Says("S,SYMBOL LIMIT REACHED,IBM\r\n");
    ASSERT_TRUE(WaitUntil([&] { return !frame->LimitedSymbols().Pending().empty(); }));
    doc->Update()->EmptyRow(3);
    EXPECT_TRUE(frame->LimitedSymbols().Pending().empty());
}

TEST_F(CMainFrameTest, ARefusedSymbolsRowSaysThatItWaitsUntilDataComes) {
    Connected("IBM,MSFT,MSFT--X", "wIBM\nwMSFT\nS,REGON,MSFT\n", true);
    const auto says = [&](const std::string& notice, const std::string& line) {
        const int64_t before = PaintedAtRest();
        feed.level1.Says(line);
        return WaitUntil([&] { return Notice(2) == notice && Painted() > before; });
    };
    const std::string notice = "waiting for room: limit of 500 reached";
    ASSERT_TRUE(says(notice, "S,SYMBOL LIMIT REACHED,MSFT\r\n"));
    EXPECT_EQ(Notice(1) + Notice(4), "");
    EXPECT_EQ(Notice(3), notice);
    ASSERT_TRUE(says("", "F,MSFT,\r\n"));
    EXPECT_THAT(Notice(3), HasSubstr("waiting")) << "the region has no data yet";
}

TEST_F(CMainFrameTest, AConnectionThatEndsIsShownAndARestartOffered) {
    Connected("IBM", "wIBM\n", true);
    feed.level1.Says("Q,IBM,,,,,,,100.25,\r\n");
    ASSERT_TRUE(Shows(1, "Bid", "100.2500"));
    const auto& bar = Child<QWidget>("feedEndBar");
    EXPECT_FALSE(bar.isVisible() || IsEnabled(ECommand::Restart));
    const auto isStale = [&] { return Cell(1, "Bid").role == ETextRole::Stale; };
    feed.admin.Says(StatusLine("Not Connected"));
    EXPECT_TRUE(WaitUntil([&] { return isStale() && Pane("paneFeed") == "Feed: Not Connected"; }));
    feed.admin.Says(StatusLine("Connected"));
    EXPECT_TRUE(WaitUntil([&] { return !isStale(); }));
    feed.admin.HangsUp();
    ASSERT_TRUE(WaitUntil([&] { return bar.isVisible(); }));
    EXPECT_FALSE(isStale()) << "quotes still come";
    feed.level1.HangsUp();
    ASSERT_TRUE(WaitUntil(isStale));
    EXPECT_EQ(Pane("paneFeed"), "Feed: connection ended");
    doc->Update()->EnterSymbol(2, "MSFT");
    EXPECT_EQ(Notice(2), "not watched: no connection to the feed client");
    EXPECT_EQ(Notice(1), "") << "it shows its last values";
}

TEST_F(CMainFrameTest, OfDroppedFilesTheFirstIsOpenedAndClosingAsksAboutUnsavedChanges) {
    Frame({"-symbol", "ibm"}).show();
    Drop({FileOf("A.vxw", "IBM")});
    EXPECT_EQ(doc->RowSymbol(1), "IBM");
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("Zantrel Watchlist - A[*]"));
    EXPECT_THAT(frame->CommandLine().Symbols(), IsEmpty());
    Drop({FileOf("B.vxw", "GE"), At("A.vxw"), At("c.txt")});
    EXPECT_EQ(doc->RowSymbol(1), "GE");
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("Only \"" + At("B.vxw") +
                            "\" is opened: a window shows one watchlist. The other 2 files were left alone."));

    Enter(2, "f");
    boxes.answers = {EBoxAnswer::Cancel, EBoxAnswer::No};
    EXPECT_FALSE(frame->close());
    EXPECT_TRUE(frame->isVisible());
    EXPECT_TRUE(frame->close());
}
