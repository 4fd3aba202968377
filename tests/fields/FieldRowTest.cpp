// SPDX-License-Identifier: MIT
// Built with one more row in the table of quote fields (OneMoreField.def): the row is all that it takes.

#include "data/catalogue/Catalogue.h"
#include "data/catalogue/UpdateFields.h"
#include "data/store/L1DataStore.h"
#include "data/text/CellText.h"
#include "vxconnect/common/SendQueue.h"
#include "vxconnect/data/DataRecord.h"
#include "vxconnect/data/RowReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

namespace vx {
namespace {

// A row of a user's own data as the feed client sends it to whoever asks for the program's fields.
std::string SentLine(std::string_view csv) {
    sim::CRowReader reader({}, sim::CRowReader::EOrigin::File,
                           [](uint64_t, const std::string& what) { ADD_FAILURE() << what; });
    reader.Append(csv);
    reader.End();
    sim::SRow row;
    while (reader.Next(row) != sim::CRowReader::EResult::Row) {
    }
    sim::CDataRecord record(row.symbol);
    const sim::SUpdate update = record.Merge(row, false);
    sim::CSendQueue queue;
    std::string names = UpdateFieldList();
    names.pop_back();
    record.AppendQuote(queue, 'Q', row.symbol, update.changed, record.Contents(), sim::CFieldSelection(names));
    return std::string(queue.Waiting());
}

TEST(FieldRow, OneMoreRowIsAskedForSentMergedAndShown) {
    EXPECT_THAT(UpdateFieldList(), testing::EndsWith(",Most Recent Trade Aggressor,Liquidity\n"));
    const SFieldEntry* const column = FindField("Liq");
    ASSERT_TRUE(column);
    EXPECT_EQ(FieldIndex("Liq"), FieldIndex("Change") + 1) << "by its place among the columns";
    EXPECT_EQ(column->places, 2);
    EXPECT_EQ(Catalogue().back().name, "Latest Headline");

    CL1DataStore store;
    for (const char* value : {"1.5", "2.25"}) {
        std::string line = SentLine(std::string("Symbol,Liquidity\nA,") + value + "\n");
        line.resize(line.size() - 2); // CR LF
        store.OnLevel1Message(line);
    }
    const CL1SymbolRec* const record = store.FindSymbol("A");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->Quote().Number(UpdateSlot("Liquidity")), 2.25);
    EXPECT_EQ(record->Quote().Direction(UpdateSlot("Liquidity")), EDirection::Up);
    std::array<char, kMostCellText> text;
    EXPECT_EQ(std::string(text.data(), CellText(*record, *column, 2, text)), "2.25");
}

} // namespace
} // namespace vx
