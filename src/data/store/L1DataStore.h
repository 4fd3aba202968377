// SPDX-License-Identifier: MIT
#pragma once

#include "data/merge/MergeKernel.h"
#include "data/record/ChangeQueue.h"
#include "data/record/L1SymbolRec.h"
#include "data/store/SymbolTable.h"

#include <array>
#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx {

/// The connection on which the level-1 store sends its watch commands.
class CL1CommandPort {
public:
    virtual ~CL1CommandPort() = default;

    /// Sends one command as it stands, line end included, and returns without waiting.
    ///
    /// Returns the bytes that went out, fewer than the command's length when the connection took only a part of it, or
    ///         -1 when nothing could be sent
    virtual int Send(std::string_view command) = 0;

    /// False while the connection is known to be closed or not yet there: the store then does not try to send its
    /// watches again.
    virtual bool IsOpen() const = 0;
};

/// Keeps the latest level-1 values of every watched symbol: asks the feed for symbols, merges data lines into their
/// records and tells the listening windows what changed. There is one for the whole program.
///
/// Shape   one data line in -> one record changed, at most one change per listening window between two of its drains
/// Errors  none: a line without a symbol is dropped, a field that cannot be read counts as 0
/// Owns    the records; not the port, the names or the listeners, which outlive it or are taken out before they go
/// Source  docs/feed-protocol.md, "Data lines"
class CL1DataStore {
public:
    /// Records of symbols that nobody watches, made by lines that came all the same; the oldest goes first.
    static constexpr size_t kMostStrayRecords = 10000;
    static constexpr size_t kMostStrayBytes = 64 * 1024 * 1024; ///< Of these records together.
    /// After a failed load of the names, lines go without for this long before the next try.
    static constexpr int64_t kLoadRetryMs = 5000;

    explicit CL1DataStore(const SMergeKernel& kernel = BestKernel());
    CL1DataStore(const CL1DataStore&) = delete;
    CL1DataStore& operator=(const CL1DataStore&) = delete;

    /// Where commands go; null until the level-1 connection is there.
    void SetCommandPort(CL1CommandPort* port) { m_port = port; }
    /// Who names markets and security types; null leaves the names empty.
    void SetCodeNames(CCodeNames* names);

    /// Has a symbol ("IBM") or a regional quote ("IBM--X") watched for a listener, whose queue gets a change at once.
    /// The feed is asked for a symbol only when it is not sending it already, for a region's quotes every time. When a
    /// watch command fails, all are sent again.
    ///
    /// Errors  false, and nothing done, for a symbol that is empty or holds control characters
    bool Watch(std::string_view symbol, CChangeQueue& listener);
    /// Takes a listener off a symbol or regional quote. When none is left, the watch ends and the record is removed.
    void Unwatch(std::string_view symbol, CChangeQueue& listener);
    /// The feed does not know the symbol: its record and regional quotes go, and the feed is not told.
    void Forget(std::string_view symbol);
    /// Takes a listener off everything it watches, as must be done before it is destroyed while the store lives on.
    void RemoveListener(CChangeQueue& listener);

    /// Sends the watch command again for every symbol that somebody watches, in the order in which they came, once per
    /// turn of the event loop and only while the connection is not known to be closed.
    void RewatchAll();
    /// A new turn of the event loop has begun.
    void NewTurn() { m_rewatchedThisTurn = false; }
    /// Sends the watch and region commands that did not go out yet, in the order of their symbols, until one fails
    /// again; for a timer of about a second. Costs nothing while all went out.
    void SendPendingWatches();

    /// These two lines are among the next, `soon` within a few: with many symbols their records' memory is asked for
    /// before it is needed. Changes nothing.
    void Expect(std::string_view later, std::string_view soon) const {
        if (m_records.Size() > kRecordsInCache) ExpectFar(later, soon);
    }
    /// One line of the level-1 connection without its line end; anything but a Q, P, F or R line is ignored.
    void OnLevel1Message(std::string_view line);
    void OnUpdate(std::string_view line);
    void OnSummary(std::string_view line);
    void OnFundamental(std::string_view line);
    void OnRegional(std::string_view line);

    /// The record of a feed symbol, or of a regional quote's full name; null when there is none. Good until the next
    /// line, Watch, Unwatch or Forget.
    const CSymbolRec* Find(std::string_view symbol) const;
    /// Asks for the memory with which Find begins.
    void ExpectLookup(std::string_view symbol) const { m_records.PrefetchEntry(symbol); }
    /// Asks for the record that Find will come to; worth it a while after ExpectLookup.
    void ExpectRecord(std::string_view symbol) const {
        if (const CL1SymbolRec* record = m_records.FindByKey(symbol)) __builtin_prefetch(record);
    }
    /// The record of a feed symbol alone.
    CL1SymbolRec* FindSymbol(std::string_view symbol) const { return m_records.Find(symbol); }
    /// The record of a change; null when it is gone.
    const CSymbolRec* FindById(uint32_t id1, uint32_t id2) const;

    /// Number of armed alerts of a symbol or regional quote; see CSymbolRec::SetArmedAlerts.
    void SetArmedAlerts(std::string_view symbol, int count);
    /// Trades kept for a symbol; 0, as at first, keeps none.
    void SetHistoryLimit(std::string_view symbol, size_t limit);

    /// Whether anybody listens to a feed symbol or one of its regions.
    bool IsWanted(std::string_view feedSymbol) const;

    /// Records, stray ones included, regional quotes not.
    size_t Size() const { return m_records.Size(); }

private:
    static constexpr size_t kRecordsInCache = 1000; ///< About as many as the second cache of a core holds.
    static constexpr size_t kTradeMarkets = 3;      ///< Fields of a quote that carry the market of a trade.

    /// Whether a table of names is there; asked for again only after a while.
    struct SLoad {
        bool done = false;
        int64_t nextTryMs = 0;
    };

    CL1SymbolRec& AddRecord(std::string_view symbol);
    sRegQuoteData& AddRegion(CL1SymbolRec& record, std::string_view fullName);
    void RemoveRecord(CL1SymbolRec& record);
    void RemoveRegion(CL1SymbolRec& record, sRegQuoteData& region);
    CL1SymbolRec& AddStray(std::string_view symbol);
    void WeighStray(CL1SymbolRec& record);
    void DropOldestStray();
    template <typename Wanted> std::vector<CL1SymbolRec*> InOrder(Wanted wanted) const;
    void ReleaseIfUnwanted(CL1SymbolRec& record);
    CSymbolRec* FindMutable(std::string_view symbol) const;

    bool SendCommand(std::string_view verb, std::string_view symbol);
    bool SendWatch(CL1SymbolRec& record);
    void SendRegions(CL1SymbolRec& record);

    void ExpectFar(std::string_view later, std::string_view soon) const;
    CL1SymbolRec& RecordForLine(std::string_view symbol);
    void DrainBeforeChange(std::string_view symbol);
    CL1SymbolRec* MergeQuote(std::string_view line, SMergeNotes& notes);
    void FinishMerge(CL1SymbolRec& record, const SMergeNotes& notes);
    void NameMarkets(CL1SymbolRec& record, const SMergeNotes& notes);
    void NameWaitingMarkets();
    void NameFundamentalCodes(CL1SymbolRec& record, unsigned carried);
    bool HaveMarkets() { return m_markets.done || LoadMarkets(); }
    bool LoadMarkets();
    bool HaveSecurityTypes() { return m_securityTypes.done || LoadSecurityTypes(); }
    bool LoadSecurityTypes();
    template <typename TLoad> bool Load(SLoad& state, TLoad load);

    const SMergeKernel& m_kernel;
    CL1CommandPort* m_port = nullptr;
    CCodeNames* m_names = nullptr;
    SLoad m_markets;
    SLoad m_securityTypes;
    CSymbolTable m_records;
    CRecordNumbers m_byNumber;
    /// Market ids of trades that came while the names were missing, by the record's number. They wait for the table.
    std::unordered_map<uint32_t, std::array<int16_t, kTradeMarkets>> m_unnamed;
    std::list<SStray> m_strays; ///< Oldest first.
    size_t m_strayBytes = 0;
    bool m_strayDropped = false; ///< Has been logged.
    uint32_t m_lastNumber = 0;
    bool m_rewatchedThisTurn = false;
    bool m_commandsPending = false; ///< A command did not go out whole since the last look at all records.
    std::string m_command;
};

} // namespace vx
