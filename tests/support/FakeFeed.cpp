// SPDX-License-Identifier: MIT
#include "support/FakeFeed.h"

#include "base/Text.h"
#include "data/catalogue/Catalogue.h"

#include <stdexcept>

namespace vx::test {

namespace {

template <typename SlotOf>
std::string MakeLine(char kind, std::string_view symbol, std::string_view fields, SlotOf slotOf) {
    std::vector<std::string_view> slots{symbol};
    for (const std::string_view field : SplitCountingTail(fields, ',')) {
        const size_t equals = field.find('=');
        const size_t slot = slotOf(field.substr(0, equals));
        if (slot >= slots.size()) slots.resize(slot + 1);
        slots[slot] = field.substr(equals + 1);
    }
    std::string line{kind, ','};
    for (const std::string_view slot : slots) line.append(slot).append(",");
    return line;
}

size_t UpdateSlotOf(std::string_view name) {
    for (size_t i = 0; i < kUpdateFieldCount; ++i)
        if (kUpdateFields[i].name == name) return i;
    throw std::invalid_argument(std::string(name));
}

size_t FundamentalSlotOf(std::string_view name) {
    for (size_t i = 0; i < kFundamentalColumnCount; ++i)
        if (kFundamentalFields[i].name == name) return FundamentalSlotOfRow(i);
    throw std::invalid_argument(std::string(name));
}

} // namespace

void CFakeFeed::Send(char kind, std::string_view fields, std::string_view symbol) {
    store.OnLevel1Message(MakeLine(kind, symbol, fields, UpdateSlotOf));
}

void CFakeFeed::Fundamental(std::string_view fields) {
    store.OnLevel1Message(MakeLine('F', "IBM", fields, FundamentalSlotOf));
}

std::string CFakeFeed::Cell(std::string_view symbol, std::string_view column, int places) const {
    CellBuffer buffer;
    const size_t size = CellText(*store.Find(symbol), *FindField(column), places, buffer);
    return {buffer.data(), size};
}

} // namespace vx::test
