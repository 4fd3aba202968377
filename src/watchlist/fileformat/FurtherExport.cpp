#include "watchlist/fileformat/FurtherKeyTable.h"

#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <array>

namespace vx {

// "formulas tabs;": the choices of the last export that the dialog does not begin with by itself.

namespace {

struct SChoice {
    std::string_view word;
    bool SExportOptions::*option;
    bool value;
};

constexpr std::array kChoices = {
    SChoice{"formulas", &SExportOptions::linkFormulas, true}, SChoice{"tabs", &SExportOptions::commas, false},
    SChoice{"headless", &SExportOptions::columnHeaders, false}, SChoice{"append", &SExportOptions::append, true},
    SChoice{"utf8", &SExportOptions::utf8, true}};

} // namespace

std::string WriteFurtherExport(const SFurtherSource& source) {
    const SExportOptions& options = source.doc.Options().exporting;
    if (options == SExportOptions{}) return {};
    CFurtherWriter out;
    for (const SChoice& choice : kChoices)
        if (options.*choice.option == choice.value) out.Add(choice.word);
    out.EndEntry();
    return out.Take();
}

void ReadFurtherExport(const SFurtherValue& value) {
    value.ForEachEntry(1, [&](CFurtherReader& entry) {
        SExportOptions options;
        while (!entry.IsDone()) {
            const auto* choice = std::ranges::find(kChoices, entry.Word(), &SChoice::word);
            if (choice == kChoices.end()) return false;
            options.*choice->option = choice->value;
        }
        value.content.options.exporting = options;
        return true;
    });
}

} // namespace vx
