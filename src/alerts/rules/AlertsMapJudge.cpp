// SPDX-License-Identifier: MIT
#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertsMap.h"
#include "base/Number.h"
#include "base/Text.h"
#include "data/catalogue/Catalogue.h"
#include "data/record/L1SymbolRec.h"
#include "data/text/CellText.h"

#include <algorithm>
#include <utility>

namespace vx {

namespace {

bool HasReceived(const CSymbolRec& record) {
    if (const sRegQuoteData* region = record.AsRegion()) return region->updated || region->hasData;
    return record.Base().IsUpdated() || record.Base().HasData();
}

struct SPrices {
    double last;
    double bid;
    double ask;
};

SPrices PricesOf(const CSymbolRec& record) {
    static const SFieldEntry& last = *FindField("Last");
    static const SFieldEntry& bid = *FindField("Bid");
    static const SFieldEntry& ask = *FindField("Ask");
    return {CellNumber(record, last), CellNumber(record, bid), CellNumber(record, ask)};
}

SAlertRecord NewsNotice(std::string_view symbol, const A_INFO& alert, int index, std::string_view headline) {
    SAlertRecord record;
    record.headline = headline;
    record.symbol = symbol;
    record.fieldName = AlertFieldName(NewsFieldId());
    record.soundType = static_cast<int32_t>(alert.soundType);
    record.loopSound = static_cast<int32_t>(alert.loopSound);
    record.soundFile = alert.soundFile;
    record.index = index;
    record.isNews = true;
    return record;
}

} // namespace

// Updates of one record follow each other closely: its alerts are found by its number, without a look at its symbol.
const CAlertsMap::SSymbolAlerts* CAlertsMap::FindFor(const CSymbolRec& record) {
    if (Map(EAlertMap::Live).empty()) return nullptr;
    if (m_found.empty()) m_found.resize(kFoundRecords);
    const SRecordIds ids = record.Ids();
    SFound& found = m_found[ids.id2 % kFoundRecords];
    if (found.record.id2 != ids.id2 || found.record.id1 != ids.id1 || found.liveKeys != m_liveKeys)
        found = {ids, m_liveKeys, Find(record.Symbol(), EAlertMap::Live)};
    return found.alerts;
}

// The values are those of the fields' cells. The quote of a symbol is read without a detour; until it came, which may
// be after the fundamental data, nothing of it is judged.
template <typename Visit>
void CAlertsMap::ForEachMet(const SSymbolAlerts& entry, const CSymbolRec& record, Visit&& visit) {
    const bool isRegion = record.AsRegion() != nullptr;
    const CQuoteData& quote = record.Base().Quote();
    const auto valueOf = [&](const SArmed& armed) -> double {
        switch (isRegion ? EStoredAs::Elsewhere : armed.storedAs) {
        case EStoredAs::QuoteNumber:
            return quote.Number(armed.slot);
        case EStoredAs::QuoteInteger:
            return quote.Integer(armed.slot);
        case EStoredAs::QuoteUnsigned:
            return quote.Unsigned(armed.slot);
        case EStoredAs::Elsewhere:
            break;
        }
        return CellNumber(record, *JudgedField(entry.alerts[static_cast<size_t>(armed.index)].fieldId));
    };
    for (auto run = entry.armed.begin(); run != entry.armed.end(); run += run->run) {
        const ESide side = run->Side();
        const double value = valueOf(*run);
        const auto end = run + run->run;
        const auto isReached = [&](const SArmed& armed) {
            return side == ESide::Below ? armed.threshold >= value : armed.threshold <= value;
        };
        if (side != ESide::Equal && !isReached(*run)) continue;
        if (run->storedAs != EStoredAs::Elsewhere && !isRegion && quote.IsEmpty()) continue;
        auto armed = side == ESide::Equal ? std::ranges::lower_bound(run, end, value, {}, &SArmed::threshold) : run;
        for (; armed != end && isReached(*armed); ++armed)
            if (IsMet(armed->meetingResults, value, armed->threshold, armed->noZero)) visit(armed->index, value);
    }
}

std::vector<int> CAlertsMap::Evaluate(const CSymbolRec& record) {
    std::vector<int> fired;
    const SSymbolAlerts* entry = FindFor(record);
    if (!entry || entry->armed.empty() || !HasReceived(record)) return fired;
    std::vector<std::pair<int, double>> met; // First all, since firing changes the list that is walked.
    ForEachMet(*entry, record, [&](int index, double value) { met.emplace_back(index, value); });
    if (met.empty()) return fired;
    std::ranges::sort(met); // By their places in the array.

    const SPrices prices = PricesOf(record);
    for (const auto& [index, value] : met)
        if (EvaluateFieldAlert(record.Symbol(), index, value, prices.last, prices.bid, prices.ask))
            fired.push_back(index);
    return fired;
}

bool CAlertsMap::EvaluateFieldAlert(std::string_view symbol, int index, double newValue, double last, double bid,
                                    double ask) {
    SSymbolAlerts* entry = Find(symbol, EAlertMap::Live);
    if (!entry || index < 0 || static_cast<size_t>(index) >= entry->alerts.size()) return false;
    A_INFO& alert = entry->alerts[static_cast<size_t>(index)];
    if (!IsMet(MeetingResults(alert.condition), newValue, alert.value, alert.noZero != 0)) return false;
    std::string record =
        FormatAlertRecord(symbol, entry->alerts, static_cast<size_t>(index), {newValue, last, bid, ask});
    const A_INFO fired = alert;
    Become(symbol, alert, 0, alert.value);
    Rearm(symbol, *entry, static_cast<size_t>(index));
    if (m_receiver) m_receiver->PostFired(std::move(record), fired);
    AnnounceFiredOrArmed();
    return true;
}

void CAlertsMap::CheckNews(std::string_view symbols, std::string_view headline) {
    bool anyFired = false;
    for (const std::string_view symbol : SplitCountingTail(symbols, ',')) {
        SSymbolAlerts* entry = Find(symbol, EAlertMap::Live);
        if (!entry) continue;
        std::vector<std::pair<SAlertRecord, A_INFO>> fired;
        for (size_t i = 0; i < entry->alerts.size(); ++i) {
            A_INFO& alert = entry->alerts[i];
            if (alert.fieldId != NewsFieldId() || alert.enabled == 0) continue;
            fired.emplace_back(NewsNotice(symbol, alert, static_cast<int>(i), headline), alert);
            Become(symbol, alert, 0, alert.value);
        }
        if (fired.empty()) continue;
        anyFired = true;
        Announce(symbol, entry->armed.size());
        if (!m_receiver) continue;
        for (auto& [record, alert] : fired) m_receiver->PostFiredNews(std::move(record), alert);
    }
    if (anyFired) AnnounceFiredOrArmed();
}

bool CAlertsMap::ResetFromRecord(std::string_view record) {
    const std::vector<std::string_view> fields = SplitCountingTail(record, ',');
    if (fields.size() < 3) return false;
    SSymbolAlerts* entry = Find(fields[0], EAlertMap::Live);
    if (!entry) return false;
    const int index = ReadInt32(fields[1]);
    At(*entry, index);
    Become(fields[0], entry->alerts[static_cast<size_t>(index)], 1, ReadDouble(fields[2]));
    Rearm(fields[0], *entry, static_cast<size_t>(index));
    AnnounceFiredOrArmed();
    return true;
}

void CAlertsMap::Arm(std::string_view symbol, int index) {
    SSymbolAlerts* entry = Find(symbol, EAlertMap::Live);
    if (!entry || index < 0 || static_cast<size_t>(index) >= entry->alerts.size()) return;
    A_INFO& alert = entry->alerts[static_cast<size_t>(index)];
    Become(symbol, alert, 1, alert.value);
    Rearm(symbol, *entry, static_cast<size_t>(index));
    AnnounceFiredOrArmed();
}

} // namespace vx
