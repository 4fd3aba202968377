// SPDX-License-Identifier: MIT
// The main of a test program whose cases bring a real display with a window manager along.

#include "support/Display.h"

#include <gmock/gmock.h>

#include <string_view>

int main(int argc, char** argv) {
    using vx::test::COtherProgram;
    if (argc > 1 && std::string_view(argv[1]) == COtherProgram::kArgument) return COtherProgram::Run(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
