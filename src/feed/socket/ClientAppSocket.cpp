// SPDX-License-Identifier: MIT
#include "feed/socket/ClientAppSocket.h"

#include "base/Clock.h"
#include "feed/socket/FeedLog.h"
#include "feed/socket/FeedOwner.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx {

bool CZantrelClientAppSocket::Connect(const char* host, unsigned port) {
    m_host = std::string(host);
    m_port = port;
    return CZTLStreamSocket::Connect(m_host.c_str(), port);
}

int CZantrelClientAppSocket::Send(const void* buffer, int length, int flags) {
    const int count = CZTLStreamSocket::Send(buffer, length, flags);
    if (m_log) m_log->Sent({static_cast<const char*>(buffer), static_cast<size_t>(length)}, count, LastError());
    return count;
}

void CZantrelClientAppSocket::OnMessage(std::string_view line) {
    if (m_log) m_log->Received(line);
    if (m_owner) (m_owner->*kLineHandlers[static_cast<unsigned char>(line.front())])(line);
}

void CZantrelClientAppSocket::OnMessagesAhead(std::string_view later, std::string_view soon) {
    if (m_owner) m_owner->ExpectMessages(later, soon);
}

void CZantrelClientAppSocket::OnConnect(int error) {
    if (error == 0) {
        if (m_log) m_log->Connected(m_host, m_port);
        SayHandshake();
    } else {
        // The first failure and the last one; those between say nothing new.
        if (m_log && (m_retriesLeft == 0 || !std::exchange(m_failed, true)))
            m_log->ConnectFailed(m_host, m_port, error, m_retriesLeft);
        TryAgainOrGiveUp(error);
    }
    CZTLStreamSocket::OnConnect(error);
}

void CZantrelClientAppSocket::OnClose(int error) {
    if (m_log) m_log->Closed(error);
}

void CZantrelClientAppSocket::SayHandshake() {
    SayCommand("S,SET PROTOCOL,", m_handshake.protocol);
    SayCommand("S,SET CLIENT NAME,", m_handshake.clientName);
    SayCommand("S,SELECT UPDATE FIELDS,", m_handshake.updateFields);
    const std::string& extra = m_handshake.extraCommands;
    if (!extra.empty()) {
        SendText(extra);
        CountMessageSent(static_cast<uint32_t>(std::count(extra.begin(), extra.end(), '\n')));
    }
}

void CZantrelClientAppSocket::SayCommand(std::string_view verb, std::string_view value) {
    if (value.empty()) return;
    SendText(fmt::format("{}{}\n", verb, value));
    CountMessageSent();
}

void CZantrelClientAppSocket::TryAgainOrGiveUp(int error) {
    if (m_retriesLeft > 0) {
        --m_retriesLeft;
        CClock::Instance().SleepMs(kRetryMs);
        const std::string host = m_host;
        Connect(host.c_str(), m_port);
        return;
    }
    m_givenUp = true;
    if (m_owner)
        m_owner->PostMessageBox({fmt::format("{} is unable to connect to Zantrel.\nPlease restart the application.\n"
                                             "If the error persists, please contact customer service.\nError Code: {}",
                                             m_handshake.clientName, error),
                                 "", EBoxButtons::Ok, EBoxIcon::Exclamation});
}

} // namespace vx
