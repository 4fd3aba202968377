#pragma once

#include <QRect>
#include <QString>

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

class QApplication;
class QWidget;
struct xcb_connection_t;

namespace vx::test {

/// A display of its own with a window manager, and an application object on it, for as long as the object lives.
///
/// Shape   Xvfb on the first free display number; home: a folder in which the window manager finds no settings
/// Errors  MissingProgram names what is not installed; then there is neither display nor application
/// Thread  the main one; there is no other application object meanwhile
class CDesktop {
public:
    struct SOptions {
        std::string windowManager = "openbox"; ///< Empty for none.
        std::string size = "1600x1000";
        std::string scale = "1"; ///< Device pixels to a pixel.
    };

    /// What a display with this window manager needs and is not there; empty when all is.
    static std::string MissingProgram(const std::string& windowManager);

    CDesktop(const std::string& home, SOptions options);
    ~CDesktop();
    CDesktop(const CDesktop&) = delete;
    CDesktop& operator=(const CDesktop&) = delete;

    /// What the display has of a window in device pixels, whatever the toolkit makes of it: what is in the frame, and
    /// all of it.
    QRect Inside(const QWidget& window) const;
    QRect Whole(const QWidget& window) const;
    /// A property of a window that holds numbers, such as "_NET_FRAME_EXTENTS"; of the root window when it is null.
    std::vector<uint32_t> Property(const QWidget* window, const char* name) const;
    /// The window that has the keyboard by what the window manager says.
    uint32_t ActiveWindow() const;

private:
    void Start(const std::vector<std::string>& command);
    void AwaitWindowManager();
    uint32_t Atom(const char* name) const;

    std::vector<pid_t> m_children;
    xcb_connection_t* m_connection = nullptr;
    uint32_t m_root = 0;
    int m_count = 1;
    char m_name[6] = "tests";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

} // namespace vx::test
