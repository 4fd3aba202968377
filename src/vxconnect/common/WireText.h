// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

constexpr size_t kMaxSymbol = 255;

/// Whether a text can be a symbol on the wire: 1 to kMaxSymbol bytes, no control characters, no comma.
bool IsSymbolText(std::string_view text);

bool IsUtf8(std::string_view text);

/// Text of a file as Windows-1252: converted when it is UTF-8, else taken as it is; nothing when it holds a character
/// that Windows-1252 does not have.
std::optional<std::string> WireTextOf(std::string_view text);

/// Any text, UTF-8 or Windows-1252, as a field of a line: without commas and control characters.
std::string WireFieldOf(std::string_view text);

/// Any text, UTF-8 or Windows-1252, for a message: printable UTF-8 of at most 60 characters.
std::string Shown(std::string_view text);

} // namespace vx::sim
