#include "support/FakeClock.h"

namespace vx::test {

void CFakeClock::SleepMs(int milliseconds) {
    sleeps.push_back(milliseconds);
    elapsedMs += milliseconds;
    if (onSleep) onSleep();
}

} // namespace vx::test
