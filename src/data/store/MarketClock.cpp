// SPDX-License-Identifier: MIT
#include "data/store/MarketClock.h"

#include "base/DateTime.h"

#include <cstdio>

namespace vx {

namespace {

constexpr std::string_view kForm = "T,dddddddd dd:dd:dd"; ///< "d" is any digit.

bool HasForm(std::string_view line) {
    if (line.size() < kForm.size() || (line.size() > kForm.size() && line[kForm.size()] != ',')) return false;
    for (size_t i = 0; i < kForm.size(); ++i) {
        const bool digit = line[i] >= '0' && line[i] <= '9';
        if (kForm[i] == 'd' ? !digit : line[i] != kForm[i]) return false;
    }
    return true;
}

int Digits(std::string_view line, size_t from, size_t count) {
    int value = 0;
    for (const char c : line.substr(from, count)) value = value * 10 + (c - '0');
    return value;
}

} // namespace

bool CMarketClock::OnTimeMessage(std::string_view line) {
    if (!HasForm(line)) return false;
    SLocalTime time;
    time.year = Digits(line, 2, 4), time.month = Digits(line, 6, 2), time.day = Digits(line, 8, 2);
    time.hour = Digits(line, 11, 2), time.minute = Digits(line, 14, 2), time.second = Digits(line, 17, 2);
    if (!DateTimeFromLocal(time).valid) return false;
    m_time = time;
    return true;
}

std::string CMarketClock::Text() const {
    if (!m_time) return {};
    char text[64];
    const int size = std::snprintf(text, sizeof(text), "%02d/%02d/%02d %02d:%02d:%02d", m_time->month, m_time->day,
                                   m_time->year % 100, m_time->hour, m_time->minute, m_time->second);
    return {text, static_cast<size_t>(size)};
}

} // namespace vx
