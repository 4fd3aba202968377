// SPDX-License-Identifier: MIT
#include "support/Allocations.h"
#include "support/FakeFeed.h"

using namespace vx;
using namespace vx::test;

namespace {

/// Runs the same lines twice; the second time every text and queue has found its size.
size_t AllocationsOfSecondRun(const SMergeKernel& kernel) {
    CFeedLines feed(100, 7);
    std::vector<std::string> lines;
    for (int i = 0; i < 20000; ++i) lines.push_back(feed.Next());
    CFakeCodeNames names;
    CL1DataStore store(kernel);
    CFakeWindow window(store);
    store.SetCodeNames(&names);
    for (const std::string& symbol : feed.Symbols()) {
        store.Watch(symbol, window.queue);
        store.SetHistoryLimit(symbol, 500);
    }
    size_t painted = 0;
    CellBuffer buffer;
    const auto run = [&] {
        for (size_t i = 0; i < lines.size(); ++i) {
            store.OnLevel1Message(lines[i]);
            if (i % 100 == 0)
                window.queue.Drain([&](const SRecordIds& notice) {
                    const CSymbolRec* record = store.FindById(notice.id1, notice.id2);
                    for (const SFieldEntry& entry : Catalogue()) painted += CellText(*record, entry, 4, buffer);
                });
        }
    };
    run();
    const size_t before = Allocations();
    run();
    EXPECT_GT(painted, 0u);
    return Allocations() - before;
}

} // namespace

TEST(Allocation, MergingAndFormattingAllocateNothing) {
    const size_t before = Allocations();
    ::operator delete(::operator new(1));
    ASSERT_EQ(Allocations(), before + 1) << "the count works";
    for (const SMergeKernel* kernel : {&PortableKernel(), Avx2Kernel(), Avx512Kernel()}) {
        if (!kernel) continue;
        EXPECT_EQ(AllocationsOfSecondRun(*kernel), 0u) << kernel->name;
    }
}
