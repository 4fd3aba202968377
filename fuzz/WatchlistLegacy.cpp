// SPDX-License-Identifier: MIT
// Whatever is read as a watchlist file of the older layout is written in the current one and read back as the same.

#include "WatchlistFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string text = "[\r\n";
    text.append(reinterpret_cast<const char*>(data), size);
    vx::test::CheckAgreement(text);
    return 0;
}
