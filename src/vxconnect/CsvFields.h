#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// Cuts a line of CSV into its values. A value may stand in double quotes, a quote inside it is doubled; a value does
/// not go on in the next line.
///
/// Returns what is wrong with the line, empty for nothing
std::string ReadCsvLine(std::string_view line, char separator, std::vector<std::string>& out);

/// The separator of a file by its first line: the comma when there is one outside quotes, else the semicolon, else the
/// tabulator, else the comma.
char CsvSeparatorOf(std::string_view header);

} // namespace vx::sim
