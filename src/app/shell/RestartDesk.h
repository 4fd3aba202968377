#pragma once

#include <QObject>
#include <QStringList>

class QFrame;
class QLabel;

namespace vx {

class CCommands;
class CMainFrame;
enum class EFeedEnd;

/// Says below the grid that the session with the feed client is over, and starts the program anew on the same watchlist
/// and place: what is not saved goes over in the recovery file, the text of an open editor with it.
///
/// Errors  when unsaved changes cannot be kept, or the program cannot be started, a box says so and this one stays
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CRestartDesk : public QObject {
    Q_OBJECT
public:
    CRestartDesk(CMainFrame& frame, CCommands& commands);

    void ShowEnd(EFeedEnd end);

Q_SIGNALS:
    /// The new program runs: this one is to end without a question.
    void Restarted();

private:
    void MakeBar(CCommands& commands);
    void Restart();
    QStringList Arguments() const;

    CMainFrame& m_frame;
    CCommands& m_commands;
    QFrame* m_bar = nullptr;
    QLabel* m_sign = nullptr;
    QLabel* m_text = nullptr;
    EFeedEnd m_end;
};

} // namespace vx
