// SPDX-License-Identifier: MIT
#include "feed/session/ProgramStart.h"

#include "support/EventLoop.h"
#include "support/TempFolder.h"

#include <sys/stat.h>

using namespace vx;
using namespace vx::test;

TEST(ProgramStart, TheFeedClientLearnsProductAndVersion) {
    const CTempFolder folder;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(folder.Path()) + ":/usr/bin:/bin");
    for (const char* name : {"vxconnect", "vxconnect.exe"}) {
        WriteFile(folder / name, "#!/bin/sh\ncd \"${0%/*}\" && printf '%s\\n' \"$@\" >part && mv part said\n");
        chmod((folder / name).c_str(), S_IRWXU);
        EXPECT_TRUE(StartFeedClient("ZANTREL_WATCHLIST", "1.8.3.0").Started());
        EXPECT_TRUE(WaitUntil([&] { return std::filesystem::exists(folder / "said"); }));
        EXPECT_EQ(ReadFile(folder / "said"), "-product\nZANTREL_WATCHLIST\n-version\n1.8.3.0\n") << name;
        std::filesystem::remove(folder / "said");
        std::filesystem::remove(folder / name);
    }
    qputenv("PATH", path);
}
