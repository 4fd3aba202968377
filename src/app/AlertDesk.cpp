#include "app/AlertDesk.h"

#include "alerts/AlertCondition.h"
#include "alerts/AlertField.h"
#include "alerts/AlertHistoryDlg.h"
#include "alerts/AlertMessages.h"
#include "alerts/AlertTexts.h"
#include "alerts/AlertsDlg.h"
#include "alerts/NewAlertDlg.h"
#include "alerts/NoticeQueue.h"
#include "app/MainFrame.h"
#include "app/MissedAlerts.h"
#include "app/Presence.h"
#include "base/Log.h"
#include "base/UserFolders.h"
#include "data/CellText.h"
#include "settings/Settings.h"
#include "watchlist/Commands.h"
#include "watchlist/RowCellText.h"
#include "watchlist/UndoStep.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"
#include "watchlist/WatchlistView.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStatusBar>

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vx {

CAlertDesk::CAlertDesk(CMainFrame& frame, CCommands& commands)
    : QObject(&frame), m_frame(frame), m_history(UserStateFolder()),
      m_services{.settings = frame.Settings(),
                 .player = m_preview,
                 .symbols = [this] { return Symbols(); },
                 .valueNow = [this](std::string_view symbol, int32_t id) { return ValueNow(symbol, id); },
                 .isMuted = [this] { return m_frame.Settings().ReadBoolean(kAlertMute); }},
      m_notices(new CNoticeQueue(m_player, frame, &frame, this)), m_presence(new CPresence(this)),
      m_missed(new CMissedAlerts(*frame.statusBar(), this)) {
    m_frame.Document().Alerts().SetNotices(this);
    m_frame.installEventFilter(this);
    m_notices->SetMuted(m_frame.Settings().ReadBoolean(kAlertMute));
    m_notices->SetInUse([this] { return m_presence->IsHere(); });
    m_notices->SetCanReset([this](const SFiredNotice& notice) { return IsThere(notice); });
    m_notices->SetEnded([this](const SFiredNotice& notice, EFiringEnd end, double newThreshold) {
        OnEnded(notice, end, newThreshold);
    });
    connect(m_notices, &CNoticeQueue::Opening, m_presence, &CPresence::NoteOwnWindow);
    connect(m_presence, &CPresence::Returned, m_missed, &CMissedAlerts::OnReturn);
    connect(m_missed, &CMissedAlerts::Asked, this, &CAlertDesk::ShowHistory);
    connect(m_missed, &CMissedAlerts::Called, this, [this] {
        m_frame.setWindowState(m_frame.windowState() & ~Qt::WindowMinimized);
        m_frame.raise();
        m_frame.activateWindow();
    });
    BindCommands(commands);
}

// The windows use the players, the services and the history.
CAlertDesk::~CAlertDesk() {
    qDeleteAll(m_frame.findChildren<CNewAlertDlg*>());
    delete m_notices;
    delete m_historyDlg;
}

void CAlertDesk::BindCommands(CCommands& commands) {
    commands.Bind(ECommand::AlertsEdit, [this] { EditAlerts(FocusSymbol()); });
    commands.Bind(ECommand::AlertNew, [this] {
        const SGridCell focus = m_frame.View().Grid().FocusCell();
        NewAlert(focus.row, focus.column);
    });
    commands.Bind(ECommand::AlertHistory, [this] { ShowHistory(); });
    commands.Bind(
        ECommand::AlertMute,
        [this] {
            const bool mute = !m_frame.Settings().ReadBoolean(kAlertMute);
            m_frame.Settings().WriteBoolean(kAlertMute, mute);
            m_notices->SetMuted(mute);
        },
        [this](SCommandState& state) { state.checked = m_frame.Settings().ReadBoolean(kAlertMute); });
}

// From the alert to the notice

void CAlertDesk::PostNotice(std::string record) {
    QCoreApplication::postEvent(&m_frame, new CAlertFiredMessage(std::move(record), m_frame.Document().OpenCount()));
}

void CAlertDesk::PostNewsNotice(SAlertNotice notice) {
    QCoreApplication::postEvent(&m_frame, new CAlertFiredMessage(std::move(notice), m_frame.Document().OpenCount()));
}

bool CAlertDesk::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &m_frame && event->type() == kAlertFiredMessage) {
        OnFired(static_cast<const CAlertFiredMessage&>(*event));
        return true;
    }
    if (watched == &m_frame && event->type() == kResetAlertMessage) {
        OnReset(static_cast<const CResetAlertMessage&>(*event).Record());
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void CAlertDesk::OnFired(const CAlertFiredMessage& message) {
    SAlertNotice notice = message.Notice();
    LogInformation(ShownLine(NoticeTitle(notice)));
    if (m_frame.isMinimized()) m_presence->SetHere(false); // A program that starts so was never the active one.
    const int64_t awaySince = m_presence->AwaySinceMs();
    std::string id = m_history.NoteFired(FiringOf(notice, message.FiredMs(), awaySince));
    if (m_historyDlg) m_historyDlg->RefreshSoon();
    if (awaySince != 0) m_missed->Add(notice, message.FiredAt());
    m_notices->Add({std::move(notice), message.FiredAt(), std::move(id), message.Watchlist()});
}

// Another watchlist may have been opened meanwhile, whose alerts the notice is not about.
bool CAlertDesk::IsThere(const SFiredNotice& notice) const {
    const CWatchlistDoc& doc = m_frame.Document();
    return notice.watchlist == doc.OpenCount() && notice.notice.index < doc.Alerts().Count(notice.notice.symbol);
}

void CAlertDesk::OnReset(const std::string& record) {
    CWatchlistDoc& doc = m_frame.Document();
    const bool inStep = doc.Undo().IsRecording(); // A long edit lets the window live; it is cancelled without this.
    CUndoStep step(doc, "reset alert");
    if (!inStep) step.CoverAlerts();
    bool reset = false;
    try {
        reset = doc.Alerts().ResetFromRecord(record);
    } catch (const std::invalid_argument&) { // As good as a symbol without alerts.
    }
    if (reset)
        doc.SetModified(true);
    else
        LogInformation(fmt::format("The alert of \"{}\" to be reset is not there any more.", ShownLine(record)));
}

void CAlertDesk::OnEnded(const SFiredNotice& notice, EFiringEnd end, double newThreshold) {
    m_history.NoteEnded(notice.id, end, QDateTime::currentMSecsSinceEpoch(), newThreshold);
    if (m_historyDlg) m_historyDlg->RefreshSoon();
}

// The windows

void CAlertDesk::EditAlerts(std::string_view symbol) {
    CWatchlistDoc& doc = m_frame.Document();
    EditAlertsWithDialog(doc.Alerts(), m_services, &m_frame, std::string(symbol), [&](const auto& commit) {
        CUndoStep step(doc, "edit alerts");
        step.CoverAlerts();
        commit();
    });
}

void CAlertDesk::NewAlert(int row, int column) {
    CWatchlistDoc& doc = m_frame.Document();
    SAlertDraft draft;
    draft.symbol = doc.RowSymbol(row);
    const bool isColumn = column >= 1 && column < doc.Columns().Count();
    const auto id = isColumn ? AlertFieldId(doc.Columns().At(column).name) : std::nullopt;
    if (id && (JudgedField(*id) || *id == NewsFieldId())) {
        draft.fieldId = id;
        draft.condition = static_cast<uint32_t>(EAlertCondition::Greater);
        if (!draft.symbol.empty()) draft.value = ValueNow(draft.symbol, *id);
    }
    draft.soundType = static_cast<uint32_t>(EAlertSound::BuiltIn);
    auto* dialog = new CNewAlertDlg(m_services, draft, &m_frame);
    dialog->setWindowTitle(tr("New Alert"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(true);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        CWatchlistDoc& document = m_frame.Document();
        CUndoStep step(document, "new alert");
        step.CoverAlerts();
        if (!document.Alerts().Add(dialog->Symbol(), dialog->Alert())) TellNoRoomForAlert(dialog->Symbol());
    });
    dialog->show();
}

void CAlertDesk::ShowHistory() {
    if (!m_historyDlg)
        m_historyDlg = new CAlertHistoryDlg(m_history, &m_frame);
    else if (!m_historyDlg->isVisible())
        m_historyDlg->ShowMissed();
    m_missed->Clear();
    m_historyDlg->show();
    m_historyDlg->raise();
    m_historyDlg->activateWindow();
}

std::string_view CAlertDesk::FocusSymbol() const {
    return m_frame.Document().RowSymbol(m_frame.View().Grid().FocusCell().row);
}

std::vector<std::string> CAlertDesk::Symbols() const {
    std::vector<std::string> out;
    m_frame.Document().Symbols().ForEach([&](const SYMBOL_DATA& data) { out.push_back(data.symbol); });
    std::ranges::sort(out);
    return out;
}

std::string CAlertDesk::ValueNow(std::string_view symbol, int32_t fieldId) const {
    const SFieldEntry* field = JudgedField(fieldId);
    const CSymbolRec* record = m_frame.Store().Find(symbol);
    if (!field || !record || CellDirection(*record, *field) == EDirection::NeverSet) return {};
    return fmt::format("{}", CellNumber(*record, *field));
}

} // namespace vx
