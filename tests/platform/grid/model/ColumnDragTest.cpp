#include "platform/grid/model/ColumnDrag.h"

#include <gtest/gtest.h>

#include <string>

namespace norvel::grid {
namespace {

// One column for each letter, 100 pixels wide; a small letter: hidden.
Columns lettered(std::string_view letters) {
    Columns columns;
    for (const char letter : letters) {
        Column column;
        column.DataField = std::string(1, letter);
        column.Width = 1500;
        column.Order = columns.Count();
        column.Visible = letter < 'a';
        columns.Add(column);
    }
    return columns;
}

std::string sequence(const Columns& columns) {
    std::string letters;
    for (const int index : columns.InOrder())
        letters += columns.Item(index).DataField;
    return letters;
}

struct Move {
    std::string_view before;
    int column, place;
    std::string_view after;
};

class MoveColumnTest : public testing::TestWithParam<Move> {};

TEST_P(MoveColumnTest, PutsTheColumnBeforeThePlaceAmongThoseShown) {
    Columns columns = lettered(GetParam().before);
    EXPECT_EQ(moveColumn(columns, GetParam().column, GetParam().place),
              GetParam().before != GetParam().after);
    EXPECT_EQ(sequence(columns), GetParam().after);
    for (int i = 0; i < columns.Count(); ++i)
        EXPECT_EQ(columns.Item(i).DataField, std::string(1, GetParam().before[std::size_t(i)]))
            << "the index stays";
}

INSTANTIATE_TEST_SUITE_P(Cases, MoveColumnTest,
                         testing::Values(Move{"ABCD", 0, 2, "BACD"}, Move{"ABCD", 0, 4, "BCDA"},
                                         Move{"ABCD", 3, 0, "DABC"}, Move{"ABCD", 2, 1, "ACBD"},
                                         Move{"ABCD", 1, 1, "ABCD"}, Move{"ABCD", 1, 2, "ABCD"},
                                         Move{"ABCD", 1, -1, "ABCD"}, Move{"ABCD", 1, 5, "ABCD"},
                                         Move{"AxBC", 3, 1, "AxCB"}, Move{"AxBC", 0, 2, "xBAC"},
                                         Move{"AxBC", 1, 0, "AxBC"}, Move{"ABx", 0, 2, "BxA"},
                                         Move{"A", 0, 1, "A"}));

TEST(MoveColumn, MovesAmongOrdersThatAreAllTheSame) {
    Columns columns = lettered("ABC");
    for (int i = 0; i < 3; ++i)
        columns.Item(i).Order = 7;
    EXPECT_TRUE(moveColumn(columns, 2, 0));
    EXPECT_EQ(sequence(columns), "CAB");
}

TEST(MoveColumn, KeepsTheGapsThatColumnsOfALayoutLeftWhoseFieldsAreGone) {
    Columns columns = lettered("ABC");
    columns.Item(1).Order = 5;
    columns.Item(2).Order = 9;
    EXPECT_TRUE(moveColumn(columns, 0, 3));
    EXPECT_EQ(columns.Item(1).Order, 0);
    EXPECT_EQ(columns.Item(2).Order, 5);
    EXPECT_EQ(columns.Item(0).Order, 9);
}

class ColumnDragTest : public testing::Test {
  protected:
    void SetUp() override {
        places.Update(columns,
                      {.width = 320,
                       .height = 250,
                       .selectorWidth = 20,
                       .headingHeight = 25,
                       .filterHeight = 25,
                       .rowHeight = 20},
                      5);
    }
    Columns columns = lettered("ABCDEF"); // the first three are in view
    Geometry places;
    ColumnDrag drag;
};

TEST_F(ColumnDragTest, StaysAClickWithinTheThreshold) {
    drag.Press(1, 150, 10, 4, 4);
    EXPECT_FALSE(drag.Follow(154, 6, places));
    EXPECT_FALSE(drag.Moving());
    EXPECT_EQ(drag.Drop(), ColumnDrop{});
    EXPECT_TRUE(drag.Follow(155, 6, places));
    EXPECT_TRUE(drag.Moving());
}

TEST_F(ColumnDragTest, StaysADragWhereItComesBack) {
    drag.Press(1, 150, 10, 4, 4);
    drag.Follow(200, 10, places);
    EXPECT_TRUE(drag.Follow(150, 10, places));
}

TEST_F(ColumnDragTest, LandsAtTheNearestBorderInView) {
    drag.Press(0, 30, 10, 4, 4);
    struct Case {
        int x, place;
    };
    for (const auto& [x, place] : {Case{-50, 0}, Case{69, 0}, Case{70, 1}, Case{169, 1},
                                   Case{170, 2}, Case{269, 2}, Case{270, 3}, Case{900, 3}}) {
        drag.Follow(x, 10, places);
        EXPECT_EQ(drag.Drop(), (ColumnDrop{Spot::Heading, place})) << x;
    }
}

TEST_F(ColumnDragTest, LandsNowhereFarFromTheHeadings) {
    drag.Press(0, 30, 10, 4, 4);
    for (const int y : {-26, 50, 200}) {
        drag.Follow(180, y, places);
        EXPECT_EQ(drag.Drop(), ColumnDrop{}) << y;
    }
    drag.Follow(180, 49, places);
    EXPECT_EQ(drag.Drop().place, 2);
}

TEST_F(ColumnDragTest, FollowsTheColumnsWhereTheyAreScrolledTo) {
    places.Horizontal().SetPosition(300);
    drag.Press(0, 30, 10, 4, 4);
    drag.Follow(900, 10, places);
    EXPECT_EQ(drag.Drop().place, 6);
    EXPECT_EQ(places.BorderAt({Spot::Heading, 6}), 320);
    EXPECT_EQ(places.BorderAt({Spot::Heading, 3}), 20);
}

TEST_F(ColumnDragTest, IsOverAtItsEnd) {
    drag.Press(0, 30, 10, 4, 4);
    drag.Follow(180, 10, places);
    drag.End();
    EXPECT_EQ(drag.Column(), -1);
    EXPECT_FALSE(drag.Follow(200, 10, places));
}

TEST(EdgeScroll, GrowsWithTheWayBeyondTheEdges) {
    EXPECT_EQ(edgeScroll(100, 20, 320, 20), 0);
    EXPECT_EQ(edgeScroll(39, 20, 320, 20), -1);
    EXPECT_EQ(edgeScroll(0, 20, 320, 20), -40);
    EXPECT_EQ(edgeScroll(300, 20, 320, 20), 1);
    EXPECT_EQ(edgeScroll(350, 20, 320, 20), 51);
}

TEST(EdgeScroll, LeavesTheMiddleOfANarrowViewInPeace) {
    EXPECT_EQ(edgeScroll(35, 20, 50, 20), 0);
    EXPECT_EQ(edgeScroll(50, 20, 50, 20), 1);
}

} // namespace
} // namespace norvel::grid
