// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Feed.h"
#include "vxconnect/common/Options.h"
#include "vxconnect/data/DataRecord.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::sim {

/// Reports what is wrong with a user's own data, one line each: the first kMostTold errors, then only every kStep-th.
class CComplaints {
public:
    static constexpr uint64_t kMostTold = 20;
    static constexpr uint64_t kStep = 1000;

    using Say = std::function<void(const std::string& line)>;

    /// name: that of the data, "quotes.csv".
    CComplaints(std::string name, Say say) : m_name(std::move(name)), m_say(std::move(say)) {}

    /// A line of the data is wrong.
    void Line(uint64_t number, std::string_view what);
    /// Something is wrong with the data as a whole; always reported.
    void Whole(std::string_view what) const;

private:
    const std::string m_name;
    const Say m_say;
    uint64_t m_count = 0;
};

/// The market's time as data tell it: the latest of all trade and quote times so far, so that none of them lies after
/// it. It never goes back within a day. Before data have told a time, it is this computer's.
class CDataClock {
public:
    /// Hears the times of an update. A quote's time belongs to the newest day known.
    void Hear(const CDataRecord& record, const CFieldMask& changed);
    /// Sets it: "20240131 09:30:05" as a recorded time line has it; other texts are passed over.
    void Set(std::string_view text);
    /// Whether data have told a time of day.
    bool HasTime() const { return m_second >= 0; }
    /// "20240131 09:30:05"
    std::string Text() const;

private:
    int64_t m_day = 0; // Packed date, 0: none told.
    int m_second = -1; // Of the day, -1: none told.
};

/// A feed of records whose values come from outside: a user's own data or a recording. It has no market of its own, and
/// its symbols are found in any case of their letters A to Z.
class CDataFeed final : public CFeed {
public:
    static constexpr size_t kMaxRecords = 100'000;

    /// The clock is read each time its text is sent.
    CDataFeed(uint32_t limit, std::function<std::string()> clock) : CFeed(limit), m_clock(std::move(clock)) {}

    std::optional<SymbolIndex> Find(std::string_view symbol) override;
    std::string FundamentalLine(SymbolIndex index, std::string_view symbol) override {
        return m_records[index]->FundamentalLine(symbol);
    }
    std::string ClockText() const override { return m_clock(); }
    bool MayCome() const override { return m_growing; }
    /// New symbols may come at any time.
    void SetGrowing() { m_growing = true; }

    /// The record of a symbol, made when there is none yet; nothing when there are kMaxRecords others, or one of the
    /// same symbol in other letters.
    std::optional<SymbolIndex> Add(std::string_view symbol);
    /// Why a symbol has no record, in words.
    std::string WhyNone(std::string_view symbol) const;
    bool IsFull() const { return m_records.size() == kMaxRecords; }
    CDataRecord& Record(SymbolIndex index) { return *m_records[index]; }
    size_t RecordCount() const { return m_records.size(); }
    /// Tells those who watch a record what changed in it.
    void Changed(SymbolIndex index, const SUpdate& update);

    uint64_t DirectoryVersion() const { return m_records.size() + m_factChanges; }
    void ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const;

protected:
    std::unique_ptr<SWatched> Begin(SymbolIndex index) override;

private:
    const std::function<std::string()> m_clock;
    bool m_growing = false;
    std::vector<std::unique_ptr<CDataRecord>> m_records;
    uint64_t m_factChanges = 0; // How often a name, market or type may have become another one.
    std::unordered_map<std::string, SymbolIndex> m_bySymbol; // By the symbol in capital letters.
};

/// What all sources that serve data from outside share: the feed, the market's time as the data tell it, and slices of
/// time in which they continue.
class CDataSource : public QObject, public CSource {
public:
    explicit CDataSource(const SOptions& options);

    CFeed& Feed() final { return m_feed; }
    void Run() final;
    uint64_t DirectoryVersion() const final { return m_feed.DirectoryVersion(); }
    void ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const final {
        m_feed.ForEachSymbol(visit);
    }
    std::optional<uint32_t> StoryCount(std::string_view symbol) final;

protected:
    static constexpr int kSliceMs = 10;
    static constexpr int kSliceBudgetMs = 25; ///< After so long, a slice makes room for everything else.

    /// Goes on by a time; at most kSliceBudgetMs of work. Called only once somebody has watched a symbol.
    virtual void Advance(double seconds) = 0;

    CDataFeed& Data() { return m_feed; }
    CDataClock& Clock() { return m_clock; }
    /// Merges a row into its record; those who watch it hear of it.
    ///
    /// Returns why there is no record for it, in words; empty for success
    std::string Apply(const SRow& row);
    void CountStory(std::string_view symbol) { ++m_stories[std::string(symbol)]; }
    /// Runs now and then until the source ends.
    void Start();

private:
    CDataClock m_clock;
    CDataFeed m_feed;
    const int m_sliceMs;
    bool m_begun = false;
    QTimer m_timer;
    QElapsedTimer m_elapsed;
    std::unordered_map<std::string, uint32_t> m_stories; // Of symbols that exist.
};

} // namespace vx::sim
