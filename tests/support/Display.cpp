#include "support/Display.h"

#include "support/EventLoop.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStandardPaths>
#include <QWidget>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>

namespace vx::test {

namespace {

constexpr int kStartMs = 10'000;

QString WindowManager() { return qEnvironmentVariable("ZW_WINDOW_MANAGER", QStringLiteral("openbox")); }

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

bool CDisplay::IsInstalled() {
    const QString programs[] = {QStringLiteral("Xvfb"), WindowManager(), QStringLiteral("xdotool")};
    return std::ranges::none_of(
        programs, [](const QString& program) { return QStandardPaths::findExecutable(program).isEmpty(); });
}

bool CDisplay::Start() {
    if (!IsInstalled()) return false;
    for (QProcess* process : {&m_server, &m_windowManager})
        process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1600x1000x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    while (!m_server.canReadLine())
        if (!m_server.waitForReadyRead(kStartMs)) return false;
    qputenv("DISPLAY", ":" + m_server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("WAYLAND_DISPLAY");
    return true;
}

// One that is just starting loses a window now and then: it is there when a new window gets the keyboard.
void CDisplay::StartWindowManager() {
    constexpr int kTryMs = 1000;
    m_windowManager.start(WindowManager(), QStringList());
    for (int tries = kStartMs / kTryMs; tries > 0 && !s_up; --tries) {
        QWidget probe;
        probe.show();
        s_up = WaitUntil([&] { return probe.isActiveWindow(); }, kTryMs) &&
               !Tool({QStringLiteral("getactivewindow")}).isEmpty();
    }
}

CDisplay::~CDisplay() {
    for (QProcess* process : {&m_windowManager, &m_server}) {
        process->terminate();
        if (!process->waitForFinished(kStartMs)) process->kill();
    }
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
    Tool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()), QStringLiteral("click"),
          QStringLiteral("1")});
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
    m_process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(kArgument)});
    m_process.waitForReadyRead(kStartMs);
    m_window = QString::fromLatin1(m_process.readLine()).trimmed();
    Activate();
}

COtherProgram::~COtherProgram() {
    m_process.kill();
    m_process.waitForFinished();
}

void COtherProgram::Activate() {
    CDisplay::Tool({QStringLiteral("windowactivate"), QStringLiteral("--sync"), m_window});
    EXPECT_TRUE(WaitUntil([&] { return !QApplication::activeWindow(); }))
        << "the other program does not get the keyboard";
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
