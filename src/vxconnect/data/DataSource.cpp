#include "vxconnect/data/DataSource.h"

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

} // namespace vx::sim
