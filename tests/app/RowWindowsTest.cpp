#include "app/FrameFixture.h"

#include "app/commands/Commands.h"
#include "app/windows/HeadlinesDlg.h"
#include "app/windows/ListWindow.h"
#include "app/windows/MarketCommands.h"
#include "app/windows/TimeAndSalesDlg.h"
#include "data/catalogue/FieldLayout.h"
#include "data/catalogue/UpdateFields.h"
#include "data/record/L1SymbolRec.h"
#include "support/Gui.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::HasSubstr;

namespace {

class CRowWindowsTest : public CFrameFixture {
protected:
    CRowWindowsTest() {
        frame = &Frame();
        doc = &frame->Document();
        doc->SetFeedReady();
        doc->Update()->EnterSymbol(1, "IBM");
        doc->Update()->EnterSymbol(2, "MSFT");
        doc->Update()->Columns();
        frame->ShowSized(900, 500);
        FocusRow(1);
    }
    void FocusRow(int row) { frame->View().Grid().SetFocusCell(row, 1); }

    template <typename TWindow> TWindow& Opened(ECommand command) {
        frame->Commands().Action(command).trigger();
        m_window = frame->findChild<TWindow*>();
        return *static_cast<TWindow*>(m_window);
    }
    template <typename TWidget> TWidget& Find(const char* name) {
        return *m_window->findChild<TWidget*>(QString::fromLatin1(name));
    }
    std::string State() { return Find<QLabel>("state").text().toStdString(); }
    /// A column of a list, "|" between the rows.
    std::string Column(const char* list, int column) {
        const QAbstractItemModel& model = *Find<CListView>(list).model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) rows += model.index(row, column).data().toString();
        return rows.join(QLatin1Char('|')).toStdString();
    }
    void News(const std::string& symbols, const std::string& text) {
        doc->OnNewsLine("N,SIM,1," + symbols + ",20240131 093000," + text);
    }
    void Trade(const std::string& symbol, double price, int size, const std::string& contents = "C") {
        std::vector<std::string> fields(kUpdateFieldCount);
        fields[0] = symbol;
        fields[UpdateSlot("Last")] = std::to_string(price);
        fields[UpdateSlot("Last Size")] = std::to_string(size);
        fields[UpdateSlot("Last Time")] = "09:30:0" + std::to_string(size % 10);
        fields[UpdateSlot("Message Contents")] = contents;
        std::string line = "Q,";
        for (const std::string& field : fields) line += field + ",";
        frame->Store().OnUpdate(line);
    }
    const CTimeAndSales* History(const char* symbol) { return frame->Store().FindSymbol(symbol)->History(); }

    CMainFrame* frame;
    CWatchlistDoc* doc;
    QWidget* m_window = nullptr;
};

} // namespace

TEST_F(CRowWindowsTest, HeadlinesAreTheRowsOrAllAndPassTheFilter) {
    auto& window = Opened<CHeadlinesDlg>(ECommand::Headlines);
    EXPECT_THAT(Find<CListView>("headlines").EmptyText().toStdString(), HasSubstr("No headline has come"));
    News("MSFT", "one");
    News("IBM:XYZ", "two, <b>%s</b>\x01!");
    window.Refresh();
    EXPECT_EQ(Column("headlines", 2), "two, <b>%s</b> !");
    EXPECT_EQ(Column("headlines", 1), "IBM, XYZ");
    EXPECT_EQ(Column("headlines", 0), "2024-01-31 09:30:00");
    EXPECT_EQ(State(), "1 of 2 headlines");
    FocusRow(2);
    EXPECT_EQ(Column("headlines", 2), "one") << "follows the focus";
    FocusRow(3);
    EXPECT_THAT(Find<CListView>("headlines").EmptyText().toStdString(), HasSubstr("holds no symbol"));
    Find<QRadioButton>("all").click();
    EXPECT_EQ(Column("headlines", 1), "IBM, XYZ|MSFT");
    for (const auto& [text, shown] :
         {std::pair{"TWO", "IBM, XYZ"}, {"xyz", "IBM, XYZ"}, {"%s", "IBM, XYZ"}, {"e", "MSFT"}, {"q", ""}}) {
        Find<QLineEdit>("filter").setText(QString::fromLatin1(text));
        EXPECT_EQ(Column("headlines", 1), shown) << text;
    }
    doc->NewDocument();
    News("IBM", "the next list's");
    Find<QLineEdit>("filter").clear();
    window.Refresh();
    EXPECT_EQ(Column("headlines", 2), "the next list's");
}

TEST_F(CRowWindowsTest, AHeadlineIsReadWholeAndLeadsToItsRow) {
    auto& window = Opened<CHeadlinesDlg>(ECommand::Headlines);
    auto& list = Find<CListView>("headlines");
    const std::string huge = "<i>" + std::string(60'000, 'x');
    News("XYZ:MSFT", huge);
    Find<QRadioButton>("all").click();
    EXPECT_LT(Column("headlines", 2).size(), 1000u);
    EXPECT_LT(list.model()->index(0, 2).data(Qt::ToolTipRole).toString().size(), 4000);
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_EQ(Find<QPlainTextEdit>("detail").toPlainText().toStdString(), "2024-01-31 09:30:00   XYZ, MSFT\n\n" + huge);
    for (int i = 0; i < 100; ++i) News("QQQ", std::to_string(i));
    window.Refresh();
    EXPECT_EQ(list.currentIndex().row(), 100) << "still the one that is read";
    Find<QLineEdit>("filter").setText(QStringLiteral("xx"));
    EXPECT_THAT(Find<QPlainTextEdit>("detail").toPlainText().toStdString(), HasSubstr("MSFT"));
    EXPECT_EQ(list.currentIndex().row(), 0);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(frame->View().Grid().FocusCell().row, 2);

    Find<QLineEdit>("filter").clear();
    list.scrollToTop();
    list.verticalScrollBar()->setValue(10);
    News("QQQ", "more");
    News("QQQ", "and more");
    window.Refresh();
    EXPECT_EQ(list.FirstShownRow(), 12) << "what is looked at stays where it is";
    const QPoint place = list.visualRect(list.model()->index(12, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(frame->View().Grid().FocusCell().row, 2);
    EXPECT_EQ(State(), "None of its symbols is in the watchlist.");
}

TEST_F(CRowWindowsTest, TradesAreKeptWhileTheWindowIsOpen) {
    Trade("IBM", 10, 1);
    auto& window = Opened<CTimeAndSalesDlg>(ECommand::TimeAndSales);
    EXPECT_EQ(History("IBM")->Limit(), 500u);
    EXPECT_THAT(Find<CListView>("trades").EmptyText().toStdString(), HasSubstr("Waiting for trades of IBM"));
    for (const auto& [price, size, contents] :
         {std::tuple{10.5, 1, "C"}, {10.25, 2, "Cb"}, {99.0, 9, "E"}, {10.25, 3, "C"}, {10.75, 4, "C"}})
        Trade("IBM", price, size, contents);
    EXPECT_EQ(Column("trades", 2), "") << "waits for the beat";
    window.Refresh();
    EXPECT_EQ(Column("trades", 0), "09:30:04|09:30:03|09:30:02|09:30:01");
    EXPECT_EQ(Column("trades", 1), "\u25B2|\u2022|\u25BC|");
    EXPECT_EQ(Column("trades", 2), "10.7500|10.2500|10.2500|10.5000");
    EXPECT_EQ(Column("trades", 3), "4|3|2|1");
    EXPECT_EQ(State(), "4 trades");

    for (int i = 0; i < 1250; ++i) Trade("IBM", 20, i);
    window.Refresh();
    EXPECT_EQ(State(), "The last 500 trades");
    EXPECT_THAT(Column("trades", 3), testing::StartsWith("1249|1248|"));
    auto& list = Find<CListView>("trades");
    ProcessAll();
    list.verticalScrollBar()->setValue(20);
    for (int i = 0; i < 3; ++i) Trade("IBM", 30, 7);
    window.Refresh();
    EXPECT_EQ(list.FirstShownRow(), 23);
    EXPECT_THAT(Column("trades", 3), testing::StartsWith("7|7|7|1249|"));
    EXPECT_EQ(list.model()->rowCount(), 500);

    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(History("IBM"), nullptr);
}

TEST_F(CRowWindowsTest, TradesFollowTheRowUnlessHeldOnASymbol) {
    auto& window = Opened<CTimeAndSalesDlg>(ECommand::TimeAndSales);
    Trade("IBM", 10, 1);
    FocusRow(2);
    Trade("MSFT", 20, 2);
    window.Refresh();
    EXPECT_EQ(Column("trades", 3), "2");
    FocusRow(1);
    EXPECT_EQ(Column("trades", 3), "1") << "what was seen before is still there";
    Find<QCheckBox>("followRow").click();
    FocusRow(2);
    EXPECT_EQ(Find<QLabel>("symbolName").text(), QStringLiteral("IBM"));
    doc->Update()->EmptyRow(1);
    window.Refresh();
    EXPECT_EQ(Column("trades", 3), "");
    EXPECT_THAT(Find<CListView>("trades").EmptyText().toStdString(), HasSubstr("is not being watched"));
    doc->Update()->EnterSymbol(1, "IBM");
    window.Refresh();
    Trade("IBM", 11, 5);
    window.Refresh();
    EXPECT_EQ(Column("trades", 3), "5");
    Opened<CTimeAndSalesDlg>(ECommand::TimeAndSales);
    EXPECT_EQ(Find<QLabel>("symbolName").text(), QStringLiteral("MSFT")) << "the command is about the row";
    Find<QCheckBox>("followRow").click();
    FocusRow(3);
    EXPECT_THAT(Find<CListView>("trades").EmptyText().toStdString(), HasSubstr("holds no symbol"));
    window.close();
    EXPECT_EQ(History("MSFT"), nullptr);
}
