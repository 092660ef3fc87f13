#include "platform/grid/model/ScrollAxis.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

TEST(ScrollAxis, KeepsItsPositionBetweenStartAndEnd) {
    ScrollAxis axis;
    axis.SetExtent(1000, 300);
    EXPECT_EQ(axis.End(), 700);
    EXPECT_TRUE(axis.SetPosition(5000));
    EXPECT_EQ(axis.Position(), 700);
    EXPECT_FALSE(axis.SetPosition(701));
    axis.SetPosition(-3);
    EXPECT_EQ(axis.Position(), 0);
}

TEST(ScrollAxis, IsNotNeededWhereAllIsSeen) {
    ScrollAxis axis;
    axis.SetExtent(300, 300);
    EXPECT_FALSE(axis.Needed());
    axis.SetExtent(0, 0);
    EXPECT_FALSE(axis.Needed());
    EXPECT_GT(axis.Bar().range, 0);
}

TEST(ScrollAxis, AShorterContentPullsThePositionBack) {
    ScrollAxis axis;
    axis.SetExtent(1000, 100);
    axis.SetPosition(900);
    axis.SetExtent(500, 100);
    EXPECT_EQ(axis.Position(), 400);
}

TEST(ScrollAxis, TheBarOfTenMillionRowsCountsEveryPixel) {
    constexpr Pixels rowHeight = 22;
    ScrollAxis axis;
    axis.SetExtent(10'000'000 * rowHeight, 1000);
    for (const Pixels row : {Pixels{0}, Pixels{1}, Pixels{4'999'999}, Pixels{9'999'000}}) {
        axis.SetPosition(row * rowHeight);
        EXPECT_EQ(axis.FromBar(axis.Bar().position), row * rowHeight);
    }
    EXPECT_EQ(axis.Bar().thumb, 1000);
}

TEST(ScrollAxis, TheBarOfAnyLengthReachesBothEndsAndEveryRow) {
    constexpr Pixels rowHeight = 22;
    constexpr Pixels rows = 400'000'000; // 8.8 thousand million pixels
    ScrollAxis axis;
    axis.SetExtent(rows * rowHeight, 1000);
    axis.SetPosition(axis.End());
    const ScrollBarValues atEnd = axis.Bar();
    EXPECT_EQ(atEnd.position + atEnd.thumb, atEnd.range);
    EXPECT_EQ(axis.FromBar(atEnd.position), axis.End());
    EXPECT_EQ(axis.FromBar(0), 0);
    // Two neighbouring positions of the bar are less than a row apart.
    EXPECT_LT(axis.FromBar(500'000'001) - axis.FromBar(500'000'000), rowHeight);
}

TEST(ScrollAxis, APositionWithinTheScaledBarIsFoundAgainUnlessItIsTheEnd) {
    ScrollAxis axis;
    axis.SetExtent(Pixels{10'000'000'000}, 1000);
    axis.SetPosition(Pixels{5'000'000'001});
    EXPECT_LE(axis.Position() - axis.FromBar(axis.Bar().position), 10);
    EXPECT_LT(axis.Bar().position, axis.Bar().range - axis.Bar().thumb);
}

TEST(WheelSteps, ANotchScrollsWhatItShould) {
    WheelSteps steps;
    EXPECT_EQ(steps.Add(120, 120, 66), 66);
    EXPECT_EQ(steps.Add(-240, 120, 66), -132);
}

TEST(WheelSteps, SmallRotationsOfATouchpadAddUp) {
    WheelSteps steps;
    Pixels moved = 0;
    for (int i = 0; i < 120; ++i)
        moved += steps.Add(1, 120, 66);
    EXPECT_EQ(moved, 66);
}

TEST(WheelSteps, ATurnBackForgetsWhatWasLeftOver) {
    WheelSteps steps;
    steps.Add(1, 120, 66);
    EXPECT_EQ(steps.Add(-120, 120, 66), -66);
}

TEST(WheelSteps, AMouseThatReportsNoNotchMovesNothing) {
    WheelSteps steps;
    EXPECT_EQ(steps.Add(120, 0, 66), 0);
}

} // namespace
} // namespace norvel::grid
