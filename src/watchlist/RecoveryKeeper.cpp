#include "watchlist/RecoveryKeeper.h"

#include "base/ErrorText.h"
#include "base/UserFolders.h"
#include "base/Utf8Text.h"
#include "watchlist/StateFiles.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistFile.h"
#include "watchlist/WatchlistWriter.h"

#include <fmt/format.h>

#include <atomic>
#include <ctime>
#include <unistd.h>
#include <utility>

namespace vx {

CRecoveryKeeper::CRecoveryKeeper(const CWatchlistDoc& doc, const CWatchlistFile& file)
    : CRecoveryKeeper(doc, file, UserStateFolder()) {}

CRecoveryKeeper::CRecoveryKeeper(const CWatchlistDoc& doc, const CWatchlistFile& file, std::string stateFolder)
    : m_doc(doc), m_watchlistFile(file), m_stateFolder(std::move(stateFolder)), m_written(doc.ChangeCount()),
      m_seen(doc.ChangeCount()) {}

CRecoveryKeeper::~CRecoveryKeeper() {
    if (!m_file.empty() && !m_doc.IsModified()) Drop();
}

void CRecoveryKeeper::Poll(const SPlacement& placement, int64_t nowMs) {
    const uint64_t changes = m_doc.ChangeCount();
    if (!m_doc.IsModified()) {
        m_written = m_seen = changes;
        m_firstMs.reset();
        m_beginError = 0;
        if (!m_file.empty()) Drop();
        return;
    }
    if (HasFailed() && nowMs >= m_retryMs) Write(placement, nowMs);
    if (changes == m_written) return;
    if (!m_firstMs) m_firstMs = nowMs;
    if (changes != m_seen) m_lastMs = nowMs;
    m_seen = changes;
    if (nowMs - m_lastMs >= kQuietMs || nowMs - *m_firstMs >= kMostDelayMs) Write(placement, nowMs);
}

void CRecoveryKeeper::KeepNow(const SPlacement& placement) {
    if (m_doc.IsModified() && (HasFailed() || m_doc.ChangeCount() != m_written)) Write(placement, m_lastMs);
    Flush();
}

std::string CRecoveryKeeper::TakeError() {
    const int error = m_beginError != 0 ? m_beginError : m_writer.Error();
    if (!std::exchange(m_told, error != 0) && error != 0)
        return fmt::format(
            "Unsaved changes cannot be kept in \"{}\": {}. Save the watchlist so that they are not lost.",
            Windows1252FromUtf8(RecoveryFolder(m_stateFolder)), ErrorText(error));
    return {};
}

// Without the lock another program could take the file for one that nobody has.
int CRecoveryKeeper::Begin() {
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

void CRecoveryKeeper::Write(const SPlacement& placement, int64_t nowMs) {
    m_written = m_doc.ChangeCount();
    m_firstMs.reset();
    m_retryMs = nowMs + kRetryMs;
    m_beginError = m_file.empty() ? Begin() : 0;
    if (m_beginError != 0) return;
    SRecovery recovery;
    recovery.originalPath = m_watchlistFile.Path();
    recovery.knownHash = m_watchlistFile.KnownHash();
    recovery.savedAt = time(nullptr);
    recovery.text = WriteWatchlistText(m_doc, placement);
    m_writer.Write(m_file, FormatRecovery(recovery));
}

// The lock goes after the file: in between, nobody may find a file without a holder.
void CRecoveryKeeper::Drop() {
    m_writer.Remove(m_file);
    m_writer.Flush();
    unlink(RecoveryLockName(m_file).c_str());
    m_lock.reset();
    m_file.clear();
}

void CRecoveryKeeper::Adopt(const SRecovery& recovery) {
    if (!m_file.empty()) Drop();
    m_file = recovery.file;
    m_lock = recovery.claim;
    m_written = m_seen = m_doc.ChangeCount();
    m_firstMs.reset();
}

} // namespace vx
