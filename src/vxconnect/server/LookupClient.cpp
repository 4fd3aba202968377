#include "vxconnect/server/LookupClient.h"

#include "vxconnect/common/CodeTables.h"
#include "vxconnect/server/LookupReplies.h"

#include <optional>
#include <string>

#include <fmt/format.h>

namespace vx::sim {

namespace {

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
