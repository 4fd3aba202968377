// SPDX-License-Identifier: MIT
#include "grid/TestGrid.h"

using namespace vx;

namespace {

class CGridPainterTest : public GridTest {
protected:
    /// From which column of a cell's place to which something stands on its background; -1 for nothing.
    std::pair<int, int> Extent(const QImage& image, const QRect& place) {
        const QRgb background = image.pixel(place.left() + 1, place.top() + 1);
        const int height = place.height() - 1; // the grid line is left out
        int first = -1, last = -1;
        for (int x = 0; x < place.width() - 1; ++x)
            if (CountColor(image, {place.left() + x, place.top(), 1, height}, background) < height) {
                if (first < 0) first = x;
                last = x;
            }
        return {first, last};
    }
    void Show(const std::string& text, EAlign align) {
        source.cell = [=](int row, int column, SCell& cell) {
            if (row != 3 || column != 2) return;
            cell.SetText(text);
            cell.align = align;
        };
    }
    std::pair<int, int> Ink() { return Extent(Picture(), Place(3, 2)); }
};

} // namespace

TEST_F(CGridPainterTest, EachRoleHasItsColour) {
    const std::vector<std::pair<ETextRole, QRgb>> roles = {
        {ETextRole::Normal, kLightGridTheme.text}, {ETextRole::Up, kLightGridTheme.up},
        {ETextRole::Down, kLightGridTheme.down},   {ETextRole::Unchanged, kLightGridTheme.unchanged},
        {ETextRole::Stale, kLightGridTheme.stale}, {ETextRole::Explicit, 0xFF0000FF}};
    source.cell = [&](int row, int, SCell& cell) {
        cell.SetText("1234");
        if (row <= static_cast<int>(roles.size())) cell.role = roles[static_cast<size_t>(row - 1)].first;
        cell.textColor = 0xFF0000; // blue
    };
    const QImage picture = Picture(3); // thick enough to hold the pure colour
    for (size_t i = 0; i < roles.size(); ++i)
        for (size_t k = 0; k < roles.size(); ++k)
            if (i != k) {
                const QRect place = Place(static_cast<int>(i) + 1, 2, 3);
                EXPECT_GT(CountColor(picture, place, roles[i].second), 2 * CountColor(picture, place, roles[k].second));
            }
}

TEST_F(CGridPainterTest, MarksStandBesideTheTextAndDifferInShape) {
    uint8_t marks = 0;
    source.cell = [&](int row, int column, SCell& cell) {
        if (row != 3 || column != 2) return;
        cell.SetText("IBM");
        cell.marks = marks;
    };
    const QRect cell = Place(3, 2, 2);
    const auto ink = [&](uint8_t shown, QRgb color) {
        marks = shown;
        return CountColor(Picture(2), cell, color);
    };
    for (const char* theme : {"light", "dark"}) {
        grid.ApplyTheme(theme);
        const SGridTheme& colours = grid.Theme();
        const int note = ink(kNoteMark, colours.focus);
        const int ring = ink(kArmedMark, colours.alert), dot = ink(kFiredMark, colours.alert);
        EXPECT_GT(note, 60);
        EXPECT_GT(ring, 40);
        EXPECT_GT(dot, ring + 32) << "one is filled, the other is not";
        EXPECT_EQ(ink(kNoteMark | kArmedMark | kFiredMark, colours.alert), ring + dot) << "none covers another";
        EXPECT_EQ(ink(kNoteMark | kArmedMark | kFiredMark, colours.focus), note);
    }
}

TEST_F(CGridPainterTest, TheTickTrendIsDrawnAsArrowsAndDots) {
    source.cell = [](int row, int, SCell& cell) {
        cell.SetText(row == 3 ? "\xAD" : row == 4 ? "\xAF" : "\xAD\xAF\xB7");
        cell.tickTrend = true;
        if (row == 7) cell.role = ETextRole::Stale;
    };
    const QImage picture = Picture(2);
    const auto half = [&](int row, QRgb color, bool upper) {
        QRect place = Place(row, 2, 2);
        place.setHeight(place.height() / 2);
        if (!upper) place.translate(0, place.height());
        return CountColor(picture, place, color);
    };
    const SGridTheme& theme = grid.Theme();
    EXPECT_GT(half(3, theme.up, false), half(3, theme.up, true)) << "wide at the bottom";
    EXPECT_GT(half(4, theme.down, true), half(4, theme.down, false)) << "wide at the top";
    for (const QRgb color : {theme.up, theme.down, theme.unchanged}) {
        EXPECT_GT(CountColor(picture, Place(6, 2, 2), color), 0);
        EXPECT_EQ(CountColor(picture, Place(7, 2, 2), color), 0) << "only in cells that are fed";
    }
}

TEST_F(CGridPainterTest, ACutTextShowsItsBeginningAndAFittedColumnCutsNothing) {
    const auto inkOf = [&](EAlign align, bool ellipsis) {
        grid.ApplyViewSettings(true, true, ellipsis, true);
        Show("1.234.567.890.123", align);
        return Picture().copy(Place(3, 2));
    };
    EXPECT_EQ(inkOf(EAlign::Right, false), inkOf(EAlign::Left, false));
    EXPECT_EQ(Extent(Picture(), Place(3, 3)).first, -1) << "without dots the text runs to the edge and not over it";
    EXPECT_EQ(inkOf(EAlign::Right, true), inkOf(EAlign::Left, true));
    EXPECT_LT(Ink().second, 80 - CGridPainter::kTextPadding) << "the dots end inside the cell";
    const auto cutsNothing = [&](int width) {
        grid.SetColumnWidth(2, width);
        grid.ApplyViewSettings(true, true, true, true);
        const QImage withDots = Picture(grid.devicePixelRatioF());
        grid.ApplyViewSettings(true, true, false, true);
        return withDots == Picture(grid.devicePixelRatioF());
    };
    for (const int zoom : {50, 67, 100, 150}) {
        grid.SetScale(zoom, CGridView::kRowPadding);
        const int fit = grid.FitWidth(2);
        EXPECT_TRUE(cutsNothing(fit)) << zoom;
        EXPECT_FALSE(cutsNothing(fit - 4)) << zoom;
    }
}

TEST_F(CGridPainterTest, AnArrowIsAtTheLeftOfItsNumberWhichKeepsItsPlace) {
    ETextRole direction = ETextRole::Up;
    bool arrow = false;
    source.cell = [&](int, int, SCell& cell) {
        cell.SetText("12.50");
        cell.align = EAlign::Right;
        cell.direction = direction;
        if (arrow) cell.directionMark = EDirectionMark::Arrow;
    };
    const std::pair<int, int> plain = Ink();
    const int fit = grid.FitWidth(2);
    arrow = true;
    for (const auto& [shown, color] :
         {std::pair{ETextRole::Up, grid.Theme().up}, {ETextRole::Down, grid.Theme().down}}) {
        direction = shown;
        EXPECT_EQ(Ink().second, plain.second);
        EXPECT_LT(Ink().first, plain.first);
        EXPECT_GT(CountColor(Picture(3), Place(3, 2, 3), color), 100);
    }
    EXPECT_GT(grid.FitWidth(2), fit);
}

TEST_F(CGridPainterTest, ASpanningRowIsOneTextWithoutColumnLines) {
    MakeHeading("A heading that is longer than any one column of the grid", 5);
    const QImage picture = Picture();
    const QRect row(Geometry().ColumnWidth(0), Geometry().RowTop(5), 300, Geometry().RowHeight() - 1);
    EXPECT_EQ(CountColor(picture, row, grid.Theme().gridLine), 0);
    EXPECT_GT(Extent(picture, Place(5, 3)).second, 70) << "the text reaches over the third column";
    grid.EnsureVisible(5, 10);
    EXPECT_EQ(Picture().copy(row), picture.copy(row)) << "and stays to be read when columns scroll";
}

TEST_F(CGridPainterTest, FocusSelectionAndMarksAreSeen) {
    const QRgb selected = grid.Theme().selected;
    source.span = [](int row, SCell&) { return row == 3; };
    grid.SelectRange({2, 4, 2, 3});
    QImage picture = Picture();
    for (const auto& [row, column] : {std::pair{2, 3}, {4, 2}, {3, 3}})
        EXPECT_GT(CountColor(picture, Place(row, column), selected), 500);
    EXPECT_EQ(CountColor(picture, Place(5, 2), selected) + CountColor(picture, Place(3, 4), selected), 0);
    const QRgb frame = grid.hasFocus() ? grid.Theme().focus : grid.Theme().focusIdle;
    const QRect focus = Place(2, 2);
    EXPECT_EQ(CountColor(picture, {focus.topLeft(), QSize(focus.width(), 1)}, frame), focus.width());
    EXPECT_EQ(CountColor(picture, Place(4, 2), frame), 0);

    // Half of a copied range's border is dashes; what is painted of a huge one is what can be seen.
    grid.SetMarkedRange(SGridRange{5, 100, 2, 2});
    picture = Picture();
    EXPECT_NEAR(CountColor(picture, {Place(5, 2).topLeft(), QSize(80, 1)}, grid.Theme().focus), 40, 6);
    grid.SetMarkedRange({});
    EXPECT_EQ(CountColor(Picture(), Place(5, 2), grid.Theme().focus), 0);
}

TEST_F(CGridPainterTest, AChosenBackgroundIsPaintedAndItsTextCanBeRead) {
    source.cell = [](int row, int, SCell& cell) {
        cell.SetText(row == 4 ? "\xAD\xAD" : "HHH");
        cell.tickTrend = true;
        if (row != 6) cell.background = 0x80FFFF; // light yellow
        cell.role = row <= 3 ? ETextRole::Up : row == 4 ? ETextRole::Normal : ETextRole::Explicit;
        cell.textColor = 0x000000;
    };
    const auto count = [&](int row, QRgb color) { return CountColor(Picture(2), Place(row, 2, 2), color); };
    grid.ApplyTheme("dark");
    EXPECT_GT(count(3, 0xFFFFFF80), 1000);
    for (const int row : {3, 4}) EXPECT_GT(count(row, kLightGridTheme.up), 0);
    EXPECT_GT(count(5, 0xFF000000), 0);
    EXPECT_GT(count(6, kDarkGridTheme.text), 0) << "black on dark would not be seen";
    grid.SetFocusCell(5, 2);
    EXPECT_GT(count(5, kDarkGridTheme.text), 0) << "nor on what is selected";
}

TEST_F(CGridPainterTest, ABarIsAsLongAsItsPartAndOnItsSideOfZero) {
    SCellShape shape;
    source.cell = [&](int row, int column, SCell& cell) {
        if (row == 3 && column == 2) cell.shape = shape;
    };
    constexpr uint16_t kWhole = SCellShape::kWhole, kHalf = kWhole / 2, kNone = SCellShape::kNoMark;
    const auto extent = [&](uint16_t from, uint16_t to, uint16_t zero) {
        shape = {.kind = ECellShape::Bar, .role = ETextRole::Up, .from = from, .to = to, .fineMark = zero};
        return Ink();
    };
    // 75 pixels of the cell's 80 are for the bar.
    EXPECT_EQ(extent(0, kWhole, kNone), std::pair(2, 76));
    EXPECT_EQ(extent(0, kWhole / 3, kNone), std::pair(2, 26));
    EXPECT_EQ(extent(0, 1, kNone), std::pair(2, 2)) << "the smallest number is seen";
    EXPECT_EQ(extent(0, 0, kNone), std::pair(-1, -1));
    const auto side = [&](uint16_t from, uint16_t to) {
        extent(from, to, kHalf);
        const QImage picture = Picture();
        const QRect cell = Place(3, 2);
        const QRgb bar = ShapeColor(grid.Theme().base, grid.Theme().up, kFullStrength * 3 / 10, grid.Theme().text);
        const QRect middle(cell.left(), cell.center().y(), 40, 1);
        return std::pair(CountColor(picture, middle, bar), CountColor(picture, middle.translated(40, 0), bar));
    };
    EXPECT_EQ(side(kHalf, kWhole), std::pair(0, 36)) << "one pixel is the line at zero";
    EXPECT_EQ(side(0, kHalf), std::pair(38, 0));
    EXPECT_EQ(side(kHalf - 1, kHalf), std::pair(1, 0));
}

TEST_F(CGridPainterTest, ARangeMarksOpenAndLastUnderTheNumber) {
    source.cell = [](int row, int column, SCell& cell) {
        if (row != 3 || column != 2) return;
        cell.shape = {.kind = ECellShape::Range, .role = ETextRole::Down, .from = 2500, .to = 7500};
        cell.shape.fineMark = 7500;
        cell.shape.strongMark = 2500;
    };
    const QImage picture = Picture();
    const QRect cell = Place(3, 2);
    const SGridTheme& theme = grid.Theme();
    const auto tall = [&](int x, QRgb color) {
        return CountColor(picture, {cell.left() + x, cell.top(), 1, cell.height()}, color);
    };
    EXPECT_EQ(tall(20, theme.text), 4) << "the last price";
    EXPECT_EQ(tall(58, theme.border), 4) << "the opening one";
    EXPECT_EQ(tall(40, theme.down), 2) << "it fell since";
    EXPECT_EQ(tall(5, theme.border) + tall(70, theme.border), 2) << "the day's range";
    EXPECT_EQ(CountColor(picture, cell.adjusted(0, 0, 0, -7), theme.base), (cell.height() - 7) * 79)
        << "the number's room";
}

TEST_F(CGridPainterTest, BordersAreDrawnAtTheirSides) {
    uint8_t borders = 0;
    source.cell = [&](int row, int column, SCell& cell) {
        if (row == 3 && column == 2) cell.borders = borders;
    };
    const QRect cell = Place(3, 2);
    const auto lines = [&](int shown) {
        borders = static_cast<uint8_t>(shown);
        const QImage picture = Picture();
        const auto full = [&](const QRect& line) {
            return CountColor(picture, line, grid.Theme().border) == line.width() * line.height();
        };
        std::string out;
        for (int deep = 0; deep < 2; ++deep) {
            if (full({cell.left() + deep, cell.top(), 1, cell.height()})) out += 'l';
            if (full({cell.left(), cell.top() + deep, cell.width(), 1})) out += 't';
            if (full({cell.right() - deep, cell.top(), 1, cell.height()})) out += 'r';
            if (full({cell.left(), cell.bottom() - deep, cell.width(), 1})) out += 'b';
        }
        return out;
    };
    EXPECT_EQ(lines(kLeftBorder | kBottomBorder), "lb");
    EXPECT_EQ(lines(kTopBorder | kRightBorder), "tr");
    EXPECT_EQ(lines(kTopBorder | kRightBorder | kThickBorders), "trtr");
    EXPECT_EQ(lines(0), "");
}

TEST_F(CGridPainterTest, EveryByteAndTheLongestTextCanBePainted) {
    std::string all;
    for (int i = 0; i < 255; ++i) all.push_back(static_cast<char>(i + 1));
    source.cell = [&](int row, int column, SCell& cell) {
        cell.SetText(row == 1 ? all : std::string(300, static_cast<char>(row * 16 + column)));
        cell.tickTrend = column % 2 == 0;
        cell.font = static_cast<uint8_t>(row); // ids that no font has
    };
    for (const int width : {2000, 1}) {
        grid.SetColumnWidth(1, width);
        Picture();
    }
    for (const double scale : {0.3, 1.0, 3.0}) Picture(scale);
}

TEST_F(CGridPainterTest, WithoutRowsColumnsOrSourceNothingIsBroken) {
    grid.SetRowCount(0);
    const QImage picture = Picture();
    EXPECT_EQ(CountColor(picture, picture.rect(), grid.Theme().focus), 0);
    EXPECT_EQ(CountColor(picture, picture.rect(), grid.Theme().selected), 0);
    grid.SetColumnCount(0);
    grid.SetSource(nullptr);
    Picture();
    Key(Qt::Key_Down);
    Key(Qt::Key_End, Qt::ControlModifier);
    Key(Qt::Key_A, Qt::ControlModifier);
    QTest::mouseClick(Cells(), Qt::LeftButton, {}, {5, 5});
    grid.SetRowCount(5);
    grid.SetColumnCount(3);
    EXPECT_GT(CountColor(Picture(), Place(3, 2), grid.Theme().base), 500);
}
