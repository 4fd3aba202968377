#include "app/BoardDesk.h"

#include "app/MainFrame.h"
#include "app/MainMenus.h"
#include "app/Theme.h"
#include "grid/QtText.h"
#include "settings/Settings.h"
#include "watchlist/Commands.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"
#include "watchlist/WatchlistView.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

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

CBoardDesk::CBoardDesk(CMainFrame& frame, CCommands& commands) : QObject(&frame), m_frame(frame), m_commands(commands) {
    FillThemeMenu();
    BindSwitch(ECommand::ViewGridLines, kShowGridLines);
    BindSwitch(ECommand::ViewShading, kShowShading);
    BindSwitch(ECommand::ViewEllipsis, kShowEllipsis);
    BindSwitch(ECommand::ViewReducedMotion, kReducedMotion);
    commands.Bind(ECommand::About, [this] { m_frame.ShowAbout(); });
}

void CBoardDesk::BindSwitch(ECommand command, const SBooleanSetting& setting) {
    CSettings& settings = m_frame.Settings();
    m_commands.Bind(
        command,
        [this, &settings, &setting] {
            settings.WriteBoolean(setting, !settings.ReadBoolean(setting));
            m_frame.View().ApplyViewSettings();
        },
        [&settings, &setting](SCommandState& state) { state.checked = settings.ReadBoolean(setting); });
}

void CBoardDesk::FillThemeMenu() {
    QMenu& menu = m_frame.Menus().Named(CMainMenus::kTheme);
    auto* group = new QActionGroup(this);
    const std::string current = m_frame.Settings().ReadTextOrDefault(kTheme);
    for (const SThemeChoice& theme : kThemes) {
        const QString name = QString::fromLatin1(theme.name);
        QAction* action = menu.addAction(tr(theme.label), this, [this, name] { UseTheme(name, true); });
        action->setCheckable(true);
        action->setChecked(current == theme.name);
        group->addAction(action);
    }
}

void CBoardDesk::UseTheme(const QString& name, bool keep) {
    const std::string text = BytesFromQt(name);
    const bool dark = ApplyTheme(ThemeByName(text));
    m_frame.View().Grid().ApplyTheme(dark ? "dark" : "light");
    m_commands.ApplyIcons();
    if (keep) m_frame.Settings().WriteText(kTheme, text);
}

} // namespace vx
