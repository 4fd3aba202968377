// The main of a test program that needs a real display with a window manager. Where there is none its tests are
// skipped.

#include "support/Display.h"

#include <QApplication>
#include <clocale>
#include <gmock/gmock.h>

#include <string_view>

using namespace vx::test;

int main(int argc, char** argv) {
    if (argc > 1 && std::string_view(argv[1]) == COtherProgram::kArgument) return COtherProgram::Run(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    CDisplay display;
    const bool starts = !testing::GTEST_FLAG(list_tests) && display.Start();
    if (!starts) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (starts) display.StartWindowManager();
    return RUN_ALL_TESTS();
}
