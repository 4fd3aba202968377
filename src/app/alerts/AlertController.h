// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertHistory.h"
#include "alerts/rules/FiredAlert.h"
#include "alerts/ui/AlertDialogServices.h"
#include "alerts/ui/AlertSoundPlayer.h"

#include <QObject>

#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CAlertFiredMessage;
class CAlertHistoryDlg;
class CMissedAlerts;
class CNoticeQueue;
class CPresence;
class CResetAlertMessage;
struct SNoticeTarget;
struct SFrameContext;

/// Shows alerts that fire to the user, and opens the windows in which alerts are set and looked up. A fired alert comes
/// to the frame as a posted message, so that nothing opens while a line of the feed is handled.
class CAlertController : public QObject, public CFiredAlertReceiver {
    Q_OBJECT
public:
    explicit CAlertController(const SFrameContext& context);
    ~CAlertController() override;

    void PostFired(std::string record, const A_INFO& fired) override;
    void PostFiredNews(SAlertRecord record, const A_INFO& fired) override;

    /// The list of alerts, modally, with the first alert of a symbol selected.
    void EditAlerts(std::string_view symbol);
    /// A new alert on the symbol of a row and the field of a column, with the value of this moment; what is not known
    /// is left to the user.
    void NewAlert(int row, int column);
    /// The history of fired alerts, missed ones first.
    void ShowHistory();

    CNoticeQueue& Notices() { return *m_notices; }
    CPresence& Presence() { return *m_presence; }
    CMissedAlerts& Missed() { return *m_missed; }

protected:
    /// Alerts that fired, and the resets of their notices.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BindCommands();
    void OnFired(const CAlertFiredMessage& message);
    void OnOpening();
    void NoteSeen();
    SNoticeTarget TargetOf(const SFiredAlert& fired) const;
    void OnReset(const CResetAlertMessage& message);
    void NoteReset(const SFiredAlert& of, const A_INFO& changed, double newThreshold);
    bool Arm(const SFiredAlert& fired);
    void OnEnded(const SFiredAlert& fired, EFiringEnd end);
    void NoteEnded(const SFiredAlert& fired, EFiringEnd end);
    void ShowWindow();
    std::string_view FocusSymbol() const;
    std::vector<std::string> Symbols() const;
    std::string ValueNow(std::string_view symbol, int32_t fieldId) const;

    const SFrameContext& m_context;
    CAlertHistory m_history;
    CEffectSoundPlayer m_player;  ///< Of the notices.
    CEffectSoundPlayer m_preview; ///< Of the dialogs: trying a sound ends none of a notice.
    SAlertDialogServices m_services;
    CNoticeQueue* m_notices;
    CPresence* m_presence;
    CMissedAlerts* m_missed;
    CAlertHistoryDlg* m_historyDlg = nullptr; ///< The window's, once it was asked for.
    std::string m_seen;                       ///< The firing that was last noted as seen.
};

} // namespace vx
