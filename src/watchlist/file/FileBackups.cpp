// SPDX-License-Identifier: MIT
#include "watchlist/file/FileBackups.h"

#include "base/AtomicFile.h"
#include "base/Hash.h"
#include "base/Number.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/file/SupplementFiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>

namespace vx {

namespace {

constexpr int kMostNumber = 999'999'999; // No save of this program comes near it.
constexpr int64_t kNsPerSecond = 1'000'000'000;
constexpr const char* kExtension = ".vxw";

bool HoldsSame(const SBackup& backup, std::string_view content) {
    if (backup.bytes != content.size()) return false;
    SFileImage image;
    return ReadWholeFile(backup.path, content.size(), image) == 0 && image.content == content;
}

} // namespace

std::string CFileBackups::Folder(const std::string& path) const {
    return BackupsFolder(m_stateFolder) + "/" + HashName(ContentHash(PathKey(path)));
}

int CFileBackups::Lock(const std::string& path, std::optional<CFileLock>& lock) const {
    const std::string folder = Folder(path);
    if (const int error = MakeFolders(folder)) return error;
    lock.emplace(folder + "/lock", kLockWaitMs);
    const int error = lock->Error();
    if (error != 0) lock.reset();
    return error;
}

int CFileBackups::Keep(const std::string& path, std::string_view content, int64_t savedAtNs, std::string& made) const {
    made.clear();
    const std::string folder = Folder(path);
    const std::string pathFile = folder + "/path";
    if (!Exists(pathFile))
        if (const int error = SavePrivateFile(pathFile, PathKey(path) + "\n")) return error;
    std::vector<SBackup> before;
    if (const int error = List(path, before)) return error; // A number that is there must not be given again.
    if (!before.empty() && HoldsSame(before.front(), content)) return 0;
    const int number = before.empty() ? 1 : before.front().number + 1;
    const std::string file = fmt::format("{}/{:06}{}", folder, number, kExtension);
    if (const int error = SavePrivateFile(file, content)) return error;
    Disk().SetModified(file, savedAtNs);
    made = file;
    return 0;
}

void CFileBackups::RemoveOld(const std::string& path) const {
    const std::vector<SBackup> kept = List(path);
    for (size_t i = kKept; i < kept.size(); ++i) {
        Disk().Remove(CSupplementFiles::BesideBackup(kept[i].path));
        Disk().Remove(kept[i].path);
    }
}

std::vector<SBackup> CFileBackups::List(const std::string& path) const {
    std::vector<SBackup> out;
    List(path, out);
    return out;
}

int CFileBackups::List(const std::string& path, std::vector<SBackup>& backups) const {
    std::vector<std::string> names;
    const std::string folder = Folder(path);
    if (const int error = Disk().List(folder, names)) return error;
    int failed = 0;
    for (const std::string& name : names) {
        SFileStatus status;
        const int number = ReadInt32(name);
        if (!name.ends_with(kExtension) || number < 1 || number > kMostNumber) continue;
        const std::string file = folder + "/" + name;
        if (const int error = Disk().Status(file, status)) {
            if (error != ENOENT) failed = error;
            continue;
        }
        if (status.kind != EFileKind::Regular) continue;
        backups.push_back(
            {number, file, status.signature.modifiedNs / kNsPerSecond, static_cast<uint64_t>(status.signature.size)});
    }
    std::ranges::sort(backups, std::ranges::greater{}, &SBackup::number);
    return failed;
}

} // namespace vx
