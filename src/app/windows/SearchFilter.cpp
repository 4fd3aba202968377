// SPDX-License-Identifier: MIT
#include "app/windows/SearchFilter.h"

#include "app/windows/ListWindow.h"
#include "base/Number.h"
#include "base/qt/QtText.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr std::array<const char*, CSearchResultModel::kColumns> kTitles = {"Symbol", "Market", "Description"};

} // namespace

void CSearchResultModel::Clear() {
    if (m_rows.empty()) return;
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void CSearchResultModel::Append(const std::vector<SRow>& rows) {
    if (rows.empty()) return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    m_rows.insert(m_rows.end(), rows.begin(), rows.end());
    endInsertRows();
}

int CSearchResultModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CSearchResultModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int{kColumns}; }

QVariant CSearchResultModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const SRow& row = m_rows[static_cast<size_t>(index.row())];
    const QString& text = index.column() == kSymbol   ? row.shownSymbol
                          : index.column() == kMarket ? row.market
                                                      : row.description;
    return role == Qt::ToolTipRole ? PlainTipText(text) : text;
}

QVariant CSearchResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kColumns) return {};
    return QString::fromUtf8(kTitles[static_cast<size_t>(section)]);
}

namespace {

enum EColumn { kData, kId };

constexpr int kDataWidth = 305;
constexpr size_t kMostShownName = 255;

/// The pointer shows that the program waits for as long as it lives.
struct CWaitCursor {
    CWaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CWaitCursor() { QApplication::restoreOverrideCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};

} // namespace

CSearchFilter::CSearchFilter(QWidget* parent)
    : QWidget(parent), m_choice(new QComboBox), m_hint(new QLabel),
      m_again(new QPushButton(QStringLiteral("&Load Again"))),
      m_list(new CListView(QStringLiteral("filterList"), QStringLiteral("Markets or security types to search"), this)),
      m_rows(new QStandardItemModel(0, 2, this)) {
    setObjectName(QStringLiteral("searchFilter"));
    m_choice->setObjectName(QStringLiteral("filterMode"));
    m_choice->addItems({QStringLiteral("None"), QStringLiteral("Listed markets"), QStringLiteral("Security types")});
    m_hint->setTextFormat(Qt::PlainText);
    m_hint->setObjectName(QStringLiteral("filterHint"));
    m_again->setObjectName(QStringLiteral("loadAgain"));
    m_again->setAutoDefault(false);
    m_rows->setHorizontalHeaderLabels({QStringLiteral("Data"), QStringLiteral("ID")});
    m_list->setModel(m_rows);
    m_list->SetColumnWidths({kDataWidth});
    m_list->setColumnHidden(kId, true);
    m_list->setMinimumHeight(120);

    auto* caption = new QLabel(QStringLiteral("&Filter:"));
    caption->setBuddy(m_choice);
    auto* top = new QHBoxLayout;
    top->addWidget(caption);
    top->addWidget(m_choice);
    top->addWidget(m_hint, 1);
    top->addWidget(m_again);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);

    connect(m_choice, &QComboBox::currentIndexChanged, this, [this](int index) { SetMode(EMode(index)); });
    connect(m_again, &QPushButton::clicked, this, &CSearchFilter::Fill);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CSearchFilter::ShowHint);
    ShowList(false);
    m_again->hide();
}

// Without its list the filter leaves its room to the results.
void CSearchFilter::ShowList(bool shown) {
    m_list->setVisible(shown);
    setSizePolicy(QSizePolicy::Preferred, shown ? QSizePolicy::Expanding : QSizePolicy::Maximum);
}

std::array<QWidget*, 3> CSearchFilter::InTabOrder() const { return {m_choice, m_again, m_list}; }

void CSearchFilter::SetTimes(SLookupTimes times) {
    m_markets.SetTimes(times);
    m_types.SetTimes(times);
}

void CSearchFilter::SetMode(EMode mode) {
    if (mode == m_mode) return;
    m_mode = mode;
    m_choice->setCurrentIndex(mode);
    Fill();
}

void CSearchFilter::Fill() {
    m_rows->removeRows(0, m_rows->rowCount());
    ShowList(m_mode != kNone);
    m_again->hide();
    if (m_mode == kMarkets) {
        m_marketsTried = true;
        FillFrom(m_markets, QStringLiteral("The feed client names no markets."));
    } else if (m_mode == kSecurityTypes) {
        FillFrom(m_types, QStringLiteral("The feed client names no security types."));
    }
    ShowHint();
}

template <typename TTable> void CSearchFilter::FillFrom(TTable& table, const QString& nothing) {
    {
        const CWaitCursor wait;
        table.Load();
    }
    m_again->setVisible(!table.IsLoaded());
    m_list->SetEmptyText(
        table.IsLoaded() ? nothing
        : table.WasUnanswered()
            ? QStringLiteral("The names could not be loaded: the feed client does not answer.\nWithout a filter "
                             "everything is searched.")
            : QStringLiteral("The names could not be loaded: the feed client's lookup port cannot be reached.\n"
                             "Without a filter everything is searched."));
    for (int id = 0; id < kTableEntries; ++id) {
        if (!table.Has(id)) continue;
        const auto entry = table.At(id);
        auto* name = new QStandardItem(
            QStringLiteral("%1 - %2").arg(ShownText(entry[0], kMostShownName), ShownText(entry[1], kMostShownName)));
        m_rows->appendRow({name, new QStandardItem(QString::number(id))});
    }
}

void CSearchFilter::ShowHint() {
    const auto chosen = m_list->selectionModel()->selectedRows().size();
    m_hint->setText(m_rows->rowCount() == 0 ? QString()
                    : chosen == 0           ? QStringLiteral("None selected: all are searched")
                                            : QStringLiteral("%1 selected").arg(chosen));
}

std::string CSearchFilter::SelectedIds() const {
    QModelIndexList rows = m_list->selectionModel()->selectedRows(kId);
    std::sort(rows.begin(), rows.end());
    QStringList ids;
    for (const QModelIndex& row : rows) ids += row.data().toString();
    return ids.join(QLatin1Char(' ')).toStdString();
}

QString CSearchFilter::MarketName(std::string_view id) {
    if (id.empty()) return {};
    if (!m_markets.IsLoaded() && !m_marketsTried) {
        m_marketsTried = true;
        const CWaitCursor wait;
        m_markets.Load();
    }
    return ShownText(m_markets.Name(ReadInt32(id)), kMostShownName);
}

} // namespace vx
