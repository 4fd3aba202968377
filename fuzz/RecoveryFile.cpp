// SPDX-License-Identifier: MIT
// A recovery file: what is read is written and read back the same. The hash of an input is put right first, as no input
// made at random would have the right one.

#include "watchlist/file/RecoveryFile.h"

#include "base/Hash.h"

#include <cstdint>
#include <cstdlib>
#include <fmt/format.h>

using namespace vx;

namespace {

void CheckAgreement(std::string_view text) {
    const std::optional<SRecovery> first = ParseRecovery(text);
    if (!first) return;
    const std::optional<SRecovery> again = ParseRecovery(FormatRecovery(*first));
    if (!again || again->originalPath != first->originalPath || again->knownHash != first->knownHash ||
        again->savedAt != first->savedAt || again->text != first->text)
        std::abort();
}

std::string WithRightHash(std::string text) {
    const size_t hash = text.find("\nhash "), end = text.find("\n\n", hash);
    if (end == std::string::npos) return text;
    return fmt::format("{}\nhash {:016x}{}", text.substr(0, hash), ContentHash(text.substr(end + 2)), text.substr(end));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckAgreement(text);
    CheckAgreement(WithRightHash(text));
    return 0;
}
