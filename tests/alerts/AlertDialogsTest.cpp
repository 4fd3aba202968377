// SPDX-License-Identifier: MIT
// The dialogs that set, list and reset alerts, and their history, driven by their widgets.

#include "AlertsUiFixture.h"

#include "alerts/rules/AlertHistory.h"
#include "alerts/ui/AlertHistoryDlg.h"
#include "alerts/ui/AlertsDlg.h"
#include "alerts/ui/NewAlertDlg.h"
#include "data/catalogue/Catalogue.h"

#include <QFileDialog>
#include <QListView>
#include <QTableView>

#include <fmt/format.h>

using namespace vx;
using namespace vx::test;

namespace {

class CResetAlertTest : public CAlertsUiFixture {
protected:
    static SAlertRecord Notice(double threshold, Texts others = {}) {
        SAlertRecord out;
        out.symbol = "IBM";
        out.fieldName = "Last";
        out.threshold = threshold;
        out.otherThresholds = std::move(others);
        return out;
    }
    static std::string Shown(const QDialog& dialog) {
        return TextOf(dialog, "percent") + " " + TextOf(dialog, "value");
    }
};

class CNewAlertDlgTest : public CAlertsUiFixture {
protected:
    void Show(const SAlertDraft& draft = {}) {
        dialog = std::make_unique<CNewAlertDlg>(services, draft);
        dialog->show();
    }
    static SAlertDraft LastIs(const char* value, uint32_t condition = 0) {
        return {.symbol = "IBM", .fieldId = AlertFieldId("Last"), .condition = condition, .value = value};
    }
    /// What OK complains about; empty when it closes.
    std::string Complaint() {
        boxes.shown.clear();
        ClickStandard(*dialog);
        if (boxes.shown.empty()) return {};
        EXPECT_TRUE(dialog->isVisible());
        return boxes.shown[0].text;
    }
    std::unique_ptr<CNewAlertDlg> dialog;
};

class CAlertsDlgTest : public CAlertsUiFixture {
protected:
    CAlertsDlgTest() {
        alerts.Add("MSFT", Alert("News", 0, 1));
        alerts.Add("IBM", Alert("Last", 1, 10, true));
        alerts.Add("IBM", Alert("Bid", 4, -2.5));
        alerts.Add("IBM", Alert("Last", 3, 5));
    }
    static QListView& List(const CAlertsDlg& dialog) { return Named<QListView>(dialog, "alertList"); }
    static Texts Lines(const CAlertsDlg& dialog) {
        Texts out = Column(*List(dialog).model());
        for (size_t row = 0; row < out.size(); ++row)
            if (List(dialog).model()->index(int(row), 0).data(Qt::CheckStateRole).toInt() != Qt::Checked)
                out[row] += " off";
        return out;
    }
    static void Select(const CAlertsDlg& dialog, int row) {
        auto& list = List(dialog);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(row, 0)).center());
    }
    static CNewAlertDlg& Edit(const CAlertsDlg& dialog, int row) {
        Select(dialog, row);
        Click(dialog, "edit");
        return *Open<CNewAlertDlg>();
    }
    /// Runs the dialog as the program does, and does something in it.
    bool Run(const std::function<void(CAlertsDlg&)>& use, const char* symbol = "") {
        QTimer::singleShot(0, [&] { use(*Open<CAlertsDlg>()); });
        return EditAlertsWithDialog(alerts, services, nullptr, symbol);
    }
    CAlertsMap alerts;
};

const std::string kIbmLast = R"("IBM" when the "Last" is greater than 10.000000)";
const std::string kIbmLastNoZero = kIbmLast + " (Do NOT fire alert for zero values)";
const std::string kIbmBid = R"("IBM" when the "Bid" is less than or equal to -2.500000)";
const std::string kIbmLow = R"("IBM" when the "Last" is less than 5.000000)";
const std::string kMsftNews = R"("MSFT" when "News" is received)";

class CAlertHistoryDlgTest : public CAlertsUiFixture {
protected:
    std::string Fire(const char* symbol, int64_t at, int64_t awaySince = 0, double value = 1) {
        SAlertFiring firing;
        firing.symbol = symbol;
        firing.field = "Last";
        firing.condition = "greater than";
        firing.firedMs = at;
        firing.awaySinceMs = awaySince;
        firing.value = value;
        return history.NoteFired(firing);
    }
    static Texts Shown(const QDialog& dialog, int column = 1) {
        return Column(*Named<QTableView>(dialog, "table").model(), column);
    }

    CTempFolder folder;
    CAlertHistory history{folder.Path()};
};

} // namespace

TEST_F(CResetAlertTest, TheArrowsMoveBothNumbers) {
    struct SCase {
        double base;
        const char* box;
        int steps;
        const char* shown;
    };
    for (const SCase& c : {SCase{200, "percent", 0, "0.0000 200.000000"},
                           {200, "percent", -2, "-2.0000 196.0000"},
                           {200, "value", 1, "0.500000 201.000000"},
                           {-50, "value", 1, "-2.000000 -49.000000"},
                           {0, "value", 1, "0.000000 1.000000"},
                           {0, "percent", 5, "5.0000 0.0000"},
                           {10, "value", 2000, "10000.000000 1010.000000"}}) {
        const CResetAlert dialog(Notice(c.base));
        Step(dialog, c.box, c.steps);
        EXPECT_EQ(Shown(dialog), c.shown) << c.base << ' ' << c.box << ' ' << c.steps;
    }
}

TEST_F(CResetAlertTest, OnlyKeysOfNumbersTypeAndAThresholdOfAnotherAlertIsRefused) {
    CResetAlert dialog(Notice(200, {"250.000000", "202.000000"}));
    dialog.show();
    auto& percent = Named<CSpinEdit>(dialog, "percent");
    percent.selectAll();
    QTest::keyClicks(&percent, QStringLiteral("x1e+-0 ,"));
    EXPECT_EQ(Shown(dialog), "10 220.0000");
    QTest::keyClick(&percent, Qt::Key_Backspace);
    ClickStandard(dialog);
    EXPECT_THAT(boxes.TakeTexts(),
                ElementsAre("For symbol\"IBM,\" an alert of \"202.00\" already exists for field \"Last.\""));
    EXPECT_TRUE(dialog.isVisible());
    auto& value = Named<CSpinEdit>(dialog, "value");
    value.selectAll();
    QTest::keyClicks(&value, QStringLiteral("1.2.3"));
    EXPECT_FALSE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
    QTest::keyClick(&value, Qt::Key_Up);
    EXPECT_EQ(TextOf(dialog, "value"), "2.200000");
    ClickStandard(dialog);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.NewThreshold(), 2.2);
}

TEST_F(CNewAlertDlgTest, OkNamesWhatIsMissingInOrder) {
    Show();
    for (const auto& [complaint, list, choice] : {std::tuple{"Please select a Symbol.", "symbolList", "MSFT"},
                                                  {"Please select a Field Name.", "fieldList", "Bid"},
                                                  {"Please select an Operation.", "operationList", "less than"}}) {
        EXPECT_EQ(Complaint(), complaint);
        Choose(*dialog, list, choice);
    }
    for (const char* bad : {"", "12a", "1,5", "nan", "inf", "1e999"}) {
        Named<QLineEdit>(*dialog, "valueBox").setText(QString::fromLatin1(bad));
        EXPECT_EQ(Complaint(), "The Value entered was invalid.\n\nPlease enter a new Value.") << bad;
        EXPECT_EQ(TextOf(*dialog, "valueBox"), bad);
    }
    Type(*dialog, "valueBox", "12.5");
    Click(*dialog, "noZero");
    EXPECT_EQ(Complaint(), "");
    EXPECT_EQ(dialog->Symbol() + dialog->FieldName(), "MSFTBid");
    EXPECT_EQ(dialog->Alert(), Alert("Bid", 3, 12.5, true));
}

TEST_F(CNewAlertDlgTest, EveryColumnIsOfferedAndOneThatCannotFireSaysSo) {
    Show({.symbol = "IBM", .condition = 0, .value = "1"});
    const Texts fields = Entries(*dialog, "fieldList");
    EXPECT_EQ(fields.size(), kCatalogueSize - 1);
    for (const auto& [field, hint] : {std::pair{"Last", "Now 190.25"},
                                      {"Latest Headline", "Fires with each news story"},
                                      {"Listed Market Name", "Alerts on this field never fire"}}) {
        Choose(*dialog, "fieldList", field);
        EXPECT_EQ(TextOf(*dialog, "valueNow"), hint);
    }
    EXPECT_EQ(Complaint(), "");
    EXPECT_EQ(dialog->Alert(), Alert("Listed Market Name", 0, 1));
}

TEST_F(CNewAlertDlgTest, NewsLeavesOnlyTheSymbolAndTheSound) {
    Show(LastIs("12a", 2));
    const auto looks = [&](const Texts& operations, bool enabled) {
        EXPECT_EQ(Entries(*dialog, "operationList"), operations);
        for (const char* name : {"valueBox", "noZero"}) EXPECT_EQ(IsEnabled(*dialog, name), enabled) << name;
    };
    Choose(*dialog, "fieldList", "News");
    looks({"is received"}, false);
    Choose(*dialog, "fieldList", "Last");
    looks({"equal to", "greater than", "greater than or equal to", "less than", "less than or equal to"}, true);
    EXPECT_EQ(Chosen(*dialog, "operationList"), 2);
    Choose(*dialog, "fieldList", "News");
    EXPECT_EQ(Complaint(), "");
    EXPECT_EQ(dialog->Alert(), Alert("News", 0, 1));
}

TEST_F(CNewAlertDlgTest, TheSoundListIsFilledFromTheSettingsAndSaved) {
    store.texts = {{"SoundFile1", "/a.wav"}, {"SoundFile2", ""}, {"SoundFile3", "Config Error"}};
    Show(LastIs("1"));
    EXPECT_THAT(Entries(*dialog, "soundList"), ElementsAre("None", "Default", "/a.wav", "Config Error"));
    EXPECT_FALSE(IsEnabled(*dialog, "play"));

    Click(*dialog, "browse");
    auto& files = Named<QFileDialog>(*dialog, "soundFileDialog");
    EXPECT_EQ(files.defaultSuffix(), QStringLiteral("wav"));
    EXPECT_EQ(files.fileMode(), QFileDialog::ExistingFile);
    Q_EMIT files.fileSelected(QStringLiteral("/x,y.wav"));
    EXPECT_EQ(boxes.shown.size(), 1u) << "the alert's text has commas of its own";
    Q_EMIT files.fileSelected(QString::fromUtf8("/caf\xC3\xA9.wav"));
    files.close();
    auto& list = Named<QComboBox>(*dialog, "soundList");
    Click(*dialog, "play");
    list.setCurrentIndex(1);
    EXPECT_FALSE(sounds.IsPlaying()) << "another choice ends the sound";
    Click(*dialog, "play");
    EXPECT_EQ(TextOf(*dialog, "play"), "S&top");
    sounds.End();
    EXPECT_FALSE(sounds.IsPlaying()) << "a long one does not continue when it counts as ended";
    EXPECT_EQ(TextOf(*dialog, "play"), "&Play");
    EXPECT_THAT(sounds.played, ElementsAre(SAlertSound{2, "/caf\xE9.wav", false}, SAlertSound{1, "", false}));

    list.setCurrentIndex(4);
    Click(*dialog, "loopSound");
    EXPECT_EQ(Complaint(), "");
    A_INFO alert = Alert("Last", 0, 1);
    alert.soundType = 2;
    alert.soundFile = "/caf\xE9.wav";
    alert.loopSound = 1;
    EXPECT_EQ(dialog->Alert(), alert);
    EXPECT_EQ(store.texts["SoundFile3"], "/caf\xE9.wav") << "the third file of the list";
}

TEST_F(CNewAlertDlgTest, WaveFilesAreTakenOffTheList) {
    store.texts = {
        {"SoundFile1", "/a.wav"}, {"SoundFile3", "/b.wav"}, {"SoundFile4", "/c.wav"}, {"SoundFile9", "Config Error"}};
    SAlertDraft draft = LastIs("1");
    draft.soundType = 2;
    draft.soundFile = "/b.wav";
    Show(draft);
    Click(*dialog, "removeSound");
    EXPECT_THAT(Entries(*dialog, "soundList"), ElementsAre("None", "Default", "/a.wav", "/c.wav", "Config Error"));
    EXPECT_FALSE(IsEnabled(*dialog, "removeSound"));
    EXPECT_EQ(store.texts["SoundFile3"], "/b.wav") << "nothing is committed before OK";
    EXPECT_EQ(Complaint(), "");
    EXPECT_EQ(dialog->Alert().soundType, 1u);
    const char* const stored[] = {"/a.wav", "/c.wav", "", ""};
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(store.texts["SoundFile" + std::to_string(i)], stored[i - 1]) << i;
    EXPECT_EQ(store.texts["SoundFile9"], "Config Error") << "what cannot be read is left alone";
}

TEST_F(CAlertsDlgTest, ListsEveryAlertAndArmsByItsCheckBox) {
    EXPECT_TRUE(Run([&](CAlertsDlg& dialog) {
        EXPECT_THAT(Lines(dialog), ElementsAre(kIbmLastNoZero, kIbmBid, kIbmLow, kMsftNews));
        Select(dialog, 1);
        EXPECT_TRUE(IsEnabled(dialog, "edit") && IsEnabled(dialog, "delete"));
        QTest::keyClick(&List(dialog), Qt::Key_Space);
        EXPECT_THAT(Lines(dialog), ElementsAre(kIbmLastNoZero, kIbmBid + " off", kIbmLow, kMsftNews));
        EXPECT_EQ(alerts.Get("IBM")[1].enabled, 1u) << "nothing is committed before OK";
        ClickStandard(dialog);
    }));
    EXPECT_EQ(alerts.Get("IBM")[1].enabled, 0u);
    EXPECT_TRUE(alerts.IsEmpty(EAlertMap::WorkingCopy));
    symbols.clear();
    const CAlertsDlg empty(alerts, services);
    EXPECT_FALSE(IsEnabled(empty, "new"));
}

TEST_F(CAlertsDlgTest, EditingAFiredAlertOffersToArmIt) {
    alerts.EvaluateFieldAlert("IBM", 2, 1, 1, 1, 1);
    for (const bool arm : {false, true}) {
        EXPECT_TRUE(Run([&](CAlertsDlg& dialog) {
            CNewAlertDlg& armed = Edit(dialog, 0);
            EXPECT_FALSE(Named<QCheckBox>(armed, "arm").isVisible());
            armed.reject();
            CNewAlertDlg& edit = Edit(dialog, 2);
            const auto& box = Named<QCheckBox>(edit, "arm");
            EXPECT_TRUE(box.isVisible() && box.isChecked());
            if (!arm) Click(edit, "arm");
            ClickStandard(edit);
            ClickStandard(dialog);
        }));
        EXPECT_EQ(alerts.Get("IBM")[2].enabled, arm ? 1u : 0u);
    }
}

TEST_F(CAlertsDlgTest, AnEditedAlertMovesBehindTheOthersAndEqualOnesMerge) {
    EXPECT_TRUE(Run([&](CAlertsDlg& dialog) {
        CNewAlertDlg& edit = Edit(dialog, 0);
        Click(edit, "noZero");
        ClickStandard(edit);
        EXPECT_THAT(Lines(dialog), ElementsAre(kIbmBid, kIbmLow, kIbmLast, kMsftNews));
        QTest::keyClick(&List(dialog), Qt::Key_Space);
        Click(dialog, "new");
        auto* added = Open<CNewAlertDlg>();
        Choose(*added, "symbolList", "IBM");
        Choose(*added, "fieldList", "Last");
        Choose(*added, "operationList", "greater than");
        Type(*added, "valueBox", "10");
        ClickStandard(*added);
        EXPECT_THAT(Lines(dialog), ElementsAre(kIbmBid, kIbmLow, kIbmLast, kMsftNews))
            << "the equal one is armed again";
        ClickStandard(dialog);
    }));
    EXPECT_EQ(alerts.Save(), "IBM:Bid,<=,-2.500000,TRUE,FALSE,0,FALSE,;IBM:Last,<,5.000000,TRUE,FALSE,0,FALSE,;"
                             "IBM:Last,>,10.000000,TRUE,FALSE,0,FALSE,;MSFT:News,=,1.000000,TRUE,FALSE,0,FALSE,;");
}

TEST_F(CAlertsDlgTest, CancelDiscardsAndTheRowsSymbolIsSelected) {
    for (int i = 0; i < 10'000; ++i) alerts.Add(fmt::format("A{:04}", i), Alert("Last", 1, 1));
    const std::string before = alerts.Save();
    EXPECT_FALSE(Run(
        [&](CAlertsDlg& dialog) {
            const auto& list = List(dialog);
            const auto text = [&] { return list.currentIndex().data().toString().toStdString(); };
            EXPECT_EQ(text(), kMsftNews) << "of many the last one";
            EXPECT_TRUE(list.viewport()->rect().contains(list.visualRect(list.currentIndex())));
            Click(dialog, "delete");
            EXPECT_EQ(text(), kIbmLow);
            QTest::keyClick(&List(dialog), Qt::Key_Delete);
            EXPECT_EQ(text(), kIbmBid);
            ClickStandard(dialog, QDialogButtonBox::Cancel);
        },
        "MSFT"));
    EXPECT_EQ(alerts.Save(), before);
    EXPECT_TRUE(alerts.IsEmpty(EAlertMap::WorkingCopy));
}

TEST_F(CAlertsDlgTest, ASymbolThatIsFullTakesNoMoreAndNothingIsLost) {
    for (int i = 0; i < static_cast<int>(CAlertsMap::kMostPerSymbol); ++i) alerts.Add("FULL", Alert("Last", 1, i));
    symbols.emplace_back("FULL");
    const std::string before = alerts.Save();
    EXPECT_TRUE(Run([&](CAlertsDlg& dialog) {
        QTest::keyClick(&List(dialog), Qt::Key_End);
        Click(dialog, "edit");
        Choose(*Open<CNewAlertDlg>(), "symbolList", "FULL");
        ClickStandard(*Open<CNewAlertDlg>());
        EXPECT_EQ(boxes.shown.size(), 1u);
        ClickStandard(dialog);
    }));
    EXPECT_EQ(alerts.Save(), before);
}

TEST_F(CAlertHistoryDlgTest, FirstComesWhatFiredInTheLastAbsence) {
    CAlertHistoryDlg dialog(history);
    dialog.show();
    EXPECT_EQ(TextOf(dialog, "nothing"), "No alert has fired yet.");
    Fire("SEEN", 1'000);
    dialog.RefreshSoon();
    ASSERT_TRUE(WaitUntil([&] { return Shown(dialog) == Texts{"SEEN"}; })) << "without an absence, everything";
    Fire("EARLIER", 3'000, 2'000);
    Fire("MISSED", 6'000, 5'000);
    Fire("MISSED2", 7'000, 5'000);
    Fire("BACK", 9'000);
    dialog.ShowMissed();
    EXPECT_THAT(Shown(dialog), ElementsAre("MISSED2", "MISSED"));
    EXPECT_EQ(TextOf(dialog, "summary"), "2 of 5 alerts; you were away from " + LocalTimeText(5'000) + " on");
    Choose(dialog, "view", "All alerts that fired");
    EXPECT_THAT(Shown(dialog), ElementsAre("BACK", "MISSED2", "MISSED", "EARLIER", "SEEN"));
}

TEST_F(CAlertHistoryDlgTest, FiltersSortsAndExportsWhatIsShown) {
    const std::string ibm = Fire("IBM", 1'000, 0, 9);
    Fire("MSFT", 2'000, 0, 10);
    Fire("IBM", 3'000, 0, 100);
    history.NoteEnded(ibm, EFiringEnd::Reset, 4'000, 12.5);
    CAlertHistoryDlg dialog(history);
    dialog.show();
    Named<QTableView>(dialog, "table").sortByColumn(5, Qt::AscendingOrder);
    EXPECT_THAT(Shown(dialog, 5), ElementsAre("9", "10", "100")) << "numbers, not texts";
    Choose(dialog, "symbol", "IBM");
    Click(dialog, "onlyOpen");
    EXPECT_THAT(Shown(dialog, 5), ElementsAre("100"));
    Click(dialog, "onlyOpen");
    Type(dialog, "text", "reset to");
    EXPECT_THAT(Shown(dialog, 9), ElementsAre("Reset to 12.5"));

    dialog.ExportTo(QString::fromStdString(folder / "out.csv"));
    EXPECT_THAT(ReadFile(folder / "out.csv"),
                EndsWith("Closed\r\n" + LocalTimeText(1'000) + ",\"IBM\",\"Last\",\"greater than\",0,9,0,0,0,no," +
                         "\"Reset to 12.5\"," + LocalTimeText(4'000) + "\r\n"));
    dialog.ExportTo(QString::fromStdString(folder / "no/such/folder.csv"));
    EXPECT_THAT(boxes.shown, SizeIs(1));
    Named<QLineEdit>(dialog, "text").clear();
    Fire("MSFT", 5'000);
    dialog.RefreshSoon();
    EXPECT_TRUE(WaitUntil([&] { return TextOf(dialog, "summary") == "2 of 4 alerts"; }));
    EXPECT_THAT(Shown(dialog), ElementsAre("IBM", "IBM")) << "what comes leaves the filter as it is";
}
