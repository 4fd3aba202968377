// SPDX-License-Identifier: MIT
#include "feed/session/FeedSession.h"
#include "feed/socket/ClientAppSocket.h"
#include "support/Allocations.h"
#include "support/ReadsSocket.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace vx;
using namespace vx::test;

namespace {

class CCountingSession final : public CFeedSession {
public:
    using CFeedSession::CFeedSession;
    void OnUpdateMessage(std::string_view) override { ++lines; }
    void OnFundamentalMessage(std::string_view) override { ++lines; }
    void OnTimeMessage(std::string_view) override { ++lines; }

    size_t lines = 0;
};

} // namespace

TEST(Allocation, NoLineCostsOneOnItsWayToTheHandler) {
    const CTempFolder folder;
    CRegistry registry(folder.Path());
    CCountingSession session(registry);
    CReadsSocket<CZantrelClientAppSocket> socket(0u);
    socket.SetOwner(&session);
    socket.asked.reserve(200);
    std::string read;
    while (read.size() < 20000) read += "Q,IBM,,,1.25,,,\r\nF,A SYMBOL OF SOME LENGTH,x,\r\nT,20240131 09:30:05\r\n";
    socket.Read(read);

    const size_t before = Allocations();
    for (int i = 0; i < 100; ++i) socket.Read(read);
    EXPECT_EQ(Allocations(), before);
    EXPECT_GT(session.lines, 80000u);
}
