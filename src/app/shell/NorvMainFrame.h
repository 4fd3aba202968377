#pragma once

#include "feed/session/FeedSession.h"

#include <QMainWindow>

namespace vx {

/// A main window that holds a session with the feed client and a title made of the program's and the document's.
///
/// Thread  GUI thread only
class CNorvMainFrame : public QMainWindow, public CFeedSession {
    Q_OBJECT
public:
    explicit CNorvMainFrame(QWidget* parent = nullptr);

    /// Starts the feed client and opens its admin port. Once a run; best after the first paint.
    void StartFeed();

    /// The program's part of the window title; "Zantrel" until a derived frame says otherwise.
    void SetFrameTitle(const QString& title);
    /// The document's part, behind " - "; an empty one leaves the frame's title alone.
    void SetTitleDocument(const QString& title);

private:
    void ShowTitle();

    QString m_frameTitle;
    QString m_documentTitle;
};

} // namespace vx
