#include "alerts/AlertMessages.h"

#include <QDateTime>

#include <utility>

namespace vx {

CResetAlertMessage::CResetAlertMessage(std::string record) : QEvent(kResetAlertMessage), m_record(std::move(record)) {}

CAlertFiredMessage::CAlertFiredMessage()
    : QEvent(kAlertFiredMessage), m_firedAt(CClock::Instance().Now()), m_firedMs(QDateTime::currentMSecsSinceEpoch()) {}

CAlertFiredMessage::CAlertFiredMessage(std::string record) : CAlertFiredMessage() { m_record = std::move(record); }

CAlertFiredMessage::CAlertFiredMessage(SAlertNotice news) : CAlertFiredMessage() { m_news = std::move(news); }

} // namespace vx
