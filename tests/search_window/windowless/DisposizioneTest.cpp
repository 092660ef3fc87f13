// The arithmetic of the window's layout, in twips.
#include "search_window/Disposizione.h"

#include <gtest/gtest.h>

namespace norvel::search_window {
namespace {

const Misura area{11355, 7000};

TEST(Disposizione, BothBarsVisibleTheGridEndsFiftyTwipsAboveTheStatusBar) {
    const auto m = misuraGriglia(area, 480, 300);
    ASSERT_TRUE(m);
    EXPECT_EQ(m->altezza, 7000 - 480 - 300 - 50);
    EXPECT_EQ(altezzaBarra + m->altezza, 7000 - 300 - 50) << "the grid starts under the toolbar";
    EXPECT_EQ(m->larghezza, 11355) << "no side margin";
}

TEST(Disposizione, TheFourCasesTakeOnlyVisibleBarsOffTheClientHeight) {
    EXPECT_EQ(misuraGriglia(area, 480, std::nullopt)->altezza, 6470);
    EXPECT_EQ(misuraGriglia(area, std::nullopt, 300)->altezza, 6650);
    EXPECT_EQ(misuraGriglia(area, std::nullopt, std::nullopt)->altezza, 6950);
}

TEST(Disposizione, ANegativeHeightIsNoSizeAtAll) {
    EXPECT_FALSE(misuraGriglia({5000, 829}, 480, 300));
    EXPECT_EQ(misuraGriglia({5000, 830}, 480, 300), (Misura{5000, 0}));
}

TEST(Disposizione, TheFirstLineIsSharedOutWithoutOverlapsAtAnyWidth) {
    EXPECT_EQ(ripartisciRiga(1000, 32, 245, 52), (Riga{703, 245, 52}));
    EXPECT_EQ(ripartisciRiga(1000, 32, 0, 52), (Riga{948, 0, 52})) << "the panel is hidden";
    EXPECT_EQ(ripartisciRiga(329, 32, 245, 52), (Riga{32, 245, 52})) << "all three just fit";
    EXPECT_EQ(ripartisciRiga(240, 32, 245, 52), (Riga{32, 156, 52})) << "the panel is cut";
    EXPECT_EQ(ripartisciRiga(70, 32, 245, 52), (Riga{18, 0, 52}));
    EXPECT_EQ(ripartisciRiga(40, 32, 245, 52), (Riga{0, 0, 40}));
    EXPECT_EQ(ripartisciRiga(0, 32, 245, 52), (Riga{0, 0, 0}));
}

TEST(Disposizione, CentredPlaceIsTheRoundedDifferenceHalvedByIntegerDivision) {
    EXPECT_EQ(posizioneCentrata({28800, 16200}, {11355, 7000}), (Posizione{8722, 4600}));
    EXPECT_EQ(posizioneCentrata({28800.4, 16200.6}, {11355, 7000}), (Posizione{8722, 4600}))
        << "17445.4 rounds to 17445, 9200.6 to 9201; halves drop the rest";
    EXPECT_EQ(posizioneCentrata({9600, 7200}, {11355, 9001}), (Posizione{-877, -900}))
        << "a window larger than the screen: -1755 and -1801 halved towards zero";
}

} // namespace
} // namespace norvel::search_window
