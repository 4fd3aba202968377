#include "app/shell/QtMessageBox.h"

#include "app/frame/ProgramName.h"
#include "base/MessageBox.h"
#include "base/qt/QtText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>

namespace vx {

namespace {

QMessageBox::Icon IconOf(EBoxIcon icon) {
    switch (icon) {
    case EBoxIcon::None:
        return QMessageBox::NoIcon;
    case EBoxIcon::Stop:
        return QMessageBox::Critical;
    case EBoxIcon::Exclamation:
        return QMessageBox::Warning;
    case EBoxIcon::Question:
        return QMessageBox::Question;
    case EBoxIcon::Information:
        return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(EBoxButtons buttons) {
    switch (buttons) {
    case EBoxButtons::Ok:
        return QMessageBox::Ok;
    case EBoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case EBoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case EBoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

EBoxAnswer AnswerOf(int button, EBoxButtons buttons) {
    switch (button) {
    case QMessageBox::Yes:
        return EBoxAnswer::Yes;
    case QMessageBox::No:
        return EBoxAnswer::No;
    case QMessageBox::Ok:
        return EBoxAnswer::Ok;
    default:
        break;
    }
    if (buttons == EBoxButtons::Ok) return EBoxAnswer::Ok;
    return buttons == EBoxButtons::YesNo ? EBoxAnswer::No : EBoxAnswer::Cancel;
}

} // namespace

void InstallQtMessageBoxes(QWidget* parent) {
    SetMessageBoxHandler([guarded = QPointer<QWidget>(parent)](const SMessageBox& box) {
        QWidget* const over = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : guarded.data();
        QMessageBox window(over);
        window.setObjectName(QStringLiteral("messageBox"));
        window.setTextFormat(Qt::PlainText);
        window.setText(QtText(box.text));
        // Without a title the toolkit would show the name of the executable file.
        window.setWindowTitle(box.caption.empty() ? QString::fromLatin1(kProgramName) : QtText(box.caption));
        window.setIcon(IconOf(box.icon));
        window.setStandardButtons(ButtonsOf(box.buttons));
        return AnswerOf(window.exec(), box.buttons);
    });
}

} // namespace vx
