// SPDX-License-Identifier: MIT
#include "app/workspace/RunningWindows.h"

#include "app/workspace/Workspace.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/Windows1252.h"
#include "feed/session/ProgramStart.h"

#include <QFile>
#include <QLocalSocket>

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vx {

namespace {

constexpr int kLongestRequest = 64;

// A folder that somebody else could write to would let him answer for us.
int PrepareFolder(const std::string& folder) {
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) return errno;
    struct stat status {};
    if (lstat(folder.c_str(), &status) != 0) return errno;
    if (!S_ISDIR(status.st_mode)) return ENOTDIR;
    if (status.st_uid != geteuid()) return EPERM;
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0 && chmod(folder.c_str(), S_IRWXU) != 0) return errno;
    return 0;
}

void Reply(QLocalSocket& socket, const std::string& answer) {
    socket.write(answer.data(), static_cast<qint64>(answer.size()));
    socket.disconnectFromServer(); // Once the answer is out.
}

} // namespace

std::string CWindowRegistration::LockName(const std::string& folder, int number) {
    return fmt::format("{}/watchlist-{}.lock", folder, number);
}

std::string CWindowRegistration::SocketName(const std::string& folder, int number) {
    return fmt::format("{}/watchlist-{}.socket", folder, number);
}

CWindowRegistration::CWindowRegistration(std::string folder, std::function<std::string()> tell, QObject* parent)
    : QObject(parent), m_folder(std::move(folder)), m_tell(std::move(tell)) {
    int error = PrepareFolder(m_folder);
    for (int number = 1; error == 0 && m_number == 0 && number <= kMostWindows; ++number) {
        auto lock = std::make_unique<CFileLock>(LockName(m_folder, number), 0);
        if (!lock->IsHeld()) continue;
        m_lock = std::move(lock);
        m_number = number;
    }
    connect(&m_server, &QLocalServer::newConnection, this, &CWindowRegistration::OnConnection);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    const QString name = QFile::decodeName(SocketName(m_folder, m_number).c_str());
    if (m_number != 0) {
        QLocalServer::removeServer(name); // Of a window that was killed; its number is ours now.
        if (m_server.listen(name)) return;
    }
    LogInformation(fmt::format("Other programs cannot reach this window: no socket in \"{}\", {}.",
                               Windows1252FromUtf8(m_folder),
                               error != 0 ? ErrorText(error) : m_server.errorString().toStdString()));
}

bool CWindowRegistration::Runs(int number) const {
    return number == m_number || CFileLock(LockName(m_folder, number), 0).Error() == EWOULDBLOCK;
}

void CWindowRegistration::AskOthers() const {
    for (int number = 1; number <= kMostWindows; ++number) {
        QLocalSocket socket;
        if (number != m_number) AskWindow(socket, m_folder, number, kSaveRequest);
    }
}

void CWindowRegistration::OnConnection() {
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { OnRequest(*socket); });
        connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
            std::erase(m_waiting, socket);
            socket->deleteLater();
        });
        OnRequest(*socket); // What came with the connection is announced by no signal.
    }
}

void CWindowRegistration::OnRequest(QLocalSocket& socket) {
    if (!socket.canReadLine() && socket.bytesAvailable() < kLongestRequest) return;
    const QByteArray request = socket.readLine(kLongestRequest);
    if (request == kSaveRequest) {
        m_waiting.push_back(&socket);
        Q_EMIT SaveAsked();
    } else if (request == kTellRequest) {
        Reply(socket, m_tell());
    } else if (request == kShowRequest) {
        Q_EMIT ShowAsked();
        Reply(socket, "shown\n");
    } else {
        socket.abort();
    }
}

void CWindowRegistration::Answer(bool saved) {
    const std::vector<QLocalSocket*> waiting = std::move(m_waiting);
    m_waiting.clear();
    for (QLocalSocket* socket : waiting) Reply(*socket, saved ? "saved\n" : "failed\n");
}

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
    const std::string name = CWindowRegistration::SocketName(folder, number);
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
    for (int number = 1; number <= CWindowRegistration::kMostWindows; ++number) {
        QLocalSocket socket;
        if (AskWindow(socket, folder, number, CWindowRegistration::kSaveRequest)) {
            ++out.windows;
            if (AnswerOf(socket, waitMs) == "saved\n") ++out.saved;
            continue;
        }
        const std::string name = CWindowRegistration::SocketName(folder, number);
        if (access(name.c_str(), F_OK) == 0 && CFileLock(CWindowRegistration::LockName(folder, number), 0).IsHeld())
            unlink(name.c_str());
    }
    return out;
}

std::vector<SRunningWindow> RunningWindows(const std::string& folder, int except) {
    std::vector<SRunningWindow> out;
    for (int number = 1; number <= CWindowRegistration::kMostWindows; ++number) {
        QLocalSocket socket;
        if (number == except || !AskWindow(socket, folder, number, CWindowRegistration::kTellRequest)) continue;
        if (const auto arguments = WorkspaceArguments(AnswerOf(socket, kAnswerMs).toStdString()))
            out.push_back({number, CNorvCommandLineInfo(*arguments)});
    }
    return out;
}

bool ShowWindowWithFile(const std::string& folder, int except, const std::string& path) {
    for (const SRunningWindow& window : RunningWindows(folder, except)) {
        QLocalSocket socket;
        if (IsSameFile(window.shows.file, path) &&
            AskWindow(socket, folder, window.number, CWindowRegistration::kShowRequest) &&
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
