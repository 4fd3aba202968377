#include "support/Desktop.h"

#include <QApplication>
#include <QStandardPaths>
#include <QWidget>

#include <xcb/xcb.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace vx::test {

namespace {

constexpr int kStartMs = 20000;
constexpr int kProbeMs = 500;

template <typename TReply> std::unique_ptr<TReply, decltype(&std::free)> Owned(TReply* reply) {
    return {reply, &std::free};
}

std::string ReadLine(int descriptor) {
    std::string out;
    char byte = 0;
    pollfd wait{descriptor, POLLIN, 0};
    while (poll(&wait, 1, kStartMs) > 0 && read(descriptor, &byte, 1) == 1 && byte != '\n') out += byte;
    return out;
}

} // namespace

std::string CDesktop::MissingProgram(const std::string& windowManager) {
    for (const std::string& program : {std::string("Xvfb"), windowManager})
        if (!program.empty() && QStandardPaths::findExecutable(QString::fromStdString(program)).isEmpty())
            return program;
    return {};
}

CDesktop::CDesktop(const std::string& home, SOptions options) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    Start({"Xvfb", "-displayfd", std::to_string(ends[1]), "-nolisten", "tcp", "-screen", "0", options.size + "x24"});
    close(ends[1]);
    const std::string display = ":" + ReadLine(ends[0]);
    close(ends[0]);
    setenv("DISPLAY", display.c_str(), 1);
    setenv("HOME", home.c_str(), 1);
    unsetenv("WAYLAND_DISPLAY");
    m_connection = xcb_connect(display.c_str(), nullptr);
    if (xcb_connection_has_error(m_connection) != 0) throw std::runtime_error("no display " + display);
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    if (!options.windowManager.empty()) {
        Start({options.windowManager});
        AwaitWindowManager();
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("QT_SCALE_FACTOR", options.scale.c_str(), 1);
    m_application = std::make_unique<QApplication>(m_count, m_arguments);
    std::setlocale(LC_NUMERIC, "C");
}

CDesktop::~CDesktop() {
    m_application.reset();
    if (m_connection) xcb_disconnect(m_connection);
    for (auto child = m_children.rbegin(); child != m_children.rend(); ++child) {
        kill(*child, SIGKILL);
        waitpid(*child, nullptr, 0);
    }
}

void CDesktop::Start(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        if (freopen("/dev/null", "w", stdout) && freopen("/dev/null", "w", stderr))
            execvp(arguments.front(), arguments.data());
        _exit(127);
    }
    m_children.push_back(child);
}

// A window manager that is just starting loses a window now and then: it is there when a window that is to be shown is.
void CDesktop::AwaitWindowManager() {
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
    if (!managed) throw std::runtime_error("the window manager does not start");
}

uint32_t CDesktop::Atom(const char* name) const {
    const auto reply = Owned(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(std::string(name).size()), name),
        nullptr));
    return reply ? reply->atom : 0;
}

std::vector<uint32_t> CDesktop::Property(const QWidget* window, const char* name) const {
    const auto target = window ? static_cast<uint32_t>(window->winId()) : m_root;
    const auto reply = Owned(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 0, target, Atom(name), XCB_ATOM_ANY, 0, 64), nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

uint32_t CDesktop::ActiveWindow() const {
    const std::vector<uint32_t> window = Property(nullptr, "_NET_ACTIVE_WINDOW");
    return window.empty() ? 0 : window.front();
}

QRect CDesktop::Inside(const QWidget& window) const {
    const auto id = static_cast<uint32_t>(window.winId());
    const auto size = Owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, id), nullptr));
    const auto corner = Owned(xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, id, m_root, 0, 0), nullptr));
    if (!size || !corner) return {};
    return {corner->dst_x, corner->dst_y, size->width, size->height};
}

QRect CDesktop::Whole(const QWidget& window) const {
    const std::vector<uint32_t> extents = Property(&window, "_NET_FRAME_EXTENTS");
    if (extents.size() < 4) return Inside(window);
    const auto at = [&](size_t i) { return static_cast<int>(extents[i]); };
    return Inside(window).adjusted(-at(0), -at(2), at(1), at(3));
}

} // namespace vx::test
