// SPDX-License-Identifier: MIT
#pragma once

#include "base/AtomicFile.h"
#include "watchlist/document/WatchlistFrame.h"
#include "watchlist/file/RecoveryFile.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace vx {

/// A thread, named "vx-recovery", that makes, writes and removes the recovery file of one document, and holds its lock,
/// so that a slow disk never holds the window. What is asked for while the disk is busy replaces what was asked for
/// before: only the last state counts.
///
/// Errors  what cannot be written is not tried again by itself; the log says so once
/// Owns    the recovery file and its lock
/// Thread  asked from one thread; the destructor waits until the last thing asked for is done
class CRecoveryWriter {
public:
    static constexpr const char* kThreadName = "vx-recovery";

    explicit CRecoveryWriter(std::string stateFolder);
    ~CRecoveryWriter();
    CRecoveryWriter(const CRecoveryWriter&) = delete;
    CRecoveryWriter& operator=(const CRecoveryWriter&) = delete;

    /// Puts unsaved changes into the recovery file, which is made when there is none.
    void Write(SRecovery recovery);
    /// The recovery file goes, and its lock after it: in between, nobody may find a file without a holder.
    void Remove();
    /// A file that another program left is the recovery file from here on. The one that was goes.
    void Adopt(std::string file, std::shared_ptr<CFileLock> lock);
    /// What came of the last thing done: an errno value, 0 for success.
    int Error() const { return m_error; }
    /// Waits until nothing is left to do.
    void Flush();
    /// The recovery file; empty while there is none. Waits as Flush does.
    std::string File();

private:
    void Ask(std::optional<SRecovery> recovery);
    void Run();
    int Do(const std::optional<SRecovery>& recovery);
    int Begin();
    void RemoveFile();

    const std::string m_stateFolder;

    // Of the thread, and of others while it has nothing to do.
    std::string m_file; ///< Empty while there is none.
    std::shared_ptr<CFileLock> m_lock;

    std::mutex m_mutex;
    std::condition_variable m_wake, m_done;
    bool m_asked = false;
    std::optional<SRecovery> m_next; ///< Of what was asked for; nothing: the file goes.
    bool m_busy = false;
    bool m_end = false;
    std::atomic<int> m_error{0};
    std::thread m_thread; ///< Last: everything else is there before it runs.
};

class CWatchlistDoc;
class CWatchlistFile;

/// Keeps the unsaved changes of the open watchlist in a recovery file, so that they outlive a crash or a power cut.
///
/// A change is on disk kQuietMs after the user paused, at the latest kMostDelayMs after it was made. A recovery file
/// that is older than a save is written anew at the next Poll. It goes when the document is saved or closed, and stays
/// when the program ends while the document is modified.
///
/// Errors  what could not be written is tried again with the next change, and every kRetryMs without one; TakeError
///         tells the user
/// Owns    the writer of the recovery file; not the document and its file, which outlive it
/// Thread  GUI thread only; the disk is written by a thread of its own
class CRecoveryKeeper {
public:
    static constexpr int64_t kQuietMs = 1000;
    static constexpr int64_t kMostDelayMs = 5000;
    static constexpr int64_t kRetryMs = 10'000;

    CRecoveryKeeper(const CWatchlistDoc& doc, const CWatchlistFile& file);
    CRecoveryKeeper(const CWatchlistDoc& doc, const CWatchlistFile& file, std::string stateFolder);
    ~CRecoveryKeeper();

    /// Looks whether something is to be written or removed; costs nothing when not. Call it from a timer, at least
    /// once a second, and right after a save, an open, a new document and a close.
    ///
    /// Units   nowMs: CClock's monotonic milliseconds; placement: where the window stands
    void Poll(const SPlacement& placement, int64_t nowMs);

    /// The program is about to end with the document modified: writes at once what Poll would write later.
    void KeepNow(const SPlacement& placement);

    /// The recovery file; empty while there is none. Waits as Flush does.
    std::string File() { return m_writer.File(); }

    /// The document holds this recovery now: its file is the one that is kept up to date from here on.
    void Adopt(const SRecovery& recovery);

    /// Whether the last attempt to keep unsaved changes failed; after KeepNow: whether they are lost when it ends now.
    bool HasFailed() const { return m_writer.Error() != 0; }
    /// What the user should hear now, a sentence (Windows-1252), usually empty: why unsaved changes are not being kept,
    /// once until they were kept again. Ask after Poll.
    std::string TakeError();

    /// Waits until the disk has what was asked for.
    void Flush() { m_writer.Flush(); }

private:
    void Write(const SPlacement& placement, int64_t nowMs);
    bool IsWritten() const;
    void NoteWritten();

    const CWatchlistDoc& m_doc;
    const CWatchlistFile& m_watchlistFile;
    std::string m_stateFolder;
    bool m_kept = false;              ///< There is a recovery file, or was to be one.
    uint64_t m_written = 0;           ///< The document's change count that the file holds.
    uint64_t m_writtenHash = 0;       ///< The hash of the watchlist's file that it names.
    uint64_t m_seen = 0;              ///< The change count at the last call.
    std::optional<int64_t> m_firstMs; ///< When the oldest change was seen that the file does not hold.
    int64_t m_lastMs = 0;
    int64_t m_retryMs = 0; ///< When what failed may be tried again.
    bool m_told = false;
    CRecoveryWriter m_writer; ///< Last: its thread ends first.
};

} // namespace vx
