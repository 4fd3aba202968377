#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>

namespace vx::test {

/// Hands the next modal dialog of a kind over as soon as it is open; what it runs must close the dialog.
template <class Dialog> void WhenOpen(std::function<void(Dialog&)> act) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act = std::move(act)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible()) return;
        timer->stop();
        timer->deleteLater();
        act(*dialog);
    });
    timer->start(1);
}

} // namespace vx::test
