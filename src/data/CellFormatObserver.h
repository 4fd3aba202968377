#pragma once

namespace vx {

/// A column came, went or moved among the formats.
enum class EFormatColumns { Insert, Remove, Move };

/// Hears of the changes of cell formats, except that rows move.
///
/// Thread  GUI thread only
class CCellFormatObserver {
public:
    virtual ~CCellFormatObserver() = default;
    /// The record of a cell, a column (row 0) or the grid (row 0, column 0) is about to change.
    virtual void BeforeFormat(int row, int column) = 0;
    /// The records of all columns were renumbered; those that went with a removed column were told of before.
    /// to: where a moved column stands now.
    virtual void FormatColumnsChanged(EFormatColumns change, int from, int to) = 0;
};

} // namespace vx
