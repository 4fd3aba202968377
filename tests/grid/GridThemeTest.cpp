// SPDX-License-Identifier: MIT
#include "grid/GridTheme.h"

#include <gtest/gtest.h>
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
        ExpectContrast({{"alert", t.alert}, {"note", t.focus}}, cells, 3);
    }
}
