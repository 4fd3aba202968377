#include "alerts/ui/AlertMessages.h"

#include <QDateTime>

#include <utility>

namespace vx {

CResetAlertMessage::CResetAlertMessage(std::string record, SFiredNotice of)
    : QEvent(kResetAlertMessage), m_record(std::move(record)), m_of(std::move(of)) {}

CAlertFiredMessage::CAlertFiredMessage(A_INFO alert, uint64_t watchlist)
    : QEvent(kAlertFiredMessage), m_alert(std::move(alert)), m_watchlist(watchlist),
      m_firedAt(CClock::Instance().Now()), m_firedMs(QDateTime::currentMSecsSinceEpoch()) {}

CAlertFiredMessage::CAlertFiredMessage(std::string record, A_INFO alert, uint64_t watchlist)
    : CAlertFiredMessage(std::move(alert), watchlist) {
    m_record = std::move(record);
}

CAlertFiredMessage::CAlertFiredMessage(SAlertNotice news, A_INFO alert, uint64_t watchlist)
    : CAlertFiredMessage(std::move(alert), watchlist) {
    m_news = std::move(news);
}

SFiredNotice CAlertFiredMessage::Fired() const {
    return {m_news ? *m_news : ReadAlertNotice(m_record), m_alert, m_firedAt, {}, m_watchlist};
}

} // namespace vx
