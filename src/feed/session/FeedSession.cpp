// SPDX-License-Identifier: MIT
#include "feed/session/FeedSession.h"

#include "base/Text.h"
#include "feed/session/ProgramStart.h"
#include "feed/socket/ClientAppSocket.h"
#include "feed/socket/FeedLog.h"

#include <QMetaObject>
#include <QPointer>

#include <fmt/format.h>

#include <utility>

namespace vx {

int CLevel1Port::Send(std::string_view command) {
    if (!m_socket) return -1;
    m_socket->CountMessageSent();
    return m_socket->SendText(command);
}

bool CLevel1Port::IsOpen() const { return m_socket && m_socket->IsConnected(); }

void CMessageBoxQueue::Post(SMessageBox box) {
    m_waiting.push_back(std::move(box));
    if (!m_busy) Schedule();
}

void CMessageBoxQueue::Schedule() {
    m_busy = true;
    QMetaObject::invokeMethod(
        &m_context, [this] { ShowNext(); }, Qt::QueuedConnection);
}

void CMessageBoxQueue::ShowNext() {
    const SMessageBox box = std::move(m_waiting.front());
    m_waiting.pop_front();
    const QPointer<QObject> alive(&m_context);
    ShowMessageBox(box);
    if (!alive) return;
    m_busy = false;
    if (!m_waiting.empty()) Schedule();
}

namespace {

constexpr const char* kClientName = "VxWatchlist";
constexpr const char* kProtocol = "6.2";
// With CZantrelClientAppSocket::kRetryMs in between: 2.5 seconds for the feed client to start, then a minute for its
// data.
constexpr uint32_t kAdminRetries = 10;
constexpr uint32_t kDataRetries = 240;
constexpr std::string_view kStatusMarker = "S,STATS";
constexpr std::string_view kLimitMarker = "S,SYMBOL LIMIT REACHED";
constexpr std::string_view kReadyMarker = "S,IP,";
constexpr std::string_view kNewsOn = "S,NEWSON\r\n";

std::string_view From(std::string_view line, size_t start) { return line.substr(std::min(start, line.size())); }

} // namespace

CFeedSession::CFeedSession(CRegistry& registry) : m_ports(registry) {}

CFeedSession::~CFeedSession() = default;

bool CFeedSession::CreateFeedSocket(int which, uint32_t retries) {
    if (which < 0 || which >= kFeedSocketCount || m_sockets[static_cast<size_t>(which)]) return false;
    auto& socket = m_sockets[static_cast<size_t>(which)];
    socket = MakeSocket(static_cast<EFeedSocket>(which), retries);
    socket->SetLog(&FeedLogOf(which));
    return socket->Create();
}

std::unique_ptr<CZantrelClientAppSocket> CFeedSession::MakeSocket(EFeedSocket, uint32_t retries) {
    return std::make_unique<CZantrelClientAppSocket>(retries);
}

CZantrelClientAppSocket* CFeedSession::FeedSocket(int which) const {
    return which >= 0 && which < kFeedSocketCount ? m_sockets[static_cast<size_t>(which)].get() : nullptr;
}

int CFeedSession::SendToFeed(int which, std::string_view text) {
    CZantrelClientAppSocket* const socket = FeedSocket(which);
    if (!socket) return -1;
    socket->CountMessageSent();
    return socket->SendText(text);
}

const char* CFeedSession::FeedSocketName(int which) { return FeedLogOf(which).port; }

void CFeedSession::LaunchFeedClient() {
    const SStartResult result = StartFeedClient(kProductId, kLaunchVersion);
    if (!result.Started()) PostMessageBox({FeedClientStartError(result), "", EBoxButtons::Ok, EBoxIcon::Exclamation});
}

void CFeedSession::OpenAdminPort() { OpenPort(kAdminSocket, kAdminRetries, kAdminPort, {}); }

void CFeedSession::OpenDataPorts(std::string_view updateFields) {
    OpenPort(kLookupSocket, kDataRetries, kLookupPort, {});
    OpenPort(kLevel1Socket, kDataRetries, kLevel1Port, updateFields);
}

void CFeedSession::OpenPort(EFeedSocket which, uint32_t retries, const SPortSetting& port,
                            std::string_view updateFields) {
    if (!CreateFeedSocket(which, retries)) return;
    CZantrelClientAppSocket& socket = *m_sockets[which];
    socket.SetOwner(this);
    socket.SetHandshake({kProtocol, kClientName, std::string(updateFields), ""});
    socket.Connect(kFeedHost, m_ports.GetPort(port));
}

EFeedEnd CFeedSession::FeedEnd() const {
    const CZantrelClientAppSocket* const admin = FeedSocket(kAdminSocket);
    const CZantrelClientAppSocket* const level1 = FeedSocket(kLevel1Socket);
    if (level1 && level1->HasEnded()) return EFeedEnd::Quotes;
    if ((level1 && level1->HasGivenUp()) || (admin && admin->HasGivenUp())) return EFeedEnd::Unreachable;
    if (!admin || !admin->HasEnded()) return EFeedEnd::None;
    return level1 && level1->IsConnected() ? EFeedEnd::Status : EFeedEnd::Quotes;
}

bool CFeedSession::SymbolSearch(ESearchBy by, std::string_view text, std::string_view marketFilter,
                                std::string_view typeFilter) {
    if (text.empty()) return false;
    m_lookupReplies.search.Clear();
    const std::string request = SymbolSearchRequest(by, text, marketFilter, typeFilter);
    if (SendToFeed(kLookupSocket, request) != static_cast<int>(request.size())) return false;
    m_lookupReplies.search.Expect();
    return true;
}

void CFeedSession::GetConnectionStats(std::string& text) const {
    text.clear();
    for (int which = 0; which < kFeedSocketCount; ++which) {
        const CZantrelClientAppSocket* const socket = FeedSocket(which);
        if (!socket) continue;
        const SocketStats& stats = socket->Stats();
        text += fmt::format("{}: {}:{}\r\n\tMessages Sent:{}\tReceived:{}\r\n\r\n", FeedSocketName(which),
                            socket->Host(), socket->Port(), static_cast<int32_t>(stats.messagesSent.value),
                            static_cast<int32_t>(stats.messagesReceived.value));
    }
}

void CFeedSession::ReceiveSystemLine(std::string_view line) {
    if (line.starts_with(kStatusMarker)) {
        ReceiveStatusLine(line);
    } else if (line.starts_with(kLimitMarker)) {
        const std::string_view symbol = From(line, kLimitMarker.size() + 1);
        if (!symbol.empty()) {
            m_limited.Refused(symbol, IsWanted(symbol));
            OnSymbolRefused(symbol);
        }
    }
    OnSystemMessage(line);
}

void CFeedSession::ReceiveStatusLine(std::string_view line) {
    std::optional<FeedStats> stats = ReadFeedStats(line);
    if (!stats) return;
    const bool changed = stats->status != m_stats.status;
    m_stats = std::move(*stats);
    if (!changed) return;
    if (m_stats.status == "Connected")
        OnFeedConnected();
    else if (m_stats.status == "Not Connected")
        OnFeedDisconnected();
}

void CFeedSession::ReceiveTimeLine(std::string_view line) {
    CZantrelClientAppSocket* const level1 = FeedSocket(kLevel1Socket);
    if (line.starts_with("T,")) {
        const auto send = [level1](std::string_view command) { return level1->SendText(command); };
        const uint32_t sent = m_limited.Pump(m_stats, level1 ? CSymbolLimitQueue::SendCommand(send) : nullptr);
        if (level1) level1->CountMessageSent(sent);
    }
    OnTimeMessage(line);
}

void CFeedSession::ReceiveFundamentalLine(std::string_view line) {
    const std::string_view rest = From(line, 2);
    m_limited.Arrived(rest.substr(0, rest.find(',')));
    OnFundamentalMessage(line);
}

void CFeedSession::PostMessageBox(SMessageBox box) { m_messageBoxes.Post(std::move(box)); }

bool CFeedSession::HandleReadyLine(std::string_view line) {
    if (!ContainsText(line, kReadyMarker)) return false;
    m_level1Port.SetSocket(FeedSocket(kLevel1Socket));
    SendToFeed(kLevel1Socket, kNewsOn);
    return true;
}

} // namespace vx
