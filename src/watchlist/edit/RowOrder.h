#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The order in which rows stand after a sort, by the keys that their cells in the sort column show.
///
/// The rule is that of placing the rows one after the other into a list, each before the first element that the new row
/// goes before, else at the end:
/// - by text: equal but for case, then equal: the row added later comes first; two empty keys count as equal. Letters
///   compare without case first, then with it
/// - by number: a key that is no number is 0. Equal numbers keep their order, except zeros, where the row added later
///   comes first
/// The result is that of the literal insertion; it is computed by sorting keys that were extracted once.
///
/// Shape   keys[i] belongs to the i-th row; the result holds the indices of the rows from first to last. blockEnds:
///         where the blocks of rows end that are each ordered by themselves, rising, the last one at the end of the
///         keys; empty: all rows are one block
/// Errors  none: "nan" counts as 0
/// Thread  any
std::vector<uint32_t> OrderByText(const std::vector<std::string_view>& keys, bool ascending,
                                  std::span<const size_t> blockEnds = {});
std::vector<uint32_t> OrderByNumber(const std::vector<double>& keys, bool ascending,
                                    std::span<const size_t> blockEnds = {});

/// The number of a cell's text for OrderByNumber.
double SortNumber(std::string_view text);

} // namespace vx
