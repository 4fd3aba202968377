// SPDX-License-Identifier: MIT
#include "app/windows/TimeAndSalesDlg.h"

#include "app/windows/ListWindow.h"
#include "base/qt/QtText.h"
#include "data/catalogue/CellFormat.h"
#include "data/record/L1SymbolRec.h"
#include "data/record/NumberText.h"
#include "data/store/L1DataStore.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QBrush>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cstring>

namespace vx {

namespace {

struct SColumnTitle {
    const char* title;
    const char* tip;
};

constexpr std::array<SColumnTitle, CTradeModel::kColumns> kTitles = {
    {{"Time", "When the trade took place"},
     {"Tick", "Up, down or unchanged against the trade before"},
     {"Price", "Price of the trade"},
     {"Size", "Size of the trade"},
     {"ET Price", "Price of the last extended trade at that moment"},
     {"ET Size", "Size of the last extended trade at that moment"}}};

QString Fixed(double value, int decimals) {
    std::array<char, 64> text;
    return QtText({text.data(), WriteFixed(value, decimals, false, text)});
}

bool SameTrade(const sTimeAndSalesRec& a, const sTimeAndSalesRec& b) {
    return a.number == b.number && a.time == b.time && a.size == b.size && a.price == b.price;
}

QChar Shape(EDirection direction) {
    switch (direction) {
    case EDirection::Up:
        return QChar(0x25B2);
    case EDirection::Down:
        return QChar(0x25BC);
    default:
        return QChar(0x2022);
    }
}

ETextRole Role(EDirection direction) {
    return direction == EDirection::Up     ? ETextRole::Up
           : direction == EDirection::Down ? ETextRole::Down
                                           : ETextRole::Unchanged;
}

} // namespace

int CTradeModel::Show(const CL1SymbolRec* record) {
    const CTimeAndSales* history = record ? record->History() : nullptr;
    const uint32_t number = record ? record->Ids().id2 : 0;
    const int precision = record ? record->DecimalPrecision() : -1;
    const int decimals = precision >= 0 ? std::min(precision, int{kMostDecimals}) : SCellFormat{}.decimals;
    const int fresh = history && number == m_record && decimals == m_decimals ? FreshTrades(*history) : -1;
    m_record = number;
    m_decimals = decimals;
    if (fresh >= 0) {
        AddOnTop(*history, fresh);
        return fresh;
    }
    if (!m_trades.empty() || (history && history->Size() > 0)) ShowAnew(history);
    return 0;
}

// How many trades came since the last look; -1 when the newest one of then is not among them.
int CTradeModel::FreshTrades(const CTimeAndSales& history) const {
    if (m_trades.empty() || history.Size() == 0) return history.Size() == 0 && m_trades.empty() ? 0 : -1;
    const uint32_t fresh = history.At(history.Size() - 1).number - m_trades.front().number;
    if (fresh >= history.Size()) return -1;
    const bool known = SameTrade(history.At(history.Size() - 1 - fresh), m_trades.front());
    return known ? static_cast<int>(fresh) : -1;
}

void CTradeModel::ShowAnew(const CTimeAndSales* history) {
    beginResetModel();
    m_trades.clear();
    for (size_t i = history ? history->Size() : 0; i-- > 0;) m_trades.push_back(history->At(i));
    endResetModel();
}

void CTradeModel::AddOnTop(const CTimeAndSales& history, int count) {
    if (count > 0) {
        beginInsertRows({}, 0, count - 1);
        std::vector<sTimeAndSalesRec> fresh;
        for (size_t i = 0; i < static_cast<size_t>(count); ++i) fresh.push_back(history.At(history.Size() - 1 - i));
        m_trades.insert(m_trades.begin(), fresh.begin(), fresh.end());
        endInsertRows();
    }
    if (m_trades.size() <= history.Size()) return;
    beginRemoveRows({}, static_cast<int>(history.Size()), static_cast<int>(m_trades.size()) - 1);
    m_trades.resize(history.Size());
    endRemoveRows();
}

void CTradeModel::SetTheme(const SGridTheme& theme) {
    if (m_theme == &theme) return;
    m_theme = &theme;
    if (!m_trades.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1), {Qt::ForegroundRole});
}

int CTradeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_trades.size());
}

int CTradeModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int{kColumns}; }

// Against the trade before; the oldest one has none.
EDirection CTradeModel::DirectionOf(size_t row) const {
    if (row + 1 >= m_trades.size()) return EDirection::NeverSet;
    const double now = m_trades[row].price;
    const double before = m_trades[row + 1].price;
    return now > before ? EDirection::Up : now < before ? EDirection::Down : EDirection::Unchanged;
}

QString CTradeModel::Text(size_t row, int column) const {
    const sTimeAndSalesRec& trade = m_trades[row];
    const bool extended = trade.extendedPrice != 0 || trade.extendedSize != 0;
    const EDirection direction = DirectionOf(row);
    switch (column) {
    case kTime:
        return ShownText({trade.time.data(), strnlen(trade.time.data(), trade.time.size())}, trade.time.size());
    case kTick:
        return direction == EDirection::NeverSet ? QString() : QString(Shape(direction));
    case kPrice:
        return Fixed(trade.price, m_decimals);
    case kSize:
        return QString::number(trade.size);
    case kExtendedPrice:
        return extended ? Fixed(trade.extendedPrice, m_decimals) : QString();
    case kExtendedSize:
        return extended ? QString::number(trade.extendedSize) : QString();
    default:
        return {};
    }
}

QVariant CTradeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const auto row = static_cast<size_t>(index.row());
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return Text(row, column);
    case Qt::TextAlignmentRole:
        return column == kTime   ? int{Qt::AlignLeft | Qt::AlignVCenter}
               : column == kTick ? int{Qt::AlignCenter}
                                 : int{Qt::AlignRight | Qt::AlignVCenter};
    case Qt::ForegroundRole:
        if (column != kTick && column != kPrice) return {};
        return QBrush(QColor::fromRgb(m_theme->RoleColor(Role(DirectionOf(row)))));
    default:
        return {};
    }
}

QVariant CTradeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumns) return {};
    const SColumnTitle& title = kTitles[static_cast<size_t>(section)];
    if (role == Qt::DisplayRole) return QString::fromUtf8(title.title);
    if (role == Qt::ToolTipRole) return QString::fromUtf8(title.tip);
    if (role == Qt::TextAlignmentRole && section >= kPrice) return int{Qt::AlignRight | Qt::AlignVCenter};
    if (role == Qt::TextAlignmentRole && section == kTick) return int{Qt::AlignCenter};
    return {};
}

CTimeAndSalesDlg::CTimeAndSalesDlg(CWatchlistDoc& doc, CWatchlistGrid& grid, QWidget* parent)
    : CRowWindow(doc, grid, Qt::BottomRightCorner, parent), m_name(new QLabel),
      m_follow(new QCheckBox(QStringLiteral("&Follow the row"))),
      m_list(new CListView(QStringLiteral("trades"), QStringLiteral("Trades, newest first"), this)),
      m_state(new QLabel), m_trades(new CTradeModel(this)) {
    setObjectName(QStringLiteral("timeAndSales"));
    setWindowTitle(QStringLiteral("Time and Sales"));
    m_name->setTextFormat(Qt::PlainText);
    m_name->setObjectName(QStringLiteral("symbolName"));
    QFont bold = m_name->font();
    bold.setBold(true);
    m_name->setFont(bold);
    m_follow->setObjectName(QStringLiteral("followRow"));
    m_follow->setChecked(true);
    m_follow->setToolTip(QStringLiteral("Show the symbol of the row that has the focus; off: stay on this symbol"));
    m_state->setObjectName(QStringLiteral("state"));
    m_list->setModel(m_trades);
    m_list->SetColumnWidths({110, 44, 90, 70, 90, 70});

    connect(m_follow, &QCheckBox::toggled, this, [this] { Refresh(); });

    auto* top = new QHBoxLayout;
    top->addWidget(m_name, 1);
    top->addWidget(m_follow);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    const QDialogButtonBox& buttons = AddBottomRow(*this, *layout, *m_state, QDialogButtonBox::Close);
    resize(520, 450);
    TabThrough({m_follow, m_list, buttons.button(QDialogButtonBox::Close)});
    m_list->setFocus();
}

void CTimeAndSalesDlg::ShowRowsTrades() {
    if (const std::string symbol = FocusSymbol(); !symbol.empty()) SetSymbol(symbol);
    Refresh();
}

void CTimeAndSalesDlg::Refresh() {
    if (!isVisible()) return;
    if (m_follow->isChecked()) SetSymbol(FocusSymbol());
    KeepTrades();
    const CL1SymbolRec* record = m_symbol.empty() ? nullptr : Document().Store().FindSymbol(m_symbol);
    m_trades->SetTheme(Grid().Theme());
    m_list->StayBelow(m_trades->Show(record));
    ShowState(record);
}

void CTimeAndSalesDlg::SetSymbol(const std::string& symbol) {
    if (symbol == m_symbol) return;
    m_symbol = symbol;
    if (!symbol.empty()) {
        std::erase(m_kept, symbol);
        m_kept.push_front(symbol);
    }
    if (m_kept.size() > kKeptSymbols) {
        Document().Store().SetHistoryLimit(m_kept.back(), 0);
        m_kept.pop_back();
    }
}

// A record that the feed started again keeps no trades until its limit is set again.
void CTimeAndSalesDlg::KeepTrades() {
    CL1DataStore& store = Document().Store();
    for (const std::string& symbol : m_kept) {
        const CL1SymbolRec* record = store.FindSymbol(symbol);
        if (record && !record->History()) store.SetHistoryLimit(symbol, kHistoryLimit);
    }
}

void CTimeAndSalesDlg::Closed() {
    for (const std::string& symbol : m_kept) Document().Store().SetHistoryLimit(symbol, 0);
    m_kept.clear();
    m_symbol.clear();
    m_trades->Show(nullptr);
}

void CTimeAndSalesDlg::ShowState(const CL1SymbolRec* record) {
    const QString name = ShownText(m_symbol, kMostShownSymbol);
    const int trades = m_trades->rowCount();
    m_name->setText(name);
    m_state->setText(trades == 0                                 ? QString()
                     : trades == static_cast<int>(kHistoryLimit) ? QStringLiteral("The last %L1 trades").arg(trades)
                     : trades == 1                               ? QStringLiteral("1 trade")
                                                                 : QStringLiteral("%L1 trades").arg(trades));
    const QString title =
        name.isEmpty() ? QStringLiteral("Time and Sales") : QStringLiteral("Time and Sales - %1").arg(name);
    if (windowTitle() != title) setWindowTitle(title);
    m_list->SetEmptyText(EmptyText(record));
}

QString CTimeAndSalesDlg::EmptyText(const CL1SymbolRec* record) const {
    const QString name = ShownText(m_symbol, kMostShownSymbol);
    if (m_symbol.empty())
        return QStringLiteral(
            "This row holds no symbol.\nGo to the row of a symbol in the watchlist to see its trades.");
    if (!record)
        return QStringLiteral(
                   "%1 is not being watched: the feed is not there yet, or the symbol has left the watchlist.\nIts "
                   "trades appear when it is watched.")
            .arg(name);
    return QStringLiteral("Waiting for trades of %1.\nEarlier trades are not kept.").arg(name);
}

} // namespace vx
