// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"

#include <QString>

namespace vx {

class CColumnCommands;
class CRowCommands;
struct SUndoPlace;

/// Undo and redo, editing in place, and what the keys for inserting and deleting do with a selection.
///
/// Thread  GUI thread only
class CEditCommands : public CCommandGroup {
    Q_OBJECT
public:
    CEditCommands(const SFrameContext& context, QObject* parent, CRowCommands& rows, CColumnCommands& columns);

private:
    void BindUndo();
    void Undo();
    void Redo();
    void ShowPlace(const SUndoPlace& place);
    void Clear();
    QString TextFor(bool insert) const;
    void InsertOrDelete(bool insert);

    CRowCommands& m_rows;
    CColumnCommands& m_columns;
};

} // namespace vx
