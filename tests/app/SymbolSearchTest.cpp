#include "app/FrameFixture.h"

#include "app/commands/AddSymbols.h"
#include "app/commands/Commands.h"
#include "app/windows/ListWindow.h"
#include "app/windows/MarketCommands.h"
#include "app/windows/SearchFilter.h"
#include "app/windows/SymbolSearchDlg.h"
#include "feed/socket/ClientAppSocket.h"
#include "support/EventLoop.h"
#include "support/FakeClock.h"
#include "support/Gui.h"
#include "support/LookupPeer.h"
#include "support/MessageBoxes.h"
#include "support/ScriptedFeed.h"

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gmock/gmock.h>

#include <array>
#include <optional>

using namespace vx;
using namespace vx::test;

namespace {

class CSymbolSearchTest : public CFrameFixture {
protected:
    CSymbolSearchTest() { PortsAre(feed.level1.Number(), feed.lookup.Number(), feed.admin.Number()); }

    CMainFrame& ConnectedFrame() {
        CMainFrame& frame = Frame();
        frame.OpenDataPorts("");
        EXPECT_TRUE(WaitUntil([&] { return frame.FeedSocket(kLookupSocket)->IsConnected(); }));
        TablesAreAt(FreePort());
        return frame;
    }
    /// The tables of names are asked for on connections of their own.
    void TablesAreAt(uint16_t port) { PortsAre(feed.level1.Number(), port, feed.admin.Number()); }

    CSymbolSearchDlg& Open(CMainFrame& frame) {
        dialog.emplace(frame, settings, &frame);
        dialog->open();
        return *dialog;
    }
    template <typename TWidget> TWidget& Find(const char* name) {
        return *dialog->findChild<TWidget*>(QString::fromLatin1(name));
    }
    void SearchFor(const char* text) {
        Find<QLineEdit>("searchText").setText(QString::fromLatin1(text));
        Find<QPushButton>("search").click();
    }
    QAbstractItemModel& Results() { return *Find<CListView>("results").model(); }
    QString Cell(int row, int column) { return Results().index(row, column).data().toString(); }
    testing::AssertionResult Finds(int rows) {
        if (WaitUntil([&] { return Results().rowCount() == rows; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << Results().rowCount() << " rows";
    }
    testing::AssertionResult Says(const QString& state) {
        const QLabel& label = Find<QLabel>("searchState");
        if (WaitUntil([&] { return label.text() == state; }, 3000)) return testing::AssertionSuccess();
        return testing::AssertionFailure() << label.text().toStdString();
    }
    bool LookupHeardAtItsEnd(const std::string& request) {
        return WaitUntil([&] { return feed.lookup.HeardSoFar().ends_with(request); });
    }

    CScriptedFeed feed;
    std::optional<CSymbolSearchDlg> dialog;
};

} // namespace

TEST_F(CSymbolSearchTest, SearchesSeveralMarketsByDescriptionAndShowsResultsAsTheyCome) {
    const CLookupPeer tables({{"7,ALPHA,Alpha %s Exchange,1,EQ\r\n11,<b>HARBOR,Harbor,1,EQ\r\n!ENDMSG!,\r\n"}});
    CMainFrame& frame = ConnectedFrame();
    TablesAreAt(tables.Port());
    Open(frame);
    Find<QRadioButton>("byDescription").click();
    Find<QComboBox>("filterMode").setCurrentIndex(CSearchFilter::kMarkets);
    auto& names = Find<CListView>("filterList");
    ASSERT_EQ(names.model()->rowCount(), 2);
    EXPECT_EQ(names.model()->index(0, 0).data().toString(), QStringLiteral("ALPHA - Alpha %s Exchange"));
    EXPECT_TRUE(names.isColumnHidden(1));
    names.selectAll();
    SearchFor("gold, mine");
    EXPECT_TRUE(LookupHeardAtItsEnd("SBF,d,gold  mine,e,7 11,LSearch\r\n"));
    EXPECT_EQ(settings.ReadInteger(kSearchType), 1);
    EXPECT_TRUE(Says(QStringLiteral("Searching...")));

    feed.lookup.Says("LSearch,LS,B,7,1,second,\r\nLSearch,LS,A,11,1,first,\r\nLSearch,LS,few,7,1,\r\n");
    ASSERT_TRUE(Finds(2));
    EXPECT_EQ(Cell(0, 0) + Cell(0, 1) + Cell(0, 2), QStringLiteral("BALPHAsecond"));
    EXPECT_TRUE(Says(QStringLiteral("Searching... found so far: 2.")));
    auto& results = Find<CListView>("results");
    QTest::mouseClick(results.header()->viewport(), Qt::LeftButton, {}, {20, 5});
    EXPECT_EQ(Cell(0, 0) + Cell(0, 1), QStringLiteral("A<b>HARBOR"));
    feed.lookup.Says("LSearch,LS,AA,9,1," + std::string(60000, 'd') + ",\r\nLSearch,!ENDMSG!,\r\n");
    ASSERT_TRUE(Finds(3)) << "sorted rows count as shown";
    EXPECT_TRUE(Says(QStringLiteral("3 symbols found.")));
    EXPECT_EQ(Cell(1, 0) + Cell(1, 1), QStringLiteral("AA")) << "a market without a name";
    EXPECT_LE(Cell(1, 2).size(), 300);

    const QRect place = results.visualRect(Results().index(2, 0));
    QTest::mouseClick(results.viewport(), Qt::LeftButton, {}, place.center());
    QTest::mouseDClick(results.viewport(), Qt::LeftButton, {}, place.center());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->ChosenSymbol(), "B");
}

TEST_F(CSymbolSearchTest, WhatIsChosenIsTheSelectionInTheOrderShown) {
    Open(ConnectedFrame());
    EXPECT_FALSE(Find<QPushButton>("search").isEnabled()) << "there is nothing to search for yet";
    SearchFor("IBM");
    EXPECT_TRUE(LookupHeardAtItsEnd("SBF,s,IBM,,,LSearch\r\n"));
    feed.lookup.Says("LSearch,!ENDMSG!,\r\n");
    ASSERT_TRUE(Finds(1));
    EXPECT_EQ(Cell(0, 0) + Cell(0, 1) + Cell(0, 2), QStringLiteral("No Results Found"));
    EXPECT_TRUE(Says(QStringLiteral("No symbol found.")));
    Find<CListView>("results").selectAll();
    dialog->accept();
    EXPECT_EQ(dialog->ChosenSymbol(), "No Results Found");

    dialog->open();
    SearchFor("I");
    feed.lookup.Says("LSearch,LS,IBM,,1,x,\r\nLSearch,LS,IB,,1,x,\r\nLSearch,!ENDMSG!,\r\n");
    ASSERT_TRUE(Finds(2));
    EXPECT_TRUE(Says(QStringLiteral("2 symbols found. The names of the markets could not be loaded.")));
    Find<CListView>("results").sortByColumn(0, Qt::AscendingOrder);
    Find<CListView>("results").selectAll();
    QTest::keyClick(&Find<CListView>("results"), Qt::Key_Return);
    EXPECT_EQ(dialog->ChosenSymbols(), (std::vector<std::string>{"IB", "IBM"}));
    EXPECT_EQ(dialog->ChosenSymbol(), "IB");
    dialog->open();
    Find<CListView>("results").clearSelection();
    dialog->accept();
    EXPECT_EQ(dialog->ChosenSymbol(), "");
    EXPECT_EQ(Results().rowCount(), 0);
}

TEST_F(CSymbolSearchTest, TheKeyboardGoesOnWhereTheUserDoes) {
    Open(ConnectedFrame());
    auto& text = Find<QLineEdit>("searchText");
    auto& results = Find<CListView>("results");
    auto& other = Find<QPushButton>("searchOther");
    for (int column = 0; column < 3; ++column)
        EXPECT_EQ(results.header()->sectionSize(column), (std::array{90, 75, 130}[static_cast<size_t>(column)]));
    const auto searchFor = [&](const char* what) {
        text.setFocus();
        text.setText(QString::fromLatin1(what));
        QTest::keyClick(&text, Qt::Key_Return);
    };
    searchFor("gold");
    EXPECT_FALSE(other.isVisible());
    feed.lookup.Says("LSearch,!ENDMSG!,\r\n");
    ASSERT_TRUE(WaitUntil([&] { return other.isVisible(); }));
    EXPECT_EQ(dialog->focusWidget(), &other);
    EXPECT_EQ(other.text(), QStringLiteral("Search Descriptions &Instead"));
    QTest::keyClick(&other, Qt::Key_Return);
    EXPECT_TRUE(LookupHeardAtItsEnd("SBF,d,gold,,,LSearch\r\n"));
    EXPECT_TRUE(Find<QRadioButton>("byDescription").isChecked());
    EXPECT_FALSE(other.isVisible());
    feed.lookup.Says("LSearch,LS,A,,1,x,\r\nLSearch,LS,B,,1,x,\r\n");
    EXPECT_TRUE(WaitUntil([&] { return results.hasFocus(); }));
    QTest::keyClick(&results, Qt::Key_Down);
    EXPECT_EQ(results.selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(results.currentIndex().row(), 0);

    searchFor("silver");
    QTest::keyClicks(&text, QStringLiteral("y"));
    feed.lookup.Says("LSearch,!ENDMSG!,\r\nLSearch,LS,C,,1,x,\r\n");
    ASSERT_TRUE(Finds(1));
    EXPECT_EQ(dialog->focusWidget(), &text) << "the next text is being typed";
}

TEST_F(CSymbolSearchTest, AFeedThatDoesNotAnswerIsToldOf) {
    CFakeClock clock;
    CMainFrame& frame = ConnectedFrame();
    Open(frame);
    SearchFor("IBM");
    EXPECT_TRUE(Find<QPushButton>("stop").isEnabled());
    clock.elapsedMs = 7000;
    EXPECT_TRUE(
        Says(QStringLiteral("The feed has not answered for 7 seconds. Found so far: 0. Stop, or search again.")));
    Find<QPushButton>("stop").click();
    EXPECT_TRUE(Says(QStringLiteral("Stopped. Found so far: 0.")));
    EXPECT_FALSE(Find<QPushButton>("stop").isEnabled());
    SearchFor("IBM");
    feed.lookup.Says("LSearch,LS,A,,1,x,\r\nLSearch,!ENDMSG!,\r\n");
    EXPECT_TRUE(Finds(1)) << "the search before it may never be answered";
    feed.lookup.Says("LSearch,LS,B,,1,x,\r\nLSearch,LS,C,,1,x,\r\nLSearch,!ENDMSG!,\r\n");
    EXPECT_TRUE(Finds(2)) << "but that was its reply, and this is the present one's";
    SearchFor("IBM");
    feed.lookup.HangsUp();
    EXPECT_TRUE(Says(QStringLiteral("The feed client has closed the connection. Found until then: 0.")));
    SearchFor("IBM");
    EXPECT_TRUE(Says(QStringLiteral("Not connected.")));
    EXPECT_THAT(Find<CListView>("results").EmptyText().toStdString(), testing::HasSubstr("lookup port"));

    auto& mode = Find<QComboBox>("filterMode");
    mode.setCurrentIndex(CSearchFilter::kSecurityTypes);
    EXPECT_THAT(Find<CListView>("filterList").EmptyText().toStdString(), testing::HasSubstr("cannot be reached"));
    const CLookupPeer silent({{"", SLookupAnswer::EThen::Stays}});
    TablesAreAt(silent.Port());
    dialog->Filter().SetTimes({20, 20});
    Find<QPushButton>("loadAgain").click();
    EXPECT_THAT(Find<CListView>("filterList").EmptyText().toStdString(), testing::HasSubstr("does not answer"));
    dialog->Filter().SetTimes({2000, 2000});
    const CLookupPeer tables({{"3,SHORT,Long\r\n!ENDMSG!,\r\n"}});
    TablesAreAt(tables.Port());
    Find<QPushButton>("loadAgain").click();
    ASSERT_EQ(Find<CListView>("filterList").model()->rowCount(), 1);
    EXPECT_EQ(Find<CListView>("filterList").model()->index(0, 0).data().toString(), QStringLiteral("Long - SHORT"));
    EXPECT_FALSE(Find<QPushButton>("loadAgain").isVisible());
}

TEST_F(CSymbolSearchTest, ChosenSymbolsStandTogetherBelowTheFocusAndAreOneEdit) {
    CMainFrame& frame = ConnectedFrame();
    CWatchlistDoc& doc = frame.Document();
    for (const int row : {1, 2, 4}) doc.Update()->EnterSymbol(row, "OLD" + std::to_string(row));
    doc.Update()->Columns();
    const auto rows = [&] {
        std::string text;
        for (int row = 1; row <= doc.LastUsedRow(); ++row) text += std::string(doc.RowSymbol(row)) + " ";
        return text;
    };
    frame.View().Grid().SetFocusCell(2, 3);
    QTimer::singleShot(0, [&] {
        auto* search = dynamic_cast<CSymbolSearchDlg*>(QApplication::activeModalWidget());
        ASSERT_NE(search, nullptr);
        search->findChild<QLineEdit*>(QStringLiteral("searchText"))->setText(QStringLiteral("n"));
        search->findChild<QPushButton*>(QStringLiteral("search"))->click();
        feed.lookup.Says("LSearch,LS,N1,,1,x,\r\nLSearch,LS,N2,,1,x,\r\nLSearch,LS,N3,,1,x,\r\n"
                         "LSearch,!ENDMSG!,\r\n");
        auto* list = search->findChild<CListView*>(QStringLiteral("results"));
        EXPECT_TRUE(WaitUntil([&] { return list->model()->rowCount() == 3; }));
        list->selectAll();
        search->accept();
    });
    frame.Commands().Action(ECommand::SymbolSearch).trigger();
    EXPECT_EQ(rows(), "OLD1 OLD2 N1 N2 N3 OLD4 ");
    EXPECT_EQ(settings.ReadTextOrDefault(kCurrentSymbol), "N1");
    EXPECT_EQ(frame.View().Grid().SelectedRange(), (SGridRange{3, 5, 3, 3}));
    doc.Undo().Undo();
    EXPECT_EQ(rows(), "OLD1 OLD2  OLD4 ");

    EXPECT_EQ(AddSymbols(doc, 3, {"E1", " "}).first, 3) << "an empty row is filled";
    EXPECT_EQ(AddSymbols(doc, 4, {"E2", "E3"}).first, 5);
    EXPECT_EQ(rows(), "OLD1 OLD2 E1 OLD4 E2 E3 ");
    doc.Update()->Notes().Set(7, "mine");
    EXPECT_EQ(AddSymbols(doc, 6, {"E6"}).first, 7);
    EXPECT_EQ(doc.Notes().Get(8), "mine") << "a row with a note was taken for a free one";
    EXPECT_EQ(AddSymbols(doc, 8, {"E7"}).first, 9);
    doc.DeleteRows(7, 3);
    CMessageBoxes boxes;
    EXPECT_EQ(AddSymbols(doc, CRowTable::kMaxRow, {"E4", "E5"}).count, 0);
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_EQ(boxes.shown[0].text, "The watchlist has no room for 2 more symbols.");
    EXPECT_EQ(rows(), "OLD1 OLD2 E1 OLD4 E2 E3 ");
}
