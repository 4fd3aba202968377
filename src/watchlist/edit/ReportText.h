#pragma once

#include <string>
#include <string_view>

namespace vx {

// A report is a text copied from a printed watchlist, told by "WatchList", "REALTIME" or "DELAYED" in it.

bool IsReport(std::string_view text);

enum class EReportLine {
    Words,  ///< Symbols and whatever else a row holds, with blanks between.
    Title,  ///< A line with "WatchList", "User:", "-- REALTIME --" or "-- DELAYED --".
    Nothing ///< An empty line, or a rule of "-" or "=".
};
/// What a line of a report is.
EReportLine ReportLineOf(std::string_view line);

/// A report becomes its words, one in a line, without titles and rules. Every other text stays as it is.
///
/// Shape   lines of the text ended in any way; those of the result by CR LF, the last word without
std::string NormalizePastedText(std::string_view text);

} // namespace vx
