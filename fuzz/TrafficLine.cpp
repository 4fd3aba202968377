// SPDX-License-Identifier: MIT
// A recording, line by line: what is read from a line must be read again from what is written of it, and a data line
// must merge into a record whose lines stay lines.

#include "ServedFuzz.h"
#include "vxconnect/data/Recording.h"
#include "vxconnect/data/ReplaySource.h"

namespace {

using namespace vx::sim;

void CheckRecord(const std::string& line) {
    SRow row;
    if (line[0] == 'T' || line[0] == 'N' || !ReadDataLine(line, row)) return;
    CDataRecord record(row.symbol);
    record.Merge(row, true);
    CheckedSummary(record, row);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ForEachLine(data, size, [](std::string_view line) {
        const auto read = ReadTrafficLine(line);
        if (!read) return;
        const std::string written = TrafficText("2024-01-31 09:30:00.123", read->text);
        const auto again = ReadTrafficLine(std::string_view(written).substr(0, written.size() - 1));
        if (!again || again->text != read->text) Fail("read, written, read", written);
        CheckRecord(read->text);
    });
    return 0;
}
