// SPDX-License-Identifier: MIT
#include "feed/session/ProgramStart.h"

#include "support/EventLoop.h"
#include "support/TempFolder.h"

#include <sys/stat.h>

using namespace vx;
using namespace vx::test;

namespace {

struct ProgramStart : testing::Test {
    CTempFolder folder;
    QByteArray path = qgetenv("PATH");

    ProgramStart() { qputenv("PATH", QByteArray::fromStdString(folder.Path()) + ":/usr/bin:/bin"); }
    ~ProgramStart() override { qputenv("PATH", path); }

    void Install(const char* name, const std::string& script) const {
        WriteFile(folder / name, script);
        chmod((folder / name).c_str(), S_IRWXU);
    }
};

} // namespace

TEST_F(ProgramStart, TheFeedClientLearnsProductAndVersion) {
    for (const char* name : {"vxconnect", "vxconnect.exe"}) {
        Install(name, "#!/bin/sh\ncd \"${0%/*}\" && printf '%s\\n' \"$@\" >part && mv part said\n");
        EXPECT_TRUE(StartFeedClient("ZANTREL_WATCHLIST", "1.8.3.0").Started());
        EXPECT_TRUE(WaitUntil([&] { return std::filesystem::exists(folder / "said"); }));
        EXPECT_EQ(ReadFile(folder / "said"), "-product\nZANTREL_WATCHLIST\n-version\n1.8.3.0\n") << name;
        std::filesystem::remove(folder / "said");
        std::filesystem::remove(folder / name);
    }
}

TEST_F(ProgramStart, AFailureHasTheNumbersOfTheErrorText) {
    const SStartResult missing = StartProgram("vxnothing.exe", {});
    EXPECT_EQ(FeedClientStartError(missing), "Unable to launch vxconnect.exe.  Error Code: 2 hInst: 2");

    const std::string beside = QCoreApplication::applicationDirPath().toStdString() + "/vxforbidden";
    WriteFile(beside, "");
    EXPECT_EQ(StartProgram("vxforbidden.exe", {}).error, 5);
    std::filesystem::remove(beside);
    Install("vxbroken", "#!/nowhere/interpreter\n");
    EXPECT_EQ(StartProgram("vxbroken", {}).instance, 5);
}
