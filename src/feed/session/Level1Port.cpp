#include "feed/session/Level1Port.h"

#include "feed/socket/ClientAppSocket.h"

namespace vx {

int CLevel1Port::Send(std::string_view command) {
    if (!m_socket) return -1;
    m_socket->CountMessageSent();
    return m_socket->SendText(command);
}

bool CLevel1Port::IsOpen() const { return m_socket && m_socket->IsConnected(); }

} // namespace vx
