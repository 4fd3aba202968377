// SPDX-License-Identifier: MIT
// Whatever is read as registry content is written and read back as the same content, and the writer's own text is
// what it writes again.

#include "base/RegistryFormat.h"
#include "base/Text.h"

#include <cstdlib>

using namespace vx;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::string bytes;
    if (!UnescapeBytes(EscapeBytes(text), bytes) || bytes != text) std::abort();
    const auto content = ParseRegistry(text);
    if (!content) return 0;
    const std::string written = FormatRegistry(*content);
    const auto again = ParseRegistry(written);
    if (!again || *again != *content || FormatRegistry(*again) != written) std::abort();
    return 0;
}
