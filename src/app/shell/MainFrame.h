// SPDX-License-Identifier: MIT
#pragma once

#include "app/frame/NorvCommandLineInfo.h"
#include "app/shell/FeedHealth.h"
#include "data/store/L1DataStore.h"
#include "data/store/MarketClock.h"
#include "feed/lookup/LookupTables.h"
#include "feed/session/FeedSession.h"
#include "feed/session/SymbolQueue.h"
#include "news/NewsMap.h"
#include "watchlist/document/WatchlistFrame.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>
#include <optional>
#include <string>

namespace vx {

class CAlertController;
class CGridCommands;
class CCommands;
class CConfigLogger;
class CFileController;
class CFindCommands;
class CFramePlacer;
class CMainMenus;
class CMarketCommands;
class CRecoveryController;
class CRestartController;
class CSettings;
class CStatusPanes;
class CTransferCommands;
class CWatchlistDoc;
class CWatchlistView;
class CWindowController;
struct SFrameContext;

/// A main window that holds a session with the feed client and a title made of the program's and the document's.
class CNorvMainFrame : public QMainWindow, public CFeedSession {
    Q_OBJECT
public:
    explicit CNorvMainFrame(QWidget* parent = nullptr);

    /// Starts the feed client and opens its admin port. Once a run; best after the first paint.
    void StartFeed();

    /// The program's part of the window title; "Zantrel" until a derived frame says otherwise.
    void SetFrameTitle(const QString& title);
    /// The document's part, after " - "; an empty one leaves the frame's title alone.
    void SetTitleDocument(const QString& title);

private:
    void ShowTitle();

    QString m_frameTitle;
    QString m_documentTitle;
};

/// The watchlist program's main window: owns the level-1 store, the document and its view, and hands every line of the
/// feed to the object that handles it.
///
/// Owns    all of the above
class CMainFrame : public CNorvMainFrame, public CWatchlistFrame, private CNewsCountsPort {
    Q_OBJECT
public:
    static constexpr int kStatusMs = 250;

    CMainFrame(CSettings& settings, const CNorvCommandLineInfo& commandLine);
    ~CMainFrame() override;

    CWatchlistDoc& Document() { return *m_doc; }
    CWatchlistView& View() { return *m_view; }
    CL1DataStore& Store() { return m_store; }
    const CNorvCommandLineInfo& CommandLine() const { return m_commandLine; }
    CCommands& Commands() { return *m_commands; }
    CMainMenus& Menus() { return *m_menus; }
    CFileController& Files() { return *m_files; }
    CGridCommands& GridCommands() { return *m_grid; }
    CAlertController& Alerts() { return *m_alerts; }
    CRecoveryController& Recovery() { return *m_recovery; }
    CTransferCommands& Transfer() { return *m_transfer; }
    CFramePlacer& Place() { return *m_placer; }
    CRestartController& Restart() { return *m_restart; }
    /// The names of markets and security types that the store shows.
    CLookupTables& LookupTables() { return m_lookupTables; }

    /// Shows the window where the last run or the command line wants it, and starts the feed after the first paint.
    void ShowPlaced();
    /// Places the window and starts the feed without showing anything on a screen, for pictures.
    void ShowSized(int width, int height);
    /// Leaves the feed alone when the window is shown: the caller opens the ports itself.
    void KeepFeedClosed() { m_feedStarted = true; }
    void ShowAbout();
    /// Keeps the window's place for the next run.
    void StorePlacement();

    void SetStatusText(std::string_view text) override;
    void SetDocumentTitle(std::string_view title) override;
    void ApplyPlacement(const SPlacement& placement) override;
    void OnUnwatched(std::string_view symbol) override;
    std::string_view SymbolHint(std::string_view feedSymbol) const override;

protected:
    bool IsWanted(std::string_view symbol) const override { return m_store.IsWanted(symbol); }
    void OnSymbolRefused(std::string_view symbol) override;
    void OnFeedConnected() override;
    void ExpectMessages(std::string_view later, std::string_view soon) override { m_store.Expect(later, soon); }
    void OnUpdateMessage(std::string_view line) override;
    void OnSummaryMessage(std::string_view line) override;
    void OnFundamentalMessage(std::string_view line) override;
    void OnRegionalMessage(std::string_view line) override;
    void OnSystemMessage(std::string_view line) override;
    void OnTimeMessage(std::string_view line) override;
    void OnNewsMessage(std::string_view line) override;
    void OnSymbolNotFound(std::string_view line) override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void SendNewsRequest(std::string_view request) override;

    void MakeControllers();
    void ConnectControllers();
    void ForgetCommandLine();
    void OnStatusTimer();
    void StartFeedOnce();
    void ShowFeedEnd();
    void ShowSymbolLimit();

    CSettings& m_settings;
    CNorvCommandLineInfo m_commandLine;
    std::shared_ptr<CConfigLogger> m_configLogger;
    CLookupTables m_lookupTables;
    CL1DataStore m_store;
    CMarketClock m_clock;
    CRecentSymbols m_unwatched; ///< Their watch has ended: the feed client may still refuse them.
    std::string m_waitingText;  ///< The notice of symbols that were refused for the limit.
    CFeedHealth m_health;
    CStatusPanes* m_panes;
    CFramePlacer* m_placer = nullptr;   ///< A child.
    std::optional<SPlacement> m_stored; ///< The place of the last run, while this run has given it no other one.
    std::unique_ptr<CWatchlistDoc> m_doc;
    CWatchlistView* m_view = nullptr;
    // Children of the window: the commands and who carries them out.
    CCommands* m_commands = nullptr;
    std::unique_ptr<SFrameContext> m_context; ///< What all of them work with.
    CMainMenus* m_menus = nullptr;
    CFileController* m_files = nullptr;
    CGridCommands* m_grid = nullptr;
    CFindCommands* m_find = nullptr;
    CAlertController* m_alerts = nullptr;
    CMarketCommands* m_market = nullptr;
    CRecoveryController* m_recovery = nullptr;
    CTransferCommands* m_transfer = nullptr;
    CRestartController* m_restart = nullptr;
    CWindowController* m_windows = nullptr;
    QTimer m_status;
    bool m_live = true;
    int m_statusTick = 0;
    bool m_feedStarted = false;
};

} // namespace vx
