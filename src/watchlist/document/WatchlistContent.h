// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"
#include "data/catalogue/ColourRule.h"
#include "watchlist/document/ColumnMap.h"
#include "watchlist/document/WatchlistOptions.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

class CCellFormatStore;
class CSettings;
class CWatchlistEdit;

/// What of a watchlist's text was not understood, for the log.
class CReadReport {
public:
    static constexpr size_t kMostKept = 20; ///< Sentences; a broken file may have millions.
    static constexpr size_t kMostQuoted = 60;

    /// Notes one thing that was left out. line: counted from 1, 0 for none; what: a sentence without a full stop;
    /// offending: the text it is about, quoted with its first kMostQuoted bytes.
    void LeftOut(size_t line, std::string_view what, std::string_view offending = {});

    size_t Count() const { return m_count; }
    const std::vector<std::string>& Sentences() const { return m_sentences; }

private:
    std::vector<std::string> m_sentences;
    size_t m_count = 0;
};

/// A watchlist as its text describes it, before any of it is a document. Later lines have won over earlier ones.
struct SWatchlistContent {
    static constexpr int kMostColumns = 1000;
    static constexpr int kMostWidth = 2000; ///< Pixels.

    struct SRow {
        std::string text; ///< A symbol, or an annotation as stored.
        bool annotation = false;
    };
    struct SColumn {
        std::string name;
        int width = 0; ///< Pixels.
    };
    /// What the text of a cell's format has no field for.
    struct SLook {
        int row = 0;
        int column = 0;
        EColourRule colourRule = EColourRule::OfField;
        bool regular = false;
    };
    struct SColumnLookOf {
        std::string name;
        SColumnLook look;
    };
    struct SRecords {
        std::string text;
        size_t line = 0; ///< Where the last of it stood.
    };

    SWatchlistOptions options;
    std::optional<bool> showEllipsis;
    std::optional<bool> showGridLines;
    std::optional<int> rowNumberWidth;
    std::vector<SColumn> columns;           ///< Each name once.
    std::vector<SColumnLookOf> columnLooks; ///< Of columns that there are, or of no effect.
    bool columnsGiven = false; ///< The text says which columns there are; without it there is one for the symbol.
    std::vector<SRow> rows;    ///< Index is the grid row; an empty text is an empty row.
    std::map<int, std::string> notes;
    SRecords alerts;
    /// They replace those that `alerts` has of their symbols; without an alert the symbol has none.
    std::vector<std::pair<std::string, std::optional<A_INFO>>> furtherAlerts;
    SRecords formats;
    std::vector<SLook> looks;              ///< Applied after `formats`, one by one.
    std::vector<int> hiddenRows;           ///< Rising.
    std::vector<std::string> unknownLines; ///< Further keys that are unknown, to be written again.
    size_t knownLines = 0;                 ///< Lines that were understood.

    /// Puts a symbol or an annotation into a row, whatever stood there.
    ///
    /// Errors  false for a row outside 1..CRowTable::kMaxRow, and nothing changes
    bool SetRow(int row, std::string_view text, bool annotation);
};

/// Gives a cell, a column (row 0) or the grid what its format's text has no field for.
void ApplyLook(const SWatchlistContent::SLook& look, CCellFormatStore& formats);

/// Puts a content into a document that was just reset and is being loaded, and the two application-wide settings among
/// it into the settings.
///
/// Thread  GUI thread only
void ApplyContent(CWatchlistEdit& edit, CSettings& settings, const SWatchlistContent& content, CReadReport& report);

} // namespace vx
