#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>

namespace vx::sim {

/// Makes a number of events happen each second, in slices short enough that everything else gets its turn.
///
/// A slice that takes longer than kSliceBudgetMs is cut off; what could not be made within kMaxLagMs is given up, so
/// that a machine that is too slow makes fewer events instead of falling ever further behind.
///
/// Thread  the one of its event loop
class CUpdatePump : public QObject {
public:
    static constexpr int kSliceMs = 10;
    static constexpr int kSliceBudgetMs = 25;
    static constexpr int kMaxLagMs = 250;

    /// step makes one event; sliceDone is called after each slice.
    CUpdatePump(std::function<void()> step, std::function<void()> sliceDone);

    /// Events a second; 0 stops.
    void SetRate(uint32_t rate);
    uint32_t Rate() const { return m_rate; }

private:
    void OnTimer();

    std::function<void()> m_step;
    std::function<void()> m_sliceDone;
    QTimer m_timer;
    QElapsedTimer m_elapsed;
    uint32_t m_rate = 0;
    double m_due = 0;
};

} // namespace vx::sim
