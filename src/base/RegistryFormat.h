// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

enum class ERegistryKind { Text, Dword };

/// One value of the registry: a text of any bytes or a 32-bit number; the member of the other kind is empty or 0.
struct SRegistryValue {
    ERegistryKind kind = ERegistryKind::Text;
    std::string text;
    uint32_t dword = 0;

    bool operator==(const SRegistryValue& other) const {
        return kind == other.kind && text == other.text && dword == other.dword;
    }
};

/// Orders names without regard to ASCII case, as keys and value names are found.
struct SNameLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return CompareNoCase(a, b) < 0; }
};

using RegistryKey = std::map<std::string, SRegistryValue, SNameLess>;
/// Every key with its values, by normalized path; ancestors of a key need no entry of their own.
using RegistryContent = std::map<std::string, RegistryKey, SNameLess>;

/// The one spelling of a key path that has no backslash at its ends and no two in a row.
std::string NormalizeRegistryKey(std::string_view key);

/// Registry content as the text of its file.
///
/// Shape   keys and values sorted by name; only printable ASCII bytes and line feeds
/// Source  docs/settings.md, "The file"
std::string FormatRegistry(const RegistryContent& content);

/// Reads the text of a registry file.
///
/// Errors  nothing when any line is not understood or the closing line is missing; damage is then set to one sentence
///         that names the line
/// Source  docs/settings.md, "The file"
std::optional<RegistryContent> ParseRegistry(std::string_view text, std::string* damage = nullptr);

} // namespace vx
