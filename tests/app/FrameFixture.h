// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/Commands.h"
#include "app/files/FileController.h"
#include "app/shell/MainFrame.h"
#include "base/Registry.h"
#include "data/catalogue/UpdateFields.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "support/EventLoop.h"
#include "support/Gui.h"
#include "support/MessageBoxes.h"
#include "support/ScriptedFeed.h"
#include "support/TempFolder.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/fileformat/WatchlistReader.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QTimer>

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace vx::test {

using namespace testing; // Its matchers.

/// A main frame whose settings, ports, recovery files and sockets are in a folder of the test's own.
class CFrameFixture : public testing::Test {
protected:
    CFrameFixture() {
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
            setenv(variable, folder.Path().c_str(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1); // No notification reaches a real desktop.
    }

    static void PortsAre(uint16_t level1, uint16_t lookup, uint16_t admin) {
        CRegistry& registry = CRegistry::CurrentUser();
        registry.WriteText(kStartupKey, kLevel1PortValue, std::to_string(level1));
        registry.WriteText(kStartupKey, kLookupPortValue, std::to_string(lookup));
        registry.WriteText(kStartupKey, kAdminPortValue, std::to_string(admin));
    }

    /// Another frame takes the place of the one before.
    CMainFrame& Frame(const std::vector<std::string>& arguments = {}) {
        m_frame = std::make_unique<CMainFrame>(settings, CNorvCommandLineInfo(arguments));
        frame = m_frame.get();
        doc = &frame->Document();
        grid = &frame->View().Grid();
        frame->KeepFeedClosed();
        frame->Files().SetPatienceMs(30'000);   // A save is done when its command returns.
        frame->LookupTables().SetTimes({0, 0}); // A scripted port cannot answer while this thread waits for it.
        doc->NewDocument();
        return *frame;
    }
    CMainFrame& ShownFrame(const std::vector<std::string>& arguments = {}, int width = 1300, int height = 600) {
        Frame(arguments).ShowSized(width, height);
        frame->activateWindow();
        ProcessAll();
        return *frame;
    }
    /// The window goes without being asked anything, as at a crash.
    void DropFrame() { m_frame.reset(); }

    std::string At(const std::string& name) const { return folder / name; }
    /// Writes a watchlist of one symbol and returns its path.
    std::string FileOf(const std::string& name, const std::string& symbol) const {
        WriteFile(At(name), "Columns=Symbol:1000;\r\nSymbols=" + symbol + ":1,;\r\n");
        return At(name);
    }
    void Enter(int row, std::string_view text) { EnterCellText(*doc, row, 1, {}, text); }
    QAction& Action(ECommand command) {
        frame->Commands().Refresh();
        return frame->Commands().Action(command);
    }
    void Do(ECommand command) {
        Action(command).trigger();
        ProcessAll();
    }
    bool IsEnabled(ECommand command) { return Action(command).isEnabled(); }
    /// Carries a command out and uses the dialog that it opens.
    template <class Dialog = QDialog> void InDialog(ECommand command, std::function<void(Dialog&)> use) {
        bool used = false;
        WhenOpen<Dialog>([&](Dialog& dialog) {
            used = true;
            use(dialog);
            if (dialog.isVisible()) dialog.reject();
        });
        Do(command);
        EXPECT_TRUE(used);
    }
    template <class T> T& Child(const char* name) const { return Named<T>(*frame, name); }
    std::string Pane(const char* name) const { return Child<QLabel>(name).text().toStdString(); }
    std::string Status() const { return Pane("paneStatus"); }

    SCell Cell(int row, int column) const {
        SCell cell;
        if (!grid->Source()->FillSpan(row, cell)) grid->Source()->FillCell(row, column, cell);
        return cell;
    }
    SCell Cell(int row, std::string_view column) const { return Cell(row, ColumnOf(column)); }
    std::string Shown(int row, int column) const { return std::string(Cell(row, column).Text()); }
    std::string Shown(int row, std::string_view column) const { return Shown(row, ColumnOf(column)); }
    testing::AssertionResult Shows(int row, std::string_view column, std::string_view text) const {
        if (WaitUntil([&] { return Shown(row, column) == text; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << Shown(row, column);
    }
    /// The notice drawn over a row's empty cells.
    std::string Notice(int row) const {
        SCell cell;
        return grid->Source()->FillRowHint(row, cell) ? std::string(cell.Text()) : std::string();
    }
    int ColumnOf(std::string_view name) const { return doc->Columns().PositionOf(name); }
    void ColumnsAre(std::string_view names) {
        doc->Update()->SetColumnsByName(names);
        doc->Update()->Columns();
    }
    static std::string Update(std::string_view symbol, std::string_view field, std::string_view value) {
        std::string line = "Q," + std::string(symbol);
        for (size_t i = 0; kUpdateFields[i].name != field; ++i) line += ',';
        return line.append(value).append(",\r\n");
    }

    CTempFolder folder;
    CApplicationProfile profile{CRegistry::CurrentUser(), kApplicationProfileKey};
    CConfigWriter writer{profile};
    CSettings settings{writer};
    CMessageBoxes boxes;
    CMainFrame* frame = nullptr;
    CWatchlistDoc* doc = nullptr;
    CWatchlistGrid* grid = nullptr;

private:
    std::unique_ptr<CMainFrame> m_frame;
};

/// The same with a feed that says what the test tells it to.
class CFeedFixture : public CFrameFixture {
protected:
    CFeedFixture() { PortsAre(feed.level1.Number(), feed.lookup.Number(), feed.admin.Number()); }

    /// Brings the session up to the point where watches may begin.
    void Connect() {
        frame->OpenAdminPort();
        feed.admin.Says(StatusLine("Connected"));
        feed.level1.Says("S,IP,127.0.0.1,5009\r\n");
        heard = kGreeting + "S,SELECT UPDATE FIELDS," + UpdateFieldList() + "\nS,NEWSON\r\n";
    }
    testing::AssertionResult Level1Heard(const std::string& more) { return feed.level1.Heard(heard += more); }

    const std::string kGreeting = "S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,VxWatchlist\n";
    CScriptedFeed feed;
    std::string heard;
};

/// A main frame that finds programs of the test's own, which note how they were started.
class CSiblingFixture : public CFrameFixture {
protected:
    CSiblingFixture() : m_path(std::getenv("PATH")) { setenv("PATH", (folder.Path() + ":" + m_path).c_str(), 1); }
    ~CSiblingFixture() override { setenv("PATH", m_path.c_str(), 1); }

    void Install(const std::string& name = "zantrel-watchlist") {
        WriteFile(At(name), "#!/bin/sh\nfor a in \"$0\" \"$@\"; do printf '%s|' \"${a##*/}\"; done >> '" +
                                At("started.new") + "'\nmv '" + At("started.new") + "' '" + At("started") + "'\n");
        chmod(At(name).c_str(), S_IRWXU);
    }
    /// "vxchart|-symbol|IBM|", folders left out; empty when a command starts nothing.
    std::string StartedBy(ECommand command) {
        std::filesystem::remove(At("started"));
        boxes.shown.clear();
        Do(command);
        return Started();
    }
    std::string Started() {
        WaitUntil([&] { return std::filesystem::exists(At("started")) || !boxes.shown.empty(); }, 3000);
        return ReadFile(At("started"));
    }

private:
    std::string m_path;
};

} // namespace vx::test
