// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/FieldEntry.h"
#include "data/record/FieldBlock.h"
#include "data/record/SymbolRec.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace vx {

/// Puts the message contents of an update into words: "Cba" reads "ASK/BID/TRADE". The letters are taken from the last
/// to the first; a letter without a word stays a letter. "SUMMARY" stays as it is.
///
/// Shape   returns the bytes written; what does not fit the buffer is cut
size_t ContentsText(std::string_view contents, std::span<char> out);

inline constexpr size_t kMostCellText = 255;
using CellBuffer = std::array<char, kMostCellText>;

/// Turns one field of a record into the text of one grid cell.
///
/// Shape   a symbol's record or a regional quote's, and one catalogue entry in -> the bytes written into the buffer, at
///         most 255, Windows-1252, not terminated; 0 when the field was never set or the column reads nothing of such
///         a record. In the tick trend the bytes AD, AF and B7 mean up, down and unchanged
/// Units   decimals: digits after the point, 0..15; see DecimalsToShow
/// Errors  none; an impossible date reads "Invalid DateTime"
/// Owns    nothing, and allocates nothing
size_t CellText(const CSymbolRec& record, const SFieldEntry& entry, int decimals, std::span<char, kMostCellText> out);

/// The number that the text of a cell reads as; nothing where only the text can tell. 0 for a field that was never set.
std::optional<double> CellTextNumber(const CSymbolRec& record, const SFieldEntry& entry, int decimals);

/// Asks for the memory that the number of a cell is read from.
void PrefetchCell(const CSymbolRec& record, const SFieldEntry& entry);

/// Whether the cells of a column are tick trends, whose bytes are no characters.
bool IsTickTrend(const SFieldEntry& entry);

/// The number by which a cell is sorted or compared: 0 for texts, dates and records that never received data.
double CellNumber(const CSymbolRec& record, const SFieldEntry& entry);

/// Which way the cell's value went with its last change; NeverSet where the column reads nothing of such a record.
EDirection CellDirection(const CSymbolRec& record, const SFieldEntry& entry);

/// Which way a number's colour says it is, by a rule: up and down, or above and below zero; NeverSet as above.
EDirection ColourDirection(const CSymbolRec& record, const SFieldEntry& entry, EColourRule rule);

/// The decimals to show: for prices the symbol's own decimal precision, once the feed has said it, or fewer where
/// somebody chose fewer for the cell; for every other column those of the cell.
///
/// Units   cellDecimals: 0..kMostDecimals; kUnchosenDecimals and the column's own default are nobody's choice unless
///         chosen says so
int DecimalsToShow(const CSymbolRec& record, const SFieldEntry& entry, int cellDecimals, bool chosen = false);

} // namespace vx
