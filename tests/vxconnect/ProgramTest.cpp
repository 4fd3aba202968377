// SPDX-License-Identifier: MIT
#include "base/Registry.h"
#include "vxconnect/Peer.h"
#include "vxconnect/market/Tickers.h"

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>

#include <unistd.h>

namespace vx::sim {
namespace {

constexpr int kAbsurdMs = 20000;

// The program itself, with a settings folder of its own.
class Program : public testing::Test {
protected:
    Program() {
        NeedEventLoop();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.path());
        for (QProcess* process : {&m_first, &m_second}) process->setProcessEnvironment(environment);
    }
    ~Program() override {
        for (QProcess* process : {&m_first, &m_second}) {
            process->kill();
            process->waitForFinished(kAbsurdMs);
        }
    }

    static std::string Run(QProcess& process, const QStringList& arguments) {
        process.start(QStringLiteral(ZW_BIN_DIR "/vxconnect"), arguments);
        WaitUntil([&] { return process.canReadLine() || process.state() == QProcess::NotRunning; });
        return process.readLine().trimmed().toStdString();
    }
    static bool Ends(QProcess& process) {
        return process.state() == QProcess::NotRunning || process.waitForFinished(kAbsurdMs);
    }

    // Memory of the first program that is in use, in MB.
    double ResidentMb() const {
        std::ifstream statm("/proc/" + std::to_string(m_first.processId()) + "/statm");
        double total = 0, resident = 0;
        statm >> total >> resident;
        return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
    }

    QTemporaryDir m_folder;
    QProcess m_first;
    QProcess m_second;
};

// The number behind a name in the line that the program prints.
uint16_t PortIn(const std::string& line, const std::string& name) {
    return static_cast<uint16_t>(std::stoi(line.substr(line.find(name + "=") + name.size() + 1)));
}

const QStringList kFreePorts = {QStringLiteral("--level1-port=0"), QStringLiteral("--lookup-port=0"),
                                QStringLiteral("--admin-port=0")};

TEST_F(Program, ServesThePortsOfTheSettingsOnceAndEndsAfterItsClient) {
    std::array<QTcpServer, 3> finders;
    CRegistry registry(m_folder.path().toStdString() + "/zantrel");
    const std::array<std::string_view, 3> names = {kLevel1PortValue, kLookupPortValue, kAdminPortValue};
    std::array<uint16_t, 3> ports{};
    for (size_t i = 0; i < 3; ++i) {
        ASSERT_TRUE(finders[i].listen(QHostAddress::LocalHost));
        ports[i] = finders[i].serverPort();
        ASSERT_TRUE(registry.WriteText(kStartupKey, names[i], std::to_string(ports[i])));
    }
    for (QTcpServer& finder : finders) finder.close();
    const QStringList arguments = {QStringLiteral("-product"), QStringLiteral("ZANTREL_WATCHLIST"),
                                   QStringLiteral("-version"), QStringLiteral("1.8.3.0"),
                                   QStringLiteral("--linger"), QStringLiteral("0")};
    const std::string line = Run(m_first, arguments);
    EXPECT_THAT(line, testing::HasSubstr("level1=" + std::to_string(ports[0]) + " lookup=" + std::to_string(ports[1]) +
                                         " admin=" + std::to_string(ports[2])));
    EXPECT_THAT(Run(m_second, arguments), testing::HasSubstr("already served"));
    ASSERT_TRUE(Ends(m_second));
    EXPECT_EQ(m_second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_second.exitCode(), 0);
    EXPECT_EQ(m_first.state(), QProcess::Running);
    { CPeer peer(ports[2]); }
    ASSERT_TRUE(Ends(m_first));
    EXPECT_EQ(m_first.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_first.exitCode(), 0);
}

TEST_F(Program, WhatCannotBeServedIsToldAndEndsWithStatusTwo) {
    const std::string folder = m_folder.path().toStdString(), path = folder + "/quotes.csv";
    std::ofstream(path) << "Symbol,Last\n,1\n";
    struct SCase {
        std::string arguments;
        std::string input; // A file for standard input, empty: it is closed.
        std::string error;
    };
    const std::string wrongLine = " line 2: field \"Symbol\" is empty\n", none = ": no rows, nothing to serve\n";
    for (const SCase& wrong : std::vector<SCase>{
             {"--rate many", "/dev/null", "vxconnect: --rate: \"many\" is not a whole number from 1 to 500000\n"},
             {"--input " + path, "/dev/null", "vxconnect: " + path + wrongLine + "vxconnect: " + path + none},
             {"--input " + folder, "/dev/null", "vxconnect: " + folder + ": is a folder, not a file\n"},
             {"--input -", path, "vxconnect: /dev/stdin" + wrongLine + "vxconnect: /dev/stdin" + none},
             {"--input -", "/dev/null", "vxconnect: standard input: has ended\nvxconnect: standard input" + none},
             {"--input -", folder, "vxconnect: standard input: Is a directory\nvxconnect: standard input" + none},
             {"--input " + path + " --map Close=Lost", "/dev/null",
              "vxconnect: --map: \"Lost\" is not a field; the nearest are \"Last\", \"Close\", \"Low\"\n"},
             {"--input -", "", "vxconnect: standard input is closed: --input - has nothing to read\n"}}) {
        const std::string command =
            "exec '" ZW_BIN_DIR "/vxconnect' " + wrong.arguments + " <" + (wrong.input.empty() ? "&-" : wrong.input);
        m_first.start(QStringLiteral("sh"), {QStringLiteral("-c"), QString::fromStdString(command)});
        ASSERT_TRUE(Ends(m_first)) << command;
        EXPECT_EQ(m_first.exitCode(), 2) << command;
        EXPECT_EQ(m_first.readAllStandardError().toStdString(), wrong.error) << command;
    }
}

TEST_F(Program, OwnDataBesideAnotherInstanceAreAnErrorAndAFileStaysConnected) {
    const std::string folder = m_folder.path().toStdString(), path = folder + "/quotes.csv";
    std::ofstream(path) << "Symbol,Last\nA,1\nA,2\n";
    m_first.setStandardInputFile(QString::fromStdString(path));
    const std::string line = Run(m_first, QStringList{QStringLiteral("--input"), QStringLiteral("-")} + kFreePorts);
    CPeer admin(PortIn(line, "admin")), level1(PortIn(line, "level1"));
    level1.Send("wA\n");
    EXPECT_NE(level1.TakeLine("Q,A,"), "(none)");
    for (int i = 0; i < 4; ++i) EXPECT_NE(admin.TakeLine("S,STATS,user data,"), "(none)");
    EXPECT_THAT(admin.TakeLine("S,STATS,user data,"), testing::HasSubstr(",Connected,stdin,data,"));
    for (const std::string& own : {"--input=" + path, std::string("--feeder=touch " + folder + "/started"),
                                   "--replay=" + path, "--record=" + folder + "/recording"}) {
        std::ofstream(path, std::ios::app) << "Q,A,1,\n"; // Something to be replayed.
        m_second.start(QStringLiteral(ZW_BIN_DIR "/vxconnect"),
                       QStringList{QString::fromStdString(own)} + kFreePorts +
                           QStringList{QStringLiteral("--admin-port=%1").arg(PortIn(line, "admin"))});
        ASSERT_TRUE(Ends(m_second)) << own;
        EXPECT_EQ(m_second.exitCode(), 1) << own;
        EXPECT_THAT(m_second.readAllStandardError().toStdString(), testing::HasSubstr("is already served")) << own;
    }
    EXPECT_FALSE(QFile::exists(m_folder.filePath(QStringLiteral("started"))));
}

TEST_F(Program, GivesBackTheMemoryOfClientsThatHaveGone) {
#if defined(__SANITIZE_ADDRESS__) || (defined(__clang__) && __has_feature(address_sanitizer))
    GTEST_SKIP() << "the sanitizer keeps what was freed";
#endif
    constexpr int kClients = 300;
    constexpr double kRestMb = 10; // What the symbols take that somebody asked for, and some play.
    const uint16_t port = PortIn(Run(m_first, QStringList{QStringLiteral("--stay")} + kFreePorts), "level1");
    std::string watches;
    for (int i = 0; i < 10; ++i) watches += "w" + std::string(KnownTickers()[static_cast<size_t>(i)].symbol) + "\n";
    const double before = ResidentMb();
    {
        std::vector<std::unique_ptr<CPeer>> peers;
        for (int i = 0; i < kClients; ++i) peers.push_back(std::make_unique<CPeer>(port));
        for (auto& peer : peers) peer->Send(watches + "w\n");
        for (auto& peer : peers) ASSERT_NE(peer->TakeLine("E,"), "(none)");
    }
    EXPECT_TRUE(WaitUntil([&] { return ResidentMb() < before + kRestMb; })) << before << " " << ResidentMb();
}

TEST_F(Program, StandardInputIsFollowed) {
    const QStringList arguments = QStringList{QStringLiteral("--input"), QStringLiteral("-")} + kFreePorts;
    m_first.start(QStringLiteral(ZW_BIN_DIR "/vxconnect"), arguments);
    ASSERT_TRUE(m_first.waitForStarted(kAbsurdMs));
    m_first.write("Symbol,Last\nA,1\n");
    ASSERT_TRUE(WaitUntil([&] { return m_first.canReadLine(); }));
    CPeer peer(PortIn(m_first.readLine().toStdString(), "level1"));
    peer.Send("S,SELECT UPDATE FIELDS,Symbol,Last\n");
    peer.TakeLine("S,IP");
    for (std::string answer = "n"; answer[0] != 'F';) { // The row may come a little later than the ports.
        peer.Send("wA\n");
        answer = peer.TakeLine("");
    }
    EXPECT_EQ(peer.TakeLine("P,"), "P,A,1,");
    m_first.write("A,2\n");
    EXPECT_EQ(peer.TakeLine("Q,"), "Q,A,2,");
}

TEST_F(Program, TheLogOnTheConsoleShowsWhatClientsSayAndHear) {
    QStringList arguments = {QStringLiteral("--log"), QStringLiteral("--split=3")};
    for (const char* port : {"--level1-port=0", "--lookup-port=0", "--admin-port=0"}) arguments << QLatin1String(port);
    const std::string line = Run(m_first, arguments);
    CPeer level1(static_cast<uint16_t>(std::stoi(line.substr(line.find("level1=") + 7))));
    CPeer lookup(static_cast<uint16_t>(std::stoi(line.substr(line.find("lookup=") + 7))));
    level1.Send("S,SELECT UPDATE FIELDS,Symbol,Delay\nw1\n");
    lookup.Send("SST\r\n");
    std::string log;
    for (const char* shown :
         {"[L1Request] [FROM CLIENT] w1\n", "[L1System] [TO CLIENT] S,IP,127.0.0.1,", "[L1Data] [TO CLIENT] n,1\n",
          "[LookupRequest] [FROM CLIENT] SST\n", "[LookupData] [TO CLIENT] 1,EQUITY,Equity\n"})
        EXPECT_TRUE(WaitUntil([&] {
            log += m_first.readAllStandardError().toStdString();
            return log.find(shown) != std::string::npos;
        })) << shown
            << log;
}

} // namespace
} // namespace vx::sim
