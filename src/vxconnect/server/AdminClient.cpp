// SPDX-License-Identifier: MIT
#include "vxconnect/server/AdminClient.h"

namespace vx::sim {

namespace {

constexpr int kGreetingMs = 40;
constexpr int kNotConnectedLines = 2;
constexpr int kProbeMs = 100;

} // namespace

CAdminClient::CAdminClient(qintptr socket, const SLink& link, StatsText stats)
    : CConnection(socket, link), m_stats(std::move(stats)) {
    connect(&m_greeting, &QTimer::timeout, this, [this] { Greet(); });
    m_greeting.start(kGreetingMs);
    Greet();
}

void CAdminClient::Greet() {
    const bool greeted = m_told == kNotConnectedLines;
    Send(m_stats(greeted));
    ++m_told;
    if (greeted) m_greeting.stop();
    Flush();
}

void CAdminClient::TellStats() {
    if (m_told <= kNotConnectedLines) return;
    if (HasRoom()) Send(m_stats(true));
    Flush();
}

// Every command is taken and none needs an answer.
void CAdminClient::OnLine(std::string_view) {}

void CAdminClient::OnEndOfInput() {
    TellStats();
    QTimer::singleShot(kProbeMs, this, [this] { TellStats(); });
}

} // namespace vx::sim
