// SPDX-License-Identifier: MIT
#pragma once

#include "base/Clock.h"

#include <functional>
#include <vector>

namespace vx::test {

/// A clock that stands still until it is told, sleeps without waiting, and remembers how long it slept. It is the
/// program's clock as long as it lives.
class CFakeClock final : public CClock {
public:
    CFakeClock() { SetInstance(this); }
    ~CFakeClock() override { SetInstance(nullptr); }

    SLocalTime Now() const override { return now; }
    int64_t MonotonicMs() const override { return elapsedMs; }
    void SleepMs(int milliseconds) override {
        sleeps.push_back(milliseconds);
        elapsedMs += milliseconds;
        if (onSleep) onSleep();
    }

    SLocalTime now{2024, 1, 31, 9, 30, 5, 0};
    int64_t elapsedMs = 0;
    std::vector<int> sleeps;
    std::function<void()> onSleep; ///< Runs during each sleep.
};

} // namespace vx::test
