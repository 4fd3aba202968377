// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Connection.h"

#include <QTimer>

#include <functional>
#include <string>
#include <string_view>

namespace vx::sim {

/// A client of the admin port. It gets "Not Connected" twice, then the real status.
class CAdminClient final : public CConnection {
public:
    /// Makes a statistics line, which says "Not Connected" until the client has been greeted.
    using StatsText = std::function<std::string(bool greeted)>;

    CAdminClient(qintptr socket, const SLink& link, StatsText stats);

    /// Sends a statistics line, once the client has been greeted and unless its queue is full.
    void TellStats();

protected:
    void OnLine(std::string_view line) override;
    void OnEndOfInput() override;

private:
    void Greet();

    StatsText m_stats;
    QTimer m_greeting;
    int m_told = 0;
};

} // namespace vx::sim
