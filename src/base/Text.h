#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// Removes blanks (0x20 only) from both ends.
std::string_view TrimBlanks(std::string_view text);

/// Makes ASCII letters upper case; every other byte, 0x80 and above included, stays.
std::string UpperAscii(std::string_view text);

/// Makes ASCII letters lower case; every other byte stays.
std::string LowerAscii(std::string_view text);

/// Compares two texts without regard to ASCII case: <0, 0, >0, bytes compared as unsigned.
int CompareNoCase(std::string_view a, std::string_view b);

bool ContainsText(std::string_view text, std::string_view part);

/// Cuts a line at a separator; every text between two separators is a field, even an empty one, and the text after
/// the last separator is a field only when it is not empty.
///
/// Shape   "S,STATS,,x" -> 4 fields; "a,b," -> 2 fields; "" -> none
/// Owns    nothing: the views point into the line
std::vector<std::string_view> SplitCountingTail(std::string_view line, char separator);

/// Cuts a line into the fields that a separator ends; text after the last separator is dropped.
///
/// Shape   "a,b," -> 2 fields; "a,b" -> 1 field; "" -> none
/// Owns    nothing: the views point into the line
std::vector<std::string_view> SplitTerminated(std::string_view line, char separator);

/// Any bytes as printable ASCII on one line: \\ \" \t \r \n, and \xNN (two upper-case hexadecimal digits) for the other
/// bytes outside 0x20..0x7E.
std::string EscapeBytes(std::string_view bytes);

/// Takes EscapeBytes back; a byte that needs no escape is taken as it is, also from 0x80 on.
///
/// Errors  false when a backslash starts none of the escapes; out then holds what came before it
bool UnescapeBytes(std::string_view text, std::string& out);

} // namespace vx
