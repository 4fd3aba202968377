#include "app/ProgressBox.h"

#include <QCoreApplication>
#include <QProgressDialog>

#include <memory>

namespace vx {

namespace {

constexpr int kMomentMs = 300;

} // namespace

CWorkProgress ShowProgressBox(QWidget& window, const QString& text) {
    auto box =
        std::make_shared<QProgressDialog>(text, QCoreApplication::translate("ProgressBox", "&Cancel"), 0, 1, &window);
    box->setObjectName(QStringLiteral("progressBox"));
    box->setWindowTitle(window.windowTitle());
    box->setWindowModality(Qt::WindowModal);
    box->setMinimumDuration(kMomentMs);
    return [box](size_t done, size_t total) {
        box->setMaximum(static_cast<int>(total));
        box->setValue(static_cast<int>(done));
        return !box->wasCanceled();
    };
}

} // namespace vx
