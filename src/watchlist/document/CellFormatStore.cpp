#include "watchlist/document/CellFormatStore.h"

#include "base/Number.h"
#include "data/catalogue/DataInfo.h"
#include "data/catalogue/FieldEntry.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
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

void AppendRecord(std::string& out, int row, int column, const SCellFormat& format, const SCellFormat* base) {
    fmt::format_to(std::back_inserter(out), "{},{}:", row, column);
    AppendFormatFields(out, format, base);
    out += kPieceEnd;
}

} // namespace

void CCellFormatStore::TellChange(int row, int column) {
    if (m_observer) m_observer->BeforeFormat(row, column);
}

void CCellFormatStore::TellColumns(EFormatColumns change, int from, int to) {
    if (m_observer) m_observer->FormatColumnsChanged(change, from, to);
}

void CCellFormatStore::Clear() {
    TellChange(0, 0);
    ForEach([&](int row, int column) { TellChange(row, column); });
    Forget();
}

void CCellFormatStore::Forget() {
    m_grid = {};
    m_records.clear();
}

const SCellFormat* CCellFormatStore::Find(int row, int column) const {
    if (!IsInside(row, column)) return nullptr;
    if (row == 0 && column == 0) return &m_grid;
    const auto found = m_records.find(MakeKey(row, column));
    return found == m_records.end() ? nullptr : &found->second;
}

const SCellFormat& CCellFormatStore::ColumnFormat(int column) const {
    const SCellFormat* format = Find(0, column);
    return format ? *format : m_grid;
}

const SCellFormat& CCellFormatStore::Effective(int row, int column) const {
    const SCellFormat* format = Find(row, column);
    return format ? *format : ColumnFormat(column);
}

int CCellFormatStore::Decimals(int row, int column, bool useGridPrecision) const {
    return (useGridPrecision ? m_grid : Effective(row, column)).decimals;
}

ECellAlign CCellFormatStore::Alignment(int row, int column, const SFieldEntry* entry, bool useDefaultAlignment) const {
    if (!useDefaultAlignment) return Effective(row, column).alignment;
    return ShowsNumbers(entry) ? ECellAlign::Right : ECellAlign::Left;
}

bool CCellFormatStore::Set(int row, int column, SCellFormat format) {
    if (IsInside(row, column)) TellChange(row, column);
    return Store(row, column, std::move(format));
}

bool CCellFormatStore::Store(int row, int column, SCellFormat format) {
    if (!IsInside(row, column) || !IsStorableFont(format.fontFace)) return false;
    format.decimals = std::clamp(format.decimals, 0, kMostDecimals);
    if (row == 0 && column == 0) {
        m_grid = std::move(format);
        return true;
    }
    const Key key = MakeKey(row, column);
    if (m_records.size() >= kMostRecords && !m_records.contains(key)) return false;
    m_records.insert_or_assign(key, std::move(format));
    return true;
}

void CCellFormatStore::Reset(int row, int column) {
    if (!Find(row, column)) return;
    TellChange(row, column);
    if (row == 0 && column == 0)
        m_grid = {};
    else
        m_records.erase(MakeKey(row, column));
}

void CCellFormatStore::SetNewColumn(int column, std::string_view name) {
    if (column < 1) return;
    SCellFormat format = m_grid;
    format.decimals = CDataInfo::DecimalPlaces(name).value_or(m_grid.decimals);
    if (format == m_grid)
        Reset(0, column);
    else
        Set(0, column, std::move(format));
}

void CCellFormatStore::InsertRows(int first, int count) {
    if (first < 1 || count < 1) return;
    RenumberRows([&](int row) { return row < first ? row : count > kMostRow - row ? kNone : row + count; });
}

void CCellFormatStore::RemoveRows(int first, int count) {
    if (first < 1 || count < 1) return;
    RenumberRows([&](int row) { return row < first ? row : row - first < count ? kNone : row - count; });
}

void CCellFormatStore::InsertColumn(int column) {
    if (column < 1) return;
    if (m_observer)
        ForEach([&](int row, int old) {
            if (old == kMostColumn) TellChange(row, old); // It leaves the limits.
        });
    RenumberColumns([&](int old) { return old < column ? old : old + 1; });
    TellColumns(EFormatColumns::Insert, column, column);
}

void CCellFormatStore::RemoveColumn(int column) {
    if (column < 1) return;
    if (m_observer)
        ForEach([&](int row, int old) {
            if (old == column) TellChange(row, old);
        });
    RenumberColumns([&](int old) { return old < column ? old : old == column ? kNone : old - 1; });
    TellColumns(EFormatColumns::Remove, column, column);
}

void CCellFormatStore::MoveColumn(int from, int to) {
    if (from == to || std::min(from, to) < 1 || std::max(from, to) > kMostColumn) return;
    RenumberColumns([&](int column) { return PlaceAfterMove(column, from, to); });
    TellColumns(EFormatColumns::Move, from, to);
}

int CCellFormatStore::LastRow() const {
    int last = 0;
    ForEach([&](int row, int) { last = std::max(last, row); });
    return last;
}

std::vector<const std::pair<const CCellFormatStore::Key, SCellFormat>*> CCellFormatStore::InOrder() const {
    std::vector<const std::pair<const Key, SCellFormat>*> out;
    out.reserve(m_records.size());
    for (const auto& record : m_records) out.push_back(&record);
    std::ranges::sort(out, {}, [](const auto* record) { return record->first; });
    return out;
}

std::string CCellFormatStore::Write() const {
    std::string out;
    AppendRecord(out, 0, 0, m_grid, nullptr);
    for (const auto* record : InOrder()) {
        const auto& [key, format] = *record;
        const int row = RowOf(key);
        const int column = ColumnOf(key);
        const SCellFormat& base = row == 0 ? m_grid : ColumnFormat(column);
        if (column == 0 || !HaveSameFields(format, base)) AppendRecord(out, row, column, format, &base);
    }
    return out;
}

size_t CCellFormatStore::Read(std::string_view text) {
    size_t leftOut = 0;
    if (!text.empty()) Forget();
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
    return Store(piece->row, piece->column, std::move(format));
}

} // namespace vx
