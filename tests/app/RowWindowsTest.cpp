// SPDX-License-Identifier: MIT
#include "app/ContextFixture.h"
#include "app/windows/HeadlinesDlg.h"
#include "app/windows/ListWindow.h"
#include "app/windows/MarketCommands.h"
#include "app/windows/TimeAndSalesDlg.h"
#include "data/record/L1SymbolRec.h"
#include "feed/session/FeedSession.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>

using namespace vx;
using namespace vx::test;

namespace {

class CRowWindowTest : public CContextFixture {
protected:
    CRowWindowTest() {
        doc->SetFeedReady();
        doc->Update()->EnterSymbol(1, "IBM");
        doc->Update()->EnterSymbol(2, "MSFT");
        doc->Update()->Columns();
        FocusRow(1);
    }
    void FocusRow(int row) { grid->SetFocusCell(row, 1); }

    template <typename TWindow> TWindow& Opened(ECommand command) {
        Do(command);
        m_window = mainWindow->findChild<TWindow*>();
        return *static_cast<TWindow*>(m_window);
    }
    template <typename TWidget> TWidget& Find(const char* name) { return Named<TWidget>(*m_window, name); }
    CListView& List() { return *m_window->findChild<CListView*>(); }
    std::string State() { return TextOf(*m_window, "state"); }
    std::string EmptyText() { return List().EmptyText().toStdString(); }
    /// A column of the list, "|" between the rows.
    std::string Column(int column) {
        const QAbstractItemModel& model = *List().model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) rows += model.index(row, column).data().toString();
        return rows.join(QLatin1Char('|')).toStdString();
    }
    void Filter(const char* text) { Find<QLineEdit>("filter").setText(QString::fromLatin1(text)); }
    void News(const std::string& symbols, const std::string& text) {
        doc->OnNewsLine("N,SIM,1," + symbols + ",20240131 093000," + text);
    }
    void Trade(const std::string& symbol, double price, int size, const std::string& contents = "C") {
        doc->Store().OnUpdate(DataLine('Q', symbol,
                                       fmt::format("Last={},Last Size={},Last Time=09:30:0{},Message Contents={}",
                                                   price, size, size % 10, contents)));
    }
    const CTimeAndSales* History(const char* symbol) { return doc->Store().FindSymbol(symbol)->History(); }

    CFeedSession session;
    CMarketCommands market{context, session};
    QWidget* m_window = nullptr;
};

using CHeadlinesDlgTest = CRowWindowTest;
using CTimeAndSalesDlgTest = CRowWindowTest;

} // namespace

TEST_F(CHeadlinesDlgTest, HeadlinesAreTheRowsOrAllAndPassTheFilter) {
    auto& window = Opened<CHeadlinesDlg>(ECommand::Headlines);
    EXPECT_THAT(EmptyText(), HasSubstr("No headline has come"));
    News("MSFT", "one");
    News("IBM:XYZ", "two, <b>%s</b>\x01!");
    window.Refresh();
    EXPECT_EQ(Column(0) + Column(1) + Column(2), "2024-01-31 09:30:00IBM, XYZtwo, <b>%s</b> !");
    EXPECT_EQ(State(), "1 of 2 headlines");
    FocusRow(2);
    EXPECT_EQ(Column(2), "one") << "follows the focus";
    FocusRow(3);
    EXPECT_THAT(EmptyText(), HasSubstr("holds no symbol"));
    Find<QRadioButton>("all").click();
    EXPECT_EQ(Column(1), "IBM, XYZ|MSFT");
    for (const auto& [text, shown] : {std::pair{"TWO", "IBM, XYZ"}, {"xyz", "IBM, XYZ"}, {"q", ""}}) {
        Filter(text);
        EXPECT_EQ(Column(1), shown) << text;
    }
}

TEST_F(CHeadlinesDlgTest, AHeadlineIsReadWholeAndLeadsToItsRow) {
    auto& window = Opened<CHeadlinesDlg>(ECommand::Headlines);
    CListView& list = List();
    const auto& detail = Find<QPlainTextEdit>("detail");
    const std::string huge = "<i>" + std::string(60'000, 'x');
    News("XYZ:MSFT:IBM", huge);
    Find<QRadioButton>("all").click();
    EXPECT_LT(Column(2).size(), 1000u);
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_EQ(detail.toPlainText().toStdString(), "2024-01-31 09:30:00   XYZ, MSFT, IBM\n\n" + huge);
    for (int i = 0; i < 100; ++i) News("QQQ", std::to_string(i));
    window.Refresh();
    EXPECT_EQ(list.currentIndex().row(), 100) << "still the one that is read";
    Filter("xx");
    FocusRow(3);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(grid->FocusCell().row, 2) << "the first that is there";

    Filter("");
    list.scrollToTop();
    list.verticalScrollBar()->setValue(10);
    News("QQQ", "more");
    News("QQQ", "and more");
    window.Refresh();
    EXPECT_EQ(list.FirstShownRow(), 12) << "what is looked at stays where it is";
}

TEST_F(CTimeAndSalesDlgTest, TradesAreKeptWhileTheWindowIsOpen) {
    Trade("IBM", 10, 1);
    auto& window = Opened<CTimeAndSalesDlg>(ECommand::TimeAndSales);
    EXPECT_EQ(History("IBM")->Limit(), 500u);
    EXPECT_THAT(EmptyText(), HasSubstr("Waiting for trades of IBM"));
    for (const auto& [price, size, contents] :
         {std::tuple{10.5, 1, "C"}, {10.25, 2, "Cb"}, {99.0, 9, "E"}, {10.25, 3, "C"}, {10.75, 4, "C"}})
        Trade("IBM", price, size, contents);
    EXPECT_EQ(Column(2), "") << "waits for the beat";
    window.Refresh();
    const char* columns[] = {"09:30:04|09:30:03|09:30:02|09:30:01", "\u25B2|\u2022|\u25BC|",
                             "10.7500|10.2500|10.2500|10.5000", "4|3|2|1"};
    for (int column = 0; column < 4; ++column) EXPECT_EQ(Column(column), columns[column]);
    for (int i = 0; i < 1250; ++i) Trade("IBM", 20, i);
    window.Refresh();
    EXPECT_THAT(Column(3), StartsWith("1249|1248|"));
    ProcessAll();
    List().verticalScrollBar()->setValue(20);
    for (int i = 0; i < 3; ++i) Trade("IBM", 30, 7);
    window.Refresh();
    EXPECT_EQ(List().FirstShownRow(), 23);
    EXPECT_THAT(Column(3), StartsWith("7|7|7|1249|"));
    EXPECT_EQ(List().model()->rowCount(), 500);

    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(History("IBM"), nullptr);
}

TEST_F(CTimeAndSalesDlgTest, TradesFollowTheRowUnlessHeldOnASymbol) {
    auto& window = Opened<CTimeAndSalesDlg>(ECommand::TimeAndSales);
    const auto sizes = [&] {
        window.Refresh();
        return Column(3);
    };
    Trade("IBM", 10, 1);
    FocusRow(2);
    Trade("MSFT", 20, 2);
    EXPECT_EQ(sizes(), "2");
    FocusRow(1);
    EXPECT_EQ(Column(3), "1") << "what was seen before is still there";
    Find<QCheckBox>("followRow").click();
    FocusRow(2);
    EXPECT_EQ(TextOf(window, "symbolName"), "IBM");
    doc->Update()->EmptyRow(1);
    EXPECT_EQ(sizes(), "");
    doc->Update()->EnterSymbol(1, "IBM");
    window.Refresh();
    Trade("IBM", 11, 5);
    EXPECT_EQ(sizes(), "5");
    Opened<CTimeAndSalesDlg>(ECommand::TimeAndSales);
    EXPECT_EQ(TextOf(window, "symbolName"), "MSFT") << "the command is about the row";
    window.close();
    EXPECT_EQ(History("MSFT"), nullptr);
}
