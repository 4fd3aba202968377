// SPDX-License-Identifier: MIT
#pragma once

#include "feed/socket/NativeSocket.h"

#include <cstdint>
#include <memory>

class QSocketNotifier;
class QTimer;

namespace vx {

/// A TCP client socket that never blocks and tells its outcomes as notifications from the event loop.
///
/// A connect is answered by OnConnect, arrived bytes by OnReceive (again and again until they are received), room to
/// send again by OnSend, the peer's end by OnClose. Each OnReceive should receive once: what is left is notified again,
/// at once after a receive that got a burst (up to kReceivesPerTurn times), else in the next turn of the event loop, so
/// that timers and windows get theirs; of a trickle kRestMs later. Nothing is notified again after a receive that found
/// the end, failed, or had no room for a single byte, and none while OnReceive still runs (a dialog opened by a
/// handler).
///
/// Errors  operations return -1 or false and leave the number in GetLastError (NativeSocket.h)
/// Owns    the native socket and its notifiers
/// Thread  the thread that made it, which must run an event loop; a handler may delete the socket it was called by
class CAsyncSocket {
public:
    /// A turn of the event loop costs as much as the cutting of a hundred lines. Four receives of 64 KiB share one and
    /// hold timers and windows up for a millisecond at most.
    static constexpr int kReceivesPerTurn = 4;
    /// Bytes of one receive after which more is likely there already; so is all that was asked for. To look in vain
    /// costs a tenth of a turn.
    static constexpr int kBurst = 8 * 1024;
    /// Between two receives of a trickle the socket rests, so that thousands of packets a second do not wake the
    /// program as often. Far less than a display update; no more than a socket's buffer holds comes meanwhile.
    static constexpr int kRestMs = 4;
    /// Up to so many bytes a millisecond are a trickle.
    static constexpr int64_t kTrickle = 16 * 1024;

    CAsyncSocket();
    virtual ~CAsyncSocket();
    CAsyncSocket(const CAsyncSocket&) = delete;
    CAsyncSocket& operator=(const CAsyncSocket&) = delete;

    /// Makes the native socket: stream type, any local port and address.
    bool Create();
    /// Begins to connect. True only when the connection is made at once; OnConnect tells the outcome in every case,
    /// always later from the event loop. After a failure the same call tries again.
    bool Connect(const char* host, unsigned port);

    virtual void Close();
    /// Receives at most length bytes: the count, 0 when the peer has closed or length is 0, -1 on an error. No flag is
    /// known, here and in Send.
    virtual int Receive(void* buffer, int length, int flags = 0);
    /// Hands bytes to the system once: the count, which may be short, or -1. Nothing is kept for later.
    virtual int Send(const void* buffer, int length, int flags = 0);

    int GetLastError() const { return m_socketError; }
    /// Whether the connection is up as far as is known: false before the connect and once the peer has gone.
    virtual bool IsConnected() const { return m_state == EState::Connected; }

protected:
    virtual void OnReceive(int error);
    virtual void OnSend(int error);
    virtual void OnConnect(int error);
    virtual void OnClose(int error);

    /// Tells a function whether the socket was deleted while one of its handlers ran.
    class CDeleteWatch {
    public:
        explicit CDeleteWatch(CAsyncSocket& socket) : m_socket(socket), m_life(socket.m_life) { ++m_socket.m_watches; }
        ~CDeleteWatch() {
            if (!Deleted()) --m_socket.m_watches;
        }
        CDeleteWatch(const CDeleteWatch&) = delete;
        CDeleteWatch& operator=(const CDeleteWatch&) = delete;
        bool Deleted() const { return m_life.expired(); }

    private:
        CAsyncSocket& m_socket;
        std::weak_ptr<char> m_life;
    };

private:
    enum class EState { Closed, Created, Connecting, ConnectFailed, Connected, PeerGone };
    enum class EReceived { Nothing, Data, Burst, WouldBlock, NoRoom, End, Error };

    bool FailWith(int error);
    void WatchForConnect();
    void PostConnectFailure(int error);
    void Readable();
    void AfterReceive();
    bool IsTrickle();
    void Writable();
    void ConnectEnded(int error);
    void StopNotifiers();

    CNativeSocket m_native;
    std::unique_ptr<QSocketNotifier> m_readNotifier;
    std::unique_ptr<QSocketNotifier> m_writeNotifier;
    std::unique_ptr<QTimer> m_rest;
    int64_t m_countedFromMs = 0; ///< Since when m_counted bytes were received.
    int64_t m_counted = 0;
    EState m_state = EState::Closed;
    EReceived m_received = EReceived::Nothing;
    int m_socketError = 0;
    uint32_t m_attempt = 0; ///< Number of connects begun; an outcome of an older one is dropped.
    bool m_inReceive = false;
    int m_watches = 0; ///< Above 0 while a handler runs.
    std::shared_ptr<char> m_life = std::make_shared<char>();
};

} // namespace vx
