#pragma once

namespace vx {

/// What the text of a setting must look like. The numbers are part of the validation step's interface.
enum class ESettingKind : int {
    Text = 0,     ///< Anything.
    FilePath = 1, ///< Anything.
    Integer = 2,  ///< An optional "-" and one or more decimal digits.
    Boolean = 3,  ///< "true" or "false".
    Number = 4,   ///< What the C library reads as a decimal number, whole.
    Color = 5,    ///< 0xRRGGBB in decimal, "0x" hexadecimal or "0" octal, at most 24 bits.
    List = 6,     ///< Anything: names with ";" between them.
};

} // namespace vx
