#pragma once

#include <cstdint>
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
/// Shape   keys[i] belongs to the i-th row; the result holds the indices of the rows from first to last
/// Errors  none: "nan" counts as 0
/// Thread  any
std::vector<uint32_t> OrderByText(const std::vector<std::string_view>& keys, bool ascending);
std::vector<uint32_t> OrderByNumber(const std::vector<double>& keys, bool ascending);

/// The number of a cell's text for OrderByNumber.
double SortNumber(std::string_view text);

} // namespace vx
