// SPDX-License-Identifier: MIT
// Cell-format text: what was read and written once is read and written the same ever after, and columns that move
// there and back change nothing.

#include "watchlist/document/CellFormatStore.h"

#include <cstdlib>

using namespace vx;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CCellFormatStore store;
    store.Read({reinterpret_cast<const char*>(data), size});
    const std::string written = store.Write();
    CCellFormatStore again;
    if (again.Read(written) != 0 || again.Write() != written) std::abort();
    again.MoveColumn(3, 1);
    again.MoveColumn(1, 3);
    if (again.Write() != written) std::abort();
    return 0;
}
