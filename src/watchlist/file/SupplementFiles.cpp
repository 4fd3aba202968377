// SPDX-License-Identifier: MIT
#include "watchlist/file/SupplementFiles.h"

#include "base/AtomicFile.h"
#include "base/Hash.h"
#include "base/Text.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <fmt/format.h>

namespace vx {

namespace {

constexpr size_t kMostBytes = size_t{256} * 1024 * 1024;
constexpr std::string_view kPathKey = "path ";

/// The files of a folder whose names begin and end so.
std::vector<std::string> ListFiles(const std::string& folder, const std::string& beginning, const std::string& ending) {
    std::vector<std::string> out;
    std::vector<std::string> names;
    Disk().List(folder, names);
    for (const std::string& name : names)
        if (name.starts_with(beginning) && name.ends_with(ending)) out.push_back(folder + "/" + name);
    return out;
}

std::string Beginning(const std::string& path) { return HashName(ContentHash(PathKey(path))) + "-"; }

/// Takes the first line of a supplement's file, which names the file that it belongs to.
std::string TakePath(std::string_view& text) {
    std::string_view line = TakeUntil(text, '\n');
    std::string path;
    if (!line.starts_with(kPathKey) || !UnescapeBytes(line.substr(kPathKey.size()), path)) return {};
    return path;
}

CSupplementFiles::SFound ReadSupplement(const std::string& file) {
    CSupplementFiles::SFound found;
    SFileImage image;
    if (ReadWholeFile(file, kMostBytes, image) == 0) {
        std::string_view text = image.content;
        TakePath(text);
        found.supplement = ParseSupplement(text);
    }
    found.damaged = !found.supplement;
    return found;
}

} // namespace

bool CSupplementFiles::IsBackup(const std::string& path) const {
    return path.starts_with(BackupsFolder(m_stateFolder) + "/");
}

CSupplementFiles::SFound CSupplementFiles::Find(const std::string& path, uint64_t contentHash) const {
    const std::string folder = RecoveryFolder(m_stateFolder);
    const std::string beginning = Beginning(path);
    const std::string own = folder + "/" + beginning + HashName(contentHash) + kExtension;
    if (Exists(own)) return ReadSupplement(own);
    if (IsBackup(path) && Exists(BesideBackup(path))) return ReadSupplement(BesideBackup(path));
    SFound found = FindMoved(path, contentHash);
    found.otherContent = !found.supplement && !ListFiles(folder, beginning, kExtension).empty();
    return found;
}

CSupplementFiles::SFound CSupplementFiles::FindMoved(const std::string& path, uint64_t contentHash) const {
    const bool isBackup = IsBackup(path);
    const std::string ending = fmt::format("-{}{}", HashName(contentHash), kExtension);
    for (const std::string& file : ListFiles(RecoveryFolder(m_stateFolder), {}, ending)) {
        SFileImage image;
        if (ReadWholeFile(file, kMostBytes, image) != 0) continue;
        std::string_view text = image.content;
        const std::string oldPath = TakePath(text);
        if (oldPath.empty() || (!isBackup && Exists(oldPath))) continue;
        if (std::optional<SWatchlistSupplement> supplement = ParseSupplement(text))
            return {std::move(supplement), false, false};
    }
    return {};
}

void CSupplementFiles::Retire(const std::string& path, const std::vector<SBackup>& backups) const {
    const std::string beginning = Beginning(path);
    const std::vector<std::string> files = ListFiles(RecoveryFolder(m_stateFolder), beginning, kExtension);
    if (files.empty()) return;
    for (const SBackup& backup : backups) {
        SFileImage image;
        if (ReadWholeFile(backup.path, kMostBytes, image) != 0) continue;
        const std::string file =
            RecoveryFolder(m_stateFolder) + "/" + beginning + HashName(ContentHash(image.content)) + kExtension;
        Disk().Rename(file, BesideBackup(backup.path));
    }
    for (const std::string& file : files) Disk().Remove(file);
}

} // namespace vx
