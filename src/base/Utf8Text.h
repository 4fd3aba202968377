#pragma once

#include <string>
#include <string_view>

namespace vx {

/// UTF-8 bytes, as in the names of files, to Windows-1252, as in the program's texts. A character that the code page
/// does not hold, and a byte that is no UTF-8, becomes "?".
std::string Windows1252FromUtf8(std::string_view bytes);

} // namespace vx
