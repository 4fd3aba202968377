// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"
#include "data/catalogue/Catalogue.h"
#include "data/store/L1DataStore.h"
#include "data/text/CellText.h"
#include "support/FakeCodeNames.h"

#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace vx::test {

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

inline size_t UpdateSlotOf(std::string_view name) {
    for (size_t i = 0; i < kUpdateFieldCount; ++i)
        if (kUpdateFields[i].name == name) return i;
    throw std::invalid_argument(std::string(name));
}

inline size_t FundamentalSlotOf(std::string_view name) {
    for (size_t i = 0; i < kFundamentalColumnCount; ++i)
        if (kFundamentalFields[i].name == name) return FundamentalSlotOfRow(i);
    throw std::invalid_argument(std::string(name));
}

/// A connection that records what is sent on it.
class CFakePort : public CL1CommandPort {
public:
    int Send(std::string_view command) override {
        if (failures > 0) {
            --failures;
            return failWith;
        }
        sent.emplace_back(command);
        return static_cast<int>(command.size());
    }
    bool IsOpen() const override { return open; }

    std::vector<std::string> TakeSent() { return std::exchange(sent, {}); }

    std::vector<std::string> sent;
    int failures = 0; ///< So many sends fail before one succeeds.
    int failWith = -1;
    bool open = true;
};

/// A listening window: keeps the symbols of the notices that it drained.
class CFakeWindow : public CChangeWaker {
public:
    explicit CFakeWindow(const CL1DataStore& store) : m_store(store) {}

    void ChangesWait() override {}
    void PostPaint() override {}
    void DrainNow() override {
        queue.DrainUrgent([&](const SRecordIds& notice) {
            const CSymbolRec* record = m_store.FindById(notice.id1, notice.id2);
            if (onChange && record) onChange(*record);
        });
    }
    void Drain() {
        queue.Drain([&](const SRecordIds& notice) {
            const CSymbolRec* record = m_store.FindById(notice.id1, notice.id2);
            changed.push_back(record ? record->Symbol() : "(gone)");
        });
    }
    std::vector<std::string> TakeChanged() {
        Drain();
        return std::exchange(changed, {});
    }

    CChangeQueue queue{*this};
    std::vector<std::string> changed;
    std::function<void(const CSymbolRec&)> onChange;

private:
    const CL1DataStore& m_store;
};

/// A store with names, a connection and one window; lines are written as "name=text" lists.
class CFakeFeed {
public:
    CFakeFeed() {
        store.SetCodeNames(&names);
        store.SetCommandPort(&port);
    }

    /// An update of IBM with the given fields: Update("Last=1.5,Last Size=100").
    void Update(std::string_view fields) { Send('Q', fields); }
    void Summary(std::string_view fields) { Send('P', fields); }
    /// A fundamental line of IBM; fields are named by their columns.
    void Fundamental(std::string_view fields) {
        store.OnLevel1Message(MakeLine('F', "IBM", fields, FundamentalSlotOf));
    }
    void Send(char kind, std::string_view fields, std::string_view symbol = "IBM") {
        store.OnLevel1Message(MakeLine(kind, symbol, fields, UpdateSlotOf));
    }

    const CL1SymbolRec& Ibm() const { return *store.FindSymbol("IBM"); }
    /// The text of IBM's cell in a column.
    std::string Cell(std::string_view column, int places = 4) const { return Cell("IBM", column, places); }
    std::string Cell(std::string_view symbol, std::string_view column, int places) const {
        CellBuffer buffer;
        const size_t size = CellText(*store.Find(symbol), *FindField(column), places, buffer);
        return {buffer.data(), size};
    }
    EDirection Direction(std::string_view column) const { return CellDirection(Ibm(), *FindField(column)); }

    CFakeCodeNames names;
    CFakePort port;
    CL1DataStore store;
    CFakeWindow window{store};
};

} // namespace vx::test
