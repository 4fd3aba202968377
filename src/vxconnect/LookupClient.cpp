#include "vxconnect/LookupClient.h"

#include "vxconnect/CodeTables.h"

#include <array>
#include <string>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr std::string_view kEndOfReply = "!ENDMSG!,\r\n";
constexpr std::string_view kSyntaxError = "!SYNTAX_ERROR!,\r\n";

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

struct SRequest {
    std::string_view verb;
    std::string (*lines)();
};
constexpr std::array<SRequest, 2> kRequests = {{{"SLM", ListedMarketLines}, {"SST", SecurityTypeLines}}};

} // namespace

void CLookupClient::OnLine(std::string_view line) {
    if (line.substr(0, 15) == "S,SET PROTOCOL," || line.substr(0, 18) == "S,SET CLIENT NAME,") return;
    for (const SRequest& request : kRequests) {
        if (line != request.verb) continue;
        // In one piece: a reader that looks for the end marker in each read on its own finds it whole.
        return Send(request.lines() + std::string(kEndOfReply));
    }
    Send(kSyntaxError);
}

void CLookupClient::OnOverlongLine() { Send(kSyntaxError); }

} // namespace vx::sim
