// SPDX-License-Identifier: MIT
#pragma once

#include "base/FileSystem.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vx {

struct SLogDay {
    int year = 0;
    int month = 0; ///< 1..12
    int day = 0;   ///< 1..31

    bool operator==(const SLogDay&) const = default;
};

/// The files of the log in one folder: one a day, a next part when it is full, the newest few kept, besides those that
/// are dated in the future. Several processes may write into one folder: lines are appended whole.
///
/// Owns    the open file
/// Thread  one at a time
class CLogFile {
public:
    CLogFile(std::string folder, uint64_t maxFileBytes, int keptFiles);
    ~CLogFile();

    /// Opens the day's newest part that is not full and removes the oldest files.
    ///
    /// Errors  an errno value, 0 for success
    int Open(const SLogDay& day);

    /// Adds one line, without its line end; it reaches the file with the next Flush or once 64 KiB are waiting.
    ///
    /// Errors  lines that cannot be written are counted; standard error says so once, and the file gets the count
    ///         when it takes lines again
    void Append(const SLogDay& day, std::string_view line);
    void Flush();

private:
    std::string PathOf(const SLogDay& day, int part) const;
    void RemoveOldest() const;
    bool Reopen();
    void Lose(int error);

    const std::string m_folder;
    const uint64_t m_maxFileBytes;
    const int m_keptFiles;
    std::unique_ptr<COpenFile> m_file;
    SLogDay m_day;
    std::string m_waiting; ///< Whole lines that are not in the file yet.
    uint64_t m_waitingLines = 0;
    uint64_t m_lostLines = 0;
    std::string m_lostReason;
    bool m_saidSo = false;
    bool m_brokenLine = false; ///< The file ends inside a line.
};

} // namespace vx
