#pragma once

#include "alerts/AlertNotice.h"
#include "base/Clock.h"

#include <QEvent>

#include <cstdint>
#include <optional>
#include <string>

namespace vx {

// The two numbered messages of alerts on their way to the frame.

/// A notice resets its alert: the text is that of FormatResetRecord.
inline constexpr auto kResetAlertMessage = static_cast<QEvent::Type>(1032);
/// An alert fired: the text is that of FormatAlertNotice.
inline constexpr auto kAlertFiredMessage = static_cast<QEvent::Type>(1033);

class CResetAlertMessage : public QEvent {
public:
    explicit CResetAlertMessage(std::string record);
    const std::string& Record() const { return m_record; }

private:
    std::string m_record;
};

/// A fired alert and the moment, which is that of making the message. News come as the finished notice, which has no
/// record. watchlist: as in SFiredNotice.
class CAlertFiredMessage : public QEvent {
public:
    CAlertFiredMessage(std::string record, uint64_t watchlist);
    CAlertFiredMessage(SAlertNotice news, uint64_t watchlist);

    SAlertNotice Notice() const { return m_news ? *m_news : ReadAlertNotice(m_record); }
    const SLocalTime& FiredAt() const { return m_firedAt; }
    /// Milliseconds since 1970 UTC.
    int64_t FiredMs() const { return m_firedMs; }
    uint64_t Watchlist() const { return m_watchlist; }

private:
    explicit CAlertFiredMessage(uint64_t watchlist);

    uint64_t m_watchlist;
    std::string m_record;
    std::optional<SAlertNotice> m_news;
    SLocalTime m_firedAt;
    int64_t m_firedMs;
};

} // namespace vx
