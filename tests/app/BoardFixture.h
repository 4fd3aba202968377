#pragma once

#include "app/FrameFixture.h"
#include "app/commands/Commands.h"
#include "data/catalogue/UpdateFields.h"
#include "support/Gui.h"
#include "support/MessageBoxes.h"

#include <QAction>
#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QMenu>
#include <QTimer>

#include <functional>
#include <utility>

namespace vx::test {

/// A shown main frame with a board that a test uses by keys, mouse and commands.
class CBoardFixture : public CFrameFixture {
protected:
    CBoardFixture() {
        CMainFrame& shown = Frame();
        shown.ShowSized(1300, 600);
        shown.activateWindow();
        grid = &shown.View().Grid();
        doc = &shown.Document();
        frame = &shown;
        grid->setFocus();
        ProcessAll();
    }

    /// Lines into the clipboard, and from there into the rows from 1 on.
    void Rows(const QString& lines) {
        QGuiApplication::clipboard()->setText(lines);
        grid->SetFocusCell(1, 1);
        Do(ECommand::EditPaste);
    }
    void Do(ECommand command) {
        frame->Commands().Refresh();
        frame->Commands().Action(command).trigger();
        ProcessAll();
    }
    bool IsEnabled(ECommand command) {
        frame->Commands().Refresh();
        return frame->Commands().Action(command).isEnabled();
    }
    QString TextOf(ECommand command) {
        frame->Commands().Refresh();
        return frame->Commands().Action(command).text();
    }
    /// A value comes from the feed, for a field by the feed's name of it.
    void Update(std::string_view symbol, std::string_view field, std::string_view value) {
        std::string line("Q,");
        line.append(symbol);
        for (size_t i = 0; kUpdateFields[i].name != field; ++i) line += ',';
        frame->Store().OnLevel1Message(line.append(value).append(","));
        doc->OnPaintMessage();
    }
    void Undo() { Do(ECommand::EditUndo); }
    void Type(const QString& text) {
        for (const QChar c : text)
            QTest::keyClick(QApplication::focusWidget(), c.toLatin1()); // The first opens an editor.
        ProcessAll();
    }
    /// A key to whatever has the keyboard, shortcuts included.
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        if (QApplication::focusWidget() == nullptr) { // Without a window manager nobody gives it back after a dialog.
            frame->activateWindow();
            grid->setFocus();
            ProcessAll();
        }
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        ProcessAll();
    }
    void SelectRows(int first, int last) { grid->SelectRange({first, last, 1, grid->ColumnCount()}); }
    void SelectColumns(int first, int last) { grid->SelectRange({1, grid->RowCount(), first, last}); }
    QPoint Middle(int row, int column) const { return grid->Geometry().VisibleCellRect(row, column).center(); }

    /// Does something with the next dialog that opens.
    template <typename Dialog> void InNext(std::function<void(Dialog&)> use) {
        auto* timer = new QTimer(frame);
        QObject::connect(timer, &QTimer::timeout, frame, [timer, use] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            timer->deleteLater();
            timer->stop();
            use(*dialog);
        });
        timer->start(1);
    }

    /// "IBM|#a heading||MSFT", empty rows below the last used one left out.
    std::string Board() const {
        std::string out;
        for (int row = 1; row <= doc->LastUsedRow(); ++row) {
            if (row > 1) out += '|';
            if (doc->RowKind(row) == ERowKind::Annotation) out.append("#").append(doc->AnnotationText(row));
            out += doc->RowSymbol(row);
        }
        return out;
    }
    std::string Columns() const { return doc->Columns().Names(); }

    CMessageBoxes boxes;
    CMainFrame* frame = nullptr;
    CWatchlistGrid* grid = nullptr;
    CWatchlistDoc* doc = nullptr;
};

} // namespace vx::test
