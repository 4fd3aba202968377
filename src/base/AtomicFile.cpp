#include "base/AtomicFile.h"

#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace vx {

namespace {

constexpr int kLockRetryMs = 2;
constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kPrivateFolder = 0700;

SFileSignature SignatureOf(const struct stat& status) {
    return {static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino),
            static_cast<int64_t>(status.st_size),
            static_cast<int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec};
}

/// The file that a path leads to once its links are followed; a path that leads nowhere stays as it is.
std::string Resolved(const std::string& path) {
    const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
    return real ? std::string(real.get()) : path;
}

int WriteNewFile(const std::string& path, std::string_view content, mode_t mode) {
    unlink(path.c_str());
    const CFileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kPrivateFile));
    if (!file.IsOpen()) return errno;
    if (const int error = WriteAll(file.Get(), content)) return error;
    if (fchmod(file.Get(), mode) != 0 || fsync(file.Get()) != 0) return errno;
    return 0;
}

/// Brings a rename to disk. Some file systems cannot do this for a folder, and by now the new file is in place anyway.
void SyncFolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const CFileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.IsOpen()) fsync(descriptor.Get());
}

} // namespace

CFileDescriptor::~CFileDescriptor() {
    if (m_descriptor >= 0) close(m_descriptor);
}

CFileLock::CFileLock(const std::string& path, int waitMs)
    : m_file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, kPrivateFile)) {
    if (!m_file.IsOpen()) {
        m_error = errno;
        return;
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(waitMs);
    while (flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0) {
        m_error = errno;
        if (m_error != EINTR && (m_error != EWOULDBLOCK || std::chrono::steady_clock::now() >= end)) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(kLockRetryMs));
    }
    m_error = 0;
}

int ReadSignature(const std::string& path, SFileSignature& signature) {
    struct stat status {};
    signature = {};
    if (stat(path.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
    signature = SignatureOf(status);
    return 0;
}

int ReadWholeFile(const std::string& path, size_t maxBytes, SFileImage& image) {
    image = {};
    CFileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen()) return errno == ENOENT ? 0 : errno;
    struct stat status {};
    if (fstat(file.Get(), &status) != 0) return errno;
    if (!S_ISREG(status.st_mode)) return EINVAL;
    image.signature = SignatureOf(status);
    image.file = std::move(file);
    char block[16384];
    for (;;) {
        const ssize_t count = read(image.file.Get(), block, sizeof block);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        if (count == 0) return 0;
        image.content.append(block, static_cast<size_t>(count));
        if (image.content.size() > maxBytes) return EFBIG;
    }
}

int ReplaceFile(const std::string& path, std::string_view content) {
    const std::string target = Resolved(path);
    struct stat status {};
    const mode_t mode = stat(target.c_str(), &status) == 0 ? status.st_mode & 0777 : kPrivateFile;
    const std::string next = target + ".new";
    int error = WriteNewFile(next, content, mode);
    if (error == 0 && rename(next.c_str(), target.c_str()) != 0) error = errno;
    if (error != 0)
        unlink(next.c_str());
    else
        SyncFolderOf(target);
    return error;
}

int WriteAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        content.remove_prefix(static_cast<size_t>(written));
    }
    return 0;
}

int MakeFolders(const std::string& path) {
    for (size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string part = path.substr(0, end);
        struct stat status {};
        if (mkdir(part.c_str(), kPrivateFolder) != 0) {
            const int error = errno;
            if (stat(part.c_str(), &status) != 0) return error;
            if (!S_ISDIR(status.st_mode)) return ENOTDIR;
        }
        if (end == std::string::npos) return 0;
    }
}

} // namespace vx
