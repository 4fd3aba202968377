#include "app/WindowSlot.h"

#include "base/ErrorText.h"
#include "base/Log.h"
#include "base/Utf8Text.h"

#include <QFile>
#include <QLocalSocket>

#include <fmt/format.h>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace vx {

namespace {

// A window that stopped answering does not hold up the one that asks.
constexpr int kConnectMs = 500;

std::string LockName(const std::string& folder, int number) {
    return fmt::format("{}/watchlist-{}.lock", folder, number);
}

std::string SocketName(const std::string& folder, int number) {
    return fmt::format("{}/watchlist-{}.socket", folder, number);
}

QString QtPath(const std::string& path) { return QFile::decodeName(path.c_str()); }

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

bool Ask(QLocalSocket& socket, const std::string& name) {
    socket.connectToServer(QtPath(name));
    if (!socket.waitForConnected(kConnectMs)) return false;
    socket.write(CWindowSlot::kSaveRequest);
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(kConnectMs)) return false;
    return true;
}

} // namespace

CWindowSlot::CWindowSlot(std::string folder, QObject* parent) : QObject(parent), m_folder(std::move(folder)) {
    int error = PrepareFolder(m_folder);
    for (int number = 1; error == 0 && m_number == 0 && number <= kMostWindows; ++number) {
        auto lock = std::make_unique<CFileLock>(LockName(m_folder, number), 0);
        if (!lock->IsHeld()) continue;
        m_lock = std::move(lock);
        m_number = number;
    }
    connect(&m_server, &QLocalServer::newConnection, this, &CWindowSlot::OnConnection);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    const std::string name = SocketName(m_folder, m_number);
    if (m_number != 0) {
        QLocalServer::removeServer(QtPath(name)); // Of a window that was killed; its number is ours now.
        if (m_server.listen(QtPath(name))) return;
    }
    LogInformation(fmt::format("Other programs cannot ask this window to save the workspace: no socket in \"{}\", {}.",
                               Windows1252FromUtf8(m_folder),
                               error != 0 ? ErrorText(error) : m_server.errorString().toStdString()));
}

bool CWindowSlot::Runs(int number) const {
    return number == m_number || CFileLock(LockName(m_folder, number), 0).Error() == EWOULDBLOCK;
}

void CWindowSlot::AskOthers() const {
    for (int number = 1; number <= kMostWindows; ++number) {
        if (number == m_number || access(SocketName(m_folder, number).c_str(), F_OK) != 0) continue;
        QLocalSocket socket;
        Ask(socket, SocketName(m_folder, number));
    }
}

void CWindowSlot::OnConnection() {
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { OnRequest(*socket); });
        connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
            std::erase(m_waiting, socket);
            socket->deleteLater();
        });
        OnRequest(*socket); // What came with the connection is announced by no signal.
    }
}

void CWindowSlot::OnRequest(QLocalSocket& socket) {
    const QByteArray request(kSaveRequest);
    if (socket.bytesAvailable() < request.size()) return;
    if (socket.read(request.size()) != request) return socket.abort();
    m_waiting.push_back(&socket);
    Q_EMIT SaveAsked();
}

void CWindowSlot::Answer(bool saved) {
    const std::vector<QLocalSocket*> waiting = std::move(m_waiting);
    m_waiting.clear();
    for (QLocalSocket* socket : waiting) {
        socket->write(saved ? "saved\n" : "failed\n");
        socket->disconnectFromServer(); // Once the answer is out.
    }
}

SWorkspaceCall CallWindows(const std::string& folder, int waitMs) {
    SWorkspaceCall out;
    for (int number = 1; number <= CWindowSlot::kMostWindows; ++number) {
        const std::string name = SocketName(folder, number);
        if (access(name.c_str(), F_OK) != 0) continue;
        QLocalSocket socket;
        if (!Ask(socket, name)) {
            if (CFileLock(LockName(folder, number), 0).IsHeld()) unlink(name.c_str());
            continue;
        }
        ++out.windows;
        while (!socket.canReadLine() && socket.waitForReadyRead(waitMs)) {
        }
        if (socket.readLine() == "saved\n") ++out.saved;
    }
    return out;
}

} // namespace vx
