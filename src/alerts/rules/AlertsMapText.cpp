#include "alerts/rules/AlertCondition.h"
#include "alerts/rules/AlertField.h"
#include "alerts/rules/AlertsMap.h"
#include "alerts/rules/FixedText.h"
#include "base/Number.h"

#include <fmt/format.h>

#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace vx {

namespace {

constexpr char kRecordEnd = ';';
constexpr char kSymbolEnd = ':';
constexpr std::string_view kTrue = "TRUE";
constexpr std::string_view kFalse = "FALSE";
constexpr size_t kMostReported = 200;

bool HoldsLineEnd(std::string_view text) { return text.find("\r\n") != std::string_view::npos; }

std::string_view FlagText(uint32_t flag) { return flag != 0 ? kTrue : kFalse; }
uint32_t ReadFlag(std::string_view text) { return text == kTrue ? 1 : 0; }

void AppendRecord(std::string& out, std::string_view symbol, const A_INFO& alert) {
    const auto to = std::back_inserter(out);
    fmt::format_to(to, "{}:{},{},", symbol, AlertFieldName(alert.fieldId), ConditionShortForm(alert.condition));
    AppendFixed(out, alert.value);
    fmt::format_to(to, ",{},{},{},{},{};", FlagText(alert.enabled), FlagText(alert.noZero),
                   static_cast<int32_t>(alert.soundType), FlagText(alert.loopSound), alert.soundFile);
}

/// The fields of a record behind its symbol. The last of the wanted ones takes all that is left.
class CFields {
public:
    explicit CFields(std::string_view text) : m_rest(text) {}

    /// A field that is missing is empty.
    std::string_view Take() {
        const std::string_view rest = TakeRest();
        const size_t comma = rest.find(',');
        if (comma != std::string_view::npos) m_rest = rest.substr(comma + 1);
        return rest.substr(0, comma);
    }
    std::string_view TakeRest() { return std::exchange(m_rest, std::nullopt).value_or(std::string_view{}); }
    bool IsThereMore() const { return m_rest.has_value(); }

private:
    std::optional<std::string_view> m_rest;
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

std::string CAlertsMap::Save() const {
    std::string out;
    for (const std::string& symbol : Symbols())
        for (const A_INFO& alert : Get(symbol))
            if (!HoldsLineEnd(symbol) && !HoldsLineEnd(alert.soundFile)) AppendRecord(out, symbol, alert);
    return out;
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

bool CAlertsMap::CanSave(std::string_view symbol, const A_INFO& alert) {
    const auto holdsAny = [](std::string_view text, std::string_view bytes) {
        return text.find_first_of(bytes) != std::string_view::npos;
    };
    return !symbol.empty() && !holdsAny(symbol, ":;\r\n") && !holdsAny(alert.soundFile, ";\r\n") &&
           AlertFieldId(AlertFieldName(alert.fieldId)) == alert.fieldId;
}

bool CAlertsMap::IsRounded(const A_INFO& alert) {
    if (!std::isfinite(alert.value)) return false;
    std::string text;
    AppendFixed(text, alert.value);
    return ReadDouble(text) != alert.value;
}

} // namespace vx
