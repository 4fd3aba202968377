// SPDX-License-Identifier: MIT
#include "alerts/ui/AlertHistoryDlg.h"

#include "alerts/rules/AlertTexts.h"
#include "alerts/ui/AlertHistoryModel.h"
#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "base/MessageBox.h"
#include "base/Windows1252.h"
#include "base/qt/QtText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <utility>

namespace vx {

namespace {

constexpr int kWidth = 1180;
constexpr int kHeight = 460;
constexpr int kScreenEdge = 40;
constexpr int kMostColumnWidth = 220;
constexpr int kRefreshMs = 200; // Each reads the whole file again.
constexpr int kWhileAway = 0;   // Of the list of views.
constexpr int kAll = 1;

} // namespace

CAlertHistoryDlg::CAlertHistoryDlg(const CAlertHistory& history, QWidget* parent)
    : QDialog(parent), m_history(history), m_model(new CAlertHistoryModel(this)),
      m_filter(new CAlertHistoryFilter(*m_model, this)), m_soon(new QTimer(this)) {
    setObjectName(QStringLiteral("alertHistory"));
    setWindowTitle(QStringLiteral("Alert History"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    MakeFilters();
    MakeTable();
    LayOut();
    m_soon->setSingleShot(true);
    m_soon->setInterval(kRefreshMs);
    connect(m_soon, &QTimer::timeout, this, &CAlertHistoryDlg::Refresh);
    resize(std::min(kWidth, screen()->availableGeometry().width() - kScreenEdge), kHeight);
    ShowMissed();
}

void CAlertHistoryDlg::MakeFilters() {
    m_view = new QComboBox;
    m_view->setObjectName(QStringLiteral("view"));
    m_view->addItems({QStringLiteral("While you were away"), QStringLiteral("All alerts that fired")});
    m_symbol = new QComboBox;
    m_symbol->setObjectName(QStringLiteral("symbol"));
    m_symbol->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_symbol->setMinimumContentsLength(12);
    m_text = new QLineEdit;
    m_text->setObjectName(QStringLiteral("text"));
    m_text->setPlaceholderText(QStringLiteral("Filter"));
    m_text->setClearButtonEnabled(true);
    m_onlyOpen = new QCheckBox(QStringLiteral("Only &undismissed"));
    m_onlyOpen->setObjectName(QStringLiteral("onlyOpen"));
    m_onlyOpen->setToolTip(QStringLiteral("Only alerts whose notice was neither dismissed nor reset"));
    connect(m_view, &QComboBox::currentIndexChanged, this, &CAlertHistoryDlg::Filter);
    connect(m_symbol, &QComboBox::currentIndexChanged, this, &CAlertHistoryDlg::Filter);
    connect(m_text, &QLineEdit::textChanged, this, &CAlertHistoryDlg::Filter);
    connect(m_onlyOpen, &QCheckBox::toggled, this, &CAlertHistoryDlg::Filter);
}

void CAlertHistoryDlg::MakeTable() {
    m_table = new QTableView;
    m_table->setObjectName(QStringLiteral("table"));
    m_table->setAccessibleName(windowTitle());
    m_table->setModel(m_filter);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(CAlertHistoryModel::Fired, Qt::DescendingOrder);
    m_empty = new QLabel;
    m_empty->setObjectName(QStringLiteral("nothing"));
    m_empty->setAlignment(Qt::AlignCenter);
    auto* overTable = new QVBoxLayout(m_table);
    overTable->addWidget(m_empty);
}

void CAlertHistoryDlg::LayOut() {
    auto* filters = new QHBoxLayout;
    const auto add = [filters](const QString& text, QWidget* widget, int stretch = 0) {
        auto* label = new QLabel(text);
        label->setBuddy(widget);
        filters->addWidget(label);
        filters->addWidget(widget, stretch);
        filters->addSpacing(8);
    };
    add(QStringLiteral("&Show:"), m_view);
    add(QStringLiteral("S&ymbol:"), m_symbol);
    add(QStringLiteral("&Text:"), m_text, 1);
    filters->addWidget(m_onlyOpen);
    m_summary = new QLabel;
    m_summary->setObjectName(QStringLiteral("summary"));
    m_summary->setTextFormat(Qt::PlainText);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    m_export = buttons->addButton(QStringLiteral("&Export..."), QDialogButtonBox::ActionRole);
    m_export->setObjectName(QStringLiteral("export"));
    m_export->setToolTip(QStringLiteral("Write the lines shown to a CSV file"));
    m_export->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_export, &QPushButton::clicked, this, &CAlertHistoryDlg::ChooseExport);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_summary, 1);
    bottom->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(m_table, 1);
    layout->addLayout(bottom);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    setTabOrder(m_export, buttons->button(QDialogButtonBox::Close));
}

void CAlertHistoryDlg::RefreshSoon() {
    if (isVisible() && !m_soon->isActive()) m_soon->start();
}

void CAlertHistoryDlg::ShowMissed() {
    Refresh();
    m_view->setCurrentIndex(LastAbsence(m_model->Firings()) != 0 ? kWhileAway : kAll);
    m_table->resizeColumnsToContents();
    for (int column = 0; column < CAlertHistoryModel::ColumnCount; ++column) {
        constexpr int kRoom = 6;
        m_table->setColumnWidth(column, std::min(m_table->columnWidth(column) + kRoom, kMostColumnWidth));
    }
}

void CAlertHistoryDlg::Refresh() {
    m_soon->stop();
    m_model->SetFirings(m_history.Read());
    FillSymbols();
    Filter();
}

// Keeps the choice while its symbol is still there.
void CAlertHistoryDlg::FillSymbols() {
    const int chosen = m_symbol->currentIndex();
    const std::string symbol = chosen > 0 ? m_symbols[static_cast<size_t>(chosen) - 1] : std::string{};
    std::set<std::string> symbols;
    for (const SAlertFiring& firing : m_model->Firings()) symbols.insert(firing.symbol);
    m_symbols.assign(symbols.begin(), symbols.end());
    const QSignalBlocker quiet(m_symbol);
    m_symbol->clear();
    m_symbol->addItem(QStringLiteral("All"));
    for (const std::string& text : m_symbols) m_symbol->addItem(QtText(ShownLine(text)));
    const auto place = std::ranges::find(m_symbols, symbol);
    m_symbol->setCurrentIndex(place == m_symbols.end() ? 0 : static_cast<int>(place - m_symbols.begin()) + 1);
}

void CAlertHistoryDlg::Filter() {
    const int symbol = m_symbol->currentIndex();
    m_filter->SetFilter({.whileAway = m_view->currentIndex() == kWhileAway,
                         .onlyOpen = m_onlyOpen->isChecked(),
                         .symbol = symbol > 0 ? m_symbols[static_cast<size_t>(symbol) - 1] : std::string{},
                         .text = m_text->text()});
    ShowSummary();
}

void CAlertHistoryDlg::ShowSummary() {
    const int shown = m_filter->rowCount();
    const int all = m_model->rowCount();
    QString text =
        all == 1 ? QStringLiteral("%1 of 1 alert").arg(shown) : QStringLiteral("%1 of %2 alerts").arg(shown).arg(all);
    const int64_t absence = LastAbsence(m_model->Firings());
    if (m_view->currentIndex() == kWhileAway && absence != 0)
        text += QStringLiteral("; you were away from %1 on").arg(QtText(LocalTimeText(absence)));
    m_summary->setText(text);
    m_export->setEnabled(shown > 0);
    m_empty->setVisible(shown == 0);
    m_empty->setText(all == 0 ? QStringLiteral("No alert has fired yet.")
                              : (m_view->currentIndex() == kWhileAway && absence == 0
                                     ? QStringLiteral("No alert fired while you were away.")
                                     : QStringLiteral("No fired alert matches the filter.")));
}

void CAlertHistoryDlg::ChooseExport() {
    auto* dialog = new QFileDialog(this, QStringLiteral("Export Alert History"));
    dialog->setObjectName(QStringLiteral("exportDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({QStringLiteral("Comma delimited (*.csv)"), QStringLiteral("All files (*)")});
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    dialog->selectFile(QStringLiteral("alert-history.csv"));
    connect(dialog, &QFileDialog::fileSelected, this, &CAlertHistoryDlg::ExportTo);
    dialog->setModal(true);
    dialog->show();
}

void CAlertHistoryDlg::ExportTo(const QString& path) {
    const std::string file = QFile::encodeName(path).toStdString();
    const int error = SaveFile(file, Utf8FromWindows1252(HistoryCsv(m_filter->Shown())));
    if (error == 0) return;
    ShowMessageBox({.text = fmt::format("The alert history could not be written to\n{}\n\n{}", BytesFromQt(path),
                                        ErrorText(error)),
                    .caption = {},
                    .icon = EBoxIcon::Exclamation});
}

} // namespace vx
