// SPDX-License-Identifier: MIT
#include "grid/GridTheme.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ios>
#include <vector>

using namespace vx;

namespace {

struct SNamed {
    const char* name;
    QRgb color;
};

void ExpectContrast(const std::vector<SNamed>& front, const std::vector<SNamed>& back, double least) {
    for (const SNamed& f : front)
        for (const SNamed& b : back) EXPECT_GE(ContrastRatio(f.color, b.color), least) << f.name << " on " << b.name;
}

} // namespace

TEST(GridTheme, EveryTextCanBeReadOnEveryBackground) {
    for (const SGridTheme& t : {kLightGridTheme, kDarkGridTheme}) {
        SCOPED_TRACE(t.base == kLightGridTheme.base ? "light" : "dark");
        const std::vector<SNamed> texts = {
            {"text", t.text}, {"up", t.up}, {"down", t.down}, {"unchanged", t.unchanged}, {"stale", t.stale}};
        const std::vector<SNamed> cells = {
            {"base", t.base}, {"shade", t.shade}, {"selected", t.selected}, {"span", t.span}, {"header", t.header}};
        ExpectContrast(texts, cells, 4.5);
        ExpectContrast({{"up", t.up}}, {{"lit up", t.flashUp}}, 4.5);
        ExpectContrast({{"down", t.down}}, {{"lit down", t.flashDown}}, 4.5);
        ExpectContrast({{"text", t.text}}, {{"background up", t.flashUp}, {"background down", t.flashDown}}, 4.5);
        ExpectContrast({{"span text", t.spanText}}, {{"span", t.span}, {"selected", t.selected}}, 4.5);
        ExpectContrast({{"header text", t.headerText}}, {{"header", t.header}, {"selected", t.headerSelected}}, 4.5);
        ExpectContrast({{"focus", t.focus}, {"idle focus", t.focusIdle}}, {{"selected", t.selected}, {"span", t.span}},
                       3);
        ExpectContrast({{"alert", t.alert}, {"note", t.focus}, {"border", t.border}}, cells, 3);
    }
}

TEST(GridTheme, WhatIsDrawnBehindATextLeavesItReadable) {
    for (const SGridTheme& t : {kLightGridTheme, kDarkGridTheme})
        for (const QRgb text : {t.text, t.up, t.down, t.unchanged, t.stale})
            for (const QRgb back : {t.base, t.shade, t.selected, t.flashUp, t.flashDown})
                for (const QRgb color : {t.up, t.down, t.shape, 0xFF000000, 0xFFFFFFFF, text}) {
                    const double bare = ContrastRatio(text, back);
                    const double kept = ContrastRatio(text, ShapeColor(back, color, kFullStrength, text));
                    EXPECT_GE(kept, std::min(bare * 0.9, 4.5)) << std::hex << text << " on " << back << "+" << color;
                    if (back != t.base || (color != t.up && color != t.down && color != t.shape)) continue;
                    EXPECT_GT(ContrastRatio(ShapeColor(back, color, kFullStrength / 3, text), back), 1.15)
                        << "it is seen: " << std::hex << text << " on " << color;
                }
}
