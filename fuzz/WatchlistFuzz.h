#pragma once

#include "watchlist/ScratchDoc.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace vx::test {

/// Reads a text, writes what came of it, and reads that: everything must be there again. Alert thresholds lose what is
/// behind the sixth place when they are written, and two alerts that differ only there become one: once written,
/// though, nothing may change any more.
inline void CheckAgreement(std::string_view text) {
    const auto withoutAlerts = [](std::string written) {
        const size_t begin = written.find("\r\nAlerts=");
        return written.erase(begin, written.find("\r\n", begin + 2) - begin);
    };
    const auto check = [](const std::string& first, const std::string& second) {
        if (first == second) return;
        std::fprintf(stderr, "%s\n---\n%s\n", first.c_str(), second.c_str());
        std::abort();
    };
    CScratchDoc first, second, third;
    first.Open(text);
    const std::string written = first.Written();
    const SWatchlistSupplement kept = FindUncarried(first.doc);
    second.Open(written, kept);
    const std::string again = second.Written();
    check(withoutAlerts(written), withoutAlerts(again));
    const SWatchlistSupplement keptAgain = FindUncarried(second.doc);
    if (!kept.IsEmpty() || !keptAgain.IsEmpty()) {
        const auto parsed = ParseSupplement(FormatSupplement(kept));
        if (!parsed) std::abort();
        check(FormatSupplement(kept), FormatSupplement(*parsed));
        check(FormatSupplement(kept), FormatSupplement(keptAgain));
    }
    third.Open(again, keptAgain);
    check(again, third.Written());
}

} // namespace vx::test
