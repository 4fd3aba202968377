#include "vxconnect/DataFeed.h"

#include "base/Number.h"

namespace vx::sim {

namespace {

// Slots of the fundamental line.
constexpr size_t kNameSlot = kFieldCount + 2;
constexpr size_t kMarketSlot = kFieldCount + 34;
constexpr size_t kTypeSlot = kFieldCount + 35;

} // namespace

std::optional<SymbolIndex> CDataFeed::Find(std::string_view symbol) {
    const auto found = m_bySymbol.find(symbol);
    if (found == m_bySymbol.end()) return std::nullopt;
    return found->second;
}

std::optional<SymbolIndex> CDataFeed::Add(std::string_view symbol) {
    if (const auto index = Find(symbol)) return index;
    if (m_records.size() == kMaxRecords) return std::nullopt;
    const auto index = static_cast<SymbolIndex>(m_records.size());
    m_records.push_back(std::make_unique<CDataRecord>(std::string(symbol)));
    m_bySymbol.emplace(m_records.back()->Symbol(), index);
    return index;
}

void CDataFeed::Changed(SymbolIndex index, const SUpdate& update) {
    m_factChanges += update.newFundamentals;
    if (update.changed.Empty() && update.regions == 0 && !update.newFundamentals && !update.newSummary) return;
    if (SWatched* const watched = FindWatched(index)) Tell(*watched, update);
}

std::unique_ptr<SWatched> CDataFeed::Begin(SymbolIndex index) {
    auto watched = std::make_unique<SWatched>();
    watched->security = m_records[index].get();
    return watched;
}

void CDataFeed::ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const {
    for (const auto& record : m_records)
        if (!visit({record->Symbol(), record->Get(kNameSlot), ReadInt32(record->Get(kMarketSlot)),
                    ReadInt32(record->Get(kTypeSlot))}))
            return;
}

} // namespace vx::sim
