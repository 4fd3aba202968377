// SPDX-License-Identifier: MIT
#include "data/record/SymbolRec.h"

#include "data/record/SymbolKey.h"

#include <algorithm>

namespace vx {

CSymbolRec::CSymbolRec(std::string_view symbol, uint32_t number)
    : m_symbol(symbol), m_ids{SymbolHash(symbol), number} {}

void CSymbolRec::RemoveAllListeners() {
    while (m_first.queue) RemoveListener(*m_first.queue);
}

bool CSymbolRec::HasListener(const CChangeQueue& listener) const {
    const auto isListener = [&](const SListener& l) { return l.queue == &listener; };
    return isListener(m_first) || (m_more && std::ranges::any_of(*m_more, isListener));
}

void CSymbolRec::AddListener(CChangeQueue& listener) {
    if (HasListener(listener)) return;
    listener.AddSource();
    if (!m_first.queue) {
        m_first = {&listener, 0, 0};
        return;
    }
    if (!m_more) m_more = std::make_unique<std::vector<SListener>>();
    m_more->push_back({&listener, 0, 0});
}

bool CSymbolRec::RemoveListener(CChangeQueue& listener) {
    if (!HasListener(listener)) return false;
    listener.RemoveSource();
    if (m_first.queue == &listener) {
        m_first = m_more ? m_more->back() : SListener{};
        if (m_more) m_more->pop_back();
    } else {
        std::erase_if(*m_more, [&](const SListener& more) { return more.queue == &listener; });
    }
    if (m_more && m_more->empty()) m_more.reset();
    return true;
}

CChangeQueue* CSymbolRec::FindWaiting() const {
    const auto waits = [](const SListener& l) { return l.urgentNumber == l.queue->UrgentNumber(); };
    if (m_first.queue && waits(m_first)) return m_first.queue;
    if (!m_more) return nullptr;
    const auto found = std::ranges::find_if(*m_more, waits);
    return found == m_more->end() ? nullptr : found->queue;
}

} // namespace vx
