// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FundamentalFields.h"
#include "base/fields/QuoteFields.h"
#include "data/catalogue/FieldEntry.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace vx {

inline constexpr size_t kOwnColumnCount = 4;
/// The row-number column, the level-1 columns, the fundamental columns and the program's own.
inline constexpr size_t kCatalogueSize = 1 + kLevel1ColumnCount + kFundamentalColumnCount + kOwnColumnCount;

inline constexpr int kRowNumberColumn = 0;
inline constexpr int kNoField = -1;

// Widths that columns have until somebody changes them.
inline constexpr int kRowNumberWidthPx = 30;
inline constexpr int kDefaultColumnWidthPx = 100;

/// Every column that a watchlist can show, in the order of the column chooser: the row-number column (named by a single
/// blank), the level-1 columns, the fundamental columns, the program's own. A position in it is a catalogue index.
///
/// Thread  any; the catalogue never changes
std::span<const SFieldEntry, kCatalogueSize> Catalogue();

/// Catalogue index of a column by its short name, case and blanks included; kNoField when no column has it.
int FieldIndex(std::string_view name);

/// Catalogue entry of a column by its short name; null when no column has it.
const SFieldEntry* FindField(std::string_view name);

/// The columns of a new watchlist, each name followed by ";".
inline constexpr std::string_view kDefaultColumnList = "Symbol;Tick Trend;News;Latest Headline;Change;% Chg;Last;"
                                                       "Volume;Bid;Ask;B Size;A Size;High;Low;T Time;Delay;";

} // namespace vx
