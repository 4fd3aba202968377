#include "app/shell/ProcessAge.h"

#include "base/Text.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <unistd.h>

namespace vx {

namespace {

// Position of the start time among the fields behind the program's name, which may itself hold blanks and brackets.
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
