#include "app/FrameFixture.h"

#include "support/EventLoop.h"

#include <QProcess>
#include <QRegularExpression>

using namespace vx;
using namespace vx::test;

namespace {

/// The feed client that ships with the program, as a child process on free ports.
class CLiveMarketTest : public CFrameFixture {
protected:
    ~CLiveMarketTest() override {
        m_client.kill();
        m_client.waitForFinished();
    }

    void StartMarket(const QStringList& arguments) {
        m_client.setProgram(QStringLiteral(ZW_BIN_DIR "/vxconnect"));
        m_client.setArguments(QStringList{QStringLiteral("--level1-port"), QStringLiteral("0"),
                                          QStringLiteral("--lookup-port"), QStringLiteral("0"),
                                          QStringLiteral("--admin-port"), QStringLiteral("0")} +
                              arguments);
        m_client.start();
        QByteArray said;
        ASSERT_TRUE(WaitUntil([&] { return (said += m_client.readAllStandardOutput()).contains('\n'); }));
        const auto port = [&](const char* name) {
            const QRegularExpression number(QString::fromLatin1(name) + QStringLiteral("=(\\d+)"));
            return static_cast<uint16_t>(number.match(QString::fromLatin1(said)).captured(1).toUInt());
        };
        PortsAre(port("level1"), port("lookup"), port("admin"));
    }

private:
    QProcess m_client;
};

} // namespace

TEST_F(CLiveMarketTest, TheBoardFillsAndMoves) {
    StartMarket({QStringLiteral("--rate"), QStringLiteral("400")});
    CMainFrame& frame = Frame({"-symbol", "IBM,MSFT,NO SUCH"});
    frame.OpenAdminPort();
    const int last = ColumnOf("Last");
    const int bid = ColumnOf("Bid");
    ASSERT_TRUE(WaitUntil([&] { return !Shown(1, last).empty() && !Shown(2, last).empty(); }));
    EXPECT_EQ(Shown(1, 1), "IBM");
    const std::string first = Shown(1, bid) + Shown(2, bid);
    EXPECT_TRUE(WaitUntil([&] { return Shown(1, bid) + Shown(2, bid) != first; }));
    EXPECT_TRUE(WaitUntil([&] { return frame.Document().SymbolCount() == 2; }));
    EXPECT_EQ(frame.Document().AnnotationText(3), "\"NO SUCH\" is an Invalid or Unauthorized Symbol.");
    EXPECT_EQ(frame.Stats().status, "Connected");
}

TEST_F(CLiveMarketTest, TheLogCanBeWatchedOnTheConsole) {
    QProcess program;
    program.start(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"),
                  {QStringLiteral("--log"), QStringLiteral("--seconds=0"), QStringLiteral("--nonsense"),
                   QStringLiteral("--screenshot"), QString::fromStdString(folder / "a.png")});
    ASSERT_TRUE(WaitUntil([&] { return program.state() == QProcess::NotRunning; }));
    EXPECT_TRUE(program.readAllStandardError().contains("[Information] [STATUS] Command line: \"--nonsense\""));
}

TEST_F(CLiveMarketTest, APictureOfAListThatIsNotThereEndsWithOneSentence) {
    QProcess program;
    program.start(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"),
                  {QStringLiteral("--screenshot"), QString::fromStdString(folder / "a.png"),
                   QString::fromStdString(folder / "missing.vxw")});
    ASSERT_TRUE(WaitUntil([&] { return program.state() == QProcess::NotRunning; }));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_TRUE(program.readAllStandardError().contains("missing.vxw"));
}

TEST_F(CLiveMarketTest, SymbolsBeyondTheLimitComeWhenThereIsRoom) {
    StartMarket({QStringLiteral("--limit"), QStringLiteral("2"), QStringLiteral("--rate"), QStringLiteral("100")});
    CMainFrame& frame = Frame({"-symbol", "IBM,MSFT,AAPL"});
    frame.OpenAdminPort();
    ASSERT_TRUE(WaitUntil([&] { return !frame.LimitedSymbols().Pending().empty(); }));
    const int last = ColumnOf("Last");
    EXPECT_EQ(Shown(3, last), "");
    frame.Document().EmptyRow(1);
    EXPECT_TRUE(WaitUntil([&] { return !Shown(3, last).empty(); }));
}

TEST_F(CLiveMarketTest, MarketsAndSecurityTypesShowTheirNames) {
    StartMarket({QStringLiteral("--rate"), QStringLiteral("400")});
    CMainFrame& frame = Frame({"-symbol", "IBM"});
    frame.LookupTables().SetTimes({10000, 10000});
    const std::string columns = "Trade Market Center;Trade Market Center Name;LQT Market Center;MRT Market Center;"
                                "Bid Market Center Name;Ask Market Center Name;Listed Market Name;";
    frame.Document().SetColumnsByName(columns + "Security Type Name;");
    frame.OpenAdminPort();
    const int type = ColumnOf("Security Type Name");
    for (int column = 1; column < type; ++column) {
        EXPECT_TRUE(WaitUntil([&] { return !Shown(1, column).empty(); })) << column;
        EXPECT_EQ(Shown(1, column).find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos)
            << Shown(1, column) << " is not the short name of a market";
    }
    EXPECT_TRUE(WaitUntil([&] { return Shown(1, type) == "Equity"; })) << Shown(1, type);
}
