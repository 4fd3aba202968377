// SPDX-License-Identifier: MIT
#include "watchlist/file/RecoveryKeeper.h"

#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/Windows1252.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/file/WatchlistFile.h"
#include "watchlist/fileformat/WatchlistWriter.h"

#include <fmt/format.h>

#include <ctime>
#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace vx {

CRecoveryKeeper::CRecoveryKeeper(const CWatchlistDoc& doc, const CWatchlistFile& file)
    : CRecoveryKeeper(doc, file, UserStateFolder()) {}

CRecoveryKeeper::CRecoveryKeeper(const CWatchlistDoc& doc, const CWatchlistFile& file, std::string stateFolder)
    : m_doc(doc), m_watchlistFile(file), m_stateFolder(std::move(stateFolder)), m_written(doc.ChangeCount()),
      m_seen(doc.ChangeCount()), m_writer(m_stateFolder) {}

CRecoveryKeeper::~CRecoveryKeeper() {
    if (m_kept && !m_doc.IsModified()) m_writer.Remove();
}

void CRecoveryKeeper::Poll(const SPlacement& placement, int64_t nowMs) {
    const uint64_t changes = m_doc.ChangeCount();
    if (!m_doc.IsModified()) {
        NoteWritten();
        m_seen = changes;
        if (std::exchange(m_kept, false)) m_writer.Remove();
        return;
    }
    if (HasFailed() && nowMs >= m_retryMs) Write(placement, nowMs);
    if (IsWritten()) return;
    if (!m_firstMs) m_firstMs = nowMs;
    if (changes != m_seen) m_lastMs = nowMs;
    m_seen = changes;
    // Else what is older than the saved file would be offered after a kill.
    const bool savedSince = m_kept && m_watchlistFile.KnownHash() != m_writtenHash;
    if (savedSince || nowMs - m_lastMs >= kQuietMs || nowMs - *m_firstMs >= kMostDelayMs) Write(placement, nowMs);
}

void CRecoveryKeeper::KeepNow(const SPlacement& placement) {
    if (m_doc.IsModified() && (HasFailed() || !IsWritten())) Write(placement, m_lastMs);
    Flush();
}

std::string CRecoveryKeeper::TakeError() {
    const int error = m_writer.Error();
    if (!std::exchange(m_told, error != 0) && error != 0)
        return fmt::format(
            "Unsaved changes cannot be kept in \"{}\": {}. Save the watchlist so that they are not lost.",
            Windows1252FromUtf8(RecoveryFolder(m_stateFolder)), ErrorText(error));
    return {};
}

void CRecoveryKeeper::Write(const SPlacement& placement, int64_t nowMs) {
    NoteWritten();
    m_retryMs = nowMs + kRetryMs;
    m_kept = true;
    SRecovery recovery;
    recovery.originalPath = m_watchlistFile.Path();
    recovery.knownHash = m_watchlistFile.KnownHash();
    recovery.savedAt = time(nullptr);
    recovery.text = WriteWatchlistText(m_doc, placement);
    m_writer.Write(std::move(recovery));
}

void CRecoveryKeeper::Adopt(const SRecovery& recovery) {
    m_writer.Adopt(recovery.file, recovery.claim);
    m_kept = true;
    NoteWritten();
    m_seen = m_written;
}

// A save that ends while the user is typing changes what the unsaved changes belong to.
bool CRecoveryKeeper::IsWritten() const {
    return m_doc.ChangeCount() == m_written && m_watchlistFile.KnownHash() == m_writtenHash;
}

void CRecoveryKeeper::NoteWritten() {
    m_written = m_doc.ChangeCount();
    m_writtenHash = m_watchlistFile.KnownHash();
    m_firstMs.reset();
}

CRecoveryWriter::CRecoveryWriter(std::string stateFolder)
    : m_stateFolder(std::move(stateFolder)), m_thread([this] { Run(); }) {}

CRecoveryWriter::~CRecoveryWriter() {
    {
        const std::lock_guard lock(m_mutex);
        m_end = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void CRecoveryWriter::Write(SRecovery recovery) { Ask(std::move(recovery)); }

void CRecoveryWriter::Remove() { Ask(std::nullopt); }

void CRecoveryWriter::Adopt(std::string file, std::shared_ptr<CFileLock> lock) {
    Remove();
    Flush();
    m_file = std::move(file);
    m_lock = std::move(lock);
}

void CRecoveryWriter::Ask(std::optional<SRecovery> recovery) {
    {
        const std::lock_guard lock(m_mutex);
        m_next = std::move(recovery);
        m_asked = true;
    }
    m_wake.notify_one();
}

void CRecoveryWriter::Flush() {
    std::unique_lock lock(m_mutex);
    m_done.wait(lock, [this] { return !m_asked && !m_busy; });
}

std::string CRecoveryWriter::File() {
    Flush();
    return m_file;
}

void CRecoveryWriter::Run() {
    pthread_setname_np(pthread_self(), kThreadName);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_asked || m_end; });
        if (!m_asked) return;
        const std::optional<SRecovery> recovery = std::exchange(m_next, std::nullopt);
        m_asked = false;
        m_busy = true;
        lock.unlock();
        const int error = Do(recovery);
        if (error != 0 && m_error == 0)
            LogInformation(fmt::format("Unsaved changes could not be kept in \"{}\": {}.",
                                       Windows1252FromUtf8(RecoveryFolder(m_stateFolder)), ErrorText(error)));
        m_error = error;
        lock.lock();
        m_busy = false;
        m_done.notify_all();
    }
}

int CRecoveryWriter::Do(const std::optional<SRecovery>& recovery) {
    if (!recovery) {
        RemoveFile();
        return 0;
    }
    if (m_file.empty())
        if (const int error = Begin()) return error;
    return SavePrivateFile(m_file, FormatRecovery(*recovery));
}

// Without the lock another program could take the file for one that nobody has.
int CRecoveryWriter::Begin() {
    static std::atomic<int> number{0};
    if (const int error = MakeFolders(RecoveryFolder(m_stateFolder))) return error;
    const std::string file =
        fmt::format("{}/{}-{}-{}.recovery", RecoveryFolder(m_stateFolder), time(nullptr), getpid(), ++number);
    auto lock = std::make_shared<CFileLock>(RecoveryLockName(file), 0);
    if (!lock->IsHeld()) return lock->Error();
    m_file = file;
    m_lock = std::move(lock);
    return 0;
}

void CRecoveryWriter::RemoveFile() {
    if (m_file.empty()) return;
    Disk().Remove(m_file);
    Disk().Remove(RecoveryLockName(m_file));
    m_lock.reset();
    m_file.clear();
}

} // namespace vx
