// SPDX-License-Identifier: MIT
#include "data/record/ChangeQueue.h"

namespace vx {

namespace {

constexpr size_t kFirstRingSize = 64;

} // namespace

CChangeQueue::CChangeQueue(CChangeWaker& waker) : m_waker(waker), m_ring(kFirstRingSize) {}

void CChangeQueue::Push(const SRecordIds& ids) {
    if (m_count == m_ring.size()) Grow();
    m_ring[(m_first + m_count) & (m_ring.size() - 1)] = ids;
    ++m_count;
    if (m_woken) return;
    m_woken = true;
    m_waker.PostPaint();
}

void CChangeQueue::DrainNow() {
    const bool onItsWay = m_woken;
    m_waker.DrainNow();
    m_woken = m_woken || onItsWay;
}

void CChangeQueue::AddSource() {
    ++m_sources;
    while (m_sources > m_ring.size()) Grow();
}

size_t CChangeQueue::BeginDrain() {
    ++m_drainNumber;
    m_woken = false;
    return m_count;
}

SRecordIds CChangeQueue::Pop() {
    const SRecordIds ids = m_ring[m_first];
    m_first = (m_first + 1) & (m_ring.size() - 1);
    --m_count;
    return ids;
}

void CChangeQueue::Grow() {
    std::vector<SRecordIds> larger(m_ring.size() * 2);
    for (size_t i = 0; i < m_count; ++i) larger[i] = m_ring[(m_first + i) & (m_ring.size() - 1)];
    m_ring.swap(larger);
    m_first = 0;
}

} // namespace vx
