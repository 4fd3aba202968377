// The dialogs that set, list and reset alerts, driven by their widgets.

#include "AlertsUiFixture.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/ui/AlertsDlg.h"
#include "alerts/ui/NewAlertDlg.h"
#include "alerts/ui/ResetAlert.h"
#include "data/catalogue/Catalogue.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QListView>
#include <QPushButton>

#include <fmt/format.h>

using namespace vx;
using namespace vx::test;

namespace {

using Texts = std::vector<std::string>;

A_INFO Alert(const char* field, uint32_t condition, double value, bool noZero = false) {
    A_INFO out;
    out.enabled = 1;
    out.noZero = noZero ? 1 : 0;
    out.value = value;
    out.fieldId = AlertFieldId(field).value();
    out.condition = condition;
    return out;
}

class ResetAlert : public CAlertsUiFixture {
protected:
    static SAlertRecord Notice(double threshold, Texts others = {}) {
        SAlertRecord out;
        out.symbol = "IBM";
        out.fieldName = "Last";
        out.threshold = threshold;
        out.otherThresholds = std::move(others);
        return out;
    }
    static std::string Shown(const QDialog& dialog, const char* box) {
        return TextOf(Named<CSpinEdit>(dialog, box).text());
    }
};

class NewAlertDlg : public CAlertsUiFixture {
protected:
    std::unique_ptr<CNewAlertDlg> Dialog(const SAlertDraft& draft = {}) {
        auto out = std::make_unique<CNewAlertDlg>(services, draft);
        out->show();
        return out;
    }
    /// What OK complains about; empty when it closes.
    std::string Complaint(CNewAlertDlg& dialog) {
        boxes.shown.clear();
        ClickStandard(dialog, QDialogButtonBox::Ok);
        if (boxes.shown.empty()) return {};
        EXPECT_EQ(boxes.shown[0].caption, "");
        EXPECT_EQ(boxes.shown[0].icon, EBoxIcon::Exclamation);
        EXPECT_TRUE(dialog.isVisible());
        return boxes.shown[0].text;
    }
};

class AlertsDlg : public CAlertsUiFixture {
protected:
    AlertsDlg() {
        alerts.Add("MSFT", Alert("News", 0, 1));
        alerts.Add("IBM", Alert("Last", 1, 10, true));
        alerts.Add("IBM", Alert("Bid", 4, -2.5));
        alerts.Add("IBM", Alert("Last", 3, 5));
    }
    static Texts Lines(const CAlertsDlg& dialog) {
        Texts out;
        const QAbstractItemModel& model = *Named<QListView>(dialog, "alertList").model();
        for (int row = 0; row < model.rowCount(); ++row)
            out.push_back(TextOf(model.index(row, 0).data().toString()) +
                          (model.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked ? "" : " off"));
        return out;
    }
    static void Select(const CAlertsDlg& dialog, int row) {
        auto& list = Named<QListView>(dialog, "alertList");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(row, 0)).center());
    }
    static int Selected(const CAlertsDlg& dialog) { return Named<QListView>(dialog, "alertList").currentIndex().row(); }
    /// Runs the dialog as the program does, and does something in it.
    bool Edit(const std::function<void(CAlertsDlg&)>& use, const char* symbol = "") {
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

} // namespace

TEST_F(ResetAlert, TheArrowsMoveBothNumbers) {
    struct SCase {
        double base;
        const char* box;
        int steps;
        const char* percent;
        const char* value;
    };
    for (const SCase& c : {SCase{200, "percent", 0, "0.0000", "200.000000"},
                           {200, "percent", 1, "1.0000", "202.0000"},
                           {200, "percent", -2, "-2.0000", "196.0000"},
                           {200, "value", -1, "-0.500000", "199.000000"},
                           {200, "value", 1, "0.500000", "201.000000"},
                           {-50, "percent", 1, "1.0000", "-49.5000"},
                           {-50, "value", 1, "-2.000000", "-49.000000"},
                           {0, "value", 1, "0.000000", "1.000000"},
                           {0, "percent", 5, "5.0000", "0.0000"},
                           {10, "value", 2000, "10000.000000", "1010.000000"}}) {
        CResetAlert dialog(Notice(c.base));
        Named<CSpinEdit>(dialog, c.box).stepBy(c.steps);
        EXPECT_EQ(Shown(dialog, "percent"), c.percent) << c.base << ' ' << c.box << ' ' << c.steps;
        EXPECT_EQ(Shown(dialog, "value"), c.value) << c.base << ' ' << c.box << ' ' << c.steps;
    }
}

TEST_F(ResetAlert, OnlyKeysOfNumbersTypeAndAThresholdOfAnotherAlertIsRefused) {
    CResetAlert dialog(Notice(200, {"250.000000", "202.000000"}));
    dialog.show();
    EXPECT_EQ(TextOf(Named<QLabel>(dialog, "prompt").text()),
              "To reset the alert on the \"Last\" for symbol \"IBM\", please change the value shown or the percent the "
              "value should be increased or decreased.");
    auto& percent = Named<CSpinEdit>(dialog, "percent");
    percent.selectAll();
    QTest::keyClicks(&percent, QStringLiteral("x1e+-0 ,"));
    EXPECT_EQ(Shown(dialog, "percent"), "10");
    EXPECT_EQ(Shown(dialog, "value"), "220.0000");
    QTest::keyClick(&percent, Qt::Key_Backspace);
    EXPECT_EQ(Shown(dialog, "value"), "202.0000");
    ClickStandard(dialog, QDialogButtonBox::Ok);
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_EQ(boxes.shown[0].text, "For symbol\"IBM,\" an alert of \"202.00\" already exists for field \"Last.\"");
    EXPECT_EQ(boxes.shown[0].caption, "");
    EXPECT_TRUE(dialog.isVisible());
    auto& value = Named<CSpinEdit>(dialog, "value");
    value.selectAll();
    QTest::keyClicks(&value, QStringLiteral("1.2.3"));
    EXPECT_FALSE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
    QTest::keyClick(&value, Qt::Key_Up);
    EXPECT_EQ(Shown(dialog, "value"), "2.200000");
    ClickStandard(dialog, QDialogButtonBox::Ok);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.NewThreshold(), 2.2);
}

TEST_F(NewAlertDlg, OkNamesWhatIsMissingInOrder) {
    const auto dialog = Dialog();
    EXPECT_EQ(Complaint(*dialog), "Please select a Symbol.");
    Choose(*dialog, "symbolList", "MSFT");
    EXPECT_EQ(Complaint(*dialog), "Please select a Field Name.");
    Choose(*dialog, "fieldList", "Bid");
    EXPECT_EQ(Complaint(*dialog), "Please select an Operation.");
    Choose(*dialog, "operationList", "less than");
    for (const char* bad : {"", "12a", "1,5", "nan", "inf", "1e999"}) {
        Named<QLineEdit>(*dialog, "valueBox").setText(QString::fromLatin1(bad));
        EXPECT_EQ(Complaint(*dialog), "The Value entered was invalid.\n\nPlease enter a new Value.") << bad;
        EXPECT_EQ(TextOf(Named<QLineEdit>(*dialog, "valueBox").text()), bad);
    }
    Type(*dialog, "valueBox", "12.5");
    Click(*dialog, "noZero");
    EXPECT_EQ(Complaint(*dialog), "");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->Symbol(), "MSFT");
    EXPECT_EQ(dialog->FieldName(), "Bid");
    EXPECT_EQ(dialog->Alert(), Alert("Bid", 3, 12.5, true));
}

TEST_F(NewAlertDlg, EveryColumnIsOfferedAndOneThatCannotFireSaysSo) {
    const auto dialog = Dialog({.symbol = "IBM", .condition = 0, .value = "1"});
    const Texts fields = Entries(*dialog, "fieldList");
    ASSERT_EQ(fields.size(), kCatalogueSize - 1);
    for (size_t i = 0; i < fields.size(); ++i) EXPECT_EQ(fields[i], Catalogue()[i + 1].name);
    Choose(*dialog, "fieldList", "Last");
    EXPECT_EQ(TextOf(Named<QLabel>(*dialog, "valueNow").text()), "Now 190.25");
    Choose(*dialog, "fieldList", "Listed Market Name");
    EXPECT_EQ(TextOf(Named<QLabel>(*dialog, "valueNow").text()), "Alerts on this field never fire");
    EXPECT_EQ(Complaint(*dialog), "");
    EXPECT_EQ(dialog->Alert(), Alert("Listed Market Name", 0, 1));
}

TEST_F(NewAlertDlg, TheLatestHeadlineKeepsItsOperationsAndIsAnAlertOnNews) {
    const auto dialog = Dialog({.symbol = "IBM"});
    EXPECT_EQ(Named<QComboBox>(*dialog, "soundList").currentIndex(), 0);
    Choose(*dialog, "fieldList", "Latest Headline");
    EXPECT_EQ(Entries(*dialog, "operationList").size(), 5u);
    EXPECT_EQ(TextOf(Named<QLabel>(*dialog, "valueNow").text()), "Fires with each news story");
    EXPECT_EQ(Complaint(*dialog), "Please select an Operation.");
    Choose(*dialog, "operationList", "less than");
    Type(*dialog, "valueBox", "3");
    EXPECT_EQ(Complaint(*dialog), "");
    EXPECT_EQ(dialog->FieldName(), "Latest Headline");
    EXPECT_EQ(dialog->Alert(), Alert("News", 3, 3));
    EXPECT_TRUE(CAlertsMap::CanSave("IBM", dialog->Alert()));
}

TEST_F(NewAlertDlg, NewsLeavesOnlyTheSymbolAndTheSound) {
    const auto dialog = Dialog({.symbol = "IBM", .fieldId = AlertFieldId("Last"), .condition = 2, .value = "12a"});
    const Texts operations = {"equal to", "greater than", "greater than or equal to", "less than",
                              "less than or equal to"};
    EXPECT_EQ(Entries(*dialog, "operationList"), operations);
    Choose(*dialog, "fieldList", "News");
    EXPECT_EQ(Entries(*dialog, "operationList"), (Texts{"is received"}));
    EXPECT_FALSE(Named<QLineEdit>(*dialog, "valueBox").isEnabled());
    EXPECT_FALSE(Named<QCheckBox>(*dialog, "noZero").isEnabled());
    EXPECT_FALSE(Named<QLabel>(*dialog, "valueNow").isVisible());
    Choose(*dialog, "fieldList", "Last");
    EXPECT_EQ(Entries(*dialog, "operationList"), operations);
    EXPECT_EQ(Named<QComboBox>(*dialog, "operationList").currentIndex(), 2);
    EXPECT_TRUE(Named<QLineEdit>(*dialog, "valueBox").isEnabled());
    EXPECT_TRUE(Named<QCheckBox>(*dialog, "noZero").isEnabled());
    Choose(*dialog, "fieldList", "News");
    EXPECT_EQ(Complaint(*dialog), "");
    EXPECT_EQ(dialog->Alert(), Alert("News", 0, 1));
}

TEST_F(NewAlertDlg, TheSoundListIsFilledFromTheSettingsAndSaved) {
    store.texts = {{"SoundFile1", "/a.wav"}, {"SoundFile2", ""}, {"SoundFile3", "Config Error"}};
    const auto dialog = Dialog({.symbol = "IBM", .fieldId = AlertFieldId("Last"), .condition = 0, .value = "1"});
    EXPECT_EQ(Entries(*dialog, "soundList"), (Texts{"None", "Default", "/a.wav", "Config Error"}));
    EXPECT_FALSE(Named<QPushButton>(*dialog, "play").isEnabled());

    Click(*dialog, "browse");
    auto& files = Named<QFileDialog>(*dialog, "soundFileDialog");
    EXPECT_EQ(files.nameFilters(), QStringList{QStringLiteral("Wave File (*.wav)")});
    EXPECT_EQ(files.defaultSuffix(), QStringLiteral("wav"));
    EXPECT_EQ(files.fileMode(), QFileDialog::ExistingFile);
    Q_EMIT files.fileSelected(QStringLiteral("/x,y.wav"));
    EXPECT_EQ(boxes.shown.size(), 1u) << "the alert's text has commas of its own";
    Q_EMIT files.fileSelected(QString::fromUtf8("/caf\xC3\xA9.wav"));
    files.close();
    Click(*dialog, "play");
    Named<QComboBox>(*dialog, "soundList").setCurrentIndex(1);
    EXPECT_FALSE(sounds.IsPlaying()) << "another choice ends the sound";
    Click(*dialog, "play");
    EXPECT_EQ(TextOf(Named<QPushButton>(*dialog, "play").text()), "S&top");
    sounds.End();
    EXPECT_FALSE(sounds.IsPlaying()) << "a long one does not go on when it counts as ended";
    EXPECT_EQ(TextOf(Named<QPushButton>(*dialog, "play").text()), "&Play");
    EXPECT_EQ(sounds.played, (std::vector<SAlertSound>{{2, "/caf\xE9.wav", false}, {1, "", false}}));

    Named<QComboBox>(*dialog, "soundList").setCurrentIndex(4);
    Click(*dialog, "loopSound");
    EXPECT_EQ(Complaint(*dialog), "");
    A_INFO alert = Alert("Last", 0, 1);
    alert.soundType = 2;
    alert.soundFile = "/caf\xE9.wav";
    alert.loopSound = 1;
    EXPECT_EQ(dialog->Alert(), alert);
    EXPECT_EQ(store.texts["SoundFile3"], "/caf\xE9.wav") << "the third file of the list";
    EXPECT_EQ(store.texts["SoundFile2"], "") << "what stands for an unreadable setting is not stored";
    muted = true;
    EXPECT_FALSE(Named<QPushButton>(*Dialog({.soundType = 1}), "play").isEnabled());
}

TEST_F(NewAlertDlg, WaveFilesAreTakenOffTheList) {
    store.texts = {
        {"SoundFile1", "/a.wav"}, {"SoundFile3", "/b.wav"}, {"SoundFile4", "/c.wav"}, {"SoundFile9", "Config Error"}};
    const auto dialog = Dialog({.symbol = "IBM",
                                .fieldId = AlertFieldId("Last"),
                                .condition = 0,
                                .value = "1",
                                .soundType = 2,
                                .soundFile = "/b.wav"});
    Click(*dialog, "removeSound");
    EXPECT_EQ(Entries(*dialog, "soundList"), (Texts{"None", "Default", "/a.wav", "/c.wav", "Config Error"}));
    EXPECT_EQ(Named<QComboBox>(*dialog, "soundList").currentIndex(), 1);
    EXPECT_FALSE(Named<QPushButton>(*dialog, "removeSound").isEnabled());
    EXPECT_EQ(store.texts["SoundFile3"], "/b.wav") << "nothing is committed before OK";
    EXPECT_EQ(Complaint(*dialog), "");
    EXPECT_EQ(dialog->Alert().soundType, 1u);
    EXPECT_EQ(store.texts["SoundFile1"], "/a.wav");
    EXPECT_EQ(store.texts["SoundFile2"], "/c.wav");
    for (const char* gone : {"SoundFile3", "SoundFile4"}) EXPECT_EQ(store.texts[gone], "") << gone;
    EXPECT_EQ(store.texts["SoundFile9"], "Config Error") << "what cannot be read is left alone";
}

TEST_F(NewAlertDlg, StrangeSymbolsAreShownAsTextAndKept) {
    const std::string huge(60'000, 'X');
    symbols = {"<b>%s\x01\n", huge};
    const auto dialog = Dialog({.symbol = huge, .fieldId = AlertFieldId("Last"), .condition = 1, .value = "1"});
    EXPECT_EQ(Entries(*dialog, "symbolList"), (Texts{"<b>%s??", std::string(197, 'X') + "..."}));
    EXPECT_LT(dialog->width(), 800);
    EXPECT_EQ(Complaint(*dialog), "");
    EXPECT_EQ(dialog->Symbol(), huge);
}

TEST_F(AlertsDlg, ListsEveryAlertAndArmsByItsCheckBox) {
    EXPECT_TRUE(Edit([&](CAlertsDlg& dialog) {
        EXPECT_EQ(Lines(dialog), (Texts{kIbmLastNoZero, kIbmBid, kIbmLow, kMsftNews}));
        EXPECT_EQ(Selected(dialog), 0);
        Select(dialog, 1);
        for (const char* button : {"edit", "delete"}) EXPECT_TRUE(Named<QPushButton>(dialog, button).isEnabled());
        QTest::keyClick(&Named<QListView>(dialog, "alertList"), Qt::Key_Space);
        EXPECT_EQ(Lines(dialog), (Texts{kIbmLastNoZero, kIbmBid + " off", kIbmLow, kMsftNews}));
        EXPECT_EQ(alerts.Get("IBM")[1].enabled, 1u) << "nothing is committed before OK";
        ClickStandard(dialog, QDialogButtonBox::Ok);
    }));
    EXPECT_EQ(alerts.Get("IBM")[1].enabled, 0u);
    EXPECT_TRUE(alerts.IsEmpty(EAlertMap::WorkingCopy));

    alerts.Clear(EAlertMap::Live);
    symbols.clear();
    CAlertsDlg empty(alerts, services);
    empty.show();
    EXPECT_TRUE(Named<QLabel>(empty, "noAlerts").isVisible());
    EXPECT_FALSE(Named<QPushButton>(empty, "new").isEnabled());
}

TEST_F(AlertsDlg, WhatCannotFireSaysSoBesideItsCheckMark) {
    alerts.Add("IBM", Alert("Listed Market Name", 0, 1));
    alerts.Add("GONE", Alert("Last", 1, 1));
    Texts states;
    EXPECT_FALSE(Edit([&](CAlertsDlg& dialog) {
        const QAbstractItemModel& model = *Named<QListView>(dialog, "alertList").model();
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex line = model.index(row, 0);
            states.push_back(
                TextOf(line.data(Qt::AccessibleTextRole).toString()).substr(TextOf(line.data().toString()).size()));
            EXPECT_EQ(line.data(Qt::CheckStateRole).toInt(), Qt::Checked) << "the mark stays the flag";
            EXPECT_EQ(line.data(Qt::ToolTipRole).toString().contains(QStringLiteral("cannot fire")),
                      !states.back().empty());
        }
        dialog.reject();
    }));
    EXPECT_EQ(states, (Texts{", cannot fire: not in the list", "", "", "", ", cannot fire: no numbers", ""}));
}

TEST_F(AlertsDlg, EditingAFiredAlertOffersToArmIt) {
    alerts.EvaluateFieldAlert("IBM", 2, 1, 1, 1, 1);
    for (const bool arm : {false, true}) {
        EXPECT_TRUE(Edit([&](CAlertsDlg& dialog) {
            Select(dialog, 0);
            Click(dialog, "edit");
            EXPECT_FALSE(Named<QCheckBox>(*Open<CNewAlertDlg>(), "arm").isVisible()) << "it is armed";
            Open<CNewAlertDlg>()->reject();
            Select(dialog, 2);
            Click(dialog, "edit");
            auto* edit = Open<CNewAlertDlg>();
            EXPECT_TRUE(Named<QCheckBox>(*edit, "arm").isVisible());
            EXPECT_TRUE(Named<QCheckBox>(*edit, "arm").isChecked());
            if (!arm) Click(*edit, "arm");
            ClickStandard(*edit, QDialogButtonBox::Ok);
            ClickStandard(dialog, QDialogButtonBox::Ok);
        }));
        EXPECT_EQ(alerts.Get("IBM")[2].enabled, arm ? 1u : 0u);
    }
}

TEST_F(AlertsDlg, AnEditedAlertMovesBehindTheOthersAndEqualOnesMerge) {
    EXPECT_TRUE(Edit([&](CAlertsDlg& dialog) {
        Select(dialog, 0);
        Click(dialog, "edit");
        auto* edit = Open<CNewAlertDlg>();
        EXPECT_TRUE(Named<QCheckBox>(*edit, "noZero").isChecked());
        Click(*edit, "noZero");
        ClickStandard(*edit, QDialogButtonBox::Ok);
        EXPECT_EQ(Lines(dialog), (Texts{kIbmBid, kIbmLow, kIbmLast, kMsftNews}));
        EXPECT_EQ(Selected(dialog), 2);

        QTest::keyClick(&Named<QListView>(dialog, "alertList"), Qt::Key_Space);
        Click(dialog, "new");
        auto* added = Open<CNewAlertDlg>();
        Choose(*added, "symbolList", "IBM");
        Choose(*added, "fieldList", "Last");
        Choose(*added, "operationList", "greater than");
        Type(*added, "valueBox", "10");
        ClickStandard(*added, QDialogButtonBox::Ok);
        EXPECT_EQ(Lines(dialog), (Texts{kIbmBid, kIbmLow, kIbmLast, kMsftNews})) << "the equal one was armed again";
        ClickStandard(dialog, QDialogButtonBox::Ok);
    }));
    EXPECT_EQ(alerts.Save(), "IBM:Bid,<=,-2.500000,TRUE,FALSE,0,FALSE,;IBM:Last,<,5.000000,TRUE,FALSE,0,FALSE,;"
                             "IBM:Last,>,10.000000,TRUE,FALSE,0,FALSE,;MSFT:News,=,1.000000,TRUE,FALSE,0,FALSE,;");
}

TEST_F(AlertsDlg, CancelDiscardsAndTheRowsSymbolIsSelected) {
    const std::string before = alerts.Save();
    EXPECT_FALSE(Edit(
        [&](CAlertsDlg& dialog) {
            EXPECT_EQ(Selected(dialog), 3);
            Click(dialog, "delete");
            EXPECT_EQ(Lines(dialog), (Texts{kIbmLastNoZero, kIbmBid, kIbmLow}));
            QTest::keyClick(&Named<QListView>(dialog, "alertList"), Qt::Key_Delete);
            EXPECT_EQ(Lines(dialog), (Texts{kIbmLastNoZero, kIbmBid}));
            ClickStandard(dialog, QDialogButtonBox::Cancel);
        },
        "MSFT"));
    EXPECT_EQ(alerts.Save(), before);
    EXPECT_TRUE(alerts.IsEmpty(EAlertMap::WorkingCopy));
}

TEST_F(AlertsDlg, ASymbolThatIsFullTakesNoMoreAndNothingIsLost) {
    for (int i = 0; i < static_cast<int>(CAlertsMap::kMostPerSymbol); ++i) alerts.Add("FULL", Alert("Last", 1, i));
    symbols.emplace_back("FULL");
    const std::string before = alerts.Save();
    EXPECT_TRUE(Edit([&](CAlertsDlg& dialog) {
        QTest::keyClick(&Named<QListView>(dialog, "alertList"), Qt::Key_End);
        Click(dialog, "edit");
        Choose(*Open<CNewAlertDlg>(), "symbolList", "FULL");
        ClickStandard(*Open<CNewAlertDlg>(), QDialogButtonBox::Ok);
        EXPECT_EQ(boxes.shown.size(), 1u);
        ClickStandard(dialog, QDialogButtonBox::Ok);
    }));
    EXPECT_EQ(alerts.Save(), before);
}

TEST_F(AlertsDlg, ManyAlertsOpenAtTheLastOne) {
    for (int i = 0; i < 10'000; ++i) alerts.Add(fmt::format("S{:04}", i), Alert("Last", 1, 1));
    EXPECT_FALSE(Edit(
        [&](CAlertsDlg& dialog) {
            auto& list = Named<QListView>(dialog, "alertList");
            EXPECT_EQ(Selected(dialog), 4 + 9'999);
            EXPECT_TRUE(list.viewport()->rect().contains(list.visualRect(list.currentIndex())));
            EXPECT_EQ(TextOf(list.currentIndex().data().toString()),
                      R"("S9999" when the "Last" is greater than 1.000000)");
            Click(dialog, "delete");
            EXPECT_EQ(Selected(dialog), 4 + 9'998);
            dialog.reject();
        },
        "S9999"));
}
