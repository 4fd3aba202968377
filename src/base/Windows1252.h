// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vx {

// The program's texts are single bytes in Windows-1252. These two conversions are used at its borders: widgets and file
// names. The five bytes that the code page leaves open (81 8D 8F 90 9D) map to the control characters of the same
// number and back, so that every byte survives the round trip.

/// Windows-1252 bytes to UTF-16.
std::u16string Utf16FromWindows1252(std::string_view bytes);

/// UTF-16 to Windows-1252 bytes; a character that the code page does not hold becomes "?".
std::string Windows1252FromUtf16(std::u16string_view text);

/// Windows-1252 bytes to UTF-8, for the log and the terminal.
std::string Utf8FromWindows1252(std::string_view bytes);

/// One byte to its Unicode character.
char16_t CharFromWindows1252(unsigned char byte);

/// UTF-8 bytes, as in the names of files, to Windows-1252, as in the program's texts. A character that the code page
/// does not hold, and a byte that is no UTF-8, becomes "?".
std::string Windows1252FromUtf8(std::string_view bytes);

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
