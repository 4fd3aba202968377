#include "watchlist/file/RecoveryKeeper.h"

#include "base/FileSystem.h"
#include "base/Windows1252.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/file/WatchlistFile.h"
#include "watchlist/fileformat/WatchlistWriter.h"

#include <fmt/format.h>

#include <ctime>
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
    if (nowMs - m_lastMs >= kQuietMs || nowMs - *m_firstMs >= kMostDelayMs) Write(placement, nowMs);
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
    m_writer.Write(FormatRecovery(recovery));
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

} // namespace vx
