// SPDX-License-Identifier: MIT
#include "app/shell/RestartController.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/files/FileController.h"
#include "app/files/RecoveryController.h"
#include "app/frame/FramePlacement.h"
#include "app/frame/NorvCommandLineInfo.h"
#include "app/frame/ProgramName.h"
#include "base/MessageBox.h"
#include "base/qt/QtText.h"
#include "feed/session/FeedSession.h"
#include "feed/session/ProgramStart.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistView.h"

#include <QAccessible>
#include <QAction>
#include <QFile>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QStyle>

#include <fmt/format.h>

#include <utility>

namespace vx {

namespace {

constexpr const char* kProgram = "zantrel-watchlist";

QString TextOf(EFeedEnd end) {
    switch (end) {
    case EFeedEnd::Quotes:
        return QStringLiteral("The connection to the feed client has ended. The values are the last ones received.");
    case EFeedEnd::Status:
        return QStringLiteral("The feed client has ended its status connection. Quotes still arrive.");
    default:
        return QStringLiteral("There is no connection to the feed client.");
    }
}

void Say(const std::string& text) { ShowMessageBox({text, kProgramName, EBoxButtons::Ok, EBoxIcon::Exclamation}); }

} // namespace

CRestartController::CRestartController(const SFrameContext& context, CFileController& files,
                                       CRecoveryController& recovery, const CNorvCommandLineInfo& commandLine)
    : QObject(&context.window), m_context(context), m_files(files), m_recovery(recovery), m_commandLine(commandLine),
      m_end(EFeedEnd::None) {
    context.commands.Bind(
        ECommand::Restart, [this] { Restart(); },
        [this](SCommandState& state) { state.enabled = m_end != EFeedEnd::None; });
    MakeBar();
}

// Below the grid, where it moves no row under the pointer.
void CRestartController::MakeBar() {
    QAction& restart = m_context.commands.Action(ECommand::Restart);
    m_bar = new QFrame(&m_context.view);
    m_bar->setObjectName(QStringLiteral("feedEndBar"));
    m_text = new QLabel;
    m_text->setObjectName(QStringLiteral("feedEndText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto* button = new QPushButton(QStringLiteral("&Restart"));
    button->setObjectName(QStringLiteral("feedEndRestart"));
    button->setToolTip(restart.toolTip());
    connect(button, &QPushButton::clicked, &restart, &QAction::trigger);
    auto* layout = new QHBoxLayout(m_bar);
    layout->setContentsMargins(8, 4, 8, 4);
    m_sign = new QLabel;
    layout->addWidget(m_sign);
    layout->addWidget(m_text, 1);
    layout->addWidget(button);
    m_context.view.layout()->addWidget(m_bar);
    m_bar->hide();
}

void CRestartController::ShowEnd(EFeedEnd end) {
    if (std::exchange(m_end, end) == end) return;
    m_text->setText(TextOf(end));
    const int size = m_bar->style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_sign->setPixmap(
        m_bar->style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap({size, size}, m_bar->devicePixelRatioF()));
    m_bar->setVisible(end != EFeedEnd::None);
    m_context.commands.Refresh();
    if (!QAccessible::isActive() || end == EFeedEnd::None) return;
    m_bar->setAccessibleName(m_text->text());
    QAccessibleEvent event(m_bar, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void CRestartController::Restart() {
    // Else the new window would take what this one saves for the work of another program.
    if (!m_files.WaitForSave()) return;
    if (!m_recovery.KeepNow())
        return Say("The unsaved changes could not be kept for the restart. Save the watchlist, then restart.");
    Q_EMIT Leaving();
    const SStartResult result = StartProgram(kProgram, Arguments());
    if (!result.Started()) return Say(fmt::format("Unable to launch {}.  Error Code: {}", kProgram, result.error));
    Q_EMIT Restarted();
}

QStringList CRestartController::Arguments() const {
    const bool modified = m_context.doc.IsModified();
    const QString file = QFile::decodeName(m_files.File().Path().c_str());
    QStringList out;
    const auto add = [&](const char* option, const QString& value) {
        if (!value.isEmpty()) out << QString::fromLatin1(option) << value;
    };
    if (!file.isEmpty()) out << file << QStringLiteral("--new-window"); // The old one has it still.
    if (modified) add("--resume", QFile::decodeName(m_recovery.KeptFile().c_str()));
    if (!modified && m_commandLine.starter) out << QStringLiteral("--starter");
    // What was placed is in the rows, unless nothing else is and no file has it.
    if (!m_context.doc.IsFeedReady() || (!modified && file.isEmpty())) add("-symbol", QtText(m_commandLine.symbol));
    add("-type", QtText(m_commandLine.type));
    add("-interval", QtText(m_commandLine.interval));
    add("--theme", QtText(m_commandLine.theme));
    if (m_commandLine.log) out << QStringLiteral("--log");

    const SPlacement at = m_context.place.Placement();
    add("-left", QString::number(at.left));
    add("-top", QString::number(at.top));
    add("-right", QString::number(at.left + at.width));
    add("-bottom", QString::number(at.top + at.height));
    if (m_context.window.isMinimized())
        out << QStringLiteral("-min");
    else if (at.maximised)
        out << QStringLiteral("-max");
    return out;
}

} // namespace vx
