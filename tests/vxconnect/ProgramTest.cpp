// SPDX-License-Identifier: MIT
#include "base/Registry.h"
#include "vxconnect/Peer.h"

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

#include <fstream>

namespace vx::sim {
namespace {

constexpr int kAbsurdMs = 20000;

// The program itself, with a settings folder of its own.
class Program : public testing::Test {
protected:
    Program() {
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

} // namespace
} // namespace vx::sim
