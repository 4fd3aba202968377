// SPDX-License-Identifier: MIT
#include "app/windows/SymbolSearchDlg.h"

#include "app/windows/ListWindow.h"
#include "app/windows/SearchFilter.h"
#include "base/qt/QtText.h"
#include "feed/session/FeedSession.h"
#include "feed/socket/ClientAppSocket.h"
#include "settings/Settings.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr int kMostSearchText = 255;

} // namespace

CSymbolSearchDlg::CSymbolSearchDlg(CFeedSession& session, CSettings& settings, QWidget* parent)
    : QDialog(parent), m_session(session), m_settings(settings) {
    setObjectName(QStringLiteral("symbolSearch"));
    setWindowTitle(QStringLiteral("Symbol Search"));
    setSizeGripEnabled(true);
    MakeWidgets();
    MakeLayout();
    ConnectWidgets();
    m_timer.setProperty("timerId", kResultsTimer);
    m_timer.setInterval(kResultsMs);
    ShowState();
    m_text->setFocus();
}

void CSymbolSearchDlg::MakeWidgets() {
    m_text = new QLineEdit;
    m_text->setObjectName(QStringLiteral("searchText"));
    m_text->setMaxLength(kMostSearchText);
    m_text->setPlaceholderText(QStringLiteral("Symbol, or words of a description"));
    m_text->setClearButtonEnabled(true);
    m_search = new QPushButton(QStringLiteral("&Search"));
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setDefault(true);
    m_search->setEnabled(false);
    m_stop = new QPushButton(QStringLiteral("S&top"));
    m_stop->setObjectName(QStringLiteral("stop"));
    m_stop->setAutoDefault(false);
    m_bySymbol = new QRadioButton(QStringLiteral("By s&ymbol"));
    m_bySymbol->setObjectName(QStringLiteral("bySymbol"));
    m_byDescription = new QRadioButton(QStringLiteral("By &description"));
    m_byDescription->setObjectName(QStringLiteral("byDescription"));
    (m_settings.ReadInteger(kSearchType) == 1 ? m_byDescription : m_bySymbol)->setChecked(true);
    m_filter = new CSearchFilter(this);

    m_results = new CSearchResultModel(this);
    m_sorted = new QSortFilterProxyModel(this);
    m_sorted->setSourceModel(m_results);
    m_sorted->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_list = new CListView(QStringLiteral("results"), QStringLiteral("Symbols found"), this);
    m_list->setModel(m_sorted);
    m_list->header()->setSortIndicator(-1, Qt::AscendingOrder); // As they arrive, until a header is clicked.
    m_list->header()->setSortIndicatorClearable(true);
    m_list->setSortingEnabled(true);
    m_list->SetColumnWidths({90, 75, 130});
    m_list->header()->setStretchLastSection(false);
    m_list->setMinimumHeight(140);
    m_other = new QPushButton;
    m_other->setObjectName(QStringLiteral("searchOther"));
    m_other->setAutoDefault(true); // With the keyboard on it, Enter presses it.
    m_other->hide();
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("searchState"));
    m_state->setWordWrap(true);
}

void CSymbolSearchDlg::MakeLayout() {
    auto* caption = new QLabel(QStringLiteral("Search f&or:"));
    caption->setBuddy(m_text);
    auto* top = new QHBoxLayout;
    top->addWidget(caption);
    top->addWidget(m_text, 1);
    top->addWidget(m_search);
    top->addWidget(m_stop);
    auto* kind = new QHBoxLayout;
    kind->addWidget(m_bySymbol);
    kind->addWidget(m_byDescription);
    kind->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(kind);
    layout->addWidget(m_filter, 2);
    layout->addWidget(m_list, 3);
    layout->addWidget(m_other, 0, Qt::AlignLeft);
    const QDialogButtonBox& buttons =
        AddBottomRow(*this, *layout, *m_state, QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QPushButton* ok = buttons.button(QDialogButtonBox::Ok);
    ok->setToolTip(QStringLiteral("Put the selected symbols into the watchlist; with none selected, only close"));
    resize(560, 560);

    const auto [choice, again, names] = m_filter->InTabOrder();
    TabThrough({m_text, m_search, m_stop, m_bySymbol, m_byDescription, choice, again, names, m_list, m_other, ok,
                buttons.button(QDialogButtonBox::Cancel)});
}

void CSymbolSearchDlg::ConnectWidgets() {
    connect(m_text, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_search->setEnabled(!text.isEmpty()); });
    connect(m_search, &QPushButton::clicked, this, &CSymbolSearchDlg::Search);
    connect(m_stop, &QPushButton::clicked, this, &CSymbolSearchDlg::Stop);
    connect(m_other, &QPushButton::clicked, this, [this] {
        (m_byDescription->isChecked() ? m_bySymbol : m_byDescription)->setChecked(true);
        m_text->setFocus();
        Search();
    });
    connect(&m_timer, &QTimer::timeout, this, &CSymbolSearchDlg::TakeResults);
    connect(m_list, &CListView::RowEntered, this, &QDialog::accept);
    connect(m_list, &CListView::RowDoubleClicked, this, [this](const QModelIndex& row) {
        m_list->selectionModel()->select(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        accept();
    });
}

void CSymbolSearchDlg::Search() {
    m_results->Clear();
    const std::string ids = m_filter->SelectedIds();
    const auto by = m_byDescription->isChecked() ? ESearchBy::Description : ESearchBy::Symbol;
    m_settings.WriteInteger(kSearchType, by == ESearchBy::Description ? 1 : 0);
    const CSearchFilter::EMode mode = m_filter->Mode();
    const bool sent =
        m_session.SymbolSearch(by, BytesFromQt(m_text->text()), mode == CSearchFilter::kMarkets ? ids : std::string(),
                               mode == CSearchFilter::kSecurityTypes ? ids : std::string());
    m_searching = sent ? EState::Searching : EState::NotSent;
    m_searched = m_text->text();
    m_other->hide();
    m_timer.start();
    ShowState();
}

void CSymbolSearchDlg::Stop() {
    m_timer.stop();
    m_searching = EState::Stopped;
    ShowState();
}

// The session's results only grow within a generation, so that the number of rows says which of them are new, however
// the rows are sorted.
void CSymbolSearchDlg::TakeResults() {
    const CSearchResults& search = m_session.LookupReplies().search;
    if (std::exchange(m_generation, search.Generation()) != search.Generation()) m_results->Clear();
    const std::vector<SSearchResult>& results = search.Results();
    std::vector<CSearchResultModel::SRow> rows;
    for (auto i = static_cast<size_t>(m_results->rowCount()); i < results.size(); ++i) {
        const SSearchResult& result = results[i];
        rows.push_back({result.symbol, ShownText(result.symbol, CSearchResults::kMostTextBytes),
                        m_filter->MarketName(result.market),
                        ShownText(result.description, CSearchResults::kMostTextBytes)});
    }
    const bool first = m_results->rowCount() == 0 && !rows.empty();
    m_results->Append(rows);
    const bool nothing = first && FoundCount() == 0;
    if (nothing) m_list->setFirstColumnSpanned(0, {}, true);
    ShowState();
    if (first) GoOn(nothing);
}

// The keyboard goes where the user will want it, unless the user does something else by now: to the results, or to the
// other way of searching when there are none.
void CSymbolSearchDlg::GoOn(bool nothing) {
    const QWidget* keyboard = focusWidget();
    const bool waits = (keyboard == m_text && m_text->text() == m_searched) || keyboard == m_search ||
                       keyboard == m_stop || keyboard == nullptr;
    if (nothing) {
        m_other->setText(m_byDescription->isChecked() ? QStringLiteral("Search Symbols &Instead")
                                                      : QStringLiteral("Search Descriptions &Instead"));
        m_other->show();
    }
    if (!waits) return;
    (nothing ? static_cast<QWidget*>(m_other) : m_list)->setFocus(Qt::OtherFocusReason);
    m_list->selectionModel()->clearCurrentIndex(); // The first key down leads to the first result.
}

void CSymbolSearchDlg::accept() {
    m_chosen.clear();
    m_allChosen.clear();
    QModelIndexList rows = m_list->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    for (const QModelIndex& row : rows) m_allChosen.push_back(m_results->SymbolAt(m_sorted->mapToSource(row).row()));
    if (m_allChosen.empty())
        m_results->Clear();
    else
        m_chosen = m_allChosen.front();
    QDialog::accept();
}

void CSymbolSearchDlg::done(int result) {
    m_timer.stop();
    QDialog::done(result);
}

// The state of the search

bool CSymbolSearchDlg::IsConnected() const {
    const CZantrelClientAppSocket* const lookup = m_session.FeedSocket(kLookupSocket);
    return lookup && lookup->IsConnected();
}

int CSymbolSearchDlg::FoundCount() const {
    const int rows = m_results->rowCount();
    return rows == 1 && m_results->SymbolAt(0) == CSearchResults::kNothingFound ? 0 : rows;
}

void CSymbolSearchDlg::ShowState() {
    const CSearchResults& search = m_session.LookupReplies().search;
    const bool waiting = m_searching == EState::Searching && !search.Ended();
    m_stop->setEnabled(waiting);
    const QString text = StateText();
    if (m_state->text() != text) m_state->setText(text);
    m_list->SetEmptyText(
        m_searching == EState::Idle
            ? QStringLiteral("Type a symbol or words of a description and press Enter.\nSelect what you want "
                             "(Ctrl or Shift for several) and choose OK.")
        : m_searching == EState::NotSent
            ? QStringLiteral("Nothing was searched: the feed client's lookup port is not connected.\nSearch again "
                             "when the feed is there; a connection that was lost comes back with the next start "
                             "of the program.")
        : waiting ? QStringLiteral("Searching...")
                  : QString());
}

QString CSymbolSearchDlg::StateText() const {
    const int found = FoundCount();
    const CSearchResults& search = m_session.LookupReplies().search;
    if (m_searching == EState::Idle) return {};
    if (m_searching == EState::NotSent) return QStringLiteral("Not connected.");
    if (m_searching == EState::Stopped) return QStringLiteral("Stopped. Found so far: %L1.").arg(found);
    if (search.Ended()) return EndText(found);
    if (!IsConnected())
        return QStringLiteral("The feed client has closed the connection. Found until then: %L1.").arg(found);
    if (search.SilentMs() >= kSilentMs)
        return QStringLiteral("The feed has not answered for %L1 seconds. Found so far: %L2. Stop, or search again.")
            .arg(search.SilentMs() / 1000)
            .arg(found);
    return found == 0 ? QStringLiteral("Searching...") : QStringLiteral("Searching... found so far: %L1.").arg(found);
}

QString CSymbolSearchDlg::EndText(int found) const {
    QString text = m_session.LookupReplies().search.IsCut()
                       ? QStringLiteral("More than %L1 symbols found; these are the first.").arg(found)
                   : found == 0 ? QStringLiteral("No symbol found.")
                   : found == 1 ? QStringLiteral("1 symbol found.")
                                : QStringLiteral("%L1 symbols found.").arg(found);
    if (found > 0 && !m_filter->HasMarketNames())
        text += QStringLiteral(" The names of the markets could not be loaded.");
    return text;
}

} // namespace vx
