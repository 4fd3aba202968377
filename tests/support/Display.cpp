// SPDX-License-Identifier: MIT
#include "support/Display.h"

#include "support/EventLoop.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStandardPaths>
#include <QWidget>

#include <xcb/xcb.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>

namespace vx::test {

namespace {

constexpr int kStartMs = 20'000;
constexpr int kProbeMs = 500;

[[maybe_unused]] const bool kOwnApplications = g_testsMakeApplications = true;

template <typename TReply> std::unique_ptr<TReply, decltype(&std::free)> Owned(TReply* reply) {
    return {reply, &std::free};
}

/// Says each key on standard output: printable ones as they are, others by their number in angle brackets.
class CKeyTeller : public QWidget {
protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QString text = event->text();
        if (text.size() == 1 && text.front().isPrint())
            std::fputs(text.toUtf8().constData(), stdout);
        else
            std::printf("<%x>", static_cast<unsigned>(event->key()));
        std::fflush(stdout);
    }
};

} // namespace

std::string CDisplay::UsualWindowManager() {
    return qEnvironmentVariable("ZW_WINDOW_MANAGER", QStringLiteral("openbox")).toStdString();
}

std::string CDisplay::MissingProgram(const std::string& windowManager) {
    for (const std::string& program : {std::string("Xvfb"), std::string("xdotool"), windowManager})
        if (QStandardPaths::findExecutable(QString::fromStdString(program)).isEmpty()) return program;
    return {};
}

CDisplay::CDisplay(const std::string& home, const std::string& windowManager, const std::string& scale) {
    for (QProcess* process : {&m_server, &m_windowManager})
        process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1600x1000x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    while (!m_server.canReadLine())
        if (!m_server.waitForReadyRead(kStartMs)) throw std::runtime_error("the display does not start");
    const QByteArray display = ":" + m_server.readLine().trimmed();
    qputenv("DISPLAY", display);
    qputenv("HOME", home.c_str());
    qunsetenv("WAYLAND_DISPLAY");
    m_connection = xcb_connect(display.constData(), nullptr);
    if (xcb_connection_has_error(m_connection) != 0) throw std::runtime_error("no display");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_windowManager.start(QString::fromStdString(windowManager), QStringList());
    AwaitWindowManager();
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_SCALE_FACTOR", scale.c_str());
    m_application = std::make_unique<QApplication>(m_count, m_arguments);
    std::setlocale(LC_NUMERIC, "C");
}

CDisplay::~CDisplay() {
    m_application.reset();
    if (m_connection) xcb_disconnect(m_connection);
    for (QProcess* process : {&m_windowManager, &m_server}) {
        process->kill();
        process->waitForFinished(kStartMs);
    }
}

// A window manager that is just starting loses a window now and then: it is there when a window that is to be shown is.
void CDisplay::AwaitWindowManager() {
    const uint32_t probe = xcb_generate_id(m_connection);
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, probe, m_root, 0, 0, 50, 50, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
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

std::vector<uint32_t> CDisplay::Property(uint32_t window, const char* name) const {
    const auto length = static_cast<uint16_t>(std::string(name).size());
    const auto atom =
        Owned(xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, 0, length, name), nullptr));
    const auto reply = Owned(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 0, window, atom ? atom->atom : 0, XCB_ATOM_ANY, 0, 64), nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

uint32_t CDisplay::ActiveWindow() const {
    const std::vector<uint32_t> window = Property(m_root, "_NET_ACTIVE_WINDOW");
    return window.empty() ? 0 : window.front();
}

QRect CDisplay::Inside(const QWidget& window) const {
    const auto id = static_cast<uint32_t>(window.winId());
    const auto size = Owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, id), nullptr));
    const auto corner = Owned(xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, id, m_root, 0, 0), nullptr));
    if (!size || !corner) return {};
    return {corner->dst_x, corner->dst_y, size->width, size->height};
}

QRect CDisplay::Whole(const QWidget& window) const {
    const std::vector<uint32_t> extents = Property(static_cast<uint32_t>(window.winId()), "_NET_FRAME_EXTENTS");
    if (extents.size() < 4) return Inside(window);
    const auto at = [&](size_t i) { return static_cast<int>(extents[i]); };
    return Inside(window).adjusted(-at(0), -at(2), at(1), at(3));
}

QString CDisplay::Tool(const QStringList& arguments) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), arguments);
    if (!tool.waitForFinished(kStartMs) || tool.exitCode() != 0) return {};
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

void CDisplay::Press(const QString& key) { Tool({QStringLiteral("key"), key}); }

void CDisplay::Type(const QString& text) {
    Tool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("12"), text});
}

void CDisplay::Click(const QPoint& place) {
    Tool(QStringLiteral("mousemove %1 %2 click 1").arg(place.x()).arg(place.y()).split(QLatin1Char(' ')));
}

// In small moves, as a hand makes them: a window manager begins to drag with the first.
void CDisplay::Drag(const QPoint& from, const QPoint& to) {
    const auto move = [](const QPoint& place) {
        Tool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())});
    };
    move(from);
    Tool({QStringLiteral("mousedown"), QStringLiteral("1")});
    for (const QPoint& place : {from + (to - from) / 4, (from + to) / 2, to}) move(place);
    Tool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

COtherProgram::COtherProgram() {
    m_process.start(QStringLiteral("/proc/self/exe"), {QString::fromLatin1(kArgument)});
    m_process.waitForReadyRead(kStartMs);
    m_window = QString::fromLatin1(m_process.readLine()).trimmed();
    CDisplay::Tool({QStringLiteral("windowactivate"), QStringLiteral("--sync"), m_window});
    EXPECT_TRUE(WaitUntil([] { return !QApplication::activeWindow(); }))
        << "the other program does not get the keyboard";
}

COtherProgram::~COtherProgram() {
    m_process.kill();
    m_process.waitForFinished();
}

bool COtherProgram::IsActive() { return CDisplay::Tool({QStringLiteral("getactivewindow")}) == m_window; }

QString COtherProgram::Keys() {
    m_process.waitForReadyRead(0);
    return m_keys += QString::fromUtf8(m_process.readAllStandardOutput());
}

int COtherProgram::Run(int argc, char** argv) {
    const QApplication app(argc, argv);
    CKeyTeller window;
    window.setWindowTitle(QStringLiteral("another program"));
    window.setGeometry(40, 600, 300, 200);
    window.show();
    std::printf("%llu\n", static_cast<unsigned long long>(window.winId()));
    std::fflush(stdout);
    return QApplication::exec();
}

} // namespace vx::test
