#include "platform/grid/model/RowSizing.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

constexpr RowHeights heights{300, 255, 3000};

TEST(RowSizing, AHeightIsKeptWithinALineOfTextAndTheView) {
    EXPECT_EQ(chosenRowHeight(500, heights), 500);
    EXPECT_EQ(chosenRowHeight(-20, heights), 255);
    EXPECT_EQ(chosenRowHeight(9000, heights), 3000);
}

TEST(RowSizing, NearTheFontsOwnHeightTheRowsFollowTheFontAgain) {
    EXPECT_EQ(chosenRowHeight(315, heights), 0);
    EXPECT_EQ(chosenRowHeight(300, heights), 0);
    EXPECT_EQ(chosenRowHeight(330, heights), 330);
}

TEST(RowSizing, AViewLowerThanALineStillShowsALine) {
    EXPECT_EQ(chosenRowHeight(100, {300, 255, 30}), 255);
}

TEST(RowSizing, KeysGoByStepsThroughTheFontsOwnHeight) {
    EXPECT_EQ(nextRowHeight(300, true, heights), 360);
    EXPECT_EQ(nextRowHeight(360, true, heights), 420);
    EXPECT_EQ(nextRowHeight(360, false, heights), 0);
    EXPECT_EQ(nextRowHeight(300, false, heights), 255);
    EXPECT_EQ(nextRowHeight(255, true, heights), 0);
}

TEST(RowSizing, AHeightBetweenTwoStepsGoesToTheNextOne) {
    EXPECT_EQ(nextRowHeight(390, true, heights), 420);
    EXPECT_EQ(nextRowHeight(390, false, heights), 360);
    EXPECT_EQ(nextRowHeight(359.5, true, heights), 420) << "rounded by the pixels";
    EXPECT_EQ(nextRowHeight(360.5, false, heights), 0);
}

TEST(RowSizing, KeysStopAtBothEnds) {
    EXPECT_EQ(nextRowHeight(255, false, heights), 255);
    EXPECT_EQ(nextRowHeight(3000, true, heights), 3000);
}

} // namespace
} // namespace norvel::grid
