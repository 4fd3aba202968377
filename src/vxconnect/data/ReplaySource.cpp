// SPDX-License-Identifier: MIT
#include "vxconnect/data/ReplaySource.h"

#include "base/Text.h"
#include "base/fields/FundamentalFields.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace vx::sim {

namespace {

constexpr char kSummary = 'P';
constexpr char kFundamentals = 'F';

// The time stamp "2024-01-31 09:30:00.123" before a line as "20240131 09:30:00".
std::string RecordedTime(std::string_view line) {
    return fmt::format("{}{}{} {}", line.substr(0, 4), line.substr(5, 2), line.substr(8, 2), line.substr(11, 8));
}

std::string_view SymbolOf(std::string_view line) {
    const std::string_view rest = line.substr(2);
    return TrimBlanks(rest.substr(0, rest.find(',')));
}

} // namespace

bool ReadDataLine(std::string_view line, SRow& row) {
    row.symbol = SymbolOf(line);
    row.values.clear();
    if (!IsSymbolText(row.symbol)) return false;
    const bool fundamental = line[0] == kFundamentals;
    const auto fields = SplitTerminated(line.substr(2), ',');
    const size_t count = std::min(fields.size(), fundamental ? kFundamentalSlotCount : kUpdateFieldCount);
    for (size_t i = 1; i < count; ++i)
        if (const std::string_view text = TrimBlanks(fields[i]); !text.empty())
            row.values.push_back({fundamental ? kUpdateFieldCount + i : i, std::string(text)});
    return true;
}

CReplaySource::CReplaySource(const SOptions& options)
    : CDataSource(options), m_path(options.replay), m_speed(options.speed) {}

std::string CReplaySource::Open() {
    if (const std::string reason = m_file.Open(m_path); !reason.empty())
        return fmt::format("{}: {}", Shown(m_path), reason);
    if (!Scan()) return fmt::format("{}: more than {} symbols", Shown(m_path), CDataFeed::kMaxRecords);
    if (Data().RecordCount() == 0) return fmt::format("{}: no feed traffic", Shown(m_path));
    if (const std::string reason = m_file.Open(m_path); !reason.empty())
        return fmt::format("{}: {}", Shown(m_path), reason);
    m_ended = !ReadNext();
    Start();
    return {};
}

// Finds the symbols, their first fundamentals and summaries, and the first time told: by a line of the market's time,
// else by the first trade or quote, else by the first time stamp.
bool CReplaySource::Scan() {
    std::unordered_set<SymbolIndex> summaries, fundamentals;
    std::string marketTime, stamp;
    CDataClock tradeTime;
    while (const auto line = m_file.Next()) {
        const auto traffic = line->tooLong ? std::nullopt : ReadTrafficLine(line->text);
        if (!traffic) continue;
        const char letter = traffic->text[0];
        if (stamp.empty() && traffic->timeMs) stamp = RecordedTime(line->text);
        if (letter == 'T' && marketTime.empty()) marketTime = traffic->text.substr(2);
        if (letter == 'T' || letter == 'N' || !ReadDataLine(traffic->text, m_row)) continue;
        const auto index = Data().Add(m_row.symbol);
        if (!index && Data().IsFull()) return false;
        if (!index) continue; // In other letters than before.
        if (letter != 'R' && !tradeTime.HasTime()) {
            CDataRecord row(m_row.symbol);
            tradeTime.Hear(row, row.Merge(m_row, true).changed);
        }
        const bool wanted = letter == kSummary        ? summaries.insert(*index).second
                            : letter == kFundamentals ? fundamentals.insert(*index).second
                                                      : false;
        if (wanted) Data().Record(*index).Merge(m_row, true);
    }
    Clock() = tradeTime;
    if (!tradeTime.HasTime()) Clock().Set(stamp);
    Clock().Set(marketTime);
    return true;
}

bool CReplaySource::ReadNext() {
    while (const auto line = m_file.Next()) {
        m_next = line->tooLong ? std::nullopt : ReadTrafficLine(line->text);
        if (!m_next) continue;
        int64_t pause = kUntimedMs;
        if (m_next->timeMs)
            pause = m_lastTimeMs ? std::clamp<int64_t>(*m_next->timeMs - *m_lastTimeMs, 0, kLongestPauseMs) : 0;
        if (m_next->timeMs) m_lastTimeMs = m_next->timeMs;
        m_nextMs += static_cast<double>(pause);
        return true;
    }
    m_next.reset();
    return false;
}

void CReplaySource::Advance(double seconds) {
    QElapsedTimer elapsed;
    elapsed.start();
    constexpr double kMostBehindMs = 1000; // A machine that is too slow plays slower.
    m_nowMs = std::min(m_nowMs + seconds * 1000 * m_speed, m_nextMs + kMostBehindMs * std::max(1.0, m_speed));
    for (; !m_ended && m_nextMs <= m_nowMs && elapsed.elapsed() < kSliceBudgetMs; m_ended = !ReadNext())
        PlayLine(m_next->text);
}

void CReplaySource::PlayLine(std::string_view line) {
    switch (line[0]) {
    case 'T':
        return Clock().Set(line.substr(2));
    case 'N':
        return PlayHeadline(line);
    case 'R':
        return PlayRegion(line);
    default:
        return PlayRow(line);
    }
}

void CReplaySource::PlayRow(std::string_view line) {
    if (!ReadDataLine(line, m_row)) return;
    const auto index = Data().Add(m_row.symbol);
    if (!index) return;
    CDataRecord& record = Data().Record(*index);
    const bool update = line[0] == 'Q';
    // The first ones were sent when the watch began: only what is new is sent again.
    if (!update && !record.Differs(m_row)) return;
    SUpdate changes = record.Merge(m_row, true);
    Clock().Hear(record, changes.changed);
    if (!update) {
        changes.newSummary = line[0] == kSummary;
        changes.changed = {};
    }
    Data().Changed(*index, changes);
}

void CReplaySource::PlayRegion(std::string_view line) {
    constexpr size_t kLongest = 1024; // They are kept, one for each region.
    const auto fields = SplitTerminated(line, ',');
    if (fields.size() < 3 || line.size() > kLongest || !IsSymbolText(SymbolOf(line))) return;
    const auto index = Data().Add(SymbolOf(line));
    if (index) Data().Changed(*index, Data().Record(*index).MergeRegion(fields[2], std::string(line) + "\r\n"));
}

void CReplaySource::PlayHeadline(std::string_view line) {
    constexpr size_t kSymbols = 3, kLeastFields = 6;
    const auto fields = SplitCountingTail(line, ',');
    if (fields.size() < kLeastFields) return;
    for (const std::string_view symbol : SplitCountingTail(fields[kSymbols], ':'))
        if (Data().Find(symbol)) CountStory(symbol);
    if (OnHeadline) OnHeadline(std::string(line) + "\r\n");
}

} // namespace vx::sim
