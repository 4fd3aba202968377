// SPDX-License-Identifier: MIT
#include "watchlist/edit/SortRows.h"

#include "base/Number.h"
#include "base/Text.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

namespace {

constexpr size_t kAhead = 8; ///< Rows for which memory is asked for before it is read.

std::string_view Text(const CellBuffer& cell, size_t size) { return {cell.data(), size}; }

// The records of rows: they are found sooner when nothing else is done in between.
std::vector<const CSymbolRec*> Records(const CColumnReader& column, std::span<const int> rows) {
    std::vector<const CSymbolRec*> records(rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i + 2 * kAhead < rows.size()) column.ExpectLookup(rows[i + 2 * kAhead]);
        if (i + kAhead < rows.size()) column.ExpectRecord(rows[i + kAhead]);
        records[i] = column.FindRecord(rows[i]);
    }
    return records;
}

} // namespace

CRowSort::CRowSort(const CWatchlistDoc& doc, int firstRow, int lastRow, int column, bool ascending)
    : m_doc(doc), m_column(doc, column), m_ascending(ascending), m_revision(doc.Revision()) {
    const bool blocks = !doc.Options().sortAcrossHeadings;
    lastRow = std::min(lastRow, doc.LastUsedRow());
    for (int row = std::max(firstRow, 1); row <= lastRow; ++row) {
        if (!doc.RowSymbol(row).empty())
            m_rows.push_back(row);
        else if (blocks && IsHeading(doc, row))
            m_blockEnds.push_back(m_rows.size());
    }
    m_blockEnds.push_back(m_rows.size());
    if (m_column.IsNumber())
        m_numbers.resize(m_rows.size());
    else
        m_textEnds.resize(m_rows.size());
}

bool CRowSort::Read(size_t count) {
    const size_t end = m_read + std::min(count, m_rows.size() - m_read);
    if (m_column.IsNumber())
        ReadNumbers(end);
    else
        ReadTexts(end);
    m_read = end;
    return m_read == m_rows.size();
}

void CRowSort::ReadNumbers(size_t end) {
    const auto rows = std::span(m_rows).subspan(m_read, end - m_read);
    const std::vector<const CSymbolRec*> records = Records(m_column, rows);
    CellBuffer cell;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i + 2 * kAhead < rows.size()) __builtin_prefetch(records[i + 2 * kAhead]);
        if (i + kAhead < rows.size()) m_column.ExpectNumber(records[i + kAhead]);
        const std::optional<double> number = m_column.ReadNumber(rows[i], records[i]);
        m_numbers[m_read + i] = number ? *number : SortNumber(Text(cell, m_column.Read(rows[i], records[i], cell)));
    }
}

void CRowSort::ReadTexts(size_t end) {
    const auto rows = std::span(m_rows).subspan(m_read, end - m_read);
    const std::vector<const CSymbolRec*> records = Records(m_column, rows);
    CellBuffer cell;
    for (size_t i = 0; i < rows.size(); ++i) {
        m_texts += Text(cell, m_column.Read(rows[i], records[i], cell));
        m_textEnds[m_read + i] = m_texts.size();
    }
}

bool CRowSort::IsCurrent() const { return m_doc.Revision() == m_revision; }

std::vector<uint32_t> CRowSort::Order() const {
    if (m_column.IsNumber()) return OrderByNumber(m_numbers, m_ascending, m_blockEnds);
    std::vector<std::string_view> keys(m_rows.size());
    for (size_t i = 0, begin = 0; i < keys.size(); begin = m_textEnds[i++])
        keys[i] = std::string_view(m_texts).substr(begin, m_textEnds[i] - begin);
    return OrderByText(keys, m_ascending, m_blockEnds);
}

void CRowSort::Apply(CWatchlistEdit& edit) const {
    const std::vector<uint32_t> order = Order();
    std::vector<int> sorted(m_rows.size());
    std::transform(order.begin(), order.end(), sorted.begin(), [this](uint32_t index) { return m_rows[index]; });
    edit.ReorderRows(OrderOfRows(m_rows, sorted));
}

void SortRows(const CWatchlistDoc& doc, CWatchlistEdit& edit, int firstRow, int lastRow, int column, bool ascending) {
    CRowSort sort(doc, firstRow, lastRow, column, ascending);
    sort.Read(CRowTable::kMaxRow);
    sort.Apply(edit);
}

namespace {

// The first bytes of a folded key in one integer that orders as the bytes do, shorter keys first.
uint64_t Prefix(std::string_view folded) {
    uint64_t out = 0;
    for (size_t i = 0; i < 8; ++i) out = out << 8 | (i < folded.size() ? static_cast<unsigned char>(folded[i]) : 0u);
    return out;
}

struct STextKey {
    uint64_t prefix;
    uint32_t index;
};

struct SNumberKey {
    uint64_t rank; ///< Orders as the numbers do; zeros are equal.
    uint32_t index;
};

uint64_t RankOf(double number, bool ascending) {
    constexpr uint64_t kSign = uint64_t{1} << 63;
    uint64_t bits = kSign; // Zero, and what is no number.
    if (number != 0.0 && !std::isnan(number)) {
        bits = std::bit_cast<uint64_t>(number);
        bits = (bits & kSign) != 0 ? ~bits : bits | kSign;
    }
    return ascending ? bits : ~bits;
}

constexpr size_t kFewKeys = 1000; ///< Up to here comparing is faster than counting.

// By rank, equal ones in their order.
void SortByRank(std::span<SNumberKey> keys, std::vector<SNumberKey>& spare) {
    if (keys.size() <= kFewKeys) {
        std::stable_sort(keys.begin(), keys.end(),
                         [](const SNumberKey& a, const SNumberKey& b) { return a.rank < b.rank; });
        return;
    }
    constexpr int kBits = 11;
    constexpr size_t kDigits = size_t{1} << kBits;
    spare.resize(keys.size());
    std::span<SNumberKey> from = keys, to = spare;
    for (int shift = 0; shift < 64; shift += kBits) {
        const auto digit = [shift](const SNumberKey& key) { return key.rank >> shift & (kDigits - 1); };
        std::array<uint32_t, kDigits> places{};
        for (const SNumberKey& key : from) ++places[digit(key)];
        if (places[digit(from.front())] == from.size()) continue; // All have the same: most bits of many lists.
        uint32_t before = 0;
        for (uint32_t& place : places) before += std::exchange(place, before);
        for (const SNumberKey& key : from) to[places[digit(key)]++] = key;
        std::swap(from, to);
    }
    if (from.data() != keys.data()) std::ranges::copy(from, keys.begin());
}

template <typename Key, typename Sort>
std::vector<uint32_t> SortedIndices(std::vector<Key>& keys, std::span<const size_t> blockEnds, Sort sort) {
    const size_t all = keys.size();
    size_t begin = 0;
    for (const size_t end : blockEnds.empty() ? std::span(&all, 1) : blockEnds) {
        sort(std::span(keys).subspan(begin, end - begin));
        begin = end;
    }
    std::vector<uint32_t> out(keys.size());
    std::transform(keys.begin(), keys.end(), out.begin(), [](const Key& key) { return key.index; });
    return out;
}

} // namespace

std::vector<uint32_t> OrderByText(const std::vector<std::string_view>& keys, bool ascending,
                                  std::span<const size_t> blockEnds) {
    std::string folded; // All folded keys one after the other: one allocation, and neighbours in memory.
    std::vector<uint32_t> starts(keys.size() + 1);
    for (size_t i = 0; i < keys.size(); ++i) {
        folded += LowerAscii(keys[i]);
        starts[i + 1] = static_cast<uint32_t>(folded.size());
    }
    const auto foldedKey = [&](uint32_t i) {
        return std::string_view(folded).substr(starts[i], starts[i + 1] - starts[i]);
    };
    std::vector<STextKey> order(keys.size());
    for (uint32_t i = 0; i < order.size(); ++i) order[i] = {Prefix(foldedKey(i)), i};
    const auto before = [&](const STextKey& a, const STextKey& b) {
        if (a.prefix != b.prefix) return (a.prefix < b.prefix) == ascending;
        if (const int folds = foldedKey(a.index).compare(foldedKey(b.index)); folds != 0)
            return (folds < 0) == ascending;
        if (const int exact = keys[a.index].compare(keys[b.index]); exact != 0) return (exact < 0) == ascending;
        return a.index > b.index;
    };
    return SortedIndices(order, blockEnds, [&](std::span<STextKey> block) { std::ranges::sort(block, before); });
}

std::vector<uint32_t> OrderByNumber(const std::vector<double>& keys, bool ascending,
                                    std::span<const size_t> blockEnds) {
    std::vector<SNumberKey> order(keys.size());
    for (uint32_t i = 0; i < order.size(); ++i) order[i] = {RankOf(keys[i], ascending), i};
    std::vector<SNumberKey> spare;
    return SortedIndices(order, blockEnds, [&](std::span<SNumberKey> block) {
        SortByRank(block, spare);
        const uint64_t zero = RankOf(0, ascending);
        std::reverse(std::ranges::lower_bound(block, zero, {}, &SNumberKey::rank),
                     std::ranges::upper_bound(block, zero, {}, &SNumberKey::rank));
    });
}

double SortNumber(std::string_view text) {
    const double number = ReadDouble(text);
    return std::isnan(number) ? 0.0 : number;
}

bool IsHeading(const CWatchlistDoc& doc, int row) {
    return doc.Annotations().Has(row) && doc.RejectedSymbol(row).empty();
}

SRowGroup GroupOf(const CWatchlistDoc& doc, int row) {
    const int last = std::max(doc.LastUsedRow(), doc.Notes().LastRow());
    if (row < 1 || row > last) return {};
    SRowGroup out{row, row, row};
    while (out.first > 1 && !IsHeading(doc, out.first)) --out.first;
    while (out.last < last && !IsHeading(doc, out.last + 1)) ++out.last;
    out.lastFilled = out.last;
    while (out.lastFilled > out.first && doc.RowKind(out.lastFilled) == ERowKind::Empty &&
           !doc.Notes().Has(out.lastFilled))
        --out.lastFilled;
    return out;
}

int SwapGroups(CWatchlistDoc& doc, const SRowGroup& upper, const SRowGroup& lower) {
    const int moved = lower.lastFilled - lower.first + 1;
    const int between = upper.last - upper.lastFilled;
    doc.Edit("move group", [&](CWatchlistEdit&) {
        doc.MoveRows(lower.first, moved, upper.first);
        if (between > 0) doc.MoveRows(upper.lastFilled + 1 + moved, between, upper.first + moved);
    });
    return moved + between;
}

} // namespace vx
