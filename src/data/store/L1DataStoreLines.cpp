// SPDX-License-Identifier: MIT
#include "data/store/L1DataStore.h"

#include "base/Clock.h"
#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vx {

namespace {

constexpr int kMarketCount = 256;
constexpr std::string_view kSummaryText = "SUMMARY";
constexpr char kQualifyingTrade = 'C'; ///< In the message contents.

constexpr size_t kContents = UpdateSlot("Message Contents");
constexpr std::array kTradeMarketSlots = {UpdateSlot("Last Market Center"), UpdateSlot("Extended Trade Market Center"),
                                          UpdateSlot("Most Recent Trade Market Center")};
constexpr int16_t kNoMarket = -1;
constexpr std::array<int16_t, kTradeMarketSlots.size()> kNoMarkets = {kNoMarket, kNoMarket, kNoMarket};

// Asks for memory before it is walked over: with many symbols little of it is in the caches, and its lines can come all
// at once.
inline void Prefetch(const void* memory, size_t size) {
    for (size_t at = 0; at < size; at += 64) __builtin_prefetch(static_cast<const char*>(memory) + at, 1);
}

bool IsDataLine(std::string_view line) { return line.size() > kFirstFieldOffset && line[1] == ','; }

// What stands before the first comma of the data. Nearly all symbols end within eight bytes: looking for the comma in a
// word is cheaper than a call.
inline std::string_view SymbolOf(std::string_view line) {
    constexpr uint64_t kEachByte = 0x0101010101010101;
    line.remove_prefix(std::min(line.size(), kFirstFieldOffset));
    if (line.size() >= sizeof(uint64_t)) {
        const uint64_t other = CSeededHash::Word(line) ^ kEachByte * ','; // A zero byte is a comma.
        const uint64_t hits = (other - kEachByte) & ~other & kEachByte << 7;
        if (hits != 0) return line.substr(0, static_cast<size_t>(std::countr_zero(hits)) / 8);
    }
    return line.substr(0, line.find(','));
}

// Market ids are numbers of a few digits; everything else is left to the lenient reader.
int32_t ReadMarketId(std::string_view text) {
    int32_t id = 0;
    for (const char c : text) {
        if (c < '0' || c > '9' || id >= kMarketCount) return ReadInt32(text);
        id = id * 10 + (c - '0');
    }
    return id;
}

// Changes are coloured by their sign, not by whether they grew.
void ColourBySign(CQuoteData& quote, size_t slot) {
    const double value = quote.Number(slot);
    const int sign = static_cast<int>(value > 0) - static_cast<int>(value < 0); // Signs follow no pattern: no branch.
    quote.SetDirection(slot, static_cast<EDirection>(static_cast<int>(EDirection::Unchanged) + sign));
}

void Flatten(CQuoteData& quote) {
    for (size_t slot = 0; slot < kUpdateFieldCount; ++slot) {
        const EDirection direction = quote.Direction(slot);
        if (IsFlattenedBySummary(kUpdateLayout[slot].rule) && direction != EDirection::NeverSet)
            quote.SetDirection(slot, EDirection::Unchanged);
    }
}

std::string_view SubTypeName(std::string_view typeName, int32_t subType) {
    const std::string name = LowerAscii(typeName);
    if (ContainsText(name, "option"))
        return subType == 1 ? "Binary Option" : subType == 2 ? "Non-Standard Option" : std::string_view{};
    if (ContainsText(name, "fund")) return subType == 1 ? "Exchange Traded Fund" : "Fund";
    return {};
}

void AddTrade(CTimeAndSales& history, const CQuoteData& quote) {
    sTimeAndSalesRec trade;
    trade.price = quote.Number(UpdateSlot("Last"));
    trade.size = quote.Integer(UpdateSlot("Last Size"));
    trade.extendedPrice = quote.Number(UpdateSlot("Extended Trade"));
    trade.extendedSize = quote.Integer(UpdateSlot("Extended Trade Size"));
    history.Add(trade, quote.Text(UpdateSlot("Last Time")));
}

} // namespace

void CL1DataStore::OnLevel1Message(std::string_view line) {
    switch (line.empty() ? '\0' : line.front()) {
    case 'Q':
        OnUpdate(line);
        break;
    case 'P':
        OnSummary(line);
        break;
    case 'F':
        OnFundamental(line);
        break;
    case 'R':
        OnRegional(line);
        break;
    default:
        break;
    }
}

void CL1DataStore::ExpectFar(std::string_view later, std::string_view soon) const {
    m_records.PrefetchEntry(SymbolOf(later));
    const CL1SymbolRec* record = m_records.FindByKey(SymbolOf(soon));
    if (record) Prefetch(record, sizeof(*record));
}

void CL1DataStore::OnUpdate(std::string_view line) {
    SMergeNotes notes;
    CL1SymbolRec* record = MergeQuote(line, notes);
    if (!record) return;
    if (notes.Carried(kNoteChange)) ColourBySign(record->m_quote, UpdateSlot("Change"));
    if (notes.Carried(kNoteChangeFromOpen)) ColourBySign(record->m_quote, UpdateSlot("Change From Open"));
    if (record->m_history && notes.Carried(kNoteContents) &&
        record->m_quote.Text(kContents).find(kQualifyingTrade) != std::string_view::npos)
        AddTrade(*record->m_history, record->m_quote);
    FinishMerge(*record, notes);
}

void CL1DataStore::OnSummary(std::string_view line) {
    SMergeNotes notes;
    CL1SymbolRec* record = MergeQuote(line, notes);
    if (!record) return;
    record->m_quote.SetText(kContents, kSummaryText);
    Flatten(record->m_quote);
    FinishMerge(*record, notes);
}

void CL1DataStore::OnFundamental(std::string_view line) {
    SCutLine cut;
    if (IsDataLine(line)) m_kernel.cut(line, kFundamentalLayout.size(), cut);
    const std::string_view symbol = cut.Symbol(line);
    if (symbol.empty()) return;
    CL1SymbolRec& record = RecordForLine(symbol);
    SMergeNotes notes;
    if (!record.m_fundamentals) record.m_fundamentals = std::make_unique<CFundamentalData>();
    m_kernel.merge(line, cut, record.m_fundamentals->Slots(), notes);
    NameFundamentalCodes(record, notes.carried);
    record.m_updated = record.m_hasData = true;
    record.NotifyAll(); // Rows of regional quotes show the fundamentals too.
    if (record.m_stray) WeighStray(record);
}

void CL1DataStore::OnRegional(std::string_view line) {
    SCutLine cut;
    if (IsDataLine(line)) m_kernel.cut(line, kRegionLayout.size(), cut);
    const std::string_view symbol = cut.Symbol(line);
    if (symbol.empty() || cut.count < 2 || cut.slots[1] != RegionSlot("Region")) return;
    const std::string_view name = cut.Trimmed(line, 1);

    // The feed sends every region of a symbol; only those that somebody asked for have a record.
    const auto find = [&]() -> sRegQuoteData* {
        CL1SymbolRec* record = m_records.Find(symbol);
        return record ? record->FindRegionOf(name) : nullptr;
    };
    sRegQuoteData* region = find();
    if (!region) return;
    if (region->ArmedAlerts() > 0) {
        DrainBeforeChange(std::string(region->Symbol()));
        region = find();
        if (!region) return;
    }
    SMergeNotes notes;
    m_kernel.merge(line, cut, region->data.Slots(), notes);
    if (notes.priceWord != EPriceWord::None) region->notFound = notes.priceWord == EPriceWord::NotFound;
    region->updated = region->hasData = true;
    region->Notify();
}

CL1SymbolRec* CL1DataStore::MergeQuote(std::string_view line, SMergeNotes& notes) {
    SCutLine cut;
    if (IsDataLine(line)) m_kernel.cut(line, kUpdateLayout.size(), cut);
    const std::string_view symbol = cut.Symbol(line);
    if (symbol.empty()) return nullptr;
    CL1SymbolRec& record = RecordForLine(symbol);
    Prefetch(&record.m_quote, sizeof(record.m_quote));
    m_kernel.merge(line, cut, record.m_quote.Slots(), notes);
    if (notes.Carried(kNoteTradeMarkets)) NameMarkets(record, notes);
    if (!m_markets.done && notes.Carried(kNoteQuoteMarkets)) LoadMarkets(); // Their names are looked up when shown.
    return &record;
}

void CL1DataStore::FinishMerge(CL1SymbolRec& record, const SMergeNotes& notes) {
    record.m_updated = record.m_hasData = true;
    const bool notFound =
        notes.priceWord == EPriceWord::None ? record.m_unknown : notes.priceWord == EPriceWord::NotFound;
    if (notFound == record.m_unknown) {
        record.Notify();
    } else {
        record.m_unknown = notFound;
        record.NotifyAll();
    }
    if (record.m_stray) WeighStray(record);
}

CL1SymbolRec& CL1DataStore::RecordForLine(std::string_view symbol) {
    CL1SymbolRec* record = m_records.Find(symbol);
    if (record && record->ArmedAlerts() > 0) {
        DrainBeforeChange(symbol);
        record = m_records.Find(symbol);
    }
    return record ? *record : AddStray(symbol);
}

// A listener may unwatch the symbol while it drains, so the record is looked up again after each.
void CL1DataStore::DrainBeforeChange(std::string_view symbol) {
    const CChangeQueue* last = nullptr;
    for (const CSymbolRec* record = FindMutable(symbol); record; record = FindMutable(symbol)) {
        CChangeQueue* queue = record->NextWaiting();
        if (!queue || queue == last) return;
        last = queue;
        queue->DrainNow();
    }
}

// Market centres arrive as ids; the record keeps the names in the same fields. While the names are missing the ids wait
// beside the record, and a load that succeeds names them.
void CL1DataStore::NameMarkets(CL1SymbolRec& record, const SMergeNotes& notes) {
    constexpr std::array kCarried = {kNoteLastMarket, kNoteExtendedMarket, kNoteRecentMarket};
    bool waits = false;
    for (size_t i = 0; i < kTradeMarkets; ++i) {
        if (!notes.Carried(kCarried[i])) continue;
        const int32_t id = ReadMarketId(record.m_quote.Text(kTradeMarketSlots[i]));
        const bool isMarket = id >= 0 && id < kMarketCount;
        const bool named = isMarket && m_markets.done;
        record.m_quote.SetText(kTradeMarketSlots[i], named ? m_names->MarketName(id) : std::string_view{});
        if (m_markets.done || !m_names) continue;
        auto& waiting = m_unnamed.try_emplace(record.Ids().id2, kNoMarkets).first->second;
        waiting[i] = isMarket ? static_cast<int16_t>(id) : kNoMarket;
        waits = waits || isMarket;
    }
    if (waits) LoadMarkets();
}

void CL1DataStore::NameWaitingMarkets() {
    for (const auto& [number, ids] : m_unnamed) {
        auto& record = static_cast<CL1SymbolRec&>(*m_byNumber.Find(number));
        for (size_t i = 0; i < kTradeMarkets; ++i)
            if (ids[i] != kNoMarket) record.m_quote.SetText(kTradeMarketSlots[i], m_names->MarketName(ids[i]));
    }
    m_unnamed.clear();
}

void CL1DataStore::NameFundamentalCodes(CL1SymbolRec& record, unsigned carried) {
    constexpr size_t kMarket = FundamentalSlot("Listed Market");
    constexpr size_t kType = FundamentalSlot("Security Type");
    constexpr size_t kTypeName = FundamentalSlot("Security Type Name");
    constexpr size_t kSubType = FundamentalSlot("Security SubType");
    if (carried == 0) return;
    CFundamentalData& data = *record.m_fundamentals;
    if ((carried & kNoteListedMarket) != 0 && HaveMarkets())
        data.SetText(FundamentalSlot("Listed Market Name"), m_names->MarketName(data.Integer(kMarket)));
    if ((carried & kNoteSecurityType) != 0 && HaveSecurityTypes())
        data.SetText(kTypeName, m_names->SecurityTypeName(data.Integer(kType)));
    const bool typed = data.Direction(kSubType) != EDirection::NeverSet || !data.Text(kTypeName).empty();
    if ((carried & (kNoteSecurityType | kNoteSecuritySubType)) != 0 && typed)
        data.SetText(FundamentalSlot("Security SubType Name"),
                     SubTypeName(data.Text(kTypeName), data.Integer(kSubType)));
}

bool CL1DataStore::LoadMarkets() {
    return Load(m_markets, [](CCodeNames& names) { return names.EnsureMarketsLoaded(); });
}

bool CL1DataStore::LoadSecurityTypes() {
    return Load(m_securityTypes, [](CCodeNames& names) { return names.EnsureSecurityTypesLoaded(); });
}

template <typename TLoad> bool CL1DataStore::Load(SLoad& state, TLoad load) {
    if (!m_names) return false;
    const int64_t now = CClock::Instance().MonotonicMs();
    if (now < state.nextTryMs) return false;
    state.done = load(*m_names);
    if (!state.done) {
        state.nextTryMs = CClock::Instance().MonotonicMs() + kLoadRetryMs;
        return false;
    }
    // The tables mostly come together, and nobody may ask for the other one again for long.
    if (!m_markets.done) m_markets.done = m_names->EnsureMarketsLoaded();
    if (!m_securityTypes.done) m_securityTypes.done = m_names->EnsureSecurityTypesLoaded();
    // Data that came while the names could not be loaded has been waiting for them; so has that of the line at hand.
    if (m_markets.done) NameWaitingMarkets();
    m_records.ForEach([&](CL1SymbolRec& record) {
        if (!record.m_hasData) return;
        const auto known = [&](size_t slot) { return record.Fundamentals().Direction(slot) != EDirection::NeverSet; };
        const bool market = m_markets.done && known(FundamentalSlot("Listed Market"));
        const bool type = m_securityTypes.done && known(FundamentalSlot("Security Type"));
        NameFundamentalCodes(record, (market ? kNoteListedMarket : 0u) | (type ? kNoteSecurityType : 0u));
        record.NotifyAll();
    });
    return true;
}

} // namespace vx
