// SPDX-License-Identifier: MIT
#include "alerts/rules/AlertTexts.h"

#include "alerts/rules/AlertInfo.h"
#include "data/record/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace vx {

void AppendFixed(std::string& out, double value, int decimals) {
    std::array<char, 1 + 309 + 1 + 15> text; // Sign, digits of the greatest double, point, decimals.
    out.append(text.data(), WriteFixed(value, decimals, false, text));
}

namespace {

std::string Fixed(double value, int decimals = 6) {
    std::string out;
    AppendFixed(out, value, decimals);
    return out;
}

std::string TimeLine(const SLocalTime& time) {
    static constexpr std::array kMonths = {"January", "February", "March",     "April",   "May",      "June",
                                           "July",    "August",   "September", "October", "November", "December"};
    const auto month = static_cast<size_t>(std::clamp(time.month, 1, 12) - 1);
    return fmt::format("Fired on {} {:02d} at {:02d}:{:02d}.\r\n\r\n", kMonths[month], time.day, time.hour,
                       time.minute);
}

bool IsControl(unsigned char byte) {
    return byte < 0x20 || byte == 0x7F || byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
}

} // namespace

std::string ShownLine(std::string_view text, size_t most) {
    constexpr std::string_view kCut = "...";
    std::string out(text.substr(0, most));
    if (text.size() > most) out.replace(most - kCut.size(), kCut.size(), kCut);
    std::ranges::replace_if(
        out, [](char c) { return IsControl(static_cast<unsigned char>(c)); }, '?');
    return out;
}

std::string AlertLineText(std::string_view symbol, const A_INFO& alert) {
    const std::string shown = ShownLine(symbol);
    if (alert.fieldId == NewsFieldId()) return fmt::format("\"{}\" when \"News\" is received", shown);
    return fmt::format("\"{}\" when the \"{}\" is {} {}{}", shown, AlertFieldName(alert.fieldId),
                       ConditionWords(alert.condition), Fixed(alert.value),
                       alert.noZero != 0 ? " (Do NOT fire alert for zero values)" : "");
}

std::string CannotFireText(const A_INFO& alert, bool isListed) {
    if (!CanFire(alert))
        return ConditionWords(alert.condition).empty() ? "cannot fire: no operation" : "cannot fire: no numbers";
    return isListed ? "" : "cannot fire: not in the list";
}

std::string AlertWords(const A_INFO& alert) {
    const std::string_view field = AlertFieldName(alert.fieldId);
    if (alert.fieldId == NewsFieldId()) return std::string(field);
    return fmt::format("{} {} {}", field, ConditionWords(alert.condition), alert.value);
}

std::string NoticeTitle(const SAlertRecord& record) {
    const std::string symbol = ShownLine(record.symbol);
    if (record.isNews) return fmt::format("{} alert: {} News", kProductWords, symbol);
    return fmt::format("{} alert: {} {} = {}", kProductWords, symbol, ShownLine(record.fieldName), Fixed(record.value));
}

std::string NoticeBody(const SAlertRecord& record, const SLocalTime& firedAt) {
    const std::string symbol = ShownLine(record.symbol);
    if (record.isNews)
        return fmt::format("The symbol \"{}\" received a news story.\r\n\r\n{}", symbol, TimeLine(firedAt));
    return fmt::format("The symbol \"{}\" received a value of \"{}\" for field \"{}\" "
                       "which is {} your alert of \"{}.\"\r\n\r\n"
                       "{}"
                       "Bid: {}\r\nAsk: {}\r\nLast: {}",
                       symbol, Fixed(record.value), ShownLine(record.fieldName), ShownLine(record.condition),
                       Fixed(record.threshold), TimeLine(firedAt), Fixed(record.bid), Fixed(record.ask),
                       Fixed(record.last));
}

std::string ResetPrompt(const SAlertRecord& record) {
    if (record.isNews) return R"(Please hit the "Reset Alert" button to enable the "News" alert for "%s.", csSymbol)";
    return fmt::format("To reset the alert on the \"{}\" for symbol \"{}\", please change the value shown or the "
                       "percent the value should be increased or decreased.",
                       ShownLine(record.fieldName), ShownLine(record.symbol));
}

std::string ThresholdTakenText(std::string_view symbol, double threshold, std::string_view field) {
    return fmt::format("For symbol\"{},\" an alert of \"{}\" already exists for field \"{}.\"", ShownLine(symbol),
                       Fixed(threshold, 2), ShownLine(field));
}

std::string FormatResetRecord(std::string_view symbol, int index, double threshold) {
    return fmt::format("{},{},{}", symbol, index, Fixed(threshold));
}

} // namespace vx
