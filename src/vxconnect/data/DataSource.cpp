// SPDX-License-Identifier: MIT
#include "vxconnect/data/DataSource.h"

#include "base/Number.h"
#include "base/Text.h"
#include "base/fields/FundamentalFields.h"
#include "vxconnect/common/SessionClock.h"
#include "vxconnect/common/WireText.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <ctime>

namespace vx::sim {

CDataSource::CDataSource(const SOptions& options)
    : m_feed(options.limit, [this] { return m_clock.Text(); }), m_sliceMs(options.burst ? kBurstMs : kSliceMs) {
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { Run(); });
}

void CDataSource::Start() { m_timer.start(m_sliceMs); }

void CDataSource::Run() {
    if (!m_begun && m_feed.WatchedCount() == 0) return;
    const double seconds = m_begun ? static_cast<double>(m_elapsed.nsecsElapsed()) * 1e-9 : 0;
    m_begun = true;
    m_elapsed.start();
    Advance(seconds);
    if (OnSlice) OnSlice();
}

std::string CDataSource::Apply(const SRow& row) {
    const size_t known = m_feed.RecordCount();
    const auto index = m_feed.Add(row.symbol);
    if (!index) return m_feed.WhyNone(row.symbol);
    CDataRecord& record = m_feed.Record(*index);
    const SUpdate update = record.Merge(row, false);
    m_clock.Hear(record, update.changed);
    m_feed.Changed(*index, update);
    if (m_feed.RecordCount() > known && m_feed.OnSymbolCame) m_feed.OnSymbolCame(row.symbol);
    return {};
}

std::optional<uint32_t> CDataSource::StoryCount(std::string_view symbol) {
    if (!m_feed.Find(symbol)) return std::nullopt;
    const auto found = m_stories.find(std::string(symbol));
    return found == m_stories.end() ? 0 : found->second;
}

namespace {

// Slots of the fundamental line.
constexpr size_t kNameSlot = kUpdateFieldCount + FundamentalSlot("Name");
constexpr size_t kMarketSlot = kUpdateFieldCount + FundamentalSlot("Listed Market");
constexpr size_t kTypeSlot = kUpdateFieldCount + FundamentalSlot("Security Type");

} // namespace

std::optional<SymbolIndex> CDataFeed::Find(std::string_view symbol) {
    const auto found = m_bySymbol.find(UpperAscii(symbol));
    if (found == m_bySymbol.end()) return std::nullopt;
    return found->second;
}

std::optional<SymbolIndex> CDataFeed::Add(std::string_view symbol) {
    if (const auto index = Find(symbol)) return m_records[*index]->Symbol() == symbol ? index : std::nullopt;
    if (IsFull()) return std::nullopt;
    const auto index = static_cast<SymbolIndex>(m_records.size());
    m_records.push_back(std::make_unique<CDataRecord>(std::string(symbol)));
    m_bySymbol.emplace(UpperAscii(symbol), index);
    return index;
}

std::string CDataFeed::WhyNone(std::string_view symbol) const {
    const auto found = m_bySymbol.find(UpperAscii(symbol));
    if (found == m_bySymbol.end()) return fmt::format("more than {} symbols", kMaxRecords);
    return fmt::format("symbol \"{}\" differs from \"{}\" only in letter case and is refused", Shown(symbol),
                       Shown(m_records[found->second]->Symbol()));
}

void CDataFeed::Changed(SymbolIndex index, const SUpdate& update) {
    m_factChanges += update.newFundamentals;
    if (update.changed.Empty() && update.regions == 0 && !update.newFundamentals && !update.newSummary) return;
    if (SWatched* const watched = FindWatched(index)) Tell(*watched, update);
}

std::unique_ptr<SWatched> CDataFeed::Begin(SymbolIndex index) {
    auto watched = std::make_unique<SWatched>();
    watched->security = m_records[index].get();
    return watched;
}

void CDataFeed::ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const {
    for (const auto& record : m_records)
        if (!visit({record->Symbol(), record->Get(kNameSlot), ReadInt32(record->Get(kMarketSlot)),
                    ReadInt32(record->Get(kTypeSlot))}))
            return;
}

namespace {

std::tm LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

int64_t Today() {
    const std::tm now = LocalNow();
    return (now.tm_year + 1900) * 10000 + (now.tm_mon + 1) * 100 + now.tm_mday;
}

// "09:30:05", with or without a letter behind, as seconds; -1 for anything else.
int SecondOf(std::string_view text) {
    const auto parts = SplitCountingTail(text, ':');
    if (parts.size() != 3) return -1;
    const int hour = ReadInt32(parts[0]), minute = ReadInt32(parts[1]), second = ReadInt32(parts[2]);
    const bool good = std::min({hour, minute, second}) >= 0 && hour < 24 && minute < 60 && second < 60;
    return good ? (hour * 60 + minute) * 60 + second : -1;
}

constexpr std::array<EField, 3> kDays = {EField::LastDate, EField::RecentDate, EField::ExtendedDate};
constexpr std::array<EField, 5> kTimes = {EField::LastTime, EField::RecentTime, EField::ExtendedTime, EField::BidTime,
                                          EField::AskTime};

} // namespace

void CDataClock::Hear(const CDataRecord& record, const CFieldMask& changed) {
    for (const EField field : kDays) {
        const int64_t day = changed.Has(field) ? DayOf(record.Get(field)) : 0;
        if (day <= m_day) continue;
        m_day = day;
        m_second = -1;
    }
    for (const EField field : kTimes)
        if (changed.Has(field)) m_second = std::max(m_second, SecondOf(record.Get(field)));
}

void CDataClock::Set(std::string_view text) {
    const auto parts = SplitCountingTail(text, ' ');
    if (parts.size() != 2 || SecondOf(parts[1]) < 0 || !IsPackedDate(ReadInt32(parts[0]))) return;
    m_day = ReadInt32(parts[0]);
    m_second = SecondOf(parts[1]);
}

std::string CDataClock::Text() const {
    if (m_second < 0 && m_day == 0) return fmt::format("{:%Y%m%d %H:%M:%S}", LocalNow());
    const int second = std::max(0, m_second);
    return fmt::format("{:08} {:02}:{:02}:{:02}", m_day != 0 ? m_day : Today(), second / 3600, second / 60 % 60,
                       second % 60);
}

void CComplaints::Line(uint64_t number, std::string_view what) {
    ++m_count;
    if (m_count > kMostTold && m_count % kStep != 0) return;
    const std::string count = m_count > kMostTold ? fmt::format(" (error {})", m_count) : std::string();
    m_say(fmt::format("{} line {}: {}{}", m_name, number, what, count));
    if (m_count == kMostTold) m_say(fmt::format("{}: from here on, only every {}th error is reported", m_name, kStep));
}

void CComplaints::Whole(std::string_view what) const { m_say(fmt::format("{}: {}", m_name, what)); }

} // namespace vx::sim
