#pragma once

#include "vxconnect/Connection.h"

#include <QTimer>

#include <functional>
#include <string>
#include <string_view>

namespace vx::sim {

/// A client of the admin port. It is told "Not Connected" twice, then "Connected" for good.
class CAdminClient final : public CConnection {
public:
    /// Makes a statistics line with the given status.
    using StatsText = std::function<std::string(std::string_view status)>;

    CAdminClient(qintptr socket, const SLink& link, StatsText stats);

    /// Sends a statistics line, once the client has been told that it is connected and unless its queue is full.
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
