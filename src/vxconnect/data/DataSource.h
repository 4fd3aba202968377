#pragma once

#include "vxconnect/common/Options.h"
#include "vxconnect/common/Source.h"
#include "vxconnect/data/DataClock.h"
#include "vxconnect/data/DataFeed.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <string>
#include <unordered_map>

namespace vx::sim {

/// What all sources that serve data from outside share: the feed, the market's time as the data tell it, and slices of
/// time in which they go on.
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
