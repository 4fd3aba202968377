// SPDX-License-Identifier: MIT
#include "vxconnect/data/Recording.h"

#include "base/DateTime.h"
#include "base/Log.h"
#include "base/Text.h"
#include "base/Windows1252.h"
#include "vxconnect/common/WireText.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstring>
#include <ctime>
#include <filesystem>

namespace vx::sim {

namespace {

constexpr std::string_view kDataLetters = "QPFRNT";
constexpr size_t kTimeBytes = 23; // "2024-01-31 09:30:00.123"

bool IsDataLine(std::string_view text) {
    return text.size() > 2 && text[1] == ',' && kDataLetters.find(text[0]) != std::string_view::npos;
}

// The number that some bytes spell; -1 when they are not all digits.
int NumberAt(std::string_view text, size_t begin, size_t count) {
    int value = 0;
    const char* const first = text.data() + begin;
    const auto [end, status] = std::from_chars(first, first + count, value);
    return status == std::errc() && end == first + count && value >= 0 ? value : -1;
}

std::optional<int64_t> TimeOf(std::string_view text) {
    if (text.size() < kTimeBytes || text[4] != '-' || text[7] != '-' || text[10] != ' ' || text[13] != ':' ||
        text[16] != ':' || text[19] != '.')
        return std::nullopt;
    const int year = NumberAt(text, 0, 4), month = NumberAt(text, 5, 2), day = NumberAt(text, 8, 2);
    const int hour = NumberAt(text, 11, 2), minute = NumberAt(text, 14, 2), second = NumberAt(text, 17, 2);
    const int ms = NumberAt(text, 20, 3);
    if (!IsCalendarDay(year, month, day) || std::min({hour, minute, second, ms}) < 0) return std::nullopt;
    return ((int64_t{DaysSince1899(year, month, day)} * 24 + hour) * 60 + minute) * 60'000 + second * 1000 + ms;
}

// Takes "[text] " off the front; nothing when there is none.
std::optional<std::string_view> TakeBracket(std::string_view& text) {
    const size_t end = text.find("] ");
    if (!text.starts_with('[') || end == std::string_view::npos) return std::nullopt;
    const std::string_view inside = text.substr(1, end - 1);
    text.remove_prefix(end + 2);
    return inside;
}

std::string Decoded(std::string_view text) {
    const std::string bytes = WireTextOf(text).value_or(std::string(text));
    std::string out;
    out.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) {
        int value = 0;
        const bool escape = bytes[i] == '\\' && i + 3 < bytes.size() && bytes[i + 1] == 'x';
        const char* const digits = bytes.data() + i + 2;
        if (escape && std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            out += static_cast<char>(value);
            i += 3;
        } else {
            out += bytes[i];
        }
        if (static_cast<unsigned char>(out.back()) < 0x20) out.back() = ' ';
    }
    return out;
}

} // namespace

std::optional<STrafficLine> ReadTrafficLine(std::string_view line) {
    STrafficLine out;
    out.timeMs = TimeOf(line);
    if (out.timeMs) {
        line.remove_prefix(kTimeBytes);
        if (line.starts_with(' ')) line.remove_prefix(1);
        const auto category = TakeBracket(line);
        if (category != LogName(ELogCategory::L1Data)) return std::nullopt;
        const auto direction = TakeBracket(line);
        if (direction != LogName(ELogDirection::FromServer)) return std::nullopt;
    }
    if (!IsDataLine(line)) return std::nullopt;
    out.text = Decoded(line);
    return out;
}

std::string TrafficText(std::string_view time, std::string_view text) {
    while (text.ends_with('\n') || text.ends_with('\r')) text.remove_suffix(1);
    return fmt::format("{} {}\n", time, LogLine(ELogCategory::L1Data, ELogDirection::FromServer, text));
}

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
        const std::string line = TrafficText(Now(), *TakeLine(waiting));
        std::fwrite(line.data(), 1, line.size(), m_file.get());
    }
    m_lines.Drop(m_lines.Size());
    if (!m_file || std::ferror(m_file.get()) == 0) return;
    std::fprintf(stderr, "vxconnect: %s takes no more, the recording ends: %s\n", m_path.c_str(), std::strerror(errno));
    m_file.reset();
}

} // namespace vx::sim
