// SPDX-License-Identifier: MIT
#include "feed/socket/Ports.h"

#include "base/Number.h"

namespace vx {

namespace {

constexpr size_t kLongestText = 254; // Bytes, without the NUL that the registry counts.

} // namespace

uint16_t CNorvPorts::GetPort(std::string_view name, std::string_view defaultText, int defaultNumber) {
    if (const auto value = m_registry.Read(kStartupKey, name))
        if (value->kind == ERegistryKind::Text && value->text.size() <= kLongestText)
            return static_cast<uint16_t>(ReadInt32(value->text));
    m_registry.WriteText(kStartupKey, name, defaultText);
    return static_cast<uint16_t>(defaultNumber);
}

} // namespace vx
