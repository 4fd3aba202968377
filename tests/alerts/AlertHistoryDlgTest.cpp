#include "AlertsUiFixture.h"

#include "alerts/rules/AlertHistory.h"
#include "alerts/ui/AlertHistoryDlg.h"
#include "support/TempFolder.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

using namespace vx;
using namespace vx::test;

namespace {

using Texts = std::vector<std::string>;

class AlertHistoryDlg : public CAlertsUiFixture {
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
    static Texts Column(const QDialog& dialog, int column) {
        Texts out;
        const QAbstractItemModel& model = *Named<QTableView>(dialog, "table").model();
        for (int row = 0; row < model.rowCount(); ++row)
            out.push_back(TextOf(model.index(row, column).data().toString()));
        return out;
    }
    static Texts Symbols(const QDialog& dialog) { return Column(dialog, 1); }
    static std::string Summary(const QDialog& dialog) { return TextOf(Named<QLabel>(dialog, "summary").text()); }

    CTempFolder folder;
    CAlertHistory history{folder.Path()};
};

} // namespace

TEST_F(AlertHistoryDlg, FirstComesWhatFiredInTheLastAbsence) {
    CAlertHistoryDlg dialog(history);
    dialog.show();
    const auto& nothing = Named<QLabel>(dialog, "nothing");
    EXPECT_EQ(TextOf(nothing.text()), "No alert has fired yet.");
    EXPECT_FALSE(Named<QPushButton>(dialog, "export").isEnabled());
    Fire("SEEN", 1'000);
    dialog.RefreshSoon();
    ASSERT_TRUE(WaitUntil([&] { return Symbols(dialog) == Texts{"SEEN"}; })) << "without an absence, everything";
    EXPECT_FALSE(nothing.isVisible());
    Choose(dialog, "view", "While you were away");
    EXPECT_EQ(TextOf(nothing.text()), "No alert fired while you were away.");

    Fire("EARLIER", 3'000, 2'000);
    Fire("MISSED", 6'000, 5'000);
    Fire("MISSED2", 7'000, 5'000);
    Fire("BACK", 9'000);
    dialog.ShowMissed();
    EXPECT_EQ(Symbols(dialog), (Texts{"MISSED2", "MISSED"}));
    EXPECT_EQ(Summary(dialog), "2 of 5 alerts; you were away from " + LocalTimeText(5'000) + " on");
    Choose(dialog, "view", "All alerts that fired");
    EXPECT_EQ(Symbols(dialog), (Texts{"BACK", "MISSED2", "MISSED", "EARLIER", "SEEN"}));
    EXPECT_EQ(Summary(dialog), "5 of 5 alerts");
}

TEST_F(AlertHistoryDlg, FiltersSortsAndExportsWhatIsShown) {
    const std::string ibm = Fire("IBM", 1'000, 0, 9);
    Fire("MSFT", 2'000, 0, 10);
    Fire("IBM", 3'000, 0, 100);
    history.NoteEnded(ibm, EFiringEnd::Reset, 4'000, 12.5);
    CAlertHistoryDlg dialog(history);
    dialog.show();
    Named<QTableView>(dialog, "table").sortByColumn(5, Qt::AscendingOrder);
    EXPECT_EQ(Column(dialog, 5), (Texts{"9", "10", "100"})) << "numbers, not texts";
    Choose(dialog, "symbol", "IBM");
    EXPECT_EQ(Column(dialog, 5), (Texts{"9", "100"}));
    Click(dialog, "onlyOpen");
    EXPECT_EQ(Column(dialog, 5), (Texts{"100"}));
    Click(dialog, "onlyOpen");
    Type(dialog, "text", "reset to");
    EXPECT_EQ(Column(dialog, 9), (Texts{"Reset to 12.5"}));

    dialog.ExportTo(QString::fromStdString(folder / "out.csv"));
    EXPECT_EQ(ReadFile(folder / "out.csv"),
              "Fired,Symbol,Field,Condition,Threshold,Value,Bid,Ask,Last,While Away,Outcome,Closed\r\n" +
                  LocalTimeText(1'000) + ",\"IBM\",\"Last\",\"greater than\",0,9,0,0,0,no,\"Reset to 12.5\"," +
                  LocalTimeText(4'000) + "\r\n");
    dialog.ExportTo(QString::fromStdString(folder / "no/such/folder.csv"));
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_TRUE(boxes.shown[0].text.starts_with("The alert history could not be written to\n" + folder.Path()));

    Fire("MSFT", 5'000);
    dialog.RefreshSoon();
    EXPECT_TRUE(WaitUntil([&] { return Summary(dialog) == "1 of 4 alerts"; }));
    EXPECT_EQ(Symbols(dialog), (Texts{"IBM"})) << "what comes leaves the filter as it is";
}
