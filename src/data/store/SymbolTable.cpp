// SPDX-License-Identifier: MIT
#include "data/store/SymbolTable.h"

#include <bit>
#include <utility>

namespace vx {

namespace {

constexpr size_t kFirstSize = 256;

} // namespace

CSymbolTable::CSymbolTable()
    : m_entries(kFirstSize), m_mask(kFirstSize - 1), m_shift(64 - std::countr_zero(kFirstSize)) {}

CL1SymbolRec& CSymbolTable::Add(std::unique_ptr<CL1SymbolRec> record) {
    if ((m_size + 1) * 2 > m_entries.size()) Grow();
    CL1SymbolRec& added = *record;
    const uint64_t key = Key(added.Symbol());
    size_t i = Slot(key, added.Symbol());
    while (m_entries[i].record) i = (i + 1) & m_mask;
    m_entries[i] = {key, std::move(record)};
    ++m_size;
    return added;
}

void CSymbolTable::Remove(std::string_view symbol) {
    size_t hole = Slot(Key(symbol), symbol);
    while (m_entries[hole].record && m_entries[hole].record->Symbol() != symbol) hole = (hole + 1) & m_mask;
    if (!m_entries[hole].record) return;
    // The symbol may be a view of the record's own name.
    const std::unique_ptr<CL1SymbolRec> removed = std::move(m_entries[hole].record);
    --m_size;
    // Entries after the hole move into it unless their own position lies after it.
    for (size_t i = (hole + 1) & m_mask; m_entries[i].record; i = (i + 1) & m_mask) {
        const size_t home = Slot(m_entries[i].key, m_entries[i].record->Symbol());
        if (((i - home) & m_mask) < ((i - hole) & m_mask)) continue;
        m_entries[hole] = std::move(m_entries[i]);
        hole = i;
    }
}

void CSymbolTable::Grow() {
    std::vector<SEntry> old(m_entries.size() * 2);
    old.swap(m_entries);
    m_mask = m_entries.size() - 1;
    --m_shift;
    for (SEntry& entry : old) {
        if (!entry.record) continue;
        size_t i = Slot(entry.key, entry.record->Symbol());
        while (m_entries[i].record) i = (i + 1) & m_mask;
        m_entries[i] = std::move(entry);
    }
}

} // namespace vx
