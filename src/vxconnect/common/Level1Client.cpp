// SPDX-License-Identifier: MIT
#include "vxconnect/common/Level1Client.h"

#include "base/Text.h"
#include "vxconnect/common/WireText.h"

#include <QTimer>

#include <algorithm>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr int kProbeMs = 100;
constexpr std::string_view kSyntaxError = "E,!SYNTAX_ERROR!,\r\n";

// Cuts a prefix off; false when the line does not begin with it.
bool TakePrefix(std::string_view& line, std::string_view prefix) {
    if (line.substr(0, prefix.size()) != prefix) return false;
    line.remove_prefix(prefix.size());
    return true;
}

CFieldMask WithoutCompanions(CFieldMask mask) {
    mask.Clear(EField::Symbol);
    mask.Clear(EField::MessageContents);
    return mask;
}

} // namespace

CLevel1Client::CLevel1Client(qintptr socket, const SLink& link, CFeed& feed, uint16_t port)
    : CConnection(socket, link), m_feed(feed), m_port(port), m_worthALine(WithoutCompanions(m_selection.Mask())) {}

CLevel1Client::~CLevel1Client() { Leave(); }

void CLevel1Client::Leave() {
    for (auto& [symbol, subscription] : m_watches) m_feed.Leave(*subscription);
    m_watches.clear();
    m_awaited.clear();
    m_held.clear();
    m_heldBegin = 0;
}

void CLevel1Client::OnLine(std::string_view line) {
    const char command = line.front();
    const std::string_view symbol = line.substr(1);
    if (line.substr(0, 2) == "S,") {
        OnSystemCommand(line.substr(2));
    } else if (command == 'w' && IsSymbolText(symbol)) {
        Watch(symbol);
    } else if (command == 'r' && IsSymbolText(symbol)) {
        Unwatch(symbol);
    } else {
        Send(kSyntaxError);
    }
}

void CLevel1Client::OnSystemCommand(std::string_view command) {
    if (TakePrefix(command, "SELECT UPDATE FIELDS,")) {
        SelectFields(command);
    } else if (command == "NEWSON") {
        m_wantsNews = true;
    } else if (TakePrefix(command, "REGON,")) {
        WantRegions(command);
    } else if (!TakePrefix(command, "SET PROTOCOL,") && !TakePrefix(command, "SET CLIENT NAME,")) {
        Send(kSyntaxError);
    }
}

void CLevel1Client::SelectFields(std::string_view names) {
    m_selection = CFieldSelection(names);
    m_worthALine = WithoutCompanions(m_selection.Mask());
    Send(fmt::format("S,IP,127.0.0.1,{}\r\n", m_port));
}

void CLevel1Client::Watch(std::string_view symbol) {
    const auto index = m_feed.Find(symbol);
    if (!index) return Await(symbol);
    std::unique_ptr<SSubscription>& subscription = m_watches[std::string(symbol)];
    if (!subscription) {
        subscription = std::make_unique<SSubscription>();
        subscription->client = this;
        subscription->symbol = symbol;
        // Each spelling of a symbol counts for its client, which bounds their number.
        if (m_watches.size() > m_feed.Limit() || !m_feed.Join(*subscription, *index)) {
            m_watches.erase(subscription->symbol);
            return Send(fmt::format("S,SYMBOL LIMIT REACHED,{}\r\n", symbol));
        }
        subscription->regions = m_regionsWanted.contains(subscription->symbol);
    }
    SendFundamentals(*subscription);
    SendSummary(*subscription);
    SendRegions(*subscription, ~uint64_t{0});
}

// A refusal is final, but the symbol's first row may still come.
void CLevel1Client::Await(std::string_view symbol) {
    if (!m_feed.MayCome()) return Send(fmt::format("n,{}\r\n", symbol));
    Forget(symbol);
    if (m_awaited.size() >= m_feed.Limit()) return Send(fmt::format("S,SYMBOL LIMIT REACHED,{}\r\n", symbol));
    m_awaited.emplace(UpperAscii(symbol), symbol);
}

void CLevel1Client::Forget(std::string_view symbol) {
    const auto [first, last] = m_awaited.equal_range(UpperAscii(symbol));
    const auto found = std::find_if(first, last, [&](const auto& awaited) { return awaited.second == symbol; });
    if (found != last) m_awaited.erase(found);
}

void CLevel1Client::SymbolCame(std::string_view symbol) {
    const std::string key = UpperAscii(symbol);
    for (auto found = m_awaited.find(key); found != m_awaited.end(); found = m_awaited.find(key)) {
        const std::string asked = std::move(found->second);
        m_awaited.erase(found);
        Watch(asked);
    }
}

void CLevel1Client::Unwatch(std::string_view symbol) {
    Forget(symbol);
    m_regionsWanted.erase(std::string(symbol));
    const auto found = m_watches.find(std::string(symbol));
    if (found == m_watches.end()) return;
    SSubscription& subscription = *found->second;
    if (subscription.held)
        std::replace(m_held.begin(), m_held.end(), &subscription, static_cast<SSubscription*>(nullptr));
    m_feed.Leave(subscription);
    m_watches.erase(found);
}

// The newest of every region comes at once, what changes follows. Whoever does not watch the symbol, or was refused it
// for now, gets them from the watch on.
void CLevel1Client::WantRegions(std::string_view symbol) {
    if (!m_feed.Find(symbol)) return;
    if (m_regionsWanted.size() < kMostRegions) m_regionsWanted.emplace(symbol);
    const auto found = m_watches.find(std::string(symbol));
    if (found == m_watches.end()) return;
    found->second->regions = true;
    SendRegions(*found->second, ~uint64_t{0});
}

void CLevel1Client::SendSummary(SSubscription& subscription) {
    const CSecurity& security = *subscription.watched->security;
    SendQuote('P', subscription, security.Present(), security.Contents());
}

void CLevel1Client::SendFundamentals(SSubscription& subscription) {
    Send(m_feed.FundamentalLine(subscription.watched->index, subscription.symbol));
}

void CLevel1Client::SendRegions(SSubscription& subscription, uint64_t regions) {
    const CSecurity& security = *subscription.watched->security;
    for (size_t i = 0; subscription.regions && i < security.RegionCount(); ++i)
        if (regions >> i & 1) security.AppendRegion(Queue(), subscription.symbol, i);
}

void CLevel1Client::SendQuote(char letter, const SSubscription& subscription, const CFieldMask& fields,
                              uint32_t contents) {
    if ((fields & m_worthALine).Empty() && letter == 'Q') return;
    subscription.watched->security->AppendQuote(Queue(), letter, subscription.symbol, fields, contents, m_selection);
}

void CLevel1Client::Tell(SSubscription& subscription, const SUpdate& update) {
    if (!IsOpen()) return;
    FlushWhenFull();
    if (HoldsBack() || !HasRoom()) return Hold(subscription, update);
    if (update.newSession || update.newFundamentals) SendFundamentals(subscription);
    if (update.newSession || update.newSummary) {
        SendSummary(subscription);
    } else {
        SendQuote('Q', subscription, update.changed, subscription.watched->security->Contents());
    }
    SendRegions(subscription, update.regions);
}

void CLevel1Client::Hold(SSubscription& subscription, const SUpdate& update) {
    subscription.heldFields |= update.changed;
    subscription.heldContents |= subscription.watched->security->Contents();
    subscription.heldRegions |= update.regions;
    subscription.heldSummary |= update.newSession || update.newSummary;
    subscription.heldFundamentals |= update.newSession || update.newFundamentals;
    if (subscription.held) return;
    subscription.held = true;
    m_held.push_back(&subscription);
}

void CLevel1Client::Release(SSubscription& subscription) {
    if (subscription.heldFundamentals) SendFundamentals(subscription);
    if (subscription.heldSummary) {
        SendSummary(subscription);
    } else {
        SendQuote('Q', subscription, subscription.heldFields, subscription.heldContents);
    }
    SendRegions(subscription, subscription.heldRegions);
    subscription.held = subscription.heldSummary = subscription.heldFundamentals = false;
    subscription.heldContents = 0;
    subscription.heldRegions = 0;
    subscription.heldFields = {};
}

void CLevel1Client::TellHeadline(const std::string& line) {
    if (!m_wantsNews || !IsOpen()) return;
    FlushWhenFull();
    if (!HoldsBack() && HasRoom()) return Send(line);
    if (m_heldHeadlines.size() == kMostHeldHeadlines) m_heldHeadlines.pop_front();
    m_heldHeadlines.push_back(line);
}

void CLevel1Client::OnRoom() {
    for (; !m_heldHeadlines.empty() && HasRoom() && IsOpen(); m_heldHeadlines.pop_front()) {
        Send(m_heldHeadlines.front());
        FlushWhenFull();
    }
    while (HeldCount() > 0 && HasRoom() && IsOpen()) {
        if (SSubscription* const subscription = m_held[m_heldBegin++]) Release(*subscription);
        FlushWhenFull();
    }
    if (HeldCount() == 0) {
        m_held.clear();
        m_heldBegin = 0;
    }
}

void CLevel1Client::TellTime() {
    if (HasRoom() && !HoldsBack()) Send(fmt::format("T,{}\r\n", m_feed.ClockText()));
    Flush();
}

void CLevel1Client::OnOverlongLine() { Send(kSyntaxError); }

// A client that is gone altogether answers the first line with a reset, which the second one finds.
void CLevel1Client::OnEndOfInput() {
    TellTime();
    QTimer::singleShot(kProbeMs, this, [this] { TellTime(); });
}

} // namespace vx::sim
