// SPDX-License-Identifier: MIT
#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace vx {

enum class EAlign : uint8_t { Left, Center, Right };

/// What a text's colour means; the theme turns it into a colour for light and dark.
enum class ETextRole : uint8_t {
    Normal,
    Up,
    Down,
    Unchanged,
    Stale,   ///< A value that is shown but no longer fed.
    Explicit ///< SCell::textColor holds the colour.
};

/// What shows the direction of a cell's value besides the colour of its text.
enum class EDirectionMark : uint8_t { None, Background, Arrow };

/// Small shapes at the edge of a cell that say that there is more about it; one bit each.
enum ECellMark : uint8_t {
    kNoteMark = 1,  ///< A corner.
    kArmedMark = 2, ///< A ring.
    kFiredMark = 4  ///< A dot.
};

/// Lines at the sides of a cell; one bit each.
enum ECellBorder : uint8_t {
    kLeftBorder = 1,
    kTopBorder = 2,
    kRightBorder = 4,
    kBottomBorder = 8,
    kAllBorders = kLeftBorder | kTopBorder | kRightBorder | kBottomBorder,
    kThickBorders = 16 ///< The others are thick.
};

/// No colour of its own: the theme chooses.
inline constexpr int32_t kAutomaticColor = -1;

/// What is drawn of a cell's number, behind its text.
enum class ECellShape : uint8_t {
    None,
    Bar,   ///< A bar between two places.
    Range, ///< A line across the cell at its bottom, thicker between two places.
    Heat   ///< A background of its own.
};

/// Where it is drawn, and in which colour.
///
/// Units   places and strength: 0 at the left edge, or for nothing, to kWhole
struct SCellShape {
    static constexpr uint16_t kWhole = 10000;
    static constexpr uint16_t kNoMark = UINT16_MAX;

    ECellShape kind = ECellShape::None;
    ETextRole role = ETextRole::Normal; ///< Up and Down have the colours of texts, all others one of their own.
    uint16_t from = 0;
    uint16_t to = 0;             ///< The end of a bar or of a line's thick part; the strength of heat.
    uint16_t fineMark = kNoMark; ///< Of a bar: where zero is.
    uint16_t strongMark = kNoMark;
    int32_t color = kAutomaticColor; ///< Counts only with ETextRole::Explicit.
};

/// One cell as it is to be painted. The painter keeps one record and lets the source fill it again and again.
///
/// Shape   text is not terminated and not cleared between cells: only its first length bytes count
/// Units   colours 0xBBGGRR or kAutomaticColor
struct SCell {
    static constexpr int kCapacity = 256;
    static constexpr int kMaxLength = 255;

    char text[kCapacity];
    uint16_t length;
    EAlign align;
    ETextRole role;
    uint8_t font;    ///< Id in the control's font table; 0 is the default font, unknown ids show the default.
    uint8_t marks;   ///< Of ECellMark.
    uint8_t borders; ///< Of ECellBorder.
    bool tickTrend;  ///< The bytes AD, AF and B7 are drawn as an up, a down and a dot symbol in their colours.
    bool steady;     ///< The cell does not light up when it changes.
    /// What shows the direction of the value, and the direction: Up, Down or Unchanged.
    EDirectionMark directionMark;
    ETextRole direction;
    int32_t textColor;  ///< Counts only with ETextRole::Explicit.
    int32_t background; ///< kAutomaticColor: the row's own.
    SCellShape shape;

    SCell() { Reset(); }
    /// An empty, left aligned cell of the default look.
    void Reset() {
        length = 0;
        align = EAlign::Left;
        role = ETextRole::Normal;
        font = 0;
        marks = 0;
        direction = ETextRole::Normal;
        directionMark = EDirectionMark::None;
        steady = false;
        borders = 0;
        tickTrend = false;
        textColor = kAutomaticColor;
        background = kAutomaticColor;
        shape = {};
    }
    std::string_view Text() const { return {text, length}; }
    /// Copies a text; what goes beyond kMaxLength bytes is cut.
    void SetText(std::string_view bytes) {
        length = static_cast<uint16_t>(bytes.size() < kMaxLength ? bytes.size() : kMaxLength);
        std::memcpy(text, bytes.data(), length);
    }
};

/// The content of a grid control. The control asks for a cell when it paints it and keeps nothing.
///
/// Shape   rows 1..row count, columns 1..column count in display order; row 0 is the header row, column 0 the row
///         numbers; texts Windows-1252. Each cell arrives Reset(), so a source sets only what differs
/// Errors  none: a source answers every cell within the counts that the control was given, an unknown one with an empty
///         cell
/// Thread  GUI thread only. FillCell, FillSpan, FillRowHint and FillRowNumber run inside painting: no allocation, no
///         change of the control
class CCellSource {
public:
    virtual ~CCellSource() = default;

    virtual void FillCell(int row, int column, SCell& cell) const = 0;
    /// The header of a column; its alignment is usually that of the column's cells.
    virtual void FillHeader(int column, SCell& cell) const = 0;
    /// A row that shows one text across all its columns (a heading or remark) fills it and answers true. Asked once per
    /// painted row, before its cells.
    virtual bool FillSpan(int /*row*/, SCell& /*cell*/) const { return false; }
    /// A text about a row that has nothing to show, drawn over the widest run of its empty cells. It is no cell's text:
    /// nobody copies, prints or measures it. Fills it and answers true. Asked for each painted row.
    virtual bool FillRowHint(int /*row*/, SCell& /*cell*/) const { return false; }
    /// The cell in the row-number column: the row's number unless a source says otherwise.
    virtual void FillRowNumber(int row, SCell& cell) const {
        const auto end = std::to_chars(cell.text, cell.text + SCell::kMaxLength, row);
        cell.length = static_cast<uint16_t>(end.ptr - cell.text);
        cell.align = EAlign::Right;
    }

    /// Plain texts for tooltips; lines end with "\n"; empty shows none, or the whole text where a cell's text is cut.
    virtual std::string HeaderTip(int /*column*/) const { return {}; }
    virtual std::string CellTip(int /*row*/, int /*column*/) const { return {}; }
};

} // namespace vx
