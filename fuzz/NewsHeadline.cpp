// SPDX-License-Identifier: MIT
// Headline lines: whatever the line, only symbols of the map are named as affected, and each one's count grew by the
// times it is named.

#include "base/Text.h"
#include "news/NewsMap.h"

#include <cstdint>
#include <cstdlib>
#include <map>

using namespace vx;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    CNewsMap news;
    for (const char* symbol : {"IBM", "MSFT", "A"}) news.AddSymbol(symbol);
    std::map<std::string_view, int> named;
    const std::string affected = news.ApplyHeadline(line);
    for (const std::string_view symbol : SplitTerminated(affected, ',')) ++named[symbol];
    for (const auto& [symbol, count] : named) {
        const NEWS* found = news.Find(symbol);
        if (!found || found->storyCount != count || found->fresh != 1 || !line.ends_with(found->headline)) std::abort();
    }
    return 0;
}
