#include "vxconnect/Server.h"

#include "vxconnect/AdminClient.h"
#include "vxconnect/Level1Client.h"
#include "vxconnect/LookupClient.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr int kSecondMs = 1000;
constexpr int kSoonMs = 100;

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

} // namespace

CServer::CServer(const SOptions& options)
    : m_options(options), m_startText(CSessionClock(options.date).Text()),
      m_market(options.seed, options.symbols, options.date), m_board(m_market, options.limit),
      m_admin([this](qintptr socket) {
          return std::make_unique<CAdminClient>(socket, size_t{m_options.queueKilobytes} * 1024,
                                                [this](std::string_view status) { return StatsLine(status); });
      }),
      m_lookup([this](qintptr socket) {
          return std::make_unique<CLookupClient>(socket, size_t{m_options.queueKilobytes} * 1024);
      }),
      m_level1([this](qintptr socket) {
          return std::make_unique<CLevel1Client>(socket, size_t{m_options.queueKilobytes} * 1024, m_board,
                                                 Level1Port());
      }),
      m_pump(m_board, [this] { FlushLevel1(); }) {
    WirePorts();
    m_board.OnWatchedChanged = [this] {
        if (!m_soon.isActive()) m_soon.start(kSoonMs);
    };
    m_second.setTimerType(Qt::PreciseTimer);
    m_soon.setSingleShot(true);
    m_ending.setSingleShot(true);
    connect(&m_second, &QTimer::timeout, this, [this] { OnSecond(); });
    connect(&m_soon, &QTimer::timeout, this, [this] { OnWatchesChanged(); });
    connect(&m_ending, &QTimer::timeout, this, [this] {
        if (OnFinished) OnFinished();
    });
}

CServer::~CServer() { m_board.OnWatchedChanged = nullptr; }

void CServer::WirePorts() {
    for (CPort* port : {&m_admin, &m_lookup, &m_level1}) port->OnCountChanged = [this] { OnClientCountChanged(); };
    m_level1.OnLeaving = [](CConnection& connection) { static_cast<CLevel1Client&>(connection).Leave(); };
}

bool CServer::Open(CPort& port, uint16_t number, std::string_view name, EStart& outcome) {
    const CPort::EListening listening = port.Listen(number);
    if (listening == CPort::EListening::Yes) return true;
    const bool taken = listening == CPort::EListening::Taken;
    outcome = taken ? EStart::AlreadyServed : EStart::Failed;
    m_message =
        taken ? fmt::format("vxconnect: {} port {} is already served on this machine, nothing to do", name, number)
              : fmt::format("vxconnect: cannot open {} port {}: {}", name, number, port.errorString().toStdString());
    for (CPort* opened : {&m_admin, &m_lookup, &m_level1}) opened->close();
    return false;
}

CServer::EStart CServer::Start() {
    EStart outcome = EStart::Serving;
    // The admin port is what clients try first: it opens last, when the others already answer.
    if (!Open(m_level1, m_options.level1Port.value_or(0), "level-1", outcome) ||
        !Open(m_lookup, m_options.lookupPort.value_or(0), "lookup", outcome) ||
        !Open(m_admin, m_options.adminPort.value_or(0), "admin", outcome))
        return outcome;
    m_message = fmt::format("vxconnect: simulated market on 127.0.0.1, level1={} lookup={} admin={}", Level1Port(),
                            LookupPort(), AdminPort());
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
    m_pump.Run();
    m_eventsLastSecond = m_board.EventCount() - m_eventsBefore;
    m_eventsBefore = m_board.EventCount();
    m_longestLastSecond = std::exchange(m_longestQueue, 0);
    const uint64_t bytes = m_level1.SentBytes();
    m_bytesLastSecond = bytes - m_bytesBefore;
    m_bytesBefore = bytes;
    for (const auto& connection : m_level1.Connections()) static_cast<CLevel1Client&>(*connection).TellTime();
    for (const auto& connection : m_admin.Connections()) static_cast<CAdminClient&>(*connection).TellStats();
    if (OnFigures) OnFigures(FiguresLine());
}

void CServer::OnWatchesChanged() {
    const uint32_t watched = m_board.WatchedCount();
    const bool tooMany = uint64_t{watched} * kAutoRatePerSymbol > kMaxAutoRate;
    m_pump.SetRate(m_options.rate > 0 ? m_options.rate : tooMany ? kMaxAutoRate : 0);
    for (const auto& connection : m_admin.Connections()) static_cast<CAdminClient&>(*connection).TellStats();
}

void CServer::FlushLevel1() {
    for (const auto& connection : m_level1.Connections()) connection->Flush();
    m_longestQueue = std::max(m_longestQueue, m_level1.LongestQueue());
}

std::string CServer::StatsLine(std::string_view status) const {
    const double kilobytes = static_cast<double>(m_level1.SentBytes()) / 1024;
    const double average = m_seconds > 0 ? kilobytes / static_cast<double>(m_seconds) : 0;
    return fmt::format("S,STATS,simulated market,{},{},{},{},{},{},{},{},{},{},seed {},simulation,"
                       "{:.2f},{:.2f},{:.2f},{},{},{:.2f},\r\n",
                       m_level1.serverPort(), m_board.Limit(), m_board.WatchedCount(), m_level1.Connections().size(),
                       LongestQueue(), HeldCount(), m_seconds, m_startText, m_board.Clock().Text(), status,
                       m_options.seed, kilobytes, static_cast<double>(m_bytesLastSecond) / 1024, average,
                       m_eventsLastSecond, m_board.EventCount(), CpuSeconds());
}

std::string CServer::FiguresLine() const {
    return fmt::format("{} clients={} watched={} updates/s={} KB/s={} queue={} held={} cpu={:.2f}s",
                       m_board.Clock().Text(), m_level1.Connections().size(), m_board.WatchedCount(),
                       m_eventsLastSecond, m_bytesLastSecond / 1024, LongestQueue(), HeldCount(), CpuSeconds());
}

} // namespace vx::sim
