// SPDX-License-Identifier: MIT
#include "watchlist/file/FileSaver.h"

#include "base/FileSystem.h"
#include "base/Hash.h"
#include "base/Log.h"
#include "base/Windows1252.h"

#include <fmt/format.h>

#include <cerrno>

namespace vx {

namespace {

// What can be said of a file without opening it: opening a device may do something.
int CheckReadable(const std::string& path) {
    SFileStatus status;
    if (const int error = Disk().Status(path, status)) return error;
    if (status.kind != EFileKind::Regular) return status.kind == EFileKind::Folder ? EISDIR : EINVAL;
    return static_cast<uint64_t>(status.signature.size) > kMostWatchlistBytes ? EFBIG : 0;
}

std::string Name(const SSaveJob& job) { return Windows1252FromUtf8(job.path); }

std::string BackupNotKept(const SSaveJob& job, int error, bool wasRead) {
    if (wasRead) return fmt::format("The backup of \"{}\" could not be made: {}.", Name(job), ReadReason(error));
    return fmt::format("The file \"{}\" cannot be read: {}. What it holds could not be kept.", Name(job),
                       ReadReason(error));
}

void TellLoss(const SSaveJob& job, const SFileLoss& loss, std::vector<std::string>& notices) {
    if (loss.owner)
        notices.push_back(fmt::format("\"{}\" belonged to another user. The saved file belongs to you.", Name(job)));
    if (loss.permissions)
        notices.push_back(
            fmt::format("The group of \"{}\", or its list of who may use it, could not be kept.", Name(job)));
    if (loss.otherNames > 0)
        notices.push_back(fmt::format("\"{}\" had {} other name{} (hard link{}). The old content stays there.",
                                      Name(job), loss.otherNames, loss.otherNames == 1 ? "" : "s",
                                      loss.otherNames == 1 ? "" : "s"));
}

} // namespace

int ReadWatchlistFile(const std::string& path, SFileImage& image) {
    if (const int error = CheckReadable(path)) return error;
    return ReadWholeFile(path, kMostWatchlistBytes, image);
}

std::string ReadReason(int error) {
    if (error == EFBIG) return fmt::format("it is larger than {} MB, which no watchlist is", kMostWatchlistBytes >> 20);
    return ErrorText(error);
}

SFileResult FileFailure(std::string_view what, const std::string& path, const std::string& reason) {
    SFileResult result{EFileOutcome::Failed, {}, {}};
    result.error = fmt::format("The watchlist \"{}\" could not be {}: {}.", Windows1252FromUtf8(path), what, reason);
    LogInformation(result.error);
    return result;
}

SFileResult CFileSaver::Save(const SSaveJob& job) const {
    std::optional<CFileLock> lock;
    const int lockError = m_backups.Lock(job.path, lock);
    if (lockError == EWOULDBLOCK) return FileFailure("saved", job.path, "another window is still saving it");
    SFileImage before;
    const int readError = ReadWatchlistFile(job.path, before);
    if (readError == EISDIR || readError == EINVAL) return FileFailure("saved", job.path, ErrorText(readError));
    const bool changed = readError == 0 && job.knownHash && ContentHash(before.content) != *job.knownHash;
    if (changed && !job.consent.overwriteChanged)
        return {EFileOutcome::ChangedOnDisk,
                fmt::format("The file \"{}\" was changed by another program since it was opened.", Name(job)),
                {}};
    if (!job.unread.empty() && !job.consent.overwriteUnread) return {EFileOutcome::NotAllRead, job.unread, {}};
    return Replace(job, before, readError, lockError);
}

SFileResult CFileSaver::Replace(const SSaveJob& job, const SFileImage& before, int readError, int lockError) const {
    SFileResult result;
    std::string made;
    if (const int notKept = KeepBackup(job, before, readError, lockError, made)) {
        const std::string words = BackupNotKept(job, notKept, readError == 0);
        if (!job.consent.withoutBackup) return {EFileOutcome::BackupNotKept, words, {}};
        result.notices.push_back(words);
    }
    SFileLoss loss;
    if (const int error = SaveFile(job.path, job.text, &loss)) {
        if (!made.empty()) Disk().Remove(made); // It is still the file's content.
        return FileFailure("saved", job.path, ErrorText(error));
    }
    result.savedHash = ContentHash(job.text);
    if (!made.empty()) m_backups.RemoveOld(job.path);
    m_supplements.Retire(job.path, m_backups.List(job.path));
    TellLoss(job, loss, result.notices);
    for (const std::string& notice : result.notices) LogInformation(notice);
    return result;
}

// Keeps what is about to be replaced. An errno value, 0 when nothing is lost.
int CFileSaver::KeepBackup(const SSaveJob& job, const SFileImage& before, int readError, int lockError,
                           std::string& made) const {
    SFileSignature there;
    if (readError != 0) return ReadSignature(job.path, there) == 0 && there.inode != 0 ? readError : 0;
    if (before.content.empty() || before.content == job.text) return 0;
    if (lockError != 0) return lockError;
    return m_backups.Keep(job.path, before.content, before.signature.modifiedNs, made);
}

} // namespace vx
