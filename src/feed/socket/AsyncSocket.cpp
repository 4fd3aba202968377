// SPDX-License-Identifier: MIT
#include "feed/socket/AsyncSocket.h"

#include "base/Clock.h"
#include "feed/socket/NativeSocket.h"

#include <QMetaObject>
#include <QSocketNotifier>
#include <QTimer>

#include <utility>

namespace vx {

CAsyncSocket::CAsyncSocket() = default;

CAsyncSocket::~CAsyncSocket() {
    StopNotifiers();
    if (m_watches == 0) return;
    // A handler deletes the socket that called it: the notifier whose signal is under way must outlive the call.
    if (m_readNotifier) m_readNotifier.release()->deleteLater();
    if (m_writeNotifier) m_writeNotifier.release()->deleteLater();
}

bool CAsyncSocket::Create() {
    if (const int error = m_native.Open()) return FailWith(error);
    m_state = EState::Created;
    m_socketError = 0;
    return true;
}

bool CAsyncSocket::Connect(const char* host, unsigned port) {
    if (m_state == EState::Closed) return FailWith(kSocketNotASocket);
    if (m_state == EState::Connecting) return FailWith(kSocketAlready);
    if (m_state == EState::Connected || m_state == EState::PeerGone) return FailWith(kSocketIsConnected);
    ++m_attempt;
    // A socket whose connect failed is not used again: what it may still do differs between systems.
    const int openError = m_state == EState::ConnectFailed ? m_native.Open() : 0;
    const int error = openError ? openError : m_native.Connect(host, port);
    m_state = EState::Connecting;
    m_socketError = error;
    if (error != 0 && error != kSocketWouldBlock) {
        PostConnectFailure(error);
        return false;
    }
    WatchForConnect();
    return error == 0;
}

void CAsyncSocket::Close() {
    StopNotifiers();
    m_native.Close();
    m_state = EState::Closed;
    ++m_attempt;
}

int CAsyncSocket::Receive(void* buffer, int length, int) {
    if (m_state != EState::Connected && m_state != EState::PeerGone) {
        m_socketError = kSocketNotConnected;
        return -1;
    }
    if (length <= 0) {
        m_received = EReceived::NoRoom;
        return 0;
    }
    const CNativeSocket::SResult result = m_native.Receive(static_cast<char*>(buffer), length);
    m_socketError = result.error;
    if (result.count > 0) {
        m_counted += result.count;
        m_received = result.count >= kBurst || result.count == length ? EReceived::Burst : EReceived::Data;
    } else if (result.count == 0) {
        m_received = EReceived::End;
    } else {
        m_received = result.error == kSocketWouldBlock ? EReceived::WouldBlock : EReceived::Error;
    }
    return result.count;
}

int CAsyncSocket::Send(const void* buffer, int length, int) {
    if (m_state != EState::Connected && m_state != EState::PeerGone) {
        m_socketError = kSocketNotConnected;
        return -1;
    }
    const CNativeSocket::SResult result = m_native.Send(static_cast<const char*>(buffer), length);
    m_socketError = result.error;
    const bool full = result.count >= 0 ? result.count < length : result.error == kSocketWouldBlock;
    if (full && m_state == EState::Connected) m_writeNotifier->setEnabled(true);
    return result.count;
}

void CAsyncSocket::OnReceive(int) {}
void CAsyncSocket::OnSend(int) {}
void CAsyncSocket::OnConnect(int) {}
void CAsyncSocket::OnClose(int) {}

bool CAsyncSocket::FailWith(int error) {
    m_socketError = error;
    return false;
}

void CAsyncSocket::WatchForConnect() {
    if (!m_readNotifier) {
        m_readNotifier = std::make_unique<QSocketNotifier>(QSocketNotifier::Read);
        m_writeNotifier = std::make_unique<QSocketNotifier>(QSocketNotifier::Write);
        QObject::connect(m_readNotifier.get(), &QSocketNotifier::activated, m_readNotifier.get(),
                         [this] { Readable(); });
        QObject::connect(m_writeNotifier.get(), &QSocketNotifier::activated, m_writeNotifier.get(),
                         [this] { Writable(); });
        m_rest = std::make_unique<QTimer>();
        m_rest->setSingleShot(true);
        m_rest->setTimerType(Qt::PreciseTimer);
        m_rest->setInterval(kRestMs);
        QObject::connect(m_rest.get(), &QTimer::timeout, m_readNotifier.get(),
                         [this] { m_readNotifier->setEnabled(true); });
    }
    m_readNotifier->setSocket(m_native.Descriptor());
    m_writeNotifier->setSocket(m_native.Descriptor());
    m_readNotifier->setEnabled(false);
    m_writeNotifier->setEnabled(true);
}

void CAsyncSocket::PostConnectFailure(int error) {
    WatchForConnect();
    StopNotifiers();
    const auto tell = [this, life = std::weak_ptr<char>(m_life), error, attempt = m_attempt] {
        if (life.expired()) return;
        CDeleteWatch watch(*this);
        if (attempt == m_attempt) ConnectEnded(error);
    };
    QMetaObject::invokeMethod(m_writeNotifier.get(), tell, Qt::QueuedConnection);
}

void CAsyncSocket::Readable() {
    if (m_inReceive) {
        // An event loop inside the handler: without this the notifier would fire in it without end.
        m_readNotifier->setEnabled(false);
        return;
    }
    CDeleteWatch watch(*this);
    const uint32_t attempt = m_attempt;
    m_inReceive = true;
    int left = kReceivesPerTurn;
    do {
        m_received = EReceived::Nothing;
        OnReceive(0);
        if (watch.Deleted()) return;
    } while (m_received == EReceived::Burst && attempt == m_attempt && --left > 0);
    m_inReceive = false;
    if (attempt == m_attempt) AfterReceive();
}

void CAsyncSocket::AfterReceive() {
    switch (m_received) {
    case EReceived::Data: {
        const bool rests = IsTrickle();
        m_readNotifier->setEnabled(!rests);
        if (rests) m_rest->start();
        break;
    }
    case EReceived::Burst:
    case EReceived::WouldBlock:
        m_readNotifier->setEnabled(true);
        break;
    case EReceived::Nothing:
    case EReceived::NoRoom:
        m_readNotifier->setEnabled(false);
        break;
    case EReceived::End:
    case EReceived::Error:
        StopNotifiers();
        m_state = EState::PeerGone;
        OnClose(m_received == EReceived::End ? 0 : m_socketError);
        break;
    }
}

// Whether little enough has come since this was looked at last, some milliseconds ago.
bool CAsyncSocket::IsTrickle() {
    const int64_t now = CClock::Instance().MonotonicMs();
    const int64_t elapsed = now - m_countedFromMs;
    if (elapsed < kRestMs) return false;
    m_countedFromMs = now;
    return std::exchange(m_counted, 0) <= elapsed * kTrickle;
}

void CAsyncSocket::Writable() {
    CDeleteWatch watch(*this);
    m_writeNotifier->setEnabled(false);
    if (m_state == EState::Connecting) ConnectEnded(m_native.ConnectOutcome());
    if (!watch.Deleted() && m_state == EState::Connected) OnSend(0);
}

void CAsyncSocket::ConnectEnded(int error) {
    m_socketError = error;
    if (error == 0) {
        m_state = EState::Connected;
        m_readNotifier->setEnabled(true);
    } else {
        m_state = EState::ConnectFailed;
        StopNotifiers();
    }
    OnConnect(error);
}

void CAsyncSocket::StopNotifiers() {
    if (m_readNotifier) m_readNotifier->setEnabled(false);
    if (m_writeNotifier) m_writeNotifier->setEnabled(false);
    if (m_rest) m_rest->stop();
}

} // namespace vx
