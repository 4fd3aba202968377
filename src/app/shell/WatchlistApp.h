#pragma once

#include "app/frame/NorvCommandLineInfo.h"
#include "app/shell/NorvWinAppEx.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"

#include <memory>
#include <vector>

namespace vx {

class CMainFrame;
struct SMessageBox;

/// The watchlist program: sets up log and settings, makes the main frame with its document and view, and opens what the
/// command line names.
///
/// Thread  GUI thread only
class CWatchlistApp : public CNorvWinAppEx {
public:
    /// Reads the command line after the toolkit has taken its own options out of it.
    CWatchlistApp(int& argc, char** argv, CRegistry& registry);
    ~CWatchlistApp() override;

    bool InitInstance() override;
    int Run() override;

    CMainFrame& Frame() { return *m_frame; }
    CSettings& Settings() { return m_settings; }

private:
    void StartLog();
    void TellUnknownOptions() const;
    /// Opens what the command line names; false when there is nothing, or it cannot be opened.
    bool ProcessShellCommand();
    /// The same; the boxes, none of which asks anything, are kept for later.
    bool ProcessShellCommand(std::vector<SMessageBox>& early);

    CNorvCommandLineInfo m_commandLine;
    CConfigWriter m_configWriter;
    CSettings m_settings;
    std::unique_ptr<CMainFrame> m_frame;
    bool m_resumed = false; ///< The window took over what another one left behind.
};

} // namespace vx
