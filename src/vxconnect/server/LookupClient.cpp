// SPDX-License-Identifier: MIT
#include "vxconnect/server/LookupClient.h"

#include "base/Text.h"
#include "vxconnect/common/CodeTables.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace vx::sim {

namespace {

constexpr size_t kMostResults = 500; // Of one search.
constexpr std::string_view kSyntaxError = "!SYNTAX_ERROR!,\r\n";
constexpr std::string_view kEndOfReply = "!ENDMSG!,\r\n";

std::string ListedMarketLines() {
    std::string out;
    for (const SListedMarket& market : ListedMarkets())
        out += fmt::format("{},{},{},{},{}\r\n", market.id, market.shortName, market.longName, market.groupId,
                           market.groupName);
    return out;
}

std::string SecurityTypeLines() {
    std::string out;
    for (const SSecurityType& type : SecurityTypes())
        out += fmt::format("{},{},{}\r\n", type.id, type.shortName, type.longName);
    return out;
}

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
    std::string_view text;
    char filter = 0; // 'e', 't' or none.
    std::vector<int> ids;

    bool Passes(const CSearchIndex::SResult& result) const {
        if (filter == 0) return true;
        return std::find(ids.begin(), ids.end(), filter == 'e' ? result.market : result.type) != ids.end();
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
    out.text = TrimBlanks(text);
    if (filter.empty()) return out;
    if ((filter != "e" && filter != "t") || !ReadIds(ids, out.ids)) return std::nullopt;
    out.filter = filter.front();
    return out;
}

std::string EndOf(std::string_view id) { return fmt::format("{},!ENDMSG!,\r\n", id); }

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

// Replies to requests that carry an identifier, end line included; every line begins with the identifier and, for a
// client that has set a protocol, a tag. A request that makes no sense gets an error and an end as well, since whoever
// asked waits for the end; nothing for one that lacks fields.

// "SBF,s|d,text,[e|t],[ids],identifier": symbols that begin with a text, or whose name holds it, without regard to
// case; only those of the listed markets (e) or security types (t) whose ids, separated by blanks, are given. The text
// may hold commas; a blank one finds nothing. The exact symbol comes first, the others in the directory's order.
std::optional<std::string> SearchReply(std::string_view request, CSearchIndex& index, bool tagged) {
    TakeFirst(request); // The verb.
    const auto field = TakeFirst(request);
    const auto id = TakeLast(request), ids = TakeLast(request), filter = TakeLast(request);
    if (!field || !id || !ids || !filter || id->empty()) return std::nullopt;
    const auto search = ReadSearch(*field, request, *filter, *ids);
    if (!search) return std::string(kSyntaxError) + EndOf(*id);

    std::string exact, others;
    size_t found = 0;
    const auto take = [&](const CSearchIndex::SResult& result) {
        if (!search->Passes(result)) return true;
        std::string& out = result.exact && exact.empty() ? exact : others;
        fmt::format_to(std::back_inserter(out), "{}{}{}\r\n", *id, tagged ? ",LS," : ",", result.text);
        return ++found < kMostResults;
    };
    if (!search->text.empty()) search->byName ? index.ByName(search->text, take) : index.BySymbol(search->text, take);
    return exact + others + EndOf(*id);
}

// "NSC,symbols,x,[sources],[dates],identifier": counts of today's headlines as XML, whatever day is asked for, symbols
// separated by ":". Unknown symbols are left out.
std::optional<std::string> NewsCountsReply(std::string_view request, CDirectory& directory, bool tagged) {
    constexpr size_t kPieceBytes = 1000; // Of XML in one line.
    TakeFirst(request);                  // The verb.
    const auto id = TakeLast(request), dates = TakeLast(request), sources = TakeLast(request),
               format = TakeLast(request);
    if (!id || !dates || !sources || !format || id->empty()) return std::nullopt;
    if (*format != "x") return std::string(kSyntaxError) + EndOf(*id);
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
    return out + EndOf(*id);
}

// The reply to a request, nothing for one that is not understood.
std::optional<std::string> ReplyTo(std::string_view line, CDirectory& directory, CSearchIndex& index, bool tagged) {
    if (line == "SLM") return ListedMarketLines() + std::string(kEndOfReply);
    if (line == "SST") return SecurityTypeLines() + std::string(kEndOfReply);
    if (line.starts_with("SBF,")) return SearchReply(line, index, tagged);
    if (line.starts_with("NSC,")) return NewsCountsReply(line, directory, tagged);
    return std::nullopt;
}

} // namespace

void CLookupClient::OnLine(std::string_view line) {
    if (line.starts_with("S,SET PROTOCOL,")) {
        m_tagged = true;
    } else if (!line.starts_with("S,SET CLIENT NAME,")) {
        // In one piece: a reader that looks for the end marker in each read on its own finds it whole.
        Send(ReplyTo(line, m_directory, m_index, m_tagged).value_or(std::string(kSyntaxError)));
    }
}

void CLookupClient::OnOverlongLine() { Send(kSyntaxError); }

} // namespace vx::sim
