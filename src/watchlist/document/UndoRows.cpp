// SPDX-License-Identifier: MIT
#include "watchlist/document/UndoRows.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace vx {

namespace {

// The header, whose number is 0, is always row 0; of other rows 0 says that the row is not there.
int RowOf(const std::vector<int>& rowOf, uint32_t id) { return id < rowOf.size() ? rowOf[id] : 0; }
bool IsThere(const std::vector<int>& rowOf, uint32_t id) { return id == 0 || RowOf(rowOf, id) != 0; }

bool HasSameSavedContent(const SRow& a, const SRow& b) {
    return a.symbol == b.symbol && a.Extras().annotation == b.Extras().annotation &&
           a.Extras().rejected == b.Extras().rejected;
}

uint8_t DifferentParts(const SRow& a, const SRow& b) {
    const SRowExtras& x = a.Extras();
    const SRowExtras& y = b.Extras();
    unsigned parts = 0;
    if (!HasSameSavedContent(a, b) || x.shown != y.shown || x.typed != y.typed) parts |= kContentPart;
    if (x.note != y.note) parts |= kNotePart;
    if (x.formats != y.formats) parts |= kFormatPart;
    if (a.hidden != b.hidden) parts |= kHiddenPart;
    return static_cast<uint8_t>(parts);
}

SRow PartsOf(const SRow& row, uint8_t parts) {
    SRow out;
    out.id = row.id;
    out.hidden = row.hidden;
    if (parts & kContentPart) out.symbol = row.symbol;
    if (!row.extras) return out;
    out.extras = std::make_unique<SRowExtras>();
    if (parts & kContentPart) {
        out.extras->annotation = row.extras->annotation;
        out.extras->rejected = row.extras->rejected;
        out.extras->shown = row.extras->shown;
        out.extras->typed = row.extras->typed;
    }
    if (parts & kNotePart) out.extras->note = row.extras->note;
    if (parts & kFormatPart) out.extras->formats = row.extras->formats;
    return out;
}

void TouchFormats(const SRow& a, const SRow& b, STouched& touched) {
    const auto& x = a.Extras().formats;
    const auto& y = b.Extras().formats;
    for (const auto* formats : {&x, &y})
        for (const SRowFormat& cell : *formats) {
            const auto& others = formats == &x ? y : x;
            if (std::ranges::find(others, cell) == others.end()) touched.AddColumn(cell.column);
        }
}

size_t BytesOf(const SRow& row) {
    constexpr size_t kShort = 16; ///< Texts up to here are in the string itself.
    const auto bytes = [](const std::string& text) { return text.capacity() < kShort ? 0 : text.capacity(); };
    if (!row.extras) return bytes(row.symbol);
    const SRowExtras& extras = *row.extras;
    return bytes(row.symbol) + sizeof extras + bytes(extras.annotation) + bytes(extras.note) + bytes(extras.rejected) +
           bytes(extras.shown) + bytes(extras.typed) + extras.formats.capacity() * sizeof(SRowFormat);
}

} // namespace

void STouched::AddColumn(int column) {
    firstColumn = firstColumn == 0 ? column : std::min(firstColumn, column);
    lastColumn = std::max(lastColumn, column);
}

// Recording

void CUndoRows::BeforeRow(CRowTable& table, int row) {
    const uint32_t id = table.MakeId(row);
    if (row != 0 && id == 0) return;
    if (id >= m_seen.size()) m_seen.resize(std::max<size_t>(id + 1, m_seen.size() * 2));
    if (m_seen[id]) return;
    m_seen[id] = true;
    m_changed.push_back({table.Row(row)});
}

void CUndoRows::BeforeRowsMove(const CRowTable& table) {
    if (std::exchange(m_moved, true)) return;
    m_order.reserve(static_cast<size_t>(table.Size()));
    for (int row = 1; row <= table.Size(); ++row) m_order.push_back(table.Row(row).id);
    m_lastId = table.LastId();
}

void CUndoRows::RowsInserted(const CRowTable& table, int firstRow, int count) {
    for (int row = firstRow; row < firstRow + count; ++row) m_came.push_back(table.Row(row).id);
}

void CUndoRows::RowsRemoved(const std::vector<SPlacedRow>& rows) {
    m_went.insert(m_went.end(), rows.begin(), rows.end());
}

void CUndoRows::Close(const CRowTable& table) {
    const std::vector<int> rowOf = table.RowsOfIds();
    std::unordered_map<uint32_t, SRow*> went;
    if (m_moved) {
        CloseMoves(rowOf);
        for (SPlacedRow& row : m_went) went.emplace(row.row.id, &row.row);
    }
    std::vector<bool> came(rowOf.size());
    for (const uint32_t id : m_came) came[id] = true;
    std::erase_if(m_changed, [&](SChanged& changed) {
        const uint32_t id = changed.other.id;
        if (const auto gone = went.find(id); gone != went.end()) *gone->second = std::move(changed.other);
        if (!IsThere(rowOf, id) || came[id]) return true;
        const SRow& now = table.Row(RowOf(rowOf, id));
        changed.parts = DifferentParts(changed.other, now);
        changed.isSaved = changed.parts != kContentPart || !HasSameSavedContent(changed.other, now);
        changed.other = PartsOf(changed.other, changed.parts);
        return changed.parts == 0;
    });
    m_changed.shrink_to_fit();
    m_seen = {};
    m_moved = false;
}

// Which rows went for good, which came to stay, and whether the others have another order.
void CUndoRows::CloseMoves(const std::vector<int>& rowOf) {
    std::vector<bool> came(rowOf.size());
    for (const uint32_t id : m_came) came[id] = true;
    for (uint32_t id = m_lastId + 1; id < rowOf.size(); ++id) // Blank ones below the last, as far as anyone could see.
        if (!came[id]) m_order.push_back(id);
    std::vector<int> placeOf(rowOf.size(), 0);
    for (size_t i = 0; i < m_order.size(); ++i) placeOf[m_order[i]] = static_cast<int>(i) + 1;
    for (SPlacedRow& row : m_went) row.place = placeOf[row.row.id];
    std::erase_if(m_went, [](const SPlacedRow& row) { return row.place == 0; });
    std::ranges::sort(m_went, {}, &SPlacedRow::place);
    std::erase_if(m_came, [&](uint32_t id) { return !IsThere(rowOf, id) || placeOf[id] != 0; });
    std::erase_if(m_order, [&](uint32_t id) { return !IsThere(rowOf, id); });
    size_t first = 0;
    size_t last = m_order.size();
    std::vector<uint32_t> now = m_order;
    std::ranges::sort(now, {}, [&](uint32_t id) { return rowOf[id]; });
    while (first < last && now[first] == m_order[first]) ++first;
    while (last > first && now[last - 1] == m_order[last - 1]) --last;
    m_order = {m_order.begin() + static_cast<std::ptrdiff_t>(first),
               m_order.begin() + static_cast<std::ptrdiff_t>(last)};
}

bool CUndoRows::IsEdit() const {
    return !m_came.empty() || !m_went.empty() || !m_order.empty() || std::ranges::any_of(m_changed, &SChanged::isSaved);
}

size_t CUndoRows::Bytes() const {
    size_t sum = m_changed.capacity() * sizeof(SChanged) + m_went.capacity() * sizeof(SPlacedRow) +
                 (m_came.capacity() + m_order.capacity()) * sizeof(uint32_t);
    for (const SChanged& changed : m_changed) sum += BytesOf(changed.other);
    for (const SPlacedRow& row : m_went) sum += BytesOf(row.row);
    return sum;
}

// Undoing and redoing

void CUndoRows::Exchange(CUndoHost& host, STouched& touched) {
    if (!m_came.empty() || !m_went.empty() || !m_order.empty()) ExchangeRows(host, touched);
    if (!m_changed.empty()) ExchangeContent(host, touched);
}

// What would push rows in use out of the table does not come back.
void CUndoRows::ExchangeRows(CUndoHost& host, STouched& touched) {
    CRowTable& table = host.Rows();
    std::vector<int> leaving;
    const std::vector<int> rowOf = table.RowsOfIds();
    for (const uint32_t id : m_came)
        if (IsThere(rowOf, id)) leaving.push_back(RowOf(rowOf, id));
    std::ranges::sort(leaving);
    const int last = std::max({table.LastSymbolRow(), table.LastTextRow(&SRowExtras::annotation)});
    if (last - static_cast<int>(leaving.size()) + static_cast<int>(m_went.size()) > CRowTable::kMaxRow) return;
    std::vector<SPlacedRow> gone;
    if (!leaving.empty()) {
        std::vector<std::string> symbols;
        gone = table.RemoveRows(leaving, symbols);
        host.SymbolsGone(symbols);
        touched.gap = leaving.front();
    }
    if (!m_order.empty()) ExchangeOrder(host);
    m_came.clear();
    for (const SPlacedRow& row : m_went) m_came.push_back(row.row.id);
    touched.rowIds.insert(touched.rowIds.end(), m_came.begin(), m_came.end());
    host.SymbolsCame(table.PutRows(std::exchange(m_went, std::move(gone))));
}

// The rows change places among themselves.
void CUndoRows::ExchangeOrder(CUndoHost& host) {
    const std::vector<int> rowOf = host.Rows().RowsOfIds();
    std::erase_if(m_order, [&](uint32_t id) { return !IsThere(rowOf, id); });
    if (m_order.empty()) return;
    std::vector<uint32_t> present = m_order;
    std::ranges::sort(present, {}, [&](uint32_t id) { return rowOf[id]; });
    std::vector<int> newRowOf(static_cast<size_t>(rowOf[present.back()]) + 1);
    std::iota(newRowOf.begin(), newRowOf.end(), 0);
    for (size_t i = 0; i < m_order.size(); ++i) newRowOf[static_cast<size_t>(rowOf[m_order[i]])] = rowOf[present[i]];
    m_order = std::move(present);
    host.MoveRows(newRowOf);
}

void CUndoRows::ExchangeContent(CUndoHost& host, STouched& touched) {
    const CRowTable& table = host.Rows();
    const std::vector<int> rowOf = table.RowsOfIds();
    for (SChanged& changed : m_changed) {
        const uint32_t id = changed.other.id;
        if (!IsThere(rowOf, id)) continue;
        const int row = RowOf(rowOf, id);
        SRow present = PartsOf(table.Row(row), changed.parts);
        if (changed.parts & kFormatPart) TouchFormats(changed.other, present, touched);
        present.hidden = !changed.other.hidden; // Whatever was shown meanwhile because the user was led there.
        host.PutRow(row, changed.other, changed.parts);
        // A row that is hidden again cannot be selected.
        if (row != 0 && (changed.parts != kHiddenPart || !changed.other.hidden)) touched.rowIds.push_back(id);
        changed.other = std::move(present);
    }
}

} // namespace vx
