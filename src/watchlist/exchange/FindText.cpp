// SPDX-License-Identifier: MIT
#include "watchlist/exchange/FindText.h"

#include "base/Text.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/ShownCells.h"

#include <algorithm>
#include <array>

namespace vx {

namespace {

using FoldTable = std::array<char, 256>;

// Windows-1252: letters with accents stand 0x20 apart as ASCII ones do, but for a few.
constexpr FoldTable MakeFoldTable(bool keepCase) {
    FoldTable table{};
    for (unsigned i = 0; i < table.size(); ++i) {
        const bool upper = (i >= 'A' && i <= 'Z') || (i >= 0xC0 && i <= 0xDE && i != 0xD7);
        const bool farUpper = i == 0x8A || i == 0x8C || i == 0x8E;
        unsigned folded = upper ? i + 0x20 : farUpper ? i + 0x10 : i == 0x9F ? 0xFF : i;
        if (keepCase) folded = i;
        table[i] = static_cast<char>(folded);
    }
    return table;
}

constexpr FoldTable kAsWritten = MakeFoldTable(true);
constexpr FoldTable kLowerCase = MakeFoldTable(false);

class CFinder {
public:
    CFinder(const CWatchlistDoc& doc, std::string_view text, const SFindOptions& options)
        : m_doc(doc), m_cells(doc), m_fold(options.matchCase ? kAsWritten : kLowerCase), m_wholeCell(options.wholeCell),
          m_lastRow(std::max(doc.LastUsedRow(), doc.Notes().LastRow())) {
        m_text = Folded(text);
        const auto& columns = m_cells.Columns();
        const auto notes = std::find(columns.begin(), columns.end(), doc.Columns().PositionOf(kNotesColumn));
        if (notes != columns.end()) m_notes = static_cast<size_t>(notes - columns.begin());
    }

    SFoundCell Next(int row, int column) {
        if (m_text.empty() || m_cells.Columns().empty() || m_lastRow == 0) return {};
        if (row < 1 || row > m_lastRow) row = column = 0;
        for (int at = std::max(row, 1); at <= m_lastRow; ++at)
            if (SFoundCell found = First(at, at == row ? column : 0); found.row != 0) return found;
        for (int at = 1; at <= row; ++at)
            if (SFoundCell found = First(at, 0); found.row != 0) return Wrapped(found);
        return {};
    }

    SFoundCell Previous(int row, int column) {
        if (m_text.empty() || m_cells.Columns().empty() || m_lastRow == 0) return {};
        if (row < 1 || row > m_lastRow) {
            row = m_lastRow + 1;
            column = 0;
        }
        for (int at = std::min(row, m_lastRow); at >= 1; --at)
            if (SFoundCell found = Last(at, at == row ? column : kBehindAll); found.row != 0) return found;
        for (int at = m_lastRow; at >= row; --at)
            if (SFoundCell found = Last(at, kBehindAll); found.row != 0) return Wrapped(found);
        return {};
    }

private:
    static constexpr int kBehindAll = CColumnMap::kMostColumns + 1;

    static SFoundCell Wrapped(SFoundCell found) {
        found.wrapped = true;
        return found;
    }

    std::string Folded(std::string_view text) const {
        std::string out(text.size(), '\0');
        Fold(text, out.data());
        return out;
    }
    void Fold(std::string_view text, char* out) const {
        std::transform(text.begin(), text.end(), out, [&](char c) { return m_fold[static_cast<unsigned char>(c)]; });
    }

    bool Matches(std::string_view text) {
        if (text.size() < m_text.size() || (m_wholeCell && text.size() != m_text.size())) return false;
        if (m_folded.size() < text.size()) m_folded.resize(text.size());
        Fold(text, m_folded.data());
        return std::string_view(m_folded.data(), text.size()).find(m_text) != std::string_view::npos;
    }

    // Calls visit(column, inNote) for each match of a row from the left, until it returns false.
    template <typename Visit> void ForEachMatch(int row, Visit&& visit) {
        const auto& columns = m_cells.Columns();
        const bool noteMatches = m_doc.Notes().Has(row) && Matches(m_doc.Notes().Get(row));
        bool goOn = !noteMatches || m_notes != 0 || visit(columns[0], true);
        m_cells.ForEach(row, [&](size_t i, std::string_view text) {
            const bool note = i == m_notes && noteMatches;
            if (goOn && (Matches(text) || note)) goOn = visit(columns[i], note);
            return goOn;
        });
        if (goOn && noteMatches && m_notes != 0 && m_doc.RowKind(row) == ERowKind::Annotation)
            visit(columns[m_notes], true);
    }

    SFoundCell First(int row, int behind) {
        SFoundCell found;
        ForEachMatch(row, [&](int column, bool inNote) {
            if (column > behind) found = {row, column, false, inNote};
            return found.row == 0;
        });
        return found;
    }

    SFoundCell Last(int row, int before) {
        SFoundCell found;
        ForEachMatch(row, [&](int column, bool inNote) {
            if (column < before) found = {row, column, false, inNote};
            return column < before;
        });
        return found;
    }

    const CWatchlistDoc& m_doc;
    const CShownCells m_cells;
    const FoldTable& m_fold;
    bool m_wholeCell;
    int m_lastRow;
    size_t m_notes = 0; ///< Among the shown columns.
    std::string m_text;
    std::string m_folded; ///< The text that is compared; kept for its memory.
};

enum class ELikeness { Same, OtherCase, Beginning, None };

ELikeness Likeness(std::string_view symbol, std::string_view text) {
    if (symbol == text) return ELikeness::Same;
    if (CompareNoCase(symbol.substr(0, text.size()), text) != 0) return ELikeness::None;
    return symbol.size() == text.size() ? ELikeness::OtherCase : ELikeness::Beginning;
}

} // namespace

SFoundCell FindNext(const CWatchlistDoc& doc, std::string_view text, const SFindOptions& options, int row, int column) {
    return CFinder(doc, text, options).Next(row, column);
}

SFoundCell FindPrevious(const CWatchlistDoc& doc, std::string_view text, const SFindOptions& options, int row,
                        int column) {
    return CFinder(doc, text, options).Previous(row, column);
}

int GoToSymbol(const CWatchlistDoc& doc, std::string_view text) {
    text = TrimBlanks(text);
    if (text.empty()) return 0;
    std::pair<ELikeness, uint32_t> best{ELikeness::None, 0};
    const auto look = [&](std::string_view symbol, const CRowList& rows) {
        if (const ELikeness likeness = Likeness(symbol, text); likeness != ELikeness::None && !rows.empty())
            best = std::min(best, {likeness, rows.front()});
    };
    doc.Symbols().ForEach([&](const SYMBOL_DATA& data) { look(data.symbol, data.rows); });
    for (const auto& [symbol, rows] : doc.InvalidSymbols()) look(symbol, rows);
    return static_cast<int>(best.second);
}

} // namespace vx
