// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"
#include "grid/GridCtrl.h"

#include <vector>

class QMenu;

namespace vx {

class CColumnCommands;

/// The menus of the grid's cells and headers: the program's commands that apply there. While one is open no row moves
/// under it.
///
/// Thread  GUI thread only
class CGridMenus : public CCommandGroup {
    Q_OBJECT
public:
    CGridMenus(const SFrameContext& context, QObject* parent, CColumnCommands& columns);

private:
    void Open(EGridPart part, const QPoint& globalPos);
    void Fill(QMenu& menu, EGridPart part);
    void Add(QMenu& menu, const std::vector<ECommand>& commands);
    void AddLinks(QMenu& menu);
    void AddLooks(QMenu& menu);
    void AddHiddenColumns(QMenu& menu);

    CColumnCommands& m_columns;
};

} // namespace vx
