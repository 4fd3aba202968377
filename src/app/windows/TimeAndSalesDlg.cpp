#include "app/windows/TimeAndSalesDlg.h"

#include "app/frame/ShownText.h"
#include "app/windows/ListView.h"
#include "app/windows/ListWindow.h"
#include "app/windows/TradeModel.h"
#include "data/store/L1DataStore.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace vx {

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

// A record that the feed has begun anew keeps no trades until it is told so again.
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
    return QStringLiteral("Waiting for trades of %1.\nThose from before it was shown here are not kept.").arg(name);
}

} // namespace vx
