#pragma once

#include "alerts/rules/AlertNotice.h"
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

/// of: the notice, which the record does not name.
class CResetAlertMessage : public QEvent {
public:
    explicit CResetAlertMessage(std::string record, SFiredNotice of = {});
    const std::string& Record() const { return m_record; }
    const SFiredNotice& Of() const { return m_of; }

private:
    std::string m_record;
    SFiredNotice m_of;
};

/// A fired alert and the moment, which is that of making the message. News come as the finished notice, which has no
/// record. alert, watchlist: as in SFiredNotice.
class CAlertFiredMessage : public QEvent {
public:
    CAlertFiredMessage(std::string record, A_INFO alert, uint64_t watchlist);
    CAlertFiredMessage(SAlertNotice news, A_INFO alert, uint64_t watchlist);

    /// The notice, which has no place in the history yet.
    SFiredNotice Fired() const;
    /// Milliseconds since 1970 UTC.
    int64_t FiredMs() const { return m_firedMs; }

private:
    CAlertFiredMessage(A_INFO alert, uint64_t watchlist);

    A_INFO m_alert;
    uint64_t m_watchlist;
    std::string m_record;
    std::optional<SAlertNotice> m_news;
    SLocalTime m_firedAt;
    int64_t m_firedMs;
};

} // namespace vx
