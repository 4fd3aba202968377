// SPDX-License-Identifier: MIT
#include "app/shell/Screenshot.h"

#include "app/shell/AboutDlg.h"
#include "app/shell/MainFrame.h"
#include "base/Number.h"

#include <QApplication>
#include <QImageWriter>
#include <QPainter>
#include <QTimer>

#include <cstdio>

namespace vx {

namespace {

constexpr int kDefaultSeconds = 4;

// The frame, and on top of it the dialog that is open, as a window manager would show them.
QImage Picture(QWidget& frame) {
    QPixmap picture = frame.grab();
    if (QWidget* dialog = QApplication::activeModalWidget()) {
        const QPixmap above = dialog->grab();
        const QSizeF room = frame.size() - dialog->size();
        QPainter painter(&picture);
        painter.drawPixmap(QPointF(room.width() / 2, room.height() / 3), above);
    }
    return picture.toImage();
}

int Save(const QImage& image, const std::string& file) {
    QImageWriter writer(QString::fromStdString(file), "png");
    if (writer.write(image)) return 0;
    std::fprintf(stderr, "The picture could not be written to \"%s\": %s\n", file.c_str(),
                 writer.errorString().toLocal8Bit().constData());
    return 1;
}

} // namespace

void PrepareScreenshot(const CNorvCommandLineInfo& commandLine) {
    if (commandLine.screenshot.empty()) return;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    if (commandLine.scale.empty()) return;
    qputenv("QT_SCALE_FACTOR", QByteArray::number(ReadDouble(commandLine.scale)));
}

int RunScreenshot(CMainFrame& frame, const CNorvCommandLineInfo& commandLine) {
    const int seconds = commandLine.seconds.value_or(kDefaultSeconds);
    if (commandLine.about) QTimer::singleShot(0, &frame, [&frame] { frame.ShowAbout(); });
    QTimer::singleShot(seconds * 1000, &frame,
                       [&] { QApplication::exit(Save(Picture(frame), commandLine.screenshot)); });
    return QApplication::exec();
}

} // namespace vx
