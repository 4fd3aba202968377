// SPDX-License-Identifier: MIT
// What it costs to look for symbols in a file of 60 MB and to add as many as a watchlist has rows for.

#include "watchlist/ScratchDoc.h"
#include "watchlist/edit/ImportText.h"

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <iterator>

namespace {

using namespace vx;

constexpr size_t kFileBytes = 60u << 20;

enum EShape {
    Distinct,  ///< A list of symbols that are all different; most of them have no room.
    Repeated,  ///< A list of ten thousand symbols again and again.
    OneLine,   ///< The same without a line end.
    Table,     ///< A table with the symbol in its second column.
    NoSymbols, ///< Nothing that could be a symbol.
};
constexpr const char* kShapes[] = {"distinct symbols", "repeated symbols", "one line", "table", "no symbols"};

std::string FileOf(int shape) {
    constexpr int kRepeated = 10'000;
    std::string text = shape == Table ? "Name,Symbol,Last\n" : "";
    for (int i = 0; text.size() < kFileBytes; ++i) switch (shape) {
        case Distinct:
            fmt::format_to(std::back_inserter(text), "S{}\r\n", i);
            break;
        case Repeated:
            fmt::format_to(std::back_inserter(text), "S{}\n", i % kRepeated);
            break;
        case OneLine:
            fmt::format_to(std::back_inserter(text), "S{},", i);
            break;
        case Table:
            fmt::format_to(std::back_inserter(text), "\"Company, {}\",S{},12.5\n", i, i);
            break;
        default:
            text += "12.50 ---\n";
        }
    return text;
}

void BM_Import(benchmark::State& state) {
    const int shape = static_cast<int>(state.range(0));
    const std::string file = FileOf(shape);
    size_t added = 0;
    for ([[maybe_unused]] auto _ : state) {
        test::CScratchDoc list;
        list.BeginConnected("Symbol;Last;");
        const auto goOn = [](size_t, size_t) { return true; };
        const SImportPreview preview = ReadImport(list.doc, DecodeImportBytes(file), goOn);
        ApplyImport(list.doc, preview, 1, goOn);
        added = preview.toAdd.size();
    }
    state.SetLabel(fmt::format("{}, {} added", kShapes[shape], added));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(file.size()));
}
BENCHMARK(BM_Import)->DenseRange(Distinct, NoSymbols)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

BENCHMARK_MAIN();
