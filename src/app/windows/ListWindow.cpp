#include "app/windows/ListWindow.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace vx {

QDialogButtonBox& AddBottomRow(QDialog& window, QVBoxLayout& layout, QLabel& state,
                               QDialogButtonBox::StandardButtons buttons) {
    auto* box = new QDialogButtonBox(buttons);
    for (QAbstractButton* button : box->buttons()) static_cast<QPushButton*>(button)->setAutoDefault(false);
    QObject::connect(box, &QDialogButtonBox::accepted, &window, &QDialog::accept);
    QObject::connect(box, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    state.setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout;
    row->addWidget(&state, 1);
    row->addWidget(box);
    layout.addLayout(row);
    return *box;
}

void TabThrough(std::initializer_list<QWidget*> widgets) {
    QWidget* before = nullptr;
    for (QWidget* widget : widgets)
        if (QWidget* last = std::exchange(before, widget)) QWidget::setTabOrder(last, widget);
}

} // namespace vx
