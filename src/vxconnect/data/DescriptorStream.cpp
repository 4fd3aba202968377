#include "vxconnect/data/DescriptorStream.h"

#include "vxconnect/common/WireText.h"

#include <QElapsedTimer>

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
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

} // namespace vx::sim
