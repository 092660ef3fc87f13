#include "platform/grid/model/CellArea.h"

#include <gtest/gtest.h>

#include <utility>

namespace norvel::grid {
namespace {

using Range = CellArea::Range;

class CellAreaTest : public testing::Test {
  protected:
    // Columns shown in the order given by their indexes; those that are not named are hidden.
    void show(int count, const std::vector<int>& order) {
        columns.Clear();
        for (int i = 0; i < count; ++i) {
            Column column;
            column.Order = i;
            column.Visible = false;
            columns.Add(column);
        }
        for (std::size_t place = 0; place < order.size(); ++place) {
            columns.Item(order[place]).Visible = true;
            columns.Item(order[place]).Order = static_cast<int>(place);
        }
        layOut();
    }
    void hide(int column) {
        columns.Item(column).Visible = false;
        layOut();
    }
    void layOut() { geometry.Update(columns, {.width = 500, .height = 200}, 10); }
    Range indexes() const { return area.Indexes(geometry, columns.Count()); }
    Columns columns;
    Geometry geometry;
    CellArea area;
};

TEST_F(CellAreaTest, WholeRowsReachOverAllColumnsTheHiddenOnesIncluded) {
    show(4, {1, 2});
    EXPECT_TRUE(area.WholeRows(geometry));
    EXPECT_EQ(indexes(), (Range{0, 3}));
    EXPECT_TRUE(area.Contains(geometry, 2));
}

TEST_F(CellAreaTest, CellsReachFromWhereTheyBeganInEitherDirection) {
    show(5, {0, 1, 2, 3, 4});
    area.Select(3, 1);
    EXPECT_EQ(indexes(), (Range{1, 3}));
    area.Select(3, 4);
    EXPECT_EQ(indexes(), (Range{3, 4}));
    EXPECT_TRUE(area.Contains(geometry, 4));
    EXPECT_FALSE(area.Contains(geometry, 2));
    area.Clear();
    EXPECT_TRUE(area.WholeRows(geometry));
}

TEST_F(CellAreaTest, OfMovedColumnsTheCellsBetweenCountAndTheLeastAndGreatestIndex) {
    show(6, {5, 0, 2, 4, 1});
    area.Select(5, 2);
    EXPECT_TRUE(area.Contains(geometry, 0));
    EXPECT_FALSE(area.Contains(geometry, 4));
    EXPECT_EQ(indexes(), (Range{0, 5}));
    area.Select(4, 2);
    EXPECT_EQ(indexes(), (Range{2, 4}));
}

TEST_F(CellAreaTest, KeepsTheColumnsBetweenItsEndsWhenThoseAreHiddenOrGrouped) {
    for (const auto& [begin, end] : {std::pair{1, 4}, std::pair{4, 1}}) {
        show(6, {0, 1, 2, 3, 4, 5});
        area.Select(begin, end);
        hide(4);
        EXPECT_EQ(indexes(), (Range{1, 3}));
        hide(1);
        EXPECT_EQ(indexes(), (Range{2, 3}));
        columns.Item(3).Grouped = true;
        layOut();
        EXPECT_EQ(indexes(), (Range{2, 2}));
        EXPECT_FALSE(area.WholeRows(geometry));
        EXPECT_FALSE(area.Contains(geometry, 3));
    }
}

TEST_F(CellAreaTest, IsTheNearestColumnWhenNoneOfItsOwnIsShown) {
    show(4, {0, 1, 2, 3});
    area.Select(1, 2);
    hide(2);
    hide(1);
    EXPECT_EQ(indexes(), (Range{3, 3}));
    hide(3);
    EXPECT_EQ(indexes(), (Range{0, 0}));
    hide(0);
    EXPECT_TRUE(area.WholeRows(geometry)) << "there are no cells any more";
}

TEST_F(CellAreaTest, IsAsItWasWhenAHiddenColumnComesBack) {
    show(4, {0, 1, 2, 3});
    area.Select(1, 3);
    hide(3);
    EXPECT_EQ(indexes(), (Range{1, 2}));
    columns.Item(3).Visible = true;
    layOut();
    EXPECT_EQ(indexes(), (Range{1, 3}));
}

TEST_F(CellAreaTest, WithoutColumnsThereIsNoRange) {
    show(0, {});
    EXPECT_EQ(indexes(), (Range{-1, -1}));
}

} // namespace
} // namespace norvel::grid
