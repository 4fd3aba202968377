// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/FiredAlert.h"
#include "base/Clock.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vx {

/// Appends a number as "%.*lf" of the C locale writes it, whole: 1e308 has 309 digits before the point, and what is no
/// number reads "nan" or "inf".
///
/// Units   decimals: digits after the point, 0..15
void AppendFixed(std::string& out, double value, int decimals = 6);

// What the alert windows say. All texts are Windows-1252; what a feed or a file gave goes in as it is and is never
// taken for a format.

/// The product, as notices name it.
inline constexpr std::string_view kProductWords = "Norv Vx";

/// One field of a text may take so many bytes of it; a longer one is cut and ends in "...".
inline constexpr size_t kMostShownBytes = 200;

/// As much of a headline is shown in a notice.
inline constexpr size_t kMostHeadlineBytes = 400;

/// A text that came from elsewhere, for one line of a window: cut, and "?" for each control character.
std::string ShownLine(std::string_view text, size_t most = kMostShownBytes);

/// An alert in the list of alerts.
///
/// Shape   "\"IBM\" when the \"Last\" is greater than 10.000000 (Do NOT fire alert for zero values)"
std::string AlertLineText(std::string_view symbol, const A_INFO& alert);

/// Why an alert cannot fire, in a few words; empty when it can. isListed: whether its symbol is in the watchlist.
std::string CannotFireText(const A_INFO& alert, bool isListed);
/// An alert without its symbol, for a table: "Last greater than 10".
std::string AlertWords(const A_INFO& alert);

/// Title and text of a notice. firedAt: local time; lines end in CR LF.
std::string NoticeTitle(const SAlertRecord& record);
std::string NoticeBody(const SAlertRecord& record, const SLocalTime& firedAt);

/// What the reset dialog asks. The words for news end in ", csSymbol" and keep their "%s": deliberate.
std::string ResetPrompt(const SAlertRecord& record);

/// The refusal of a threshold that another alert of the symbol has on the same field.
std::string ThresholdTakenText(std::string_view symbol, double threshold, std::string_view field);

/// The record by which a notice resets its alert: "symbol,index,threshold", for CAlertsMap::ResetFromRecord.
std::string FormatResetRecord(std::string_view symbol, int index, double threshold);

} // namespace vx
