#include "vxconnect/UpdatePump.h"

#include <algorithm>

namespace vx::sim {

CUpdatePump::CUpdatePump(std::function<void()> step, std::function<void()> sliceDone)
    : m_step(std::move(step)), m_sliceDone(std::move(sliceDone)) {
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { OnTimer(); });
}

void CUpdatePump::SetRate(uint32_t rate) {
    if (rate == m_rate) return;
    m_rate = rate;
    if (rate == 0) {
        m_timer.stop();
        return;
    }
    // A slow market needs no more wake-ups than events.
    m_timer.setInterval(std::clamp(static_cast<int>(1000 / rate), kSliceMs, 100));
    if (m_timer.isActive()) return;
    m_due = 0;
    m_elapsed.start();
    m_timer.start();
}

void CUpdatePump::OnTimer() {
    constexpr int kEventsBetweenLooks = 256;
    m_due += static_cast<double>(m_elapsed.nsecsElapsed()) * 1e-9 * m_rate;
    m_elapsed.start();
    m_due = std::min(m_due, static_cast<double>(m_rate) * kMaxLagMs / 1000 + 1);
    bool inTime = true;
    while (m_due >= 1 && inTime) {
        for (int i = 0; i < kEventsBetweenLooks && m_due >= 1; ++i, m_due -= 1) m_step();
        inTime = m_elapsed.elapsed() < kSliceBudgetMs;
    }
    m_sliceDone();
}

} // namespace vx::sim
