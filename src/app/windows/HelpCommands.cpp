// SPDX-License-Identifier: MIT
#include "app/windows/HelpCommands.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/windows/GuideDlg.h"
#include "app/windows/ListWindow.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace vx {

namespace {

constexpr QSize kSize{680, 520};

/// Keys that the grid handles.
constexpr std::array<std::pair<const char*, const char*>, 16> kGridKeys = {{
    {"Arrows", "Go to the next cell; with Ctrl to the last one, with Shift select on the way"},
    {"Home, End", "Go to the first or last column; with Ctrl to the first or last cell"},
    {"Page Up, Page Down", "Scroll one page"},
    {"Enter, Shift+Enter", "Go down or up; while typing, accept the text first"},
    {"Tab, Shift+Tab", "While typing: accept the text and go right or left"},
    {"Esc", "While typing: keep the old text; while dragging: cancel the drag"},
    {"F2", "Edit the focus cell"},
    {"Ctrl+A", "Select every cell"},
    {"Ctrl+Space", "Select the columns of the selection"},
    {"Shift+Space", "Select the rows of the selection"},
    {"Shift+F10, Menu", "Open the menu of the selection"},
    {"Enter", "In the find bar: find the next one; with Shift the previous one"},
    {"Ctrl+Enter", "In a note: keep it"},
    {"Space", "In the list of alerts: arm or disarm the alert"},
    {"Del", "In the list of alerts: remove the alert"},
    {"Alt+Left", "In the user guide: go back"},
}};

QString KeysOf(const QAction& action) {
    QStringList out;
    for (const QKeySequence& key : action.shortcuts())
        if (!key.isEmpty()) out += key.toString(QKeySequence::NativeText);
    return out.join(QStringLiteral(", "));
}

} // namespace

CKeysDlg::CKeysDlg(CCommands& commands, QWidget* parent)
    : QDialog(parent), m_filter(new QLineEdit),
      m_list(new CListView(QStringLiteral("keys"), QStringLiteral("Keys"), this)),
      m_shown(new QSortFilterProxyModel(this)) {
    setObjectName(QStringLiteral("keysWindow"));
    setWindowTitle(QStringLiteral("Keys"));
    m_filter->setObjectName(QStringLiteral("keysFilter"));
    m_filter->setPlaceholderText(QStringLiteral("Part of a key or of its description"));
    m_filter->setClearButtonEnabled(true);
    Fill(commands);
    m_shown->setFilterKeyColumn(-1);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_list->setModel(m_shown);
    m_list->SetColumnWidths({160, 170, 300});
    m_list->SetEmptyText(QStringLiteral("No key matches. The menus have every command."));

    auto* caption = new QLabel(QStringLiteral("&Find:"));
    caption->setBuddy(m_filter);
    auto* top = new QHBoxLayout;
    top->addWidget(caption);
    top->addWidget(m_filter, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    const QDialogButtonBox& buttons = AddBottomRow(*this, *layout, *new QLabel, QDialogButtonBox::Close);
    resize(kSize);
    TabThrough({m_filter, m_list, buttons.button(QDialogButtonBox::Close)});
    connect(m_filter, &QLineEdit::textChanged, m_shown, &QSortFilterProxyModel::setFilterFixedString);
}

void CKeysDlg::Fill(const CCommands& commands) {
    auto* rows = new QStandardItemModel(0, 3, this);
    rows->setHorizontalHeaderLabels(
        {QStringLiteral("Keys"), QStringLiteral("Command"), QStringLiteral("What it does")});
    const auto add = [rows](const QString& keys, const QString& command, const QString& tip) {
        QList<QStandardItem*> items;
        for (const QString& text : {keys, command, tip}) {
            items += new QStandardItem(text);
            items.back()->setToolTip(text);
        }
        rows->appendRow(items);
    };
    for (int id = 0; id < static_cast<int>(ECommand::Count); ++id) {
        const QAction& action = commands.Action(static_cast<ECommand>(id));
        const QString keys = KeysOf(action);
        if (!keys.isEmpty())
            add(keys, commands.Name(static_cast<ECommand>(id)), commands.Tip(static_cast<ECommand>(id)));
    }
    for (const auto& [keys, what] : kGridKeys) add(QString::fromLatin1(keys), {}, QString::fromUtf8(what));
    m_shown->setSourceModel(rows);
}

CHelpCommands::CHelpCommands(const SFrameContext& context) : QObject(&context.window), m_context(context) {
    context.commands.Bind(ECommand::HelpGuide, [this] {
        if (!m_guide) Add(*(m_guide = new CGuideDlg(&m_context.window)));
        Show(*m_guide);
    });
    context.commands.Bind(ECommand::HelpKeys, [this] {
        if (!m_keys) Add(*(m_keys = new CKeysDlg(m_context.commands, &m_context.window)));
        Show(*m_keys);
    });
}

// One window of the help opens the other as well.
void CHelpCommands::Add(QDialog& window) const {
    for (const ECommand command : {ECommand::HelpGuide, ECommand::HelpKeys})
        window.addAction(&m_context.commands.Action(command));
}

void CHelpCommands::Show(QDialog& window) {
    if (window.isMinimized()) window.showNormal();
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace vx
