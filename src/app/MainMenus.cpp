// The main frame's menus.

#include "app/MainFrame.h"
#include "app/Theme.h"
#include "grid/QtText.h"
#include "settings/Settings.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"
#include "watchlist/WatchlistView.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

#include <array>

namespace vx {

namespace {

struct SThemeChoice {
    const char* name; ///< As in the setting.
    const char* label;
};

constexpr std::array kThemes = {SThemeChoice{"system", QT_TRANSLATE_NOOP("CMainFrame", "As the &System")},
                                SThemeChoice{"light", QT_TRANSLATE_NOOP("CMainFrame", "&Light")},
                                SThemeChoice{"dark", QT_TRANSLATE_NOOP("CMainFrame", "&Dark")}};

} // namespace

void CMainFrame::MakeMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&New"), QKeySequence::New, this, [this] { m_doc->NewDocument(); });
    file->addSeparator();
    file->addAction(tr("E&xit"), QKeySequence::Quit, this, &QWidget::close);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    AddThemeMenu(*view->addMenu(tr("&Theme")));

    QMenu* window = menuBar()->addMenu(tr("&Window"));
    m_alwaysOnTop = window->addAction(tr("&Always On Top"));
    m_alwaysOnTop->setObjectName(QStringLiteral("alwaysOnTop"));
    m_alwaysOnTop->setCheckable(true);
    m_alwaysOnTop->setData(kAlwaysOnTopCommand);
    connect(m_alwaysOnTop, &QAction::triggered, this, [this](bool checked) { SetAlwaysOnTop(checked); });

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About Zantrel Watchlist"), this, &CMainFrame::ShowAbout)->setMenuRole(QAction::AboutRole);
}

void CMainFrame::AddThemeMenu(QMenu& menu) {
    auto* group = new QActionGroup(this);
    const std::string current = m_settings.ReadTextOrDefault(kTheme);
    for (const SThemeChoice& theme : kThemes) {
        const QString name = QString::fromLatin1(theme.name);
        QAction* action = menu.addAction(tr(theme.label), this, [this, name] { UseTheme(name, true); });
        action->setCheckable(true);
        action->setChecked(current == theme.name);
        group->addAction(action);
    }
}

void CMainFrame::UseTheme(const QString& name, bool keep) {
    const std::string text = BytesFromQt(name);
    const bool dark = ApplyTheme(ThemeByName(text));
    m_view->Grid().ApplyTheme(dark ? "dark" : "light");
    if (keep) m_settings.WriteText(kTheme, text);
}

} // namespace vx
