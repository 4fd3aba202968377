#include "vxconnect/Level1Client.h"

#include "vxconnect/Fundamentals.h"
#include "vxconnect/QuoteLine.h"

#include <QTimer>

#include <algorithm>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr size_t kMaxSymbol = 255;
constexpr int kProbeMs = 100;
constexpr std::string_view kSyntaxError = "E,!SYNTAX_ERROR!,\r\n";

bool IsSymbolText(std::string_view text) {
    const auto fits = [](char c) { return static_cast<unsigned char>(c) >= 0x20 && c != 0x7F && c != ','; };
    return !text.empty() && text.size() <= kMaxSymbol && std::all_of(text.begin(), text.end(), fits);
}

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

CLevel1Client::CLevel1Client(qintptr socket, size_t queueLimit, CWatchBoard& board, uint16_t port)
    : CConnection(socket, queueLimit), m_board(board), m_port(port),
      m_worthALine(WithoutCompanions(m_selection.Mask())) {}

CLevel1Client::~CLevel1Client() { Leave(); }

void CLevel1Client::Leave() {
    for (auto& [index, subscription] : m_watches) m_board.Leave(*subscription);
    m_watches.clear();
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
    } else if (!TakePrefix(command, "SET PROTOCOL,") && !TakePrefix(command, "SET CLIENT NAME,") &&
               !TakePrefix(command, "REGON,")) {
        Send(kSyntaxError);
    }
}

void CLevel1Client::SelectFields(std::string_view names) {
    m_selection = CFieldSelection(names);
    m_worthALine = WithoutCompanions(m_selection.Mask());
    Send(fmt::format("S,IP,127.0.0.1,{}\r\n", m_port));
}

void CLevel1Client::Watch(std::string_view symbol) {
    const auto index = m_board.Market().Find(symbol);
    if (!index) return Send(fmt::format("n,{}\r\n", symbol));
    std::unique_ptr<SSubscription>& subscription = m_watches[*index];
    if (!subscription) {
        subscription = std::make_unique<SSubscription>();
        subscription->client = this;
        if (!m_board.Join(*subscription, *index)) {
            m_watches.erase(*index);
            return Send(fmt::format("S,SYMBOL LIMIT REACHED,{}\r\n", symbol));
        }
    }
    SendAll(*subscription);
}

void CLevel1Client::Unwatch(std::string_view symbol) {
    const auto index = m_board.Market().Find(symbol);
    const auto found = index ? m_watches.find(*index) : m_watches.end();
    if (found == m_watches.end()) return;
    SSubscription& subscription = *found->second;
    if (subscription.held)
        std::replace(m_held.begin(), m_held.end(), &subscription, static_cast<SSubscription*>(nullptr));
    m_board.Leave(subscription);
    m_watches.erase(found);
}

void CLevel1Client::SendAll(SSubscription& subscription) {
    const CInstrument& instrument = *subscription.watched->instrument;
    SendFundamentals(subscription);
    SendQuote('P', instrument, instrument.Present(), static_cast<uint32_t>(instrument.Value(EField::MessageContents)));
}

void CLevel1Client::SendFundamentals(SSubscription& subscription) {
    Send(FundamentalLine(m_board.Market(), subscription.watched->index));
}

void CLevel1Client::SendQuote(char letter, const CInstrument& instrument, const CFieldMask& fields, uint32_t contents) {
    if ((fields & m_worthALine).Empty()) return;
    char* const out = Queue().Reserve(kMaxQuoteLine);
    Queue().Commit(WriteQuoteLine(out, letter, instrument, fields, contents, m_selection));
}

void CLevel1Client::Tell(SSubscription& subscription, const SUpdate& update) {
    if (!IsOpen()) return;
    FlushWhenFull();
    if (HeldCount() > 0 || !HasRoom()) return Hold(subscription, update);
    if (update.newSession) return SendAll(subscription);
    if (update.newExtreme) SendFundamentals(subscription);
    const CInstrument& instrument = *subscription.watched->instrument;
    SendQuote('Q', instrument, update.changed, static_cast<uint32_t>(instrument.Value(EField::MessageContents)));
}

void CLevel1Client::Hold(SSubscription& subscription, const SUpdate& update) {
    subscription.heldFields |= update.changed;
    subscription.heldContents |=
        static_cast<uint32_t>(subscription.watched->instrument->Value(EField::MessageContents));
    subscription.heldSession |= update.newSession;
    subscription.heldExtreme |= update.newExtreme;
    if (subscription.held) return;
    subscription.held = true;
    m_held.push_back(&subscription);
}

void CLevel1Client::Release(SSubscription& subscription) {
    if (subscription.heldSession) {
        SendAll(subscription);
    } else {
        if (subscription.heldExtreme) SendFundamentals(subscription);
        SendQuote('Q', *subscription.watched->instrument, subscription.heldFields, subscription.heldContents);
    }
    subscription.held = subscription.heldSession = subscription.heldExtreme = false;
    subscription.heldContents = 0;
    subscription.heldFields = {};
}

void CLevel1Client::OnRoom() {
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
    if (HasRoom() && HeldCount() == 0) Send(fmt::format("T,{}\r\n", m_board.Clock().Text()));
    Flush();
}

void CLevel1Client::OnOverlongLine() { Send(kSyntaxError); }

// A client that is gone altogether answers the first line with a reset, which the second one finds.
void CLevel1Client::OnEndOfInput() {
    TellTime();
    QTimer::singleShot(kProbeMs, this, [this] { TellTime(); });
}

} // namespace vx::sim
