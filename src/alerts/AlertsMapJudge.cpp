#include "alerts/AlertCondition.h"
#include "alerts/AlertField.h"
#include "alerts/AlertsMap.h"
#include "base/Number.h"
#include "base/Text.h"
#include "data/Catalogue.h"
#include "data/CellText.h"
#include "data/L1SymbolRec.h"

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

bool IsMet(uint32_t condition, double value, double threshold, bool noZero) {
    return !(noZero && value == 0.0) && ConditionHolds(condition, value, threshold);
}

SAlertNotice NewsNotice(std::string_view symbol, const A_INFO& alert, int index) {
    SAlertNotice notice;
    notice.symbol = symbol;
    notice.fieldName = AlertFieldName(NewsFieldId());
    notice.soundType = static_cast<int32_t>(alert.soundType);
    notice.loopSound = static_cast<int32_t>(alert.loopSound);
    notice.soundFile = alert.soundFile;
    notice.index = index;
    notice.isNews = true;
    return notice;
}

} // namespace

std::vector<int> CAlertsMap::Evaluate(const CSymbolRec& record) {
    std::vector<int> met;
    const SSymbolAlerts* entry = Find(record.Symbol(), EAlertMap::Live);
    if (!entry || entry->armed.empty() || !HasReceived(record)) return met;
    for (const SArmed& alert : entry->armed)
        if (IsMet(alert.condition, CellNumber(record, *alert.entry), alert.threshold, alert.noZero))
            met.push_back(alert.index);
    if (met.empty()) return met;

    const SPrices prices = PricesOf(record);
    std::erase_if(met, [&](int index) {
        const double value = CellNumber(record, *JudgedField(entry->alerts[static_cast<size_t>(index)].fieldId));
        return !EvaluateFieldAlert(record.Symbol(), index, value, prices.last, prices.bid, prices.ask);
    });
    return met;
}

bool CAlertsMap::EvaluateFieldAlert(std::string_view symbol, int index, double newValue, double last, double bid,
                                    double ask) {
    SSymbolAlerts* entry = Find(symbol, EAlertMap::Live);
    if (!entry || index < 0 || static_cast<size_t>(index) >= entry->alerts.size()) return false;
    A_INFO& alert = entry->alerts[static_cast<size_t>(index)];
    if (!IsMet(alert.condition, newValue, alert.value, alert.noZero != 0)) return false;
    std::string record =
        FormatAlertNotice(symbol, entry->alerts, static_cast<size_t>(index), {newValue, last, bid, ask});
    alert.enabled = 0;
    Rearm(symbol, *entry);
    if (m_notices) m_notices->PostNotice(std::move(record));
    return true;
}

void CAlertsMap::CheckNews(std::string_view symbols) {
    for (const std::string_view symbol : SplitCountingTail(symbols, ',')) {
        SSymbolAlerts* entry = Find(symbol, EAlertMap::Live);
        if (!entry) continue;
        std::vector<SAlertNotice> fired;
        for (size_t i = 0; i < entry->alerts.size(); ++i) {
            A_INFO& alert = entry->alerts[i];
            if (alert.fieldId != NewsFieldId() || alert.enabled == 0) continue;
            alert.enabled = 0;
            fired.push_back(NewsNotice(symbol, alert, static_cast<int>(i)));
        }
        if (fired.empty()) continue;
        Announce(symbol, entry->armed.size());
        if (!m_notices) continue;
        for (SAlertNotice& notice : fired) m_notices->PostNewsNotice(std::move(notice));
    }
}

void CAlertsMap::ResetFromRecord(std::string_view record) {
    const std::vector<std::string_view> fields = SplitCountingTail(record, ',');
    if (fields.size() < 3) return;
    SSymbolAlerts* entry = Find(fields[0], EAlertMap::Live);
    if (!entry) return;
    const int index = ReadInt32(fields[1]);
    At(*entry, index);
    A_INFO& alert = entry->alerts[static_cast<size_t>(index)];
    alert.value = ReadDouble(fields[2]);
    alert.enabled = 1;
    Rearm(fields[0], *entry);
}

} // namespace vx
