// SPDX-License-Identifier: MIT
#include "app/ContextFixture.h"
#include "app/commands/AddSymbols.h"
#include "app/windows/ListWindow.h"
#include "app/windows/MarketCommands.h"
#include "app/windows/SearchFilter.h"
#include "app/windows/SymbolSearchDlg.h"
#include "feed/session/FeedSession.h"
#include "feed/socket/ClientAppSocket.h"
#include "support/FakeClock.h"
#include "support/LookupPeer.h"
#include "support/ScriptedFeed.h"

#include <QComboBox>
#include <QHeaderView>
#include <QRadioButton>

#include <optional>

using namespace vx;
using namespace vx::test;

namespace {

class CSymbolSearchDlgTest : public CContextFixture {
protected:
    CSymbolSearchDlgTest() {
        TablesAreAt(feed.lookup.Number());
        session.OpenDataPorts("");
        EXPECT_TRUE(WaitUntil([&] { return session.FeedSocket(kLookupSocket)->IsConnected(); }));
        TablesAreAt(FreePort());
    }
    /// The tables of names are asked for on connections of their own.
    void TablesAreAt(uint16_t port) { PortsAre(feed.level1.Number(), port, feed.admin.Number()); }

    void Open() {
        if (!dialog) dialog.emplace(session, settings, mainWindow);
        dialog->open();
    }
    template <typename TWidget> TWidget& Find(const char* name) { return Named<TWidget>(*dialog, name); }
    void SearchFor(const char* text) {
        Find<QLineEdit>("searchText").setText(QString::fromLatin1(text));
        Find<QPushButton>("search").click();
    }
    void Answers(const std::vector<std::string>& results, bool ends = true) {
        std::string lines;
        for (const std::string& result : results) lines += "LSearch,LS," + result + ",\r\n";
        feed.lookup.Says(lines + (ends ? "LSearch,!ENDMSG!,\r\n" : ""));
    }
    CListView& Results() { return Find<CListView>("results"); }
    std::string Row(int row, int columns = 3) {
        QString out;
        for (int column = 0; column < columns; ++column) out += Results().model()->index(row, column).data().toString();
        return out.toStdString();
    }
    testing::AssertionResult Finds(int rows) {
        if (WaitUntil([&] { return Results().model()->rowCount() == rows; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << Results().model()->rowCount() << " rows";
    }
    testing::AssertionResult Says(const char* state) {
        if (WaitUntil([&] { return TextOf(*dialog, "searchState") == state; }, 3000))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << TextOf(*dialog, "searchState");
    }
    bool LookupHeardAtItsEnd(const std::string& request) {
        return WaitUntil([&] { return feed.lookup.HeardSoFar().ends_with(request); });
    }

    CScriptedFeed feed;
    CFeedSession session;
    CMarketCommands market{context, session};
    std::optional<CSymbolSearchDlg> dialog;
};

} // namespace

TEST_F(CSymbolSearchDlgTest, SearchesSeveralMarketsByDescriptionAndShowsResultsAsTheyCome) {
    const CLookupPeer tables({{"7,ALPHA,Alpha %s Exchange,1,EQ\r\n11,<b>HARBOR,Harbor,1,EQ\r\n!ENDMSG!,\r\n"}});
    TablesAreAt(tables.Port());
    Open();
    Find<QRadioButton>("byDescription").click();
    Find<QComboBox>("filterMode").setCurrentIndex(CSearchFilter::kMarkets);
    auto& names = Find<CListView>("filterList");
    ASSERT_EQ(names.model()->rowCount(), 2);
    EXPECT_EQ(names.model()->index(0, 0).data().toString(), QStringLiteral("ALPHA - Alpha %s Exchange"));
    names.selectAll();
    SearchFor("gold, mine");
    EXPECT_TRUE(LookupHeardAtItsEnd("SBF,d,gold  mine,e,7 11,LSearch\r\n"));
    EXPECT_EQ(settings.ReadInteger(kSearchType), 1);

    Answers({"B,7,1,second", "A,11,1,first", "few,7,1"}, false);
    ASSERT_TRUE(Finds(2));
    EXPECT_EQ(Row(0), "BALPHAsecond");
    EXPECT_TRUE(Says("Searching... found so far: 2."));
    QTest::mouseClick(Results().header()->viewport(), Qt::LeftButton, {}, {20, 5});
    EXPECT_EQ(Row(0, 2), "A<b>HARBOR");
    Answers({"AA,9,1," + std::string(60000, 'd')});
    ASSERT_TRUE(Finds(3)) << "sorted rows count as shown";
    EXPECT_TRUE(Says("3 symbols found."));
    EXPECT_EQ(Row(1, 2), "AA") << "a market without a name";
    EXPECT_LE(Row(1).size(), 302u);
    const QPoint place = Results().visualRect(Results().model()->index(2, 0)).center();
    QTest::mouseClick(Results().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(Results().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->ChosenSymbol(), "B");
}

TEST_F(CSymbolSearchDlgTest, WhatIsChosenIsTheSelectionInTheOrderShown) {
    Open();
    SearchFor("I");
    EXPECT_TRUE(LookupHeardAtItsEnd("SBF,s,I,,,LSearch\r\n"));
    Answers({"IBM,,1,x", "IB,,1,x"});
    ASSERT_TRUE(Finds(2));
    EXPECT_TRUE(Says("2 symbols found. The names of the markets could not be loaded."));
    Results().sortByColumn(0, Qt::AscendingOrder);
    Results().selectAll();
    QTest::keyClick(&Results(), Qt::Key_Return);
    EXPECT_THAT(dialog->ChosenSymbols(), ElementsAre("IB", "IBM"));
    Open();
    Results().clearSelection();
    dialog->accept();
    EXPECT_EQ(dialog->ChosenSymbol(), "");
    EXPECT_TRUE(Finds(0));
}

TEST_F(CSymbolSearchDlgTest, AFeedThatDoesNotAnswerIsNamed) {
    CFakeClock clock;
    Open();
    const auto& stop = Find<QPushButton>("stop");
    SearchFor("IBM");
    clock.elapsedMs = 7000;
    EXPECT_TRUE(Says("The feed has not answered for 7 seconds. Found so far: 0. Stop, or search again."));
    Click(*dialog, "stop");
    EXPECT_FALSE(stop.isEnabled());
    SearchFor("IBM");
    Answers({"A,,1,x"});
    EXPECT_TRUE(Finds(1)) << "the search before it may never be answered";
    Answers({"B,,1,x", "C,,1,x"});
    EXPECT_TRUE(Finds(2)) << "but that was its reply, and this is the present one's";
    SearchFor("IBM");
    feed.lookup.HangsUp();
    EXPECT_TRUE(Says("The feed client has closed the connection. Found until then: 0."));
    SearchFor("IBM");
    EXPECT_TRUE(Says("Not connected."));

    auto& list = Find<CListView>("filterList");
    Find<QComboBox>("filterMode").setCurrentIndex(CSearchFilter::kSecurityTypes);
    EXPECT_THAT(list.EmptyText().toStdString(), HasSubstr("cannot be reached"));
    dialog->Filter().SetTimes({2000, 2000});
    const CLookupPeer tables({{"3,SHORT,Long\r\n!ENDMSG!,\r\n"}});
    TablesAreAt(tables.Port());
    Find<QPushButton>("loadAgain").click();
    ASSERT_EQ(list.model()->rowCount(), 1);
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), QStringLiteral("Long - SHORT"));
    EXPECT_FALSE(Find<QPushButton>("loadAgain").isVisible());
}

TEST_F(CSymbolSearchDlgTest, ChosenSymbolsComeTogetherBelowTheFocusAndAreOneEdit) {
    for (const int row : {1, 2, 4}) doc->Update()->EnterSymbol(row, "OLD" + std::to_string(row));
    doc->Update()->Columns();
    const auto rows = [&] {
        std::string text;
        for (int row = 1; row <= doc->LastUsedRow(); ++row) text += std::string(doc->RowSymbol(row)) + " ";
        return text;
    };
    grid->SetFocusCell(2, 3);
    InDialog<CSymbolSearchDlg>(ECommand::SymbolSearch, [&](CSymbolSearchDlg& search) {
        Named<QLineEdit>(search, "searchText").setText(QStringLiteral("n"));
        Named<QPushButton>(search, "search").click();
        Answers({"N1,,1,x", "N2,,1,x", "N3,,1,x"});
        auto& list = Named<CListView>(search, "results");
        EXPECT_TRUE(WaitUntil([&] { return list.model()->rowCount() == 3; }));
        list.selectAll();
        search.accept();
    });
    EXPECT_EQ(rows(), "OLD1 OLD2 N1 N2 N3 OLD4 ");
    EXPECT_EQ(settings.ReadTextOrDefault(kCurrentSymbol), "N1");
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{3, 5, 3, 3}));
    Do(ECommand::EditUndo);
    EXPECT_EQ(rows(), "OLD1 OLD2  OLD4 ");

    EXPECT_EQ(AddSymbols(*doc, 3, {"E1", " "}).first, 3) << "an empty row is filled";
    doc->Update()->Notes().Set(5, "mine");
    EXPECT_EQ(AddSymbols(*doc, 4, {"E2"}).first, 5);
    EXPECT_EQ(doc->Notes().Get(6), "mine") << "a row with a note was taken for a free one";
    EXPECT_EQ(AddSymbols(*doc, CRowTable::kMaxRow, {"E4", "E5"}).count, 0);
    EXPECT_THAT(boxes.TakeTexts(), SizeIs(1));
    EXPECT_EQ(rows(), "OLD1 OLD2 E1 OLD4 E2 ");
}
