// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/file/FileSaver.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

class CReadReport;
class CWatchlistDoc;
class CWatchlistReader;
struct SRecovery;

/// The file of the open watchlist: opens and saves it so that nothing a user wrote is lost.
///
/// Shape   paths are bytes as the system takes them; 8 to 256 MB of text are nothing unusual for it
/// Errors  every failure is a result with its words; the document, and the file, stay as they were
/// Owns    nothing: the document outlives it
/// Thread  GUI thread only
class CWatchlistFile {
public:
    explicit CWatchlistFile(CWatchlistDoc& doc);
    CWatchlistFile(CWatchlistDoc& doc, const std::string& stateFolder);

    /// Puts the watchlist of a file into the document.
    SFileResult Open(const std::string& path);
    /// Puts a recovered watchlist into the document, which is modified then. Saving goes to the file that it had.
    SFileResult OpenRecovered(const SRecovery& recovery);
    /// Puts a backup of the document's file into the document, which is modified then: a save would make it the
    /// file's content again.
    SFileResult OpenBackup(const SBackup& backup);

    /// Writes the document to its file. The content that this replaces is kept as a backup.
    ///
    /// Units   placement: where the window stands
    /// Errors  ChangedOnDisk, NotAllRead and BackupNotKept unless the consent covers them, in this order, with a
    ///         sentence that says what is at stake: ask the user and call again with all consents given so far. Failed
    ///         without a path. The document stays modified unless all of it is on disk
    SFileResult Save(const SPlacement& placement, SSaveConsent consent = {});
    /// As Save, to another file, which is the document's from then on. Never ChangedOnDisk or NotAllRead: the user
    /// chose the file.
    SFileResult SaveAs(const std::string& path, const SPlacement& placement, SSaveConsent consent = {});

    // The same in three steps, so that a slow disk does not hold the window: a job is made, carried out on any thread
    // by Saver().Save, and ended on this one. What is edited between the first and the last leaves the document
    // modified.

    /// path: another file, empty for the document's own.
    SSaveJob BeginSave(const std::string& path, const SPlacement& placement);
    /// A job that waited, for another one or for the user, is about to be carried out: what was saved meanwhile may be
    /// replaced.
    void RenewJob(SSaveJob& job);
    void EndSave(const SSaveJob& job, const SFileResult& result);
    const CFileSaver& Saver() const { return m_saver; }

    /// The document is a new one, or closed.
    void Forget();

    /// Empty for a document without a file.
    const std::string& Path() const { return m_path; }
    /// The hash of the content that the file had when it was opened or saved.
    uint64_t KnownHash() const { return m_knownHash; }
    /// The contents that saves of the document's file replaced, newest first.
    std::vector<SBackup> Backups() const;

private:
    void FindUnread(CWatchlistReader& reader, bool isEmpty, SFileResult& result);

    CWatchlistDoc& m_doc;
    CFileSaver m_saver;
    std::string m_path;
    uint64_t m_knownHash = 0;
    bool m_onDisk = false; ///< m_knownHash is of a content that is, or was, on disk.
    std::string m_unread;  ///< What of the file was not read, a sentence; empty: all was.
};

} // namespace vx
