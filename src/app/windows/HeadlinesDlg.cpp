// SPDX-License-Identifier: MIT
#include "app/windows/HeadlinesDlg.h"

#include "app/windows/ListWindow.h"
#include "base/Text.h"
#include "base/qt/QtText.h"
#include "news/HeadlineLog.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QTextOption>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <functional>

namespace vx {

namespace {

constexpr std::array<const char*, CHeadlineModel::kColumns> kTitles = {"Time", "Symbols", "Headline"};
constexpr size_t kMostShownSymbols = 120;

} // namespace

QString HeadlineSymbols(const SHeadline& headline, size_t mostBytes) {
    return ShownText(headline.symbols, mostBytes).replace(QLatin1Char(':'), QStringLiteral(", "));
}

bool CHeadlineModel::Passes(const SHeadline& headline) const {
    if (!m_everySymbol && !headline.IsAbout(m_symbol)) return false;
    return m_text.empty() || ContainsText(LowerAscii(headline.text), m_text) ||
           ContainsText(LowerAscii(headline.symbols), m_text);
}

bool CHeadlineModel::SetFilter(bool everySymbol, const std::string& symbol, const std::string& text) {
    const std::string lower = LowerAscii(text);
    if (everySymbol == m_everySymbol && symbol == m_symbol && lower == m_text) return false;
    const bool same = everySymbol && m_everySymbol && lower == m_text; // The symbol counts for nothing.
    m_everySymbol = everySymbol;
    m_symbol = symbol;
    m_text = lower;
    if (same) return false;
    beginResetModel();
    m_rows.clear();
    m_seen = m_log.LastNumber();
    for (uint64_t number = m_log.FirstNumber(); number <= m_seen; ++number)
        if (Passes(*m_log.Find(number))) m_rows.push_front(number);
    endResetModel();
    return true;
}

int CHeadlineModel::Update() {
    RemoveGone();
    std::deque<uint64_t> fresh;
    for (uint64_t number = std::max(m_seen + 1, m_log.FirstNumber()); number <= m_log.LastNumber(); ++number)
        if (Passes(*m_log.Find(number))) fresh.push_front(number);
    m_seen = m_log.LastNumber();
    if (fresh.empty()) return 0;
    const int count = static_cast<int>(fresh.size());
    beginInsertRows({}, 0, count - 1);
    m_rows.insert(m_rows.begin(), fresh.begin(), fresh.end());
    endInsertRows();
    return count;
}

void CHeadlineModel::RemoveGone() {
    const auto gone = std::ranges::partition_point(
        m_rows, [first = m_log.FirstNumber()](uint64_t number) { return number >= first; });
    const auto kept = static_cast<int>(gone - m_rows.begin());
    if (kept == rowCount()) return;
    beginRemoveRows({}, kept, rowCount() - 1);
    m_rows.resize(static_cast<size_t>(kept));
    endRemoveRows();
}

const SHeadline* CHeadlineModel::At(int row) const {
    return row >= 0 && row < rowCount() ? m_log.Find(m_rows[static_cast<size_t>(row)]) : nullptr;
}

int CHeadlineModel::RowOf(uint64_t number) const {
    const auto found = std::ranges::lower_bound(m_rows, number, std::greater{});
    return found != m_rows.end() && *found == number ? static_cast<int>(found - m_rows.begin()) : -1;
}

int CHeadlineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CHeadlineModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int{kColumns}; }

QVariant CHeadlineModel::data(const QModelIndex& index, int role) const {
    const SHeadline* headline = index.isValid() ? At(index.row()) : nullptr;
    if (!headline || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    const bool tip = role == Qt::ToolTipRole;
    const size_t most = tip ? kMostShownTip : index.column() == kSymbols ? kMostShownSymbols : kMostShownRow;
    const QString text = index.column() == kTime      ? ShownText(HeadlineTime(headline->time), most)
                         : index.column() == kSymbols ? HeadlineSymbols(*headline, most)
                                                      : ShownText(headline->text, most);
    return tip ? PlainTipText(text) : text;
}

QVariant CHeadlineModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kColumns) return {};
    return QString::fromUtf8(kTitles[static_cast<size_t>(section)]);
}

namespace {

constexpr int kMostFilterText = 255;
/// Symbols of a headline whose row a double click looks for.
constexpr size_t kMostSymbolsTried = 1000;
/// Longer words are looked through again for each line that they are broken into, which holds the window for seconds
/// at 60 KB: a text with one of them is broken anywhere.
constexpr size_t kMostWord = 300;

bool HasHugeWord(std::string_view text) {
    size_t length = 0;
    return std::ranges::any_of(text, [&](char c) {
        length = c == ' ' ? 0 : length + 1;
        return length > kMostWord;
    });
}

} // namespace

CHeadlinesDlg::CHeadlinesDlg(CWatchlistDoc& doc, CWatchlistGrid& grid, QWidget* parent)
    : CRowWindow(doc, grid, Qt::BottomLeftCorner, parent), m_rowOnly(new QRadioButton(QStringLiteral("&Row's symbol"))),
      m_all(new QRadioButton(QStringLiteral("&All symbols"))), m_filter(new QLineEdit),
      m_list(new CListView(QStringLiteral("headlines"), QStringLiteral("Headlines, newest first"), this)),
      m_detail(new QPlainTextEdit), m_state(new QLabel), m_headlines(new CHeadlineModel(doc.Headlines(), this)) {
    setObjectName(QStringLiteral("headlinesWindow"));
    setWindowTitle(QStringLiteral("Headlines"));
    m_rowOnly->setObjectName(QStringLiteral("rowOnly"));
    m_all->setObjectName(QStringLiteral("all"));
    m_all->setChecked(true);
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setPlaceholderText(QStringLiteral("Words of the headline, or a symbol"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setMaxLength(kMostFilterText);
    m_list->setModel(m_headlines);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->SetColumnWidths({150, 110, 300});
    m_detail->setObjectName(QStringLiteral("detail"));
    m_detail->setAccessibleName(QStringLiteral("The whole headline"));
    m_detail->setReadOnly(true);
    m_detail->setTabChangesFocus(true);
    m_detail->setPlaceholderText(
        QStringLiteral("Select a headline to read all of it. A double click goes to its symbol's row."));
    m_state->setObjectName(QStringLiteral("state"));
    MakeLayout();

    connect(m_rowOnly, &QRadioButton::toggled, this, [this] { Refresh(); });
    connect(m_filter, &QLineEdit::textChanged, this, [this] { Refresh(); });
    connect(m_list, &CListView::RowDoubleClicked, this, &CHeadlinesDlg::GoToRow);
    connect(m_list, &CListView::RowEntered, this, &CHeadlinesDlg::GoToRow);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        m_notice.clear();
        ShowDetail();
    });
}

void CHeadlinesDlg::MakeLayout() {
    auto* top = new QHBoxLayout;
    auto* caption = new QLabel(QStringLiteral("&Filter:"));
    caption->setBuddy(m_filter);
    top->addWidget(m_rowOnly);
    top->addWidget(m_all);
    top->addSpacing(16);
    top->addWidget(caption);
    top->addWidget(m_filter, 1);

    auto* panes = new QSplitter(Qt::Vertical);
    panes->addWidget(m_list);
    panes->addWidget(m_detail);
    panes->setStretchFactor(0, 3);
    panes->setStretchFactor(1, 1);
    panes->setChildrenCollapsible(false);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(panes, 1);
    const QDialogButtonBox& buttons = AddBottomRow(*this, *layout, *m_state, QDialogButtonBox::Close);
    resize(690, 450);
    TabThrough({m_rowOnly, m_all, m_filter, m_list, m_detail, buttons.button(QDialogButtonBox::Close)});
    m_list->setFocus();
}

void CHeadlinesDlg::ShowRowsHeadlines() {
    (FocusSymbol().empty() ? m_all : m_rowOnly)->setChecked(true);
    Refresh();
}

void CHeadlinesDlg::Refresh() {
    if (!isVisible()) return;
    const std::string focus = FocusSymbol();
    const QString symbol = ShownText(focus, kMostShownSymbol);
    const bool other = m_headlines->SetFilter(m_all->isChecked(), focus, BytesFromQt(m_filter->text().trimmed()));
    m_list->StayBelow(m_headlines->Update());
    if (other) SelectDetail();
    ShowDetail();

    QString name = symbol; // An ampersand would become an access key.
    name.replace(QLatin1Char('&'), QStringLiteral("&&"));
    const QString label =
        name.isEmpty() ? QStringLiteral("&Row's symbol") : QStringLiteral("&Row's symbol: %1").arg(name);
    if (m_rowOnly->text() != label) m_rowOnly->setText(label);
    m_list->SetEmptyText(EmptyText(symbol));
    const int shown = m_headlines->rowCount();
    const auto all = static_cast<qulonglong>(Document().Headlines().Size());
    m_state->setText(!m_notice.isEmpty() ? m_notice : QStringLiteral("%L1 of %L2 headlines").arg(shown).arg(all));
}

QString CHeadlinesDlg::EmptyText(const QString& symbol) const {
    if (Document().Headlines().Size() == 0)
        return QStringLiteral(
            "No headline has come since the watchlist was opened.\nThey appear here as the feed sends them.");
    if (m_rowOnly->isChecked() && symbol.isEmpty())
        return QStringLiteral(
            "This row holds no symbol.\nGo to the row of a symbol in the watchlist, or choose all symbols.");
    if (!m_filter->text().trimmed().isEmpty())
        return QStringLiteral("No headline matches the filter.\nClear it, or choose all symbols.");
    return QStringLiteral(
               "No headline about %1 has come since the watchlist was opened.\nChoose all symbols to see the others.")
        .arg(symbol);
}

// What is being read stays selected as long as it passes the filter.
void CHeadlinesDlg::SelectDetail() {
    if (const int row = m_headlines->RowOf(m_detailNumber); row >= 0)
        m_list->setCurrentIndex(m_headlines->index(row, 0));
}

void CHeadlinesDlg::ShowDetail() {
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    const SHeadline* headline = rows.isEmpty() ? nullptr : m_headlines->At(rows.front().row());
    const uint64_t number = headline ? headline->number : 0;
    if (number == m_detailNumber) return; // Writing it again would lose what the user has selected.
    m_detailNumber = number;
    if (!headline) return m_detail->clear();
    m_detail->setWordWrapMode(HasHugeWord(headline->text) ? QTextOption::WrapAnywhere
                                                          : QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_detail->setPlainText(ShownText(HeadlineTime(headline->time), kMostShownRow) + QStringLiteral("   ") +
                           HeadlineSymbols(*headline, kMostShownRow) + QStringLiteral("\n\n") +
                           ShownText(headline->text, headline->text.size()));
}

void CHeadlinesDlg::GoToRow(const QModelIndex& index) {
    const SHeadline* headline = m_headlines->At(index.row());
    if (!headline) return;
    std::vector<std::string_view> symbols = SplitCountingTail(headline->symbols, ':');
    symbols.resize(std::min(symbols.size(), kMostSymbolsTried));
    // The symbol that the window is about goes before the others of its headline.
    const std::string focus = FocusSymbol();
    const auto own = std::ranges::find(symbols, focus);
    if (own != symbols.end()) std::rotate(symbols.begin(), own, own + 1);
    for (const std::string_view symbol : symbols) {
        const SYMBOL_DATA* known = Document().Symbols().Find(symbol);
        if (symbol != focus && !known) continue;
        if (symbol != focus) {
            const int row = static_cast<int>(known->rows.front());
            Document().RevealRows(row, row);
            Grid().SetFocusCell(row, std::max(Grid().FocusCell().column, 1));
        }
        Grid().activateWindow();
        Grid().setFocus();
        return;
    }
    m_notice = symbols.empty() ? QStringLiteral("This headline names no symbol.")
                               : QStringLiteral("None of its symbols is in the watchlist.");
    Refresh();
}

} // namespace vx
