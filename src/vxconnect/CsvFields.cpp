#include "vxconnect/CsvFields.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace vx::sim {

std::string ReadCsvLine(std::string_view line, char separator, std::vector<std::string>& out) {
    out.clear();
    for (size_t at = 0;; ++at) {
        std::string& value = out.emplace_back();
        if (at < line.size() && line[at] == '"') {
            for (++at;; ++at) {
                if (at >= line.size()) return fmt::format("the quote of value {} is not closed", out.size());
                if (line[at] != '"') {
                    value += line[at];
                } else if (at + 1 < line.size() && line[at + 1] == '"') {
                    value += line[++at];
                } else {
                    break;
                }
            }
            if (++at < line.size() && line[at] != separator)
                return fmt::format("value {} goes on behind its quote", out.size());
        } else {
            const size_t end = std::min(line.find(separator, at), line.size());
            value = line.substr(at, end - at);
            at = end;
        }
        if (at >= line.size()) return {};
    }
}

char CsvSeparatorOf(std::string_view header) {
    std::array<bool, 3> seen{};
    constexpr std::string_view kSeparators = ",;\t";
    bool quoted = false;
    for (const char c : header) {
        if (c == '"') quoted = !quoted;
        const size_t place = quoted ? std::string_view::npos : kSeparators.find(c);
        if (place != std::string_view::npos) seen[place] = true;
    }
    for (size_t i = 0; i < kSeparators.size(); ++i)
        if (seen[i]) return kSeparators[i];
    return kSeparators[0];
}

} // namespace vx::sim
