#include "app/shell/RestartController.h"

#include "app/SiblingFixture.h"
#include "app/files/FileController.h"
#include "app/files/RecoveryController.h"
#include "feed/session/FeedSession.h"
#include "support/Dialogs.h"
#include "support/Gui.h"
#include "watchlist/file/FileBackups.h"

#include <QProgressDialog>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <fmt/format.h>

using namespace vx;
using namespace vx::test;
using testing::SizeIs;
using testing::StartsWith;

namespace {

class CRestartControllerTest : public CSiblingFixture {
protected:
    /// A shown frame whose feed client has gone.
    CMainFrame& EndedFrame(const std::vector<std::string>& arguments = {}) {
        CMainFrame& frame = Frame(arguments);
        frame.ShowSized(700, 500);
        frame.Restart().ShowEnd(EFeedEnd::Quotes);
        return frame;
    }
    /// The arguments up to the window's place.
    std::string StartedByRestart() {
        const std::string started = StartedBy("Restart");
        return started.substr(0, started.find("-left|"));
    }
};

} // namespace

TEST_F(CRestartControllerTest, UnsavedChangesAndWhatIsBeingTypedGoOverWithoutAQuestion) {
    Install("zantrel-watchlist");
    CMainFrame& frame = EndedFrame();
    frame.move(40, 30);
    frame.activateWindow();
    ProcessAll();
    frame.Document().Update()->EnterSymbol(1, "IBM");
    frame.Document().Edit({}, [](CWatchlistEdit&) {});
    frame.Document().Update()->Columns();
    ASSERT_TRUE(frame.View().Grid().BeginEdit(2, 1, "goog"));
    const QSignalSpy restarted(&frame.Restart(), &CRestartController::Restarted);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_R, Qt::AltModifier);
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(At("started")); }));
    EXPECT_THAT(restarted, SizeIs(1));
    const std::string kept = frame.Recovery().KeptFile();
    EXPECT_EQ(ReadFile(At("started")),
              fmt::format("zantrel-watchlist|--resume|{}|-left|40|-top|30|-right|740|-bottom|530|",
                          kept.substr(kept.rfind('/') + 1)));
    DropFrame();

    CMainFrame& next = Frame();
    ASSERT_TRUE(next.Recovery().Resume(kept));
    EXPECT_EQ(next.Document().RowSymbol(1), "IBM");
    EXPECT_EQ(next.Document().RowSymbol(2), "GOOG");
    EXPECT_TRUE(next.Document().IsModified());
    EXPECT_EQ(next.Recovery().KeptFile(), kept) << "it is kept up to date from here on";
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_FALSE(next.Recovery().Resume(At("none.recovery")));
    EXPECT_FALSE(std::filesystem::exists(At("none.lock")));
}

TEST_F(CRestartControllerTest, AnUnmodifiedListIsOpenedAsItWas) {
    Install("zantrel-watchlist");
    EndedFrame({"--starter", "--log"});
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|--starter|--log|");
    EndedFrame({"-symbol", "IBM,Z\xDCRN", "-type", "t", "--theme", "dark"});
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|-symbol|IBM,Z\xC3\x9CRN|-type|t|--theme|dark|");
    WriteFile(At("Banks.vxw"), "Columns=Symbol:1000;\r\nSymbols=MSFT:1,;\r\n");
    ASSERT_TRUE(EndedFrame().Files().Open(At("Banks.vxw")));
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|Banks.vxw|--new-window|");
}

TEST_F(CRestartControllerTest, ASaveThatIsUnderWayIsWaitedFor) {
    Install("zantrel-watchlist");
    WriteFile(At("Banks.vxw"), "Columns=Symbol:1000;\r\nSymbols=MSFT:1,;\r\n");
    CMainFrame& frame = EndedFrame();
    ASSERT_TRUE(frame.Files().Open(At("Banks.vxw")));
    std::optional<CFileLock> slowDisk;
    ASSERT_EQ(CFileBackups(At("zantrel")).Lock(At("Banks.vxw"), slowDisk), 0);
    frame.Files().SetPatienceMs(0);
    frame.Document().Update()->EnterSymbol(2, "IBM");
    frame.Document().Edit({}, [](CWatchlistEdit&) {});
    Do("FileSave");
    const QSignalSpy restarted(&frame.Restart(), &CRestartController::Restarted);
    WhenOpen<QProgressDialog>([](QProgressDialog& dialog) { dialog.cancel(); });
    Do("Restart");
    EXPECT_THAT(restarted, SizeIs(0));
    WhenOpen<QProgressDialog>([&](QProgressDialog&) { slowDisk.reset(); });
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|Banks.vxw|--new-window|");
    EXPECT_FALSE(frame.Document().IsModified());
}

TEST_F(CRestartControllerTest, TheProgramStaysWhenItCannotBeStartedOrChangesCannotBeKept) {
    CMainFrame& frame = EndedFrame();
    const QSignalSpy restarted(&frame.Restart(), &CRestartController::Restarted);
    EXPECT_EQ(StartedByRestart(), "");
    EXPECT_THAT(boxes.TakeTexts(), testing::ElementsAre("Unable to launch zantrel-watchlist.  Error Code: 2"));
    Install("zantrel-watchlist");
    std::filesystem::create_directories(At("zantrel"));
    WriteFile(At("zantrel/recovery"), "in the way of the folder");
    frame.Document().Edit({}, [](CWatchlistEdit&) {});
    EXPECT_EQ(StartedByRestart(), "");
    EXPECT_THAT(boxes.TakeTexts(), testing::ElementsAre(StartsWith("The unsaved changes could not be kept")));
    EXPECT_THAT(restarted, SizeIs(0));
}
