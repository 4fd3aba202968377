// SPDX-License-Identifier: MIT
#include "app/commands/ViewCommands.h"

#include "app/commands/MainMenus.h"
#include "app/frame/Theme.h"
#include "base/qt/QtText.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QToolBar>

#include <array>

namespace vx {

namespace {

struct SThemeChoice {
    const char* name; ///< As in the setting.
    const char* label;
};

constexpr std::array kThemes = {SThemeChoice{"system", "As the &System"}, SThemeChoice{"light", "&Light"},
                                SThemeChoice{"dark", "&Dark"}};

} // namespace

CViewCommands::CViewCommands(const SFrameContext& context, QObject* parent, CMainMenus& menus)
    : CCommandGroup(context, parent), m_menus(menus) {
    FillThemeMenu();
    BindOption(ECommand::ViewRowNumbers, &SWatchlistOptions::showRowNumbers, "row numbers");
    BindOption(ECommand::ViewToolBar, &SWatchlistOptions::showToolBar, "tool bar");
    BindSwitch(ECommand::ViewSymbolInSight, kSymbolInSight);
    BindSwitch(ECommand::ViewGridLines, kShowGridLines);
    BindSwitch(ECommand::ViewShading, kShowShading);
    BindSwitch(ECommand::ViewEllipsis, kShowEllipsis);
    BindSwitch(ECommand::ViewReducedMotion, kReducedMotion);
    connect(&View(), &CWatchlistView::DocumentChanged, this, &CViewCommands::ShowToolBar);
}

void CViewCommands::BindSwitch(ECommand command, const SBooleanSetting& setting) {
    CSettings& settings = Settings();
    Commands().Bind(
        command,
        [this, &settings, &setting] {
            settings.WriteBoolean(setting, !settings.ReadBoolean(setting));
            View().ApplyViewSettings();
        },
        [&settings, &setting](SCommandState& state) { state.checked = settings.ReadBoolean(setting); });
}

void CViewCommands::BindOption(ECommand command, bool SWatchlistOptions::*option, const char* what) {
    Commands().Bind(
        command,
        [this, option, what] {
            const bool shown = Doc().Options().*option;
            Doc().Edit(std::string(shown ? "hide " : "show ") + what,
                       [&](CWatchlistEdit& edit) { edit.Options().*option = !shown; });
        },
        [this, option](SCommandState& state) { state.checked = Doc().Options().*option; });
}

void CViewCommands::ShowToolBar() {
    const bool shown = Doc().Options().showToolBar;
    QToolBar& toolBar = m_menus.ToolBar();
    if (toolBar.isHidden() == shown) toolBar.setVisible(shown);
}

void CViewCommands::FillThemeMenu() {
    QMenu& menu = m_menus.Named(CMainMenus::kTheme);
    auto* group = new QActionGroup(this);
    const std::string current = Settings().ReadTextOrDefault(kTheme);
    for (const SThemeChoice& theme : kThemes) {
        const QString name = QString::fromLatin1(theme.name);
        QAction* action = menu.addAction(QString::fromUtf8(theme.label), this, [this, name] { UseTheme(name, true); });
        action->setCheckable(true);
        action->setChecked(current == theme.name);
        group->addAction(action);
    }
}

void CViewCommands::UseTheme(const QString& name, bool keep) {
    const std::string text = BytesFromQt(name);
    const bool dark = ApplyTheme(ThemeByName(text));
    Grid().ApplyTheme(dark ? "dark" : "light");
    Commands().ApplyIcons();
    if (keep) Settings().WriteText(kTheme, text);
}

} // namespace vx
