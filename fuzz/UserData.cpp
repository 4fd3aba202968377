// SPDX-License-Identifier: MIT
// A user's own data as from a file: whatever it holds, an accepted row must stand on the wire as one
// line of fields from which the same values are read back, and an error must be one printable line.

#include "ServedFuzz.h"
#include "base/Text.h"
#include "base/fields/FundamentalFields.h"
#include "vxconnect/data/RowReader.h"

namespace {

using namespace vx;
using namespace vx::sim;

void CheckLine(std::string_view line, size_t fields, const CDataRecord& record, size_t firstSlot) {
    if (line.find_first_of("\r\n") != line.size() - 2 || line.find('\0') != std::string_view::npos)
        Fail("more than one line", line);
    const auto pieces = SplitTerminated(line.substr(2), ',');
    if (pieces.size() != fields) Fail("number of fields", line);
    for (size_t i = 1; i < pieces.size(); ++i)
        if (pieces[i] != record.Get(firstSlot + i)) Fail("a field changed", pieces[i]);
}

void CheckRow(const SRow& row) {
    CDataRecord record(row.symbol);
    const SUpdate update = record.Merge(row, false);
    CheckLine(CheckedSummary(record, row), kUpdateFieldCount, record, 0);
    CheckLine(record.FundamentalLine(record.Symbol()), kFundamentalSlotCount, record, kUpdateFieldCount);
    if (update.changed.Empty() && !update.newFundamentals && !row.values.empty()) Fail("nothing new", row.symbol);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CFieldNames names;
    names.Add("Stock=Symbol,Closing=Last,Skip=");
    CRowReader reader(names, CRowReader::EOrigin::File, [](uint64_t line, const std::string& what) {
        if (line == 0 || what.empty()) Fail("a line without number or text", what);
        for (const char c : what)
            if (static_cast<unsigned char>(c) < 0x20) Fail("error of several lines", what);
    });
    reader.Append({reinterpret_cast<const char*>(data), size});
    reader.End();
    SRow row;
    for (auto result = reader.Next(row); result != CRowReader::EResult::NeedsMore; result = reader.Next(row))
        if (result == CRowReader::EResult::Row) CheckRow(row);
    return 0;
}
