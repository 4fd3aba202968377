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

struct STarget {
    std::string folder; // Ends with "/", or is "./".
    std::string name;
    std::optional<struct stat> existing;

    std::string Path() const { return folder + name; }
    /// How the temporary files of this target begin.
    std::string TemporaryStem() const { return fmt::format(".{}{}", name.substr(0, kMostKeptName), kTemporaryMark); }
};

STarget TargetAt(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {"./", path, {}};
    return {path.substr(0, slash + 1), path.substr(slash + 1), {}};
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
        const mode_t mode = target.existing ? kPrivateFile : kNewFile;
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

int Fill(const CFileDescriptor& file, const STarget& target, std::string_view content) {
    if (const int error = WriteAll(file.Get(), content)) return error;
    if (target.existing) {
        // Another user's file stays theirs where the system lets it; whether it does is no reason not to save.
        if (fchown(file.Get(), target.existing->st_uid, target.existing->st_gid) != 0) errno = 0;
        if (fchmod(file.Get(), target.existing->st_mode & kPermissions) != 0) return errno;
    }
    return fsync(file.Get()) == 0 ? 0 : errno;
}

/// Removes temporary files of the target whose process is gone: only then their lock can be had.
void RemoveLeftovers(const STarget& target) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(target.folder.c_str()), closedir);
    if (!folder) return;
    const std::string stem = target.TemporaryStem();
    while (const dirent* entry = readdir(folder.get())) {
        if (!std::string_view(entry->d_name).starts_with(stem)) continue;
        const std::string path = target.folder + entry->d_name;
        const CFileDescriptor file(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
        if (file.IsOpen() && flock(file.Get(), LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
    }
}

/// Brings the rename to disk. Some file systems cannot do this for a folder, and the new file is in place anyway.
void SyncFolder(const std::string& folder) {
    const CFileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.IsOpen()) fsync(descriptor.Get());
}

} // namespace

int SaveFile(const std::string& path, std::string_view content) {
    STarget target;
    if (const int error = FindTarget(path, target)) return error;
    if (const int error = CheckTarget(target)) return error;
    RemoveLeftovers(target);
    std::string temporary;
    CFileDescriptor file;
    if (const int error = MakeTemporary(target, temporary, file)) return error;
    int error = Fill(file, target, content);
    if (error == 0 && rename(temporary.c_str(), target.Path().c_str()) != 0) error = errno;
    if (error != 0) {
        unlink(temporary.c_str());
        return error;
    }
    SyncFolder(target.folder);
    return 0;
}

} // namespace vx
