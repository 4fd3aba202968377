#pragma once

#include <string>
#include <string_view>

namespace vx {

/// Any bytes as printable ASCII on one line: \\ \" \t \r \n, and \xNN (two upper-case hexadecimal digits) for the other
/// bytes outside 0x20..0x7E.
std::string EscapeBytes(std::string_view bytes);

/// Takes EscapeBytes back; a byte that needs no escape stands for itself, bytes from 0x80 on included.
///
/// Errors  false when a backslash starts none of the escapes; out then holds what came before it
bool UnescapeBytes(std::string_view text, std::string& out);

} // namespace vx
