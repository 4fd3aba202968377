// SPDX-License-Identifier: MIT
#include "watchlist/document/SymbolUpdateMap.h"

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr size_t kFirstSize = 64;

// The record's number alone: nobody can choose it, as they can a symbol's hash.
size_t Mixed(const SRecordIds& record) {
    constexpr uint64_t kMix = 0x9E3779B97F4A7C15ull; // 2^64 divided by the golden ratio, odd.
    return static_cast<size_t>((record.id2 * kMix) >> 32);
}

} // namespace

void CSymbolUpdateMap::Add(const SRecordIds& record) {
    const std::scoped_lock lock(m_lock);
    AddLocked(record);
}

void CSymbolUpdateMap::AddAll(CChangeQueue& queue) {
    const std::scoped_lock lock(m_lock);
    queue.Drain([this](const SRecordIds& record) { AddLocked(record); });
}

void CSymbolUpdateMap::AddLocked(const SRecordIds& record) {
    if (m_places.size() < 2 * (m_waiting.size() + 1)) Grow();
    SPlace& place = m_places[PlaceOf(record)];
    if (place.round == m_round) return;
    place = {m_round, static_cast<uint32_t>(m_waiting.size())};
    m_waiting.push_back(record);
}

void CSymbolUpdateMap::Clear() {
    const std::scoped_lock lock(m_lock);
    m_waiting.clear();
    NextRound();
}

size_t CSymbolUpdateMap::Size() const {
    const std::scoped_lock lock(m_lock);
    return m_waiting.size();
}

bool CSymbolUpdateMap::Has(const SRecordIds& record) const {
    const std::scoped_lock lock(m_lock);
    return !m_places.empty() && m_places[PlaceOf(record)].round == m_round;
}

std::vector<SRecordIds> CSymbolUpdateMap::BeginTake() {
    const std::scoped_lock lock(m_lock);
    NextRound();
    return std::exchange(m_waiting, std::move(m_spare));
}

void CSymbolUpdateMap::EndTake(std::vector<SRecordIds> taken) {
    const std::scoped_lock lock(m_lock);
    taken.clear();
    m_spare = std::move(taken);
}

// The record's own place, or the free one where it belongs.
size_t CSymbolUpdateMap::PlaceOf(const SRecordIds& record) const {
    const size_t mask = m_places.size() - 1;
    for (size_t i = Mixed(record) & mask;; i = (i + 1) & mask) {
        const SPlace& place = m_places[i];
        if (place.round != m_round) return i;
        const SRecordIds& there = m_waiting[place.position];
        if (there.id1 == record.id1 && there.id2 == record.id2) return i;
    }
}

void CSymbolUpdateMap::NextRound() {
    if (++m_round != 0) return;
    std::fill(m_places.begin(), m_places.end(), SPlace{});
    m_round = 1;
}

void CSymbolUpdateMap::Grow() {
    m_places.assign(std::max(kFirstSize, m_places.size() * 2), SPlace{});
    for (uint32_t i = 0; i < m_waiting.size(); ++i) m_places[PlaceOf(m_waiting[i])] = {m_round, i};
}

} // namespace vx
