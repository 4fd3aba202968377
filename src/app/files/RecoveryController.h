// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/file/RecoveryKeeper.h"

#include <QObject>

namespace vx {

class CFileController;
struct SFrameContext;

/// Sees to it that unsaved changes outlive the program, and gives those of an earlier run back.
///
/// Owns    the keeper of the document; nothing of context and files, which outlive it
/// Thread  GUI thread only
class CRecoveryController : public QObject {
    Q_OBJECT
public:
    CRecoveryController(const SFrameContext& context, CFileController& files);

    /// Keeps what is to be kept by now; the frame's timer calls it.
    void Poll();
    /// The program is about to end without a question: what is not saved, the text of an open editor with it, is on
    /// disk when this returns; false when it is not.
    bool KeepNow();
    /// The file in which unsaved changes are kept; empty when there are none.
    std::string KeptFile() { return m_keeper.File(); }
    /// Takes over what another window of the program has kept in a file and leaves behind when it ends, which may take
    /// a while. False when that cannot be had.
    bool Resume(const std::string& file);

    /// Offers the changes that an earlier run left behind; does nothing when there are none, unless the user asked.
    void Offer(bool userAsked);

    /// Waits until the disk has what was asked for.
    void Flush() { m_keeper.Flush(); }

Q_SIGNALS:
    /// The user chose changes of an earlier run in place of the document; as CFileController::Replaced.
    void Replaced();

private:
    const SFrameContext& m_context;
    CFileController& m_files;
    CRecoveryKeeper m_keeper;
};

} // namespace vx
