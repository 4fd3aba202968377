#include "vxconnect/data/InputPipeSource.h"

#include "base/Clock.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

namespace vx::sim {

CInputPipeSource::CInputPipeSource(const SOptions& options, std::unique_ptr<CByteStream> stream, CComplaints::Say say)
    : CDataSource(options), m_staleMs(int64_t{options.staleSeconds} * 1000),
      m_complaints(stream->Name(), std::move(say)),
      m_reader(options.names, CRowReader::EOrigin::Stream,
               [this](uint64_t line, const std::string& what) { m_complaints.Line(line, what); }),
      m_stream(std::move(stream)) {
    constexpr int kJudgeMs = 200;
    Data().SetGrowing();
    m_judge.setInterval(kJudgeMs);
    connect(&m_judge, &QTimer::timeout, this, [this] { Judge(); });
    m_stream->OnBytes = [this](std::string_view bytes) { Read(bytes); };
    m_stream->OnEnd = [this](const std::string& how) { End(how); };
}

std::string CInputPipeSource::Detail() const { return WireFieldOf(m_stream->Name()); }

bool CInputPipeSource::Open() {
    if (const std::string reason = m_stream->Open(); !reason.empty()) {
        m_complaints.Whole(reason);
        return false;
    }
    if (!m_lastEnd.empty() && Data().RecordCount() == 0) {
        m_complaints.Whole("no rows, nothing to serve");
        return false;
    }
    m_judge.start();
    Start();
    return true;
}

void CInputPipeSource::Read(std::string_view bytes) {
    m_reader.Append(bytes);
    ReadLines();
}

void CInputPipeSource::ReadLines() {
    for (;;) {
        switch (m_reader.Next(m_row)) {
        case CRowReader::EResult::NeedsMore:
            return;
        case CRowReader::EResult::NoRow:
            break;
        case CRowReader::EResult::Blank:
            if (Data().RecordCount() > 0) NoteLife();
            break;
        case CRowReader::EResult::Row:
            if (const std::string reason = Apply(m_row); reason.empty())
                NoteLife();
            else
                m_complaints.Line(m_reader.Line(), reason);
            break;
        }
    }
}

void CInputPipeSource::NoteLife() {
    m_lifeMs = CClock::Instance().MonotonicMs();
    SetLive(true);
}

void CInputPipeSource::End(const std::string& how) {
    m_reader.End();
    ReadLines();
    m_reader.Restart();
    if (m_live || how != m_lastEnd) m_complaints.Whole(how);
    m_lastEnd = how;
    SetLive(false);
}

void CInputPipeSource::Judge() {
    if (!m_live || m_staleMs == 0 || CClock::Instance().MonotonicMs() - m_lifeMs < m_staleMs) return;
    m_complaints.Whole(
        fmt::format("no data for {} s; an empty line would show that the source is alive", m_staleMs / 1000));
    SetLive(false);
}

void CInputPipeSource::SetLive(bool live) {
    if (live == m_live) return;
    m_live = live;
    if (OnLiveChanged) OnLiveChanged();
}

} // namespace vx::sim
