// SPDX-License-Identifier: MIT
// CSV text in pieces: whatever a text holds, its records do not depend on how it came, and nothing of it is lost.

#include "base/CsvReader.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

std::string Records(std::string_view text, size_t piece) {
    vx::CCsvReader reader;
    std::string out;
    uint64_t line = 0;
    for (size_t at = 0; at <= text.size(); at += piece) {
        reader.Append(text.substr(at, piece));
        if (at + piece > text.size()) reader.End();
        while (reader.Next()) {
            if (reader.Line() <= line || reader.Taken() > text.size()) std::abort();
            line = reader.Line();
            out += std::to_string(line) + (reader.HasBadQuote() ? '!' : ' ') + (reader.IsUnended() ? '.' : ' ');
            for (size_t i = 0; i < reader.FieldCount(); ++i)
                out += std::to_string(reader.Field(i).size()) + ':' + std::string(reader.Field(i));
        }
    }
    if (reader.Taken() != text.size()) std::abort();
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string whole = Records(text, size + 1);
    for (const size_t piece : {size_t{1}, size_t{5}})
        if (Records(text, piece) != whole) std::abort();
    return 0;
}
