// SPDX-License-Identifier: MIT
// Replies to the request for news counts: counts never fall and are never negative, and no reply makes symbols.

#include "news/NewsMap.h"

#include <cstdint>
#include <cstdlib>

using namespace vx;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view xml(reinterpret_cast<const char*>(data), size);
    CNewsMap news;
    for (const char* symbol : {"IBM", "MSFT"}) news.AddSymbol(symbol);
    news.ApplyHeadline("N,SIM,1,MSFT,today,text");
    news.ApplyCountsReply(xml);
    if (news.Find("IBM")->storyCount < 0 || news.Find("MSFT")->storyCount < 1 || news.Find("XYZ")) std::abort();
    return 0;
}
