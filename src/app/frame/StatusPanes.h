// SPDX-License-Identifier: MIT
#pragma once

#include <QStatusBar>
#include <QTimer>

#include <string_view>

class QLabel;

namespace vx {

/// The frame's status bar: the document's status, then the feed's state, the market clock and the age of the last data.
class CStatusPanes : public QStatusBar {
    Q_OBJECT
public:
    /// The first text of the first pane, and the text whose width the pane gets.
    static constexpr const char* kReadyText = "Ready...";
    static constexpr const char* kReservedText = "BUFFER SPACE";

    explicit CStatusPanes(QWidget* parent);

    void SetStatus(const QString& text);
    /// Shows a text instead of the status for a few seconds; another status waits, but progress is shown at once.
    void Say(std::string_view text);
    void ShowProgress(const QString& text);
    /// live: false highlights the feed's state.
    void SetFeed(const QString& state, const QString& age, bool live);
    void SetClock(const QString& text);

private:
    void ShowStatus();
    QLabel* AddPane(const char* name, const QString& widest, const QString& tip);

    QLabel* m_status;
    QString m_statusText;
    QTimer m_said{this}; ///< Runs as long as another text is shown.
    QLabel* m_feed;
    QLabel* m_clock;
    QLabel* m_age;
    bool m_live = true;
};

} // namespace vx
