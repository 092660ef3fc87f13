#include "platform/grid/Palette.h"

#include <gtest/gtest.h>
#include <wx/gdicmn.h>

namespace norvel::tests {
namespace {

using namespace grid;

TEST(PaletteTest, EveryTextOfTheThemeCanBeRead) {
    const Palette p = systemPalette();
    EXPECT_GE(contrast(p.text, p.back), 4.5);
    EXPECT_GE(contrast(p.faceText, p.face), 4.5);
    EXPECT_GE(contrast(p.text, p.currentBack), 4.5);
    EXPECT_GE(contrast(p.text, p.idleCurrentBack), 4.5);
    EXPECT_GE(contrast(p.idleSelectionText, p.idleSelection), 4.5);
    EXPECT_GE(contrast(p.selectionText, p.selection), 2.5);
    EXPECT_GE(contrast(p.focus, p.back), 3);
}

TEST(PaletteTest, SelectedCurrentAndOtherRowsDiffer) {
    const Palette p = systemPalette();
    EXPECT_NE(p.selection, p.idleSelection);
    EXPECT_NE(p.selection, p.currentBack);
    EXPECT_NE(p.currentBack, p.back);
    EXPECT_NE(p.idleCurrentBack, p.back);
    EXPECT_NE(p.line, p.back);
}

TEST(PaletteTest, TheUsualStripesAreShadesOfTheTheme) {
    const Palette p = systemPalette();
    const Split split;
    EXPECT_EQ(alternateColours(p, split, false).back, p.back);
    EXPECT_NE(alternateColours(p, split, true).back, p.back);
    EXPECT_LT(contrast(alternateColours(p, split, true).back, p.back), 1.3);
}

TEST(PaletteTest, ColoursOfAStyleAreTakenAsBlueGreenRed) {
    Split split;
    split.EvenRowStyle.BackColor = 0x00112233;
    const RowColours colours = alternateColours(systemPalette(), split, true);
    EXPECT_EQ(colours.back, wxColour(0x33, 0x22, 0x11));
}

TEST(PaletteTest, TextOnAnyColourOfAStyleCanBeRead) {
    const Palette p = systemPalette();
    Split split;
    for (std::uint32_t colour = 0; colour < 0x1000000; colour += 0x0F1E2D) {
        split.OddRowStyle.BackColor = colour;
        const RowColours row = alternateColours(p, split, false);
        EXPECT_GE(contrast(row.text, row.back), 4.5) << std::hex << colour;
    }
}

TEST(PaletteTest, TheCurrentCellsFrameIsSeenOnAnyColourOfAStyle) {
    const Palette palette = systemPalette();
    for (const wxColour& back : {wxColour(255, 255, 255), wxColour(0, 0, 0), palette.focus,
                                 palette.currentBack, wxColour(128, 128, 128)})
        EXPECT_GE(contrast(back, frameColour(palette, back)), 3) << back.GetAsString();
}

TEST(PaletteTest, ContrastFollowsItsDefinition) {
    EXPECT_NEAR(contrast(*wxBLACK, *wxWHITE), 21, 0.01);
    EXPECT_NEAR(contrast(*wxWHITE, *wxWHITE), 1, 0.001);
    EXPECT_NEAR(contrast(wxColour(119, 119, 119), *wxWHITE), 4.48, 0.01);
}

} // namespace
} // namespace norvel::tests
