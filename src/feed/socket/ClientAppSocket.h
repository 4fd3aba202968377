// SPDX-License-Identifier: MIT
#pragma once

#include "feed/socket/StreamSocket.h"

#include <string>

namespace vx {

class CFeedOwner;
struct SFeedLog;

/// What a feed connection sends as soon as it is made; an empty text is not sent.
struct SHandshake {
    std::string protocol;
    std::string clientName;    ///< Also named in the message box of a connect that failed for good.
    std::string updateFields;  ///< The level-1 fields that update lines shall carry, in order.
    std::string extraCommands; ///< Sent as they stand, each command ended by LF.
};

/// One connection to the feed client: says the handshake, tries a failed connect again, and hands every line to its
/// owner by the line's first character.
///
/// A failed connect is tried again after kRetryMs, as often as there are retries left, which are never refilled; then
/// a message box tells the user. Once connected, the end of the connection changes nothing: the status stays
/// "Connected", nobody is notified and nothing reconnects.
///
/// Owns    as CZTLStreamSocket; the owner is not owned and must outlive the socket
/// Thread  GUI thread only; each retry holds it for kRetryMs
class CZantrelClientAppSocket : public CZTLStreamSocket {
public:
    static constexpr int kRetryMs = 250;

    explicit CZantrelClientAppSocket(uint32_t retries) : m_retriesLeft(retries) {}

    void SetOwner(CFeedOwner* owner) { m_owner = owner; }
    /// Whose events the traffic becomes; null, as at first, for none.
    void SetLog(const SFeedLog* log) { m_log = log; }
    void SetHandshake(SHandshake handshake) { m_handshake = std::move(handshake); }

    bool Connect(const char* host, unsigned port) override;
    int Send(const void* buffer, int length, int flags = 0) override;
    /// The connection was up and is over, whatever its status says: the feed client ended it, it broke, or it is stuck.
    bool HasEnded() const { return Stats().status == "Connected" && (!IsConnected() || IsStuck()); }
    /// No connection came, and the retries are used up.
    bool HasGivenUp() const { return m_givenUp; }
    const std::string& Host() const { return m_host; }
    unsigned Port() const { return m_port; }

protected:
    void OnMessage(std::string_view line) override;
    void OnMessagesAhead(std::string_view later, std::string_view soon) override;
    void OnConnect(int error) override;
    void OnClose(int error) override;

private:
    void SayHandshake();
    void SayCommand(std::string_view verb, std::string_view value);
    void TryAgainOrGiveUp(int error);

    CFeedOwner* m_owner = nullptr;
    const SFeedLog* m_log = nullptr;
    SHandshake m_handshake;
    uint32_t m_retriesLeft;
    bool m_failed = false; ///< A connect has failed before.
    bool m_givenUp = false;
    std::string m_host;
    unsigned m_port = 0;
};

} // namespace vx
