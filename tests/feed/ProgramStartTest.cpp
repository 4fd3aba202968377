#include "feed/ProgramStart.h"

#include "support/EventLoop.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace vx;
using namespace vx::test;

namespace {

struct ProgramStartTest : testing::Test {
    QTemporaryDir folder;
    QByteArray path = qgetenv("PATH");

    ProgramStartTest() { qputenv("PATH", folder.path().toLocal8Bit() + ":/usr/bin:/bin"); }
    ~ProgramStartTest() override { qputenv("PATH", path); }

    QString In(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    // A program that writes its arguments, one per line, into the file "said" beside it.
    void Install(const char* name, bool executable = true) const {
        QFile file(In(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nprintf '%s\\n' \"$@\" >\"$(dirname \"$0\")/part\"\n"
                   "mv \"$(dirname \"$0\")/part\" \"$(dirname \"$0\")/said\"\n");
        file.close();
        if (executable) file.setPermissions(file.permissions() | QFile::ExeOwner);
    }

    QByteArray WaitForSaid() const {
        QFile said(In("said"));
        WaitUntil([&] { return said.exists(); });
        return said.open(QIODevice::ReadOnly) ? said.readAll() : QByteArray();
    }
};

} // namespace

TEST_F(ProgramStartTest, TheFeedClientLearnsProductAndVersion) {
    for (const char* name : {"vxconnect", "vxconnect.exe"}) {
        Install(name);
        EXPECT_TRUE(StartFeedClient("ZANTREL_WATCHLIST", "1.8.3.0").Started());
        EXPECT_EQ(WaitForSaid(), "-product\nZANTREL_WATCHLIST\n-version\n1.8.3.0\n") << name;
        QFile::remove(In("said"));
        QFile::remove(In(name));
    }
}

TEST_F(ProgramStartTest, ArgumentsStayWhole) {
    Install("vxchart");
    EXPECT_TRUE(StartProgram("vxchart.exe", {QStringLiteral("-symbol"), QStringLiteral("A B;$(x)\"'")}).Started());
    EXPECT_EQ(WaitForSaid(), "-symbol\nA B;$(x)\"'\n");
}

TEST_F(ProgramStartTest, AFailureHasTheNumbersOfTheErrorText) {
    const SStartResult missing = StartProgram("vxnothing.exe", {});
    EXPECT_EQ(missing.error, 2);
    EXPECT_EQ(missing.instance, 2);
    EXPECT_EQ(FeedClientStartError(missing), "Unable to launch vxconnect.exe.  Error Code: 2 hInst: 2");

    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/vxforbidden");
    QFile file(beside);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_EQ(StartProgram("vxforbidden.exe", {}).error, 5);
    file.remove();

    Install("vxbroken");
    QFile broken(In("vxbroken"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("#!/nowhere/interpreter\n");
    broken.close();
    EXPECT_EQ(StartProgram("vxbroken", {}).instance, 5);
}
