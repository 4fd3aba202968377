// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"
#include "vxconnect/common/SendQueue.h"
#include "vxconnect/data/DataRecord.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace vx::sim {

inline void Fail(const char* what, std::string_view text) {
    std::fprintf(stderr, "%s: %.*s\n", what, static_cast<int>(text.size()), text.data());
    std::abort();
}

/// Calls the function with each line of the input, cut as those of a file are.
template <class TFunction> void ForEachLine(const uint8_t* data, size_t size, TFunction&& function) {
    CLineCutter lines;
    lines.Append({reinterpret_cast<const char*>(data), size});
    lines.End();
    while (const auto line = lines.Next()) function(line->text);
}

/// Checks that every value of a row stands in the record which has taken it over; returns the record's summary line,
/// checked to be one line.
inline std::string CheckedSummary(const CDataRecord& record, const SRow& row) {
    for (const SRowValue& value : row.values)
        if (value.text.empty() || record.Get(value.slot) != value.text) Fail("a value is lost", value.text);
    CSendQueue queue;
    record.AppendQuote(queue, 'P', record.Symbol(), record.Present(), record.Contents(), {});
    std::string line(queue.Waiting());
    if (line.find_first_of("\r\n") != line.size() - 2) Fail("more than one line", line);
    return line;
}

} // namespace vx::sim
