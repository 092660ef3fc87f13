// Where the rows of a side menu stand.
#include "platform/controls/ExplorerLayout.h"

#include <gtest/gtest.h>

namespace norvel::controls {
namespace {

using Lines = std::vector<std::string>;

// A font whose letters are 10 pixels wide, 12 in bold; lines of 16, icons of 20, units of 4.
ExplorerMetrics metrics(int width) {
    return {width, 16, 20, 4, [](std::string_view text, bool bold) {
                return static_cast<int>(text.size()) * (bold ? 12 : 10);
            }};
}

std::vector<ExplorerGroup> menu() {
    return {{.Key = "G1",
             .IconKey = "icona",
             .Caption = "Titolo",
             .SecondTitle = "Sotto",
             .Description = "una frase lunga",
             .Special = true,
             .Items = {{"A", "icona", "Primo", "che fa"}, {"B", "icona", "Secondo lungo", ""}}},
            {.Key = "G2", .Caption = "Due", .Items = {{"N", "icona", "una due tre", "", true}}}};
}

TEST(ExplorerLayoutTest, ATextBreaksAtBlanksAndALongWordHasItsOwnLine) {
    const auto m = metrics(0);
    EXPECT_EQ(wrapText("una due tre", false, 70, m), (Lines{"una due", "tre"}));
    EXPECT_EQ(wrapText("una due tre", true, 70, m), (Lines{"una", "due", "tre"}));
    EXPECT_EQ(wrapText("a precipitevolissimevolmente b", false, 70, m),
              (Lines{"a", "precipitevolissimevolmente", "b"}));
    EXPECT_EQ(wrapText("  due   blank ", false, 200, m), (Lines{"due blank"}));
    EXPECT_EQ(wrapText("", false, 70, m), (Lines{""}));
}

TEST(ExplorerLayoutTest, RowsStandOneBelowTheOtherInsideTheirGroups) {
    const auto all = layoutExplorer(menu(), metrics(300));
    ASSERT_EQ(all.rows.size(), 5U);
    ASSERT_EQ(all.groups.size(), 2U);
    for (std::size_t i = 0; i < all.rows.size(); ++i) {
        const ExplorerBox& box = all.rows[i].box;
        const ExplorerBox& group = all.groups[all.rows[i].group];
        EXPECT_GE(box.x, group.x) << i;
        EXPECT_LE(box.x + box.width, group.x + group.width) << i;
        EXPECT_GE(box.y, group.y) << i;
        EXPECT_LE(box.y + box.height, group.y + group.height) << i;
        const int above = i > 0 ? all.rows[i - 1].box.y + all.rows[i - 1].box.height : 0;
        EXPECT_GE(box.y, above) << i;
    }
    EXPECT_GE(all.height, all.groups[1].y + all.groups[1].height);
    EXPECT_TRUE(all.rows[0].IsHeading());
    EXPECT_EQ(all.rows[0].secondTitle, Lines{"Sotto"});
    EXPECT_EQ(all.rows[0].description, Lines{"una frase lunga"});
    EXPECT_EQ(all.rows[2].item, 1U);
}

TEST(ExplorerLayoutTest, ANarrowMenuBreaksMoreLinesAndIsHigher) {
    const auto wide = layoutExplorer(menu(), metrics(300));
    const auto narrow = layoutExplorer(menu(), metrics(150));
    EXPECT_GT(narrow.rows[0].description.size(), wide.rows[0].description.size());
    EXPECT_GT(narrow.height, wide.height);
    EXPECT_GE(narrow.rows[4].box.height,
              static_cast<int>(narrow.rows[4].lines.size()) * metrics(0).lineHeight);
}

TEST(ExplorerLayoutTest, AtItsOwnWidthNoCaptionOfACommandBreaks) {
    const auto groups = menu();
    const int width = explorerWidth(groups, metrics(0));
    const auto all = layoutExplorer(groups, metrics(width));
    EXPECT_EQ(all.rows[2].lines, Lines{"Secondo lungo"});
    EXPECT_EQ(all.rows[0].lines, Lines{"Titolo"});
    EXPECT_GT(all.rows[4].lines.size(), 0U);
    const auto less = layoutExplorer(groups, metrics(width - 1));
    EXPECT_EQ(less.rows[2].lines, (Lines{"Secondo", "lungo"})) << "not a pixel more than it needs";
}

TEST(ExplorerLayoutTest, AnEmptyMenuHasNoRows) {
    const auto all = layoutExplorer({}, metrics(200));
    EXPECT_TRUE(all.rows.empty());
    EXPECT_GE(layoutExplorer(menu(), metrics(0)).groups[0].width, 0) << "no room at all";
}

} // namespace
} // namespace norvel::controls
