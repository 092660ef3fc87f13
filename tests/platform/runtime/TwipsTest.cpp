#include "platform/runtime/Twips.h"

#include <gtest/gtest.h>

#include <cmath>

namespace norvel {
namespace {

TEST(Twips, FifteenMakeAPixelAtTheBaseScale) {
    EXPECT_EQ(twipsToPixels(0, 1), 0);
    EXPECT_EQ(twipsToPixels(480, 1), 32);
    EXPECT_EQ(twipsToPixels(11355, 1), 757);
    EXPECT_EQ(twipsToPixels(7000, 1), 467); // 466.67
    EXPECT_EQ(twipsToPixels(-50, 1), -3);   // -3.33
    EXPECT_EQ(pixelsToTwips(32, 1), 480);
}

TEST(Twips, TheScaleMultipliesPixels) {
    EXPECT_EQ(twipsToPixels(480, 1.25), 40);
    EXPECT_EQ(twipsToPixels(480, 2), 64);
    EXPECT_EQ(twipsToPixels(50, 1.5), 5);
    EXPECT_EQ(pixelsToTwips(64, 2), 480);
}

TEST(Twips, EveryPixelComesBack) {
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        for (int pixels = -100; pixels < 5000; ++pixels)
            ASSERT_EQ(twipsToPixels(pixelsToTwips(pixels, scale), scale), pixels) << scale;
    }
}

TEST(Twips, AbsurdMeasuresStayNumbersThatAnIntHolds) {
    EXPECT_EQ(twipsToPixels(1e300, 1), std::numeric_limits<int>::max());
    EXPECT_EQ(twipsToPixels(-1e300, 2), std::numeric_limits<int>::min());
    EXPECT_EQ(twipsToPixels(std::nan(""), 1), 0);
}

} // namespace
} // namespace norvel
