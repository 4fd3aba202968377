// SPDX-License-Identifier: MIT
#include "app/shell/MainFrame.h"

#include "app/alerts/AlertController.h"
#include "app/alerts/MissedAlerts.h"
#include "app/commands/Commands.h"
#include "app/commands/FindCommands.h"
#include "app/commands/FormatDialogs.h"
#include "app/commands/FrameContext.h"
#include "app/commands/GridCommands.h"
#include "app/commands/MainMenus.h"
#include "app/files/FileController.h"
#include "app/files/FileDrop.h"
#include "app/files/FileMenus.h"
#include "app/files/RecoveryController.h"
#include "app/files/TransferCommands.h"
#include "app/frame/FramePlacement.h"
#include "app/frame/ProgramName.h"
#include "app/frame/StatusPanes.h"
#include "app/shell/AboutDlg.h"
#include "app/shell/RestartController.h"
#include "app/windows/HelpCommands.h"
#include "app/windows/MarketCommands.h"
#include "app/workspace/CompanionPrograms.h"
#include "app/workspace/WindowController.h"
#include "base/Clock.h"
#include "base/Log.h"
#include "base/Registry.h"
#include "base/Text.h"
#include "base/qt/QtText.h"
#include "data/catalogue/UpdateFields.h"
#include "data/record/SymbolKey.h"
#include "settings/Settings.h"
#include "settings/ValidateSetting.h"
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

#include <fmt/format.h>

#include <string>
#include <utility>

namespace vx {

CNorvMainFrame::CNorvMainFrame(QWidget* parent) : QMainWindow(parent), m_frameTitle(QStringLiteral("Zantrel")) {
    ShowTitle();
}

void CNorvMainFrame::StartFeed() {
    LaunchFeedClient();
    OpenAdminPort();
}

void CNorvMainFrame::SetFrameTitle(const QString& title) {
    m_frameTitle = title;
    ShowTitle();
}

void CNorvMainFrame::SetTitleDocument(const QString& title) {
    m_documentTitle = title;
    ShowTitle();
}

// The platform puts its mark of a modified document in the place of "[*]"; a name that holds these characters itself
// has them doubled.
void CNorvMainFrame::ShowTitle() {
    const QString mark = QStringLiteral("[*]");
    QString title = m_documentTitle.isEmpty() ? m_frameTitle : m_frameTitle + QStringLiteral(" - ") + m_documentTitle;
    setWindowTitle(title.replace(mark, mark + mark) + mark);
}

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
    SetFrameTitle(QString::fromLatin1(kProgramName));
    setStatusBar(m_panes);
    m_placer = new CFramePlacer(*this);

    m_doc = std::make_unique<CWatchlistDoc>(m_store, m_settings, *this);
    m_doc->SetNewsCountsPort(this);
    LookupReplies().newsCounts.SetReceiver(m_doc.get());
    m_view = new CWatchlistView(*m_doc, m_settings, this);
    setCentralWidget(m_view);
    m_view->setFocus();
    MakeControllers();
    m_grid->UseTheme(
        QString::fromStdString(commandLine.theme.empty() ? m_settings.ReadTextOrDefault(kTheme) : commandLine.theme),
        false);

    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
            [this] { m_store.NewTurn(); });
    connect(&m_status, &QTimer::timeout, this, &CMainFrame::OnStatusTimer);
    m_status.start(kStatusMs);
}

// Commands and controllers use document and view, which exist by now and are destroyed after them.
void CMainFrame::MakeControllers() {
    m_commands = new CCommands(*this);
    m_context = std::make_unique<SFrameContext>(
        SFrameContext{*m_doc, *m_view, m_settings, *m_commands, *m_panes, *m_placer, *this});
    m_menus = new CMainMenus(*this, *m_commands);
    m_files = new CFileController(*m_context, CRegistry::CurrentUser());
    m_recovery = new CRecoveryController(*m_context, *m_files);
    m_transfer = new CTransferCommands(*m_context, *m_files);
    m_grid = new CGridCommands(*m_context, *m_menus);
    m_alerts = new CAlertController(*m_context);
    m_market = new CMarketCommands(*m_context, *this);
    m_find = new CFindCommands(*m_context);
    new CFormatDialogs(*m_context);
    new CCompanionPrograms(*m_context);
    m_restart = new CRestartController(*m_context, *m_files, *m_recovery, m_commandLine);
    new CHelpCommands(*m_context);
    m_windows = new CWindowController(*m_context, *m_files, m_commandLine);
    ConnectControllers();
    m_commands->Refresh();
}

void CMainFrame::ConnectControllers() {
    auto* fileMenus = new CFileMenus(*m_files, *m_menus);
    connect(fileMenus, &CFileMenus::RecoveryAsked, m_recovery, [this] { m_recovery->Offer(true); });
    connect(new CFileDrop(*this), &CFileDrop::Dropped, m_files, &CFileController::TakeDropped);
    connect(m_files, &CFileController::Changed, m_find, &CFindCommands::ForgetAnswer);
    connect(m_files, &CFileController::Replaced, this, &CMainFrame::ForgetCommandLine);
    connect(m_recovery, &CRecoveryController::Replaced, this, &CMainFrame::ForgetCommandLine);
    connect(m_restart, &CRestartController::Leaving, this, &CMainFrame::StorePlacement);
    m_files->SetShowOther([this](const std::string& path) { return m_windows->ShowOther(path); });
    m_commands->Bind(ECommand::About, [this] { ShowAbout(); });
}

CMainFrame::~CMainFrame() {
    m_status.stop();
    m_doc->AlertRules().SetReceiver(nullptr);
    for (QObject* child :
         {static_cast<QObject*>(m_transfer), static_cast<QObject*>(m_recovery), static_cast<QObject*>(m_files),
          static_cast<QObject*>(m_grid), static_cast<QObject*>(m_alerts), static_cast<QObject*>(m_market),
          static_cast<QObject*>(m_restart), static_cast<QObject*>(m_windows)})
        delete child;
    LookupReplies().newsCounts.SetReceiver(nullptr);
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
    if (placement.alwaysOnTop) m_placer->SetAlwaysOnTop(true);

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
    m_placer->SetAlwaysOnTop(placement.alwaysOnTop);
}

// The symbols and the starter list that it named are for the document that the program started with.
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
    SPlacement placement = m_placer->Placement();
    if (m_stored && m_placer->IsWherePut()) {
        m_stored->maximised = placement.maximised;
        m_stored->alwaysOnTop = placement.alwaysOnTop;
        placement = *m_stored;
    }
    WriteStoredPlacement(m_settings, placement);
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

// What the document shows in the frame

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

// What the main frame does with the lines of the feed, and what the document asks of the feed.

void CMainFrame::OnFeedConnected() { OpenDataPorts(UpdateFieldList()); }

void CMainFrame::OnUpdateMessage(std::string_view line) {
    m_health.NoteData();
    m_store.OnUpdate(line);
}

void CMainFrame::OnSummaryMessage(std::string_view line) {
    m_health.NoteData();
    m_store.OnSummary(line);
}

void CMainFrame::OnFundamentalMessage(std::string_view line) {
    m_health.NoteLine();
    m_store.OnFundamental(line);
}

void CMainFrame::OnRegionalMessage(std::string_view line) {
    m_health.NoteData();
    m_store.OnRegional(line);
}

void CMainFrame::OnSystemMessage(std::string_view line) {
    m_health.NoteLine();
    m_health.SetStatusWord(Stats().status);
    ShowSymbolLimit();
    if (!HandleReadyLine(line)) return;
    m_doc->SetFeedReady();
    m_store.SendPendingWatches();
    // In a watchlist with a file they replace others: closing it asks before these are lost.
    m_doc->PlaceCommandLineSymbols(m_commandLine.Symbols(), !m_files->File().Path().empty());
}

// A refusal may cross the end of the watch; one of a symbol that was never watched here waits like any other.
void CMainFrame::OnSymbolRefused(std::string_view symbol) {
    if (m_unwatched.Has(symbol) && !IsWanted(symbol)) LimitedSymbols().Forget(symbol);
    m_doc->RowHintsChanged(symbol);
}

void CMainFrame::ShowSymbolLimit() {
    std::string text = fmt::format("waiting for room: limit of {} reached", Stats().symbolLimit);
    if (text == m_waitingText) return;
    m_waitingText = std::move(text);
    m_view->Grid().UpdateAll();
}

std::string_view CMainFrame::SymbolHint(std::string_view feedSymbol) const {
    if (!m_health.CanHear()) return "not watched: no connection to the feed client";
    return LimitedSymbols().Has(feedSymbol) ? std::string_view(m_waitingText) : std::string_view{};
}

void CMainFrame::OnTimeMessage(std::string_view line) {
    m_health.NoteLine();
    m_clock.OnTimeMessage(line);
}

void CMainFrame::OnSymbolNotFound(std::string_view line) {
    m_health.NoteLine();
    constexpr size_t kSymbolStart = 2;
    if (line.size() <= kSymbolStart) return;
    LimitedSymbols().Forget(line.substr(kSymbolStart));
    m_doc->SymbolNotFound(line.substr(kSymbolStart));
}

void CMainFrame::OnNewsMessage(std::string_view line) {
    m_health.NoteLine();
    m_doc->OnNewsLine(line);
}

void CMainFrame::OnUnwatched(std::string_view symbol) {
    const std::string_view feedSymbol = FeedSymbol(symbol);
    m_unwatched.Note(feedSymbol);
    // A symbol is still wanted for its own row, or for that of one of its regions.
    if (!IsWanted(feedSymbol)) LimitedSymbols().Forget(feedSymbol);
}

void CMainFrame::SendNewsRequest(std::string_view request) { SendToFeed(kLookupSocket, request); }

} // namespace vx
