// SPDX-License-Identifier: MIT
// Whatever is read as a watchlist file is written and read back as the same watchlist.

#include "WatchlistFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vx::test::CheckAgreement({reinterpret_cast<const char*>(data), size});
    return 0;
}
