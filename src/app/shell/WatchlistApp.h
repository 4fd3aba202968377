// SPDX-License-Identifier: MIT
#pragma once

#include "app/frame/NorvCommandLineInfo.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"

#include <QApplication>

#include <memory>
#include <vector>

namespace vx {

class CMainFrame;
class CRegistry;
struct SMessageBox;

/// The application object that the display programs share: the application's profile in the registry, one locale for
/// numbers, and the start in two steps.
class CNorvWinAppEx : public QApplication {
public:
    /// argc and argv must outlive the application.
    CNorvWinAppEx(int& argc, char** argv, CRegistry& registry);

    /// Makes the windows; false when the program cannot start, after a message said why.
    virtual bool InitInstance() = 0;
    /// Runs the event loop until the last window closes; returns the program's exit code.
    virtual int Run();

    CRegistry& Registry() { return m_registry; }
    CApplicationProfile& Profile() { return m_profile; }

private:
    CRegistry& m_registry;
    CApplicationProfile m_profile;
};

/// The watchlist program: sets up log and settings, makes the main frame with its document and view, and opens what the
/// command line names.
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
    bool m_resumed = false; ///< The window took over the unsaved changes of another one.
};

} // namespace vx
