// SPDX-License-Identifier: MIT
#include "app/shell/RestartController.h"

#include "app/FrameFixture.h"
#include "app/files/RecoveryController.h"
#include "feed/session/FeedSession.h"
#include "watchlist/file/FileBackups.h"

#include <QProgressDialog>
#include <QSignalSpy>

using namespace vx;
using namespace vx::test;

namespace {

class CRestartControllerTest : public CSiblingFixture {
protected:
    /// A shown frame whose feed client has gone.
    void EndedFrame(const std::vector<std::string>& arguments = {}, const std::string& file = {}) {
        ShownFrame(arguments, 700, 500).Restart().ShowEnd(EFeedEnd::Quotes);
        EXPECT_TRUE(file.empty() || frame->Files().Open(file));
    }
    /// The arguments up to the window's place.
    std::string StartedByRestart() {
        const std::string started = StartedBy(ECommand::Restart);
        return started.substr(0, started.find("-left|"));
    }
    void Change(int row, const char* symbol) {
        doc->Update()->EnterSymbol(row, symbol);
        doc->Edit({}, [](CWatchlistEdit&) {});
        doc->Update()->Columns();
    }
};

} // namespace

TEST_F(CRestartControllerTest, UnsavedChangesAndWhatIsBeingTypedGoOverWithoutAQuestion) {
    Install();
    EndedFrame({"--starter"});
    frame->move(40, 30);
    frame->activateWindow();
    ProcessAll();
    Change(1, "IBM");
    ASSERT_TRUE(grid->BeginEdit(2, 1, "goog"));
    const QSignalSpy restarted(&frame->Restart(), &CRestartController::Restarted);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_R, Qt::AltModifier);
    const std::string started = Started();
    EXPECT_THAT(restarted, SizeIs(1));
    const std::string kept = frame->Recovery().KeptFile();
    EXPECT_EQ(started, fmt::format("zantrel-watchlist|--resume|{}|-left|40|-top|30|-right|740|-bottom|530|",
                                   kept.substr(kept.rfind('/') + 1)));
    DropFrame();

    Frame();
    ASSERT_TRUE(frame->Recovery().Resume(kept));
    EXPECT_EQ(doc->RowSymbol(1), "IBM");
    EXPECT_EQ(doc->RowSymbol(2), "GOOG");
    EXPECT_TRUE(doc->IsModified());
    EXPECT_EQ(frame->Recovery().KeptFile(), kept) << "it is kept up to date from here on";
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_FALSE(frame->Recovery().Resume(At("none.recovery")));
    EXPECT_FALSE(std::filesystem::exists(At("none.lock")));
}

TEST_F(CRestartControllerTest, AnUnmodifiedListIsOpenedAsItWas) {
    Install();
    EndedFrame({"--starter", "--log"});
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|--starter|--log|");
    EndedFrame({"-symbol", "IBM,Z\xDCRN", "-type", "t", "--theme", "dark"});
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|-symbol|IBM,Z\xC3\x9CRN|-type|t|--theme|dark|");
    EndedFrame({}, FileOf("Banks.vxw", "MSFT"));
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|Banks.vxw|--new-window|");
}

TEST_F(CRestartControllerTest, ASaveThatIsUnderWayIsWaitedFor) {
    Install();
    EndedFrame({}, FileOf("Banks.vxw", "MSFT"));
    std::optional<CFileLock> slowDisk;
    ASSERT_EQ(CFileBackups(At("zantrel")).Lock(At("Banks.vxw"), slowDisk), 0);
    frame->Files().SetPatienceMs(0);
    Change(2, "IBM");
    Do(ECommand::FileSave);
    const QSignalSpy restarted(&frame->Restart(), &CRestartController::Restarted);
    WhenOpen<QProgressDialog>([](QProgressDialog& dialog) { dialog.cancel(); });
    Do(ECommand::Restart);
    EXPECT_THAT(restarted, SizeIs(0));
    WhenOpen<QProgressDialog>([&](QProgressDialog&) { slowDisk.reset(); });
    EXPECT_EQ(StartedByRestart(), "zantrel-watchlist|Banks.vxw|--new-window|");
    EXPECT_FALSE(doc->IsModified());
}

TEST_F(CRestartControllerTest, TheProgramStaysWhenItCannotBeStartedOrChangesCannotBeKept) {
    EndedFrame();
    const QSignalSpy restarted(&frame->Restart(), &CRestartController::Restarted);
    EXPECT_EQ(StartedByRestart(), "");
    EXPECT_THAT(boxes.TakeTexts(), ElementsAre("Unable to launch zantrel-watchlist.  Error Code: 2"));
    Install();
    std::filesystem::create_directories(At("zantrel"));
    WriteFile(At("zantrel/recovery"), "in the way of the folder");
    doc->Edit({}, [](CWatchlistEdit&) {});
    EXPECT_EQ(StartedByRestart(), "");
    EXPECT_THAT(boxes.TakeTexts(), Contains(StartsWith("The unsaved changes could not be kept")));
    EXPECT_THAT(restarted, SizeIs(0));
}
