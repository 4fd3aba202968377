// SPDX-License-Identifier: MIT
// The feed client's command line, one argument a line: a value that is accepted is within its bounds, and an error is
// one printable line.

#include "Arguments.h"
#include "ServedFuzz.h"
#include "vxconnect/common/Options.h"

using namespace vx::sim;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const SOptions options = ReadOptions(vx::test::Arguments(data, size));
    if (!options.error.empty()) return 0;
    if (options.rate > kMaxRate) Fail("rate", std::to_string(options.rate));
    if (!(options.speed > 0)) Fail("speed", std::to_string(options.speed));
    return 0;
}
