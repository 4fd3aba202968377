// SPDX-License-Identifier: MIT
#pragma once

#include "support/LineGenerator.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vx::bench {

constexpr size_t kLines = 200'000;     ///< About 33 MB: more than the caches hold.
constexpr size_t kLinesPerBeat = 1250; ///< Between two drains: 5,000 lines a second and a beat of 250 ms.

/// Generated update lines and the symbols that they are of.
struct SLines {
    std::vector<std::string> symbols;
    std::string file;
};

/// kLines lines over so many symbols, made on first use.
inline const SLines& Lines(size_t symbols) {
    constexpr uint64_t kSeed = 20240131;
    static std::map<size_t, SLines> made;
    SLines& lines = made[symbols];
    if (lines.file.empty()) {
        lines.symbols = test::CLineGenerator(symbols, kSeed).Symbols();
        lines.file = test::GenerateFile(kLines, symbols, kSeed);
    }
    return lines;
}

/// Gives each line to one function and calls the other after each beat.
template <class TLine, class TBeat> void RunLines(const std::string& file, TLine&& onLine, TBeat&& onBeat) {
    size_t inBeat = 0;
    for (const char *at = file.data(), *end = at + file.size(); at != end;) {
        const char* lf = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)));
        onLine(std::string_view(at, static_cast<size_t>(lf - at)));
        at = lf + 1;
        if (++inBeat != kLinesPerBeat) continue;
        inBeat = 0;
        onBeat();
    }
}

} // namespace vx::bench
