// SPDX-License-Identifier: MIT
#pragma once

#include "app/files/RecentFiles.h"
#include "watchlist/file/WatchlistFile.h"

#include <QObject>

#include <functional>
#include <future>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vx {

class CRegistry;
struct SFrameContext;

/// The watchlist file in the user's hands: new, open, save and all that goes with it, each with its questions.
///
/// A save is carried out by a thread of its own. The window waits kPatienceMs for it, which is enough for most disks;
/// then it is free again, and what comes of the save is said when it is there. A save that is asked for meanwhile
/// follows. Whoever leaves the document waits for both.
///
/// Shape   paths are bytes as the system takes them
/// Owns    the document's file; nothing of the context
/// Thread  GUI thread only
class CFileController : public QObject {
    Q_OBJECT
public:
    CFileController(const SFrameContext& context, CRegistry& registry);

    /// Opens a watchlist file in place of the document, whatever its state, and says in message boxes what did not go
    /// as expected.
    ///
    /// Errors  false when it could not be opened; the document stays as it was
    bool Open(const std::string& path);
    /// As Open for a file that the user chose: asks first what is to become of unsaved changes. A file that another
    /// window has is not opened; that window is brought up.
    bool OpenInstead(const std::string& path);
    /// A backup of the document's file, as unsaved changes of it.
    bool OpenBackup(const SBackup& backup);
    /// Recovered changes, as unsaved changes of the file that they belong to. Asks as OpenInstead does.
    bool OpenRecovered(const SRecovery& recovery);
    /// Says that of several files only the first is opened; says nothing when there are no others.
    static void TellLeftAlone(const std::string& first, size_t others);
    /// Files were dropped on the window: the first is opened, or imported when it holds a list of symbols.
    void TakeDropped(const std::vector<std::string>& paths);
    void New();
    /// Who brings another window up that has a file open; false: none has it.
    void SetShowOther(std::function<bool(const std::string& path)> showOther) { m_showOther = std::move(showOther); }

    static constexpr int kPatienceMs = 100;

    void Save();
    void SaveAs();
    /// A save is under way.
    bool IsSaving() const { return m_saving.valid(); }
    void SetPatienceMs(int ms) { m_patienceMs = ms; }

    /// Waits for a save that is under way; false: the user does not want to wait, and goes back to the window.
    bool WaitForSave();
    /// Waits for a save that is under way, asks whether unsaved changes are to be saved, and saves them; false: the
    /// user wants to keep working on them.
    bool MayLeave();
    /// As MayLeave, then closes the document for good.
    bool MayClose();

    /// Shows in the window whether the document is modified.
    void ShowModified();

    CWatchlistFile& File() { return m_file; }
    CRecentFiles& Recent() { return m_recent; }

Q_SIGNALS:
    /// The document is another one, or was saved.
    void Changed();
    /// The user chose another document: what the command line named besides its file was for the one before.
    void Replaced();
    /// The user wants the symbols of a file in the watchlist.
    void ImportAsked(const std::string& path);

private:
    void AskAndOpen();
    void StartSave(const std::string& path);
    void RunSave();
    void OnSaved(int number);
    bool AgreesTo(const SFileResult& result, SSaveConsent& consent, bool& elsewhere) const;
    void Finish(const SFileResult& result);
    std::string Name() const;

    const SFrameContext& m_context;
    std::function<bool(const std::string&)> m_showOther;
    CWatchlistFile m_file;
    CRecentFiles m_recent;
    int m_patienceMs = kPatienceMs;
    SSaveJob m_job;
    std::optional<SSaveJob> m_nextJob;
    int m_saves = 0;                   ///< Numbers them: what is said of an earlier one is old.
    bool m_saved = false;              ///< The last save was done.
    std::future<SFileResult> m_saving; ///< Last: it goes first, when the save under way is done.
};

} // namespace vx
