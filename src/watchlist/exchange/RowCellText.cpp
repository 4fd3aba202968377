// SPDX-License-Identifier: MIT
#include "watchlist/exchange/RowCellText.h"

#include "alerts/rules/AlertInfo.h"
#include "data/store/L1DataStore.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace vx {

namespace {

size_t Copy(std::string_view text, std::span<char, kMostCellText> out) {
    const size_t size = std::min(text.size(), out.size());
    std::copy_n(text.begin(), size, out.begin());
    return size;
}

size_t WriteAlerts(const SAlertTally& tally, std::span<char, kMostCellText> out) {
    const int others = tally.quiet + tally.dead;
    if (tally.armed + others == 0) return 0;
    char* end = std::to_chars(out.data(), out.data() + out.size(), tally.armed).ptr;
    if (others > 0) {
        *end++ = '/';
        end = std::to_chars(end, out.data() + out.size(), others).ptr;
    }
    return static_cast<size_t>(end - out.data());
}

} // namespace

int HeadingColumn(const CColumnMap& columns) { return std::max(1, columns.PositionOf(kSymbolColumn)); }

SAlertTally TallyAlerts(const CWatchlistDoc& doc, std::string_view symbol) {
    SAlertTally tally;
    for (const A_INFO& alert : doc.Alerts().Get(symbol))
        ++(!CanFire(alert) ? tally.dead : alert.enabled != 0 ? tally.armed : tally.quiet);
    return tally;
}

CColumnReader::CColumnReader(const CWatchlistDoc& doc, int column) : m_doc(doc), m_column(column) {
    if (column < 1 || column >= doc.Columns().Count()) return;
    const sColumnInfo& info = doc.Columns().At(column);
    m_entry = info.Entry();
    if (!m_entry) return;
    if (info.name == kSymbolColumn)
        m_kind = EKind::Symbol;
    else if (info.name == kAlertsColumn)
        m_kind = EKind::Alerts;
    else if (info.name == kNotesColumn)
        m_kind = EKind::Notes;
    else if (info.name == kNewsColumn)
        m_kind = EKind::News;
    else if (info.name == kHeadlineColumn)
        m_kind = EKind::Headline;
    else
        m_kind = EKind::Field;
}

bool CColumnReader::IsNumber() const {
    return m_kind == EKind::News || (m_kind == EKind::Field && IsNumberClass(m_entry->valueClass));
}

const CSymbolRec* CColumnReader::FindRecord(int row) const {
    return m_kind == EKind::Field ? m_doc.Store().Find(m_doc.RowSymbol(row)) : nullptr;
}

void CColumnReader::ExpectLookup(int row) const {
    if (m_kind == EKind::Field) m_doc.Store().ExpectLookup(m_doc.RowSymbol(row));
}

void CColumnReader::ExpectRecord(int row) const {
    if (m_kind == EKind::Field) m_doc.Store().ExpectRecord(m_doc.RowSymbol(row));
}

void CColumnReader::ExpectNumber(const CSymbolRec* record) const {
    if (m_kind == EKind::Field && record) PrefetchCell(*record, *m_entry);
}

size_t CColumnReader::Read(int row, const CSymbolRec* record, std::span<char, kMostCellText> out) const {
    if (m_kind != EKind::Field) return ReadOwn(row, m_doc.RowSymbol(row), out);
    return record ? CellText(*record, *m_entry, Decimals(row, *record), out) : 0;
}

std::optional<double> CColumnReader::ReadNumber(int row, const CSymbolRec* record) const {
    if (m_kind != EKind::Field) return std::nullopt;
    return record ? CellTextNumber(*record, *m_entry, Decimals(row, *record)) : 0;
}

int CColumnReader::Decimals(int row, const CSymbolRec& record) const {
    const bool everyCell = m_doc.Options().useGridPrecision;
    return DecimalsToShow(record, *m_entry, m_doc.Formats().Decimals(row, m_column, everyCell), everyCell);
}

size_t CColumnReader::ReadOwn(int row, std::string_view symbol, std::span<char, kMostCellText> out) const {
    if (symbol.empty() && m_kind != EKind::Notes) return 0;
    switch (m_kind) {
    case EKind::Symbol: {
        const std::string_view shown = m_doc.ShownText(row);
        return Copy(shown.empty() ? symbol : shown, out);
    }
    case EKind::Alerts:
        return WriteAlerts(TallyAlerts(m_doc, symbol), out);
    case EKind::Notes: {
        const std::string_view note = m_doc.Notes().Get(row);
        return Copy(note.substr(0, note.find_first_of("\r\n")), out);
    }
    case EKind::News:
        return Copy(m_doc.News().CountText(symbol), out);
    case EKind::Headline:
        return Copy(m_doc.News().HeadlineText(symbol), out);
    default:
        return 0;
    }
}

namespace {

struct SNamedColumn {
    std::string_view name;
    int SSpecialColumns::*index;
};

constexpr std::array kSpecial = {SNamedColumn{kSymbolColumn, &SSpecialColumns::symbol},
                                 SNamedColumn{kAlertsColumn, &SSpecialColumns::alerts},
                                 SNamedColumn{kNotesColumn, &SSpecialColumns::notes},
                                 SNamedColumn{"Tick Trend", &SSpecialColumns::tickTrend},
                                 SNamedColumn{"Bid Tick", &SSpecialColumns::bidTick},
                                 SNamedColumn{"Exchange", &SSpecialColumns::exchange},
                                 SNamedColumn{kNewsColumn, &SSpecialColumns::news},
                                 SNamedColumn{kHeadlineColumn, &SSpecialColumns::latestHeadline},
                                 SNamedColumn{"Last", &SSpecialColumns::last},
                                 SNamedColumn{"Ask", &SSpecialColumns::ask},
                                 SNamedColumn{"Bid", &SSpecialColumns::bid}};

} // namespace

SSpecialColumns FindSpecialColumns(std::span<const SFieldEntry> catalogue) {
    SSpecialColumns out;
    for (size_t entry = catalogue.size(); entry-- > 1;) {
        for (const SNamedColumn& special : kSpecial) {
            int& index = out.*special.index;
            if (index == SSpecialColumns::kNoColumn && catalogue[entry].name == special.name)
                index = static_cast<int>(entry);
        }
    }
    return out;
}

} // namespace vx
