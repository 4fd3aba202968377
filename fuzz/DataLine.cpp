// SPDX-License-Identifier: MIT
// Data lines of all four kinds, one per line of the input, into the store on each of its kernels and into the plain
// model: the records must agree, and every cell must have a text that fits.

#include "data/catalogue/Catalogue.h"
#include "data/text/CellText.h"
#include "support/Agreement.h"
#include "support/FakeCodeNames.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

using namespace vx;
using namespace vx::test;

struct SNoWindow : CChangeWaker {
    void ChangesWait() override {}
    void PostPaint() override {}
    void DrainNow() override {}
};

constexpr const char* kSymbol = "A";

void Fail(const char* kernel, const std::string& difference) {
    std::fprintf(stderr, "%s kernel: %s\n", kernel, difference.c_str());
    std::abort();
}

void FormatAll(const CSymbolRec& record) {
    CellBuffer buffer;
    for (const SFieldEntry& entry : Catalogue()) {
        if (CellText(record, entry, DecimalsToShow(record, entry, 4), buffer) > buffer.size()) Fail("any", "cell text");
        static_cast<void>(CellNumber(record, entry));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static CFakeCodeNames names;
    names.EnsureMarketsLoaded();
    const std::string input(reinterpret_cast<const char*>(data), size);
    for (const SMergeKernel* kernel : {&PortableKernel(), Avx2Kernel(), Avx512Kernel()}) {
        if (!kernel) continue;
        SNoWindow window;
        CChangeQueue queue(window);
        CL1DataStore store(*kernel);
        CPlainStore plain(&names);
        store.SetCodeNames(&names);
        store.Watch("A--X", queue);
        store.SetHistoryLimit(kSymbol, 2);
        plain.AddRegion(kSymbol, "X");
        plain.Record(kSymbol).tradeLimit = 2;
        for (size_t begin = 0; begin < input.size();) {
            const size_t end = std::min(input.find('\n', begin), input.size());
            // A copy of its own, so that a read beyond the line is a read beyond a block of memory.
            const std::unique_ptr<char[]> line(new char[end - begin]);
            std::copy(input.begin() + static_cast<std::ptrdiff_t>(begin),
                      input.begin() + static_cast<std::ptrdiff_t>(end), line.get());
            store.OnLevel1Message({line.get(), end - begin});
            plain.OnLine(input.substr(begin, end - begin));
            begin = end + 1;
        }
        if (store.Size() >= CL1DataStore::kMostStrayRecords) continue; // The plain model forgets nothing.
        if (const std::string difference = Difference(store, plain); !difference.empty())
            Fail(kernel->name, difference);
        FormatAll(*store.Find(kSymbol));
        FormatAll(*store.Find("A--X"));
    }
    return 0;
}
