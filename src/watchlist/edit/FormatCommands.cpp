// SPDX-License-Identifier: MIT
#include "watchlist/edit/FormatCommands.h"

#include "data/catalogue/FieldEntry.h"
#include "data/text/DrawnNumber.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/RowCellText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vx {

namespace {

using SPlace = std::pair<int, int>; // row and column

bool CoversColumns(const CWatchlistDoc& doc, const SFormatRange& range) {
    return range.firstRow <= 1 && range.lastRow >= doc.RowCount() && !AreHeadings(doc, range);
}

bool IsHeading(const CWatchlistDoc& doc, int row) { return doc.RowKind(row) == ERowKind::Annotation; }

// The part of a range that there is.
SFormatRange Inside(const CWatchlistDoc& doc, SFormatRange range) {
    range.firstRow = std::max(range.firstRow, 1);
    range.lastRow = std::min(range.lastRow, doc.RowCount());
    range.firstColumn = std::max(range.firstColumn, 1);
    range.lastColumn = std::min(range.lastColumn, doc.Columns().Count() - 1);
    return range;
}

bool Has(const SFormatRange& range, int row, int column) {
    return row >= range.firstRow && row <= range.lastRow && column >= range.firstColumn && column <= range.lastColumn;
}

// The cells of a range that have a format of their own. Cost grows with the formats, not with the range.
std::vector<SPlace> FormattedCells(const CWatchlistDoc& doc, const SFormatRange& range) {
    std::vector<SPlace> places;
    doc.Formats().ForEach([&](int row, int column) {
        if (row > 0 && Has(range, row, column)) places.emplace_back(row, column);
    });
    return places;
}

bool MaySet(const SFormatChange& change) { return !change.fontFace || IsStorableFont(*change.fontFace); }

// Of a heading the one cell is meant that says how it looks: with nothing but headings selected wherever they were
// touched, else where the range covers it.
SFormatRange Meant(const CWatchlistDoc& doc, const SFormatRange& asked) {
    SFormatRange range = Inside(doc, asked);
    if (AreHeadings(doc, range)) range.firstColumn = range.lastColumn = HeadingColumn(doc.Columns());
    return range;
}

// What a place has by itself is not kept as a choice.
void SetChosen(const CWatchlistDoc& doc, CWatchlistEdit& edit, int row, int column, SCellFormat format) {
    format.regular = format.regular && StandsOut(doc, row, column);
    if (format.colourRule == ColourRuleOf(doc, column)) format.colourRule = EColourRule::OfField;
    edit.Formats().Set(row, column, std::move(format));
}

void SetFormat(const CWatchlistDoc& doc, CWatchlistEdit& edit, int row, int column, const SFormatChange& change) {
    if (row > 0 && column != FormatColumn(doc, row, column)) return;
    SCellFormat format = doc.Formats().Effective(row, column);
    change.ApplyTo(format);
    SetChosen(doc, edit, row, column, std::move(format));
}

// The columns get the alignment that they show by default.
void KeepAlignments(const CWatchlistDoc& doc, CWatchlistEdit& edit) {
    for (int column = 1; column < doc.Columns().Count(); ++column) {
        SFormatChange change;
        change.alignment = doc.Formats().Alignment(0, column, doc.Columns().At(column).Entry(), true);
        if (change.alignment != ECellAlign::Left) SetFormat(doc, edit, 0, column, change);
    }
}

// The columns have records of their own, whole ones: what is said of the grid is meant for them too.
void FormatColumns(const CWatchlistDoc& doc, CWatchlistEdit& edit, const SFormatChange& change) {
    for (int column = 0; column < doc.Columns().Count(); ++column) {
        if (!doc.Formats().Find(0, column)) continue;
        SCellFormat format = doc.Formats().ColumnFormat(column);
        const bool regular = format.regular;
        change.ApplyTo(format);
        format.regular = regular; // What stands out does so in the whole grid.
        SetChosen(doc, edit, 0, column, std::move(format));
    }
}

} // namespace

void SFormatChange::ApplyTo(SCellFormat& format) const {
    const auto take = [](const auto& changed, auto& value) {
        if (changed) value = *changed;
    };
    take(textColour, format.textColour);
    take(backColour, format.backColour);
    take(upColour, format.upColour);
    take(downColour, format.downColour);
    take(unchangedColour, format.unchangedColour);
    take(fontFace, format.fontFace);
    take(fontSizePt, format.fontSizePt);
    take(bold, format.bold);
    if (bold) format.regular = !*bold;
    take(italic, format.italic);
    take(alignment, format.alignment);
    take(decimals, format.decimals);
    take(colourByDirection, format.colourByDirection);
    take(colourRule, format.colourRule);
    if (border) format.borderStyle = static_cast<int32_t>(*border);
    if (cellKind) format.cellKind = static_cast<int32_t>(*cellKind);
}

bool SFormatChange::IsEmpty() const {
    return !textColour && !backColour && !upColour && !downColour && !unchangedColour && !fontFace && !fontSizePt &&
           !bold && !italic && !alignment && !decimals && !colourByDirection && !colourRule && !border && !cellKind;
}

bool AreHeadings(const CWatchlistDoc& doc, const SFormatRange& range) {
    for (int row = std::max(range.firstRow, 1); row <= range.lastRow; ++row)
        if (!IsHeading(doc, row)) return false;
    return true;
}

int FormatColumn(const CWatchlistDoc& doc, int row, int column) {
    return IsHeading(doc, row) ? HeadingColumn(doc.Columns()) : column;
}

bool StandsOut(const CWatchlistDoc& doc, int row, int column) {
    if (column < 1 || column >= doc.Columns().Count()) return false;
    return IsHeading(doc, row) || doc.Columns().At(column).name == kSymbolColumn;
}

EColourRule ColourRuleOf(const CWatchlistDoc& doc, int column) {
    if (column < 1 || column >= doc.Columns().Count()) return EColourRule::OfField;
    const SFieldEntry* entry = doc.Columns().At(column).Entry();
    return entry ? entry->colourRule : EColourRule::Direction;
}

bool CanShow(const CWatchlistDoc& doc, const SFormatRange& asked, ECellKind kind) {
    const SFormatRange range = Inside(doc, asked);
    for (int column = range.firstColumn; column <= range.lastColumn; ++column)
        if (const SFieldEntry* entry = doc.Columns().At(column).Entry(); entry && CanShow(*entry, kind)) return true;
    return false;
}

bool FormatCells(CWatchlistDoc& doc, const SFormatRange& asked, const SFormatChange& change) {
    const SFormatRange range = Meant(doc, asked);
    if (change.IsEmpty() || range.firstRow > range.lastRow || range.firstColumn > range.lastColumn) return true;
    if (!MaySet(change)) return false;
    const bool columns = CoversColumns(doc, asked);
    const std::vector<SPlace> own = columns ? FormattedCells(doc, range) : std::vector<SPlace>();
    const auto width = static_cast<size_t>(range.lastColumn - range.firstColumn + 1);
    const auto height = columns ? size_t{1} : static_cast<size_t>(range.lastRow - range.firstRow + 1);
    if (doc.Formats().Size() + width * height > CCellFormatStore::kMostRecords) return false;

    doc.Edit(columns ? "format columns" : "format cells", [&](CWatchlistEdit& edit) {
        edit.SelectColumns(range.firstColumn, range.lastColumn);
        for (const auto& [row, column] : own) SetFormat(doc, edit, row, column, change);
        const int firstRow = columns ? 0 : range.firstRow;
        const int lastRow = columns ? 0 : range.lastRow;
        for (int row = firstRow; row <= lastRow; ++row)
            for (int column = range.firstColumn; column <= range.lastColumn; ++column)
                SetFormat(doc, edit, row, column, change);
    });
    return true;
}

void ClearFormats(CWatchlistDoc& doc, const SFormatRange& asked) {
    const SFormatRange range = Meant(doc, asked);
    doc.Edit("clear formats", [&](CWatchlistEdit& edit) {
        edit.SelectColumns(range.firstColumn, range.lastColumn);
        for (const auto& [row, column] : FormattedCells(doc, range)) edit.Formats().Reset(row, column);
        if (!CoversColumns(doc, asked)) return;
        for (int column = range.firstColumn; column <= range.lastColumn; ++column)
            edit.Formats().SetNewColumn(column, doc.Columns().At(column).name);
    });
}

bool FormatGrid(CWatchlistDoc& doc, const SGridLook& look) {
    if (!MaySet(look.format)) return false;
    doc.Edit("grid settings", [&](CWatchlistEdit& edit) {
        if (doc.Options().useDefaultAlignment && !look.useDefaultAlignment) KeepAlignments(doc, edit);
        if (!look.format.IsEmpty()) FormatColumns(doc, edit, look.format);
        SWatchlistOptions& options = edit.Options();
        options.useGridPrecision = look.useGridPrecision;
        options.useDefaultAlignment = look.useDefaultAlignment;
        options.trailingRows = std::clamp(look.trailingRows, 0, SWatchlistOptions::kMaxTrailingRows);
    });
    return true;
}

} // namespace vx
