// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace vx {

class CNorvMainFrame;

/// The about box: name, version, and the statistics of the connections, which it refreshes while it is open.
class CAboutDlg : public QDialog {
    Q_OBJECT
public:
    static constexpr int kStatisticsTimer = 1;
    static constexpr int kStatisticsMs = 2000;

    explicit CAboutDlg(CNorvMainFrame& frame, QWidget* parent);

private:
    void ShowStatistics();

    CNorvMainFrame& m_frame;
    QPlainTextEdit* m_statistics;
    QString m_shown;
};

} // namespace vx
