// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/FiredAlert.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// What became of a notice.
enum class EFiringEnd : uint8_t {
    Open,
    Dismissed,
    Together,   ///< Dismissed with others before it was shown.
    Armed,      ///< The alert was armed again as it was.
    Reset,      ///< The alert was armed with another threshold.
    ResetOther, ///< Another alert was: the symbol's first one.
};

/// One alert that fired, as the history keeps it. Texts are Windows-1252; times are milliseconds since 1970 UTC.
struct SAlertFiring {
    std::string id; ///< Given by NoteFired; no other firing on this machine has it.
    int64_t firedMs = 0;
    int64_t awaySinceMs = 0; ///< Since when the program was not the active one as it fired; 0: it was in use.
    bool isNews = false;
    std::string symbol;
    std::string field;
    std::string condition; ///< In words; empty for news.
    double value = 0;      ///< The one that fired.
    double threshold = 0;
    double bid = 0; ///< Of that moment, as ask and last.
    double ask = 0;
    double last = 0;
    int64_t seenMs = 0; ///< When the notice was shown to a user who was there; 0: it was not.
    EFiringEnd end = EFiringEnd::Open;
    int64_t endedMs = 0;     ///< When the notice was closed; 0 while it was not.
    double newThreshold = 0; ///< Of a reset.
    std::string other;       ///< The alert that was reset in place of this one, in words.
};

/// Every firing of the user's alerts, kept on disk across runs and shared by all windows of the program.
///
/// Shape   the file is only ever added to, one line for a firing and one for its end; a line that a kill cut off is
///         passed over, and what follows begins on a line of its own. Two files at most: one that is full becomes the
///         older one, in place of the one before
/// Errors  none: what cannot be written is logged once; what cannot be read is not there
/// Thread  any, one at a time; waits at most kLockWaitMs for another program
/// Source  docs/alerts.md, "The history file"
class CAlertHistory {
public:
    static constexpr int64_t kMostFileBytes = 2'500'000;
    static constexpr int kLockWaitMs = 50;
    /// Symbols and fields are kept up to here.
    static constexpr size_t kMostTextBytes = 255;

    /// folder: the user's state folder, made when missing.
    explicit CAlertHistory(std::string folder) : m_folder(std::move(folder)) {}

    /// Adds a firing that has no end yet. Returns its id.
    std::string NoteFired(SAlertFiring firing);
    /// Adds that its notice was shown to a user who was there.
    void NoteSeen(std::string_view id, int64_t atMs);
    /// Adds the end of a firing. newThreshold: of a reset; other: as in SAlertFiring, for ResetOther.
    void NoteEnded(std::string_view id, EFiringEnd end, int64_t atMs, double newThreshold = 0,
                   std::string_view other = {});

    /// All firings, in the order in which they were written.
    std::vector<SAlertFiring> Read() const;

    std::string FilePath() const { return m_folder + "/alert-history.txt"; }
    std::string OlderFilePath() const { return m_folder + "/alert-history.1.txt"; }

private:
    void Append(std::string line);
    int TryAppend(std::string& line) const;

    std::string m_folder;
    uint32_t m_count = 0;
    bool m_failed = false;
};

/// A firing made of what the record of a fired alert says.
SAlertFiring FiringOf(const SAlertRecord& record, int64_t firedMs, int64_t awaySinceMs);

/// The latest firing of an alert that was not reset since, by symbol, field, condition and threshold; null for none.
const SAlertFiring* FindFiring(std::span<const SAlertFiring> firings, const SAlertFiring& like);

/// The word that begins an end's line in the file ("dismissed"); empty for Open.
std::string_view EndWord(EFiringEnd end);
/// Adds what the text of a history file says to the firings; lines that are not whole are passed over.
void ParseHistory(std::string_view text, std::vector<SAlertFiring>& out);

/// When the last absence began in which an alert fired; 0 when none did.
int64_t LastAbsence(std::span<const SAlertFiring> firings);
/// Whether an alert fired in that absence.
inline bool FiredWhileAway(const SAlertFiring& firing, int64_t lastAbsence) {
    return lastAbsence != 0 && firing.awaySinceMs != 0 && firing.firedMs >= lastAbsence;
}

/// A time as "2024-01-31 09:30:05" of the local clock; empty for 0.
std::string LocalTimeText(int64_t ms);
/// A span of time in words of its two largest units: "8 s", "2 min 5 s", "3 h 12 min".
std::string SpanText(int64_t ms);
/// What became of a firing, in words: "Never seen", "Seen", "Dismissed after 8 s", "Dismissed together", "Armed again",
/// "Reset to 12.5" or "Dismissed after 8 s; reset Last less than 5 to 12.5". Without the time where it was not seen.
std::string EndText(const SAlertFiring& firing);

/// Firings as a table for spreadsheets, with a line of headings: fields with "," between them, lines end in CR LF. A
/// text that a spreadsheet would compute is given an apostrophe.
std::string HistoryCsv(std::span<const SAlertFiring> firings);

} // namespace vx
