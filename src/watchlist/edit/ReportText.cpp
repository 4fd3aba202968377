#include "watchlist/edit/ReportText.h"

#include "base/Text.h"
#include "watchlist/fileformat/TextLines.h"

#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr std::array<std::string_view, 3> kReportMarkers{"WatchList", "REALTIME", "DELAYED"};
constexpr std::array<std::string_view, 4> kTitleMarkers{"WatchList", "User:", "-- REALTIME --", "-- DELAYED --"};
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

template <size_t N> bool ContainsAny(std::string_view text, const std::array<std::string_view, N>& parts) {
    return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) { return ContainsText(text, part); });
}

std::string_view TrimmedOnTheRight(std::string_view line) {
    return line.substr(0, line.find_last_not_of(kWhiteSpace) + 1);
}

bool IsRule(std::string_view line) {
    return line.find_first_not_of("- ") == std::string_view::npos ||
           line.find_first_not_of("= ") == std::string_view::npos;
}

void AppendWords(std::string& out, std::string_view line) {
    while (!line.empty()) {
        const std::string_view word = line.substr(0, line.find(' '));
        line.remove_prefix(std::min(word.size() + 1, line.size()));
        if (word.empty()) continue;
        if (!out.empty()) out += kLineEnd;
        out += word;
    }
}

} // namespace

bool IsReport(std::string_view text) { return ContainsAny(text, kReportMarkers); }

EReportLine ReportLineOf(std::string_view line) {
    line = TrimmedOnTheRight(line);
    if (line.empty() || IsRule(line)) return EReportLine::Nothing;
    return ContainsAny(line, kTitleMarkers) ? EReportLine::Title : EReportLine::Words;
}

std::string NormalizePastedText(std::string_view text) {
    if (!IsReport(text)) return std::string(text);
    std::string out;
    for (CTextLines lines(text); lines.Next();)
        if (ReportLineOf(lines.Line()) == EReportLine::Words) AppendWords(out, TrimmedOnTheRight(lines.Line()));
    return out;
}

} // namespace vx
