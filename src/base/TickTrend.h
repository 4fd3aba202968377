#pragma once

#include <string>
#include <string_view>

namespace vx {

// A tick trend is a text of marks: up, down and unchanged. In the program's texts these are three bytes that
// Windows-1252 gives to other characters; where a trend is to be seen they are the signs below.

inline constexpr char kTickUp = '\xAD';
inline constexpr char kTickDown = '\xAF';
inline constexpr char kTickDot = '\xB7';

inline constexpr char16_t kTickUpSign = 0x25B2;   ///< A triangle.
inline constexpr char16_t kTickDownSign = 0x25BC; ///< A triangle that points down.
inline constexpr char16_t kTickDotSign = 0x2022;  ///< A bullet.

/// A trend's bytes as UTF-8 with its signs; other bytes as Utf8FromWindows1252 has them.
std::string Utf8FromTickTrend(std::string_view bytes);

} // namespace vx
