// SPDX-License-Identifier: MIT
#include "app/files/FileController.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/files/FileDialogs.h"
#include "app/frame/Dialogs.h"
#include "app/frame/FramePlacement.h"
#include "app/frame/ProgramName.h"
#include "app/frame/StatusPanes.h"
#include "base/MessageBox.h"
#include "base/Text.h"
#include "base/Windows1252.h"
#include "base/qt/QtText.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <fmt/format.h>

#include <chrono>
#include <pthread.h>
#include <utility>

namespace vx {

namespace {

constexpr const char* kUntitled = "Untitled";
constexpr const char* kSaveThreadName = "vx-save";
constexpr std::chrono::milliseconds kLook{10};

bool HoldsSymbolsOnly(const std::string& path) {
    const std::string name = LowerAscii(path);
    return name.ends_with(".csv") || name.ends_with(".txt");
}

EBoxAnswer Ask(const std::string& text, EBoxButtons buttons, EBoxIcon icon) {
    return ShowMessageBox({text, kProgramName, buttons, icon});
}

// "No" is elsewhere: under another name.
bool AgreesToOverwrite(const std::string& why, bool& elsewhere) {
    const EBoxAnswer answer = Ask(why + "\n\nOverwrite it with this watchlist? \"No\" saves under another name.",
                                  EBoxButtons::YesNoCancel, EBoxIcon::Exclamation);
    elsewhere = answer == EBoxAnswer::No;
    return answer == EBoxAnswer::Yes;
}

} // namespace

CFileController::CFileController(const SFrameContext& context, CRegistry& registry)
    : QObject(&context.window), m_context(context), m_file(context.doc), m_recent(registry) {
    context.commands.Bind(ECommand::FileNew, [this] { New(); });
    context.commands.Bind(ECommand::FileOpen, [this] { AskAndOpen(); });
    context.commands.Bind(ECommand::FileSave, [this] { Save(); });
    context.commands.Bind(ECommand::FileSaveAs, [this] { SaveAs(); });
    context.commands.Bind(ECommand::FileExit, [this] { m_context.window.close(); });
}

std::string CFileController::Name() const {
    return m_file.Path().empty() ? kUntitled : Windows1252FromUtf8(TitleOfPath(m_file.Path()));
}

void CFileController::ShowModified() {
    const bool modified = m_context.doc.IsModified();
    if (m_context.window.isWindowModified() != modified) m_context.window.setWindowModified(modified);
}

// Another document

void CFileController::New() {
    if (!MayLeave()) return;
    m_context.doc.NewDocument();
    m_file.Forget();
    Q_EMIT Replaced();
    Finish({});
}

void CFileController::AskAndOpen() {
    EnterWatchlistFolder(m_context.settings);
    const std::string path = AskForFileToOpen(
        &m_context.window,
        {QStringLiteral("Open Watchlist"), WatchlistFilters(), QString::fromLatin1(kWatchlistSuffix), {}});
    if (!path.empty()) OpenInstead(path);
}

bool CFileController::OpenInstead(const std::string& path) {
    if (m_showOther && m_showOther(path)) return false;
    if (!MayLeave() || !Open(path)) return false;
    Q_EMIT Replaced();
    return true;
}

bool CFileController::Open(const std::string& path) {
    const SFileResult result = m_file.Open(path);
    if (result.IsDone()) m_recent.Add(m_file.Path());
    Finish(result);
    return result.IsDone();
}

bool CFileController::OpenBackup(const SBackup& backup) {
    if (!MayLeave()) return false;
    const SFileResult result = m_file.OpenBackup(backup);
    Finish(result);
    return result.IsDone();
}

bool CFileController::OpenRecovered(const SRecovery& recovery) {
    if (!MayLeave()) return false;
    const SFileResult result = m_file.OpenRecovered(recovery);
    Finish(result);
    return result.IsDone();
}

void CFileController::TellLeftAlone(const std::string& first, size_t others) {
    if (others == 0) return;
    Ask(fmt::format("Only \"{}\" is opened: a window shows one watchlist. The other {} left alone.",
                    Windows1252FromUtf8(first),
                    others == 1 ? std::string("file was") : fmt::format("{} files were", others)),
        EBoxButtons::Ok, EBoxIcon::Information);
}

void CFileController::TakeDropped(const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    const std::string& first = paths.front();
    TellLeftAlone(first, paths.size() - 1);
    if (HoldsSymbolsOnly(first))
        Q_EMIT ImportAsked(first);
    else
        OpenInstead(first);
}

// What came of it, in words.
void CFileController::Finish(const SFileResult& result) {
    ShowModified();
    Q_EMIT Changed();
    if (!result.IsDone()) Ask(result.error, EBoxButtons::Ok, EBoxIcon::Exclamation);
    if (!result.remark.empty()) m_context.status.Say(result.remark);
    for (const std::string& notice : result.notices) Ask(notice, EBoxButtons::Ok, EBoxIcon::Information);
}

// Saving

void CFileController::Save() {
    if (m_file.Path().empty())
        SaveAs();
    else
        StartSave({});
}

void CFileController::SaveAs() {
    EnterWatchlistFolder(m_context.settings);
    const std::string proposal =
        m_file.Path().empty() ? fmt::format("{}.{}", kUntitled, kWatchlistSuffix) : m_file.Path();
    const std::string path =
        AskForFileToSave(&m_context.window, {QStringLiteral("Save Watchlist As"), WatchlistFilters(),
                                             QString::fromLatin1(kWatchlistSuffix), proposal});
    if (!path.empty()) StartSave(path);
}

// An empty path is the document's own file.
void CFileController::StartSave(const std::string& path) {
    m_saved = false;
    SSaveJob job = m_file.BeginSave(path, m_context.place.Placement());
    if (IsSaving()) {
        m_nextJob = std::move(job);
        return;
    }
    m_job = std::move(job);
    RunSave();
}

void CFileController::RunSave() {
    const int number = ++m_saves;
    m_file.RenewJob(m_job);
    m_saving = std::async(std::launch::async, [this, number] {
        pthread_setname_np(pthread_self(), kSaveThreadName);
        SFileResult result = m_file.Saver().Save(m_job);
        QMetaObject::invokeMethod(
            this,
            [this, number] {
                const CStrayKeyGuard guard; // The user was free to type meanwhile.
                OnSaved(number);
            },
            Qt::QueuedConnection);
        return result;
    });
    if (m_saving.wait_for(std::chrono::milliseconds(m_patienceMs)) == std::future_status::ready) OnSaved(number);
}

void CFileController::OnSaved(int number) {
    if (!m_saving.valid() || number != m_saves) return;
    const SFileResult result = m_saving.get();
    m_file.EndSave(m_job, result);
    bool elsewhere = false;
    if (AgreesTo(result, m_job.consent, elsewhere)) return RunSave();
    m_saved = result.IsDone();
    ShowModified();
    Q_EMIT Changed();
    if (m_saved) m_recent.Add(m_file.Path());
    for (const std::string& notice : result.notices) Ask(notice, EBoxButtons::Ok, EBoxIcon::Information);
    if (elsewhere) {
        m_nextJob.reset();
        SaveAs();
    } else if (std::optional<SSaveJob> next = std::exchange(m_nextJob, std::nullopt)) {
        m_saved = false;
        m_job = std::move(*next);
        RunSave();
    }
}

bool CFileController::WaitForSave() {
    CWorkProgressBox box(&m_context.window, QStringLiteral("Saving \"%1\"").arg(QtText(Name())),
                         QStringLiteral("&Go Back"));
    while (IsSaving()) {
        if (!box.Step(0, 0)) return false;
        if (IsSaving() && m_saving.wait_for(kLook) == std::future_status::ready) OnSaved(m_saves);
    }
    return true;
}

// True: the save is to be tried again, with the consent given now. elsewhere: under another name instead.
bool CFileController::AgreesTo(const SFileResult& result, SSaveConsent& consent, bool& elsewhere) const {
    switch (result.outcome) {
    case EFileOutcome::Done:
        return false;
    case EFileOutcome::ChangedOnDisk:
        return consent.overwriteChanged = AgreesToOverwrite(result.error, elsewhere);
    case EFileOutcome::NotAllRead:
        return consent.overwriteUnread = AgreesToOverwrite(result.error, elsewhere);
    case EFileOutcome::BackupNotKept:
        return consent.withoutBackup = Ask(result.error + "\n\nSave all the same?", EBoxButtons::YesNo,
                                           EBoxIcon::Exclamation) == EBoxAnswer::Yes;
    case EFileOutcome::Failed:
        break;
    }
    Ask(result.error, EBoxButtons::Ok, EBoxIcon::Exclamation);
    return false;
}

// Leaving the document

bool CFileController::MayLeave() {
    m_context.view.Grid().EndEdit(true); // A text in an open editor was typed to be kept.
    if (!WaitForSave()) return false;
    while (m_context.doc.IsModified()) { // An alert may modify it while it is being saved.
        switch (Ask(fmt::format("Save changes to \"{}\"?", Name()), EBoxButtons::YesNoCancel, EBoxIcon::Question)) {
        case EBoxAnswer::Yes:
            m_saved = false;
            Save();
            if (!WaitForSave() || !m_saved) return false;
            break;
        case EBoxAnswer::No:
            return true;
        default:
            return false;
        }
    }
    return true;
}

bool CFileController::MayClose() {
    if (!MayLeave()) return false;
    m_context.doc.CloseDocument();
    m_file.Forget();
    ShowModified();
    Q_EMIT Changed();
    return true;
}

} // namespace vx
