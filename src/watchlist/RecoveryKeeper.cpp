#include "watchlist/RecoveryKeeper.h"

#include "base/UserFolders.h"
#include "watchlist/StateFiles.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistFile.h"
#include "watchlist/WatchlistWriter.h"

#include <fmt/format.h>

#include <atomic>
#include <ctime>
#include <unistd.h>

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
        if (!m_file.empty()) Drop();
        return;
    }
    if (changes == m_written) return;
    if (!m_firstMs) m_firstMs = nowMs;
    if (changes != m_seen) m_lastMs = nowMs;
    m_seen = changes;
    if (nowMs - m_lastMs >= kQuietMs || nowMs - *m_firstMs >= kMostDelayMs) Write(placement);
}

void CRecoveryKeeper::KeepNow(const SPlacement& placement) {
    if (m_doc.IsModified() && m_doc.ChangeCount() != m_written) Write(placement);
    Flush();
}

bool CRecoveryKeeper::Begin() {
    static std::atomic<int> number{0};
    if (MakeFolders(RecoveryFolder(m_stateFolder)) != 0) return false;
    m_file = fmt::format("{}/{}-{}-{}.recovery", RecoveryFolder(m_stateFolder), time(nullptr), getpid(), ++number);
    m_lock = std::make_shared<CFileLock>(RecoveryLockName(m_file), 0);
    return true;
}

void CRecoveryKeeper::Write(const SPlacement& placement) {
    if (m_file.empty() && !Begin()) return;
    m_written = m_doc.ChangeCount();
    m_firstMs.reset();
    SRecovery recovery;
    recovery.originalPath = m_watchlistFile.Path();
    recovery.knownHash = m_watchlistFile.KnownHash();
    recovery.savedAt = time(nullptr);
    recovery.supplement = FindUncarried(m_doc);
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
