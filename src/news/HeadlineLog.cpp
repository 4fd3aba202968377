// SPDX-License-Identifier: MIT
#include "news/HeadlineLog.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

constexpr size_t kMostTimeText = 40;

size_t BytesOf(const SHeadline& headline) {
    return sizeof(SHeadline) + headline.symbols.size() + headline.time.size() + headline.text.size();
}

bool AreDigits(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

bool SHeadline::IsAbout(std::string_view symbol) const {
    for (std::string_view left = symbols; !left.empty() && !symbol.empty();) {
        const size_t end = std::min(left.find(':'), left.size());
        if (left.substr(0, end) == symbol) return true;
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    return false;
}

void CHeadlineLog::Add(std::string_view line) {
    const std::optional<SNewsLine> news = ReadNewsLine(line);
    if (!news) return;
    m_headlines.push_back({++m_last, std::string(news->symbols), std::string(news->time.substr(0, kMostTimeText)),
                           std::string(news->headline)});
    m_bytes += BytesOf(m_headlines.back());
    while (m_headlines.size() > kMostHeadlines || m_bytes > kMostBytes) {
        m_bytes -= BytesOf(m_headlines.front());
        m_headlines.pop_front();
    }
}

void CHeadlineLog::Clear() {
    m_headlines.clear();
    m_bytes = 0;
}

const SHeadline* CHeadlineLog::Find(uint64_t number) const {
    if (number < FirstNumber() || number > m_last) return nullptr;
    return &m_headlines[static_cast<size_t>(number - FirstNumber())];
}

std::string HeadlineTime(std::string_view time) {
    constexpr size_t kDate = 8;
    constexpr size_t kWhole = 15;
    if (time.size() != kWhole || time[kDate] != ' ' || !AreDigits(time.substr(0, kDate)) ||
        !AreDigits(time.substr(kDate + 1)))
        return std::string(time);
    return fmt::format("{}-{}-{} {}:{}:{}", time.substr(0, 4), time.substr(4, 2), time.substr(6, 2), time.substr(9, 2),
                       time.substr(11, 2), time.substr(13, 2));
}

} // namespace vx
