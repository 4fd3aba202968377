// SPDX-License-Identifier: MIT
#include "base/LogFile.h"

#include "base/AtomicFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fmt/format.h>
#include <tuple>
#include <utility>
#include <vector>

namespace vx {

namespace {

constexpr size_t kWriteBytes = 64 * 1024;
constexpr size_t kTimeStampBytes = 23;

struct SLogPart {
    SLogDay day;
    int part = 1;

    bool operator<(const SLogPart& other) const {
        return std::tie(day.year, day.month, day.day, part) <
               std::tie(other.day.year, other.day.month, other.day.day, other.part);
    }
};

std::string FileName(const SLogPart& part) {
    const std::string stem = fmt::format("zantrel-{:04}-{:02}-{:02}", part.day.year, part.day.month, part.day.day);
    return part.part == 1 ? stem + ".log" : fmt::format("{}.{}.log", stem, part.part);
}

/// The files of the log in a folder, oldest first; other files are none of its business.
std::vector<SLogPart> PartsIn(const std::string& folder) {
    std::vector<SLogPart> parts;
    std::vector<std::string> names;
    Disk().List(folder, names);
    for (const std::string& name : names) {
        SLogPart part;
        if (std::sscanf(name.c_str(), "zantrel-%4d-%2d-%2d.%d.log", &part.day.year, &part.day.month, &part.day.day,
                        &part.part) >= 3 &&
            name == FileName(part))
            parts.push_back(part);
    }
    std::sort(parts.begin(), parts.end());
    return parts;
}

} // namespace

CLogFile::CLogFile(std::string folder, uint64_t maxFileBytes, int keptFiles)
    : m_folder(std::move(folder)), m_maxFileBytes(maxFileBytes), m_keptFiles(std::max(keptFiles, 1)) {}

CLogFile::~CLogFile() { Flush(); }

std::string CLogFile::PathOf(const SLogDay& day, int part) const { return m_folder + "/" + FileName({day, part}); }

int CLogFile::Open(const SLogDay& day) {
    m_file.reset();
    m_day = day;
    if (const int error = MakeFolders(m_folder)) return error;
    int part = 1;
    for (const SLogPart& present : PartsIn(m_folder))
        if (present.day == day) part = present.part;
    SFileSignature signature;
    ReadSignature(PathOf(day, part), signature);
    if (static_cast<uint64_t>(signature.size) >= m_maxFileBytes) ++part;
    if (const int error = Disk().Open(PathOf(day, part), EOpen::Append, 0600, m_file)) return error;
    RemoveOldest();
    return 0;
}

// A clock that was wrong leaves files of days to come. They do not count, or today's would be the oldest.
void CLogFile::RemoveOldest() const {
    std::vector<SLogPart> parts = PartsIn(m_folder);
    std::erase_if(parts, [this](const SLogPart& part) { return SLogPart{m_day} < SLogPart{part.day}; });
    const size_t kept = static_cast<size_t>(m_keptFiles);
    for (size_t i = 0; i + kept < parts.size(); ++i) Disk().Remove(PathOf(parts[i].day, parts[i].part));
}

void CLogFile::Append(const SLogDay& day, std::string_view line) {
    if (!(day == m_day)) {
        Flush();
        m_file.reset();
        m_day = day;
    }
    m_waiting.append(line);
    m_waiting.push_back('\n');
    ++m_waitingLines;
    if (m_waiting.size() >= kWriteBytes) Flush();
}

/// Makes sure that there is a file that takes more: not full, and not removed by someone else.
bool CLogFile::Reopen() {
    SFileStatus status;
    if (m_file && m_file->Status(status) == 0 && status.names > 0 &&
        static_cast<uint64_t>(status.signature.size) < m_maxFileBytes)
        return true;
    const int error = Open(m_day);
    if (error != 0) Lose(error);
    return error == 0;
}

void CLogFile::Flush() {
    if (m_waiting.empty() || !Reopen()) return;
    std::string text = std::move(m_waiting);
    const uint64_t lines = std::exchange(m_waitingLines, 0);
    m_waiting.clear();
    if (m_lostLines > 0)
        text = fmt::format("{}{} [Information] [STATUS] {} lines of the log could not be written ({}).\n{}",
                           m_brokenLine ? "\n" : "", text.substr(0, kTimeStampBytes), m_lostLines, m_lostReason, text);
    size_t done = 0;
    while (done < text.size()) {
        size_t count = 0;
        if (const int error = m_file->Write(std::string_view(text).substr(done), count)) {
            m_brokenLine = done > 0 ? text[done - 1] != '\n' : m_brokenLine;
            m_waitingLines = lines;
            return Lose(error);
        }
        done += count;
    }
    m_lostLines = 0;
    m_saidSo = m_brokenLine = false;
}

/// Gives the waiting lines up.
void CLogFile::Lose(int error) {
    m_lostLines += std::exchange(m_waitingLines, 0);
    m_waiting.clear();
    m_lostReason = std::strerror(error);
    if (!m_saidSo)
        std::fprintf(stderr, "The log in %s cannot be written: %s\n", m_folder.c_str(), m_lostReason.c_str());
    m_saidSo = true;
}

} // namespace vx
