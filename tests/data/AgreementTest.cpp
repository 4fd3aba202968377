// SPDX-License-Identifier: MIT
#include "support/Agreement.h"
#include "support/FakeFeed.h"
#include "support/HostileLines.h"

using namespace vx;
using namespace vx::test;

namespace {

/// The store on one kernel beside the plain model, both with every symbol watched, a region and a trade history.
class CSideBySide {
public:
    CSideBySide(const SMergeKernel& kernel, const std::vector<std::string>& symbols)
        : m_store(kernel), m_plain(&m_names) {
        m_names.EnsureMarketsLoaded();
        m_store.SetCodeNames(&m_names);
        for (const std::string& symbol : symbols) {
            m_store.Watch(std::string(symbol).append("--X"), m_window.queue);
            m_store.SetHistoryLimit(symbol, 5);
            m_plain.AddRegion(symbol, "X");
            m_plain.Record(symbol).tradeLimit = 5;
        }
    }

    void Feed(const std::string& line) {
        m_store.OnLevel1Message(line);
        m_plain.OnLine(line);
    }
    std::string Difference() const { return test::Difference(m_store, m_plain); }

private:
    CFakeCodeNames m_names;
    CL1DataStore m_store;
    CFakeWindow m_window{m_store};
    CPlainStore m_plain;
};

class Agreement : public testing::TestWithParam<const SMergeKernel*> {
protected:
    void SetUp() override {
        if (!GetParam()) GTEST_SKIP() << "this machine cannot run the kernel";
    }
};

} // namespace

TEST_P(Agreement, OnRealisticLinesTheStoreIsThePlainModel) {
    CFeedLines feed(200, 1);
    CSideBySide both(*GetParam(), feed.Symbols());
    for (int i = 0; i < 15000; ++i) both.Feed(feed.Next());
    EXPECT_EQ(both.Difference(), "");
}

TEST_P(Agreement, OnHostileLinesTheStoreIsThePlainModel) {
    CHostileLines lines(2);
    CSideBySide both(*GetParam(), lines.Symbols());
    for (int i = 0; i < 40000; ++i) {
        const std::string line = lines.Next();
        both.Feed(line);
        // All records now and then, so that a difference is found near the line that made it.
        if (i % 200 == 0) {
            ASSERT_EQ(both.Difference(), "") << "near line " << i << ": " << testing::PrintToString(line);
        }
    }
    EXPECT_EQ(both.Difference(), "");
}

INSTANTIATE_TEST_SUITE_P(Portable, Agreement, testing::Values(&PortableKernel()));
INSTANTIATE_TEST_SUITE_P(Avx2, Agreement, testing::Values(Avx2Kernel()));
INSTANTIATE_TEST_SUITE_P(Avx512, Agreement, testing::Values(Avx512Kernel()));
