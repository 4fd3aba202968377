// SPDX-License-Identifier: MIT
// The first byte is a kind, the rest a stored value. What the validation step lets pass is what the C library accepts,
// and its results pass again without a report.

#include "base/Number.h"
#include "settings/ValidateSetting.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

using namespace vx;

namespace {

class CCounter final : public CConfigLogger {
public:
    void Report(std::string_view) override { ++count; }
    int count = 0;
};

bool Same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

void CompareWithTheLibrary(const std::string& text) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    const bool wholeNumber = end != text.c_str() && *end == '\0';
    const auto ours = ReadWholeDouble(text);
    if (ours.has_value() != wholeNumber || (ours && !Same(*ours, number))) std::abort();

    // The library's unsigned long has 64 bits here, the step's has 32: compare where both hold the number.
    const unsigned long whole = std::strtoul(text.c_str(), &end, 0);
    const bool wholeUnsigned = end != text.c_str() && *end == '\0';
    const auto color = ReadWholeUnsigned(text);
    if (color.has_value() != wholeUnsigned) std::abort();
    const bool negative = text.find('-') != std::string::npos;
    const unsigned long magnitude = negative ? 0 - whole : whole;
    if (color && magnitude <= 0xFFFFFFFF && *color != static_cast<uint32_t>(whole)) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const int kind = data[0] % 8;
    const std::string value(reinterpret_cast<const char*>(data) + 1, size - 1);
    CCounter first, second;
    const std::string result = ValidateSetting("name", value, kind, "0", &first);
    if (kind != 3 && ValidateSetting("name", result, kind, "0", &second) != result) std::abort();
    if (first.count > 1 || second.count != 0) std::abort();
    if (first.count == 0 && result != value) std::abort();
    if (!value.empty() && value.find('\0') == std::string::npos) CompareWithTheLibrary(value);
    return 0;
}
