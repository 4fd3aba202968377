// SPDX-License-Identifier: MIT
#pragma once

#include "support/EventLoop.h"

#include <QApplication>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <xcb/xcb.h>

#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>

namespace vx::test {

inline constexpr int kStartMs = 20'000;
inline constexpr int kProbeMs = 500;

inline const bool kOwnApplications = g_testsMakeApplications = true;

template <typename TReply> std::unique_ptr<TReply, decltype(&std::free)> Owned(TReply* reply) {
    return {reply, &std::free};
}

inline uint32_t RootOf(xcb_connection_t* connection) {
    if (xcb_connection_has_error(connection) != 0) throw std::runtime_error("no display");
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

inline uint32_t NewWindow(xcb_connection_t* connection, uint32_t events) {
    const uint32_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, RootOf(connection), 40, 600, 50, 50, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_map_window(connection, window);
    xcb_flush(connection);
    return window;
}

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
    static std::string UsualWindowManager() {
        return qEnvironmentVariable("ZW_WINDOW_MANAGER", QStringLiteral("openbox")).toStdString();
    }
    /// What a display with this window manager needs and is not there; empty when all is.
    static std::string MissingProgram(const std::string& windowManager) {
        for (const std::string& program : {std::string("Xvfb"), std::string("xdotool"), windowManager})
            if (QStandardPaths::findExecutable(QString::fromStdString(program)).isEmpty()) return program;
        return {};
    }

    CDisplay(const std::string& home, const std::string& windowManager, const std::string& scale = "1") {
        for (QProcess* process : {&m_server, &m_windowManager})
            process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
        m_server.start(QStringLiteral("Xvfb"),
                       {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                        QStringLiteral("0"), QStringLiteral("1600x1000x24"), QStringLiteral("-nolisten"),
                        QStringLiteral("tcp")});
        while (!m_server.canReadLine())
            if (!m_server.waitForReadyRead(kStartMs)) throw std::runtime_error("the display does not start");
        const QByteArray display = ":" + m_server.readLine().trimmed();
        qputenv("DISPLAY", display);
        qputenv("HOME", home.c_str());
        qunsetenv("WAYLAND_DISPLAY");
        m_connection = xcb_connect(display.constData(), nullptr);
        m_root = RootOf(m_connection);
        m_windowManager.start(QString::fromStdString(windowManager), QStringList());
        AwaitWindowManager();
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("QT_SCALE_FACTOR", scale.c_str());
        m_application = std::make_unique<QApplication>(m_count, m_arguments);
        std::setlocale(LC_NUMERIC, "C");
    }
    ~CDisplay() {
        m_application.reset();
        if (m_connection) xcb_disconnect(m_connection);
        for (QProcess* process : {&m_windowManager, &m_server}) {
            process->kill();
            process->waitForFinished(kStartMs);
        }
    }
    CDisplay(const CDisplay&) = delete;
    CDisplay& operator=(const CDisplay&) = delete;

    /// What the display has of a window in device pixels, whatever the toolkit makes of it: what is in the frame, and
    /// all of it.
    QRect Inside(const QWidget& window) const {
        const auto id = static_cast<uint32_t>(window.winId());
        const auto size = Owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, id), nullptr));
        const auto corner = Owned(xcb_translate_coordinates_reply(
            m_connection, xcb_translate_coordinates(m_connection, id, m_root, 0, 0), nullptr));
        if (!size || !corner) return {};
        return {corner->dst_x, corner->dst_y, size->width, size->height};
    }
    QRect Whole(const QWidget& window) const {
        const std::string name = "_NET_FRAME_EXTENTS";
        const auto asked = xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.c_str());
        const auto atom = Owned(xcb_intern_atom_reply(m_connection, asked, nullptr));
        const auto id = static_cast<uint32_t>(window.winId());
        const auto reply = Owned(xcb_get_property_reply(
            m_connection, xcb_get_property(m_connection, 0, id, atom ? atom->atom : 0, XCB_ATOM_ANY, 0, 4), nullptr));
        if (!reply || reply->format != 32 || reply->value_len < 4) return Inside(window);
        const auto* px = static_cast<const int*>(xcb_get_property_value(reply.get())); // Left, right, top, bottom.
        return Inside(window).adjusted(-px[0], -px[2], px[1], px[3]);
    }
    // The user's hands. Each call returns when what it does was sent.

    /// Keys by their names: "a Return ctrl+s".
    static void Press(const char* keys) {
        Tool(QStringLiteral("key --delay 12 %1").arg(QString::fromLatin1(keys)).split(QLatin1Char(' ')));
    }
    static void Click(const QPoint& place) {
        Tool(QStringLiteral("mousemove %1 %2 click 1").arg(place.x()).arg(place.y()).split(QLatin1Char(' ')));
    }
    /// What xdotool prints; empty when it fails.
    static QString Tool(const QStringList& arguments) {
        QProcess tool;
        tool.start(QStringLiteral("xdotool"), arguments);
        if (!tool.waitForFinished(kStartMs) || tool.exitCode() != 0) return {};
        return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
    }

private:
    void AwaitWindowManager() {
        const uint32_t probe = NewWindow(m_connection, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        bool managed = false;
        for (int tries = kStartMs / kProbeMs; !managed && tries > 0; --tries) {
            xcb_unmap_window(m_connection, probe);
            xcb_map_window(m_connection, probe);
            xcb_flush(m_connection);
            pollfd wait{xcb_get_file_descriptor(m_connection), POLLIN, 0};
            while (!managed && xcb_connection_has_error(m_connection) == 0 && poll(&wait, 1, kProbeMs) > 0)
                while (const auto event = Owned(xcb_poll_for_event(m_connection)))
                    managed |= event->response_type == XCB_REPARENT_NOTIFY;
        }
        xcb_destroy_window(m_connection, probe);
        xcb_flush(m_connection);
        if (!managed) throw std::runtime_error("the window manager does not start");
    }

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
    COtherProgram() : m_connection(xcb_connect(nullptr, nullptr)) {
        m_window = QString::number(NewWindow(m_connection, XCB_EVENT_MASK_KEY_PRESS));
        CDisplay::Tool({QStringLiteral("windowactivate"), QStringLiteral("--sync"), m_window});
        EXPECT_TRUE(WaitUntil([] { return !QApplication::activeWindow(); }))
            << "the other program does not get the keyboard";
    }
    ~COtherProgram() { xcb_disconnect(m_connection); }
    COtherProgram(const COtherProgram&) = delete;
    COtherProgram& operator=(const COtherProgram&) = delete;

    bool IsActive() const { return CDisplay::Tool({QStringLiteral("getactivewindow")}) == m_window; }
    /// How many keys its window has got.
    int Keys() {
        while (const auto event = Owned(xcb_poll_for_event(m_connection)))
            m_keys += (event->response_type & 0x7F) == XCB_KEY_PRESS ? 1 : 0;
        return m_keys;
    }

private:
    xcb_connection_t* m_connection;
    QString m_window; ///< As xdotool names it.
    int m_keys = 0;
};

} // namespace vx::test
