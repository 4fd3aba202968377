// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <string>
#include <vector>

class QWidget;

namespace vx {

/// Takes files that are dropped anywhere on a window. Widgets in it that take drops themselves must leave those with
/// files alone.
///
/// Owns    nothing: the window outlives it
/// Thread  GUI thread only
class CFileDrop : public QObject {
    Q_OBJECT
public:
    explicit CFileDrop(QWidget& window);

Q_SIGNALS:
    /// The drop is over: a dialog may open. Paths are bytes as the system takes them.
    void Dropped(const std::vector<std::string>& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace vx
