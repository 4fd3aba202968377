// SPDX-License-Identifier: MIT
#include "app/alerts/AlertController.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertTexts.h"
#include "alerts/ui/AlertHistoryDlg.h"
#include "alerts/ui/AlertsDlg.h"
#include "alerts/ui/AlertsNotice.h"
#include "alerts/ui/NewAlertDlg.h"
#include "alerts/ui/NoticeQueue.h"
#include "app/alerts/MissedAlerts.h"
#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/frame/StatusPanes.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "data/store/L1DataStore.h"
#include "data/text/CellText.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/RowCellText.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QGuiApplication>

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx {

CAlertController::CAlertController(const SFrameContext& context)
    : QObject(&context.window), m_context(context), m_history(UserStateFolder()),
      m_services{.settings = context.settings,
                 .player = m_preview,
                 .symbols = [this] { return Symbols(); },
                 .valueNow = [this](std::string_view symbol, int32_t id) { return ValueNow(symbol, id); },
                 .isMuted = [this] { return m_context.settings.ReadBoolean(kAlertMute); }},
      m_notices(new CNoticeQueue(m_player, context.window, &context.window, context.settings, this)),
      m_presence(new CPresence(this)), m_missed(new CMissedAlerts(context.status, this)) {
    m_context.doc.AlertRules().SetReceiver(this);
    m_context.window.installEventFilter(this);
    m_notices->SetMuted(m_context.settings.ReadBoolean(kAlertMute));
    m_notices->SetInUse([this] { return m_presence->IsHere(); });
    m_notices->SetTarget([this](const SFiredAlert& fired) { return TargetOf(fired); });
    m_notices->SetEnded([this](const SFiredAlert& fired, EFiringEnd end) { OnEnded(fired, end); });
    m_missed->SetUrgent([this] { return m_context.settings.ReadBoolean(kAlertUrgent); });
    connect(m_notices, &CNoticeQueue::Opening, this, &CAlertController::OnOpening);
    connect(m_presence, &CPresence::Returned, this, &CAlertController::NoteSeen);
    connect(m_presence, &CPresence::Returned, m_missed, &CMissedAlerts::OnReturn);
    connect(m_missed, &CMissedAlerts::Asked, this, &CAlertController::ShowHistory);
    connect(m_missed, &CMissedAlerts::Called, this, &CAlertController::ShowWindow);
    BindCommands();
}

// The windows use the players, the services and the history.
CAlertController::~CAlertController() {
    qDeleteAll(m_context.window.findChildren<CNewAlertDlg*>());
    delete m_notices;
    delete m_historyDlg;
}

void CAlertController::BindCommands() {
    CCommands& commands = m_context.commands;
    commands.Bind(ECommand::AlertsEdit, [this] { EditAlerts(FocusSymbol()); });
    commands.Bind(ECommand::AlertNew, [this] {
        const SGridCell focus = m_context.view.Grid().FocusCell();
        NewAlert(focus.row, focus.column);
    });
    commands.Bind(ECommand::AlertHistory, [this] { ShowHistory(); });
    commands.Bind(
        ECommand::AlertMute,
        [this] {
            const bool mute = !m_context.settings.ReadBoolean(kAlertMute);
            m_context.settings.WriteBoolean(kAlertMute, mute);
            m_notices->SetMuted(mute);
        },
        [this](SCommandState& state) { state.checked = m_context.settings.ReadBoolean(kAlertMute); });
    commands.Bind(
        ECommand::AlertUrgent,
        [this] { m_context.settings.WriteBoolean(kAlertUrgent, !m_context.settings.ReadBoolean(kAlertUrgent)); },
        [this](SCommandState& state) { state.checked = m_context.settings.ReadBoolean(kAlertUrgent); });
}

// From the alert to the notice

void CAlertController::PostFired(std::string record, const A_INFO& fired) {
    QCoreApplication::postEvent(&m_context.window,
                                new CAlertFiredMessage(std::move(record), fired, m_context.doc.OpenCount()));
}

void CAlertController::PostFiredNews(SAlertRecord record, const A_INFO& fired) {
    QCoreApplication::postEvent(&m_context.window,
                                new CAlertFiredMessage(std::move(record), fired, m_context.doc.OpenCount()));
}

bool CAlertController::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &m_context.window && event->type() == kAlertFiredMessage) {
        OnFired(static_cast<const CAlertFiredMessage&>(*event));
        return true;
    }
    if (watched == &m_context.window && event->type() == kResetAlertMessage) {
        OnReset(static_cast<const CResetAlertMessage&>(*event));
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void CAlertController::OnFired(const CAlertFiredMessage& message) {
    SFiredAlert fired = message.Fired();
    LogInformation(ShownLine(NoticeTitle(fired.record)));
    if (m_context.window.isMinimized() && !QGuiApplication::focusWindow())
        m_presence->SetHere(false); // Sooner than a poll.
    const int64_t awaySince = m_presence->AwaySinceMs();
    fired.id = m_history.NoteFired(FiringOf(fired.record, message.FiredMs(), awaySince));
    fired.wasAway = awaySince != 0;
    if (m_historyDlg) m_historyDlg->RefreshSoon();
    if (fired.wasAway) m_missed->Add(fired.record, fired.firedAt);
    m_notices->Add(std::move(fired));
}

// The user may have left while the notice waited for a pause.
void CAlertController::OnOpening() {
    m_presence->NoteOwnWindow();
    const SFiredAlert& fired = m_notices->Current();
    if (m_presence->IsHere())
        NoteSeen();
    else if (!fired.wasAway)
        m_missed->Add(fired.record, fired.firedAt);
}

void CAlertController::NoteSeen() {
    const std::string& id = m_notices->Current().id;
    if (!m_notices->Shown() || id == m_seen) return;
    m_seen = id;
    m_history.NoteSeen(id, QDateTime::currentMSecsSinceEpoch());
    if (m_historyDlg) m_historyDlg->RefreshSoon();
}

// Another watchlist may have been opened meanwhile, whose alerts the notice is not about.
SNoticeTarget CAlertController::TargetOf(const SFiredAlert& fired) const {
    const CWatchlistDoc& doc = m_context.doc;
    const std::string& symbol = fired.record.symbol;
    const auto index = static_cast<size_t>(fired.record.index);
    SNoticeTarget out{.canArm = false, .canReset = false, .resetLine = {}, .taken = {}};
    if (fired.watchlist != doc.OpenCount()) return out;
    out.canArm = doc.Alerts().IndexOf(symbol, fired.alert) >= 0;
    const CAlertArray& alerts = doc.Alerts().Get(symbol);
    if (index >= alerts.size()) return out;
    out.canReset = true;
    out.resetsFired = IsSameAlert(alerts[index], fired.alert);
    out.resetLine = AlertLineText(symbol, alerts[index]);
    for (size_t i = 0; i < alerts.size(); ++i)
        if (i != index && alerts[i].fieldId == alerts[index].fieldId) out.taken.push_back(alerts[i].value);
    return out;
}

void CAlertController::OnReset(const CResetAlertMessage& message) {
    CAlertsMap& alerts = m_context.doc.AlertRules();
    const SFiredAlert& of = message.Of();
    const auto index = static_cast<size_t>(of.record.index);
    const bool isThere = TargetOf(of).canReset;
    const A_INFO before = isThere ? alerts.Get(of.record.symbol)[index] : A_INFO{};
    if (isThere && alerts.ResetFromRecord(message.Record()))
        return NoteReset(of, before, alerts.Get(of.record.symbol)[index].value);
    LogInformation(fmt::format("The alert of \"{}\" to be reset is not there any more.", ShownLine(message.Record())));
    NoteEnded(of, EFiringEnd::Dismissed);
}

// The alert that was changed may be another one than the one that fired: the history says so of both.
void CAlertController::NoteReset(const SFiredAlert& of, const A_INFO& changed, double newThreshold) {
    const int64_t now = QDateTime::currentMSecsSinceEpoch();
    if (m_historyDlg) m_historyDlg->RefreshSoon();
    if (IsSameAlert(changed, of.alert)) return m_history.NoteEnded(of.id, EFiringEnd::Reset, now, newThreshold);
    m_history.NoteEnded(of.id, EFiringEnd::ResetOther, now, newThreshold, AlertWords(changed));
    const SAlertRecord like = ReadAlertRecord(FormatAlertRecord(of.record.symbol, {changed}, 0, {}));
    const std::vector<SAlertFiring> firings = m_history.Read();
    if (const SAlertFiring* firing = FindFiring(firings, FiringOf(like, 0, 0)))
        m_history.NoteEnded(firing->id, EFiringEnd::Reset, now, newThreshold);
}

bool CAlertController::Arm(const SFiredAlert& fired) {
    if (!TargetOf(fired).canArm) return false;
    CAlertsMap& alerts = m_context.doc.AlertRules();
    alerts.Arm(fired.record.symbol, alerts.IndexOf(fired.record.symbol, fired.alert));
    return true;
}

// What became of a reset is known when its message has arrived.
void CAlertController::OnEnded(const SFiredAlert& fired, EFiringEnd end) {
    if (end == EFiringEnd::Reset) return;
    NoteEnded(fired, end == EFiringEnd::Armed && !Arm(fired) ? EFiringEnd::Dismissed : end);
}

void CAlertController::NoteEnded(const SFiredAlert& fired, EFiringEnd end) {
    m_history.NoteEnded(fired.id, end, QDateTime::currentMSecsSinceEpoch());
    if (m_historyDlg) m_historyDlg->RefreshSoon();
}

// The user chose the desktop's notification, and is here whatever the desktop makes of it.
void CAlertController::ShowWindow() {
    if (m_context.window.isMinimized())
        m_context.window.setWindowState(m_context.window.windowState() & ~Qt::WindowMinimized);
    m_context.window.raise();
    m_context.window.activateWindow();
    m_presence->SetHere(true);
}

// The windows

void CAlertController::EditAlerts(std::string_view symbol) {
    CWatchlistDoc& doc = m_context.doc;
    const auto inOneStep = [&](const auto& commit) {
        doc.Edit("edit alerts", [&](CWatchlistEdit& edit) {
            edit.Alerts();
            commit();
        });
    };
    EditAlertsWithDialog(doc.AlertRules(), m_services, &m_context.window, std::string(symbol), inOneStep);
}

void CAlertController::NewAlert(int row, int column) {
    CWatchlistDoc& doc = m_context.doc;
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
    auto* dialog = new CNewAlertDlg(m_services, draft, &m_context.window);
    dialog->setWindowTitle(QStringLiteral("New Alert"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(true);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        const bool added = m_context.doc.Edit("new alert", [&](CWatchlistEdit& edit) {
            const bool hasRoom = edit.Alerts().Add(dialog->Symbol(), dialog->Alert());
            if (!hasRoom) edit.Cancel();
            return hasRoom;
        });
        if (!added) TellNoRoomForAlert(dialog->Symbol());
    });
    dialog->show();
}

void CAlertController::ShowHistory() {
    if (!m_historyDlg)
        m_historyDlg = new CAlertHistoryDlg(m_history, &m_context.window);
    else if (!m_historyDlg->isVisible())
        m_historyDlg->ShowMissed();
    m_missed->Clear();
    m_historyDlg->show();
    m_historyDlg->raise();
    m_historyDlg->activateWindow();
}

std::string_view CAlertController::FocusSymbol() const {
    return m_context.doc.RowSymbol(m_context.view.Grid().FocusCell().row);
}

std::vector<std::string> CAlertController::Symbols() const {
    std::vector<std::string> out;
    m_context.doc.Symbols().ForEach([&](const SYMBOL_DATA& data) { out.push_back(data.symbol); });
    std::ranges::sort(out);
    return out;
}

std::string CAlertController::ValueNow(std::string_view symbol, int32_t fieldId) const {
    const SFieldEntry* field = JudgedField(fieldId);
    const CSymbolRec* record = m_context.doc.Store().Find(symbol);
    if (!field || !record || CellDirection(*record, *field) == EDirection::NeverSet) return {};
    return fmt::format("{}", CellNumber(*record, *field));
}

} // namespace vx
