// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/CellFormat.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vx {

/// A format of one cell, in the row that the cell is in.
struct SRowFormat {
    int column = 0;
    SCellFormat format;

    bool operator==(const SRowFormat&) const = default;
};

/// What most rows have nothing of.
struct SRowExtras {
    std::string annotation;          ///< With the annotation mark "#", which is never shown.
    std::string note;                ///< Lines ended by CR LF; without ";", ":" and ",".
    std::string rejected;            ///< The symbol whose rejection the annotation reports.
    std::string shown;               ///< Shown instead of the symbol; never saved.
    std::string typed;               ///< What the user entered, where the row shows something else; never saved.
    std::vector<SRowFormat> formats; ///< By rising column.

    bool operator==(const SRowExtras&) const = default;
};

/// One row of a watchlist with everything that belongs to it. Texts are Windows-1252.
///
/// Row 0 of a table is the header: its formats are those of the columns, and in column 0 that of the whole grid.
///
/// Thread  any, as a std::string
struct SRow {
    uint32_t id = 0; ///< Stays with the row wherever it moves; 0 for a row of no table.
    bool hidden = false;
    std::string symbol;
    std::unique_ptr<SRowExtras> extras; ///< Null when all of them are empty, and perhaps otherwise.

    SRow() = default;
    SRow(const SRow& row)
        : id(row.id), hidden(row.hidden), symbol(row.symbol),
          extras(row.extras ? std::make_unique<SRowExtras>(*row.extras) : nullptr) {}
    SRow(SRow&&) noexcept = default;
    SRow& operator=(const SRow& row) { return *this = SRow(row); }
    SRow& operator=(SRow&&) noexcept = default;

    const SRowExtras& Extras() const {
        static const SRowExtras kNone;
        return extras ? *extras : kNone;
    }
    SRowExtras& MakeExtras() {
        if (!extras) extras = std::make_unique<SRowExtras>();
        return *extras;
    }
};

} // namespace vx
