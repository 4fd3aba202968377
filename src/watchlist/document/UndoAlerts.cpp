// SPDX-License-Identifier: MIT
#include "watchlist/document/UndoAlerts.h"

#include "alerts/rules/AlertsMap.h"

#include <algorithm>

namespace vx {

namespace {

// For each alert of `other` the place of the same one in `present`, or -1. Those that the step changed so much that
// they are the same no more are paired in their order, while there are as many on both sides.
std::vector<int> PairAlerts(const CAlertArray& other, const CAlertArray& present) {
    std::vector<int> places(other.size(), -1);
    std::vector<bool> taken(present.size(), false);
    for (size_t i = 0; i < other.size(); ++i) {
        const auto same =
            std::find_if(present.begin(), present.end(), [&](const A_INFO& a) { return IsSameAlert(a, other[i]); });
        const auto place = static_cast<size_t>(same - present.begin());
        if (same == present.end() || taken[place]) continue;
        taken[place] = true;
        places[i] = static_cast<int>(place);
    }
    if (std::count(places.begin(), places.end(), -1) != std::count(taken.begin(), taken.end(), false)) return places;
    size_t next = 0;
    for (int& place : places) {
        if (place >= 0) continue;
        while (taken[next]) ++next;
        place = static_cast<int>(next++);
    }
    return places;
}

// Alerts fire and are armed again outside of steps, which moves none of them: that is no edit, and stays.
void KeepWhatBecameOf(const CAlertArray& present, const CAlertArray& now, CAlertArray& other) {
    if (present.size() != now.size()) return;
    const std::vector<int> places = PairAlerts(other, present);
    for (size_t i = 0; i < other.size(); ++i) {
        if (places[i] < 0) continue;
        const A_INFO& left = present[static_cast<size_t>(places[i])];
        const A_INFO& became = now[static_cast<size_t>(places[i])];
        if (other[i].value == left.value) other[i].value = became.value;
        if (became.enabled != left.enabled) other[i].enabled = became.enabled;
    }
}

} // namespace

CUndoAlerts::CUndoAlerts(const CAlertsMap& map) {
    for (std::string& symbol : map.Symbols()) {
        CAlertArray alerts = map.Get(symbol);
        m_alerts.push_back({std::move(symbol), std::move(alerts), {}});
    }
}

void CUndoAlerts::Close(const CAlertsMap& now) {
    std::vector<SAlerts> changed;
    for (const std::string& symbol : now.Symbols()) {
        const auto before =
            std::lower_bound(m_alerts.begin(), m_alerts.end(), symbol,
                             [](const SAlerts& entry, const auto& name) { return entry.symbol < name; });
        if (before == m_alerts.end() || before->symbol != symbol) changed.push_back({symbol, {}, now.Get(symbol)});
    }
    for (SAlerts& entry : m_alerts) {
        entry.present = now.Get(entry.symbol);
        if (entry.other != entry.present) changed.push_back(std::move(entry));
    }
    m_alerts = std::move(changed);
}

void CUndoAlerts::Exchange(CAlertsMap& map) {
    for (auto& [symbol, other, present] : m_alerts) {
        CAlertArray now = map.Get(symbol);
        KeepWhatBecameOf(present, now, other);
        map.RemoveSymbol(symbol);
        for (const A_INFO& alert : other) map.Add(symbol, alert);
        other = std::move(now);
        present = map.Get(symbol);
    }
}

size_t CUndoAlerts::Bytes() const {
    size_t sum = 0;
    for (const auto& [symbol, other, present] : m_alerts)
        sum += sizeof m_alerts.front() + symbol.capacity() + (other.capacity() + present.capacity()) * sizeof(A_INFO);
    return sum;
}

} // namespace vx
