// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/FurtherKeyTable.h"

#include "alerts/rules/AlertInfo.h"
#include "base/Number.h"
#include "watchlist/document/WatchlistDoc.h"

namespace vx {

namespace {

// As it is after a text was read: a column that stands for another one's field has that field's number.
CAlertArray AsRead(const CAlertArray& alerts) {
    CAlertArray out;
    for (const A_INFO& alert : alerts) {
        const std::optional<int32_t> fieldId = AlertFieldId(AlertFieldName(alert.fieldId));
        if (!fieldId) continue;
        out.push_back(alert);
        out.back().fieldId = *fieldId;
    }
    return out;
}

void AppendAlert(CFurtherWriter& out, std::string_view symbol, const A_INFO& alert) {
    out.Quote(symbol).Quote(AlertFieldName(alert.fieldId)).Add(alert.condition).Add(alert.value);
    out.Add(alert.enabled).Add(alert.noZero).Add(alert.soundType).Add(alert.loopSound).Quote(alert.soundFile);
    out.EndEntry();
}

std::optional<A_INFO> ReadAlert(CFurtherReader& entry) {
    const std::optional<std::string> field = entry.Text();
    const std::optional<int32_t> fieldId = field ? AlertFieldId(*field) : std::nullopt;
    if (!fieldId) return std::nullopt;
    A_INFO alert;
    alert.fieldId = *fieldId;
    alert.condition = ReadUInt32(entry.Word());
    alert.value = entry.Double();
    for (uint32_t* number : {&alert.enabled, &alert.noZero, &alert.soundType, &alert.loopSound})
        *number = ReadUInt32(entry.Word());
    std::optional<std::string> sound = entry.Text();
    if (!sound || !entry.IsDone()) return std::nullopt;
    alert.soundFile = std::move(*sound);
    return alert;
}

} // namespace

std::string WriteFurtherAlerts(const SFurtherSource& source) {
    if (source.carried.alerts) return {};
    const CAlertsMap& alerts = source.doc.Alerts();
    CAlertsMap given;
    given.Load(source.fixed.alerts.text);
    CFurtherWriter out;
    for (const std::string& symbol : given.Symbols())
        if (alerts.Count(symbol) == 0) out.Quote(symbol).EndEntry();
    for (const std::string& symbol : alerts.Symbols()) {
        const CAlertArray all = AsRead(alerts.Get(symbol));
        if (all == given.Get(symbol)) continue;
        for (const A_INFO& alert : all) AppendAlert(out, symbol, alert);
    }
    return out.Take();
}

void ReadFurtherAlerts(const SFurtherValue& value) {
    value.ForEachEntry(CAlertsMap::kMostAlerts, [&](CFurtherReader& entry) {
        std::optional<std::string> symbol = entry.Text();
        if (!symbol || symbol->empty()) return false;
        std::optional<A_INFO> alert;
        if (!entry.IsDone() && !(alert = ReadAlert(entry))) return false;
        value.content.furtherAlerts.emplace_back(std::move(*symbol), std::move(alert));
        return true;
    });
}

} // namespace vx
