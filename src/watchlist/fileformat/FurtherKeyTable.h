// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistContent.h"
#include "watchlist/fileformat/FurtherKeys.h"
#include "watchlist/fileformat/FurtherText.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vx {

class CWatchlistDoc;

// What each further key carries. A key is one row of the table in FurtherKeys.cpp: its name, a function that makes its
// value from a watchlist, and one that puts a value into the content that is being read.

/// From what the value of a further key is made.
struct SFurtherSource {
    const CWatchlistDoc& doc;
    const SCarried& carried;
    const SWatchlistContent& fixed; ///< What reading the other keys of the text gives, unless it is carried.
};

/// The whole value of a further key, and where it goes.
struct SFurtherValue {
    std::string_view key; ///< Without the prefix.
    std::string_view text;
    size_t line; ///< Where the last of it was.
    SWatchlistContent& content;
    CReadReport& report;

    /// Calls read(reader) at the beginning of each entry, of the first `most` ones. What it refuses is noted in the
    /// report.
    template <typename Read> void ForEachEntry(size_t most, Read&& read) const {
        CFurtherReader reader(text);
        for (size_t count = 0; count < most && reader.Next(); ++count)
            if (!read(reader)) LeftOut(reader.Entry());
        if (!reader.Remainder().empty()) LeftOut(reader.Remainder());
    }

private:
    void LeftOut(std::string_view entry) const;
};

// Each Write gives an empty value for a watchlist that does not need the key.

/// Columns that are hidden, or whose names the line of columns cannot hold, and those that it would wrongly give.
std::string WriteFurtherColumns(const SFurtherSource& source);
void ReadFurtherColumns(const SFurtherValue& value);

/// Rows that the lines of symbols and annotations do not give as they are.
std::string WriteFurtherRows(const SFurtherSource& source);
void ReadFurtherRows(const SFurtherValue& value);

std::string WriteFurtherNotes(const SFurtherSource& source);
void ReadFurtherNotes(const SFurtherValue& value);

/// All alerts of each symbol for which the line of alerts gives others.
std::string WriteFurtherAlerts(const SFurtherSource& source);
void ReadFurtherAlerts(const SFurtherValue& value);

/// What the text of a format has no field for: the rule of its colours, and bold that was taken away.
std::string WriteFurtherLooks(const SFurtherSource& source);
void ReadFurtherLooks(const SFurtherValue& value);

/// How the numbers of columns are drawn.
std::string WriteColumnLooks(const SFurtherSource& source);
void ReadColumnLooks(const SFurtherValue& value);

std::string WriteHiddenRows(const SFurtherSource& source);
void ReadHiddenRows(const SFurtherValue& value);

/// How the list was exported the last time.
std::string WriteFurtherExport(const SFurtherSource& source);
void ReadFurtherExport(const SFurtherValue& value);

/// How large the list is drawn.
std::string WriteScale(const SFurtherSource& source);
void ReadScale(const SFurtherValue& value);

} // namespace vx
