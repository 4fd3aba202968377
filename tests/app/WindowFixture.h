// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/Commands.h"
#include "base/Registry.h"
#include "data/store/L1DataStore.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "support/EventLoop.h"
#include "support/FeedLines.h"
#include "support/Gui.h"
#include "support/MessageBoxes.h"
#include "support/TempFolder.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/fileformat/WatchlistReader.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMenu>

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>

namespace vx::test {

using namespace testing; // Its matchers.

/// A window with a watchlist, which a test uses as a user does: by keys, mouse and commands. Settings, ports,
/// recovery files and sockets are in a folder of the test's own.
class CWindowFixture : public testing::Test {
protected:
    CWindowFixture() {
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
    /// The window of which the test is from now on.
    void Use(QMainWindow& window, CWatchlistDoc& itsDoc, CWatchlistView& itsView, CCommands& itsCommands) {
        mainWindow = &window;
        doc = &itsDoc;
        view = &itsView;
        grid = &view->Grid();
        commands = &itsCommands;
        doc->NewDocument();
    }
    void ShowWindow(int width = 1300, int height = 600) {
        mainWindow->resize(width, height);
        mainWindow->show();
        mainWindow->activateWindow();
        grid->setFocus();
        ProcessAll();
    }

    std::string At(const std::string& name) const { return folder / name; }
    /// Writes a watchlist of one symbol and returns its path.
    std::string FileOf(const std::string& name, const std::string& symbol) const {
        WriteFile(At(name), "Columns=Symbol:1000;\r\nSymbols=" + symbol + ":1,;\r\n");
        return At(name);
    }
    void Enter(int row, std::string_view text) { EnterCellText(*doc, row, 1, {}, text); }
    QAction& Action(ECommand command) {
        commands->Refresh();
        return commands->Action(command);
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
    template <class T> T& Child(const char* name) const { return Named<T>(*mainWindow, name); }
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

    /// "a=1;b=2" in pairs.
    static std::vector<std::pair<std::string, std::string>> Pairs(const char* text) {
        std::vector<std::pair<std::string, std::string>> out;
        for (const QString& each : QString::fromLatin1(text).split(QLatin1Char(';')))
            out.emplace_back(each.section(QLatin1Char('='), 0, 0).toStdString(),
                             each.section(QLatin1Char('='), 1).toStdString());
        return out;
    }
    static void Copy(const QString& text) { QGuiApplication::clipboard()->setText(text); }
    /// Lines into the clipboard, and from there into the rows from 1 on.
    void Rows(const QString& lines) {
        Copy(lines);
        grid->SetFocusCell(1, 1);
        Do(ECommand::EditPaste);
    }
    /// A value comes from the feed, for a field by the feed's name of it.
    void Receive(std::string_view symbol, std::string_view field, std::string_view value) {
        doc->Store().OnLevel1Message(DataLine('Q', symbol, std::string(field).append("=").append(value)));
        doc->OnPaintMessage();
    }
    void Type(const QString& text) {
        for (const QChar c : text)
            QTest::keyClick(QApplication::focusWidget(), c.toLatin1()); // The first opens an editor.
        ProcessAll();
    }
    /// A key to whatever has the keyboard, shortcuts included.
    void Key(const QKeySequence& key) {
        if (QApplication::focusWidget() == nullptr) { // Without a window manager nobody gives it back after a dialog.
            mainWindow->activateWindow();
            grid->setFocus();
            ProcessAll();
        }
        QTest::keyClick(QApplication::focusWidget(), key[0].key(), key[0].keyboardModifiers());
        ProcessAll();
    }

    /// What a user does, step by step: keys ("Ctrl+Z"), commands by their names ("RowHide"), a text in apostrophes that
    /// is typed, "rows 2-3", "columns 2-3", "cells 1-2 2-3" to select, and "at 4 1" for the focus; ";" between them.
    void Steps(const char* steps) {
        for (const QString& each : QString::fromLatin1(steps).split(QStringLiteral("; "))) {
            const std::string step = each.toStdString();
            int a = 0, b = 0, c = 0, d = 0;
            if (step.front() == '\'')
                Type(each.mid(1, each.size() - 2));
            else if (std::sscanf(step.c_str(), "rows %d-%d", &a, &b) == 2)
                grid->SelectRange({a, b, 1, grid->ColumnCount()});
            else if (std::sscanf(step.c_str(), "columns %d-%d", &a, &b) == 2)
                grid->SelectRange({1, grid->RowCount(), a, b});
            else if (std::sscanf(step.c_str(), "cells %d-%d %d-%d", &a, &b, &c, &d) == 4)
                grid->SelectRange({a, b, c, d});
            else if (std::sscanf(step.c_str(), "at %d %d", &a, &b) == 2)
                grid->SetFocusCell(a, b);
            else if (auto* action = commands->findChild<QAction*>(each)) {
                commands->Refresh();
                action->trigger();
            } else if (const QKeySequence key(each); key.count() == 1 && key[0].key() != Qt::Key_unknown)
                Key(key);
            else
                ADD_FAILURE() << "no such step: " << step;
            ProcessAll();
        }
    }
    struct SStep {
        const char* steps;
        const char* board;          ///< As Board has it afterwards.
        const char* undo = nullptr; ///< What the Edit menu would undo.
    };
    void Script(std::initializer_list<SStep> script) {
        for (const SStep& each : script) {
            SCOPED_TRACE(each.steps);
            Steps(each.steps);
            EXPECT_EQ(Board(), each.board);
            EXPECT_EQ(doc->Undo().UndoName(), each.undo ? std::string_view(each.undo) : doc->Undo().UndoName());
        }
    }

    /// "IBM|#a heading||(MSFT)": a hidden row in parentheses, empty rows below the last used one left out.
    std::string Board() const {
        std::string out;
        for (int row = 1; row <= doc->LastUsedRow(); ++row) {
            if (row > 1) out += '|';
            std::string text(doc->RowSymbol(row));
            if (doc->RowKind(row) == ERowKind::Annotation) text.append("#").append(doc->AnnotationText(row));
            out += grid->IsRowHidden(row) ? "(" + text + ")" : text;
        }
        return out;
    }
    std::string Columns() const { return doc->Columns().Names(); }
    QPoint Middle(int row, int column) const { return grid->Geometry().VisibleCellRect(row, column).center(); }

    CTempFolder folder;
    CApplicationProfile profile{CRegistry::CurrentUser(), kApplicationProfileKey};
    CConfigWriter writer{profile};
    CSettings settings{writer};
    CMessageBoxes boxes;
    QMainWindow* mainWindow = nullptr;
    CWatchlistDoc* doc = nullptr;
    CWatchlistView* view = nullptr;
    CWatchlistGrid* grid = nullptr;
    CCommands* commands = nullptr;
};

} // namespace vx::test
