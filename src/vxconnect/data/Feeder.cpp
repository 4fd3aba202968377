#include "vxconnect/data/Feeder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>

#include <fmt/format.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace vx::sim {

namespace {

// The process group of the command, for the handlers of signals that end this program.
std::atomic<pid_t> g_group = 0;
static_assert(std::atomic<pid_t>::is_always_lock_free);

void EndWithFeeder(int signal) {
    if (const pid_t group = g_group) kill(-group, SIGTERM);
    std::signal(signal, SIG_DFL);
    raise(signal);
}

} // namespace

int CGrowingPause::After(int64_t ranMs) {
    if (ranMs >= kSteadyMs) m_nextMs = m_firstMs;
    const int pause = m_nextMs;
    m_nextMs = std::min(kMostMs, m_nextMs * 2);
    return pause;
}

CFeeder::CFeeder(const std::string& command, int firstPauseMs) : m_pause(firstPauseMs) {
    m_process.setProgram(QStringLiteral("/bin/sh"));
    m_process.setArguments({QStringLiteral("-c"), QString::fromLocal8Bit(command.c_str())});
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([] {
        setpgid(0, 0); // A group of its own, so that everything it starts can be ended with it.
        prctl(PR_SET_PDEATHSIG, SIGTERM);
    });
    m_again.setSingleShot(true);
    connect(&m_again, &QTimer::timeout, this, [this] { Run(); });
    connect(&m_process, &QProcess::readyReadStandardOutput, this, [this] { Read(); });
    connect(&m_process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        Ended(status == QProcess::NormalExit ? fmt::format("ended with status {}", code) : "was killed");
    });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Ended(fmt::format("could not be started: {}", m_process.errorString().toStdString()));
    });
}

CFeeder::~CFeeder() {
    constexpr int kPatienceMs = 500;
    m_process.disconnect(this);
    const pid_t group = g_group.exchange(0);
    if (group == 0) return;
    kill(-group, SIGTERM);
    kill(-group, SIGCONT);
    if (!m_process.waitForFinished(kPatienceMs)) kill(-group, SIGKILL);
    m_process.waitForFinished(kPatienceMs);
}

std::string CFeeder::Open() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (std::signal(signal, EndWithFeeder) == SIG_IGN) std::signal(signal, SIG_IGN);
    m_again.start(0);
    return {};
}

void CFeeder::Run() {
    m_ran.start();
    m_process.start();
    g_group = static_cast<pid_t>(m_process.processId());
}

void CFeeder::Read() {
    constexpr qint64 kBlock = 64 * 1024;
    std::array<char, kBlock> block;
    for (qint64 count = 0; (count = m_process.read(block.data(), kBlock)) > 0;)
        OnBytes({block.data(), static_cast<size_t>(count)});
}

void CFeeder::Ended(const std::string& how) {
    Read();
    if (const pid_t group = g_group.exchange(0)) kill(-group, SIGTERM); // Whatever it started and left running.
    const int pauseMs = m_pause.After(m_ran.elapsed());
    m_again.start(pauseMs);
    OnEnd(fmt::format("{}; restarting in {} s", how, pauseMs / 1000.0));
}

} // namespace vx::sim
