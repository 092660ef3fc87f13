#include "platform/grid/model/TextRoom.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

constexpr Span pane{20, 300};

TEST(TextRoom, ATextIsCutOnceItIsWiderThanItsBox) {
    EXPECT_FALSE(isTextCut(100, {50, 100}, Alignment::Left, pane));
    EXPECT_TRUE(isTextCut(101, {50, 100}, Alignment::Left, pane));
    EXPECT_TRUE(isTextCut(1, {50, 0}, Alignment::Left, pane));
}

TEST(TextRoom, ABoxThatReachesOutOfThePaneCutsOnlyTheTextThatIsThere) {
    const Span atTheLeft{-30, 100};
    EXPECT_TRUE(isTextCut(40, atTheLeft, Alignment::Left, pane));
    EXPECT_FALSE(isTextCut(40, atTheLeft, Alignment::Right, pane));
    EXPECT_FALSE(isTextCut(50, atTheLeft, Alignment::Right, pane));
    EXPECT_TRUE(isTextCut(51, atTheLeft, Alignment::Right, pane));
    const Span atTheRight{280, 100};
    EXPECT_FALSE(isTextCut(40, atTheRight, Alignment::Left, pane));
    EXPECT_TRUE(isTextCut(40, atTheRight, Alignment::Right, pane));
    EXPECT_TRUE(isTextCut(40, atTheRight, Alignment::Center, pane));
    EXPECT_FALSE(isTextCut(40, {230, 100}, Alignment::Center, pane));
}

} // namespace
} // namespace norvel::grid
