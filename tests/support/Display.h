// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <string>

class QApplication;
class QWidget;
struct xcb_connection_t;

namespace vx::test {

/// A display of the tests' own with a window manager, a keyboard and a mouse (Xvfb and xdotool), and an application
/// object on it, for as long as the object lives.
///
/// Shape   1600 by 1000 pixels; home: a folder in which the window manager finds no settings; scale: device pixels to a
///         pixel
/// Errors  MissingProgram names what is not installed; then there is neither display nor application
/// Thread  the main one; there is no other application object meanwhile
class CDisplay {
public:
    /// openbox, or what the environment variable ZW_WINDOW_MANAGER names.
    static std::string UsualWindowManager();
    /// What a display with this window manager needs and is not there; empty when all is.
    static std::string MissingProgram(const std::string& windowManager);

    CDisplay(const std::string& home, const std::string& windowManager, const std::string& scale = "1");
    ~CDisplay();
    CDisplay(const CDisplay&) = delete;
    CDisplay& operator=(const CDisplay&) = delete;

    /// What the display has of a window in device pixels, whatever the toolkit makes of it: what is in the frame, and
    /// all of it.
    QRect Inside(const QWidget& window) const;
    QRect Whole(const QWidget& window) const;
    // The user's hands. Each call returns when what it does was sent.

    /// Keys by their names: "a Return ctrl+s".
    static void Press(const char* keys);
    static void Click(const QPoint& place);
    /// What xdotool prints; empty when it fails.
    static QString Tool(const QStringList& arguments);

private:
    void AwaitWindowManager();

    QProcess m_server, m_windowManager;
    xcb_connection_t* m_connection = nullptr;
    uint32_t m_root = 0;
    int m_count = 1;
    char m_name[6] = "tests";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

/// A window that the display takes for another program's; the toolkit does not know it.
class COtherProgram {
public:
    /// Returns with its window the active one.
    COtherProgram();
    ~COtherProgram();
    COtherProgram(const COtherProgram&) = delete;
    COtherProgram& operator=(const COtherProgram&) = delete;

    bool IsActive() const;
    /// How many keys its window has got.
    int Keys();

private:
    xcb_connection_t* m_connection;
    QString m_window; ///< As xdotool names it.
    int m_keys = 0;
};

} // namespace vx::test
