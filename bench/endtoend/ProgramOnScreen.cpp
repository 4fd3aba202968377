// SPDX-License-Identifier: MIT
#include "endtoend/ProgramOnScreen.h"

#include <QStandardPaths>

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vx::bench {

namespace {

constexpr int kStartMs = 20'000;

// Places of the numbers that the picture's file begins with (X window dump).
enum { kHeaderSize = 0, kBitsPerPixel = 11, kBytesPerLine = 12, kColours = 19, kHeaderNumbers = 25 };
constexpr size_t kBytesOfColour = 12;

QString Text(const std::string& text) { return QString::fromStdString(text); }

} // namespace

std::string CProgramOnScreen::Missing() {
    for (const char* program : {"Xvfb", "xdotool"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty()) return program;
    return {};
}

CProgramOnScreen::CProgramOnScreen() {
    for (QProcess* process : {&m_server, &m_keys, &m_program})
        process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_server.start(QStringLiteral("Xvfb"),
                   QStringLiteral("-displayfd 1 -screen 0 %1x%2x24 -nolisten tcp -noreset -fbdir %3")
                       .arg(kWidth)
                       .arg(kHeight)
                       .arg(Text(m_folder.Path()))
                       .split(QLatin1Char(' ')));
    while (!m_server.canReadLine())
        if (!m_server.waitForReadyRead(kStartMs)) throw std::runtime_error("the display does not start");
    qputenv("DISPLAY", ":" + m_server.readLine().trimmed());

    const int file = open((m_folder / "Xvfb_screen0").c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (file < 0 || fstat(file, &status) != 0) throw std::runtime_error("the display has no picture");
    void* const mapped = mmap(nullptr, static_cast<size_t>(status.st_size), PROT_READ, MAP_SHARED, file, 0);
    close(file);
    if (mapped == MAP_FAILED) throw std::runtime_error("the picture cannot be mapped");
    std::array<uint32_t, kHeaderNumbers> header;
    std::memcpy(header.data(), mapped, sizeof header);
    for (uint32_t& number : header) number = ntohl(number);
    if (header[kBitsPerPixel] != 32) throw std::runtime_error("the picture has no 32 bits a pixel");
    m_pixels = static_cast<const uint8_t*>(mapped) + header[kHeaderSize] + header[kColours] * kBytesOfColour;
    m_lineBytes = header[kBytesPerLine];
    m_keys.start(QStringLiteral("xdotool"), {QStringLiteral("-")});
}

CProgramOnScreen::~CProgramOnScreen() {
    for (QProcess* process : {&m_program, &m_keys, &m_server}) {
        process->kill();
        process->waitForFinished(kStartMs);
    }
}

void CProgramOnScreen::Start(const std::string& program, const std::string& list) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* gone : {"WAYLAND_DISPLAY", "QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"})
        environment.remove(QString::fromLatin1(gone));
    for (const char* folder : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QString::fromLatin1(folder), Text(m_folder.Path()));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    environment.insert(QStringLiteral("PATH"), Text(m_folder.Path()) + QStringLiteral(":/usr/bin:/bin"));
    // The program starts a feed client; this one leaves the ports to the benchmark.
    test::WriteFile(m_folder / "vxconnect", "#!/bin/sh\n");
    chmod((m_folder / "vxconnect").c_str(), S_IRWXU);
    m_program.setProcessEnvironment(environment);
    m_program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_program.start(Text(program), {Text(list), QStringLiteral("--theme"), QStringLiteral("light")});
    if (!m_program.waitForStarted(kStartMs)) throw std::runtime_error(program + " does not start");
}

void CProgramOnScreen::Tool(const QStringList& arguments) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), arguments);
    if (!tool.waitForFinished(kStartMs) || tool.exitCode() != 0) throw std::runtime_error("xdotool fails");
}

void CProgramOnScreen::Focus() {
    Tool({QStringLiteral("mousemove"), QString::number(kWidth - 1), QString::number(kHeight - 1)});
    Tool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
          QStringLiteral("Watchlist"), QStringLiteral("windowfocus")});
}

void CProgramOnScreen::Press(const char* key) {
    m_keys.write(QByteArray("key --delay 0 ") + key + "\n");
    m_keys.waitForBytesWritten(kStartMs);
}

CProgramOnScreen::Picture CProgramOnScreen::Look(const SBox& box) const {
    const auto width = static_cast<size_t>(box.width);
    Picture picture(width * static_cast<size_t>(box.height));
    for (size_t y = 0; y < static_cast<size_t>(box.height); ++y)
        std::memcpy(&picture[y * width],
                    m_pixels + (static_cast<size_t>(box.top) + y) * m_lineBytes + static_cast<size_t>(box.left) * 4,
                    width * 4);
    return picture;
}

int CProgramOnScreen::Ink(const SBox& box) const {
    constexpr int kBeside = 2;
    const uint32_t ground = Look({box.left - kBeside, box.top + box.height / 2, 1, 1}).front();
    const Picture picture = Look(box);
    return static_cast<int>(picture.size()) - static_cast<int>(std::count(picture.begin(), picture.end(), ground));
}

SBox CProgramOnScreen::Changed(const Picture& before, const Picture& after, const SBox& part) {
    int left = kWidth, top = kHeight, right = 0, bottom = 0;
    for (int y = 0; y < part.height; ++y)
        for (int x = 0; x < part.width; ++x) {
            const auto i = static_cast<size_t>(y * part.width + x);
            if (before[i] == after[i]) continue;
            left = std::min(left, x), right = std::max(right, x + 1);
            top = std::min(top, y), bottom = std::max(bottom, y + 1);
        }
    return right > left ? SBox{left, top, right - left, bottom - top} : SBox{};
}

double CProgramOnScreen::CpuSeconds() const {
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(static_cast<pid_t>(m_program.processId()), &clock) != 0 || clock_gettime(clock, &time) != 0)
        throw std::runtime_error("the program has ended");
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double CProgramOnScreen::HeldSeconds() const {
    double nanoseconds = 0;
    const std::string tasks = "/proc/" + std::to_string(m_program.processId()) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        std::istringstream numbers(test::ReadFile(task.path().string() + "/schedstat"));
        double ran = 0, held = 0;
        if (numbers >> ran >> held) nanoseconds += held;
    }
    return nanoseconds * 1e-9;
}

double CProgramOnScreen::KernelSeconds() const {
    constexpr int kAfterName = 11; // Numbers between the name, which may hold blanks, and the one for the kernel.
    const std::string stat = test::ReadFile("/proc/" + std::to_string(m_program.processId()) + "/stat");
    std::istringstream numbers(stat.substr(std::min(stat.rfind(')') + 4, stat.size())));
    double ticks = 0;
    for (int i = 0; i <= kAfterName; ++i) numbers >> ticks;
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double CProgramOnScreen::Megabytes(const char* name) const {
    std::istringstream status(test::ReadFile("/proc/" + std::to_string(m_program.processId()) + "/status"));
    const std::string wanted = std::string(name) + ":";
    for (std::string word; status >> word;)
        if (double kilobytes = 0; word == wanted && status >> kilobytes) return kilobytes / 1024;
    return 0;
}

} // namespace vx::bench
