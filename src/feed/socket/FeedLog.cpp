// SPDX-License-Identifier: MIT
#include "feed/socket/FeedLog.h"

#include "feed/socket/Ports.h"

#include <fmt/format.h>

namespace vx {

namespace {

using enum ELogCategory;

void Note(const std::string& text) { Log(Connectivity, ELogDirection::Status, text); }

std::string_view WithoutLineEnd(std::string_view command) {
    const size_t last = command.find_last_not_of("\r\n");
    return command.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

void SFeedLog::Sent(std::string_view command, int count, int lastError) const {
    if (IsOn(request)) Log(request, ELogDirection::ToServer, WithoutLineEnd(command));
    if (count == static_cast<int>(command.size()) || !IsOn(error)) return;
    Log(error, ELogDirection::Status,
        fmt::format("{}: {} of {} bytes sent, error {}: {}", port, count < 0 ? 0 : count, command.size(), lastError,
                    WithoutLineEnd(command)));
}

void SFeedLog::Connected(std::string_view host, unsigned portNumber) const {
    if (IsOn(Connectivity)) Note(fmt::format("{}: connected to {}:{}", port, host, portNumber));
}

void SFeedLog::ConnectFailed(std::string_view host, unsigned portNumber, int lastError, uint32_t retriesLeft) const {
    if (IsOn(Connectivity))
        Note(fmt::format("{}: no connection to {}:{}, error {}, {} retries left", port, host, portNumber, lastError,
                         retriesLeft));
}

void SFeedLog::Closed(int lastError) const {
    if (IsOn(Connectivity)) Note(fmt::format("{}: connection closed, error {}", port, lastError));
}

void SFeedLog::Failed(std::string_view what) const {
    if (IsOn(error)) Log(error, ELogDirection::Status, fmt::format("{}: {}", port, what));
}

const SFeedLog& FeedLogOf(int which) {
    static constexpr SFeedLog kLevel1{"Level1", L1Data, L1Request, L1System, L1Error};
    static constexpr SFeedLog kMarketDepth{"MarketDepth", L2Data, L2Request, L2System, L2Error};
    static constexpr SFeedLog kLookup{"Lookup", LookupData, LookupRequest, LookupData, LookupError};
    static constexpr SFeedLog kAdmin{"Admin", Admin, Admin, Admin, Admin};
    static constexpr SFeedLog kScans{"Scans", Debug, Debug, Debug, Debug};
    static constexpr SFeedLog kUnknown{"Unknown", Debug, Debug, Debug, Debug};
    switch (which) {
    case kLevel1Socket:
        return kLevel1;
    case kMarketDepthSocket:
        return kMarketDepth;
    case kLookupSocket:
        return kLookup;
    case kAdminSocket:
        return kAdmin;
    case kScansSocket:
        return kScans;
    default:
        return kUnknown;
    }
}

} // namespace vx
