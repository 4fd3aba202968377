// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/FieldBlock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx {

// The readers of single fields that are not plain numbers. All take the text of one field, trimmed of blanks, and never
// fail: what cannot be read becomes 0, an empty or an invalid value.

/// Month/day/year. A year below 50 is in the 2000s, 50 to 99 in the 1900s, 100 and above as given; parts that are
/// missing count as 0, and a day of 0 gives the empty date.
SDate ReadDate(std::string_view text);

/// Month/day, with no year.
SDate ReadMonthDay(std::string_view text);

/// A split: a ratio, a blank and the date from which it counts.
struct SSplit {
    double ratio = 0;
    SDate date;
};
SSplit ReadSplit(std::string_view text);

/// A time of day, and its text without the letter.
struct SLetteredTime {
    STimeOfDay time;
    std::array<char, 32> text; ///< Not terminated; a longer text is cut.
    size_t size = 0;

    std::string_view View() const { return {text.data(), size}; }
};

/// Hours:minutes:seconds. The first letter out of "tTbao" is taken out of the text; without one it counts as "t".
SLetteredTime ReadTime(std::string_view text);

/// 1..12 for "January" to "December", in any case; 0 for everything else.
int32_t ReadMonth(std::string_view text);
/// The name of a month, "Invalid" outside 1..12.
std::string_view MonthName(int32_t month);

inline constexpr std::string_view kNotFoundText = "Not Found";

/// Whether a price field says that the feed does not know the symbol ("Not Found", in any case).
bool IsNotFound(std::string_view text);

/// Whether a text starts with a decimal number, after blanks and a sign.
bool StartsWithNumber(std::string_view text);

} // namespace vx
