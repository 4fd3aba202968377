#include "app/FrameFixture.h"

#include "app/commands/Commands.h"
#include "app/files/RecoveryController.h"
#include "support/EventLoop.h"
#include "watchlist/file/RecoveryFile.h"

#include <QLabel>
#include <QProcess>
#include <QRegularExpression>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <sys/stat.h>

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

    /// The running programs that were started with this test's folder.
    std::vector<pid_t> Programs() const {
        std::vector<pid_t> out;
        std::error_code gone;
        for (const auto& entry : std::filesystem::directory_iterator("/proc", gone)) {
            const pid_t id = std::atoi(entry.path().filename().c_str());
            if (id > 0 && id != getpid() &&
                ReadFile(entry.path().string() + "/environ").find(folder.Path()) != std::string::npos)
                out.push_back(id);
        }
        return out;
    }
    /// The id of such a program whose command line holds a text, 0 when there is none.
    pid_t ProgramWith(const std::string& text) const {
        for (const pid_t id : Programs())
            if (ReadFile("/proc/" + std::to_string(id) + "/cmdline").find(text) != std::string::npos) return id;
        return 0;
    }

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

TEST_F(CLiveMarketTest, OwnDataThatEndLeaveAGreyBoardUntilTheyComeAgain) {
    const std::string pipe = folder / "quotes";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    StartMarket({QStringLiteral("--input"), QString::fromStdString(pipe)});
    CMainFrame& frame = Frame({"-symbol", "ACME"});
    frame.OpenAdminPort();
    const int last = ColumnOf("Last");
    const auto* state = frame.findChild<QLabel*>(QStringLiteral("paneFeed"));
    const auto shows = [&](const std::string& text, const char* word, bool stale) {
        SCell cell;
        frame.View().Grid().Source()->FillCell(1, last, cell);
        return cell.Text() == text && (cell.role == ETextRole::Stale) == stale && state->text() == QLatin1String(word);
    };
    EXPECT_TRUE(WaitUntil([&] { return state->text() == QLatin1String("Feed: Not Connected"); })) << "nobody writes";
    for (const char* price : {"10.25", "11.75"}) {
        std::ofstream feeder(pipe);
        feeder << "Symbol,Last\nAcme," << price << std::endl;
        EXPECT_TRUE(WaitUntil([&] { return shows(price, "Feed: Connected", false); }));
        feeder.close();
        EXPECT_TRUE(WaitUntil([&] { return shows(price, "Feed: Not Connected", true); }));
    }
}

TEST_F(CLiveMarketTest, AfterTheFeedClientDiedTheProgramStartsAnewWithEverything) {
    StartMarket({});
    CMainFrame& frame = Frame({"-symbol", "IBM"});
    frame.OpenAdminPort();
    const int last = ColumnOf("Last");
    ASSERT_TRUE(WaitUntil([&] { return !Shown(1, last).empty(); }));
    m_client.kill();
    ASSERT_TRUE(WaitUntil([&] { return frame.Commands().Action(ECommand::Restart).isEnabled(); }));
    frame.Document().Update()->EnterSymbol(2, "MSFT");
    frame.Document().Edit({}, [](CWatchlistEdit&) {});

    const std::string path = std::getenv("PATH");
    setenv("PATH", ZW_BIN_DIR, 1);
    frame.Commands().Action(ECommand::Restart).trigger();
    setenv("PATH", path.c_str(), 1);
    const std::string kept = frame.Recovery().KeptFile();
    DropFrame();
    pid_t program = 0;
    ASSERT_TRUE(WaitUntil([&] { return (program = ProgramWith(kept)) != 0; }));
    EXPECT_TRUE(WaitUntil([&] { return ProgramWith("ZANTREL_WATCHLIST") != 0; }))
        << "it starts a feed client of its own";
    EXPECT_TRUE(FindRecoveries(folder / "zantrel").empty()) << "the new program has it";
    kill(program, SIGTERM);
    EXPECT_TRUE(WaitUntil([&] { return ProgramWith(kept) == 0; }));
    const std::vector<SRecovery> left = FindRecoveries(folder / "zantrel");
    ASSERT_EQ(left.size(), 1u);
    EXPECT_NE(left[0].text.find("Symbols=IBM:1,;MSFT:2,;"), std::string::npos) << left[0].text;
    for (const pid_t id : Programs()) kill(id, SIGKILL);
}

TEST_F(CLiveMarketTest, SymbolsBeyondTheLimitComeWhenThereIsRoom) {
    StartMarket({QStringLiteral("--limit"), QStringLiteral("2"), QStringLiteral("--rate"), QStringLiteral("100")});
    CMainFrame& frame = Frame({"-symbol", "IBM,MSFT,AAPL"});
    frame.OpenAdminPort();
    ASSERT_TRUE(WaitUntil([&] { return !Notice(3).empty(); }));
    EXPECT_EQ(Notice(3), "waiting for room: limit of 2 reached");
    const int last = ColumnOf("Last");
    EXPECT_EQ(Shown(3, last), "");
    frame.Document().Update()->EmptyRow(1);
    EXPECT_TRUE(WaitUntil([&] { return !Shown(3, last).empty(); }));
    EXPECT_EQ(Notice(3), "");
}

TEST_F(CLiveMarketTest, MarketsAndSecurityTypesShowTheirNames) {
    StartMarket({QStringLiteral("--rate"), QStringLiteral("400")});
    CMainFrame& frame = Frame({"-symbol", "IBM"});
    frame.LookupTables().SetTimes({10000, 10000});
    const std::string columns = "Trade Market Center;Trade Market Center Name;LQT Market Center;MRT Market Center;"
                                "Bid Market Center Name;Ask Market Center Name;Listed Market Name;";
    frame.Document().Update()->SetColumnsByName(columns + "Security Type Name;");
    frame.OpenAdminPort();
    const int type = ColumnOf("Security Type Name");
    for (int column = 1; column < type; ++column) {
        EXPECT_TRUE(WaitUntil([&] { return !Shown(1, column).empty(); })) << column;
        EXPECT_EQ(Shown(1, column).find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos)
            << Shown(1, column) << " is not the short name of a market";
    }
    EXPECT_TRUE(WaitUntil([&] { return Shown(1, type) == "Equity"; })) << Shown(1, type);
}
