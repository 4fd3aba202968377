// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Connection.h"
#include "vxconnect/common/Feed.h"
#include "vxconnect/common/Options.h"
#include "vxconnect/data/Recording.h"
#include "vxconnect/server/SearchIndex.h"

#include <QObject>
#include <QTcpServer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx::sim {

/// One listening port on 127.0.0.1 and the clients that are connected to it.
///
/// Owns    its connections: made by the maker, dropped when they are gone
/// Thread  the one of its event loop
class CPort : public QTcpServer {
public:
    using Maker = std::function<std::unique_ptr<CConnection>(qintptr socket)>;

    explicit CPort(Maker maker);

    enum class EListening { Yes, Taken, Failed };
    /// Port 0 chooses a free one; serverPort() tells which. errorString() explains a failure.
    EListening Listen(uint16_t port);

    const std::vector<std::unique_ptr<CConnection>>& Connections() const { return m_connections; }
    /// The most bytes that wait for one client.
    size_t LongestQueue() const;
    /// Bytes sent so far to all clients, the gone ones included.
    uint64_t SentBytes() const;

    /// A client came or went.
    std::function<void()> OnCountChanged;
    /// Called before a connection that is gone is dropped.
    std::function<void(CConnection&)> OnLeaving;

protected:
    void incomingConnection(qintptr socket) override;

private:
    void Drop(CConnection& connection);

    Maker m_maker;
    std::vector<std::unique_ptr<CConnection>> m_connections;
    uint64_t m_sentToGone = 0;
};

/// The three ports of the feed client and what is served on them.
///
/// Thread  the one of its event loop
class CServer : public QObject {
public:
    /// The ports in the options must be set. Without a source, the simulated market is served.
    explicit CServer(const SOptions& options, std::unique_ptr<CSource> source = nullptr);
    ~CServer() override;

    enum class EStart { Serving, AlreadyServed, Failed };
    /// Opens the ports, all or none. Message() tells in one line what came of it.
    EStart Start();
    const std::string& Message() const { return m_message; }

    uint16_t Level1Port() const { return m_level1.serverPort(); }
    uint16_t LookupPort() const { return m_lookup.serverPort(); }
    uint16_t AdminPort() const { return m_admin.serverPort(); }

    /// Called when nobody needs the server any more; never with the option stay.
    std::function<void()> OnFinished;
    /// Called once a second with a line of figures, for --verbose.
    std::function<void(const std::string&)> OnFigures;

    const CFeed& Board() const { return m_source->Feed(); }
    /// The most bytes that have waited for one level-1 client during this second and the last.
    size_t LongestQueue() const;
    /// Symbols whose updates wait, folded, over all level-1 clients.
    size_t HeldCount() const;

private:
    void WirePorts();
    void WireSource();
    SLink Link(EPorts port) const;
    CFeed& Feed() { return m_source->Feed(); }
    const CFeed& Feed() const { return std::as_const(*m_source).Feed(); }
    void OnClientCountChanged();
    void OnSecond();
    void OnWatchesChanged();
    void TellStats();
    void FlushLevel1();
    size_t ClientCount() const;
    std::string StatsLine(bool connected) const;
    std::string FiguresLine() const;
    bool Open(EPorts which, EStart& outcome);
    std::string PortText(EPorts which) const;

    const SOptions m_options;
    std::unique_ptr<CSource> m_source;
    CSearchIndex m_searchIndex;
    const std::string m_startText; // When the server started, on the market's clock.
    std::unique_ptr<CRecorder> m_recorder;
    CPort m_admin;
    CPort m_lookup;
    CPort m_level1;
    QTimer m_second;
    QTimer m_soon; // Gathers the changes of a burst of commands into one statistics line.
    QTimer m_ending;
    QTimer m_trim; // After clients have left: returns their memory to the system.
    size_t m_clients = 0;
    std::string m_message;
    bool m_hadClient = false;
    uint64_t m_seconds = 0;
    uint64_t m_eventsBefore = 0;
    uint64_t m_eventsLastSecond = 0;
    uint64_t m_bytesBefore = 0;
    uint64_t m_bytesLastSecond = 0;
    size_t m_longestQueue = 0;
    size_t m_longestLastSecond = 0;
};

} // namespace vx::sim
