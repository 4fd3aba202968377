#include "app/workspace/RunningWindows.h"

#include "app/workspace/WindowSlot.h"
#include "app/workspace/Workspace.h"
#include "feed/session/ProgramStart.h"

#include <QFile>
#include <QLocalSocket>

#include <fmt/format.h>

#include <filesystem>
#include <unistd.h>

namespace vx {

namespace {

// A window that stopped answering does not hold up the one that asks.
constexpr int kAnswerMs = 500;
// A path and 100 symbols have room.
constexpr qint64 kLongestAnswer = qint64{64} << 10;

// All that a window says until it ends the connection.
QByteArray AnswerOf(QLocalSocket& socket, int waitMs) {
    while (socket.bytesAvailable() < kLongestAnswer && socket.waitForReadyRead(waitMs)) {
    }
    return socket.read(kLongestAnswer);
}

std::string Canonical(const std::string& path) {
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(path, error);
    return error ? path : canonical.string();
}

} // namespace

bool AskWindow(QLocalSocket& socket, const std::string& folder, int number, const char* request) {
    const std::string name = CWindowSlot::SocketName(folder, number);
    if (access(name.c_str(), F_OK) != 0) return false;
    socket.connectToServer(QFile::decodeName(name.c_str()));
    if (!socket.waitForConnected(kAnswerMs)) return false;
    socket.write(request);
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(kAnswerMs)) return false;
    return true;
}

SWorkspaceCall CallWindows(const std::string& folder, int waitMs) {
    SWorkspaceCall out;
    for (int number = 1; number <= CWindowSlot::kMostWindows; ++number) {
        QLocalSocket socket;
        if (AskWindow(socket, folder, number, CWindowSlot::kSaveRequest)) {
            ++out.windows;
            if (AnswerOf(socket, waitMs) == "saved\n") ++out.saved;
            continue;
        }
        const std::string name = CWindowSlot::SocketName(folder, number);
        if (access(name.c_str(), F_OK) == 0 && CFileLock(CWindowSlot::LockName(folder, number), 0).IsHeld())
            unlink(name.c_str());
    }
    return out;
}

std::vector<SRunningWindow> RunningWindows(const std::string& folder, int except) {
    std::vector<SRunningWindow> out;
    for (int number = 1; number <= CWindowSlot::kMostWindows; ++number) {
        QLocalSocket socket;
        if (number == except || !AskWindow(socket, folder, number, CWindowSlot::kTellRequest)) continue;
        if (const auto arguments = WorkspaceArguments(AnswerOf(socket, kAnswerMs).toStdString()))
            out.push_back({number, CNorvCommandLineInfo(*arguments)});
    }
    return out;
}

bool ShowWindowWithFile(const std::string& folder, int except, const std::string& path) {
    for (const SRunningWindow& window : RunningWindows(folder, except)) {
        QLocalSocket socket;
        if (IsSameFile(window.shows.file, path) &&
            AskWindow(socket, folder, window.number, CWindowSlot::kShowRequest) &&
            AnswerOf(socket, kAnswerMs) == "shown\n")
            return true;
    }
    return false;
}

int StartWindow(const std::vector<std::string>& arguments) {
    QStringList all{QStringLiteral("--new-window")};
    for (const std::string& argument : arguments) all += QFile::decodeName(argument.c_str());
    return StartProgram(kWatchlistProgram, all).error;
}

std::string WindowStartError(int error) {
    return fmt::format("Unable to launch {}.  Error Code: {}", kWatchlistProgram, error);
}

bool IsSameFile(const std::string& one, const std::string& other) {
    return !one.empty() && !other.empty() && Canonical(one) == Canonical(other);
}

} // namespace vx
