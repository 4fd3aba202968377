// SPDX-License-Identifier: MIT
#include "base/FileSystem.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <system_error>
#include <unistd.h>

namespace vx {

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr size_t kMostAccessList = 65536;
constexpr int64_t kNsPerSecond = 1'000'000'000;
constexpr mode_t kPermissions = 07777;

int Result(int returned) { return returned == 0 ? 0 : errno; }

SFileStatus StatusOf(const struct stat& status) {
    SFileStatus out;
    out.signature = {static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino),
                     static_cast<int64_t>(status.st_size),
                     static_cast<int64_t>(status.st_mtim.tv_sec) * kNsPerSecond + status.st_mtim.tv_nsec};
    out.kind = S_ISREG(status.st_mode)   ? EFileKind::Regular
               : S_ISDIR(status.st_mode) ? EFileKind::Folder
                                         : EFileKind::Other;
    out.permissions = status.st_mode & kPermissions;
    out.owner = status.st_uid;
    out.group = status.st_gid;
    out.names = status.st_nlink;
    return out;
}

int FlagsOf(EOpen how) {
    switch (how) {
    case EOpen::Read:
        return O_RDONLY;
    case EOpen::Change:
        return O_RDWR | O_NOFOLLOW;
    case EOpen::New:
        return O_RDWR | O_CREAT | O_EXCL;
    case EOpen::Lock:
        return O_RDWR | O_CREAT;
    case EOpen::Extend:
        return O_RDWR | O_CREAT | O_APPEND;
    case EOpen::Append:
        return O_WRONLY | O_CREAT | O_APPEND;
    case EOpen::Overwrite:
        return O_WRONLY | O_CREAT | O_TRUNC;
    }
    return O_RDONLY;
}

class CPosixFile final : public COpenFile {
public:
    explicit CPosixFile(int descriptor) : m_descriptor(descriptor) {}
    CPosixFile(const CPosixFile&) = delete;
    CPosixFile& operator=(const CPosixFile&) = delete;
    ~CPosixFile() override { close(m_descriptor); }

    int Status(SFileStatus& status) const override {
        struct stat found {};
        const int error = Result(fstat(m_descriptor, &found));
        if (error == 0) status = StatusOf(found);
        return error;
    }
    int Read(uint64_t position, char* to, size_t bytes, size_t& count) const override {
        const auto read = [&] { return pread(m_descriptor, to, bytes, static_cast<off_t>(position)); };
        return Uninterrupted(read, count);
    }
    int Write(std::string_view content, size_t& count) override {
        return Uninterrupted([&] { return write(m_descriptor, content.data(), content.size()); }, count);
    }
    int Sync() override { return Result(fsync(m_descriptor)); }
    int Truncate(int64_t bytes) override { return Result(ftruncate(m_descriptor, bytes)); }
    int SetPermissions(uint32_t permissions) override { return Result(fchmod(m_descriptor, permissions)); }
    SFileLoss TakeOwnership(const SFileStatus& from, const std::string& path) override {
        SFileLoss loss;
        loss.otherNames = static_cast<unsigned>(from.names - 1);
        if (fchown(m_descriptor, from.owner, from.group) != 0) {
            SFileStatus made;
            loss.permissions = fchown(m_descriptor, static_cast<uid_t>(-1), from.group) != 0;
            loss.owner = Status(made) != 0 || made.owner != from.owner;
        }
        std::string list(kMostAccessList, '\0');
        const ssize_t size = getxattr(path.c_str(), kAccessList, list.data(), list.size());
        if (size > 0 && fsetxattr(m_descriptor, kAccessList, list.data(), static_cast<size_t>(size), 0) != 0)
            loss.permissions = true;
        return loss;
    }
    int TryLock() override { return Result(flock(m_descriptor, LOCK_EX | LOCK_NB)); }

private:
    template <typename Call> static int Uninterrupted(Call call, size_t& count) {
        ssize_t done = -1;
        do done = call();
        while (done < 0 && errno == EINTR);
        count = done < 0 ? 0 : static_cast<size_t>(done);
        return done < 0 ? errno : 0;
    }

    const int m_descriptor;
};

class CPosixFileSystem final : public CFileSystem {
public:
    int Open(const std::string& path, EOpen how, uint32_t permissions, std::unique_ptr<COpenFile>& file) override {
        const int descriptor = open(path.c_str(), FlagsOf(how) | O_CLOEXEC | O_NONBLOCK, permissions);
        if (descriptor < 0) return errno;
        file = std::make_unique<CPosixFile>(descriptor);
        return 0;
    }
    int Status(const std::string& path, SFileStatus& status) override {
        struct stat found {};
        const int error = Result(stat(path.c_str(), &found));
        if (error == 0) status = StatusOf(found);
        return error;
    }
    int CheckWritable(const std::string& path) override { return Result(access(path.c_str(), W_OK)); }
    int ReadLink(const std::string& path, std::string& target) override {
        char link[PATH_MAX];
        const ssize_t size = readlink(path.c_str(), link, sizeof link);
        if (size < 0) return errno;
        target.assign(link, static_cast<size_t>(size));
        return 0;
    }
    int Canonical(const std::string& path, std::string& canonical) override {
        std::error_code error;
        const std::filesystem::path absolute = std::filesystem::absolute(path, error);
        const std::filesystem::path found = error ? absolute : std::filesystem::weakly_canonical(absolute, error);
        if (!error) canonical = found.string();
        return error.value();
    }
    int Rename(const std::string& from, const std::string& to) override {
        return Result(rename(from.c_str(), to.c_str()));
    }
    int Remove(const std::string& path) override { return Result(unlink(path.c_str())); }
    int MakeFolder(const std::string& path, uint32_t permissions) override {
        return Result(mkdir(path.c_str(), permissions));
    }
    int List(const std::string& folder, std::vector<std::string>& names) override {
        const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(folder.c_str()), closedir);
        if (!open) return errno;
        while (const dirent* entry = readdir(open.get()))
            if (const std::string_view name = entry->d_name; name != "." && name != "..") names.emplace_back(name);
        return 0;
    }
    int SyncFolder(const std::string& folder) override {
        const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        return descriptor < 0 ? errno : CPosixFile(descriptor).Sync();
    }
    int SetModified(const std::string& path, int64_t ns) override {
        const timespec time{static_cast<time_t>(ns / kNsPerSecond), static_cast<long>(ns % kNsPerSecond)};
        const timespec times[2] = {time, time};
        return Result(utimensat(AT_FDCWD, path.c_str(), times, 0));
    }
};

CPosixFileSystem g_posixFileSystem;
CFileSystem* g_fileSystem = &g_posixFileSystem;

} // namespace

CFileSystem& CFileSystem::Instance() { return *g_fileSystem; }

void CFileSystem::SetInstance(CFileSystem* fileSystem) { g_fileSystem = fileSystem ? fileSystem : &g_posixFileSystem; }

namespace {

std::string Home() {
    if (const char* home = std::getenv("HOME"); home && *home == '/') return home;
    if (const passwd* user = getpwuid(getuid()); user && user->pw_dir && *user->pw_dir == '/') return user->pw_dir;
    return "/tmp";
}

std::string Folder(const char* variable, const char* belowHome) {
    const char* value = std::getenv(variable);
    return (value && *value == '/' ? std::string(value) : Home() + belowHome) + "/zantrel";
}

} // namespace

std::string UserConfigFolder() { return Folder("XDG_CONFIG_HOME", "/.config"); }

std::string UserStateFolder() { return Folder("XDG_STATE_HOME", "/.local/state"); }

std::string UserRuntimeFolder() {
    const char* value = std::getenv("XDG_RUNTIME_DIR");
    return value && *value == '/' ? std::string(value) + "/zantrel" : fmt::format("/tmp/zantrel-{}", geteuid());
}

namespace {

struct SReason {
    int error;
    const char* text;
};

constexpr std::array kReasons = {
    SReason{ENOENT, "there is no such file or folder"},
    SReason{EISDIR, "it is a folder"},
    SReason{ENOTDIR, "part of its path is not a folder"},
    SReason{EINVAL, "it is not a file but a pipe, a device or a socket"},
    SReason{EACCES, "you are not allowed to"},
    SReason{EPERM, "you are not allowed to"},
    SReason{EROFS, "the disk is read-only"},
    SReason{ENOSPC, "the disk is full"},
    SReason{EDQUOT, "your disk quota is used up"},
    SReason{EFBIG, "it is too large"},
    SReason{ENAMETOOLONG, "its name is too long"},
    SReason{ELOOP, "its links lead nowhere"},
    SReason{EIO, "the disk reports an error"},
};

} // namespace

std::string ErrorText(int error) {
    const auto* found = std::ranges::find(kReasons, error, &SReason::error);
    if (found != kReasons.end()) return found->text;
    return fmt::format("{} (error {})", std::generic_category().message(error), error);
}

} // namespace vx
