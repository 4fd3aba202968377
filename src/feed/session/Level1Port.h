#pragma once

#include "data/store/CommandPort.h"

namespace vx {

class CZantrelClientAppSocket;

/// The level-1 connection as the store of market data sees it: nothing until the feed client is ready for watches.
///
/// Owns    nothing; the socket must outlive it or be taken away with SetSocket(nullptr)
/// Thread  GUI thread only
class CLevel1Port final : public CL1CommandPort {
public:
    void SetSocket(CZantrelClientAppSocket* socket) { m_socket = socket; }

    /// Sends one command and counts it as a message sent, whatever became of it.
    int Send(std::string_view command) override;
    bool IsOpen() const override;

private:
    CZantrelClientAppSocket* m_socket = nullptr;
};

} // namespace vx
