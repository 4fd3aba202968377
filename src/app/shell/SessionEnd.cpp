// SPDX-License-Identifier: MIT
#include "app/shell/SessionEnd.h"

#include "app/shell/MainFrame.h"
#include "base/Log.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QThread>

#include <fmt/format.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace vx {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
// What a shell reports for a program that a signal ended.
constexpr int kExitOfSignal = 128;

volatile sig_atomic_t g_wakeEnd = -1;
// There while the window is: when exit() is called then, nobody came from main().
CSessionEnd* g_session = nullptr;

extern "C" void OnEndSignal(int signal) {
    const int saved = errno;
    const auto byte = static_cast<unsigned char>(signal);
    // A full pipe holds a signal already.
    if (g_wakeEnd >= 0) [[maybe_unused]]
        const ssize_t ignored = write(g_wakeEnd, &byte, 1);
    errno = saved;
}

} // namespace

CSessionEnd::CSessionEnd(CMainFrame& frame) : QObject(&frame), m_frame(frame), m_recovery(&frame.Recovery()) {
    [[maybe_unused]] static const int registered = std::atexit(AtExit);
    g_session = this;
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { Leave(); });
    if (pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
    auto* notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &CSessionEnd::OnSignal);
    g_wakeEnd = m_pipe[1];
    for (const int signal : kSignals) {
        struct sigaction before {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = OnEndSignal;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(signal, &action, nullptr);
    }
}

CSessionEnd::~CSessionEnd() {
    g_session = nullptr;
    g_wakeEnd = -1;
    for (const int end : m_pipe)
        if (end >= 0) close(end);
}

void CSessionEnd::AtExit() {
    CSessionEnd* session = std::exchange(g_session, nullptr);
    if (!session || !session->m_recovery || QThread::currentThread() != session->thread()) return;
    LogInformation("The display is lost: the program ends.");
    session->m_recovery->KeepNow();
}

void CSessionEnd::OnSignal() {
    unsigned char signal = 0;
    if (read(m_pipe[0], &signal, 1) != 1) return;
    LogInformation(fmt::format("Signal {}: the program ends.", signal));
    Leave();
    QCoreApplication::exit(kExitOfSignal + signal);
}

void CSessionEnd::Leave() {
    m_recovery->KeepNow();
    m_frame.StorePlacement();
}

} // namespace vx
