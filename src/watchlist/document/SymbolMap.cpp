// SPDX-License-Identifier: MIT
#include "watchlist/document/SymbolMap.h"

#include "base/Text.h"
#include "data/record/SymbolKey.h"

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr size_t kFirstSlots = 16;

} // namespace

void CSymbolMap::Add(std::string_view symbol, uint32_t row, uint32_t flag) {
    symbol = TrimBlanks(symbol);
    if (symbol.empty()) return;
    const uint32_t hash = SymbolHash(symbol);
    SSlot& slot = m_slots[SlotOf(hash)];
    if (slot.place == kFree) {
        slot = {hash, static_cast<uint32_t>(m_arrays.size())};
        m_arrays.push_back({hash, {}});
    }
    CSymbolRecArray& symbols = m_arrays[slot.place].symbols;
    SYMBOL_DATA* data = symbols.Find(symbol);
    if (!data) {
        data = &symbols.Add({std::string(symbol), {}, flag});
        ++m_count;
    }
    data->flag = flag;
    data->rows.Insert(row);
    if (m_arrays.size() * 2 > m_slots.size()) Grow();
}

bool CSymbolMap::Remove(std::string_view symbol, uint32_t row) {
    SYMBOL_DATA* data = Entry(symbol);
    if (!data || !data->rows.Erase(row)) return false;
    if (data->rows.empty()) Erase(symbol);
    return true;
}

CRowList CSymbolMap::RemoveSymbol(std::string_view symbol) {
    SYMBOL_DATA* data = Entry(symbol);
    if (!data) return {};
    CRowList rows;
    std::swap(rows, data->rows);
    Erase(symbol);
    return rows;
}

void CSymbolMap::Clear() {
    m_arrays.clear();
    m_slots.assign(kFirstSlots, {});
    m_count = 0;
}

const SYMBOL_DATA* CSymbolMap::Find(std::string_view symbol) const {
    return const_cast<CSymbolMap*>(this)->Entry(symbol);
}

const CSymbolRecArray* CSymbolMap::FindHash(uint32_t hash) const {
    const SSlot& slot = m_slots[SlotOf(hash)];
    return slot.place == kFree ? nullptr : &m_arrays[slot.place].symbols;
}

SYMBOL_DATA* CSymbolMap::Entry(std::string_view symbol) {
    const SSlot& slot = m_slots[SlotOf(SymbolHash(symbol))];
    return slot.place == kFree ? nullptr : m_arrays[slot.place].symbols.Find(symbol);
}

void CSymbolMap::Erase(std::string_view symbol) {
    const size_t slot = SlotOf(SymbolHash(symbol));
    const uint32_t place = m_slots[slot].place;
    SHashed& array = m_arrays[place];
    array.symbols.Remove(symbol);
    --m_count;
    if (!array.symbols.empty()) return;
    // The last one takes its place.
    if (&array != &m_arrays.back()) {
        array = std::move(m_arrays.back());
        m_slots[SlotOf(array.hash)].place = place;
    }
    m_arrays.pop_back();
    FreeSlot(slot);
}

// Those after it move up unless they would come before their own place.
void CSymbolMap::FreeSlot(size_t hole) {
    const size_t mask = m_slots.size() - 1;
    for (size_t i = Next(hole); m_slots[i].place != kFree; i = Next(i)) {
        if (((i - HomeOf(m_slots[i].hash)) & mask) < ((i - hole) & mask)) continue;
        m_slots[hole] = m_slots[i];
        hole = i;
    }
    m_slots[hole] = {};
}

void CSymbolMap::Grow() {
    m_slots.assign(m_slots.size() * 2, {});
    for (uint32_t place = 0; place < m_arrays.size(); ++place)
        m_slots[SlotOf(m_arrays[place].hash)] = {m_arrays[place].hash, place};
}

SYMBOL_DATA* CSymbolRecArray::Find(std::string_view symbol) {
    if (m_many && !m_many->places.empty()) {
        const auto place = m_many->places.find(symbol);
        return place == m_many->places.end() ? nullptr : &m_many->symbols[place->second];
    }
    const auto found = std::ranges::find(*this, symbol, &SYMBOL_DATA::symbol);
    return found == end() ? nullptr : found;
}

SYMBOL_DATA& CSymbolRecArray::Add(SYMBOL_DATA data) {
    if (empty() && !m_many) return m_one = std::move(data);
    if (!m_many) {
        m_many = std::make_unique<SMany>();
        m_many->symbols.push_back(std::move(m_one));
    }
    auto& [symbols, places] = *m_many;
    symbols.push_back(std::move(data));
    if (!places.empty()) {
        places.emplace(symbols.back().symbol, symbols.size() - 1);
    } else if (symbols.size() > kMostWalked) {
        for (size_t i = 0; i < symbols.size(); ++i) places.emplace(symbols[i].symbol, i);
    }
    return symbols.back();
}

void CSymbolRecArray::Remove(std::string_view symbol) {
    SYMBOL_DATA* data = Find(symbol);
    if (!data) return;
    if (!m_many) {
        m_one = {};
        return;
    }
    auto& [symbols, places] = *m_many;
    const bool isLast = data == &symbols.back();
    if (!places.empty()) {
        places.erase(places.find(symbol));
        if (!isLast) places[symbols.back().symbol] = static_cast<size_t>(data - symbols.data());
    }
    if (!isLast) *data = std::move(symbols.back());
    symbols.pop_back();
}

} // namespace vx
