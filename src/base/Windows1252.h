#pragma once

#include <string>
#include <string_view>

namespace vx {

// The program's texts are single bytes in Windows-1252. These two conversions stand at its borders: widgets and file
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

} // namespace vx
