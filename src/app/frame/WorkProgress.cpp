#include "app/frame/WorkProgress.h"

#include "app/frame/ProgramName.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressDialog>

#include <algorithm>

namespace vx {

namespace {

constexpr int kSteps = 1000;
constexpr qint64 kLookMs = 25;

} // namespace

CWorkProgressBox::CWorkProgressBox(QWidget* parent, QString label, QString cancel)
    : m_parent(parent), m_label(std::move(label)), m_cancel(std::move(cancel)) {
    m_age.start();
    m_shown.start();
}

CWorkProgressBox::~CWorkProgressBox() = default;

bool CWorkProgressBox::Step(size_t done, size_t total) {
    if (!m_dialog && m_age.hasExpired(kShowAfterMs)) {
        m_dialog = std::make_unique<QProgressDialog>(QString(), m_cancel, 0, kSteps, m_parent);
        auto* label = new QLabel(m_label);
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignCenter);
        m_dialog->setLabel(label);
        m_dialog->setObjectName(QStringLiteral("workProgress"));
        m_dialog->setWindowTitle(QString::fromLatin1(kProgramName));
        m_dialog->setWindowModality(Qt::WindowModal);
        m_dialog->setAutoReset(false);
        m_dialog->setMinimumDuration(0);
        m_dialog->show();
    }
    if (!m_dialog) return true;
    if (!m_shown.hasExpired(kLookMs)) return !m_dialog->wasCanceled();
    m_shown.restart();
    m_dialog->setMaximum(total == 0 ? 0 : kSteps);
    m_dialog->setValue(total == 0 ? 0 : static_cast<int>(std::min(done, total) * kSteps / total));
    QCoreApplication::processEvents();
    return !m_dialog->wasCanceled();
}

} // namespace vx
