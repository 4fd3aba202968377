// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string>

class QWidget;

namespace vx {

/// What a file dialog asks for.
struct SFileQuestion {
    QString title;
    QString filters;        ///< As the toolkit takes them: "Watchlists (*.vxw);;All Files (*)".
    QString suffix;         ///< Given to a name that is typed without one; no point.
    std::string proposal;   ///< A path or name to begin with; empty for none.
    bool overwrites = true; ///< Whether the content of a chosen file is lost: then the user is asked.
};

/// The kind of file that watchlists are kept in.
inline constexpr const char* kWatchlistSuffix = "vxw";
QString WatchlistFilters();

/// Lets the user choose a file that exists, beginning in the process's current folder.
///
/// Shape   the path as bytes, absolute; empty when the user gave up
/// Thread  GUI thread only
std::string AskForFileToOpen(QWidget* parent, const SFileQuestion& question);

/// Lets the user name a file to write. Whether an existing one may be replaced is asked in a message box; "No" leads
/// back to the dialog.
std::string AskForFileToSave(QWidget* parent, const SFileQuestion& question);

} // namespace vx
