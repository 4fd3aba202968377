#pragma once

#include <string>
#include <string_view>

namespace vx::sim {

constexpr size_t kMaxSymbol = 255;

/// Whether a text can be a symbol on the wire: 1 to kMaxSymbol bytes, no control characters, no comma.
bool IsSymbolText(std::string_view text);

/// Text of a file as Windows-1252: converted when it is UTF-8, else taken as it is.
std::string WireTextOf(std::string_view text);

/// A text as it can stand in a message: printable, not longer than 60 bytes.
std::string Shown(std::string_view text);

} // namespace vx::sim
