// SPDX-License-Identifier: MIT
// The main of every test program that drives windows: a QApplication around the tests, on the offscreen platform unless
// another one is asked for.

#include <QApplication>
#include <clocale>
#include <gmock/gmock.h>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // The application object takes the user's locale; numbers are read and written without it.
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
