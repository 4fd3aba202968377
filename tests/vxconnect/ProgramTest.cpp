#include "base/Registry.h"
#include "base/RegistryPaths.h"
#include "vxconnect/Peer.h"

#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>

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

    QTemporaryDir m_folder;
    QProcess m_first;
    QProcess m_second;
};

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
    std::ofstream(path) << "Symbol,Last\nA,x\n";
    struct SCase {
        std::string arguments;
        std::string input; // A file for standard input, empty: it is closed.
        std::string error;
    };
    const std::string wrongLine = " line 2: field \"Last\": \"x\" is not a number\n";
    for (const SCase& wrong : std::vector<SCase>{
             {"--rate many", "/dev/null", "vxconnect: --rate: \"many\" is not a whole number from 1 to 500000\n"},
             {"--input " + path, "/dev/null", "vxconnect: " + path + wrongLine},
             {"--input " + folder, "/dev/null", "vxconnect: " + folder + ": is a folder, not a file\n"},
             {"--input -", path,
              "vxconnect: standard input" + wrongLine +
                  "vxconnect: standard input: no rows, "
                  "nothing to serve\n"},
             {"--input -", folder, "vxconnect: standard input: Is a directory\n"},
             {"--input -", "", "vxconnect: standard input is closed: --input - has nothing to read\n"}}) {
        const std::string command =
            "exec '" ZW_BIN_DIR "/vxconnect' " + wrong.arguments + " <" + (wrong.input.empty() ? "&-" : wrong.input);
        m_first.start(QStringLiteral("sh"), {QStringLiteral("-c"), QString::fromStdString(command)});
        ASSERT_TRUE(Ends(m_first)) << command;
        EXPECT_EQ(m_first.exitCode(), 2) << command;
        EXPECT_EQ(m_first.readAllStandardError().toStdString(), wrong.error) << command;
    }
}

TEST_F(Program, StandardInputIsFollowed) {
    QStringList arguments = {QStringLiteral("--input"), QStringLiteral("-")};
    for (const char* port : {"--level1-port=0", "--lookup-port=0", "--admin-port=0"}) arguments << QLatin1String(port);
    m_first.start(QStringLiteral(ZW_BIN_DIR "/vxconnect"), arguments);
    ASSERT_TRUE(m_first.waitForStarted(kAbsurdMs));
    m_first.write("Symbol,Last\nA,1\n");
    ASSERT_TRUE(WaitUntil([&] { return m_first.canReadLine(); }));
    const std::string line = m_first.readLine().toStdString();
    CPeer peer(static_cast<uint16_t>(std::stoi(line.substr(line.find("level1=") + 7))));
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
