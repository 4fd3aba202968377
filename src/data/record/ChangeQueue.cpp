// SPDX-License-Identifier: MIT
#include "data/record/ChangeQueue.h"

namespace vx {

namespace {

constexpr size_t kFirstRingSize = 64;

} // namespace

CChangeRing::CChangeRing() : m_ring(kFirstRingSize) {}

void CChangeRing::Reserve(size_t changes) {
    while (changes > m_ring.size()) Grow();
}

void CChangeRing::Grow() {
    std::vector<SRecordIds> larger(m_ring.size() * 2);
    for (size_t i = 0; i < m_count; ++i) larger[i] = m_ring[(m_first + i) & (m_ring.size() - 1)];
    m_ring.swap(larger);
    m_first = 0;
}

void CChangeQueue::Push(const SRecordIds& ids) {
    m_all.Push(ids);
    if (m_woken) return;
    m_woken = true;
    m_waker.ChangesWait();
}

void CChangeQueue::PushUrgent(const SRecordIds& ids) {
    m_urgent.Push(ids);
    if (m_posted) return;
    m_posted = true;
    m_waker.PostPaint();
}

void CChangeQueue::DrainNow() {
    const bool onItsWay = m_posted;
    m_waker.DrainNow();
    m_posted = m_posted || onItsWay;
}

} // namespace vx
