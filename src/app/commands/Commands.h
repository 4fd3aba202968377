// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>
#include <vector>

class QAction;
class QMenu;
class QTimer;

namespace vx {

/// The commands of the program; see CommandTable.def.
enum class ECommand {
#define ZW_COMMAND(id, number, text, keys, tip, icon, checkable) id,
#include "app/commands/CommandTable.def"
#undef ZW_COMMAND
    Count
};

/// How a command looks at this moment.
struct SCommandState {
    bool enabled = true;
    bool checked = false; ///< Counts for checkable commands.
    QString text;         ///< In place of the table's text, while not empty.
    QString tip;          ///< In place of the table's tip, while not empty.
};

/// The commands of one window: an action for each row of the table, and who carries it out. Menus, tool bar and context
/// menus show the same actions, so that a command is named, enabled and checked in one place.
///
/// Shape   an action's object name is the command's id ("FileOpen"), its data the command's number
/// Errors  a command that nobody bound is disabled
/// Owns    the actions, which are added to the window so that their keys work
/// Thread  GUI thread only
class CCommands : public QObject {
    Q_OBJECT
public:
    using Handler = std::function<void()>;
    using Update = std::function<void(SCommandState&)>;

    explicit CCommands(QWidget& window);

    /// Names who carries a command out, and who says how it looks; without the latter it is always enabled. A command
    /// that its update disables is not carried out, however it was reached.
    void Bind(ECommand command, Handler handler, Update update = {});
    /// What is done before any command is carried out, such as taking over what is being typed.
    void SetBefore(Handler before) { m_before = std::move(before); }
    /// What the table says of a command, whatever its action shows at the moment: its name, without a mark for an
    /// access key, and its tip.
    static QString Name(ECommand command);
    static QString Tip(ECommand command);
    QAction& Action(ECommand command) const { return *m_entries[static_cast<size_t>(command)].action; }

    /// Asks every update how its command looks now.
    void Refresh();
    /// The same, once, when the event loop comes round; call it for every change that a command may depend on.
    void RefreshSoon();

    /// The pictures of the actions in the colours of the palette; call it again when the theme is another.
    void ApplyIcons();

private:
    struct SEntry {
        QAction* action = nullptr;
        Handler handler;
        Update update;
    };

    void Trigger(size_t index);
    void Show(const SEntry& entry, const QString& tableText, const QString& tableTip) const;

    std::vector<SEntry> m_entries;
    Handler m_before;
    QTimer* m_soon;
};

} // namespace vx
