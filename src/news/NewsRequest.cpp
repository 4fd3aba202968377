#include "news/NewsRequest.h"

#include "base/Clock.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

constexpr size_t kFrameBytes = 64; ///< More than what stands around the list.
constexpr size_t kMostListBytes = kMostNewsRequestBytes - kFrameBytes;

bool IsCarried(std::string_view symbol) {
    return !symbol.empty() && symbol.size() <= kMostListBytes && std::ranges::none_of(symbol, [](char c) {
        return c == ',' || c == ':' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    });
}

} // namespace

std::string NewsCountsRequest(std::string_view symbolList) {
    const SLocalTime today = CClock::Instance().Now();
    return fmt::format("NSC,{},x,,{:04}{:02}{:02},LNewsCounts\r\n", symbolList, today.year, today.month, today.day);
}

std::vector<std::string> NewsCountsRequests(std::span<const std::string> symbols) {
    std::vector<std::string> out;
    std::string list;
    size_t count = 0;
    const auto finish = [&] {
        if (count > 0) out.push_back(NewsCountsRequest(list));
        list.clear();
        count = 0;
    };
    for (const std::string& symbol : symbols) {
        if (!IsCarried(symbol)) continue;
        if (count == kMostNewsSymbols || list.size() + 1 + symbol.size() > kMostListBytes) finish();
        if (count++ > 0) list += ':';
        list += symbol;
    }
    finish();
    return out;
}

void RequestNewsCounts(std::span<const std::string> symbols, CNewsCountsPort& port) {
    for (const std::string& request : NewsCountsRequests(symbols)) port.SendNewsRequest(request);
}

} // namespace vx
