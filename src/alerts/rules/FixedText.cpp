#include "alerts/rules/FixedText.h"

#include "data/record/NumberText.h"

#include <array>

namespace vx {

void AppendFixed(std::string& out, double value, int places) {
    std::array<char, 1 + 309 + 1 + 15> text; // Sign, digits of the greatest double, point, places.
    out.append(text.data(), WriteFixed(value, places, false, text));
}

} // namespace vx
