// SPDX-License-Identifier: MIT
#include "vxconnect/data/InputSource.h"

#include "base/Clock.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx::sim {

namespace {

// Published files run from the oldest day to the newest or the other way round.
bool IsOlder(const SRow& row, const CDataRecord& record) {
    const auto isDate = [](const SRowValue& value) { return value.slot == static_cast<size_t>(EField::LastDate); };
    const auto date = std::find_if(row.values.begin(), row.values.end(), isDate);
    return date != row.values.end() && DayOf(date->text) < DayOf(record.Get(EField::LastDate));
}

} // namespace

CInputFileSource::CInputFileSource(const SOptions& options, CComplaints::Say say)
    : CDataSource(options), m_path(options.input), m_rate(options.rate > 0 ? options.rate : kInputRate),
      m_complaints(Shown(m_path), std::move(say)),
      m_reader(options.names, CRowReader::EOrigin::File, [this](uint64_t line, const std::string& what) {
          if (!m_reported) m_complaints.Line(line, what);
      }) {}

std::string CInputFileSource::Detail() const { return WireFieldOf(m_path.substr(m_path.rfind('/') + 1)); }

bool CInputFileSource::Begin() {
    m_reader.Restart();
    const std::string reason = m_file.Open(m_path);
    if (!reason.empty()) m_complaints.Whole(reason);
    return reason.empty();
}

// The next line of the file; NeedsMore at its end.
CRowReader::EResult CInputFileSource::Next() {
    for (;;) {
        const auto result = m_reader.Next(m_row);
        if (result != CRowReader::EResult::NeedsMore || m_ended) return result;
        const std::string_view bytes = m_file.Read();
        m_reader.Append(bytes);
        m_ended = bytes.empty();
        if (m_ended) m_reader.End();
    }
}

bool CInputFileSource::Open() {
    if (!Begin()) return false;
    for (;;) {
        const auto result = Next();
        if (result == CRowReader::EResult::NeedsMore) break;
        if (result == CRowReader::EResult::Row) ApplyFirstRow();
        // Without a header, every further line is wrong.
        if (result == CRowReader::EResult::NoRow && !m_reader.HasHeader()) break;
    }
    m_reported = true;
    if (Data().RecordCount() == 0) {
        m_complaints.Whole("no rows, nothing to serve");
        return false;
    }
    m_played.resize(Data().RecordCount());
    m_ended = false;
    if (!Begin()) return false;
    Start();
    return true;
}

void CInputFileSource::ApplyFirstRow() {
    if (const auto known = Data().Find(m_row.symbol); known && Data().Record(*known).Symbol() == m_row.symbol) return;
    if (const std::string reason = Apply(m_row); !reason.empty()) m_complaints.Line(m_reader.Line(), reason);
}

void CInputFileSource::Advance(double seconds) {
    QElapsedTimer elapsed;
    elapsed.start();
    for (m_due += seconds * m_rate; m_due >= 1 && elapsed.elapsed() < kSliceBudgetMs;) {
        const auto result = Next();
        if (result == CRowReader::EResult::NeedsMore) break;
        if (result == CRowReader::EResult::Row) Play();
    }
    m_due = std::min(m_due, m_rate); // What a machine that is too slow cannot play is played later.
}

void CInputFileSource::Play() {
    const auto index = Data().Find(m_row.symbol);
    if (index && *index < m_played.size() && !m_played[*index]) {
        m_played[*index] = true;
        return;
    }
    if (index && IsOlder(m_row, Data().Record(*index))) return;
    if (Apply(m_row).empty()) m_due -= 1;
}

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
