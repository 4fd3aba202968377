// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/file/FileBackups.h"
#include "watchlist/fileformat/WatchlistSupplement.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vx {

/// The supplements that older versions of the program left, each under the path of its file and the hash of the content
/// that it belongs to. They are read, and go when their file is saved; none is written.
///
/// Thread  any
class CSupplementFiles {
public:
    explicit CSupplementFiles(std::string stateFolder) : m_stateFolder(std::move(stateFolder)) {}

    /// What Find has to say.
    struct SFound {
        std::optional<SWatchlistSupplement> supplement;
        bool otherContent = false; ///< There is none for this content, but one for another content of the file.
        bool damaged = false;      ///< There is one that cannot be read.
    };

    /// The supplement of a content of a file, also when the file was moved since: then its old path leads nowhere.
    SFound Find(const std::string& path, uint64_t contentHash) const;
    /// The file at a path was saved. Its supplements go, but those of its backups move beside these.
    void Retire(const std::string& path, const std::vector<SBackup>& backups) const;

    /// The supplement that belongs to a backup.
    static std::string BesideBackup(const std::string& backup) { return backup + kExtension; }

private:
    static constexpr const char* kExtension = ".supplement";

    bool IsBackup(const std::string& path) const;
    SFound FindMoved(const std::string& path, uint64_t contentHash) const;

    std::string m_stateFolder;
};

} // namespace vx
