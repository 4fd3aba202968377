// SPDX-License-Identifier: MIT
// The watchlist's command line, one argument a line: its symbols, named again, are the same, and the file is one of the
// arguments.

#include "Arguments.h"
#include "app/frame/NorvCommandLineInfo.h"

#include <algorithm>
#include <cstdlib>

using namespace vx;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::vector<std::string> arguments = test::Arguments(data, size);
    const CNorvCommandLineInfo read(arguments);
    const std::vector<std::string> symbols = read.Symbols();
    if (symbols.size() > CNorvCommandLineInfo::kMaxSymbols) std::abort();
    std::string joined;
    for (const std::string& symbol : symbols) {
        if (symbol.empty() || symbol.find(',') != std::string::npos) std::abort();
        joined += symbol + ',';
    }
    if (CNorvCommandLineInfo({"-symbol=" + joined}).Symbols() != symbols) std::abort(); // "--" is no value by itself.
    if (read.error.empty() && !read.file.empty() && std::ranges::find(arguments, read.file) == arguments.end())
        std::abort();
    return 0;
}
