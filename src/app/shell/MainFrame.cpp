#include "app/shell/MainFrame.h"

#include "app/alerts/AlertDesk.h"
#include "app/alerts/Presence.h"
#include "app/commands/BoardDesk.h"
#include "app/commands/Commands.h"
#include "app/commands/FindDesk.h"
#include "app/commands/FormatDesk.h"
#include "app/commands/MainMenus.h"
#include "app/files/FileDesk.h"
#include "app/files/FileDrop.h"
#include "app/files/FileMenus.h"
#include "app/files/RecoveryDesk.h"
#include "app/files/TransferDesk.h"
#include "app/shell/AboutDlg.h"
#include "app/frame/FramePlacement.h"
#include "app/frame/FramePlacer.h"
#include "app/shell/ProcessAge.h"
#include "app/shell/RestartDesk.h"
#include "app/frame/StatusPanes.h"
#include "app/windows/HelpDesk.h"
#include "app/windows/MarketDesk.h"
#include "app/workspace/LinkDesk.h"
#include "app/workspace/WindowDesk.h"
#include "base/Clock.h"
#include "base/Log.h"
#include "base/MessageNames.h"
#include "base/Registry.h"
#include "base/Text.h"
#include "base/qt/QtText.h"
#include "settings/ConfigLogger.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/RegisteredMessage.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAbstractEventDispatcher>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <fmt/format.h>

#include <utility>

namespace vx {

namespace {

constexpr int kDefaultWidth = 1320;
constexpr int kDefaultHeight = 800;
constexpr int kFrameRoom = 16; // For the window manager's borders at both sides of the first window.
// A window that is never painted (started minimised) gets its feed all the same, after this long.
constexpr int kFeedWithoutPaintMs = 500;
// Watch commands that did not go out are tried again once a second.
constexpr int kTicksPerResend = 1000 / CMainFrame::kStatusMs;

} // namespace

CMainFrame::CMainFrame(CSettings& settings, const CNorvCommandLineInfo& commandLine)
    : m_settings(settings), m_commandLine(commandLine), m_configLogger(std::make_shared<CConfigLogger>()),
      m_health(CClock::Instance().MonotonicMs()), m_panes(new CStatusPanes(this)) {
    setObjectName(QStringLiteral("mainFrame"));
    m_settings.SetLogger(m_configLogger);
    m_store.SetCommandPort(&Level1Commands());
    m_store.SetCodeNames(&m_lookupTables);
    LookupReplies().newsCounts.SetReceiver(this);
    SetFrameTitle(QString::fromLatin1(kProgramName));
    setStatusBar(m_panes);
    m_placer = new CFramePlacer(*this);

    m_doc = std::make_unique<CWatchlistDoc>(m_store, m_settings, *this);
    m_doc->SetNewsCountsPort(this);
    m_view = new CWatchlistView(*m_doc, m_settings, this);
    setCentralWidget(m_view);
    m_view->setFocus();
    MakeDesks();
    m_board->UseTheme(
        QString::fromStdString(commandLine.theme.empty() ? m_settings.ReadTextOrDefault(kTheme) : commandLine.theme),
        false);

    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
            [this] { m_store.NewTurn(); });
    connect(&m_status, &QTimer::timeout, this, &CMainFrame::OnStatusTimer);
    m_status.start(kStatusMs);
}

// The desks look at document and view, which are there by now and go after them.
void CMainFrame::MakeDesks() {
    m_commands = new CCommands(*this);
    m_menus = new CMainMenus(*this, *m_commands);
    m_files = new CFileDesk(*this, *m_commands, CRegistry::CurrentUser());
    m_recovery = new CRecoveryDesk(*this, *m_files);
    m_transfer = new CTransferDesk(*this, *m_files, *m_commands);
    auto* fileMenus = new CFileMenus(*m_files, *m_menus);
    connect(fileMenus, &CFileMenus::RecoveryAsked, m_recovery, [this] { m_recovery->Offer(true); });
    connect(new CFileDrop(*this), &CFileDrop::Dropped, m_files, &CFileDesk::TakeDropped);
    m_board = new CBoardDesk(*this, *m_commands);
    m_alerts = new CAlertDesk(*this, *m_commands);
    m_market = new CMarketDesk(*this, *m_commands);
    new CFindDesk(*this, *m_commands);
    new CFormatDesk(*this, *m_commands);
    new CLinkDesk(*this, *m_commands);
    m_restart = new CRestartDesk(*this, *m_commands);
    new CHelpDesk(*this, *m_commands);
    m_windows = new CWindowDesk(*this, *m_commands);
    m_commands->Refresh();
}

CMainFrame::~CMainFrame() {
    m_status.stop();
    m_doc->Alerts().SetNotices(nullptr);
    for (QObject* desk :
         {static_cast<QObject*>(m_transfer), static_cast<QObject*>(m_recovery), static_cast<QObject*>(m_files),
          static_cast<QObject*>(m_board), static_cast<QObject*>(m_alerts), static_cast<QObject*>(m_market),
          static_cast<QObject*>(m_restart), static_cast<QObject*>(m_windows)})
        delete desk;
    delete m_view; // The view looks at the document until it is gone.
    m_view = nullptr;
    m_doc.reset();
    m_store.SetCommandPort(nullptr);
}

// The window's place

void CMainFrame::ShowPlaced() {
    SPlacement placement = ReadStoredPlacement(m_settings);
    if (placement.width < 1 || placement.height < 1) {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const int columns = m_view->Grid().Geometry().ContentWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        placement.width =
            std::min(std::max(columns, std::min(kDefaultWidth, area.width() * 9 / 10)), area.width() - kFrameRoom);
        placement.height = std::min(kDefaultHeight, area.height() * 9 / 10);
        placement.left = area.left() + (area.width() - placement.width) / 2;
        placement.top = area.top() + (area.height() - placement.height) / 3;
    }
    const SPlacement& own = m_doc->Options().placement;
    if (own.width >= 1 && own.height >= 1)
        placement = own;
    else if (!m_commandLine.HasEdges())
        placement = m_windows->BesideOthers(m_stored.emplace(placement));
    placement.alwaysOnTop = placement.alwaysOnTop || own.alwaysOnTop;
    placement = WithCommandLineEdges(placement, m_commandLine);
    m_placer->Put(placement);
    if (placement.alwaysOnTop) SetAlwaysOnTop(true);

    m_view->Grid().viewport()->installEventFilter(this);
    QTimer::singleShot(kFeedWithoutPaintMs, this, &CMainFrame::StartFeedOnce);
    if (m_commandLine.show == CNorvCommandLineInfo::EShow::Minimised)
        showMinimized();
    else if (placement.maximised)
        showMaximized();
    else
        show();
}

void CMainFrame::ShowSized(int width, int height) {
    resize(width, height);
    m_view->Grid().viewport()->installEventFilter(this);
    show();
}

void CMainFrame::ApplyPlacement(const SPlacement& placement) {
    if (!isVisible()) return; // ShowPlaced takes it from the document.
    if (placement.width >= 1 && placement.height >= 1) m_stored.reset();
    m_placer->Put(placement);
    SetAlwaysOnTop(placement.alwaysOnTop);
}

SPlacement CMainFrame::Placement() const {
    SPlacement out = m_placer->Placement();
    out.alwaysOnTop = IsAlwaysOnTop();
    return out;
}

// Through the window's own flags the toolkit would make the platform window anew, which hides it for a moment and
// forgets where its frame stands.
void CMainFrame::SetAlwaysOnTop(bool onTop) {
    if (IsAlwaysOnTop() == onTop) return;
    if (!windowHandle()) {
        setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
        return;
    }
    overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, onTop));
    windowHandle()->setFlag(Qt::WindowStaysOnTopHint, onTop);
}

void CMainFrame::ForgetCommandLine() {
    m_commandLine.symbol.clear();
    m_commandLine.starter = false;
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    // The answer to the question may take long, and the window may move meanwhile.
    event->setAccepted(m_files->MayClose());
    if (event->isAccepted()) StorePlacement();
}

// A window that went aside for another one would come up farther aside with each run.
void CMainFrame::StorePlacement() {
    if (!m_commandLine.screenshot.empty()) return;
    SPlacement placement = Placement();
    if (m_stored && m_placer->IsWherePut()) {
        m_stored->maximised = placement.maximised;
        m_stored->alwaysOnTop = placement.alwaysOnTop;
        placement = *m_stored;
    }
    WriteStoredPlacement(m_settings, placement);
}

void CMainFrame::customEvent(QEvent* event) {
    if (event->type() == RegisterMessage(kSaveWorkspaceMessageName)) m_windows->SaveWorkspace();
}

// Starting the feed: only after the first paint, since a feed client that is not there yet holds the thread.

bool CMainFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        if (const auto age = ProcessAgeMs()) LogInformation(fmt::format("First paint {} ms after the start.", *age));
        QTimer::singleShot(0, this, &CMainFrame::StartFeedOnce);
    }
    return CNorvMainFrame::eventFilter(watched, event);
}

void CMainFrame::StartFeedOnce() {
    if (!std::exchange(m_feedStarted, true)) StartFeed();
}

// What the document shows of itself

void CMainFrame::Say(std::string_view text) { m_panes->Say(QtText(text)); }

void CMainFrame::SetStatusText(std::string_view text) {
    if (m_doc && text == m_doc->StatusText())
        m_panes->SetStatus(QtText(text));
    else
        m_panes->ShowProgress(QtText(text));
}

void CMainFrame::SetDocumentTitle(std::string_view title) { SetTitleDocument(QtText(title)); }

void CMainFrame::OnStatusTimer() {
    m_files->ShowModified();
    m_recovery->Poll();
    m_alerts->Presence().Poll();
    ShowFeedEnd();
    m_health.Tick(CClock::Instance().MonotonicMs());
    const bool live = m_health.IsLive();
    m_panes->SetFeed(QtText(m_health.StateText()), QtText(m_health.AgeText()), live);
    m_panes->SetClock(QtText(m_clock.Text()));
    if (m_statusTick++ % kTicksPerResend == 0) m_store.SendPendingWatches();
    if (live == m_live) return;
    m_live = live;
    QCoreApplication::postEvent(m_view,
                                new CRegisteredMessage(RegisterMessage(kConnectStatusMessageName), live ? 1 : 0));
}

// The sockets tell nobody that their connection is over, and nothing is connected again in a run.
void CMainFrame::ShowFeedEnd() {
    const EFeedEnd end = FeedEnd();
    if (!m_health.SetEnd(end)) return;
    m_restart->ShowEnd(end);
    m_view->Grid().UpdateAll(); // For the rows' notices.
}

void CMainFrame::ShowAbout() {
    CAboutDlg dialog(*this, this);
    dialog.exec();
}

} // namespace vx
