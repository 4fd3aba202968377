// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/Catalogue.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// How a column shows in which direction its numbers went.
enum class EDirectionLook : uint8_t { Colour, Background, Arrow, None };

/// How the numbers of a column are drawn. What a cell holds stays as it is: what is sorted, found, copied and exported.
struct SColumnLook {
    EDirectionLook direction = EDirectionLook::Colour;
    bool flash = true;       ///< A number that changes lights up for a moment.
    bool separators = false; ///< "1,234,567"
    bool shortForms = false; ///< "1.2 M"

    bool operator==(const SColumnLook&) const = default;
};

/// One column of a grid.
struct sColumnInfo {
    int number = kRowNumberColumn; ///< Catalogue index; above the catalogue's for names that it does not hold.
    std::string name;
    int width = kDefaultColumnWidthPx; ///< Pixels; 0 is hidden.
    SColumnLook look = {};

    /// The catalogue entry, null for a name that the catalogue does not hold: such a column stays empty.
    const SFieldEntry* Entry() const;
};

/// The columns of one watchlist, left to right, and the numbers and widths that belong to their names.
///
/// Shape   position 0 is always the row-number column; every name occurs at most once
/// Thread  GUI thread only
class CColumnMap {
public:
    /// More columns than this are not taken: only a broken file or setting names so many.
    static constexpr int kMostColumns = 1000;

    CColumnMap();

    /// Back to the row-number column alone, at its default width, with no names beyond the catalogue's.
    void Clear();

    /// Arranges the columns by a list of names with ";" between them. Empty names and repeated ones are skipped; a name
    /// that is shown already keeps its width and look; a name that the catalogue does not hold becomes a new, empty
    /// column.
    void SetNames(std::string_view names);
    /// The names of all columns but the row numbers, each followed by ";".
    std::string Names() const;

    /// Adds a column at the right end, or gives the new width to the column of that name; returns its position, -1 when
    /// there is no room for another.
    int Append(std::string_view name, int width = kDefaultColumnWidthPx);
    /// Puts a column before a position (1..Count()); does nothing and returns false when the name is shown
    /// already or there is no room.
    bool Insert(int position, std::string_view name, int width = kDefaultColumnWidthPx);
    /// Takes a column out; the row-number column stays.
    void Remove(int position);
    /// Moves a column so that it is at position `to` afterwards; the row-number column stays first.
    void Move(int from, int to);
    void SetWidth(int position, int width);
    void SetLook(int position, const SColumnLook& look);

    /// Columns, the row-number column included.
    int Count() const { return static_cast<int>(m_columns.size()); }
    const sColumnInfo& At(int position) const { return m_columns[static_cast<size_t>(position)]; }
    const std::vector<sColumnInfo>& Columns() const { return m_columns; }

    /// Position of the column with a name, -1 when it is not shown.
    int PositionOf(std::string_view name) const;
    /// Number of a column name, shown or not; kNoField when neither the catalogue nor this map holds it.
    int NumberOf(std::string_view name) const;
    /// Name of a column number, empty when no column has it.
    std::string_view NameOf(int number) const;

private:
    int Register(std::string_view name);

    std::vector<sColumnInfo> m_columns;
    std::vector<std::string> m_unknownNames; ///< Names beyond the catalogue; the first has number kCatalogueSize.
};

} // namespace vx
