// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/ChangeQueue.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace vx {

/// The records that await repainting, each once however often it changed.
///
/// Shape   keyed by the symbol's hash; records that share one are told apart by their number
/// Owns    its table, which keeps its size: once it has held the symbols of a market, adding allocates nothing
/// Thread  any; every operation takes the map's own lock
class CSymbolUpdateMap {
public:
    void Add(const SRecordIds& record);

    /// Takes everything out and hands it to visit(const SRecordIds&), in the order in which it was added. The lock
    /// is free while visit runs: what is added meanwhile stays for the next time.
    template <typename Visit> void TakeAll(Visit&& visit) {
        std::vector<SRecordIds> taken = BeginTake();
        for (const SRecordIds& record : taken) visit(record);
        EndTake(std::move(taken));
    }

    /// Adds every change that waits in a queue, which is empty then.
    void AddAll(CChangeQueue& queue);

    void Clear();
    bool IsEmpty() const { return Size() == 0; }
    size_t Size() const;
    bool Has(const SRecordIds& record) const;

private:
    // A place of the table is in use when it bears the present round.
    struct SPlace {
        uint32_t round = 0;
        uint32_t position = 0; ///< In m_waiting.
    };

    std::vector<SRecordIds> BeginTake();
    void EndTake(std::vector<SRecordIds> taken);
    void AddLocked(const SRecordIds& record);
    size_t PlaceOf(const SRecordIds& record) const;
    void NextRound();
    void Grow();

    mutable std::mutex m_lock;
    std::vector<SRecordIds> m_waiting;
    std::vector<SRecordIds> m_spare; ///< Memory of the list taken last.
    std::vector<SPlace> m_places;    ///< Size is a power of two, at least twice the number that waits.
    uint32_t m_round = 1;
};

} // namespace vx
