// SPDX-License-Identifier: MIT
#pragma once

#include "app/WindowFixture.h"
#include "app/commands/FrameContext.h"
#include "app/commands/GridCommands.h"
#include "app/commands/MainMenus.h"
#include "app/frame/FramePlacement.h"
#include "app/frame/StatusPanes.h"
#include "base/qt/QtText.h"

namespace vx::test {

/// A shown window with what groups of commands and windows need, and the groups that edit, arrange and show the board.
/// The others are made by the tests that are about them.
class CContextFixture : public CWindowFixture, private CWatchlistFrame {
protected:
    CContextFixture() {
        m_window.setStatusBar(&m_status);
        m_window.setCentralWidget(&m_view);
        Use(m_window, m_doc, m_view, m_commands);
        ShowWindow();
    }

private:
    void SetStatusText(std::string_view text) override { m_status.SetStatus(QtText(text)); }
    void SetDocumentTitle(std::string_view title) override {
        m_window.setWindowTitle(QtText(title) + QStringLiteral("[*]"));
    }
    void ApplyPlacement(const SPlacement&) override {}
    void OnUnwatched(std::string_view) override {}

    CL1DataStore m_store;
    QMainWindow m_window;
    CStatusPanes m_status{&m_window};
    CFramePlacer m_place{m_window};
    CWatchlistDoc m_doc{m_store, settings, *this};
    CWatchlistView m_view{m_doc, settings, nullptr};
    CCommands m_commands{m_window};

protected:
    const SFrameContext context{m_doc, m_view, settings, m_commands, m_status, m_place, m_window};
    CMainMenus menus{m_window, m_commands};
    CGridCommands gridCommands{context, menus};
};

} // namespace vx::test
