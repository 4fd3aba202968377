// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistFrame.h"

#include <cstdint>

namespace vx {

/// By which column the rows are sorted, and whether a timer does it again and again.
struct SSortRecord {
    static constexpr int kNoColumn = -1;
    static constexpr int kDefaultIntervalMs = 5000;

    int column = kNoColumn; ///< Grid column, 1 is the first after the row numbers.
    bool ascending = true;
    bool autoSort = false;
    int intervalMs = kDefaultIntervalMs;

    bool operator==(const SSortRecord&) const = default;
};

/// How the watchlist is exported.
struct SExportOptions {
    bool linkFormulas = false; ///< "DDE Formulas", else "Data".
    bool commas = true;        ///< "Comma Delimited", else "Tab Delimited".
    bool columnHeaders = true;
    bool append = false; ///< "Append", else "Overwrite".
    bool utf8 = false;   ///< With the tick trend as triangles and dots; else Windows-1252 with its bytes.

    bool operator==(const SExportOptions&) const = default;
};

/// How much room the rows have around their texts.
enum class EDensity : uint8_t { Compact, Normal, Comfortable };

/// How large the watchlist is drawn.
struct SScale {
    static constexpr int kLeastZoom = 50;
    static constexpr int kNoZoom = 100;
    static constexpr int kMostZoom = 300;

    int zoom = kNoZoom; ///< Percent. The widths of columns are kept as they are without it.
    EDensity density = EDensity::Normal;

    bool operator==(const SScale&) const = default;
};

/// What a watchlist saves besides its rows and columns.
struct SWatchlistOptions {
    static constexpr int kMaxTrailingRows = 1000;

    SPlacement placement;
    int trailingRows = 1; ///< Empty rows kept below the last used one, 0..kMaxTrailingRows.
    int lockedColumns = 0;
    bool showRowNumbers = true;
    bool showToolBar = true;
    bool useGridPrecision = false;
    bool useDefaultAlignment = true;
    bool sortAcrossHeadings = false; ///< Else a sort keeps each symbol under its heading.
    SSortRecord sort;
    SExportOptions exporting; ///< As chosen the last time.
    SScale scale;             ///< The same.

    bool operator==(const SWatchlistOptions&) const = default;
};

} // namespace vx
