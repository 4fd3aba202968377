// SPDX-License-Identifier: MIT
#include "alerts/rules/AlertsMap.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertTexts.h"
#include "base/Number.h"
#include "data/record/NumberText.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

namespace vx {

namespace {

auto FindSame(auto& alerts, const A_INFO& alert) {
    return std::ranges::find_if(alerts, [&](const A_INFO& other) { return IsSameAlert(other, alert); });
}

bool HasIndex(const CAlertArray& alerts, int index) { return index >= 0 && static_cast<size_t>(index) < alerts.size(); }

} // namespace

bool CAlertsMap::Add(std::string_view symbol, const A_INFO& alert, EAlertMap map) {
    if (symbol.empty()) return false;
    SSymbolAlerts* entry = Find(symbol, map);
    if (entry) {
        const auto same = FindSame(entry->alerts, alert);
        if (same != entry->alerts.end()) {
            const bool changes = same->enabled != alert.enabled;
            same->enabled = alert.enabled;
            if (changes && map == EAlertMap::Live)
                Rearm(symbol, *entry, static_cast<size_t>(same - entry->alerts.begin()));
            return true;
        }
        if (entry->alerts.size() >= kMostPerSymbol) return false;
    }
    if (Total(map) >= kMostAlerts) return false;
    if (!entry) {
        entry = &Map(map)[std::string(symbol)];
        ++m_liveKeys;
    }
    entry->alerts.push_back(alert);
    ++Total(map);
    if (map == EAlertMap::Live) {
        InsertArmed(*entry, entry->alerts.size() - 1);
        Announce(symbol, entry->armed.size());
    }
    return true;
}

void CAlertsMap::Remove(std::string_view symbol, int index, EAlertMap map) {
    SSymbolAlerts* entry = Find(symbol, map);
    if (!entry || !HasIndex(entry->alerts, index)) return;
    if (entry->alerts.size() == 1) return Erase(symbol, map);
    entry->alerts.erase(entry->alerts.begin() + index);
    --Total(map);
    if (map != EAlertMap::Live) return;
    entry->armed.clear(); // The places of all that came after it are others.
    for (size_t i = 0; i < entry->alerts.size(); ++i) InsertArmed(*entry, i);
    Announce(symbol, entry->armed.size());
}

void CAlertsMap::RemoveSymbol(std::string_view symbol) { Erase(symbol, EAlertMap::Live); }

void CAlertsMap::Clear(EAlertMap map) {
    CMap cleared;
    cleared.swap(Map(map));
    Total(map) = 0;
    ++m_liveKeys;
    if (map != EAlertMap::Live) return;
    for (const auto& [symbol, entry] : cleared) Announce(symbol, 0);
}

void CAlertsMap::CopyTo(EAlertMap target) {
    Clear(target);
    const EAlertMap source = target == EAlertMap::Live ? EAlertMap::WorkingCopy : EAlertMap::Live;
    for (const auto& [symbol, entry] : Map(source))
        for (const A_INFO& alert : entry.alerts) Add(symbol, alert, target);
}

void CAlertsMap::SetEnabled(std::string_view symbol, int index, bool enabled) {
    SSymbolAlerts* entry = Find(symbol, EAlertMap::WorkingCopy);
    if (!entry) return;
    At(*entry, index);
    entry->alerts[static_cast<size_t>(index)].enabled = enabled ? 1 : 0;
}

int CAlertsMap::IndexOf(std::string_view symbol, const A_INFO& alert, EAlertMap map) const {
    const CAlertArray& alerts = Get(symbol, map);
    const auto same = FindSame(alerts, alert);
    return same == alerts.end() ? -1 : static_cast<int>(same - alerts.begin());
}

int CAlertsMap::Count(std::string_view symbol, EAlertMap map) const {
    const SSymbolAlerts* entry = Find(symbol, map);
    return entry ? static_cast<int>(entry->alerts.size()) : 0;
}

const CAlertArray& CAlertsMap::Get(std::string_view symbol, EAlertMap map) const {
    static const CAlertArray none;
    const SSymbolAlerts* entry = Find(symbol, map);
    return entry ? entry->alerts : none;
}

std::vector<std::string> CAlertsMap::Symbols(EAlertMap map) const {
    std::vector<std::string> out;
    out.reserve(Map(map).size());
    for (const auto& [symbol, entry] : Map(map)) out.push_back(symbol);
    std::ranges::sort(out);
    return out;
}

int CAlertsMap::ArmedCount(std::string_view symbol) const {
    const SSymbolAlerts* entry = Find(symbol, EAlertMap::Live);
    return entry ? static_cast<int>(entry->armed.size()) : 0;
}

const CAlertsMap::SSymbolAlerts* CAlertsMap::Find(std::string_view symbol, EAlertMap map) const {
    const auto found = Map(map).find(symbol);
    return found == Map(map).end() ? nullptr : &found->second;
}

CAlertsMap::SSymbolAlerts* CAlertsMap::Find(std::string_view symbol, EAlertMap map) {
    const auto found = Map(map).find(symbol);
    return found == Map(map).end() ? nullptr : &found->second;
}

void CAlertsMap::Erase(std::string_view symbol, EAlertMap map) {
    const auto found = Map(map).find(symbol);
    if (found == Map(map).end()) return;
    Total(map) -= found->second.alerts.size();
    ++m_liveKeys;
    const auto gone = Map(map).extract(found); // Keeps the text that `symbol` may point into.
    if (map == EAlertMap::Live) Announce(gone.key(), 0);
}

const A_INFO& CAlertsMap::At(const SSymbolAlerts& entry, int index) {
    if (!HasIndex(entry.alerts, index)) throw std::invalid_argument("no such alert");
    return entry.alerts[static_cast<size_t>(index)];
}

CAlertsMap::EStoredAs CAlertsMap::StoredAs(const SFieldEntry& field) {
    if (field.source != ESource::Quote) return EStoredAs::Elsewhere;
    switch (field.valueClass) {
    case EValueClass::Integer:
        return EStoredAs::QuoteInteger;
    case EValueClass::Unsigned:
        return EStoredAs::QuoteUnsigned;
    default:
        return EStoredAs::QuoteNumber;
    }
}

// Only what can fire is armed: enabled, a field with numbers, a condition that exists, a threshold to compare with.
void CAlertsMap::InsertArmed(SSymbolAlerts& entry, size_t index) {
    const A_INFO& alert = entry.alerts[index];
    const SFieldEntry* field = JudgedField(alert.fieldId);
    const uint8_t meetingResults = MeetingResults(alert.condition);
    if (alert.enabled == 0 || !field || meetingResults == 0 || std::isnan(alert.value)) return;
    const SArmed armed{alert.value,      static_cast<uint16_t>(index), 1, StoredAs(*field), field->slot, meetingResults,
                       alert.noZero != 0};
    const auto groupOf = [&](const SArmed& a) { return std::pair(entry.alerts[a.index].fieldId, a.Side()); };
    const auto first = std::ranges::lower_bound(entry.armed, groupOf(armed), {}, groupOf);
    const auto end = std::ranges::upper_bound(entry.armed, groupOf(armed), {}, groupOf);
    const auto place = std::upper_bound(first, end, armed, [](const SArmed& a, const SArmed& b) {
        return a.Side() == ESide::Below ? a.threshold > b.threshold : a.threshold < b.threshold;
    });
    const auto run = first - entry.armed.begin();
    const auto size = static_cast<uint16_t>(end - first + 1);
    entry.armed.insert(place, armed);
    entry.armed[static_cast<size_t>(run)].run = size;
}

void CAlertsMap::Disarm(std::vector<SArmed>& armed, size_t index) {
    for (size_t run = 0; run < armed.size(); run += armed[run].run) {
        const auto first = armed.begin() + static_cast<std::ptrdiff_t>(run);
        const auto place = std::ranges::find(first, first + first->run, index, &SArmed::index);
        if (place == first + first->run) continue;
        const auto left = static_cast<uint16_t>(first->run - 1);
        armed.erase(place);
        if (left > 0) armed[run].run = left;
        return;
    }
}

// One alert is armed or not, or has another threshold.
void CAlertsMap::Rearm(std::string_view symbol, SSymbolAlerts& entry, size_t index) {
    Disarm(entry.armed, index);
    InsertArmed(entry, index);
    Announce(symbol, entry.armed.size());
}

void CAlertsMap::Become(std::string_view symbol, A_INFO& alert, uint32_t enabled, double value) {
    if (SSymbolAlerts* copy = Find(symbol, EAlertMap::WorkingCopy)) {
        if (const auto same = FindSame(copy->alerts, alert); same != copy->alerts.end()) {
            same->enabled = enabled;
            same->value = value;
        }
    }
    alert.enabled = enabled;
    alert.value = value;
}

void CAlertsMap::AnnounceFiredOrArmed() {
    if (m_observer) m_observer->OnAlertsFiredOrArmed();
}

void CAlertsMap::Announce(std::string_view symbol, size_t armed) {
    if (m_observer) m_observer->OnAlertsChanged(symbol, static_cast<int>(armed));
}

namespace {

constexpr char kRecordEnd = ';';
constexpr char kSymbolEnd = ':';
constexpr std::string_view kTrue = "TRUE";
constexpr std::string_view kFalse = "FALSE";
constexpr size_t kMostReported = 200;
constexpr int kDecimals = 6; // Of a threshold.

/// The bytes at the beginning of a text as a number that orders texts as they do.
uint64_t FirstBytes(std::string_view text) {
    uint64_t number = 0;
    for (size_t i = 0; i < sizeof number; ++i)
        number = number << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
    return number;
}

bool HoldsLineEnd(std::string_view text) { return text.find("\r\n") != std::string_view::npos; }

std::string_view FlagText(uint32_t flag) { return flag != 0 ? kTrue : kFalse; }
uint32_t ReadFlag(std::string_view text) { return text == kTrue ? 1 : 0; }

bool HoldsAny(std::string_view text, std::string_view bytes) {
    return std::ranges::any_of(bytes, [text](char byte) { return text.find(byte) != std::string_view::npos; });
}

// Whether a field is found by its name: the latest headline is read as the news.
bool IsFieldRead(int32_t fieldId) {
    static const std::vector<bool> read = [] {
        std::vector<bool> out;
        for (int32_t id = 0; !AlertFieldName(id).empty(); ++id) out.push_back(AlertFieldId(AlertFieldName(id)) == id);
        return out;
    }();
    return fieldId >= 0 && static_cast<size_t>(fieldId) < read.size() && read[static_cast<size_t>(fieldId)];
}

bool IsValueRead(double value, std::string_view written) {
    return !std::isfinite(value) || RoundedAsWritten(value, kDecimals).value_or(ReadDouble(written)) == value;
}

// Returns whether it is read as it is.
bool AppendRecord(std::string& out, std::string_view symbol, const A_INFO& alert) {
    out.append(symbol).append(":").append(AlertFieldName(alert.fieldId)).append(",");
    out.append(ConditionShortForm(alert.condition)).append(",");
    const size_t value = out.size();
    AppendFixed(out, alert.value, kDecimals);
    const bool carried = IsFieldRead(alert.fieldId) && !ConditionWords(alert.condition).empty() &&
                         !HoldsAny(alert.soundFile, ";\r\n") &&
                         IsValueRead(alert.value, std::string_view(out).substr(value));
    out.append(",").append(FlagText(alert.enabled)).append(",").append(FlagText(alert.noZero)).append(",");
    AppendInteger(out, static_cast<int32_t>(alert.soundType));
    out.append(",").append(FlagText(alert.loopSound)).append(",").append(alert.soundFile).append(";");
    return carried;
}

/// The fields of a record after its symbol. The last of the wanted ones takes all that is left.
class CFields {
public:
    explicit CFields(std::string_view text) : m_rest(text) {}

    /// A field that is missing is empty.
    std::string_view Take() {
        const std::string_view rest = TakeRest();
        const size_t comma = rest.find(',');
        m_isThereMore = comma != std::string_view::npos;
        if (m_isThereMore) m_rest = rest.substr(comma + 1);
        return rest.substr(0, comma);
    }
    std::string_view TakeRest() {
        m_isThereMore = false;
        return std::exchange(m_rest, {});
    }
    bool IsThereMore() const { return m_isThereMore; }

private:
    std::string_view m_rest;
    bool m_isThereMore = true;
};

// Older files end each record after the flag that arms the alert, or after the one for zeros.
std::optional<A_INFO> ReadAlert(std::string_view text) {
    CFields fields(text);
    const std::optional<int32_t> fieldId = AlertFieldId(fields.Take());
    if (!fieldId) return std::nullopt;
    A_INFO alert;
    alert.fieldId = *fieldId;
    alert.condition = ReadCondition(fields.Take());
    alert.value = ReadDouble(fields.Take());
    alert.enabled = ReadFlag(fields.Take());
    alert.noZero = fields.IsThereMore() ? ReadFlag(fields.Take()) : 1;
    alert.soundType = static_cast<uint32_t>(ReadInt32(fields.Take()));
    alert.loopSound = ReadFlag(fields.Take());
    alert.soundFile = fields.TakeRest();
    return alert;
}

} // namespace

const std::vector<const CAlertsMap::CMap::value_type*>& CAlertsMap::InOrder() const {
    if (m_order.liveKeys == m_liveKeys) return m_order.entries;
    struct SPlace {
        uint64_t beginning; // Of the symbol: two of them are seldom the same so far.
        const CMap::value_type* entry;
    };
    std::vector<SPlace> places;
    places.reserve(Map(EAlertMap::Live).size());
    for (const auto& entry : Map(EAlertMap::Live)) places.push_back({FirstBytes(entry.first), &entry});
    std::ranges::sort(places, [](const SPlace& a, const SPlace& b) {
        return a.beginning != b.beginning ? a.beginning < b.beginning : a.entry->first < b.entry->first;
    });
    m_order.liveKeys = m_liveKeys;
    m_order.entries.clear();
    for (const SPlace& place : places) m_order.entries.push_back(place.entry);
    return m_order.entries;
}

bool CAlertsMap::Save(std::string& out) const {
    constexpr size_t kAhead = 8;
    const std::vector<const CMap::value_type*>& entries = InOrder();
    bool carried = true;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (i + kAhead < entries.size()) __builtin_prefetch(entries[i + kAhead]);
        const auto& [symbol, entry] = *entries[i];
        const bool holdsLineEnd = HoldsLineEnd(symbol);
        carried = carried && !HoldsAny(symbol, ":;\r\n");
        for (const A_INFO& alert : entry.alerts) {
            if (holdsLineEnd || HoldsLineEnd(alert.soundFile) || !AppendRecord(out, symbol, alert)) carried = false;
        }
    }
    return carried;
}

SUnreadAlerts CAlertsMap::Load(std::string_view text) {
    SUnreadAlerts unread;
    while (!text.empty()) {
        const size_t end = text.find(kRecordEnd);
        const std::string_view record = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (record.empty() || LoadRecord(record)) continue;
        if (unread.count++ == 0) unread.first = record.substr(0, kMostReported);
    }
    return unread;
}

bool CAlertsMap::LoadRecord(std::string_view record) {
    const size_t colon = record.find(kSymbolEnd);
    if (colon == std::string_view::npos) return false;
    const std::optional<A_INFO> alert = ReadAlert(record.substr(colon + 1));
    return alert && Add(record.substr(0, colon), *alert);
}

} // namespace vx
