// SPDX-License-Identifier: MIT
#include "vxconnect/data/ByteStreams.h"

#include "vxconnect/common/WireText.h"

#include <QElapsedTimer>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vx::sim {

void CDescriptorStream::Follow(int descriptor) {
    m_readable.reset();
    m_descriptor = descriptor;
    if (descriptor < 0) return;
    m_readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(m_readable.get(), &QSocketNotifier::activated, this, [this] { Read(); });
}

void CDescriptorStream::Read() {
    constexpr size_t kBlock = 64 * 1024;
    std::array<char, kBlock> block;
    const ssize_t count = read(m_descriptor, block.data(), block.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count > 0) return OnBytes({block.data(), static_cast<size_t>(count)});
    Ended(count < 0 ? errno : 0);
}

std::string CStandardInput::Open() {
    constexpr int kMomentMs = 50, kMostMs = 1000;
    Follow(m_input);
    QElapsedTimer elapsed;
    elapsed.start();
    pollfd ready{m_input, POLLIN, 0};
    while (Descriptor() >= 0 && elapsed.elapsed() < kMostMs && poll(&ready, 1, kMomentMs) > 0) Read();
    return {};
}

void CStandardInput::Ended(int error) {
    Follow(-1);
    OnEnd(error != 0 ? std::strerror(error) : "has ended");
}

CNamedPipe::CNamedPipe(std::string path) : m_path(std::move(path)) {
    constexpr int kLookMs = 1000;
    m_look.setInterval(kLookMs);
    connect(&m_look, &QTimer::timeout, this, [this] { LookForAnother(); });
}

CNamedPipe::~CNamedPipe() { Close(); }

void CNamedPipe::Close() {
    const int descriptor = Descriptor();
    Follow(-1);
    if (descriptor >= 0) close(descriptor);
}

std::string CNamedPipe::Name() const { return Shown(m_path); }

std::string CNamedPipe::Open() {
    m_look.start();
    return Reopen() < 0 ? std::strerror(errno) : "";
}

// Opens the new one before it closes the old one, so that a writer always finds a reader.
int CNamedPipe::Reopen() {
    const int before = Descriptor();
    const int descriptor = open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return descriptor;
    Follow(descriptor);
    if (before >= 0) close(before);
    return descriptor;
}

void CNamedPipe::LookForAnother() {
    struct stat now = {};
    struct stat open = {};
    if (stat(m_path.c_str(), &now) != 0 || !S_ISFIFO(now.st_mode)) return;
    const bool same = fstat(Descriptor(), &open) == 0 && now.st_ino == open.st_ino && now.st_dev == open.st_dev;
    if (!same) Reopen();
}

void CNamedPipe::Ended(int error) {
    if (Reopen() < 0) Close();
    OnEnd(error != 0 ? std::strerror(error) : "the writer closed the pipe");
}

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
