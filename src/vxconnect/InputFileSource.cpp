#include "vxconnect/InputFileSource.h"

#include "vxconnect/WireText.h"

#include <algorithm>
#include <cstdio>

#include <fmt/format.h>

namespace vx::sim {

namespace {

std::string FileName(const std::string& path) {
    std::string name = Shown(path.substr(path.rfind('/') + 1));
    std::replace(name.begin(), name.end(), ',', ' ');
    return name;
}

} // namespace

CInputFileSource::CInputFileSource(const SOptions& options)
    : CDataSource(options), m_path(options.input), m_rate(options.rate > 0 ? options.rate : kInputRate) {}

std::string CInputFileSource::Detail() const { return FileName(m_path); }

bool CInputFileSource::ApplyFirstRow(const SRow& row) { return Data().Find(row.symbol) || Apply(row, false); }

std::vector<std::string> CInputFileSource::Open() {
    std::vector<std::string> errors;
    uint64_t count = 0;
    const auto complain = [&](const SInputLine& line, std::string_view what) {
        if (++count <= kMostErrors) errors.push_back(fmt::format("{} line {}: {}", Shown(m_path), line.number, what));
    };
    if (const std::string reason = m_file.Open(m_path); !reason.empty())
        return {fmt::format("{}: {}", Shown(m_path), reason)};
    while (const auto line = m_file.Next()) {
        const bool hadHeader = m_reader.HasHeader();
        if (line->tooLong) {
            complain(*line, fmt::format("longer than {} bytes", CLineBuffer::kMaxLine));
        } else if (const auto result = m_reader.Read(line->text, m_row); result == CRowReader::EResult::Error) {
            complain(*line, m_reader.Error());
        } else if (result == CRowReader::EResult::Row && !ApplyFirstRow(m_row)) {
            complain(*line, fmt::format("more than {} symbols", CDataFeed::kMaxRecords));
        }
        if (count > 0 && !hadHeader) break; // Without a header, every further line is wrong.
    }
    if (count > kMostErrors) errors.push_back(fmt::format("{} more", count - kMostErrors));
    if (count == 0 && Data().RecordCount() == 0) errors.push_back(fmt::format("{}: no rows", Shown(m_path)));
    if (!errors.empty()) return errors;
    m_played.resize(Data().RecordCount());
    m_reader = {};
    if (const std::string reason = m_file.Open(m_path); !reason.empty())
        return {fmt::format("{}: {}", Shown(m_path), reason)};
    Start();
    return {};
}

void CInputFileSource::Advance(double seconds) {
    QElapsedTimer elapsed;
    elapsed.start();
    for (m_due += seconds * m_rate; m_due >= 1 && !m_ended && elapsed.elapsed() < kSliceBudgetMs;) {
        const auto line = m_file.Next();
        m_ended = !line;
        if (line) PlayLine(*line);
    }
    m_due = std::min(m_due, m_rate); // What a machine that is too slow cannot play is played later.
}

// The file may have changed since it was read: what is wrong now is told and passed over.
void CInputFileSource::PlayLine(const SInputLine& line) {
    const auto result = line.tooLong ? CRowReader::EResult::NoRow : m_reader.Read(line.text, m_row);
    if (result == CRowReader::EResult::Error)
        std::fprintf(stderr, "vxconnect: %s line %llu: %s\n", Shown(m_path).c_str(),
                     static_cast<unsigned long long>(line.number), m_reader.Error().c_str());
    if (result != CRowReader::EResult::Row) return;
    const auto index = Data().Find(m_row.symbol);
    if (index && *index < m_played.size() && !m_played[*index]) {
        m_played[*index] = true;
        return;
    }
    Apply(m_row, false);
    m_due -= 1;
}

} // namespace vx::sim
