// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vx {

/// Writes the records of a text with separators between the fields.
///
/// Thread  any
class CCsvWriter {
public:
    /// lineEnd must hold as long as the writer.
    CCsvWriter(char separator, std::string_view lineEnd) : m_separator(separator), m_lineEnd(lineEnd) {}

    /// A field as it is: a number, a name of ours.
    void Plain(std::string_view text);
    /// A text without quotes; line ends and TABs in it become blanks, separators stay.
    void OneLine(std::string_view text);
    /// A text in double quotes; one that a spreadsheet would take for a formula begins with an apostrophe.
    void Quoted(std::string_view text);
    void EndRecord();

    /// The text so far; the writer begins anew.
    std::string Take();

private:
    char m_separator;
    std::string_view m_lineEnd;
    std::string m_out;
    bool m_inRecord = false;
};

} // namespace vx
