#include "app/shell/NorvWinAppEx.h"

#include "base/RegistryPaths.h"

#include <clocale>

namespace vx {

CNorvWinAppEx::CNorvWinAppEx(int& argc, char** argv, CRegistry& registry)
    : QApplication(argc, argv), m_registry(registry), m_profile(registry, kApplicationProfileKey) {
    // The application object takes the user's locale; a comma for a decimal point would reach files and the wire.
    std::setlocale(LC_NUMERIC, "C");
    std::setlocale(LC_TIME, "C");
}

int CNorvWinAppEx::Run() { return exec(); }

} // namespace vx
