#include "watchlist/CellTips.h"

#include "watchlist/RowCellText.h"
#include "watchlist/WatchlistDoc.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

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
