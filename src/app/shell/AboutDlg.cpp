// SPDX-License-Identifier: MIT
#include "app/shell/AboutDlg.h"

#include "app/frame/ProgramName.h"
#include "app/shell/MainFrame.h"
#include "base/qt/QtText.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace vx {

CAboutDlg::CAboutDlg(CNorvMainFrame& frame, QWidget* parent) : QDialog(parent), m_frame(frame) {
    setObjectName(QStringLiteral("aboutDialog"));
    setWindowTitle(QStringLiteral("About %1").arg(QString::fromLatin1(kProgramName)));

    auto* name = new QLabel(QString::fromLatin1(kProgramName));
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    name->setFont(large);
    auto* version = new QLabel(QStringLiteral("Version %1").arg(QApplication::applicationVersion()));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* caption = new QLabel(QStringLiteral("&Connections"));

    m_statistics = new QPlainTextEdit;
    m_statistics->setObjectName(QStringLiteral("statistics"));
    m_statistics->setReadOnly(true);
    m_statistics->setTabChangesFocus(true);
    m_statistics->setTabStopDistance(24);
    m_statistics->setPlaceholderText(QStringLiteral("No connection has been opened yet."));
    m_statistics->setMinimumSize(420, 220);
    caption->setBuddy(m_statistics);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    buttons->button(QDialogButtonBox::Close)->setFocus();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(name);
    layout->addWidget(version);
    layout->addSpacing(8);
    layout->addWidget(caption);
    layout->addWidget(m_statistics, 1);
    layout->addWidget(buttons);

    auto* refresh = new QTimer(this);
    refresh->setProperty("timerId", kStatisticsTimer);
    connect(refresh, &QTimer::timeout, this, &CAboutDlg::ShowStatistics);
    refresh->start(kStatisticsMs);
    ShowStatistics();
}

void CAboutDlg::ShowStatistics() {
    std::string text;
    m_frame.GetConnectionStats(text);
    const QString shown = QtText(text);
    if (shown == m_shown) return; // Writing it again would lose what the user has selected.
    m_shown = shown;
    const int position = m_statistics->verticalScrollBar()->value();
    m_statistics->setPlainText(shown);
    m_statistics->verticalScrollBar()->setValue(position);
}

} // namespace vx
