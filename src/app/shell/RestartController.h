// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QFrame;
class QLabel;

namespace vx {

class CFileController;
class CNorvCommandLineInfo;
class CRecoveryController;
enum class EFeedEnd;
struct SFrameContext;

/// Shows below the grid that the session with the feed client is over, and restarts the program with the same watchlist
/// and place: what is not saved is handed over in the recovery file, with the text of an open editor.
///
/// Errors  when unsaved changes cannot be kept, or the program cannot be started, a box says so and this one stays
class CRestartController : public QObject {
    Q_OBJECT
public:
    CRestartController(const SFrameContext& context, CFileController& files, CRecoveryController& recovery,
                       const CNorvCommandLineInfo& commandLine);

    void ShowEnd(EFeedEnd end);

Q_SIGNALS:
    /// The new program is about to start: store what it has to find before returning.
    void Leaving();
    /// The new program runs: end this one without a question.
    void Restarted();

private:
    void MakeBar();
    void Restart();
    QStringList Arguments() const;

    const SFrameContext& m_context;
    CFileController& m_files;
    CRecoveryController& m_recovery;
    const CNorvCommandLineInfo& m_commandLine;
    QFrame* m_bar = nullptr;
    QLabel* m_sign = nullptr;
    QLabel* m_text = nullptr;
    EFeedEnd m_end;
};

} // namespace vx
