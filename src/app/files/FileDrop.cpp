// SPDX-License-Identifier: MIT
#include "app/files/FileDrop.h"

#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace vx {

namespace {

std::vector<std::string> FilesOf(const QMimeData& data) {
    std::vector<std::string> out;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) out.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
    return out;
}

} // namespace

CFileDrop::CFileDrop(QWidget& window) : QObject(&window) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool CFileDrop::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove && event->type() != QEvent::Drop)
        return false;
    auto* drop = static_cast<QDropEvent*>(event);
    std::vector<std::string> files = FilesOf(*drop->mimeData());
    if (files.empty()) return false;
    // A file is read and never moved away, whatever the sender proposes.
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    // The program that the files come from waits until this function returns.
    if (event->type() == QEvent::Drop)
        QTimer::singleShot(0, this, [this, files = std::move(files)] { Q_EMIT Dropped(files); });
    return true;
}

} // namespace vx
