// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"
#include "base/Clock.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// What the record of a fired alert says; a notice shows it to the user.
struct SAlertRecord {
    std::string condition; ///< In words.
    std::string symbol;
    double value = 0; ///< The one that fired.
    double last = 0;  ///< Of that moment, as bid and ask.
    double bid = 0;
    double ask = 0;
    double threshold = 0;
    std::string fieldName;
    int32_t soundType = 0; ///< An EAlertSound.
    int32_t loopSound = 0;
    std::string soundFile;
    int32_t index = 0;                        ///< Of the alert among those of its symbol.
    std::vector<std::string> otherThresholds; ///< Of the symbol's other alerts on the field, as numbers in text.
    bool isNews = false;
    std::string headline; ///< Of news.
};

/// A fired alert on its way to the user, who sees it as a notice.
struct SFiredAlert {
    SAlertRecord record;
    A_INFO alert; ///< The one that fired, as it was before: what the record cannot say.
    SLocalTime firedAt;
    std::string id;         ///< Of its firing in the history.
    uint64_t watchlist = 0; ///< Which of the watchlists opened one after another the alert belongs to.
    bool wasAway = false;   ///< Another program was the active one as it fired.
};

/// The value that fired an alert, and the symbol's prices of that moment.
struct SAlertValues {
    double value = 0;
    double last = 0;
    double bid = 0;
    double ask = 0;
};

/// The record of a fired alert, as it is posted to the frame: thirteen fields, each followed by a comma. The symbol's
/// thresholds on the same field that differ from the fired one's are the last, each followed by a hyphen.
///
/// Shape   "greater than,IBM,10.500000,10.500000,10.000000,11.000000,10.000000,Last,1,0,,0,12.000000-,"
/// Errors  none; a comma inside the symbol or the sound file shifts the fields, nothing is escaped. An index outside
///         the array gives an empty text
std::string FormatAlertRecord(std::string_view symbol, const CAlertArray& alerts, size_t index,
                              const SAlertValues& values);

/// Takes the record of a fired alert apart, with two deliberate traits. The index is not read and is always 0. The
/// other thresholds begin after the two bytes that follow the sound file's comma, as is right while the index has one
/// digit, and end at the next comma; the hyphens part them, so that a negative threshold loses its sign.
///
/// Errors  none; what is missing is empty or 0
SAlertRecord ReadAlertRecord(std::string_view record);

/// What became of an alert that fired: shows it to the user, once the handling of the update is over.
class CFiredAlertReceiver {
public:
    virtual ~CFiredAlertReceiver() = default;

    /// A field alert fired: post its record (see FormatAlertRecord) to the frame and return. Nothing may be shown and
    /// no alert changed from inside. fired: as it was before.
    virtual void PostFired(std::string record, const A_INFO& fired) = 0;

    /// News came for a symbol with an armed news alert; the same rules hold.
    virtual void PostFiredNews(SAlertRecord record, const A_INFO& fired) = 0;
};

} // namespace vx
