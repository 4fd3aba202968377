// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/ChangeQueue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CL1SymbolRec;
struct sRegQuoteData;

/// What every per-symbol record has: its name, the two identifiers of its changes, and who listens.
///
/// Owns    nothing of its listeners: each stays alive until it is removed
class CSymbolRec {
public:
    CSymbolRec(std::string_view symbol, uint32_t number);
    virtual ~CSymbolRec() = default; ///< Leaves the listeners alone: they may be gone by then.
    CSymbolRec(const CSymbolRec&) = delete;
    CSymbolRec& operator=(const CSymbolRec&) = delete;

    /// The record of the feed symbol: itself, or the one that a regional quote belongs to.
    virtual const CL1SymbolRec& Base() const = 0;
    /// Itself when it is a regional quote, else null.
    virtual const sRegQuoteData* AsRegion() const { return nullptr; }
    /// Some line has filled it.
    virtual bool HasData() const = 0;

    const std::string& Symbol() const { return m_symbol; }
    SRecordIds Ids() const { return m_ids; }

    /// Does nothing when the listener is there already.
    void AddListener(CChangeQueue& listener);
    /// Returns whether it was there.
    bool RemoveListener(CChangeQueue& listener);
    void RemoveAllListeners();
    bool HasListener(const CChangeQueue& listener) const;
    bool HasListeners() const { return m_first.queue != nullptr; }

    /// Puts a change into the queue of every listener that has none of this record waiting. It is urgent while alerts
    /// are armed, or the feed does not know the symbol.
    void Notify() {
        if (m_first.queue) Notify(m_first);
        if (!m_more) return;
        for (SListener& listener : *m_more) Notify(listener);
    }

    /// How many armed alerts watch this record. While any do, every value reaches the listeners: see NextWaiting.
    void SetArmedAlerts(int count) { m_armedAlerts = count; }
    int ArmedAlerts() const { return m_armedAlerts; }

    /// With alerts armed, a queue whose urgent changes must be drained before this record may change; else null.
    CChangeQueue* NextWaiting() const { return m_armedAlerts > 0 ? FindWaiting() : nullptr; }

protected:
    bool m_unknown = false; ///< The feed said that there is no such symbol.

private:
    struct SListener {
        CChangeQueue* queue = nullptr;
        uint64_t drainNumber = 0;  ///< The queue's number when this record last put a change into it.
        uint64_t urgentNumber = 0; ///< The same for an urgent one.
    };

    void Notify(SListener& listener) const {
        CChangeQueue& queue = *listener.queue;
        if (listener.drainNumber != queue.DrainNumber()) {
            listener.drainNumber = queue.DrainNumber();
            queue.Push(m_ids);
        }
        if ((m_armedAlerts > 0 || m_unknown) && listener.urgentNumber != queue.UrgentNumber()) {
            listener.urgentNumber = queue.UrgentNumber();
            queue.PushUrgent(m_ids);
        }
    }
    CChangeQueue* FindWaiting() const;

    int m_armedAlerts = 0; ///< Here it fills the room after m_unknown.
    std::string m_symbol;
    SRecordIds m_ids;
    SListener m_first; ///< Nearly every record has one listener: it costs no step into another block of memory.
    std::unique_ptr<std::vector<SListener>> m_more; ///< Null while there are none.
};

} // namespace vx
