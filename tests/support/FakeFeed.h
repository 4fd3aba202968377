// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/Catalogue.h"
#include "data/store/L1DataStore.h"
#include "data/text/CellText.h"
#include "support/FakeCodeNames.h"
#include "support/FeedLines.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace vx::test {

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

    std::vector<std::string> Take() { return std::exchange(sent, {}); }

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
    void Fundamental(std::string_view fields) { Send('F', fields); }
    void Send(char kind, std::string_view fields, std::string_view symbol = "IBM") {
        store.OnLevel1Message(DataLine(kind, symbol, fields));
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
    /// Calls see(column, expected) for each of a list: "Bid=9.0000,High=,".
    template <typename See> static void ForEach(std::string_view list, See see) {
        for (const std::string_view cell : SplitTerminated(list, ','))
            see(cell.substr(0, cell.find('=')), cell.substr(cell.find('=') + 1));
    }
    void ExpectCells(std::string_view list, int places = 4, std::string_view symbol = "IBM") const {
        ForEach(list, [&](auto column, auto text) { EXPECT_EQ(Cell(symbol, column, places), text) << column; });
    }

    CFakeCodeNames names;
    CFakePort port;
    CL1DataStore store;
    CFakeWindow window{store};
};

} // namespace vx::test
