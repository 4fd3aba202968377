#pragma once

#include <string>

namespace vx {

/// Appends a number as "%.*lf" of the C locale writes it, whole: 1e308 has 309 digits before the point, and what is no
/// number reads "nan" or "inf".
///
/// Units   places: digits after the point, 0..15
void AppendFixed(std::string& out, double value, int places = 6);

} // namespace vx
