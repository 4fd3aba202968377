#include "base/SaveFile.h"

#include "base/AtomicFile.h"

#include <fmt/format.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace vx {

namespace {

constexpr size_t kMostKeptName = 200; // Leaves room for what a temporary name adds to the file's.
constexpr int kMostLinks = 40;
constexpr int kNameTries = 100;
constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kNewFile = 0666;
constexpr mode_t kPermissions = 07777;
constexpr const char* kTemporaryMark = ".saving-";
constexpr const char* kAccessList = "system.posix_acl_access";
constexpr size_t kMostAccessList = 65536;

struct STarget {
    std::string folder; // Ends with "/", or is "./".
    std::string name;
    std::optional<struct stat> existing;
    bool isPrivate = false;

    std::string Path() const { return folder + name; }
    /// How the temporary files of this target begin.
    std::string TemporaryStem() const { return fmt::format(".{}{}", name.substr(0, kMostKeptName), kTemporaryMark); }
};

STarget TargetAt(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {"./", path, {}, false};
    return {path.substr(0, slash + 1), path.substr(slash + 1), {}, false};
}

/// Follows links to where the file is, or would be made.
int FindTarget(const std::string& path, STarget& target) {
    std::string at = path;
    for (int links = 0; links < kMostLinks; ++links) {
        target = TargetAt(at);
        if (target.name.empty()) return EISDIR;
        char link[PATH_MAX];
        const ssize_t size = readlink(at.c_str(), link, sizeof link);
        if (size < 0) return errno == EINVAL || errno == ENOENT ? 0 : errno;
        const std::string to(link, static_cast<size_t>(size));
        at = to.starts_with('/') ? to : target.folder + to;
    }
    return ELOOP;
}

int CheckTarget(STarget& target) {
    struct stat status {};
    if (stat(target.Path().c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return EINVAL;
    if (access(target.Path().c_str(), W_OK) != 0) return errno;
    target.existing = status;
    return 0;
}

/// A new file beside the target, locked so that nobody takes it for one that a killed process left.
int MakeTemporary(const STarget& target, std::string& path, CFileDescriptor& file) {
    static std::atomic<unsigned> number{0};
    for (int i = 0; i < kNameTries; ++i) {
        path = fmt::format("{}{}{}-{}", target.folder, target.TemporaryStem(), getpid(), ++number);
        const mode_t mode = target.existing || target.isPrivate ? kPrivateFile : kNewFile;
        CFileDescriptor made(open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (!made.IsOpen() && errno == EEXIST) continue;
        if (!made.IsOpen()) return errno;
        struct stat status {};
        const bool locked = flock(made.Get(), LOCK_EX | LOCK_NB) == 0;
        if (fstat(made.Get(), &status) != 0) return errno;
        if (status.st_nlink == 0 || (!locked && errno == EWOULDBLOCK)) continue;
        file = std::move(made);
        return 0;
    }
    return EEXIST;
}

/// Gives the new file owner, group and access list of the one whose place it takes. What the system does not allow is
/// no reason not to save.
SFileLoss KeepOwnership(const CFileDescriptor& file, const struct stat& existing, const std::string& path) {
    SFileLoss loss;
    loss.otherNames = static_cast<unsigned>(existing.st_nlink - 1);
    if (fchown(file.Get(), existing.st_uid, existing.st_gid) != 0) {
        struct stat made {};
        loss.permissions = fchown(file.Get(), static_cast<uid_t>(-1), existing.st_gid) != 0;
        loss.owner = fstat(file.Get(), &made) != 0 || made.st_uid != existing.st_uid;
    }
    std::string list(kMostAccessList, '\0');
    const ssize_t size = getxattr(path.c_str(), kAccessList, list.data(), list.size());
    if (size > 0 && fsetxattr(file.Get(), kAccessList, list.data(), static_cast<size_t>(size), 0) != 0)
        loss.permissions = true;
    return loss;
}

int Fill(const CFileDescriptor& file, const STarget& target, std::string_view content, SFileLoss& loss) {
    if (const int error = WriteAll(file.Get(), content)) return error;
    if (target.existing && !target.isPrivate) {
        loss = KeepOwnership(file, *target.existing, target.Path());
        if (fchmod(file.Get(), target.existing->st_mode & kPermissions) != 0) return errno;
    }
    return fsync(file.Get()) == 0 ? 0 : errno;
}

/// Removes the files of a folder whose names begin and hold so and whose process is gone: only then their lock can be
/// had.
void RemoveUnlocked(const std::string& folderPath, std::string_view stem, std::string_view mark) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(folderPath.c_str()), closedir);
    if (!folder) return;
    while (const dirent* entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (!name.starts_with(stem) || name.find(mark) == std::string_view::npos) continue;
        const std::string path = fmt::format("{}/{}", folderPath, name);
        const CFileDescriptor file(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
        if (file.IsOpen() && flock(file.Get(), LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
    }
}

/// Brings the rename to disk. Some file systems cannot do this for a folder, and the new file is in place anyway.
void SyncFolder(const std::string& folder) {
    const CFileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.IsOpen()) fsync(descriptor.Get());
}

int Save(const std::string& path, std::string_view content, bool isPrivate, SFileLoss& loss) {
    STarget target;
    if (const int error = FindTarget(path, target)) return error;
    if (const int error = CheckTarget(target)) return error;
    target.isPrivate = isPrivate;
    RemoveUnlocked(target.folder, target.TemporaryStem(), kTemporaryMark);
    std::string temporary;
    CFileDescriptor file;
    if (const int error = MakeTemporary(target, temporary, file)) return error;
    int error = Fill(file, target, content, loss);
    if (error == 0 && rename(temporary.c_str(), target.Path().c_str()) != 0) error = errno;
    if (error != 0) {
        unlink(temporary.c_str());
        return error;
    }
    SyncFolder(target.folder);
    return 0;
}

} // namespace

int SaveFile(const std::string& path, std::string_view content, SFileLoss* loss) {
    SFileLoss unheard;
    return Save(path, content, false, loss ? *loss : unheard);
}

int SavePrivateFile(const std::string& path, std::string_view content) {
    SFileLoss unheard;
    return Save(path, content, true, unheard);
}

void RemoveSaveLeftovers(const std::string& folder) { RemoveUnlocked(folder, ".", kTemporaryMark); }

} // namespace vx
