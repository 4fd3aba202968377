#include "watchlist/view/CellTips.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertTexts.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/RowCellText.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

constexpr size_t kMostNoteLines = 3;
constexpr size_t kMostLineBytes = 80;
constexpr size_t kMostAlerts = 5;

/// The first lines of a text, long ones cut; "..." says that there is more.
std::string Beginning(std::string_view text) {
    std::string out;
    for (size_t line = 0; line < kMostNoteLines && !text.empty(); ++line) {
        const std::string_view whole = text.substr(0, text.find('\n'));
        out.append(line == 0 ? "" : "\n").append(whole.substr(0, kMostLineBytes));
        if (whole.size() > kMostLineBytes) out += "...";
        text.remove_prefix(std::min(text.size(), whole.size() + 1));
    }
    return text.empty() ? out : out + "\n...";
}

enum class EAlertState { Armed, Quiet, Dead };

EAlertState StateOf(const A_INFO& alert) {
    return !CanFire(alert) ? EAlertState::Dead : alert.enabled != 0 ? EAlertState::Armed : EAlertState::Quiet;
}

std::string AlertLines(const CAlertArray& alerts, EAlertState state, const char* one, const char* more) {
    std::string out;
    size_t count = 0;
    for (const A_INFO& alert : alerts) {
        if (StateOf(alert) != state || ++count > kMostAlerts) continue;
        out.append(one).append(": ").append(AlertWords(alert)).append("\n");
    }
    if (count > kMostAlerts) out += fmt::format("and {} more {}\n", count - kMostAlerts, more);
    return out;
}

} // namespace

std::string MarksTip(const CWatchlistDoc& doc, int row) {
    std::string tip;
    if (doc.Notes().Has(row)) tip = "Note: " + Beginning(NoteTip(doc, row)) + "\n";
    if (const std::string_view symbol = doc.RowSymbol(row); !symbol.empty()) {
        const CAlertArray& alerts = doc.Alerts().Get(symbol);
        tip += AlertLines(alerts, EAlertState::Armed, "Alert armed", "armed") +
               AlertLines(alerts, EAlertState::Quiet, "Alert fired or off", "that fired or are off") +
               AlertLines(alerts, EAlertState::Dead, "Alert cannot fire", "that cannot fire");
        // What the cell may have cut is said here, in place of the tip that would.
        if (!tip.empty()) tip.insert(0, std::string(symbol) + "\n");
    }
    if (!tip.empty()) tip.pop_back();
    return tip;
}

std::string ColumnTip(std::string_view name, const SFieldEntry* entry) {
    std::string tip(name);
    if (!entry) return tip + "\nNo field of this name is known; the column is kept and stays empty.";
    tip += '\n';
    tip += entry->description;
    if (name == kAlertsColumn) tip += "\nArmed alerts of the symbol / those that fired, are off or cannot fire.";
    return tip;
}

std::string NoteTip(const CWatchlistDoc& doc, int row) {
    std::string note(doc.Notes().Get(row));
    std::erase(note, '\r');
    note.erase(note.find_last_not_of(" \n") + 1); // Empty lines at the end would only make the tip taller.
    return note;
}

std::string HeadingTip(const CWatchlistDoc& doc, int row) {
    std::string more = NoteTip(doc, row);
    if (const std::string_view typed = doc.TypedText(row); !typed.empty() || doc.IsRejected(row)) {
        if (!more.empty()) more += '\n';
        more += typed.empty() ? "F2 empties the row for another entry. Esc leaves it as it is."
                              : fmt::format("F2 brings back what was typed, to be corrected: {}\n"
                                            "Esc leaves the row as it is.",
                                            typed);
    }
    return more.empty() ? more : fmt::format("{}\n{}", doc.AnnotationText(row), more);
}

std::string AlertsTip(const CWatchlistDoc& doc, int row) {
    const SAlertTally tally = TallyAlerts(doc, doc.RowSymbol(row));
    if (tally.armed + tally.quiet + tally.dead == 0) return {};
    std::string tip = fmt::format("{} armed", tally.armed);
    if (tally.quiet > 0) tip += fmt::format(", {} fired or off", tally.quiet);
    if (tally.dead > 0) tip += fmt::format(", {} cannot fire", tally.dead);
    return tip;
}

std::string NewsTip(const CWatchlistDoc& doc, int row) {
    const NEWS* news = doc.News().Find(doc.RowSymbol(row));
    if (!news || news->storyCount == 0) return {};
    const char* stories = news->storyCount == 1 ? "story" : "stories";
    std::string tip = fmt::format("{} {} today", news->storyCount, stories);
    if (news->fresh != 0) tip += ", with news since the symbol was added";
    if (!news->headline.empty()) tip += "\n" + news->headline;
    return tip;
}

std::string HeadlineTip(const CWatchlistDoc& doc, int row) {
    const NEWS* news = doc.News().Find(doc.RowSymbol(row));
    return news ? news->headline : std::string();
}

} // namespace vx
