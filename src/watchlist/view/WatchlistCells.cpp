// SPDX-License-Identifier: MIT
#include "watchlist/view/WatchlistCells.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertTexts.h"
#include "data/catalogue/Catalogue.h"
#include "data/text/CellText.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/RowCellText.h"
#include "watchlist/view/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <span>

namespace vx {

namespace {

constexpr std::string_view kNoteSign = "\xB6 "; // A paragraph sign before the first line of a note.

EAlign AlignOf(ECellAlign align) {
    switch (align) {
    case ECellAlign::Center:
        return EAlign::Center;
    case ECellAlign::Right:
        return EAlign::Right;
    default:
        return EAlign::Left;
    }
}

ETextRole RoleOf(EDirection direction) {
    switch (direction) {
    case EDirection::Down:
        return ETextRole::Down;
    case EDirection::Up:
        return ETextRole::Up;
    default:
        return ETextRole::Unchanged;
    }
}

void ShowDirection(EDirectionLook look, const SCellFormat& format, EDirection direction, SCell& cell) {
    if (look == EDirectionLook::None) return;
    if (look == EDirectionLook::Colour) return TakeDirectionColour(format, direction, cell);
    cell.direction = RoleOf(direction);
    cell.directionMark = look == EDirectionLook::Arrow ? EDirectionMark::Arrow : EDirectionMark::Background;
    if (look == EDirectionLook::Arrow || cell.direction == ETextRole::Unchanged) return;
    SCell own;
    TakeDirectionColour(format, direction, own);
    if (own.role != ETextRole::Explicit) return;
    cell.background = own.textColor; // A colour that the user chose for the direction.
    cell.directionMark = EDirectionMark::None;
}

void PutSign(std::string_view sign, SCell& cell) {
    const size_t kept = std::min<size_t>(cell.length, SCell::kMaxLength - sign.size());
    std::memmove(cell.text + sign.size(), cell.text, kept);
    std::memcpy(cell.text, sign.data(), sign.size());
    cell.length = static_cast<uint16_t>(kept + sign.size());
}

} // namespace

CWatchlistCells::CWatchlistCells(const CWatchlistDoc& doc, const CGridGeometry& geometry)
    : m_doc(doc), m_geometry(geometry), m_special(FindSpecialColumns(Catalogue())), m_shapes(doc, geometry) {
    m_fonts.Forget();
    ColumnsChanged();
}

CWatchlistCells::EKind CWatchlistCells::KindOf(const sColumnInfo& info, const CColumnReader& reader) const {
    if (info.number == m_special.symbol) return EKind::Symbol;
    if (info.number == m_special.notes) return EKind::Notes;
    if (info.number == m_special.news) return EKind::News;
    if (info.number == m_special.tickTrend || info.number == m_special.bidTick) return EKind::Ticks;
    return reader.IsNumber() ? EKind::Directed : EKind::Plain;
}

void CWatchlistCells::ColumnsChanged() {
    m_columns.clear();
    m_headingColumn = HeadingColumn(m_doc.Columns());
    const auto& columns = m_doc.Columns().Columns();
    for (size_t position = 0; position < columns.size(); ++position) {
        const sColumnInfo& info = columns[position];
        const CColumnReader reader(m_doc, static_cast<int>(position));
        m_columns.push_back({reader, info.Entry(), info.number, KindOf(info, reader), info.look});
    }
    m_painted.SetColumnCount(m_columns.size());
    m_shapes.ColumnsChanged();
}

const CWatchlistCells::SColumn* CWatchlistCells::Column(int column) const {
    return column >= 1 && static_cast<size_t>(column) < m_columns.size() ? &m_columns[static_cast<size_t>(column)]
                                                                         : nullptr;
}

bool CWatchlistCells::DiffersFromPainted(int row, int column) const {
    SCell cell;
    Fill(row, column, cell);
    return !m_painted.Matches(row, m_geometry.ShownIndexOf(row), column, cell);
}

void CWatchlistCells::FillCell(int row, int column, SCell& cell) const {
    Fill(row, column, cell);
    if (IsPaintedWhole(row, column)) m_painted.Note(row, m_geometry.ShownIndexOf(row), column, cell);
}

uint8_t CWatchlistCells::Marks(int row, std::string_view symbol) const {
    uint8_t marks = m_doc.Notes().Has(row) ? kNoteMark : 0;
    if (symbol.empty()) return marks;
    const SAlertTally tally = TallyAlerts(m_doc, symbol);
    if (tally.armed > 0) marks |= kArmedMark;
    if (tally.quiet > 0) marks |= kFiredMark;
    return marks;
}

bool CWatchlistCells::IsPaintedWhole(int row, int column) const {
    if (m_region == nullptr) return false;
    const QRect cell = m_geometry.VisibleCellRect(row, column);
    return std::any_of(m_region->begin(), m_region->end(), [&](const QRect& rect) { return rect.contains(cell); });
}

void CWatchlistCells::Fill(int row, int column, SCell& cell) const {
    const SColumn* info = Column(column);
    if (!info) return;
    const SCellFormat& format = m_doc.Formats().Effective(row, column);
    Dress(format, info->kind == EKind::Symbol, cell);
    if (format.borderStyle != 0) cell.borders = m_shapes.Borders(row, column, format);
    const std::string_view symbol = m_doc.RowSymbol(row);
    if (info->kind == EKind::Symbol) cell.marks = Marks(row, symbol);
    if (!info->entry || (symbol.empty() && info->kind != EKind::Notes)) return;

    const CSymbolRec* record = info->reader.FindRecord(row);
    const size_t length = info->reader.Read(row, record, std::span<char, kMostCellText>(cell.text, kMostCellText));
    cell.length = static_cast<uint16_t>(length);
    if (info->kind == EKind::Notes && m_doc.Notes().Has(row)) PutSign(kNoteSign, cell);
    cell.align = Align(*info, format);
    cell.tickTrend = info->kind == EKind::Ticks;
    cell.steady = !info->look.flash;
    if (info->kind == EKind::Directed)
        cell.length = static_cast<uint16_t>(
            DrawNumber(info->look, std::span<char, kMostCellText>(cell.text, kMostCellText), length));
    Colour(*info, format, symbol, record, cell);
    if (format.cellKind == 0 || !record) return;
    cell.shape = m_shapes.Shape(column, *info->entry, format, *record);
    if (m_stale) cell.shape.role = ETextRole::Stale;
}

EAlign CWatchlistCells::Align(const SColumn& column, const SCellFormat& format) const {
    if (!m_doc.Options().useDefaultAlignment) return AlignOf(format.alignment);
    return column.reader.IsNumber() ? EAlign::Right : EAlign::Left;
}

void CWatchlistCells::Dress(const SCellFormat& format, bool strong, SCell& cell) const {
    cell.font = m_fonts.Find(format, strong);
    cell.background = format.backColour;
    TakeColour(format.textColour, SCellFormat::kAutomatic, ETextRole::Normal, cell);
}

void CWatchlistCells::Colour(const SColumn& column, const SCellFormat& format, std::string_view symbol,
                             const CSymbolRec* record, SCell& cell) const {
    if (m_stale && record) {
        cell.role = ETextRole::Stale;
    } else if (column.kind == EKind::News && m_doc.News().CountStyle(symbol) == ENewsStyle::Fresh) {
        cell.font = m_fonts.Find(format, true);
        TakeColour(format.textColour, SCellFormat::kAutomatic, ETextRole::Up, cell);
    } else if (column.kind == EKind::Directed && record && format.colourByDirection) {
        ShowDirection(column.look.direction, format, ColourDirection(*record, *column.entry, format.colourRule), cell);
    }
}

void CWatchlistCells::FillHeader(int column, SCell& cell) const {
    const auto& columns = m_doc.Columns().Columns();
    if (column < 1 || static_cast<size_t>(column) >= columns.size()) return;
    cell.SetText(columns[static_cast<size_t>(column)].name);
    if (const SColumn* info = Column(column)) cell.align = Align(*info, m_doc.Formats().ColumnFormat(column));
}

bool CWatchlistCells::FillSpan(int row, SCell& cell) const {
    if (m_doc.RowKind(row) != ERowKind::Annotation) return false;
    const SCellFormat& format = m_doc.Formats().Effective(row, m_headingColumn);
    Dress(format, true, cell);
    if (!m_doc.Options().useDefaultAlignment) cell.align = AlignOf(format.alignment);
    cell.borders = CCellShapes::HeadingBorders(format);
    cell.SetText(m_doc.AnnotationText(row));
    if (m_doc.Notes().Has(row)) PutSign(kNoteSign, cell);
    return true;
}

bool CWatchlistCells::FillRowHint(int row, SCell& cell) const {
    const std::string_view hint = m_doc.RowHint(row);
    if (m_region != nullptr) m_painted.NoteHint(m_geometry.ShownIndexOf(row), !hint.empty());
    if (hint.empty()) return false;
    cell.SetText(hint);
    cell.role = ETextRole::Stale;
    return true;
}

bool CWatchlistCells::MayChangeHint(int row) const {
    return m_painted.HasHint(m_geometry.ShownIndexOf(row)) || !m_doc.RowHint(row).empty();
}

std::string CWatchlistCells::HeaderTip(int column) const {
    const SColumn* info = Column(column);
    return info ? ColumnTip(m_doc.Columns().At(column).name, info->entry) : std::string();
}

std::string CWatchlistCells::CellTip(int row, int column) const {
    const std::string own = OwnTip(row, column);
    return own.empty() ? std::string(m_doc.RowHint(row)) : own;
}

std::string CWatchlistCells::WholeNumber(const SColumn& column, int row) const {
    CellBuffer drawn;
    size_t length = column.reader.Read(row, drawn);
    const std::string whole(drawn.data(), length);
    length = DrawNumber({.shortForms = true}, drawn, length);
    return std::string_view(drawn.data(), length) == whole ? std::string() : whole;
}

std::string CWatchlistCells::OwnTip(int row, int column) const {
    const SColumn* info = Column(column);
    if (!info) return {};
    if (m_doc.RowKind(row) == ERowKind::Annotation) return HeadingTip(m_doc, row);
    if (info->number == m_special.symbol) return MarksTip(m_doc, row);
    if (info->number == m_special.notes) return NoteTip(m_doc, row);
    if (info->number == m_special.alerts) return AlertsTip(m_doc, row);
    if (info->number == m_special.news) return NewsTip(m_doc, row);
    if (info->number == m_special.latestHeadline) return HeadlineTip(m_doc, row);
    if (info->kind == EKind::Directed && info->look.shortForms) return WholeNumber(*info, row);
    return {};
}

namespace {

constexpr size_t kMostNoteLines = 3;
constexpr size_t kMostLineBytes = 80;
constexpr size_t kMostAlerts = 5;

/// The first lines of a text, long ones cut; "..." says that there is more.
std::string Beginning(std::string_view text) {
    std::string out;
    for (size_t line = 0; line < kMostNoteLines && !text.empty(); ++line) {
        const std::string_view whole = text.substr(0, text.find('\n'));
        out.append(line == 0 ? "" : "\n").append(whole.substr(0, kMostLineBytes));
        if (whole.size() > kMostLineBytes) out += "...";
        text.remove_prefix(std::min(text.size(), whole.size() + 1));
    }
    return text.empty() ? out : out + "\n...";
}

enum class EAlertState { Armed, Quiet, Dead };

EAlertState StateOf(const A_INFO& alert) {
    return !CanFire(alert) ? EAlertState::Dead : alert.enabled != 0 ? EAlertState::Armed : EAlertState::Quiet;
}

std::string AlertLines(const CAlertArray& alerts, EAlertState state, const char* one, const char* more) {
    std::string out;
    size_t count = 0;
    for (const A_INFO& alert : alerts) {
        if (StateOf(alert) != state || ++count > kMostAlerts) continue;
        out.append(one).append(": ").append(AlertWords(alert)).append("\n");
    }
    if (count > kMostAlerts) out += fmt::format("and {} more {}\n", count - kMostAlerts, more);
    return out;
}

} // namespace

std::string MarksTip(const CWatchlistDoc& doc, int row) {
    std::string tip;
    if (doc.Notes().Has(row)) tip = "Note: " + Beginning(NoteTip(doc, row)) + "\n";
    if (const std::string_view symbol = doc.RowSymbol(row); !symbol.empty()) {
        const CAlertArray& alerts = doc.Alerts().Get(symbol);
        tip += AlertLines(alerts, EAlertState::Armed, "Alert armed", "armed") +
               AlertLines(alerts, EAlertState::Quiet, "Alert fired or off", "that fired or are off") +
               AlertLines(alerts, EAlertState::Dead, "Alert cannot fire", "that cannot fire");
        // What the cell may have cut is said here, in place of the tip that would.
        if (!tip.empty()) tip.insert(0, std::string(symbol) + "\n");
    }
    if (!tip.empty()) tip.pop_back();
    return tip;
}

std::string ColumnTip(std::string_view name, const SFieldEntry* entry) {
    std::string tip(name);
    if (!entry) return tip + "\nNo field of this name is known; the column is kept and stays empty.";
    tip += '\n';
    tip += entry->description;
    if (name == kAlertsColumn) tip += "\nArmed alerts of the symbol / those that fired, are off or cannot fire.";
    return tip;
}

std::string NoteTip(const CWatchlistDoc& doc, int row) {
    std::string note(doc.Notes().Get(row));
    std::erase(note, '\r');
    note.erase(note.find_last_not_of(" \n") + 1); // Empty lines at the end would only make the tip taller.
    return note;
}

std::string HeadingTip(const CWatchlistDoc& doc, int row) {
    std::string more = NoteTip(doc, row);
    if (const std::string_view typed = doc.TypedText(row); !typed.empty() || doc.IsRejected(row)) {
        if (!more.empty()) more += '\n';
        more += typed.empty() ? "F2 empties the row for another entry. Esc leaves it as it is."
                              : fmt::format("F2 brings back what was typed, to be corrected: {}\n"
                                            "Esc leaves the row as it is.",
                                            typed);
    }
    return more.empty() ? more : fmt::format("{}\n{}", doc.AnnotationText(row), more);
}

std::string AlertsTip(const CWatchlistDoc& doc, int row) {
    const SAlertTally tally = TallyAlerts(doc, doc.RowSymbol(row));
    if (tally.armed + tally.quiet + tally.dead == 0) return {};
    std::string tip = fmt::format("{} armed", tally.armed);
    if (tally.quiet > 0) tip += fmt::format(", {} fired or off", tally.quiet);
    if (tally.dead > 0) tip += fmt::format(", {} cannot fire", tally.dead);
    return tip;
}

std::string NewsTip(const CWatchlistDoc& doc, int row) {
    const NEWS* news = doc.News().Find(doc.RowSymbol(row));
    if (!news || news->storyCount == 0) return {};
    const char* stories = news->storyCount == 1 ? "story" : "stories";
    std::string tip = fmt::format("{} {} today", news->storyCount, stories);
    if (news->fresh != 0) tip += ", with news since the symbol was added";
    if (!news->headline.empty()) tip += "\n" + news->headline;
    return tip;
}

std::string HeadlineTip(const CWatchlistDoc& doc, int row) {
    const NEWS* news = doc.News().Find(doc.RowSymbol(row));
    return news ? news->headline : std::string();
}

} // namespace vx
