// SPDX-License-Identifier: MIT
#pragma once

#include "app/FrameFixture.h"

#include <cstdio>

namespace vx::test {

/// A shown main frame with a board that a test uses by keys, mouse and commands.
class CBoardFixture : public CSiblingFixture {
protected:
    CBoardFixture() {
        ShownFrame();
        grid->setFocus();
        ProcessAll();
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
        std::string line = Update(symbol, field, value);
        frame->Store().OnLevel1Message(std::string_view(line).substr(0, line.size() - 2));
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
            frame->activateWindow();
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
            else if (auto* action = frame->Commands().findChild<QAction*>(each)) {
                frame->Commands().Refresh();
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
};

} // namespace vx::test
