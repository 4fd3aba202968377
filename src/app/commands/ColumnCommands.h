// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"

#include <map>
#include <string>
#include <vector>

namespace vx {

/// Inserts, deletes, hides, fits, moves and locks columns; the selection goes along with what it held.
///
/// Thread  GUI thread only
class CColumnCommands : public CCommandGroup {
    Q_OBJECT
public:
    CColumnCommands(const SFrameContext& context, QObject* parent);

    /// Asks which columns, and puts them before the focus.
    void Insert();
    void Delete();
    /// The positions of the hidden columns, left to right.
    std::vector<int> Hidden() const;
    /// Shows a hidden column in the width it had, as far as that is known.
    void Show(int position);

private:
    void Place(const std::vector<std::string>& names);
    void Hide();
    void ShowHidden();
    void Fit();
    void MoveBy(int step);
    void MoveBefore(int first, int last, int before);
    void Lock();
    void SetLocked(int columns, const char* name);
    void MakeDefault();
    std::vector<int> HiddenIn(int first, int last) const;
    bool IsOneLeft() const;
    int Neighbour(int column, int step) const;
    std::string ColumnsName(const char* verb) const;

    /// The widths of columns that were hidden here, by name.
    std::map<std::string, int, std::less<>> m_widths;
};

} // namespace vx
