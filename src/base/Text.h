// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
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

/// Takes the first line off a text. A line ends at CR LF, LF, CR or the end of the text.
///
/// Returns the line without its end; nothing when the text is empty
std::optional<std::string_view> TakeLine(std::string_view& text);

/// One line of a stream.
struct SStreamLine {
    uint64_t number = 0;   ///< From 1.
    std::string_view text; ///< Without line end; holds until the cutter is used again.
    bool tooLong = false;  ///< It is longer than the cutter allows: its text is only its beginning.
};

/// Cuts bytes that come in pieces into lines, which end as those of TakeLine do.
///
/// Owns    its bytes: never more than one line of the most that it allows and what was appended last
/// Thread  any
class CLineCutter {
public:
    explicit CLineCutter(size_t mostBytes = 1'048'576) : m_mostBytes(mostBytes) {}

    void Append(std::string_view bytes);
    /// No more bytes come: what is left is a line.
    void End() { m_ended = true; }
    /// The next whole line, nothing when more bytes are needed or there are none. One that is too long comes once, as
    /// soon as it is; the rest of it is passed over.
    std::optional<SStreamLine> Next();

private:
    std::optional<size_t> FindEnd();
    SStreamLine Take(size_t length);

    size_t m_mostBytes;
    std::string m_bytes;
    size_t m_begin = 0;
    size_t m_searched = 0; // From the begin; they hold no line end.
    uint64_t m_lines = 0;
    bool m_afterCr = false;  // A LF would belong to the line end before.
    bool m_skipping = false; // The rest of a line that is too long.
    bool m_ended = false;
};
/// Any bytes as printable ASCII on one line: \\ \" \t \r \n, and \xNN (two upper-case hexadecimal digits) for the other
/// bytes outside 0x20..0x7E.
std::string EscapeBytes(std::string_view bytes);

/// Takes EscapeBytes back; a byte that needs no escape is taken as it is, also from 0x80 on.
///
/// Errors  false when a backslash starts none of the escapes; out then holds what came before it
bool UnescapeBytes(std::string_view text, std::string& out);

} // namespace vx
