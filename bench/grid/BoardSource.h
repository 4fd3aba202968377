// SPDX-License-Identifier: MIT
#pragma once

#include "grid/CellSource.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vx {

/// A made-up quote board for benchmarks and pictures: rows of symbols with prices that move up and down, deterministic
/// for a seed.
///
/// Shape   every cell is one number and one direction; texts are made when asked for. With headings, some rows are
///         headings across all columns
class CBoardSource : public CCellSource {
public:
    static constexpr int kColumns = 16;

    CBoardSource(int rows, bool headings);

    int Rows() const { return m_rows; }
    /// Gives a cell its next value.
    void Change(int row, int column);

    void FillCell(int row, int column, SCell& cell) const override;
    void FillHeader(int column, SCell& cell) const override;
    bool FillSpan(int row, SCell& cell) const override;
    std::string HeaderTip(int column) const override;

    /// The font id of headings in the control that paints this board.
    void SetHeadingFont(int id) { m_headingFont = static_cast<uint8_t>(id); }
    /// Gives all cells borders, two columns bars and one the range of the day.
    void Dress(bool dressed) { m_dressed = dressed; }
    uint32_t Random();

private:
    struct SValue {
        int32_t value = 0;
        uint8_t direction = 0; // 0 unchanged, 1 down, 2 up
    };
    enum class EKind : uint8_t { Symbol, Trend, Price, Signed, Percent, Volume, Size, Time, Text };
    struct SColumn {
        std::string_view name;
        EKind kind;
    };
    static const std::array<SColumn, kColumns> kBoardColumns;

    void FillShape(int column, const SValue& value, SCell& cell) const;
    const SValue& Value(int row, int column) const {
        return m_values[static_cast<size_t>(row - 1) * kColumns + static_cast<size_t>(column - 1)];
    }

    int m_rows;
    bool m_headings;
    bool m_dressed = false;
    uint8_t m_headingFont = 0;
    uint32_t m_random = 12345;
    std::vector<SValue> m_values;
};

} // namespace vx
