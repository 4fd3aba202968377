// SPDX-License-Identifier: MIT
#include "app/commands/Commands.h"

#include "app/commands/CommandIcon.h"
#include "base/qt/QtText.h"

#include <QAction>
#include <QTextDocument>
#include <QTimer>
#include <QWidget>

#include <array>
#include <utility>

namespace vx {

namespace {

struct SCommandRow {
    const char* name;
    int number;
    const char* text;
    const char* keys;
    const char* tip;
    const char* icon;
    bool checkable;
};

constexpr std::array kRows = {
#define ZW_COMMAND(id, number, text, keys, tip, icon, checkable)                                                       \
    SCommandRow{#id, number, text, keys, tip, icon, checkable},
#include "app/commands/CommandTable.def"
#undef ZW_COMMAND
};
static_assert(kRows.size() == static_cast<size_t>(ECommand::Count));

QString PlainText(const char* text) { return QString::fromLatin1(text).remove(QLatin1Char('&')); }

QString TipOf(const SCommandRow& row) {
    return row.tip[0] == '\0' ? PlainText(row.text) : QString::fromLatin1(row.tip);
}

QString WithKeys(QString tip, const QList<QKeySequence>& keys) {
    // A command without a key has one key sequence, an empty one.
    if (!keys.isEmpty() && !keys.front().isEmpty())
        tip += QStringLiteral(" (%1)").arg(keys.front().toString(QKeySequence::NativeText));
    return tip;
}

} // namespace

CCommands::CCommands(QWidget& window) : QObject(&window), m_soon(new QTimer(this)) {
    m_entries.reserve(kRows.size());
    for (size_t index = 0; index < kRows.size(); ++index) {
        const SCommandRow& row = kRows[index];
        auto* action = new QAction(QString::fromLatin1(row.text), this);
        const QList<QKeySequence> keys = QKeySequence::listFromString(QString::fromLatin1(row.keys));
        action->setObjectName(QString::fromLatin1(row.name));
        action->setShortcuts(keys);
        action->setToolTip(WithKeys(TipOf(row), keys));
        action->setStatusTip(TipOf(row));
        action->setCheckable(row.checkable);
        action->setMenuRole(QAction::NoRole);
        if (row.number != 0) action->setData(row.number);
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, [this, index] { Trigger(index); });
        window.addAction(action);
        m_entries.push_back({action, {}, {}});
    }
    m_soon->setSingleShot(true);
    m_soon->setInterval(0);
    connect(m_soon, &QTimer::timeout, this, &CCommands::Refresh);
    ApplyIcons();
}

QString CCommands::Name(ECommand command) {
    const QString name = PlainText(kRows[static_cast<size_t>(command)].text);
    return name.section(QLatin1Char('\t'), 0, 0).remove(QStringLiteral("..."));
}

QString CCommands::Tip(ECommand command) { return TipOf(kRows[static_cast<size_t>(command)]); }

void CCommands::Bind(ECommand command, Handler handler, Update update) {
    SEntry& entry = m_entries[static_cast<size_t>(command)];
    entry.handler = std::move(handler);
    entry.update = std::move(update);
    RefreshSoon();
}

void CCommands::Show(const SEntry& entry, const QString& tableText, const QString& tableTip) const {
    SCommandState state;
    if (entry.update) entry.update(state);
    entry.action->setEnabled(entry.handler && state.enabled);
    if (entry.action->isCheckable()) entry.action->setChecked(state.checked);
    const QString& text = state.text.isEmpty() ? tableText : state.text;
    // What stands in for the table's text tells more than the table's tip: "Undo delete 3 rows".
    const QString tip = !state.tip.isEmpty()    ? state.tip
                        : !state.text.isEmpty() ? QString(text).remove(QLatin1Char('&'))
                                                : tableTip;
    if (entry.action->text() != text) entry.action->setText(text);
    if (entry.action->statusTip() == tip) return;
    entry.action->setStatusTip(tip);
    const QString shown = WithKeys(tip, entry.action->shortcuts());
    entry.action->setToolTip(Qt::mightBeRichText(shown) ? PlainTipText(shown) : shown);
}

void CCommands::Refresh() {
    m_soon->stop();
    for (size_t index = 0; index < m_entries.size(); ++index)
        Show(m_entries[index], QString::fromLatin1(kRows[index].text), TipOf(kRows[index]));
}

void CCommands::RefreshSoon() {
    if (!m_soon->isActive()) m_soon->start();
}

void CCommands::Trigger(size_t index) {
    const SEntry& entry = m_entries[index];
    if (m_before) m_before();
    Show(entry, QString::fromLatin1(kRows[index].text), TipOf(kRows[index]));
    if (!entry.action->isEnabled()) return;
    const Handler handler = entry.handler;
    handler();
    RefreshSoon();
}

void CCommands::ApplyIcons() {
    for (size_t index = 0; index < m_entries.size(); ++index)
        if (kRows[index].icon[0] != '\0') m_entries[index].action->setIcon(CommandIcon(kRows[index].icon));
}

} // namespace vx
