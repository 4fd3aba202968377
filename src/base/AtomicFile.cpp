// SPDX-License-Identifier: MIT
#include "base/AtomicFile.h"

#include <fmt/format.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <memory>
#include <optional>
#include <thread>
#include <unistd.h>
#include <vector>

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

namespace {

constexpr size_t kMostKeptName = 200; // Leaves room for what a temporary name adds to the file's.
constexpr int kMostLinks = 40;
constexpr int kNameTries = 100;
constexpr uint32_t kNewFile = 0666;
constexpr const char* kTemporaryMark = ".saving-";

struct STarget {
    std::string folder; // Ends with "/", or is "./".
    std::string name;
    std::optional<SFileStatus> existing;
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
        std::string to;
        if (const int error = Disk().ReadLink(at, to)) return error == EINVAL || error == ENOENT ? 0 : error;
        at = to.starts_with('/') ? to : target.folder + to;
    }
    return ELOOP;
}

int CheckTarget(STarget& target) {
    SFileStatus status;
    if (const int error = Disk().Status(target.Path(), status)) return error == ENOENT ? 0 : error;
    if (status.kind != EFileKind::Regular) return status.kind == EFileKind::Folder ? EISDIR : EINVAL;
    if (const int error = Disk().CheckWritable(target.Path())) return error;
    target.existing = status;
    return 0;
}

/// A new file beside the target, locked so that nobody takes it for one that a killed process left.
int MakeTemporary(const STarget& target, std::string& path, std::unique_ptr<COpenFile>& file) {
    static std::atomic<unsigned> number{0};
    for (int i = 0; i < kNameTries; ++i) {
        path = fmt::format("{}{}{}-{}", target.folder, target.TemporaryStem(), getpid(), ++number);
        const uint32_t permissions = target.existing || target.isPrivate ? kPrivateFile : kNewFile;
        std::unique_ptr<COpenFile> made;
        if (const int error = Disk().Open(path, EOpen::New, permissions, made)) {
            if (error == EEXIST) continue;
            return error;
        }
        SFileStatus status;
        const int lockError = made->TryLock();
        if (const int error = made->Status(status)) return error;
        if (status.names == 0 || lockError == EWOULDBLOCK) continue;
        file = std::move(made);
        return 0;
    }
    return EEXIST;
}

/// Gives the new file owner, group, access list and permissions of the one whose place it takes. What the system does
/// not allow of the first three is no reason not to save.
int Fill(COpenFile& file, const STarget& target, std::string_view content, SFileLoss& loss) {
    if (const int error = WriteAll(file, content)) return error;
    if (target.existing && !target.isPrivate) {
        loss = file.TakeOwnership(*target.existing, target.Path());
        if (const int error = file.SetPermissions(target.existing->permissions)) return error;
    }
    return file.Sync();
}

/// Removes the files of a folder whose names begin and hold so and whose process is gone: only then their lock can be
/// had.
void RemoveUnlocked(const std::string& folderPath, std::string_view stem, std::string_view mark) {
    std::vector<std::string> names;
    Disk().List(folderPath, names);
    for (const std::string& name : names) {
        if (!name.starts_with(stem) || name.find(mark) == std::string::npos) continue;
        const std::string path = fmt::format("{}/{}", folderPath, name);
        std::unique_ptr<COpenFile> file;
        if (Disk().Open(path, EOpen::Change, 0, file) == 0 && file->TryLock() == 0) Disk().Remove(path);
    }
}

int Save(const std::string& path, std::string_view content, bool isPrivate, SFileLoss& loss) {
    STarget target;
    if (const int error = FindTarget(path, target)) return error;
    if (const int error = CheckTarget(target)) return error;
    target.isPrivate = isPrivate;
    RemoveUnlocked(target.folder, target.TemporaryStem(), kTemporaryMark);
    std::string temporary;
    std::unique_ptr<COpenFile> file;
    if (const int error = MakeTemporary(target, temporary, file)) return error;
    int error = Fill(*file, target, content, loss);
    if (error == 0) error = Disk().Rename(temporary, target.Path());
    if (error != 0) {
        Disk().Remove(temporary);
        return error;
    }
    Disk().SyncFolder(target.folder); // Not every file system can, and the new file is in place anyway.
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
