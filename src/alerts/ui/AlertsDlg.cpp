// SPDX-License-Identifier: MIT
#include "alerts/ui/AlertsDlg.h"

#include "alerts/rules/AlertTexts.h"
#include "alerts/ui/AlertListModel.h"
#include "alerts/ui/NewAlertDlg.h"
#include "base/MessageBox.h"
#include "base/qt/QtText.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

constexpr int kWidth = 780; // A line about zero values fits.
constexpr int kHeight = 380;
constexpr int kLineSpacing = 2;

QPushButton* MakeButton(const QString& text, const char* name, const QString& tip) {
    auto* button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

} // namespace

CAlertsDlg::CAlertsDlg(CAlertsMap& alerts, const SAlertDialogServices& services, QWidget* parent)
    : QDialog(parent), m_alerts(alerts), m_services(services), m_hasSymbols(!services.symbols().empty()),
      m_model(new CAlertListModel(alerts, services.symbols(), this)), m_list(new QListView),
      m_empty(new QLabel(m_hasSymbols
                             ? QStringLiteral("There are no alerts yet.\n\"New\" sets the first one.")
                             : QStringLiteral("There are no alerts yet.\nAlerts need a symbol in the watchlist."))),
      m_new(MakeButton(QStringLiteral("&New..."), "new", QStringLiteral("Set another alert"))),
      m_edit(MakeButton(QStringLiteral("&Edit..."), "edit", QStringLiteral("Change the selected alert"))),
      m_delete(MakeButton(QStringLiteral("&Delete"), "delete", QStringLiteral("Remove the selected alert (Del)"))) {
    setObjectName(QStringLiteral("alertsDlg"));
    setWindowTitle(QStringLiteral("Alerts"));
    m_list->setObjectName(QStringLiteral("alertList"));
    m_list->setUniformItemSizes(true);
    m_list->setSpacing(kLineSpacing);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new CAlertLineDelegate(m_list));
    m_list->installEventFilter(this);
    m_empty->setObjectName(QStringLiteral("noAlerts"));
    m_empty->setAlignment(Qt::AlignCenter);
    LayOut();
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CAlertsDlg::EnableButtons);
    connect(m_list, &QListView::doubleClicked, this, &CAlertsDlg::Edit);
    connect(m_new, &QPushButton::clicked, this, &CAlertsDlg::New);
    connect(m_edit, &QPushButton::clicked, this, &CAlertsDlg::Edit);
    connect(m_delete, &QPushButton::clicked, this, &CAlertsDlg::Delete);
    SelectRow(0);
    EnableButtons();
    m_list->setFocus();
    resize(kWidth, kHeight);
}

void CAlertsDlg::LayOut() {
    auto* caption = new QLabel(QStringLiteral("&Alerts (checked: armed):"));
    caption->setBuddy(m_list);
    auto* overList = new QVBoxLayout(m_list);
    overList->addWidget(m_empty);
    auto* side = new QVBoxLayout;
    for (QPushButton* button : {m_new, m_edit, m_delete}) side->addWidget(button);
    side->addStretch(1);
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_list, 1);
    middle->addLayout(side);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addLayout(middle, 1);
    layout->addWidget(buttons);
}

int CAlertsDlg::SelectedRow() const {
    const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.front().row();
}

void CAlertsDlg::SelectRow(int row) {
    const QModelIndex index = m_model->index(row, 0);
    if (!index.isValid()) return;
    m_list->setCurrentIndex(index);
    m_list->scrollTo(index, QAbstractItemView::EnsureVisible);
}

void CAlertsDlg::SelectSymbol(std::string_view symbol) { SelectRow(std::max(m_model->RowOf(symbol, 0), 0)); }

void CAlertsDlg::EnableButtons() {
    const bool one = SelectedRow() >= 0;
    m_new->setEnabled(m_hasSymbols);
    m_edit->setEnabled(one);
    m_delete->setEnabled(one);
    m_empty->setVisible(m_model->rowCount() == 0);
}

void CAlertsDlg::Refill(int row) {
    m_model->Refill();
    SelectRow(std::min(row, m_model->rowCount() - 1));
    EnableButtons();
}

void CAlertsDlg::RefillAt(const std::string& symbol, const A_INFO& alert) {
    m_model->Refill();
    Refill(m_model->RowOf(symbol, m_alerts.IndexOf(symbol, alert, EAlertMap::WorkingCopy)));
}

void CAlertsDlg::New() {
    auto* dialog = new CNewAlertDlg(m_services, {}, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral("New Alert"));
    dialog->setModal(true);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { Store(dialog->Symbol(), dialog->Alert()); });
    dialog->show();
}

void CAlertsDlg::Store(const std::string& symbol, const A_INFO& alert) {
    if (!m_alerts.Add(symbol, alert, EAlertMap::WorkingCopy)) return TellNoRoomForAlert(symbol);
    RefillAt(symbol, alert);
}

void CAlertsDlg::Edit() {
    const int row = SelectedRow();
    if (row < 0) return;
    const CAlertListModel::SLine line = m_model->At(row);
    SAlertDraft draft = DraftOf(line.symbol, m_model->Alert(row));
    draft.offerArming = m_model->Alert(row).enabled == 0;
    auto* dialog = new CNewAlertDlg(m_services, draft, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral("Edit Alert"));
    dialog->setModal(true);
    connect(dialog, &QDialog::accepted, this, [this, dialog, line] { Replace(line.symbol, line.index, *dialog); });
    dialog->show();
}

// The edited alert keeps its check mark, unless the user has it armed.
void CAlertsDlg::Replace(const std::string& oldSymbol, int oldIndex, const CNewAlertDlg& edited) {
    const A_INFO before = m_alerts.Get(oldSymbol, EAlertMap::WorkingCopy).at(static_cast<size_t>(oldIndex));
    A_INFO after = edited.Alert();
    if (!edited.ArmsAgain()) after.enabled = before.enabled;
    m_alerts.Remove(oldSymbol, oldIndex, EAlertMap::WorkingCopy);
    const bool added = m_alerts.Add(edited.Symbol(), after, EAlertMap::WorkingCopy);
    if (!added) m_alerts.Add(oldSymbol, before, EAlertMap::WorkingCopy);
    RefillAt(added ? edited.Symbol() : oldSymbol, added ? after : before);
    if (!added) TellNoRoomForAlert(edited.Symbol());
}

void CAlertsDlg::Delete() {
    const int row = SelectedRow();
    if (row < 0) return;
    const CAlertListModel::SLine line = m_model->At(row);
    m_alerts.Remove(line.symbol, line.index, EAlertMap::WorkingCopy);
    Refill(row);
}

// While the dialog was not the active window an alert may have fired, which takes its check mark away.
void CAlertsDlg::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange) m_list->viewport()->update();
    QDialog::changeEvent(event);
}

bool CAlertsDlg::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Delete)) {
        Delete();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void TellNoRoomForAlert(std::string_view symbol) {
    ShowMessageBox({.text = fmt::format("There is no room for another alert on \"{}\": a symbol takes {}, a watchlist "
                                        "{} in all.\n\nPlease delete one first.",
                                        ShownLine(symbol), CAlertsMap::kMostPerSymbol, CAlertsMap::kMostAlerts),
                    .caption = {},
                    .icon = EBoxIcon::Exclamation});
}

bool EditAlertsWithDialog(CAlertsMap& alerts, const SAlertDialogServices& services, QWidget* parent,
                          std::string_view symbol, const std::function<void(const std::function<void()>&)>& around) {
    alerts.CopyTo(EAlertMap::WorkingCopy);
    CAlertsDlg dialog(alerts, services, parent);
    dialog.SelectSymbol(symbol);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    const auto commit = [&alerts] { alerts.CopyTo(EAlertMap::Live); };
    if (accepted && around)
        around(commit);
    else if (accepted)
        commit();
    alerts.Clear(EAlertMap::WorkingCopy);
    return accepted;
}

} // namespace vx
