#pragma once

#include "watchlist/WatchlistSupplement.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vx {

/// Keeps the supplements of watchlist files, each under the path of its file and the hash of the content that it
/// belongs to, so that it never comes to a content it was not made for.
///
/// Errors  errno values where an int is returned, 0 for success
/// Thread  any
class CSupplementFiles {
public:
    /// Of one path; enough for the file and for every generation of it.
    static constexpr size_t kKeptOfOnePath = 6;

    explicit CSupplementFiles(std::string stateFolder) : m_stateFolder(std::move(stateFolder)) {}

    /// What Find has to say.
    struct SFound {
        std::optional<SWatchlistSupplement> supplement;
        bool otherContent = false; ///< There is none for this content, but one for another content of the file.
        bool damaged = false;      ///< There is one that cannot be read.
    };

    int Write(const std::string& path, uint64_t contentHash, const SWatchlistSupplement& supplement);
    /// The supplement of a content. A file that was moved takes along the one that was kept under its old path: it is
    /// put under the new one. A former content that was kept shares the one of its file.
    SFound Find(const std::string& path, uint64_t contentHash);
    bool Has(const std::string& path, uint64_t contentHash) const;
    void Remove(const std::string& path, uint64_t contentHash);
    /// Whether any content of the path has one. Then a content that needs none gets an empty one, so that its file is
    /// not taken for one that another program changed.
    bool HasAny(const std::string& path) const;
    /// Keeps the newest of a path only.
    void RemoveOld(const std::string& path);

private:
    std::string FileName(const std::string& path, uint64_t contentHash) const;
    bool TakeFromMovedFile(const std::string& path, uint64_t contentHash);

    std::string m_stateFolder;
};

} // namespace vx
