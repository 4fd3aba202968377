// SPDX-License-Identifier: MIT
#pragma once

#include "LineGenerator.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <utility>
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
        lines.symbols = CLineGenerator(symbols, kSeed).Symbols();
        lines.file = GenerateFile(kLines, symbols, kSeed);
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

/// The same, and announces lines to a third function as the socket does, as many ahead.
template <class TLine, class TBeat, class TAhead>
void RunLinesAhead(const std::string& file, TLine&& onLine, TBeat&& onBeat, TAhead&& onAhead) {
    constexpr size_t kLater = 8;
    constexpr size_t kSoon = 4;
    std::array<std::string_view, kLater> waiting; // A ring: the line that comes next is the oldest.
    size_t next = 0;
    const auto put = [&](std::string_view line) {
        const std::string_view present = std::exchange(waiting[next % kLater], line);
        ++next;
        if (!line.empty()) onAhead(line, waiting[(next + kSoon - 1) % kLater]);
        if (!present.empty()) onLine(present);
    };
    RunLines(file, put, onBeat);
    for (size_t i = 0; i < kLater; ++i) put({});
}

} // namespace vx::bench
