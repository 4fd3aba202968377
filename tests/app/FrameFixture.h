#pragma once

#include "app/files/FileController.h"
#include "app/shell/MainFrame.h"
#include "base/Registry.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "support/TempFolder.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace vx::test {

/// A main frame whose settings, ports, recovery files and sockets stand in a folder of the test's own.
class CFrameFixture : public testing::Test {
protected:
    CFrameFixture() {
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
            setenv(variable, folder.Path().c_str(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1); // No notification reaches a real desktop.
    }

    void PortsAre(uint16_t level1, uint16_t lookup, uint16_t admin) {
        CRegistry& registry = CRegistry::CurrentUser();
        registry.WriteText(kStartupKey, kLevel1PortValue, std::to_string(level1));
        registry.WriteText(kStartupKey, kLookupPortValue, std::to_string(lookup));
        registry.WriteText(kStartupKey, kAdminPortValue, std::to_string(admin));
    }

    CMainFrame& Frame(const std::vector<std::string>& arguments = {}) {
        m_frame = std::make_unique<CMainFrame>(settings, CNorvCommandLineInfo(arguments));
        m_frame->KeepFeedClosed();
        m_frame->Files().SetPatienceMs(kSaveMs);  // A save is done when its command returns.
        m_frame->LookupTables().SetTimes({0, 0}); // A scripted port cannot answer while this thread waits for it.
        m_frame->Document().NewDocument();
        return *m_frame;
    }

    /// What a cell shows.
    std::string Shown(int row, int column) const {
        SCell cell;
        m_frame->View().Grid().Source()->FillCell(row, column, cell);
        return std::string(cell.Text());
    }
    /// The notice drawn over a row's empty cells.
    std::string Notice(int row) const {
        SCell cell;
        return m_frame->View().Grid().Source()->FillRowHint(row, cell) ? std::string(cell.Text()) : std::string();
    }
    int ColumnOf(std::string_view name) const { return m_frame->Document().Columns().PositionOf(name); }

    CTempFolder folder;
    CApplicationProfile profile{CRegistry::CurrentUser(), kApplicationProfileKey};
    CConfigWriter writer{profile};
    CSettings settings{writer};

    /// The window goes without being asked anything, as at a crash.
    void DropFrame() { m_frame.reset(); }
    /// A command, by its id.
    void Do(const char* command) { m_frame->findChild<QAction*>(QString::fromLatin1(command))->trigger(); }

private:
    static constexpr int kSaveMs = 30'000;

    std::unique_ptr<CMainFrame> m_frame;
};

} // namespace vx::test
