// SPDX-License-Identifier: MIT
#pragma once

#include "base/AtomicFile.h"
#include "watchlist/document/UndoStack.h"
#include "watchlist/document/WatchlistFrame.h"
#include "watchlist/file/FileBackups.h"
#include "watchlist/file/SupplementFiles.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vx {

enum class EFileOutcome {
    Done,
    ChangedOnDisk, ///< Nothing was written: another program changed the file since it was opened or saved.
    NotAllRead,    ///< Nothing was written: the file holds what was not read when it was opened.
    BackupNotKept, ///< Nothing was written: the content that the save replaces could not be kept as a backup.
    Failed
};

/// What a save may do although something is lost by it; each only after a save's result has told the user.
struct SSaveConsent {
    bool overwriteChanged = false; ///< Replace what another program wrote. Asked for by ChangedOnDisk.
    bool overwriteUnread = false;  ///< Replace what was not read. Asked for by NotAllRead.
    bool withoutBackup = false;    ///< Replace a content that cannot be kept. Asked for by BackupNotKept.
};

/// What came of opening or saving, in words for the user (Windows-1252).
struct SFileResult {
    EFileOutcome outcome = EFileOutcome::Done;
    std::string error;                ///< What failed, with the file's name and the reason; empty when done.
    std::vector<std::string> notices; ///< What worked, but not as expected; a sentence each, for a box.
    std::string remark{};             ///< The same for the status bar; empty for none.
    uint64_t savedHash = 0;           ///< Of the content that was saved; 0 when none was.

    bool IsDone() const { return outcome == EFileOutcome::Done; }
};

/// All that a save needs: the document as it was when the user asked for it.
struct SSaveJob {
    std::string path;
    std::string text;
    std::optional<uint64_t> knownHash; ///< Of the content that may be replaced unasked; nothing: any.
    std::string unread;                ///< What of that content was not read, a sentence; empty: all was.
    SSaveConsent consent;
    SPlacement placement;
    SSavePoint point; ///< The state of the document that the text has.
};

/// More is no watchlist: the longest one, with all formats and alerts that it may have, is smaller.
inline constexpr size_t kMostWatchlistBytes = size_t{256} * 1024 * 1024;

/// Reads a whole file that may be a watchlist's.
///
/// Errors  an errno value: ENOENT, EISDIR, EINVAL for what is no regular file, EFBIG above kMostWatchlistBytes
/// Thread  any
int ReadWatchlistFile(const std::string& path, SFileImage& image);
/// In words for the user.
std::string ReadReason(int error);
/// Says in the log too that a watchlist could not be `what` ("opened", "saved").
SFileResult FileFailure(std::string_view what, const std::string& path, const std::string& reason);

/// The part of a save that touches the disk: compares, keeps the old content as a backup, replaces, all under one lock.
///
/// Errors  as CWatchlistFile::Save
/// Thread  any; the disk may take as long as it likes
class CFileSaver {
public:
    explicit CFileSaver(const std::string& stateFolder) : m_backups(stateFolder), m_supplements(stateFolder) {}

    SFileResult Save(const SSaveJob& job) const;

    const CFileBackups& Backups() const { return m_backups; }
    const CSupplementFiles& Supplements() const { return m_supplements; }

private:
    SFileResult Replace(const SSaveJob& job, const SFileImage& before, int readError, int lockError) const;
    int KeepBackup(const SSaveJob& job, const SFileImage& before, int readError, int lockError,
                   std::string& made) const;

    CFileBackups m_backups;
    CSupplementFiles m_supplements;
};

} // namespace vx
