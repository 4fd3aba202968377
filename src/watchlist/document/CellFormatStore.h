#pragma once

#include "data/catalogue/CellFormat.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vx {

/// A column came, went or moved among the formats.
enum class EFormatColumns { Insert, Remove, Move };

/// Hears of the changes of cell formats, except that rows move.
///
/// Thread  GUI thread only
class CCellFormatObserver {
public:
    virtual ~CCellFormatObserver() = default;
    /// The record of a cell, a column (row 0) or the grid (row 0, column 0) is about to change.
    virtual void BeforeFormat(int row, int column) = 0;
    /// The records of all columns were renumbered; those that went with a removed column were told of before.
    /// to: where a moved column stands now.
    virtual void FormatColumnsChanged(EFormatColumns change, int from, int to) = 0;
};

struct SFieldEntry;

/// The formats of one watchlist's cells.
///
/// A cell looks as its own record says, else as its column's (row 0), else as the grid's (row 0, column 0), which is
/// always there. Every record is a whole format.
///
/// Shape   keyed by grid row and grid column, 0 and up; only cells that were given a format have a record
/// Units   rows up to kMostRow, columns up to kMostColumn, kMostRecords records in all; nothing beyond is kept
/// Errors  rows and columns outside are ignored
/// Thread  GUI thread only
/// Source  docs/file-format.md, "Formatting", for the text
class CCellFormatStore {
public:
    static constexpr int kMostRow = 100000;
    static constexpr int kMostColumn = 1000;
    static constexpr size_t kMostRecords = 500'000;

    /// Who is told of changes; null, as at first, is nobody. Rows that move, and Read, are not told.
    void SetObserver(CCellFormatObserver* observer) { m_observer = observer; }

    /// No records are left, and the grid has the default format.
    void Clear();

    /// The format in which a cell is drawn. Good until the next change.
    const SCellFormat& Effective(int row, int column) const;
    /// The format of a column's cells that have none of their own.
    const SCellFormat& ColumnFormat(int column) const;
    const SCellFormat& GridFormat() const { return m_grid; }
    /// The cell's own record, null when it has none.
    const SCellFormat* Find(int row, int column) const;

    /// Decimals of a cell; with grid precision those of the grid's format.
    int Decimals(int row, int column, bool useGridPrecision) const;
    /// Alignment of a cell; with default alignment numbers are right aligned and all else left. entry: the column's,
    /// null for a column that the catalogue does not hold.
    ECellAlign Alignment(int row, int column, const SFieldEntry* entry, bool useDefaultAlignment) const;

    /// Gives a cell, a column (row 0) or the grid (row 0, column 0) a format.
    ///
    /// Errors  false, and nothing changes, outside the limits and for a font that cannot be written
    bool Set(int row, int column, SCellFormat format);
    /// The cell's content changed by the user's hand: its record goes. The grid's becomes the default.
    void Reset(int row, int column);
    /// A column of a name was put at a place where none was: its format is the grid's, with the decimals that its name
    /// stands for. Not for columns whose formats a file brings.
    void SetNewColumn(int column, std::string_view name);

    // Rows and columns that move. Row 0 and column 0 stay; what would leave the limits is dropped.

    void InsertRows(int first, int count);
    void RemoveRows(int first, int count);
    /// Gives every row a new number: newRow(old row), 0 or less to drop its records. Two rows may not get the same one.
    template <typename NewRow> void RenumberRows(NewRow&& newRow) {
        Rekey([&](int row, int column) { return std::pair{row == 0 ? 0 : OrNone(newRow(row)), column}; });
    }
    void InsertColumn(int column);
    void RemoveColumn(int column);
    void MoveColumn(int from, int to);

    /// The greatest row that a cell has a record in, 0 when there is none. Looks at every record.
    int LastRow() const;
    /// Calls visit(row, column) for every record, the grid's not among them, in no particular order.
    template <typename Visit> void ForEach(Visit&& visit) const {
        for (const auto& record : m_records) visit(RowOf(record.first), ColumnOf(record.first));
    }

    /// Records, the grid's not among them.
    size_t Size() const { return m_records.size(); }

    // Text.

    /// All records as one line of text without a line end, row by row. Fields that equal those of the cell's default
    /// (its column's format; the grid's for a column) are left empty. A record that equals its default is left out
    /// unless it stands in column 0; the grid's stands there whole.
    std::string Write() const;
    /// Replaces all records by those that a text describes; an empty text changes nothing.
    ///
    /// Returns how many pieces of it were left out: negative or too great a row or column, no "," or ":"
    size_t Read(std::string_view text);

private:
    using Key = uint64_t;
    static constexpr int kNone = -1;

    static bool IsInside(int row, int column) {
        return row >= 0 && row <= kMostRow && column >= 0 && column <= kMostColumn;
    }
    static int OrNone(int row) { return row > 0 ? row : kNone; }
    static constexpr int kColumnBits = 16; ///< In the order of the keys, records stand row by row.
    static Key MakeKey(int row, int column) { return static_cast<Key>(row) << kColumnBits | static_cast<Key>(column); }
    static int RowOf(Key key) { return static_cast<int>(key >> kColumnBits); }
    static int ColumnOf(Key key) { return static_cast<int>(key & ((Key{1} << kColumnBits) - 1)); }

    // Gives every record a new place: newPlace(row, column) -> row and column; outside the limits the record goes.
    template <typename NewPlace> void Rekey(NewPlace&& newPlace) {
        std::unordered_map<Key, SCellFormat> moved;
        moved.reserve(m_records.size());
        while (!m_records.empty()) {
            auto node = m_records.extract(m_records.begin());
            const auto [row, column] = newPlace(RowOf(node.key()), ColumnOf(node.key()));
            if (!IsInside(row, column)) continue;
            node.key() = MakeKey(row, column);
            moved.insert(std::move(node));
        }
        m_records.swap(moved);
    }
    template <typename NewColumn> void RenumberColumns(NewColumn&& newColumn) {
        Rekey([&](int row, int column) { return std::pair{row, column == 0 ? 0 : newColumn(column)}; });
    }
    void Forget();
    bool Store(int row, int column, SCellFormat format);
    void TellChange(int row, int column);
    void TellColumns(EFormatColumns change, int from, int to);
    bool ReadPiece(std::string_view piece);
    std::vector<const std::pair<const Key, SCellFormat>*> InOrder() const;

    CCellFormatObserver* m_observer = nullptr;
    SCellFormat m_grid;
    std::unordered_map<Key, SCellFormat> m_records;
};

} // namespace vx
