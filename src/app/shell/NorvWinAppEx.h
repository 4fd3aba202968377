#pragma once

#include "settings/ApplicationProfile.h"

#include <QApplication>

namespace vx {

class CRegistry;

/// The application object that the display programs share: the application's profile in the registry, one locale for
/// numbers, and the start in two steps.
///
/// Thread  GUI thread only
class CNorvWinAppEx : public QApplication {
public:
    /// argc and argv must outlive the application.
    CNorvWinAppEx(int& argc, char** argv, CRegistry& registry);

    /// Makes the windows; false when the program cannot start, after a message said why.
    virtual bool InitInstance() = 0;
    /// Runs the event loop until the last window closes; returns the program's exit code.
    virtual int Run();

    CRegistry& Registry() { return m_registry; }
    CApplicationProfile& Profile() { return m_profile; }

private:
    CRegistry& m_registry;
    CApplicationProfile m_profile;
};

} // namespace vx
