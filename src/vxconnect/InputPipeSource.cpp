#include "vxconnect/InputPipeSource.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <fmt/format.h>
#include <poll.h>
#include <unistd.h>

namespace vx::sim {

CInputPipeSource::CInputPipeSource(const SOptions& options, int descriptor,
                                   std::function<void(const std::string&)> complain)
    : CDataSource(options), m_descriptor(descriptor), m_complain(std::move(complain)),
      m_readable(descriptor, QSocketNotifier::Read) {
    m_readable.setEnabled(false);
    connect(&m_readable, &QSocketNotifier::activated, this, [this] { Read(); });
}

bool CInputPipeSource::Open() {
    constexpr int kMomentMs = 50, kMostMs = 1000;
    QElapsedTimer elapsed;
    elapsed.start();
    pollfd ready{m_descriptor, POLLIN, 0};
    while (!m_ended && elapsed.elapsed() < kMostMs && poll(&ready, 1, kMomentMs) > 0) Read();
    if (m_ended && Data().RecordCount() == 0) return false;
    m_readable.setEnabled(!m_ended);
    Start();
    return true;
}

// One read for each time that something has come, so that it never waits.
void CInputPipeSource::Read() {
    constexpr size_t kBlock = 64 * 1024;
    std::array<char, kBlock> block;
    const ssize_t count = read(m_descriptor, block.data(), block.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count > 0) {
        m_lines.Append({block.data(), static_cast<size_t>(count)});
    } else {
        if (count < 0) m_complain(fmt::format("standard input: {}", std::strerror(errno)));
        m_ended = true;
        m_lines.End();
        m_readable.setEnabled(false);
    }
    ReadLines();
    if (count == 0 && Data().RecordCount() == 0) m_complain("standard input: no rows, nothing to serve");
}

void CInputPipeSource::ReadLines() {
    while (const auto line = m_lines.Next()) {
        if (line->tooLong) {
            Complain(line->number, fmt::format("longer than {} bytes", CLineBuffer::kMaxLine));
        } else if (const auto result = m_reader.Read(line->text, m_row); result == CRowReader::EResult::Error) {
            Complain(line->number, m_reader.Error());
        } else if (result == CRowReader::EResult::Row && !Apply(m_row, false)) {
            Complain(line->number, fmt::format("more than {} symbols", CDataFeed::kMaxRecords));
        }
    }
}

void CInputPipeSource::Complain(uint64_t line, std::string_view what) {
    ++m_errors;
    if (m_errors > kMostErrors && m_errors % kErrorStep != 0) return;
    const std::string count = m_errors > kMostErrors ? fmt::format(" (error {})", m_errors) : std::string();
    m_complain(fmt::format("standard input line {}: {}{}", line, what, count));
}

} // namespace vx::sim
