// From a line of the feed to the notice and back, in the real frame.

#include "app/FrameFixture.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/ui/AlertHistoryDlg.h"
#include "alerts/ui/AlertsDlg.h"
#include "alerts/ui/AlertsNotice.h"
#include "alerts/ui/NewAlertDlg.h"
#include "alerts/ui/NoticeQueue.h"
#include "alerts/ui/ResetAlert.h"
#include "app/alerts/AlertController.h"
#include "app/alerts/MissedAlerts.h"
#include "app/commands/Commands.h"
#include "base/qt/QtText.h"
#include "data/catalogue/UpdateFields.h"
#include "settings/Settings.h"
#include "support/EventLoop.h"
#include "support/Gui.h"
#include "support/MessageBoxes.h"
#include "support/ScriptedFeed.h"
#include "watchlist/fileformat/WatchlistReader.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

using namespace vx;
using namespace vx::test;

namespace {

class AlertController : public CFrameFixture {
protected:
    AlertController() { PortsAre(feed.level1.Number(), feed.lookup.Number(), feed.admin.Number()); }

    /// IBM in row 1 and MSFT in row 2, both watched.
    CMainFrame& Board() {
        CMainFrame& frame = Frame({"-symbol", "IBM,MSFT"});
        frame.Document().Update()->Columns().Append("Alerts");
        frame.Document().Update()->Columns();
        frame.ShowSized(1400, 500);
        frame.OpenAdminPort();
        feed.admin.Says(StatusLine("Connected"));
        feed.level1.Says("S,IP,127.0.0.1,5009\r\n");
        EXPECT_TRUE(WaitUntil([&] { return frame.Document().IsFeedReady(); }));
        return frame;
    }
    void LastIs(const char* symbol, const char* price) {
        feed.level1.Says("Q," + std::string(symbol) + std::string(UpdateSlot("Last"), ',') + price + ",\r\n");
    }
    static CAlertsNotice* Notice(CMainFrame& frame) {
        CNoticeQueue& notices = frame.Alerts().Notices();
        WaitUntil([&] { return notices.Shown() != nullptr; }, 5000);
        return notices.Shown();
    }
    static A_INFO Above(double value) {
        A_INFO alert;
        alert.enabled = 1;
        alert.value = value;
        alert.fieldId = AlertFieldId("Last").value();
        alert.condition = 1;
        return alert;
    }
    template <class T> static T& Named(const QWidget& window, const char* name) {
        return *window.findChild<T*>(QString::fromLatin1(name));
    }
    static void Click(const QWidget& window, const char* name) {
        QTest::mouseClick(&Named<QAbstractButton>(window, name), Qt::LeftButton);
    }
    static void ClickOk(const QWidget& window) {
        QTest::mouseClick(window.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    }

    CScriptedFeed feed;
};

} // namespace

TEST_F(AlertController, AnAlertIsSetOnACellFiresIsResetAndFiresAgain) {
    CMainFrame& frame = Board();
    const int last = ColumnOf("Last");
    LastIs("IBM", "190.25");
    ASSERT_TRUE(WaitUntil([&] { return Shown(1, last) == "190.2500"; }));
    frame.View().Grid().SetFocusCell(1, last);
    frame.Commands().Action(ECommand::AlertNew).trigger();
    auto* dialog = frame.findChild<CNewAlertDlg*>();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(Named<QComboBox>(*dialog, "symbolList").currentText(), QStringLiteral("IBM"));
    EXPECT_EQ(Named<QComboBox>(*dialog, "fieldList").currentText(), QStringLiteral("Last"));
    EXPECT_EQ(Named<QComboBox>(*dialog, "operationList").currentText(), QStringLiteral("greater than"));
    EXPECT_EQ(Named<QLineEdit>(*dialog, "valueBox").text(), QStringLiteral("190.25"));
    Named<QComboBox>(*dialog, "soundList").setCurrentIndex(0);
    ClickOk(*dialog);
    EXPECT_EQ(Shown(1, ColumnOf("Alerts")), "1");
    EXPECT_TRUE(frame.Document().IsModified());

    LastIs("IBM", "190.5");
    CAlertsNotice* notice = Notice(frame);
    ASSERT_TRUE(notice);
    EXPECT_EQ(notice->windowTitle(), QStringLiteral("Norv Vx alert: IBM Last = 190.500000"));
    EXPECT_EQ(Shown(1, ColumnOf("Alerts")), "0/1");
    LastIs("IBM", "191");
    EXPECT_TRUE(WaitUntil([&] { return Shown(1, last) == "191.0000"; })) << "the feed goes on behind the notice";

    Click(*notice, "reset");
    auto* reset = notice->findChild<CResetAlert*>();
    Named<CSpinEdit>(*reset, "percent").stepBy(1);
    ClickOk(*reset);
    ASSERT_TRUE(WaitUntil([&] { return Shown(1, ColumnOf("Alerts")) == "1"; }));
    EXPECT_EQ(frame.Document().Alerts().Get("IBM")[0].value, 192.1525);
    EXPECT_EQ(frame.Document().Undo().UndoName(), "new alert") << "a reset is no edit";
    frame.Document().MarkSaved();
    frame.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return frame.isActiveWindow() && frame.Alerts().Presence().IsHere(); }));
    LastIs("IBM", "193");
    ASSERT_TRUE(Notice(frame));
    const std::vector<SAlertFiring> fired = CAlertHistory(folder / "zantrel").Read();
    ASSERT_EQ(fired.size(), 2u);
    EXPECT_EQ(fired[0].value, 190.5);
    EXPECT_EQ(EndText(fired[0]), "Reset to 192.1525");
    EXPECT_EQ(EndText(fired[1]), "Seen");
    EXPECT_TRUE(frame.Document().IsModified()) << "the file has the alert armed";
}

TEST_F(AlertController, TheSecondAlertOfASymbolIsArmedByItsNoticeAndResetChangesTheFirst) {
    CMessageBoxes boxes;
    CMainFrame& frame = Board();
    CAlertsMap& alerts = frame.Document().AlertRules();
    alerts.Add("IBM", Above(50));
    alerts.Add("IBM", Above(10));
    LastIs("IBM", "60");
    ASSERT_TRUE(Notice(frame)); // Of the first one.
    Click(*Notice(frame), "dismiss");
    CAlertsNotice* second = Notice(frame);
    ASSERT_TRUE(second);
    alerts.Remove("IBM", 0); // Edits in between do not mislead it.
    alerts.Add("IBM", Above(50));
    alerts.Add("IBM", Above(5));
    Click(*second, "arm");
    ASSERT_TRUE(WaitUntil([&] { return alerts.Get("IBM")[0].enabled == 1; }));
    EXPECT_EQ(alerts.Get("IBM")[0], Above(10));
    EXPECT_EQ(alerts.Get("IBM")[1].value, 50);

    alerts.Clear(EAlertMap::Live);
    A_INFO first = Above(50);
    first.enabled = 0;
    alerts.Add("IBM", first);
    alerts.Add("IBM", Above(20));
    LastIs("IBM", "61");
    CAlertsNotice* third = Notice(frame);
    ASSERT_TRUE(third);
    Click(*third, "reset");
    auto* reset = third->findChild<CResetAlert*>();
    EXPECT_TRUE(Named<QLabel>(*reset, "target")
                    .text()
                    .contains(QStringLiteral(
                        "not the one that fired:\n\"IBM\" when the \"Last\" is greater than 50.000000\n")));
    ClickOk(*reset);
    EXPECT_THAT(boxes.TakeTexts(), testing::SizeIs(1)) << "the one that fired has 20 already";
    Named<CSpinEdit>(*reset, "value").stepBy(1);
    ClickOk(*reset);
    ASSERT_TRUE(WaitUntil([&] { return alerts.Get("IBM")[0].enabled == 1; }));
    EXPECT_EQ(alerts.Get("IBM")[0].value, 21);
    EXPECT_EQ(alerts.Get("IBM")[1].enabled, 0u);
    const std::vector<SAlertFiring> fired = CAlertHistory(folder / "zantrel").Read();
    ASSERT_EQ(fired.size(), 3u);
    EXPECT_EQ(EndText(fired[0]), "Reset to 21") << "the one that was changed";
    EXPECT_EQ(EndText(fired[1]), "Armed again");
    EXPECT_TRUE(EndText(fired[2]).ends_with("; reset Last greater than 50 to 21")) << EndText(fired[2]);
}

TEST_F(AlertController, WhatIsGoneWhenItsNoticeIsAnsweredDoesNoHarm) {
    CMainFrame& frame = Board();
    frame.Document().AlertRules().Add("IBM", Above(10));
    frame.Document().AlertRules().Add("IBM", Above(20));
    LastIs("IBM", "30");
    CAlertsNotice* first = Notice(frame);
    ASSERT_TRUE(first);
    frame.Document().AlertRules().RemoveSymbol("IBM");
    frame.Document().Update()->EmptyRow(1);
    frame.Document().MarkSaved();
    Click(*first, "reset");
    ClickOk(*first->findChild<CResetAlert*>());
    CAlertsNotice* second = Notice(frame);
    ASSERT_TRUE(second);
    EXPECT_FALSE(Named<QPushButton>(*second, "reset").isEnabled());
    Click(*second, "dismiss");
    TurnEventLoop(5);
    EXPECT_FALSE(frame.Alerts().Notices().Shown());
    EXPECT_TRUE(frame.Document().Alerts().IsEmpty());
    EXPECT_FALSE(frame.Document().IsModified()) << "nothing was reset";
    frame.Document().AlertRules().Add("IBM", Above(10));
    SFiredAlert of;
    of.record.symbol = "IBM";
    of.record.index = 7;
    of.watchlist = frame.Document().OpenCount();
    QCoreApplication::postEvent(&frame, new CResetAlertMessage("IBM,7,1.000000", of));
    of.record.index = 0;
    QCoreApplication::postEvent(&frame, new CResetAlertMessage("IBM,0,99.000000", of));
    EXPECT_TRUE(WaitUntil([&] { return frame.Document().Alerts().Get("IBM")[0].value == 99; }));
}

TEST_F(AlertController, ANoticeDoesNotResetTheAlertOfAWatchlistThatWasOpenedMeanwhile) {
    CMainFrame& frame = Board();
    frame.Document().AlertRules().Add("IBM", Above(10));
    frame.Document().AlertRules().Add("IBM", Above(20));
    LastIs("IBM", "30");
    ASSERT_TRUE(Notice(frame));
    OpenText(frame.Document(), "Alerts=IBM:Last,>,50.000000,FALSE,TRUE,0,FALSE,;\r\n", "other");
    ASSERT_EQ(frame.Document().Alerts().Count("IBM"), 1);
    Click(*frame.Alerts().Notices().Shown(), "dismiss");
    ASSERT_TRUE(Notice(frame));
    EXPECT_FALSE(Named<QPushButton>(*Notice(frame), "reset").isEnabled());
}

TEST_F(AlertController, NothingFiresOnAQuoteThatHasNotCome) {
    CMainFrame& frame = Board();
    A_INFO below = Above(10);
    below.condition = 3;
    frame.Document().AlertRules().Add("IBM", below);
    feed.level1.Says("F,IBM,5,12.5,\r\nn,NOSUCH\r\n");
    LastIs("MSFT", "5");
    ASSERT_TRUE(WaitUntil([&] { return !Shown(2, ColumnOf("Last")).empty(); }));
    EXPECT_EQ(frame.Document().Alerts().Get("IBM")[0].enabled, 1u);
    LastIs("IBM", "0");
    EXPECT_TRUE(Notice(frame));
}

TEST_F(AlertController, NewsFireTheirAlertAndCanBeArmedAgain) {
    CMainFrame& frame = Board();
    A_INFO alert = Above(1);
    alert.fieldId = AlertFieldId("News").value();
    alert.condition = 0;
    frame.Document().AlertRules().Add("IBM", alert);
    feed.level1.Says("N,SIM,1001,MSFT:IBM,20240131 093000,Headline, <b>bold</b>\r\n");
    CAlertsNotice* notice = Notice(frame);
    ASSERT_TRUE(notice);
    EXPECT_EQ(notice->windowTitle(), QStringLiteral("Norv Vx alert: IBM News"));
    EXPECT_EQ(Named<QLabel>(*notice, "headline").text(), QStringLiteral("Headline, <b>bold</b>"));
    Click(*notice, "reset");
    ClickOk(*notice->findChild<CResetAlert*>());
    EXPECT_TRUE(WaitUntil([&] { return frame.Document().Alerts().Get("IBM")[0].enabled == 1; }));
    EXPECT_EQ(frame.Document().Alerts().Get("IBM")[0].value, 1);
}

TEST_F(AlertController, WhatFiredWhileAwayIsCountedAndFoundInTheHistory) {
    CMainFrame& frame = Board();
    auto& missed = Named<QToolButton>(*frame.statusBar(), "missedAlerts");
    frame.Document().AlertRules().Add("IBM", Above(10));
    frame.Document().AlertRules().Add("MSFT", Above(10));
    frame.Document().AlertRules().Add("MSFT", Above(30));
    frame.Alerts().Presence().SetHere(true);
    LastIs("IBM", "20");
    ASSERT_TRUE(Notice(frame) && WaitUntil([&] { return Notice(frame)->isActiveWindow(); }));
    EXPECT_FALSE(missed.isVisible());
    frame.Alerts().Presence().SetHere(false);
    LastIs("MSFT", "20");
    LastIs("MSFT", "40");
    ASSERT_TRUE(WaitUntil([&] { return missed.text() == QStringLiteral("2 missed alerts"); }));
    CPresence& presence = frame.Alerts().Presence();
    presence.NoteOwnWindow();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_FALSE(presence.IsHere()) << "the desktop made the notice the active window, not the user";
    Click(*Notice(frame), "dismissAll");
    EXPECT_TRUE(presence.IsHere());
    EXPECT_TRUE(missed.isVisible()) << "dismissed together is not looked at";
    missed.click();
    EXPECT_FALSE(missed.isVisible());
    auto* history = frame.findChild<CAlertHistoryDlg*>();
    ASSERT_TRUE(history && history->isVisible());
    const QAbstractItemModel& model = *Named<QTableView>(*history, "table").model();
    ASSERT_TRUE(WaitUntil([&] { return model.rowCount() == 2; })) << model.rowCount();
    EXPECT_EQ(model.index(0, 1).data().toString(), QStringLiteral("MSFT"));
    ASSERT_TRUE(WaitUntil([&] { return model.index(0, 9).data().toString() == QStringLiteral("Dismissed together"); }));

    frame.Document().AlertRules().Add("IBM", Above(90));
    presence.SetHere(false);
    Q_EMIT frame.Alerts().Missed().Called();
    LastIs("IBM", "99");
    ASSERT_TRUE(Notice(frame));
    EXPECT_FALSE(missed.isVisible()) << "who chose the notification is here";
}

TEST_F(AlertController, CommandsKnowTheRowAndMuteIsKept) {
    CMainFrame& frame = Board();
    frame.Document().AlertRules().Add("IBM", Above(10));
    frame.Document().AlertRules().Add("MSFT", Above(1000));
    frame.View().Grid().SetFocusCell(3, 1);
    frame.Commands().Action(ECommand::AlertNew).trigger();
    auto* unknown = frame.findChild<CNewAlertDlg*>();
    ASSERT_TRUE(unknown);
    EXPECT_EQ(Named<QComboBox>(*unknown, "symbolList").currentIndex(), -1) << "an empty row";
    unknown->close();

    const int column = ColumnOf("Alerts");
    int selected = -1;
    QTimer look; // The dialog's own event loop runs inside the one that waits here.
    QObject::connect(&look, &QTimer::timeout, &frame, [&] {
        auto* dialog = qobject_cast<CAlertsDlg*>(QApplication::activeModalWidget());
        if (!dialog) return;
        selected = Named<QListView>(*dialog, "alertList").currentIndex().row();
        dialog->reject();
    });
    look.start(5);
    frame.View().Grid().SetFocusCell(2, column);
    Q_EMIT frame.View().Grid().CellDoubleClicked(2, column);
    ASSERT_TRUE(WaitUntil([&] { return selected != -1; }));
    EXPECT_EQ(selected, 1);

    QAction& mute = frame.Commands().Action(ECommand::AlertMute);
    mute.trigger();
    EXPECT_TRUE(settings.ReadBoolean(kAlertMute));
    EXPECT_TRUE(WaitUntil([&] { return mute.isChecked(); }));
    mute.trigger();
    EXPECT_FALSE(settings.ReadBoolean(kAlertMute));
}
