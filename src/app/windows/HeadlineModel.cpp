#include "app/windows/HeadlineModel.h"

#include "app/frame/ShownText.h"
#include "base/Text.h"
#include "news/HeadlineLog.h"

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

} // namespace vx
