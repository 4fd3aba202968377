#include "base/Clock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace vx {

namespace {

class CSystemClock final : public CClock {
public:
    SLocalTime Now() const override {
        const auto now = std::chrono::system_clock::now();
        const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
        std::tm parts{};
        localtime_r(&seconds, &parts);
        const auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count();
        return {parts.tm_year + 1900,
                parts.tm_mon + 1,
                parts.tm_mday,
                parts.tm_hour,
                parts.tm_min,
                parts.tm_sec,
                static_cast<int>(sinceEpoch % 1000)};
    }

    int64_t MonotonicMs() const override {
        using namespace std::chrono;
        return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    }

    void SleepMs(int milliseconds) override { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }
};

CSystemClock g_systemClock;
CClock* g_clock = &g_systemClock;

} // namespace

CClock& CClock::Instance() { return *g_clock; }

void CClock::SetInstance(CClock* clock) { g_clock = clock ? clock : &g_systemClock; }

} // namespace vx
