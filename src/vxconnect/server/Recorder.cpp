#include "vxconnect/server/Recorder.h"

#include "vxconnect/common/TrafficLine.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <filesystem>

#include <fmt/chrono.h>
#include <fmt/format.h>

namespace vx::sim {

std::string CRecorder::Open(const std::string& path) {
    m_path = path;
    std::error_code missing;
    if (std::filesystem::is_fifo(path, missing))
        return fmt::format("vxconnect: cannot record into {}: it is a pipe, not a file", path);
    m_file.reset(std::fopen(path.c_str(), "wb"));
    if (m_file) OnTime();
    return m_file ? std::string() : fmt::format("vxconnect: cannot record into {}: {}", path, std::strerror(errno));
}

const std::string& CRecorder::Now() {
    const int64_t now =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
            .count();
    if (now != m_nowMs) {
        m_nowMs = now;
        const std::time_t second = now / 1000;
        std::tm local{};
        localtime_r(&second, &local);
        m_now = fmt::format("{:%Y-%m-%d %H:%M:%S}.{:03}", local, now % 1000);
    }
    return m_now;
}

void CRecorder::OnWatched(const SWatched& watched) {
    const CSecurity& security = *watched.security;
    m_lines.Append(m_feed.FundamentalLine(watched.index, security.Symbol()));
    security.AppendQuote(m_lines, 'P', security.Symbol(), security.Present(), security.Contents(), m_selection);
    Write();
}

void CRecorder::OnUpdate(const SWatched& watched, const SUpdate& update) {
    const CSecurity& security = *watched.security;
    if (update.newSession || update.newFundamentals)
        m_lines.Append(m_feed.FundamentalLine(watched.index, security.Symbol()));
    if (update.newSession || update.newSummary) {
        security.AppendQuote(m_lines, 'P', security.Symbol(), security.Present(), security.Contents(), m_selection);
    } else if (!update.changed.Empty()) {
        security.AppendQuote(m_lines, 'Q', security.Symbol(), update.changed, security.Contents(), m_selection);
    }
    const bool regions = std::any_of(watched.subscriptions.begin(), watched.subscriptions.end(),
                                     [](const SSubscription* subscription) { return subscription->regions; });
    for (size_t i = 0; regions && i < security.RegionCount(); ++i)
        if (update.regions >> i & 1) security.AppendRegion(m_lines, security.Symbol(), i);
    Write();
}

void CRecorder::OnLine(std::string_view line) {
    m_lines.Append(line);
    Write();
}

void CRecorder::OnTime() {
    OnLine(fmt::format("T,{}\r\n", m_feed.ClockText()));
    if (m_file && std::fflush(m_file.get()) != 0) Write();
}

void CRecorder::Write() {
    for (std::string_view waiting = m_lines.Waiting(); m_file && !waiting.empty();) {
        const size_t end = waiting.find('\n');
        const std::string line = TrafficText(Now(), waiting.substr(0, end));
        std::fwrite(line.data(), 1, line.size(), m_file.get());
        waiting.remove_prefix(end + 1);
    }
    m_lines.Drop(m_lines.Size());
    if (!m_file || std::ferror(m_file.get()) == 0) return;
    std::fprintf(stderr, "vxconnect: %s takes no more, the recording ends: %s\n", m_path.c_str(), std::strerror(errno));
    m_file.reset();
}

} // namespace vx::sim
