// SPDX-License-Identifier: MIT
#include "vxconnect/common/Connection.h"

#include "base/Log.h"

#include <QElapsedTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vx::sim {

namespace {

// Enough to keep a fast reader busy between two slices, little enough that a slow one is not fed old news.
constexpr int kSystemSendBytes = 512 * 1024;
// How long one client may keep the others waiting with the lines that it sent at once.
constexpr qint64 kTurnMs = 5;

bool WouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }

} // namespace

CConnection::CConnection(qintptr socket, const SLink& link)
    : m_socket(static_cast<int>(socket)), m_link(link), m_readable(socket, QSocketNotifier::Read),
      m_writable(socket, QSocketNotifier::Write) {
    fcntl(m_socket, F_SETFL, fcntl(m_socket, F_GETFL, 0) | O_NONBLOCK);
    const int on = 1;
    setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    setsockopt(m_socket, SOL_SOCKET, SO_SNDBUF, &kSystemSendBytes, sizeof kSystemSendBytes);
    m_writable.setEnabled(false);
    connect(&m_readable, &QSocketNotifier::activated, this, [this] { OnReadable(); });
    connect(&m_writable, &QSocketNotifier::activated, this, [this] { OnWritable(); });
}

CConnection::~CConnection() { close(m_socket); }

void CConnection::Send(std::string_view line) {
    if (m_open) m_queue.Append(line);
}

size_t CConnection::NextPiece() const {
    size_t bytes = m_queue.Size();
    if (m_link.pieceBytes > 0) bytes = std::min(bytes, m_link.pieceBytes);
    if (m_link.dropAfter > 0) bytes = std::min<uint64_t>(bytes, m_link.dropAfter - m_sent);
    return bytes;
}

void CConnection::Flush() {
    if (m_link.mute) m_queue.Drop(m_queue.Size());
    while (m_open && m_queue.Size() > 0) {
        const ssize_t count = send(m_socket, m_queue.Waiting().data(), NextPiece(), MSG_NOSIGNAL);
        if (count > 0) {
            m_sent += static_cast<uint64_t>(count);
            if (m_link.log) m_link.log->Told(m_queue.Waiting().substr(0, static_cast<size_t>(count)));
            m_queue.Drop(static_cast<size_t>(count));
            if (m_link.dropAfter > 0 && m_sent >= m_link.dropAfter) return Drop();
            if (m_link.pieceBytes > 0) break; // The next one when the event loop comes round.
        } else if (count < 0 && !WouldBlock()) {
            return Fail();
        } else {
            break;
        }
    }
    if (!m_open) return;
    m_writable.setEnabled(m_queue.Size() > 0 || m_waiting || HoldsBack());
    if (m_closing && m_queue.Size() == 0) Fail();
}

// The client sees the end of the stream at once, even while this object waits for its own.
void CConnection::Drop() {
    shutdown(m_socket, SHUT_RDWR);
    Fail();
}

void CConnection::CloseWhenSent() {
    m_closing = true;
    Flush();
}

void CConnection::OnReadable() {
    if (!m_open || m_waiting || m_inputEnded) return;
    std::array<char, kMaxLine> bytes;
    const ssize_t count = recv(m_socket, bytes.data(), bytes.size(), 0);
    if (count < 0) {
        if (!WouldBlock()) Fail();
        return;
    }
    if (count == 0) {
        m_inputEnded = true;
        m_readable.setEnabled(false);
        OnEndOfInput();
        return;
    }
    m_lines.Append({bytes.data(), static_cast<size_t>(count)});
    HandleLines();
}

void CConnection::OnWritable() {
    Flush();
    if (!m_open || m_queue.Size() > m_link.queueLimit / 2) return;
    OnRoom();
    Flush();
    ContinueLines();
}

void CConnection::HandleLines() {
    QElapsedTimer busy;
    busy.start();
    bool tookItsTurn = false;
    while (m_open && !tookItsTurn) {
        if (!HasRoom()) Flush();
        m_waiting = m_open && !HasRoom();
        if (m_waiting) break;
        const auto line = m_lines.Next();
        if (!line) break;
        if (line->text.empty()) continue;
        if (line->tooLong) {
            OnOverlongLine();
        } else {
            if (m_link.log) m_link.log->Said(line->text);
            OnLine(line->text);
        }
        tookItsTurn = m_open && busy.elapsed() >= kTurnMs;
    }
    // The other clients have their turn before the rest of this one's lines.
    m_waiting = m_waiting || tookItsTurn;
    Flush();
    if (m_open) m_readable.setEnabled(!m_waiting && !m_inputEnded);
    if (m_open && tookItsTurn)
        QMetaObject::invokeMethod(
            this, [this] { ContinueLines(); }, Qt::QueuedConnection);
}

void CConnection::ContinueLines() {
    if (!m_open || !m_waiting || !HasRoom()) return;
    m_waiting = false;
    HandleLines();
}

void CConnection::Fail() {
    if (!m_open) return;
    m_open = false;
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (OnGone) OnGone(*this);
        },
        Qt::QueuedConnection);
}

namespace {

using enum ELogCategory;

ELogCategory ToldCategory(EPorts port, char first) {
    switch (port) {
    case kLevel1:
        return first == 'S' ? L1System : first == 'E' ? L1Error : L1Data;
    case kLookup:
        return first == 'E' || first == '!' ? LookupError : LookupData;
    default:
        return Admin;
    }
}

} // namespace

void CClientLog::Said(std::string_view line) const {
    Log(m_port == kLevel1 ? L1Request : m_port == kLookup ? LookupRequest : Admin, ELogDirection::FromClient, line);
}

void CClientLog::Told(std::string_view bytes) {
    m_told.Append(bytes);
    while (const auto line = m_told.Next())
        if (!line->text.empty()) Log(ToldCategory(m_port, line->text.front()), ELogDirection::ToClient, line->text);
}

} // namespace vx::sim
