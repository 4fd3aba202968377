#include "alerts/AlertMessages.h"

#include <QDateTime>

#include <utility>

namespace vx {

CResetAlertMessage::CResetAlertMessage(std::string record) : QEvent(kResetAlertMessage), m_record(std::move(record)) {}

CAlertFiredMessage::CAlertFiredMessage(uint64_t watchlist)
    : QEvent(kAlertFiredMessage), m_watchlist(watchlist), m_firedAt(CClock::Instance().Now()),
      m_firedMs(QDateTime::currentMSecsSinceEpoch()) {}

CAlertFiredMessage::CAlertFiredMessage(std::string record, uint64_t watchlist) : CAlertFiredMessage(watchlist) {
    m_record = std::move(record);
}

CAlertFiredMessage::CAlertFiredMessage(SAlertNotice news, uint64_t watchlist) : CAlertFiredMessage(watchlist) {
    m_news = std::move(news);
}

} // namespace vx
