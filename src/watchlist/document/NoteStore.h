#pragma once

#include "watchlist/document/RowTable.h"

#include <string>
#include <string_view>

namespace vx {

/// The notes of a watchlist: a short text for a row, of one line or several. A note never holds ";", ":" or ",", which
/// its text in the file needs.
///
/// Owns    nothing: a view of the rows
/// Errors  a row below 1 is ignored
/// Thread  GUI thread only
class CNoteStore : public CRowTexts<&SRowExtras::note> {
public:
    using CRowTexts::CRowTexts;

    /// Sets a row's note without the characters that it may not hold; when nothing remains, the row's note goes.
    void Set(int row, std::string_view text) { m_table.SetText(row, &SRowExtras::note, Cleaned(text)); }

    /// A note's text without the characters that it may not hold.
    static std::string Cleaned(std::string_view text) {
        std::string out(text);
        std::erase_if(out, [](char c) { return c == ';' || c == ':' || c == ','; });
        return out;
    }
};

} // namespace vx
