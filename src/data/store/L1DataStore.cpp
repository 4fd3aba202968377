// SPDX-License-Identifier: MIT
#include "data/store/L1DataStore.h"

#include "base/Log.h"
#include "data/record/SymbolKey.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx {

// Watching: which records there are, who listens to them, and which commands the feed gets. The data lines are handled
// in L1DataStoreLines.cpp.

namespace {

bool CanBeWatched(std::string_view symbol) {
    return !FeedSymbol(symbol).empty() &&
           std::ranges::none_of(symbol, [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

} // namespace

CL1DataStore::CL1DataStore(const SMergeKernel& kernel) : m_kernel(kernel) {}

void CL1DataStore::SetCodeNames(CCodeNames* names) {
    m_names = names;
    m_markets = {};
    m_securityTypes = {};
    m_records.ForEach([&](CL1SymbolRec& record) { record.m_names = names; });
}

bool CL1DataStore::Watch(std::string_view symbol, CChangeQueue& listener) {
    if (!CanBeWatched(symbol)) return false;
    const std::string_view feedSymbol = FeedSymbol(symbol);
    CL1SymbolRec* record = m_records.Find(feedSymbol);
    // What came for a symbol while nobody watched it is no beginning: an alert could fire on it.
    if (record && record->m_stray) RemoveRecord(*record), record = nullptr;
    if (!record) record = &AddRecord(feedSymbol);

    CSymbolRec* target = record;
    if (IsRegionalName(symbol)) {
        target = FindMutable(symbol);
        if (!target) target = &AddRegion(*record, symbol);
    }
    target->AddListener(listener);
    if (!record->m_watched && !SendWatch(*record)) RewatchAll();
    if (target != record) SendRegions(*record);
    target->Notify();
    return true;
}

void CL1DataStore::Unwatch(std::string_view symbol, CChangeQueue& listener) {
    CSymbolRec* target = FindMutable(symbol);
    if (!target || !target->RemoveListener(listener)) return;
    CL1SymbolRec& record = *m_records.Find(FeedSymbol(symbol));
    if (target != &record && !target->HasListeners()) RemoveRegion(record, *record.FindRegion(symbol));
    ReleaseIfUnwanted(record);
}

void CL1DataStore::Forget(std::string_view symbol) {
    if (CL1SymbolRec* record = m_records.Find(symbol)) RemoveRecord(*record);
}

void CL1DataStore::RemoveListener(CChangeQueue& listener) {
    std::vector<std::string> watched;
    m_records.ForEach([&](CL1SymbolRec& record) {
        if (record.HasListener(listener)) watched.push_back(record.Symbol());
        for (const auto& [name, region] : record.Regions())
            if (region->HasListener(listener)) watched.push_back(region->Symbol());
    });
    for (const std::string& symbol : watched) Unwatch(symbol, listener);
}

void CL1DataStore::RewatchAll() {
    if (m_rewatchedThisTurn || !m_port || !m_port->IsOpen()) return;
    m_rewatchedThisTurn = true;
    for (CL1SymbolRec* record : InOrder([](const CL1SymbolRec& r) { return r.IsWanted(); })) SendWatch(*record);
}

// Records are numbered as they come. With more symbols than the feed takes, the same ones are served each time.
template <typename Wanted> std::vector<CL1SymbolRec*> CL1DataStore::InOrder(Wanted wanted) const {
    std::vector<CL1SymbolRec*> out;
    m_records.ForEach([&](CL1SymbolRec& record) {
        if (wanted(record)) out.push_back(&record);
    });
    std::ranges::sort(out, {}, [](const CL1SymbolRec* record) { return record->Ids().id2; });
    return out;
}

void CL1DataStore::SendPendingWatches() {
    if (!m_commandsPending || !m_port || !m_port->IsOpen()) return;
    m_commandsPending = false;
    const auto watchMissing = [](const CL1SymbolRec& r) { return r.IsWanted() && !r.m_watched; };
    const auto regionsMissing = [](const CL1SymbolRec& r) { return !r.m_regionsAsked && r.m_regions; };
    for (CL1SymbolRec* record : InOrder([&](const CL1SymbolRec& r) { return watchMissing(r) || regionsMissing(r); })) {
        if (!m_commandsPending && watchMissing(*record)) SendWatch(*record);
        if (!m_commandsPending && regionsMissing(*record)) SendRegions(*record);
        if (m_commandsPending) return;
    }
}

CSymbolRec* CL1DataStore::FindMutable(std::string_view symbol) const {
    CL1SymbolRec* record = m_records.Find(FeedSymbol(symbol));
    if (record && IsRegionalName(symbol)) return record->FindRegion(symbol);
    return record;
}

const CSymbolRec* CL1DataStore::Find(std::string_view symbol) const { return FindMutable(symbol); }

bool CL1DataStore::IsWanted(std::string_view feedSymbol) const {
    const CL1SymbolRec* record = m_records.Find(feedSymbol);
    return record && record->IsWanted();
}

const CSymbolRec* CL1DataStore::FindById(uint32_t id1, uint32_t id2) const {
    const CSymbolRec* record = m_byNumber.Find(id2);
    return record && record->Ids().id1 == id1 ? record : nullptr;
}

void CL1DataStore::SetArmedAlerts(std::string_view symbol, int count) {
    if (CSymbolRec* record = FindMutable(symbol)) record->SetArmedAlerts(count);
}

void CL1DataStore::SetHistoryLimit(std::string_view symbol, size_t limit) {
    if (CL1SymbolRec* record = m_records.Find(symbol)) record->SetHistoryLimit(limit);
}

CL1SymbolRec& CL1DataStore::AddRecord(std::string_view symbol) {
    CL1SymbolRec& record = m_records.Add(std::make_unique<CL1SymbolRec>(symbol, ++m_lastNumber));
    record.m_names = m_names;
    m_byNumber.Add(record);
    return record;
}

sRegQuoteData& CL1DataStore::AddRegion(CL1SymbolRec& record, std::string_view fullName) {
    auto made = std::make_unique<sRegQuoteData>(fullName, ++m_lastNumber, record);
    sRegQuoteData& region = *made;
    if (!record.m_regions) record.m_regions = std::make_unique<CL1SymbolRec::CRegions>();
    record.m_regions->emplace(region.RegionName(), std::move(made));
    m_byNumber.Add(region);
    return region;
}

void CL1DataStore::RemoveRecord(CL1SymbolRec& record) {
    if (record.m_stray) {
        m_strayBytes -= record.m_strayPlace->bytes;
        m_strays.erase(record.m_strayPlace);
    }
    while (record.m_regions) RemoveRegion(record, *record.m_regions->begin()->second);
    record.RemoveAllListeners();
    m_byNumber.Remove(record);
    m_unnamed.erase(record.Ids().id2);
    m_records.Remove(record.Symbol());
}

void CL1DataStore::RemoveRegion(CL1SymbolRec& record, sRegQuoteData& region) {
    region.RemoveAllListeners();
    m_byNumber.Remove(region);
    record.m_regions->erase(record.m_regions->find(region.RegionName()));
    if (record.m_regions->empty()) record.m_regions.reset();
}

CL1SymbolRec& CL1DataStore::AddStray(std::string_view symbol) {
    if (m_strays.size() == kMostStrayRecords) DropOldestStray();
    CL1SymbolRec& record = AddRecord(symbol);
    record.m_stray = true;
    record.m_strayPlace = m_strays.insert(m_strays.end(), {&record, 0});
    return record;
}

void CL1DataStore::WeighStray(CL1SymbolRec& record) {
    const size_t bytes = record.Bytes();
    m_strayBytes += bytes - record.m_strayPlace->bytes;
    record.m_strayPlace->bytes = bytes;
    while (m_strayBytes > kMostStrayBytes && m_strays.front().record != &record) DropOldestStray();
}

void CL1DataStore::DropOldestStray() {
    RemoveRecord(*m_strays.front().record);
    if (std::exchange(m_strayDropped, true)) return;
    Log(ELogCategory::L1Error, ELogDirection::Status,
        fmt::format(
            "Level1: lines came for more than {} symbols that nobody watches, or for {} MiB of them; the oldest "
            "are forgotten.",
            kMostStrayRecords, kMostStrayBytes >> 20));
}

void CL1DataStore::ReleaseIfUnwanted(CL1SymbolRec& record) {
    if (record.IsWanted()) return;
    SendCommand("r", record.Symbol());
    RemoveRecord(record);
}

bool CL1DataStore::SendCommand(std::string_view verb, std::string_view symbol) {
    m_command.assign(verb).append(symbol).append("\n");
    const bool whole = m_port && m_port->Send(m_command) == static_cast<int>(m_command.size());
    if (!whole) m_commandsPending = true;
    return whole;
}

void CL1DataStore::SendRegions(CL1SymbolRec& record) {
    record.m_regionsAsked = SendCommand("S,REGON,", record.Symbol());
}

bool CL1DataStore::SendWatch(CL1SymbolRec& record) {
    record.m_watched = SendCommand("w", record.Symbol());
    return record.m_watched;
}

} // namespace vx
