#pragma once

#include <QPoint>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace vx::test {

/// A display of the tests' own with a window manager, a keyboard and a mouse: Xvfb, openbox and xdotool. The
/// environment variable ZW_WINDOW_MANAGER names another window manager.
///
/// Owns    the programs, which end with it
class CDisplay {
public:
    static bool IsInstalled();
    /// Starts the server and makes its display that of this process, before the application object is made; false when
    /// it does not start.
    bool Start();
    /// Starts the window manager, and returns when it manages windows, after the application object was made.
    void StartWindowManager();
    static bool IsUp() { return s_up; }
    ~CDisplay();

    // The user's hands. Each call returns when what it does was sent.

    /// A key by its name: "Return", "ctrl+s", "a".
    static void Press(const QString& key);
    static void Type(const QString& text);
    static void Click(const QPoint& place);
    static void Drag(const QPoint& from, const QPoint& to);
    /// What xdotool prints; empty when it fails.
    static QString Tool(const QStringList& arguments);

private:
    QProcess m_server;
    QProcess m_windowManager;
    static inline bool s_up = false;
};

/// Another program with a window, in a process of its own: tells each key that its window gets.
///
/// Shape   the test program started anew with the argument of this name; its main calls Run then
class COtherProgram {
public:
    static constexpr const char* kArgument = "--other-program";

    /// Returns with its window the active one.
    COtherProgram();
    ~COtherProgram();
    void Activate();
    bool IsActive();
    /// The texts of all keys so far.
    QString Keys();

    static int Run(int argc, char** argv);

private:
    QProcess m_process;
    QString m_window; ///< As xdotool names it.
    QString m_keys;
};

} // namespace vx::test
