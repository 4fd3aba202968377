// SPDX-License-Identifier: MIT
// From a new value to the notice and back.

#include "app/alerts/AlertController.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/ui/AlertHistoryDlg.h"
#include "alerts/ui/AlertsNotice.h"
#include "alerts/ui/NewAlertDlg.h"
#include "alerts/ui/NoticeQueue.h"
#include "alerts/ui/ResetAlert.h"
#include "app/ContextFixture.h"
#include "app/alerts/MissedAlerts.h"

#include <QComboBox>
#include <QTableView>
#include <QToolButton>

using namespace vx;
using namespace vx::test;

namespace {

class CAlertControllerTest : public CContextFixture {
protected:
    CAlertControllerTest() {
        ColumnsAre("Symbol;Last;Alerts;");
        doc->SetFeedReady();
        Rows(QStringLiteral("IBM\nMSFT"));
    }
    CAlertsMap& Alerts() { return doc->AlertRules(); }
    const A_INFO& Alert(size_t index) { return Alerts().Get("IBM").at(index); }
    void LastIs(const char* symbol, const char* price) { Receive(symbol, "Last", price); }
    CAlertsNotice& Notice() {
        if (!WaitUntil([&] { return alerts.Notices().Shown() != nullptr; }, 5000))
            throw std::runtime_error("no notice");
        return *alerts.Notices().Shown();
    }
    bool CanReset() { return Named<QPushButton>(Notice(), "reset").isEnabled(); }
    CResetAlert& Reset() {
        Click(Notice(), "reset");
        return *Notice().findChild<CResetAlert*>();
    }
    static A_INFO Above(double value, bool enabled = true) {
        return {enabled, 0, 0, value, AlertFieldId("Last").value(), 1, 0, {}};
    }
    std::vector<std::string> History() {
        std::vector<std::string> out;
        for (const SAlertFiring& firing : CAlertHistory(At("zantrel")).Read()) out.push_back(EndText(firing));
        return out;
    }

    CAlertController alerts{context};
};

} // namespace

TEST_F(CAlertControllerTest, AnAlertIsSetOnACellFiresIsResetAndFiresAgain) {
    LastIs("IBM", "190.25");
    ASSERT_TRUE(Shows(1, "Last", "190.2500"));
    grid->SetFocusCell(1, ColumnOf("Last"));
    Do(ECommand::AlertNew);
    auto& dialog = Child<CNewAlertDlg>("newAlertDlg");
    for (const auto& [list, text] :
         {std::pair{"symbolList", "IBM"}, {"fieldList", "Last"}, {"operationList", "greater than"}})
        EXPECT_EQ(Named<QComboBox>(dialog, list).currentText().toStdString(), text);
    EXPECT_EQ(TextOf(dialog, "valueBox"), "190.25");
    Named<QComboBox>(dialog, "soundList").setCurrentIndex(0);
    ClickStandard(dialog);
    EXPECT_EQ(Shown(1, "Alerts"), "1");

    LastIs("IBM", "190.5");
    EXPECT_EQ(Notice().windowTitle(), QStringLiteral("Norv Vx alert: IBM Last = 190.500000"));
    EXPECT_EQ(Shown(1, "Alerts"), "0/1");
    LastIs("IBM", "191");
    EXPECT_TRUE(Shows(1, "Last", "191.0000")) << "quotes still arrive under the notice";

    CResetAlert& reset = Reset();
    Named<CSpinEdit>(reset, "percent").stepBy(1);
    ClickStandard(reset);
    ASSERT_TRUE(Shows(1, "Alerts", "1"));
    EXPECT_EQ(Alert(0).value, 192.1525);
    doc->MarkSaved();
    LastIs("IBM", "193");
    Notice();
    EXPECT_TRUE(doc->IsModified()) << "the file has the alert armed";
    Do(ECommand::EditUndo); // A reset is no edit.
    EXPECT_TRUE(Alerts().IsEmpty());
}

TEST_F(CAlertControllerTest, TheSecondAlertOfASymbolIsArmedByItsNoticeAndResetChangesTheFirst) {
    for (const double value : {50, 10}) Alerts().Add("IBM", Above(value));
    LastIs("IBM", "60");
    Click(Notice(), "dismiss"); // Of the first one.
    Notice();
    Alerts().Remove("IBM", 0); // Edits in between do not mislead it.
    for (const double value : {50, 5}) Alerts().Add("IBM", Above(value));
    Click(Notice(), "arm");
    ASSERT_TRUE(WaitUntil([&] { return Alert(0).enabled == 1; }));
    EXPECT_EQ(Alert(0), Above(10));
    EXPECT_EQ(Alert(1).value, 50);

    Alerts().Clear(EAlertMap::Live);
    Alerts().Add("IBM", Above(50, false));
    Alerts().Add("IBM", Above(20));
    LastIs("IBM", "61");
    CResetAlert& reset = Reset();
    Named<CSpinEdit>(reset, "value").stepBy(1);
    ClickStandard(reset);
    ASSERT_TRUE(WaitUntil([&] { return Alert(0).enabled == 1; }));
    EXPECT_EQ(Alert(1).enabled, 0u);
    EXPECT_THAT(History(), ElementsAre("Reset to 21", "Armed again", EndsWith("; reset Last greater than 50 to 21")));
}

TEST_F(CAlertControllerTest, WhatIsGoneWhenItsNoticeIsAnsweredDoesNoHarm) {
    const auto fireTwo = [&] {
        for (const double value : {10, 20}) Alerts().Add("IBM", Above(value));
        LastIs("IBM", "30");
        Notice();
    };
    fireTwo();
    Alerts().RemoveSymbol("IBM");
    doc->MarkSaved();
    ClickStandard(Reset());
    EXPECT_FALSE(CanReset());
    Click(Notice(), "dismiss");
    TurnEventLoop(5);
    EXPECT_TRUE(Alerts().IsEmpty());
    EXPECT_FALSE(doc->IsModified()) << "nothing was reset";

    fireTwo();
    OpenText(*doc, "Alerts=IBM:Last,>,50.000000,FALSE,TRUE,0,FALSE,;\r\n", "other");
    ASSERT_EQ(Alerts().Count("IBM"), 1);
    Click(Notice(), "dismiss");
    EXPECT_FALSE(CanReset()) << "it fired in another watchlist";
}

TEST_F(CAlertControllerTest, NewsFireTheirAlert) {
    A_INFO alert = Above(1);
    alert.fieldId = AlertFieldId("News").value();
    alert.condition = 0;
    Alerts().Add("IBM", alert);
    doc->OnNewsLine("N,SIM,1001,MSFT:IBM,20240131 093000,Headline, <b>bold</b>");
    EXPECT_EQ(TextOf(Notice(), "headline"), "Headline, <b>bold</b>");
    ClickStandard(Reset());
    EXPECT_TRUE(WaitUntil([&] { return Alert(0) == alert; }));
}

TEST_F(CAlertControllerTest, WhatFiredWhileAwayIsCountedAndFoundInTheHistory) {
    auto& missed = Child<QToolButton>("missedAlerts");
    Alerts().Add("IBM", Above(10));
    for (const double value : {10, 30}) Alerts().Add("MSFT", Above(value));
    alerts.Presence().SetHere(true);
    LastIs("IBM", "20");
    ASSERT_TRUE(WaitUntil([&] { return Notice().isActiveWindow(); }));
    EXPECT_FALSE(missed.isVisible());
    alerts.Presence().SetHere(false);
    LastIs("MSFT", "20");
    LastIs("MSFT", "40");
    ASSERT_TRUE(WaitUntil([&] { return missed.text() == QStringLiteral("2 missed alerts"); }));
    alerts.Presence().NoteOwnWindow();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_FALSE(alerts.Presence().IsHere()) << "the desktop made the notice the active window, not the user";
    Click(Notice(), "dismissAll");
    EXPECT_TRUE(alerts.Presence().IsHere());
    EXPECT_TRUE(missed.isVisible()) << "dismissed together is not looked at";
    missed.click();
    EXPECT_FALSE(missed.isVisible());
    auto& history = Child<CAlertHistoryDlg>("alertHistory");
    EXPECT_TRUE(history.isVisible());
    const QAbstractItemModel& model = *Named<QTableView>(history, "table").model();
    EXPECT_TRUE(WaitUntil([&] { return model.rowCount() == 2; })) << model.rowCount();
}
