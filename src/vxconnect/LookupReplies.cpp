#include "vxconnect/LookupReplies.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <vector>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr std::string_view kEnd = "!ENDMSG!,\r\n";

// Cuts the text behind the last comma off; nothing when there is no comma.
std::optional<std::string_view> TakeLast(std::string_view& text) {
    const size_t comma = text.rfind(',');
    if (comma == std::string_view::npos) return std::nullopt;
    const std::string_view last = text.substr(comma + 1);
    text = text.substr(0, comma);
    return last;
}

std::optional<std::string_view> TakeFirst(std::string_view& text) {
    const size_t comma = text.find(',');
    if (comma == std::string_view::npos) return std::nullopt;
    const std::string_view first = text.substr(0, comma);
    text.remove_prefix(comma + 1);
    return first;
}

struct SSearch {
    bool byName = false;
    std::string text; // Upper case.
    char filter = 0;  // 'e', 't' or none.
    std::vector<int> ids;

    bool Passes(const SDirectoryEntry& entry) const {
        if (filter == 0) return true;
        return std::find(ids.begin(), ids.end(), filter == 'e' ? entry.market : entry.type) != ids.end();
    }
    bool Matches(const SDirectoryEntry& entry) const {
        if (byName) return UpperAscii(entry.name).find(text) != std::string::npos;
        return entry.symbol.size() >= text.size() && CompareNoCase(entry.symbol.substr(0, text.size()), text) == 0;
    }
};

bool ReadIds(std::string_view text, std::vector<int>& out) {
    for (const std::string_view piece : SplitCountingTail(text, ' ')) {
        if (piece.empty()) continue;
        int id = 0;
        const auto [end, status] = std::from_chars(piece.data(), piece.data() + piece.size(), id);
        if (status != std::errc() || end != piece.data() + piece.size()) return false;
        out.push_back(id);
    }
    return !out.empty();
}

std::optional<SSearch> ReadSearch(std::string_view field, std::string_view text, std::string_view filter,
                                  std::string_view ids) {
    SSearch out;
    if (field != "s" && field != "d") return std::nullopt;
    out.byName = field == "d";
    out.text = UpperAscii(TrimBlanks(text));
    if (out.text.empty()) return std::nullopt;
    if (filter.empty()) return out;
    if ((filter != "e" && filter != "t") || !ReadIds(ids, out.ids)) return std::nullopt;
    out.filter = filter.front();
    return out;
}

// No field of the reply may hold a comma.
std::string WithoutCommas(std::string_view text) {
    std::string out(text);
    std::replace(out.begin(), out.end(), ',', ' ');
    return out;
}

std::string EscapedXml(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

} // namespace

std::optional<std::string> SearchReply(std::string_view request, const CDirectory& directory, bool tagged) {
    TakeFirst(request); // The verb.
    const auto field = TakeFirst(request);
    const auto id = TakeLast(request), ids = TakeLast(request), filter = TakeLast(request);
    if (!field || !id || !ids || !filter || id->empty()) return std::nullopt;
    const auto search = ReadSearch(*field, request, *filter, *ids);
    if (!search) return std::nullopt;

    std::string exact, others;
    size_t found = 0;
    directory.ForEachSymbol([&](const SDirectoryEntry& entry) {
        if (!search->Matches(entry) || !search->Passes(entry)) return true;
        const bool isExact = !search->byName && entry.symbol.size() == search->text.size() && exact.empty();
        fmt::format_to(std::back_inserter(isExact ? exact : others), "{}{}{},{},{},{},\r\n", *id, tagged ? ",LS," : ",",
                       entry.symbol, entry.market, entry.type, WithoutCommas(entry.name));
        return ++found < kMostResults;
    });
    return exact + others + fmt::format("{},{}", *id, kEnd);
}

std::optional<std::string> NewsCountsReply(std::string_view request, CDirectory& directory, bool tagged) {
    constexpr size_t kPieceBytes = 1000; // Of XML in one line.
    TakeFirst(request);
    const auto id = TakeLast(request), dates = TakeLast(request), sources = TakeLast(request),
               format = TakeLast(request);
    if (!id || !dates || !sources || format != "x" || id->empty()) return std::nullopt;
    const std::string beginning = fmt::format("{}{}", *id, tagged ? ",LN," : ",");
    std::string out, piece = "<NewsCounts>";
    const auto send = [&] {
        out += beginning + piece + "\r\n";
        piece.clear();
    };
    for (const std::string_view symbol : SplitCountingTail(request, ':')) {
        const auto count = symbol.empty() ? std::nullopt : directory.StoryCount(symbol);
        if (!count) continue;
        piece += fmt::format("<symbol Name=\"{}\" StoryCount=\"{}\"/>", EscapedXml(symbol), *count);
        if (piece.size() > kPieceBytes) send();
    }
    piece += "</NewsCounts>";
    send();
    return out + fmt::format("{},{}", *id, kEnd);
}

} // namespace vx::sim
