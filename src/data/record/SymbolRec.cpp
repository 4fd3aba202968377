// SPDX-License-Identifier: MIT
#include "data/record/SymbolRec.h"

#include "data/record/SymbolKey.h"

#include <algorithm>

namespace vx {

CSymbolRec::CSymbolRec(std::string_view symbol, uint32_t number)
    : m_symbol(symbol), m_ids{SymbolHash(symbol), number} {}

void CSymbolRec::RemoveAllListeners() {
    if (m_first.queue) m_first.queue->RemoveSource();
    for (const SListener& listener : m_more) listener.queue->RemoveSource();
    m_first = {};
    m_more.clear();
}

bool CSymbolRec::HasListener(const CChangeQueue& listener) const {
    return m_first.queue == &listener ||
           std::ranges::any_of(m_more, [&](const SListener& more) { return more.queue == &listener; });
}

void CSymbolRec::AddListener(CChangeQueue& listener) {
    if (HasListener(listener)) return;
    listener.AddSource();
    if (m_first.queue)
        m_more.push_back({&listener, 0, 0});
    else
        m_first = {&listener, 0, 0};
}

bool CSymbolRec::RemoveListener(CChangeQueue& listener) {
    if (!HasListener(listener)) return false;
    listener.RemoveSource();
    if (m_first.queue == &listener) {
        m_first = {};
        if (m_more.empty()) return true;
        m_first = m_more.back();
        m_more.pop_back();
    } else {
        std::erase_if(m_more, [&](const SListener& more) { return more.queue == &listener; });
    }
    return true;
}

CChangeQueue* CSymbolRec::FindWaiting() const {
    const auto waits = [](const SListener& l) { return l.urgentNumber == l.queue->UrgentNumber(); };
    if (m_first.queue && waits(m_first)) return m_first.queue;
    const auto found = std::ranges::find_if(m_more, waits);
    return found == m_more.end() ? nullptr : found->queue;
}

} // namespace vx
