#include "vxconnect/data/DataFeed.h"

#include "base/Number.h"
#include "base/Text.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

namespace vx::sim {

namespace {

// Slots of the fundamental line.
constexpr size_t kNameSlot = kFieldCount + 2;
constexpr size_t kMarketSlot = kFieldCount + 34;
constexpr size_t kTypeSlot = kFieldCount + 35;

} // namespace

std::optional<SymbolIndex> CDataFeed::Find(std::string_view symbol) {
    const auto found = m_bySymbol.find(UpperAscii(symbol));
    if (found == m_bySymbol.end()) return std::nullopt;
    return found->second;
}

std::optional<SymbolIndex> CDataFeed::Add(std::string_view symbol) {
    if (const auto index = Find(symbol)) return m_records[*index]->Symbol() == symbol ? index : std::nullopt;
    if (IsFull()) return std::nullopt;
    const auto index = static_cast<SymbolIndex>(m_records.size());
    m_records.push_back(std::make_unique<CDataRecord>(std::string(symbol)));
    m_bySymbol.emplace(UpperAscii(symbol), index);
    return index;
}

std::string CDataFeed::WhyNone(std::string_view symbol) const {
    const auto found = m_bySymbol.find(UpperAscii(symbol));
    if (found == m_bySymbol.end()) return fmt::format("more than {} symbols", kMaxRecords);
    return fmt::format("symbol \"{}\" differs from \"{}\" only in letter case and is refused", Shown(symbol),
                       Shown(m_records[found->second]->Symbol()));
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
