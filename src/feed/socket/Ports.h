// SPDX-License-Identifier: MIT
#pragma once

#include "base/Registry.h"

#include <cstdint>
#include <string_view>

namespace vx {

/// The sockets of a feed session, one for each port of the feed client. Market depth and scans are never opened here.
enum EFeedSocket { kLevel1Socket, kMarketDepthSocket, kLookupSocket, kAdminSocket, kScansSocket, kFeedSocketCount };

/// One port of the feed client as the registry names it, and its value when the registry does not say.
struct SPortSetting {
    std::string_view name;
    std::string_view defaultText;
    int defaultNumber;
};

inline constexpr SPortSetting kLevel1Port{kLevel1PortValue, "5009", 5009};
inline constexpr SPortSetting kLookupPort{kLookupPortValue, "9100", 9100};
inline constexpr SPortSetting kAdminPort{kAdminPortValue, "9300", 9300};

/// The feed client always runs on this machine.
inline constexpr const char* kFeedHost = "127.0.0.1";

/// The port numbers of the feed client, kept as texts in the registry under kStartupKey.
///
/// Thread  any
/// Source  docs/feed-protocol.md, "Ports"
class CNorvPorts {
public:
    explicit CNorvPorts(CRegistry& registry = CRegistry::CurrentUser()) : m_registry(registry) {}

    /// Reads a port. A missing value, one that is no text and one longer than 254 bytes is replaced by the default
    /// text, and the default number is returned; a text that is no number stays and reads as 0.
    ///
    /// Errors  none; a default that cannot be written is returned all the same
    uint16_t GetPort(std::string_view name, std::string_view defaultText, int defaultNumber);
    uint16_t GetPort(const SPortSetting& port) { return GetPort(port.name, port.defaultText, port.defaultNumber); }

private:
    CRegistry& m_registry;
};

} // namespace vx
