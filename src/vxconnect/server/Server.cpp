// SPDX-License-Identifier: MIT
#include "vxconnect/server/Server.h"

#include "vxconnect/common/Level1Client.h"
#include "vxconnect/market/SimulatedSource.h"
#include "vxconnect/server/AdminClient.h"
#include "vxconnect/server/LookupClient.h"

#include <QTimer>

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <malloc.h>
#include <utility>

namespace vx::sim {

namespace {

constexpr int kSecondMs = 1000;
constexpr int kSoonMs = 100;
constexpr int kTrimMs = 500;

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

} // namespace

CServer::CServer(const SOptions& options, std::unique_ptr<CSource> source)
    : m_options(options), m_source(source ? std::move(source) : std::make_unique<CSimulatedSource>(options)),
      m_searchIndex(*m_source), m_startText(Feed().ClockText()), m_admin([this](qintptr socket) {
          return std::make_unique<CAdminClient>(
              socket, Link(kAdmin), [this](bool greeted) { return StatsLine(greeted && m_source->IsLive()); });
      }),
      m_lookup([this](qintptr socket) {
          return std::make_unique<CLookupClient>(socket, Link(kLookup), *m_source, m_searchIndex);
      }),
      m_level1([this](qintptr socket) {
          return std::make_unique<CLevel1Client>(socket, Link(kLevel1), Feed(), Level1Port());
      }) {
    WirePorts();
    WireSource();
    m_second.setTimerType(Qt::PreciseTimer);
    m_soon.setSingleShot(true);
    m_ending.setSingleShot(true);
    m_trim.setSingleShot(true);
    connect(&m_second, &QTimer::timeout, this, [this] { OnSecond(); });
    connect(&m_soon, &QTimer::timeout, this, [this] { OnWatchesChanged(); });
    connect(&m_trim, &QTimer::timeout, this, [] { malloc_trim(0); });
    connect(&m_ending, &QTimer::timeout, this, [this] {
        if (OnFinished) OnFinished();
    });
}

CServer::~CServer() {
    Feed().OnWatchedChanged = nullptr;
    Feed().OnSymbolCame = nullptr;
    m_source->OnSlice = nullptr;
    m_source->OnHeadline = nullptr;
    m_source->OnLiveChanged = nullptr;
    Feed().SetListener(nullptr);
}

void CServer::WirePorts() {
    for (CPort* port : {&m_admin, &m_lookup, &m_level1}) port->OnCountChanged = [this] { OnClientCountChanged(); };
    m_level1.OnLeaving = [](CConnection& connection) { static_cast<CLevel1Client&>(connection).Leave(); };
}

void CServer::WireSource() {
    Feed().OnWatchedChanged = [this] {
        if (!m_soon.isActive()) m_soon.start(kSoonMs);
    };
    Feed().OnSymbolCame = [this](std::string_view symbol) {
        for (const auto& connection : m_level1.Connections())
            static_cast<CLevel1Client&>(*connection).SymbolCame(symbol);
    };
    m_source->OnSlice = [this] { FlushLevel1(); };
    m_source->OnLiveChanged = [this] { TellStats(); };
    m_source->OnHeadline = [this](const std::string& line) {
        if (m_recorder) m_recorder->OnLine(line);
        for (const auto& connection : m_level1.Connections())
            static_cast<CLevel1Client&>(*connection).TellHeadline(line);
    };
}

SLink CServer::Link(EPorts port) const {
    SLink link(size_t{m_options.queueKilobytes} * 1024);
    link.pieceBytes = m_options.split;
    link.dropAfter = m_options.dropAfter;
    link.mute = (m_options.mute & port) != 0;
    if (m_options.log) link.log.emplace(port);
    return link;
}

bool CServer::Open(EPorts which, EStart& outcome) {
    if (m_options.refuse & which) return true;
    CPort& port = which == kLevel1 ? m_level1 : which == kLookup ? m_lookup : m_admin;
    const auto& wanted = which == kLevel1   ? m_options.level1Port
                         : which == kLookup ? m_options.lookupPort
                                            : m_options.adminPort;
    const std::string_view name = which == kLevel1 ? "level-1" : which == kLookup ? "lookup" : "admin";
    const uint16_t number = wanted.value_or(0);
    const CPort::EListening listening = port.Listen(number);
    if (listening == CPort::EListening::Yes) return true;
    const bool taken = listening == CPort::EListening::Taken;
    // Somebody who asks for data of their own has to know that clients get other data.
    const bool own = m_options.HasOwnData() || !m_options.record.empty();
    outcome = taken && !own ? EStart::AlreadyServed : EStart::Failed;
    m_message =
        taken ? fmt::format("vxconnect: {} port {} is already served on this machine, {}", name, number,
                            own ? "by another program: stop that one first or choose other ports" : "nothing to do")
              : fmt::format("vxconnect: cannot open {} port {}: {}", name, number, port.errorString().toStdString());
    for (CPort* opened : {&m_admin, &m_lookup, &m_level1}) opened->close();
    return false;
}

std::string CServer::PortText(EPorts which) const {
    if (m_options.refuse & which) return "refused";
    return std::to_string(which == kLevel1 ? Level1Port() : which == kLookup ? LookupPort() : AdminPort());
}

CServer::EStart CServer::Start() {
    EStart outcome = EStart::Serving;
    m_searchIndex.Refresh(); // Now, while nobody waits.
    // The admin port is what clients try first: it opens last, when the others already answer.
    for (const EPorts port : {kLevel1, kLookup, kAdmin})
        if (!Open(port, outcome)) return outcome;
    if (!m_options.record.empty()) {
        m_recorder = std::make_unique<CRecorder>(Feed());
        m_message = m_recorder->Open(m_options.record);
        if (!m_message.empty()) return EStart::Failed;
        Feed().SetListener(m_recorder.get());
    }
    m_message = fmt::format("vxconnect: {} on 127.0.0.1, level1={} lookup={} admin={}", m_source->Kind(),
                            PortText(kLevel1), PortText(kLookup), PortText(kAdmin));
    m_second.start(kSecondMs);
    if (!m_options.stay) m_ending.start(m_options.firstClientMs);
    return outcome;
}

size_t CServer::ClientCount() const {
    return m_admin.Connections().size() + m_lookup.Connections().size() + m_level1.Connections().size();
}

size_t CServer::LongestQueue() const {
    return std::max({m_longestQueue, m_longestLastSecond, m_level1.LongestQueue()});
}

size_t CServer::HeldCount() const {
    size_t held = 0;
    for (const auto& connection : m_level1.Connections())
        held += static_cast<const CLevel1Client&>(*connection).HeldCount();
    return held;
}

void CServer::OnClientCountChanged() {
    if (ClientCount() < m_clients && !m_trim.isActive()) m_trim.start(kTrimMs);
    m_clients = ClientCount();
    if (m_options.stay) return;
    if (ClientCount() > 0) {
        m_hadClient = true;
        m_ending.stop();
    } else if (m_hadClient) {
        m_ending.start(m_options.lingerMs);
    }
}

void CServer::OnSecond() {
    ++m_seconds;
    m_source->Run();
    if (m_recorder) m_recorder->OnTime();
    m_eventsLastSecond = Feed().EventCount() - m_eventsBefore;
    m_eventsBefore = Feed().EventCount();
    m_longestLastSecond = std::exchange(m_longestQueue, 0);
    const uint64_t bytes = m_level1.SentBytes();
    m_bytesLastSecond = bytes - m_bytesBefore;
    m_bytesBefore = bytes;
    for (const auto& connection : m_level1.Connections()) static_cast<CLevel1Client&>(*connection).TellTime();
    TellStats();
    if (OnFigures) OnFigures(FiguresLine());
}

void CServer::OnWatchesChanged() {
    m_source->WatchesChanged();
    TellStats();
}

void CServer::TellStats() {
    for (const auto& connection : m_admin.Connections()) static_cast<CAdminClient&>(*connection).TellStats();
}

void CServer::FlushLevel1() {
    for (const auto& connection : m_level1.Connections()) connection->Flush();
    m_longestQueue = std::max(m_longestQueue, m_level1.LongestQueue());
}

std::string CServer::StatsLine(bool connected) const {
    const double kilobytes = static_cast<double>(m_level1.SentBytes()) / 1024;
    const double average = m_seconds > 0 ? kilobytes / static_cast<double>(m_seconds) : 0;
    return fmt::format("S,STATS,{},{},{},{},{},{},{},{},{},{},{},{},{},"
                       "{:.2f},{:.2f},{:.2f},{},{},{:.2f},\r\n",
                       m_source->Kind(), m_level1.serverPort(), Feed().Limit(), Feed().WatchedCount(),
                       m_level1.Connections().size(), LongestQueue(), HeldCount(), m_seconds, m_startText,
                       Feed().ClockText(), connected ? "Connected" : "Not Connected", m_source->Detail(),
                       m_options.HasOwnData() ? "data" : "simulation", kilobytes,
                       static_cast<double>(m_bytesLastSecond) / 1024, average, m_eventsLastSecond, Feed().EventCount(),
                       CpuSeconds());
}

std::string CServer::FiguresLine() const {
    return fmt::format("{} clients={} watched={} updates/s={} KB/s={} queue={} held={} cpu={:.2f}s", Feed().ClockText(),
                       m_level1.Connections().size(), Feed().WatchedCount(), m_eventsLastSecond,
                       m_bytesLastSecond / 1024, LongestQueue(), HeldCount(), CpuSeconds());
}

namespace {

constexpr int kAcceptAgainMs = 500;
constexpr int kMostWaiting = 1024; // Clients that come at once; one too many would try again a second later.

} // namespace

CPort::CPort(Maker maker) : m_maker(std::move(maker)) {
    setListenBacklogSize(kMostWaiting);
    // Out of file handles, for example: the server has stopped accepting by itself, else it would spin.
    connect(this, &QTcpServer::acceptError, this,
            [this] { QTimer::singleShot(kAcceptAgainMs, this, [this] { resumeAccepting(); }); });
}

CPort::EListening CPort::Listen(uint16_t port) {
    if (listen(QHostAddress::LocalHost, port)) return EListening::Yes;
    return serverError() == QAbstractSocket::AddressInUseError ? EListening::Taken : EListening::Failed;
}

size_t CPort::LongestQueue() const {
    size_t longest = 0;
    for (const auto& connection : m_connections) longest = std::max(longest, connection->QueuedBytes());
    return longest;
}

uint64_t CPort::SentBytes() const {
    uint64_t sent = m_sentToGone;
    for (const auto& connection : m_connections) sent += connection->SentBytes();
    return sent;
}

void CPort::incomingConnection(qintptr socket) {
    m_connections.push_back(m_maker(socket));
    m_connections.back()->OnGone = [this](CConnection& connection) { Drop(connection); };
    if (OnCountChanged) OnCountChanged();
}

void CPort::Drop(CConnection& connection) {
    if (OnLeaving) OnLeaving(connection);
    m_sentToGone += connection.SentBytes();
    const auto found =
        std::find_if(m_connections.begin(), m_connections.end(), [&](const auto& c) { return c.get() == &connection; });
    found->release()->deleteLater(); // It is the one that called us.
    m_connections.erase(found);
    if (OnCountChanged) OnCountChanged();
}

} // namespace vx::sim
