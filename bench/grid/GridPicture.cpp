// SPDX-License-Identifier: MIT
// Paints a made-up board into a picture: grid_picture FILE [light|dark] [width height [column-width]].
// QT_SCALE_FACTOR=2 shows it as a high-DPI screen does.

#include "grid/BoardSource.h"
#include "grid/GridCtrl.h"

#include <QApplication>
#include <QImage>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string_view>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (argc < 2) {
        std::fputs("usage: grid_picture FILE [light|dark] [width height [column-width]]\n", stderr);
        return 2;
    }
    vx::CBoardSource board(31, true);
    vx::CNorvGridCtrl grid;
    grid.ApplyTheme(argc > 2 ? argv[2] : "light");
    grid.SetSource(&board);
    board.SetHeadingFont(grid.AddFont({QStringLiteral("Arial"), 9, true, false}));
    grid.SetColumnCount(vx::CBoardSource::kColumns);
    grid.SetRowCount(board.Rows());
    for (int c = 1; c <= grid.ColumnCount(); ++c) grid.SetColumnWidth(c, grid.FitWidth(c) + 6);
    grid.SetColumnWidth(vx::CBoardSource::kColumns, 96);
    if (argc > 5)
        for (int c = 1; c <= grid.ColumnCount(); ++c) grid.SetColumnWidth(c, std::atoi(argv[5]));
    grid.SetLockedColumns(1);
    grid.resize(argc > 4 ? std::atoi(argv[3]) : 1100, argc > 4 ? std::atoi(argv[4]) : 560);
    grid.show();
    grid.setFocus();
    grid.SetFocusCell(4, 3);
    grid.SelectRange({4, 7, 3, 6});
    QApplication::processEvents();
    for (const auto& [row, column] : {std::pair{12, 3}, {13, 3}, {14, 7}, {15, 9}, {16, 3}}) {
        board.Change(row, column);
        grid.MarkCellChanged(row, column);
    }
    grid.FlushChanges();
    QApplication::processEvents();
    return grid.grab().save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
