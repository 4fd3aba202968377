// SPDX-License-Identifier: MIT
#pragma once

#include "base/AtomicFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// A backup of a file: an earlier content that a save replaced.
struct SBackup {
    int number = 0;      ///< Rises with every one that is kept.
    std::string path;    ///< Where the content stands, ready to be opened.
    int64_t savedAt = 0; ///< When it was the file's content first, seconds since 1970 UTC.
    uint64_t bytes = 0;
};

/// Keeps the last few contents that a file had before saves replaced them, each in a file of its own below the state
/// folder. They are told apart by their numbers, which rise, and by what they hold, never by a clock.
///
/// Thread  any; several programs at a time
class CFileBackups {
public:
    static constexpr size_t kKept = 5;

    explicit CFileBackups(std::string stateFolder) : m_stateFolder(std::move(stateFolder)) {}

    /// Takes the lock under which the file at a path is compared, kept and replaced: two windows that save it in the
    /// same instant do so one after the other.
    ///
    /// Errors  an errno value, and no lock: EWOULDBLOCK when another one keeps it for longer than kLockWaitMs
    /// Thread  blocks the calling thread for at most kLockWaitMs
    int Lock(const std::string& path, std::optional<CFileLock>& lock) const;
    static constexpr int kLockWaitMs = 60'000;

    // Under the lock.

    /// Keeps a content of the file at a path, unless it is the newest one kept already. made: the file that holds it
    /// now and did not before; empty for none.
    ///
    /// Units   savedAtNs: nanoseconds since 1970, the file's own time
    /// Errors  an errno value; what was kept before stays
    int Keep(const std::string& path, std::string_view content, int64_t savedAtNs, std::string& made) const;
    /// The oldest beyond kKept go: to be called when a content that Keep made room for was really replaced.
    void RemoveOld(const std::string& path) const;

    /// The backups of the file at a path, newest first.
    std::vector<SBackup> List(const std::string& path) const;

private:
    /// Errors  an errno value when some may be missing
    int List(const std::string& path, std::vector<SBackup>& backups) const;
    std::string Folder(const std::string& path) const;

    std::string m_stateFolder;
};

} // namespace vx
