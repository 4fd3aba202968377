#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace vx {

/// The parts of a news line of the level-1 connection, "N,source,story,IBM:MSFT,20240131 093000,headline".
///
/// Owns    nothing: views of the line
struct SNewsLine {
    std::string_view symbols; ///< ":" between them.
    std::string_view time;    ///< As the feed writes it.
    std::string_view headline;
};

/// Cuts a news line at its first five commas; everything behind the fifth is the headline.
///
/// Errors  nothing for a line with fewer commas
inline std::optional<SNewsLine> ReadNewsLine(std::string_view line) {
    constexpr size_t kLeadingFields = 5;
    constexpr size_t kSymbols = 3;
    constexpr size_t kTime = 4;
    std::array<std::string_view, kLeadingFields> fields;
    for (std::string_view& field : fields) {
        const size_t comma = line.find(',');
        if (comma == std::string_view::npos) return std::nullopt;
        field = line.substr(0, comma);
        line.remove_prefix(comma + 1);
    }
    return SNewsLine{fields[kSymbols], fields[kTime], line};
}

} // namespace vx
