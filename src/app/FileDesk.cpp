#include "app/FileDesk.h"

#include "app/FileDialogs.h"
#include "app/MainFrame.h"
#include "app/WindowDesk.h"
#include "base/MessageBox.h"
#include "base/Text.h"
#include "base/Utf8Text.h"
#include "watchlist/Commands.h"
#include "watchlist/RecoveryFile.h"
#include "watchlist/StateFiles.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistFolder.h"
#include "watchlist/WatchlistGrid.h"
#include "watchlist/WatchlistView.h"

#include <fmt/format.h>

#include <utility>

namespace vx {

namespace {

constexpr const char* kUntitled = "Untitled";

bool HoldsSymbolsOnly(const std::string& path) {
    const std::string name = LowerAscii(path);
    return name.ends_with(".csv") || name.ends_with(".txt");
}

EBoxAnswer Ask(const std::string& text, EBoxButtons buttons, EBoxIcon icon) {
    return ShowMessageBox({text, kProgramName, buttons, icon});
}

} // namespace

CFileDesk::CFileDesk(CMainFrame& frame, CCommands& commands, CRegistry& registry)
    : QObject(&frame), m_frame(frame), m_file(frame.Document()), m_recent(registry) {
    commands.Bind(ECommand::FileNew, [this] { New(); });
    commands.Bind(ECommand::FileOpen, [this] { AskAndOpen(); });
    commands.Bind(ECommand::FileSave, [this] { Save(); });
    commands.Bind(ECommand::FileSaveAs, [this] { SaveAs(); });
    commands.Bind(ECommand::FileExit, [this] { m_frame.close(); });
}

std::string CFileDesk::Name() const {
    return m_file.Path().empty() ? kUntitled : Windows1252FromUtf8(TitleOfPath(m_file.Path()));
}

void CFileDesk::ShowModified() {
    const bool modified = m_frame.Document().IsModified();
    if (m_frame.isWindowModified() != modified) m_frame.setWindowModified(modified);
}

// Another document

void CFileDesk::New() {
    if (!MayLeave()) return;
    m_frame.Document().NewDocument();
    m_file.Forget();
    m_frame.ForgetCommandLine();
    Finish({});
}

void CFileDesk::AskAndOpen() {
    EnterWatchlistFolder(m_frame.Settings());
    const std::string path = AskForFileToOpen(
        &m_frame, {tr("Open Watchlist"), WatchlistFilters(), QString::fromLatin1(kWatchlistSuffix), {}});
    if (!path.empty()) OpenInstead(path);
}

bool CFileDesk::OpenInstead(const std::string& path) {
    if (m_frame.Windows().ShowOther(path)) return false;
    if (!MayLeave() || !Open(path)) return false;
    m_frame.ForgetCommandLine();
    return true;
}

bool CFileDesk::Open(const std::string& path) {
    const SFileResult result = m_file.Open(path);
    if (result.IsDone()) m_recent.Add(m_file.Path());
    Finish(result);
    return result.IsDone();
}

bool CFileDesk::OpenFormer(const SGeneration& generation) {
    if (!MayLeave()) return false;
    const SFileResult result = m_file.OpenFormer(generation);
    Finish(result);
    return result.IsDone();
}

bool CFileDesk::OpenRecovered(const SRecovery& recovery) {
    if (!MayLeave()) return false;
    const SFileResult result = m_file.OpenRecovered(recovery);
    Finish(result);
    return result.IsDone();
}

void CFileDesk::TellLeftAlone(const std::string& first, size_t others) {
    if (others == 0) return;
    Ask(fmt::format("Only \"{}\" is opened: a window shows one watchlist. The other {} left alone.",
                    Windows1252FromUtf8(first),
                    others == 1 ? std::string("file was") : fmt::format("{} files were", others)),
        EBoxButtons::Ok, EBoxIcon::Information);
}

void CFileDesk::TakeDropped(const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    const std::string& first = paths.front();
    TellLeftAlone(first, paths.size() - 1);
    if (HoldsSymbolsOnly(first))
        Q_EMIT ImportAsked(first);
    else
        OpenInstead(first);
}

// What came of it, in words.
void CFileDesk::Finish(const SFileResult& result) {
    ShowModified();
    Q_EMIT Changed();
    if (!result.IsDone()) Ask(result.error, EBoxButtons::Ok, EBoxIcon::Exclamation);
    for (const std::string& notice : result.notices) Ask(notice, EBoxButtons::Ok, EBoxIcon::Information);
}

// Saving

bool CFileDesk::Save() { return m_file.Path().empty() ? SaveAs() : Write({}); }

bool CFileDesk::SaveAs() {
    EnterWatchlistFolder(m_frame.Settings());
    const std::string proposal =
        m_file.Path().empty() ? fmt::format("{}.{}", kUntitled, kWatchlistSuffix) : m_file.Path();
    const std::string path = AskForFileToSave(
        &m_frame, {tr("Save Watchlist As"), WatchlistFilters(), QString::fromLatin1(kWatchlistSuffix), proposal});
    return !path.empty() && Write(path);
}

// An empty path is the document's own file.
bool CFileDesk::Write(const std::string& path) {
    SSaveConsent consent;
    bool elsewhere = false;
    SFileResult result;
    do {
        result = path.empty() ? m_file.Save(m_frame.Placement(), consent)
                              : m_file.SaveAs(path, m_frame.Placement(), consent);
    } while (AgreesTo(result, consent, elsewhere));
    if (elsewhere) return SaveAs();
    ShowModified();
    Q_EMIT Changed();
    if (!result.IsDone()) return false;
    m_recent.Add(m_file.Path());
    for (const std::string& notice : result.notices) Ask(notice, EBoxButtons::Ok, EBoxIcon::Information);
    return !m_frame.Document().IsModified();
}

// True: the save is to be tried again, with the consent given now. elsewhere: under another name instead.
bool CFileDesk::AgreesTo(const SFileResult& result, SSaveConsent& consent, bool& elsewhere) const {
    switch (result.outcome) {
    case EFileOutcome::Done:
        return false;
    case EFileOutcome::ChangedOnDisk: {
        const EBoxAnswer answer =
            Ask(result.error + "\n\nOverwrite it with this watchlist? \"No\" saves under another name.",
                EBoxButtons::YesNoCancel, EBoxIcon::Exclamation);
        elsewhere = answer == EBoxAnswer::No;
        return consent.overwriteChanged = answer == EBoxAnswer::Yes;
    }
    case EFileOutcome::FormerNotKept:
        return consent.withoutFormer = Ask(result.error + "\n\nSave all the same?", EBoxButtons::YesNo,
                                           EBoxIcon::Exclamation) == EBoxAnswer::Yes;
    case EFileOutcome::Failed:
        break;
    }
    Ask(result.error, EBoxButtons::Ok, EBoxIcon::Exclamation);
    return false;
}

// Leaving the document

bool CFileDesk::MayLeave() {
    m_frame.View().Grid().EndEdit(true); // What stands in an open editor was typed to stay.
    if (!m_frame.Document().IsModified()) return true;
    switch (Ask(fmt::format("Save changes to \"{}\"?", Name()), EBoxButtons::YesNoCancel, EBoxIcon::Question)) {
    case EBoxAnswer::Yes:
        return Save();
    case EBoxAnswer::No:
        return true;
    default:
        return false;
    }
}

bool CFileDesk::MayClose() {
    if (!MayLeave()) return false;
    m_frame.Document().CloseDocument();
    m_file.Forget();
    ShowModified();
    Q_EMIT Changed();
    return true;
}

} // namespace vx
