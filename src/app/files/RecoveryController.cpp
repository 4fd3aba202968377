// SPDX-License-Identifier: MIT
#include "app/files/RecoveryController.h"

#include "app/commands/FrameContext.h"
#include "app/files/FileController.h"
#include "app/files/RecoveryDlg.h"
#include "app/frame/Dialogs.h"
#include "app/frame/FramePlacement.h"
#include "app/frame/ProgramName.h"
#include "base/Clock.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/MessageBox.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QTimer>

#include <utility>

namespace vx {

namespace {

// How long the window that restarts may take to end once it has started this one.
constexpr int kHandOverMs = 5000;

} // namespace

CRecoveryController::CRecoveryController(const SFrameContext& context, CFileController& files)
    : QObject(&context.window), m_context(context), m_files(files), m_keeper(context.doc, files.File()) {
    connect(&files, &CFileController::Changed, this, &CRecoveryController::Poll);
}

void CRecoveryController::Poll() {
    m_keeper.Poll(m_context.place.Placement(), CClock::Instance().MonotonicMs());
    const std::string error = m_keeper.TakeError();
    if (error.empty()) return;
    LogInformation(error);
    // A box that opened here would hold up the timer that came here.
    QTimer::singleShot(0, this, [error] {
        const CStrayKeyGuard guard;
        ShowMessageBox({error, kProgramName, EBoxButtons::Ok, EBoxIcon::Exclamation});
    });
}

bool CRecoveryController::KeepNow() {
    m_keeper.KeepNow(m_context.place.Placement()); // First: closing an editor on a lost display may lead anywhere.
    {
        // What an open editor holds was typed to stay; nobody can answer a box about it any more.
        MessageBoxHandler asking = SetMessageBoxHandler([](const SMessageBox&) { return EBoxAnswer::Cancel; });
        m_context.view.Grid().EndEdit(true);
        SetMessageBoxHandler(std::move(asking));
    }
    m_keeper.KeepNow(m_context.place.Placement());
    const bool kept = !m_context.doc.IsModified() || !m_keeper.HasFailed();
    if (!kept) LogInformation("Unsaved changes could not be kept at the end of the session.");
    return kept;
}

bool CRecoveryController::Resume(const std::string& file) {
    const std::optional<SRecovery> left = ClaimRecovery(file, kHandOverMs);
    if (!left || !m_files.OpenRecovered(*left)) return false;
    m_keeper.Adopt(*left);
    return true;
}

void CRecoveryController::Offer(bool userAsked) {
    std::vector<SRecovery> found = FindRecoveries(UserStateFolder());
    if (found.empty()) {
        if (userAsked)
            ShowMessageBox({"There are no unsaved changes of an earlier run.", kProgramName, EBoxButtons::Ok,
                            EBoxIcon::Information});
        return;
    }
    CRecoveryDlg dialog(std::move(found), &m_context.window);
    dialog.exec();
    // What was not chosen is free again before another box may open: other windows may offer it.
    const std::optional<SRecovery> chosen = dialog.TakeChosen();
    if (!chosen || !m_files.OpenRecovered(*chosen)) return;
    Q_EMIT Replaced();
    m_keeper.Adopt(*chosen);
}

} // namespace vx
