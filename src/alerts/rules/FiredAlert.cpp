// SPDX-License-Identifier: MIT
#include "alerts/rules/FiredAlert.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertTexts.h"
#include "base/Number.h"
#include "base/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace vx {

namespace {

constexpr char kBetweenThresholds = '-';

std::string OtherThresholds(const CAlertArray& alerts, const A_INFO& fired) {
    std::string out;
    for (const A_INFO& alert : alerts) {
        if (alert.fieldId != fired.fieldId || alert.value == fired.value) continue;
        AppendFixed(out, alert.value);
        out += kBetweenThresholds;
    }
    return out;
}

void AppendField(std::string& out, std::string_view text) { out.append(text) += ','; }

void AppendField(std::string& out, double number) {
    AppendFixed(out, number);
    out += ',';
}

void AppendField(std::string& out, int32_t number) { fmt::format_to(std::back_inserter(out), "{},", number); }

// Takes the text up to the next comma off a record; all of it when there is none.
std::string_view TakeField(std::string_view& rest) {
    const size_t comma = rest.find(',');
    const std::string_view field = rest.substr(0, comma);
    rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    return field;
}

std::vector<std::string> ReadThresholds(std::string_view text) {
    std::vector<std::string> out;
    for (const std::string_view piece : SplitCountingTail(text, kBetweenThresholds))
        if (!piece.empty()) out.emplace_back(piece);
    return out;
}

} // namespace

std::string FormatAlertRecord(std::string_view symbol, const CAlertArray& alerts, size_t index,
                              const SAlertValues& values) {
    std::string out;
    if (index >= alerts.size()) return out;
    const A_INFO& alert = alerts[index];
    AppendField(out, ConditionWords(alert.condition));
    AppendField(out, symbol);
    for (const double number : {values.value, values.last, values.bid, values.ask, alert.value})
        AppendField(out, number);
    AppendField(out, AlertFieldName(alert.fieldId));
    AppendField(out, static_cast<int32_t>(alert.soundType));
    AppendField(out, static_cast<int32_t>(alert.loopSound));
    AppendField(out, alert.soundFile);
    AppendField(out, static_cast<int32_t>(index));
    AppendField(out, OtherThresholds(alerts, alert));
    return out;
}

SAlertRecord ReadAlertRecord(std::string_view record) {
    constexpr size_t kOneDigitAndComma = 2;
    SAlertRecord out;
    out.condition = TakeField(record);
    out.symbol = TakeField(record);
    for (double* number : {&out.value, &out.last, &out.bid, &out.ask, &out.threshold})
        *number = ReadDouble(TakeField(record));
    out.fieldName = TakeField(record);
    out.soundType = ReadInt32(TakeField(record));
    out.loopSound = ReadInt32(TakeField(record));
    out.soundFile = TakeField(record);
    record.remove_prefix(std::min(record.size(), kOneDigitAndComma));
    out.otherThresholds = ReadThresholds(TakeField(record));
    return out;
}

} // namespace vx
