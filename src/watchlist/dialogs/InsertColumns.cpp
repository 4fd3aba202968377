// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/InsertColumns.h"

#include "base/qt/QtText.h"
#include "watchlist/document/ColumnMap.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace vx {

namespace {

constexpr int kNameColumn = 0;
constexpr int kExplanationColumn = 1;
constexpr int kWidthPx = 660;
constexpr int kHeightPx = 520;
constexpr int kNoMatch = 3;

bool IsShown(const CColumnMap& columns, std::string_view name) {
    const int position = columns.PositionOf(name);
    return position >= 0 && columns.At(position).width > 0;
}

// The explanation on one line: lists in it are broken for tips.
QString OneLine(std::string_view text) { return QtText(text).simplified(); }

// How well an entry meets the filter, 0 is best.
int RankOf(const QTreeWidgetItem& item, const QString& wanted) {
    const QString name = item.text(kNameColumn);
    if (name.startsWith(wanted, Qt::CaseInsensitive)) return 0;
    if (name.contains(wanted, Qt::CaseInsensitive)) return 1;
    return item.text(kExplanationColumn).contains(wanted, Qt::CaseInsensitive) ? 2 : kNoMatch;
}

} // namespace

std::vector<const SFieldEntry*> InsertableColumns(const CColumnMap& columns) {
    std::vector<const SFieldEntry*> out;
    const auto catalogue = Catalogue();
    for (size_t entry = 1; entry < catalogue.size(); ++entry) {
        const SFieldEntry& field = catalogue[entry];
        if (field.name != " " && !IsShown(columns, field.name)) out.push_back(&field);
    }
    return out;
}

CInsertColumns::CInsertColumns(const CColumnMap& columns, QWidget* parent)
    : QDialog(parent), m_filter(new QLineEdit(this)), m_list(new QTreeWidget(this)), m_state(new QLabel(this)) {
    setObjectName(QStringLiteral("insertColumns"));
    setWindowTitle(QStringLiteral("Insert Columns"));
    resize(kWidthPx, kHeightPx);

    auto* label = new QLabel(QStringLiteral("&Find a column:"), this);
    label->setBuddy(m_filter);
    m_filter->setObjectName(QStringLiteral("columnFilter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setPlaceholderText(QStringLiteral("part of a name or explanation"));
    m_filter->installEventFilter(this);

    m_list->setObjectName(QStringLiteral("columnList"));
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({QStringLiteral("Column"), QStringLiteral("Explanation")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    Fill(columns);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_insert = buttons->addButton(QStringLiteral("&Insert"), QDialogButtonBox::AcceptRole);
    m_insert->setObjectName(QStringLiteral("insertButton"));
    m_insert->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_state);
    layout->addWidget(buttons);

    connect(m_filter, &QLineEdit::textChanged, this, &CInsertColumns::Filter);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &CInsertColumns::ShowState);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_filter->setFocus();
    ShowState();
}

void CInsertColumns::Fill(const CColumnMap& columns) {
    for (const SFieldEntry* field : InsertableColumns(columns)) {
        auto* item = new QTreeWidgetItem(m_list, {QtText(field->name), OneLine(field->description)});
        item->setToolTip(kExplanationColumn, PlainTipText(QtText(field->description)));
    }
    m_list->header()->setStretchLastSection(true);
    m_list->header()->setResizeContentsPrecision(-1); // All names, not only those that come first.
    m_list->resizeColumnToContents(kNameColumn);
}

void CInsertColumns::Filter(const QString& text) {
    const QString wanted = text.trimmed();
    QTreeWidgetItem* best = nullptr;
    int bestRank = kNoMatch;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        const int rank = RankOf(*item, wanted);
        item->setHidden(rank == kNoMatch);
        if (rank >= bestRank) continue;
        best = item;
        bestRank = rank;
    }
    // Enter takes the best one at once.
    m_list->clearSelection();
    if (best && !wanted.isEmpty()) m_list->setCurrentItem(best);
    ShowState();
}

std::vector<std::string> CInsertColumns::Chosen() const {
    std::vector<std::string> out;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = m_list->topLevelItem(i);
        if (item->isSelected() && !item->isHidden()) out.push_back(BytesFromQt(item->text(kNameColumn)));
    }
    return out;
}

void CInsertColumns::ShowState() {
    const size_t chosen = Chosen().size();
    m_insert->setEnabled(chosen > 0);
    m_state->setText(chosen == 0   ? QStringLiteral("Choose one or more columns; Ctrl and Shift add to the choice.")
                     : chosen == 1 ? QStringLiteral("1 column chosen.")
                                   : QStringLiteral("%1 columns chosen.").arg(chosen));
}

// From the filter the arrow keys walk through the list.
bool CInsertColumns::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_filter || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down && key != Qt::Key_PageUp && key != Qt::Key_PageDown)
        return QDialog::eventFilter(watched, event);
    QCoreApplication::sendEvent(m_list, event);
    return true;
}

namespace {

QString Counted(int count, const QString& one, const QString& many) { return count == 1 ? one : many.arg(count); }

} // namespace

CInsertDeleteChoiceDlg::CInsertDeleteChoiceDlg(EWhat what, int rows, int columns, QWidget* parent)
    : QDialog(parent), m_rows(new QRadioButton(this)), m_columns(new QRadioButton(this)) {
    const bool inserts = what == EWhat::Insert;
    setObjectName(QStringLiteral("insertDeleteChoice"));
    setWindowTitle(inserts ? QStringLiteral("Insert") : QStringLiteral("Delete"));
    m_rows->setObjectName(QStringLiteral("choiceRows"));
    m_columns->setObjectName(QStringLiteral("choiceColumns"));
    if (inserts) {
        m_rows->setText(Counted(rows, QStringLiteral("A &row above the selection"),
                                QStringLiteral("%1 &rows above the selection")));
        m_columns->setText(QStringLiteral("&Columns left of the focus..."));
    } else {
        m_rows->setText(Counted(rows, QStringLiteral("The selected &row"), QStringLiteral("The %1 selected &rows")));
        m_columns->setText(
            Counted(columns, QStringLiteral("The selected &column"), QStringLiteral("The %1 selected &columns")));
    }
    m_rows->setChecked(true);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(inserts ? QStringLiteral("&Insert") : QStringLiteral("&Delete"), QDialogButtonBox::AcceptRole)
        ->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_rows);
    layout->addWidget(m_columns);
    layout->addSpacing(layout->spacing());
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_rows->setFocus();
}

bool CInsertDeleteChoiceDlg::IsRows() const { return m_rows->isChecked(); }

} // namespace vx
