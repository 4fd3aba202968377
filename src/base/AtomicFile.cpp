#include "base/AtomicFile.h"

#include <cerrno>
#include <chrono>
#include <thread>

namespace vx {

namespace {

constexpr int kLockRetryMs = 2;
constexpr uint32_t kPrivateFile = 0600;
constexpr uint32_t kPrivateFolder = 0700;
constexpr uint32_t kReadWriteRun = 0777;

int WriteNewFile(const std::string& path, std::string_view content, uint32_t permissions) {
    Disk().Remove(path);
    std::unique_ptr<COpenFile> file;
    if (const int error = Disk().Open(path, EOpen::New, kPrivateFile, file)) return error;
    if (const int error = WriteAll(*file, content)) return error;
    if (const int error = file->SetPermissions(permissions)) return error;
    return file->Sync();
}

/// Brings a rename to disk. Some file systems cannot do this for a folder, and by now the new file is in place anyway.
void SyncFolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    Disk().SyncFolder(slash == std::string::npos ? "." : path.substr(0, slash + 1));
}

} // namespace

CFileLock::CFileLock(const std::string& path, int waitMs)
    : m_error(Disk().Open(path, EOpen::Lock, kPrivateFile, m_file)) {
    if (m_error != 0) return;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(waitMs);
    while ((m_error = m_file->TryLock()) != 0) {
        if (m_error != EINTR && (m_error != EWOULDBLOCK || std::chrono::steady_clock::now() >= end)) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(kLockRetryMs));
    }
}

int ReadSignature(const std::string& path, SFileSignature& signature) {
    SFileStatus status;
    const int error = Disk().Status(path, status);
    signature = error == 0 ? status.signature : SFileSignature{};
    return error == ENOENT ? 0 : error;
}

int ReadWholeFile(const std::string& path, size_t maxBytes, SFileImage& image) {
    image = {};
    std::unique_ptr<COpenFile> file;
    if (const int error = Disk().Open(path, EOpen::Read, 0, file)) return error == ENOENT ? 0 : error;
    SFileStatus status;
    if (const int error = file->Status(status)) return error;
    if (status.kind != EFileKind::Regular) return EINVAL;
    image.signature = status.signature;
    image.file = std::move(file);
    char block[16384];
    for (size_t count = 0;;) {
        if (const int error = image.file->Read(image.content.size(), block, sizeof block, count)) return error;
        if (count == 0) return 0;
        image.content.append(block, count);
        if (image.content.size() > maxBytes) return EFBIG;
    }
}

int ReplaceFile(const std::string& path, std::string_view content) {
    std::string target;
    if (Disk().Canonical(path, target) != 0) target = path;
    SFileStatus status;
    const bool isThere = Disk().Status(target, status) == 0;
    const std::string next = target + ".new";
    int error = WriteNewFile(next, content, isThere ? status.permissions & kReadWriteRun : kPrivateFile);
    if (error == 0) error = Disk().Rename(next, target);
    if (error != 0)
        Disk().Remove(next);
    else
        SyncFolderOf(target);
    return error;
}

int WriteAll(COpenFile& file, std::string_view content) {
    while (!content.empty()) {
        size_t count = 0;
        if (const int error = file.Write(content, count)) return error;
        content.remove_prefix(count);
    }
    return 0;
}

bool Exists(const std::string& path) {
    SFileStatus status;
    return Disk().Status(path, status) == 0;
}

int MakeFolders(const std::string& path) {
    for (size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string part = path.substr(0, end);
        if (const int error = Disk().MakeFolder(part, kPrivateFolder)) {
            SFileStatus status;
            if (Disk().Status(part, status) != 0) return error;
            if (status.kind != EFileKind::Folder) return ENOTDIR;
        }
        if (end == std::string::npos) return 0;
    }
}

} // namespace vx
