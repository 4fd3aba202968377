// SPDX-License-Identifier: MIT
#include "watchlist/document/RowTable.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace vx {

namespace {

bool IsBlank(const SRow& row) { return row.symbol.empty() && !row.hidden && row.Extras() == SRowExtras{}; }

auto FindColumn(auto& formats, int column) {
    return std::ranges::lower_bound(formats, column, {}, &SRowFormat::column);
}

std::vector<int> Unmoved(int lastRow) {
    std::vector<int> newRowOf(static_cast<size_t>(lastRow) + 1);
    std::iota(newRowOf.begin(), newRowOf.end(), 0);
    return newRowOf;
}

} // namespace

const SRow CRowTable::kBlank;

// One row

SRow& CRowTable::Make(int row) {
    while (!IsThere(row)) m_rows.push_back(Blank());
    return m_rows[static_cast<size_t>(row)];
}

SRow CRowTable::Blank() {
    SRow row;
    row.id = ++m_lastId;
    return row;
}

void CRowTable::Before(int row) {
    if (m_recorder) m_recorder->BeforeRow(row);
}

bool CRowTable::SetSymbol(int row, std::string_view symbol, uint32_t flag) {
    if (row < 1 || row > kMaxRow || symbol.empty()) return false;
    Before(row);
    Make(row).symbol = symbol;
    m_symbols.Add(symbol, static_cast<uint32_t>(row), flag);
    ++m_symbolRows.count;
    m_symbolRows.last = std::max(m_symbolRows.last, row);
    return true;
}

void CRowTable::ClearSymbol(int row) {
    if (Symbol(row).empty()) return;
    Before(row);
    m_symbols.Remove(Symbol(row), static_cast<uint32_t>(row));
    Make(row).symbol.clear();
    Count(m_symbolRows, row, false, [this](int at) { return !Symbol(at).empty(); });
}

CRowList CRowTable::RemoveSymbol(std::string_view symbol) {
    const std::string taken(symbol); // It may be a row's own.
    CRowList rows = m_symbols.RemoveSymbol(taken);
    for (const uint32_t row : rows) ClearSymbol(static_cast<int>(row));
    return rows;
}

void CRowTable::SetText(int row, RowText text, std::string_view value) {
    if (row < 1 || row > kMaxRow || Text(row, text) == value) return;
    const bool had = !Text(row, text).empty();
    const std::string kept(value); // It may be of the row itself.
    Before(row);
    if (text == &SRowExtras::rejected) {
        if (had) m_rejected.RemoveRow(Text(row, text), static_cast<uint32_t>(row));
        if (!kept.empty()) m_rejected.Add(kept, {static_cast<uint32_t>(row)});
    }
    Make(row).MakeExtras().*text = kept;
    STally* tally = TallyOf(text);
    if (tally && had == kept.empty())
        Count(*tally, row, !had, [this, text](int at) { return !Text(at, text).empty(); });
}

void CRowTable::SetHidden(int row, bool hidden) {
    if (row < 1 || row > kMaxRow || Row(row).hidden == hidden) return;
    Before(row);
    Make(row).hidden = hidden;
    m_hiddenCount += hidden ? 1 : -1;
}

const SCellFormat* CRowTable::FindFormat(int row, int column) const {
    const auto& formats = Row(row).Extras().formats;
    const auto found = FindColumn(formats, column);
    return found == formats.end() || found->column != column ? nullptr : &found->format;
}

void CRowTable::SetFormat(int row, int column, std::optional<SCellFormat> format) {
    if (!IsInside(row) || (!format && !FindFormat(row, column))) return;
    Before(row);
    auto& formats = Make(row).MakeExtras().formats;
    const auto place = FindColumn(formats, column);
    const bool isThere = place != formats.end() && place->column == column;
    if (!format) {
        formats.erase(place);
        --m_formatCount;
    } else if (isThere) {
        place->format = *std::move(format);
    } else {
        formats.insert(place, {column, *std::move(format)});
        ++m_formatCount;
    }
}

void CRowTable::SetFormats(int row, std::vector<SRowFormat> formats) {
    if (!IsInside(row)) return;
    std::erase_if(formats, [](const SRowFormat& cell) { return cell.column < 0; });
    std::ranges::sort(formats, {}, &SRowFormat::column);
    Before(row);
    auto& kept = Make(row).MakeExtras().formats;
    m_formatCount = m_formatCount - kept.size() + formats.size();
    kept = std::move(formats);
}

// Numbers of rows

uint32_t CRowTable::MakeId(int row) { return row < 1 || row > kMaxRow ? 0 : Make(row).id; }

int CRowTable::RowOfId(uint32_t id) const {
    const auto found = std::find_if(m_rows.begin() + 1, m_rows.end(), [=](const SRow& row) { return row.id == id; });
    return found == m_rows.end() ? 0 : static_cast<int>(found - m_rows.begin());
}

std::vector<int> CRowTable::RowsOfIds() const {
    std::vector<int> rows(m_lastId + 1, 0);
    for (int row = 1; row <= Size(); ++row) rows[Row(row).id] = row;
    return rows;
}

// What there is, and up to where

const CRowTable::STally* CRowTable::TallyOf(RowText text) const {
    if (text == &SRowExtras::annotation) return &m_annotationRows;
    return text == &SRowExtras::note ? &m_noteRows : nullptr;
}

template <typename Has> void CRowTable::Count(STally& tally, int row, bool comes, Has&& has) {
    tally.count += comes ? 1 : -1;
    if (comes)
        tally.last = std::max(tally.last, row);
    else
        FindLast(tally, 0, has);
}

// It is not beyond `from`, or where it was.
template <typename Has> void CRowTable::FindLast(STally& tally, int from, Has&& has) {
    tally.last = tally.count == 0 ? 0 : std::max(tally.last, from);
    while (tally.last > 0 && !has(tally.last)) --tally.last;
}

void CRowTable::CountRow(int row) {
    const SRow& entry = Row(row);
    const auto count = [row](STally& tally, const std::string& text) {
        if (text.empty()) return;
        ++tally.count;
        tally.last = row;
    };
    count(m_symbolRows, entry.symbol);
    m_hiddenCount += entry.hidden;
    if (!entry.extras) return;
    count(m_annotationRows, entry.extras->annotation);
    count(m_noteRows, entry.extras->note);
    m_formatCount += entry.extras->formats.size();
}

void CRowTable::CountAll() {
    m_symbolRows = m_annotationRows = m_noteRows = {};
    m_hiddenCount = 0;
    m_formatCount = 0;
    for (int row = 0; row <= Size(); ++row) CountRow(row);
}

int CRowTable::LastKeptRow() const {
    int row = Size();
    while (row > 0 && IsBlank(Row(row))) --row;
    return row;
}

std::vector<int> CRowTable::HiddenRows() const {
    std::vector<int> out;
    out.reserve(static_cast<size_t>(m_hiddenCount));
    for (int row = 1; m_hiddenCount > 0 && row <= Size(); ++row)
        if (Row(row).hidden) out.push_back(row);
    return out;
}

// Rows that come, go and move

template <typename NewRow> std::vector<std::string> CRowTable::Renumber(NewRow&& newRow) {
    m_rejected.Renumber(newRow);
    return m_symbols.Renumber(newRow);
}

void CRowTable::InsertRows(int firstRow, int count) {
    if (firstRow < 1 || count < 1 || firstRow > Size()) return;
    if (m_recorder) m_recorder->BeforeRowsMove();
    count = std::min(count, kMaxRow - firstRow + 1);
    std::vector<std::string> gone;
    if (const int beyond = Size() + count - kMaxRow; beyond > 0) {
        std::vector<int> leaving(static_cast<size_t>(beyond));
        for (int i = 0; i < beyond; ++i) leaving[static_cast<size_t>(i)] = Size() - beyond + 1 + i;
        RemoveRows(leaving, gone);
    }
    std::vector<SPlacedRow> blank(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) blank[static_cast<size_t>(i)] = {firstRow + i, Blank()};
    PutRows(std::move(blank));
    if (m_recorder) m_recorder->RowsInserted(firstRow, count);
}

std::vector<SPlacedRow> CRowTable::RemoveRows(const std::vector<int>& rows, std::vector<std::string>& gone) {
    if (m_recorder) m_recorder->BeforeRowsMove();
    std::vector<SPlacedRow> taken;
    taken.reserve(rows.size());
    std::vector<int> newRowOf(m_rows.size(), 0);
    size_t kept = 1;
    for (size_t row = 1; row < m_rows.size(); ++row) {
        const size_t next = taken.size();
        if (next < rows.size() && rows[next] == static_cast<int>(row)) {
            taken.push_back({rows[next], std::move(m_rows[row])});
        } else {
            newRowOf[row] = static_cast<int>(kept);
            if (kept != row) m_rows[kept] = std::move(m_rows[row]);
            ++kept;
        }
    }
    m_rows.resize(kept);
    CountAll();
    gone = Renumber([&](int row) { return newRowOf[static_cast<size_t>(row)]; });
    if (m_recorder) m_recorder->RowsRemoved(taken);
    return taken;
}

std::vector<std::string> CRowTable::PutRows(std::vector<SPlacedRow> rows) {
    if (rows.empty()) return {};
    std::vector<int> newRowOf(m_rows.size(), 0);
    std::vector<SRow> all;
    all.reserve(m_rows.size() + rows.size());
    size_t old = 0;
    size_t put = 0;
    while (old < m_rows.size() || put < rows.size()) {
        const bool isPlace = put < rows.size() && rows[put].place <= static_cast<int>(all.size());
        if (isPlace) {
            all.push_back(std::move(rows[put++].row));
        } else if (old < m_rows.size()) {
            newRowOf[old] = static_cast<int>(all.size());
            all.push_back(std::move(m_rows[old++]));
        } else {
            all.push_back(Blank());
        }
    }
    m_rows = std::move(all);
    CountAll();
    Renumber([&](int row) { return newRowOf[static_cast<size_t>(row)]; });
    std::vector<std::string> came;
    for (const SPlacedRow& at : rows) {
        const SRow& row = Row(at.place);
        const auto place = static_cast<uint32_t>(at.place);
        if (!row.symbol.empty()) {
            if (!m_symbols.Find(row.symbol)) came.push_back(row.symbol);
            m_symbols.Add(row.symbol, place);
        }
        if (!row.Extras().rejected.empty()) m_rejected.Add(row.Extras().rejected, {place});
    }
    return came;
}

void CRowTable::Reorder(const std::vector<int>& newRowOf) {
    const int covered = static_cast<int>(newRowOf.size()) - 1;
    if (covered < 1 || covered > kMaxRow) return;
    if (m_recorder) m_recorder->BeforeRowsMove();
    Make(covered);
    std::vector<size_t> from(newRowOf.size());
    for (size_t row = 1; row < newRowOf.size(); ++row) from[static_cast<size_t>(newRowOf[row])] = row;
    std::vector<SRow> moved; // Made in its order: each row is moved once.
    moved.reserve(m_rows.size());
    for (const size_t row : from) moved.push_back(std::move(m_rows[row]));
    moved.insert(moved.end(), std::make_move_iterator(m_rows.begin() + covered + 1),
                 std::make_move_iterator(m_rows.end()));
    m_rows = std::move(moved);
    FindLast(m_symbolRows, covered, [this](int at) { return !Symbol(at).empty(); });
    for (const RowText text : {&SRowExtras::annotation, &SRowExtras::note})
        FindLast(*TallyOf(text), covered, [=, this](int at) { return !Text(at, text).empty(); });
    Renumber([&](int row) { return row <= covered ? newRowOf[static_cast<size_t>(row)] : row; });
}

void CRowTable::Clear() {
    m_rows.clear();
    m_rows.resize(1);
    m_symbols.Clear();
    m_rejected.Clear();
    CountAll();
}

std::vector<int> MoveOfBlock(int firstRow, int count, int before) {
    const int end = firstRow + count;
    if (count < 1 || firstRow < 1 || before < 1 || (before >= firstRow && before <= end)) return {};
    std::vector<int> newRowOf = Unmoved(std::max(end, before) - 1);
    const auto shift = [&](int from, int to, int by) {
        for (int row = from; row < to; ++row) newRowOf[static_cast<size_t>(row)] += by;
    };
    if (before < firstRow) {
        shift(before, firstRow, count);
        shift(firstRow, end, before - firstRow);
    } else {
        shift(firstRow, end, before - end);
        shift(end, before, -count);
    }
    return newRowOf;
}

std::vector<int> OrderOfRows(const std::vector<int>& rows, const std::vector<int>& order) {
    if (rows.empty()) return {};
    std::vector<int> newRowOf = Unmoved(rows.back());
    for (size_t i = 0; i < rows.size(); ++i) newRowOf[static_cast<size_t>(order[i])] = rows[i];
    return newRowOf;
}

} // namespace vx
