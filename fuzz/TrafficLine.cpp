// A recording, line by line: what is read from a line must be read again from what is written of it, and a data line
// must merge into a record whose lines stay lines.

#include "vxconnect/TrafficLine.h"
#include "vxconnect/DataRecord.h"
#include "vxconnect/LineBuffer.h"
#include "vxconnect/ReplaySource.h"
#include "vxconnect/SendQueue.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace vx::sim;

void Fail(const char* what, std::string_view text) {
    std::fprintf(stderr, "%s: %.*s\n", what, static_cast<int>(text.size()), text.data());
    std::abort();
}

void CheckRecord(const std::string& line) {
    SRow row;
    if (line[0] == 'T' || line[0] == 'N' || !ReadDataLine(line, row)) return;
    CDataRecord record(row.symbol);
    record.Merge(row, true);
    for (const SRowValue& value : row.values)
        if (record.Get(value.slot) != value.text) Fail("a value is lost", value.text);
    CSendQueue queue;
    record.AppendQuote(queue, 'P', record.Present(), record.Contents(), {});
    if (queue.Waiting().find_first_of("\r\n") != queue.Size() - 2) Fail("more than one line", queue.Waiting());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CLineBuffer lines;
    lines.Append({reinterpret_cast<const char*>(data), size});
    lines.End();
    while (const auto line = lines.Next()) {
        const auto read = ReadTrafficLine(line->text);
        if (!read) continue;
        const std::string written = TrafficText("2024-01-31 09:30:00.123", read->text);
        const auto again = ReadTrafficLine(std::string_view(written).substr(0, written.size() - 1));
        if (!again || again->text != read->text) Fail("read, written, read", written);
        CheckRecord(read->text);
    }
    return 0;
}
