// SPDX-License-Identifier: MIT
#include "watchlist/document/CellFormatStore.h"

#include "base/Number.h"
#include "data/catalogue/DataInfo.h"
#include "data/catalogue/FieldEntry.h"

#include <algorithm>
#include <optional>

namespace vx {

namespace {

constexpr char kPieceEnd = ';';

bool ShowsNumbers(const SFieldEntry* entry) { return entry && IsNumberClass(entry->valueClass); }

// Where a column stands after one of them moved.
int PlaceAfterMove(int place, int from, int to) {
    if (place == from) return to;
    if (from < to) return place > from && place <= to ? place - 1 : place;
    return place >= to && place < from ? place + 1 : place;
}

struct SPiece {
    int row;
    int column;
    std::string_view fields;
};

std::optional<SPiece> CutPiece(std::string_view piece) {
    const size_t comma = piece.find(',');
    if (comma == std::string_view::npos) return std::nullopt;
    const size_t colon = piece.find(':', comma);
    if (colon == std::string_view::npos) return std::nullopt;
    return SPiece{ReadInt32(piece.substr(0, comma)), ReadInt32(piece.substr(comma + 1, colon - comma - 1)),
                  piece.substr(colon + 1)};
}

} // namespace

void CCellFormatStore::Clear() {
    for (int row = 0; row <= m_rows->Size(); ++row)
        if (!m_rows->Row(row).Extras().formats.empty()) m_rows->SetFormats(row, {});
}

const SCellFormat& CCellFormatStore::GridFormat() const {
    static const SCellFormat kDefault;
    const SCellFormat* format = m_rows->FindFormat(0, 0);
    return format ? *format : kDefault;
}

const SCellFormat* CCellFormatStore::Find(int row, int column) const {
    if (row == 0 && column == 0) return &GridFormat();
    return IsInside(row, column) ? m_rows->FindFormat(row, column) : nullptr;
}

const SCellFormat& CCellFormatStore::ColumnFormat(int column) const {
    const SCellFormat* format = Find(0, column);
    return format ? *format : GridFormat();
}

const SCellFormat& CCellFormatStore::Effective(int row, int column) const {
    const SCellFormat* format = Find(row, column);
    return format ? *format : ColumnFormat(column);
}

int CCellFormatStore::Decimals(int row, int column, bool useGridPrecision) const {
    return (useGridPrecision ? GridFormat() : Effective(row, column)).decimals;
}

ECellAlign CCellFormatStore::Alignment(int row, int column, const SFieldEntry* entry, bool useDefaultAlignment) const {
    if (!useDefaultAlignment) return Effective(row, column).alignment;
    return ShowsNumbers(entry) ? ECellAlign::Right : ECellAlign::Left;
}

bool CCellFormatStore::Set(int row, int column, SCellFormat format) {
    if (!IsInside(row, column) || !IsStorableFont(format.fontFace)) return false;
    const bool isNew = !m_rows->FindFormat(row, column);
    if (isNew && (row != 0 || column != 0) && Size() >= kMostRecords) return false;
    format.decimals = std::clamp(format.decimals, 0, kMostDecimals);
    m_rows->SetFormat(row, column, std::move(format));
    return true;
}

void CCellFormatStore::Reset(int row, int column) {
    if (IsInside(row, column)) m_rows->SetFormat(row, column, std::nullopt);
}

void CCellFormatStore::SetNewColumn(int column, std::string_view name) {
    if (column < 1) return;
    SCellFormat format = GridFormat();
    format.decimals = CDataInfo::DecimalPlaces(name).value_or(format.decimals);
    if (format == GridFormat())
        Reset(0, column);
    else
        Set(0, column, std::move(format));
}

void CCellFormatStore::InsertColumn(int column) {
    if (column < 1) return;
    m_rows->RenumberColumns([=](int old) { return old < column ? old : old == kMostColumn ? kNone : old + 1; });
}

void CCellFormatStore::RemoveColumn(int column) {
    if (column < 1) return;
    m_rows->RenumberColumns([=](int old) { return old < column ? old : old == column ? kNone : old - 1; });
}

void CCellFormatStore::MoveColumn(int from, int to) {
    if (from == to || std::min(from, to) < 1 || std::max(from, to) > kMostColumn) return;
    m_rows->RenumberColumns([=](int column) { return PlaceAfterMove(column, from, to); });
}

int CCellFormatStore::LastRow() const {
    int row = m_rows->Size();
    while (row > 0 && m_rows->Row(row).Extras().formats.empty()) --row;
    return row;
}

void CCellFormatStore::Write(std::string& out) const {
    ForEachRecord([&](int row, int column, const SCellFormat& format, const SCellFormat* base) {
        if (!IsWritten(column, format, base)) return;
        AppendInteger(out, row);
        out += ',';
        AppendInteger(out, column);
        out += ':';
        AppendFormatFields(out, format, base);
        out += kPieceEnd;
    });
}

size_t CCellFormatStore::Read(std::string_view text) {
    size_t leftOut = 0;
    if (!text.empty()) Clear();
    while (!text.empty()) {
        const size_t end = text.find(kPieceEnd);
        const std::string_view piece = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!piece.empty() && !ReadPiece(piece)) ++leftOut;
    }
    return leftOut;
}

bool CCellFormatStore::ReadPiece(std::string_view text) {
    const std::optional<SPiece> piece = CutPiece(text);
    if (!piece || !IsInside(piece->row, piece->column)) return false;
    SCellFormat format = ColumnFormat(piece->column);
    ReadFormatFields(piece->fields, format);
    return Set(piece->row, piece->column, std::move(format));
}

} // namespace vx
