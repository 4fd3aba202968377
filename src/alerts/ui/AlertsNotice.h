// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/FiredAlert.h"
#include "base/Clock.h"

#include <QDialog>
#include <QEvent>
#include <QPoint>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class QPushButton;

namespace vx {

// The two numbered messages of alerts on their way to the frame.

/// A notice resets its alert: the text is that of FormatResetRecord.
inline constexpr auto kResetAlertMessage = static_cast<QEvent::Type>(1032);
/// An alert fired: the text is that of FormatAlertRecord.
inline constexpr auto kAlertFiredMessage = static_cast<QEvent::Type>(1033);

/// of: the fired alert, which the record does not identify.
class CResetAlertMessage : public QEvent {
public:
    explicit CResetAlertMessage(std::string record, SFiredAlert of = {});
    const std::string& Record() const { return m_record; }
    const SFiredAlert& Of() const { return m_of; }

private:
    std::string m_record;
    SFiredAlert m_of;
};

/// A fired alert and the moment, which is that of making the message. News come as a finished record instead of its
/// text. alert, watchlist: as in SFiredAlert.
class CAlertFiredMessage : public QEvent {
public:
    CAlertFiredMessage(std::string record, A_INFO alert, uint64_t watchlist);
    CAlertFiredMessage(SAlertRecord news, A_INFO alert, uint64_t watchlist);

    /// The fired alert, which has no id of the history yet.
    SFiredAlert Fired() const;
    /// Milliseconds since 1970 UTC.
    int64_t FiredMs() const { return m_firedMs; }

private:
    CAlertFiredMessage(A_INFO alert, uint64_t watchlist);

    A_INFO m_alert;
    uint64_t m_watchlist;
    std::string m_record;
    std::optional<SAlertRecord> m_news;
    SLocalTime m_firedAt;
    int64_t m_firedMs;
};

/// What can be done about an alert that fired, as the notice appears.
struct SNoticeTarget {
    bool canArm = true;        ///< The alert that fired is still there.
    bool canReset = true;      ///< There is an alert at the index that a reset names.
    bool resetsFired = true;   ///< And it is the one that fired.
    std::string resetLine;     ///< That alert in words.
    std::vector<double> taken; ///< Thresholds of the symbol's other alerts on its field.
};

/// Tells the user that an alert fired. It is not modal and does not take the keyboard when it is shown; its queue keeps
/// input from the other windows and the first keys from it (CInputGate). No button is the default one or has the focus:
/// Enter presses a button that the user went to, Esc dismisses.
///
/// Shape   result(): EResult. A reset was posted to the owner as kResetAlertMessage by then
class CAlertsNotice : public QDialog {
    Q_OBJECT
public:
    enum EResult { Dismissed = QDialog::Rejected, WasReset = QDialog::Accepted, Armed = 2 };

    CAlertsNotice(SFiredAlert fired, QObject& owner, QWidget* parent = nullptr);

    /// How many more notices wait after this one; with some, they can be dismissed together.
    void SetWaiting(int count);
    void SetTarget(SNoticeTarget target);
    /// Whether the keyboard was with it, or with what was opened from it, when it was closed.
    bool HadKeyboard() const { return m_hadKeyboard; }
    /// Where the user moved it to; nothing while it is where it was opened.
    std::optional<QPoint> MovedTo() const;

    void done(int result) override;

Q_SIGNALS:
    void DismissAll();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void MakeTexts();
    void MakeButtons();
    void OnReset();

    SFiredAlert m_fired;
    SNoticeTarget m_target;
    QObject& m_owner;
    QPushButton* m_arm = nullptr;
    QPushButton* m_reset = nullptr;
    QPushButton* m_dismiss = nullptr;
    QPushButton* m_dismissAll = nullptr;
    bool m_hadKeyboard = false;
    std::optional<QPoint> m_openedAt; ///< Once the desktop has put it somewhere.
};

} // namespace vx
