// SPDX-License-Identifier: MIT
#include "base/Clock.h"

#include "base/Text.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>

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

namespace {

// Position of the start time among the fields after the program's name, which may itself hold blanks and brackets.
constexpr size_t kStartTimeField = 20;

} // namespace

std::optional<int64_t> ProcessAgeMs() {
    std::ifstream in("/proc/self/stat");
    std::string line;
    std::getline(in, line);
    const size_t nameEnd = line.rfind(')');
    if (nameEnd == std::string::npos) return std::nullopt;
    const auto fields = SplitCountingTail(std::string_view(line).substr(nameEnd + 1), ' ');
    const long ticksPerSecond = sysconf(_SC_CLK_TCK);
    timespec now{};
    if (fields.size() <= kStartTimeField || ticksPerSecond < 1 || clock_gettime(CLOCK_BOOTTIME, &now) != 0)
        return std::nullopt;
    const auto ticks = std::strtoll(std::string(fields[kStartTimeField]).c_str(), nullptr, 10);
    const int64_t started = ticks * 1000 / ticksPerSecond;
    return int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000 - started;
}

} // namespace vx
