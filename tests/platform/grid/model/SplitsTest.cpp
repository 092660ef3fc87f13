// Frozen columns and splits: where they stand and what a point hits there.
#include "tests/platform/grid/model/GeometryFixture.h"

namespace norvel::grid {
namespace {

// Six columns of 100 pixels, 100 rows.
class SplitsTest : public PlacesTest {
  protected:
    SplitsTest() : PlacesTest(std::vector<int>(6, 100)) {}
    void show(int width = 420) { geometry.Update(columns, sizes(width), 100, splits); }
    int columnAt(int x) const { return hit(x, 100).column; }
    std::vector<Split> splits = std::vector<Split>(1);
};

TEST_F(SplitsTest, FrozenColumnsStayWhereTheOthersScroll) {
    splits[0].FrozenColumns = 2;
    show();
    geometry.Horizontal().SetPosition(150);
    EXPECT_EQ(geometry.Heading(0), (Rect{20, 0, 100, 25}));
    EXPECT_EQ(geometry.FilterCell(1), (Rect{120, 25, 100, 25}));
    EXPECT_EQ(geometry.Cell(0, 3).x, 170) << "half of it is under the frozen ones";
    EXPECT_EQ(columnAt(219), 1);
    EXPECT_EQ(columnAt(220), 3);
    EXPECT_EQ(columnAt(270), 4);
    EXPECT_EQ(geometry.PaneOf(3), (Rect{220, 0, 200, 250}));
    EXPECT_EQ(geometry.PaneOf(1), (Rect{20, 0, 200, 250}));
}

TEST_F(SplitsTest, TheLastColumnCanBeReachedBesideFrozenOnes) {
    splits[0].FrozenColumns = 2;
    show();
    EXPECT_EQ(geometry.Horizontal().End(), 200);
    EXPECT_TRUE(geometry.ShowColumn(5));
    EXPECT_EQ(geometry.Cell(0, 5).x, 320);
    EXPECT_FALSE(geometry.ShowColumn(0)) << "it is always in view";
    EXPECT_TRUE(geometry.ShowColumn(2));
    EXPECT_EQ(geometry.Cell(0, 2).x, 220);
}

TEST_F(SplitsTest, EachPaneTellsWhatOfItIsInView) {
    splits[0].FrozenColumns = 1;
    show();
    geometry.Horizontal().SetPosition(150);
    const auto panes = geometry.Panes();
    ASSERT_EQ(panes.size(), 2U);
    EXPECT_TRUE(panes[0].frozen);
    EXPECT_EQ(panes[0].first, 0);
    EXPECT_EQ(panes[0].last, 1);
    EXPECT_EQ(panes[0].end, 120);
    EXPECT_EQ(panes[1].left, 120);
    EXPECT_EQ(panes[1].first, 2);
    EXPECT_EQ(panes[1].last, 6);
    EXPECT_EQ(panes[1].end, 420);
    EXPECT_EQ(geometry.ColumnsInView(), (std::vector{0, 2, 3, 4, 5}));
}

TEST_F(SplitsTest, FrozenColumnsNeverTakeTheWholeWidth) {
    splits[0].FrozenColumns = 6;
    show();
    EXPECT_EQ(geometry.FrozenCount(), 3);
    EXPECT_TRUE(geometry.ShowColumn(5));
    EXPECT_EQ(geometry.Cell(0, 5).x, 320);
    splits[0].FrozenColumns = 99;
    show(2000);
    EXPECT_EQ(geometry.FrozenCount(), 6);
    splits[0].FrozenColumns = -1;
    show(2000);
    EXPECT_EQ(geometry.FrozenCount(), 0);
    splits[0].FrozenColumns = 2;
    show(60);
    EXPECT_EQ(geometry.FrozenCount(), 0) << "too narrow for any";
}

TEST_F(SplitsTest, TheBorderOfTheFrozenColumnsSizesTheLastOfThem) {
    splits[0].FrozenColumns = 1;
    show();
    geometry.Horizontal().SetPosition(130);
    for (const int x : {117, 119, 120, 123}) {
        EXPECT_EQ(hit(x, 10).spot, Spot::HeadingEdge) << x;
        EXPECT_EQ(hit(x, 10).column, 0) << x;
    }
    EXPECT_EQ(hit(124, 10).spot, Spot::Heading);
    EXPECT_EQ(hit(124, 10).column, 2);
}

TEST_F(SplitsTest, WithoutSizingABorderBelongsToTheHeadingUnderIt) {
    splits[0].AllowSizing = false;
    show();
    EXPECT_EQ(hit(119, 10).spot, Spot::Heading);
    EXPECT_EQ(hit(119, 10).column, 0);
    EXPECT_EQ(hit(121, 10).spot, Spot::Heading);
    EXPECT_EQ(hit(121, 10).column, 1);
    for (int i = 1; i < columns.Count(); ++i)
        columns.Item(i).Visible = false;
    show();
    EXPECT_EQ(hit(121, 10).spot, Spot::Outside) << "behind the last heading";
}

TEST_F(SplitsTest, AHeadingLandsBehindTheFrozenColumnsThoughOthersAreScrolledAway) {
    splits[0].FrozenColumns = 1;
    show();
    geometry.Horizontal().SetPosition(200); // in view: 0, then 3, 4, 5
    EXPECT_EQ(geometry.DropAt(60, 10), (ColumnDrop{Spot::Heading, 0}));
    const ColumnDrop behind = geometry.DropAt(100, 10);
    EXPECT_EQ(behind, (ColumnDrop{Spot::Heading, 3})) << "in front of the next one in view";
    const ColumnDrop next = geometry.DropAt(180, 10);
    EXPECT_EQ(next, (ColumnDrop{Spot::Heading, 4}));
    EXPECT_EQ(geometry.BorderAt(next), 220);
    EXPECT_EQ(geometry.BorderAt({Spot::Heading, 1}), 120) << "behind the frozen one";
}

TEST_F(SplitsTest, WhereRowsCanBeSizedTheEdgesOfTheirSelectorsDo) {
    splits[0].AllowRowSizing = true;
    show();
    for (const int y : {67, 69, 70, 72}) { // the first row ends at 70
        EXPECT_EQ(hit(5, y).spot, Spot::RowEdge) << y;
        EXPECT_EQ(hit(5, y).row, 0) << y;
    }
    for (const int y : {66, 73})
        EXPECT_EQ(hit(5, y).spot, Spot::RecordSelector) << "most of it selects: " << y;
    EXPECT_EQ(hit(5, 52).spot, Spot::RecordSelector) << "nothing above the first row";
    EXPECT_EQ(hit(5, 65).spot, Spot::RecordSelector);
    EXPECT_EQ(hit(5, 74).row, 1);
    EXPECT_EQ(hit(25, 70).spot, Spot::Cell) << "only at the selectors";
    splits[0].AllowRowSizing = false;
    show();
    EXPECT_EQ(hit(5, 69).spot, Spot::RecordSelector);
}

TEST_F(SplitsTest, TheLastRowsEdgeCanBeTakenFromBelow) {
    splits[0].AllowRowSizing = true;
    show();
    geometry.Vertical().SetPosition(geometry.Vertical().End());
    EXPECT_EQ(hit(5, 249).spot, Spot::RowEdge);
    EXPECT_EQ(hit(5, 249).row, 99);
    EXPECT_EQ(hit(5, 52).spot, Spot::RecordSelector) << "the row above is out of view";
    geometry.Update(columns, geometry.Sizes(), 2, splits);
    EXPECT_EQ(hit(5, 92).row, 1);
    EXPECT_EQ(hit(5, 92).spot, Spot::RowEdge);
    EXPECT_EQ(hit(5, 95).spot, Spot::Outside);
}

TEST_F(SplitsTest, SelectingCellsReachesBeyondThePane) {
    splits[0].FrozenColumns = 1;
    show(); // 0 | 1, 2, 3
    EXPECT_EQ(geometry.PlaceReached(60), 0);
    EXPECT_EQ(geometry.PlaceReached(900), 4) << "the next one";
    EXPECT_EQ(geometry.PlaceReached(5), 0);
    geometry.Horizontal().SetPosition(200); // 0 | 3, 4, 5
    EXPECT_EQ(geometry.PlaceReached(5), 2);
    EXPECT_EQ(geometry.PlaceReached(900), 5);
    for (int i = 1; i < 6; ++i)
        columns.Item(i).Visible = false;
    show();
    EXPECT_EQ(geometry.PlaceReached(300), 0) << "the empty part belongs to the last one";
}

TEST_F(SplitsTest, SplitsShareTheWidthAndEachScrollsByItself) {
    splits.resize(2);
    show(424);
    EXPECT_EQ(geometry.SplitArea(0), (Rect{20, 0, 200, 250}));
    EXPECT_EQ(geometry.SplitArea(1), (Rect{224, 0, 200, 250}));
    geometry.Horizontal(1).SetPosition(300);
    EXPECT_EQ(columnAt(30), 0);
    EXPECT_EQ(columnAt(230), 3);
    EXPECT_EQ(hit(230, 100).split, 1);
    EXPECT_EQ(hit(230, 100).row, hit(30, 100).row);
    EXPECT_EQ(hit(222, 100).spot, Spot::RowBackground) << "the line between them";
    EXPECT_EQ(geometry.PlaceOf(3, 1), 9);
    EXPECT_EQ(geometry.ColumnAt(9), 3);
    EXPECT_EQ(geometry.CellAt(0, 9).x, 224);
    EXPECT_EQ(geometry.Cell(0, 3).x, 320) << "split 0's, out of its pane";
    EXPECT_TRUE(geometry.ShowPlace(geometry.PlaceOf(0, 1)));
    EXPECT_EQ(geometry.Horizontal(1).Position(), 0);
    EXPECT_EQ(geometry.Horizontal(0).Position(), 0);
}

TEST_F(SplitsTest, OnlyTheFirstSplitHasFilterCells) {
    splits.resize(2);
    show(424);
    EXPECT_EQ(hit(30, 30).spot, Spot::FilterCell);
    EXPECT_EQ(hit(230, 30).spot, Spot::Outside);
    EXPECT_EQ(hit(240, 10).spot, Spot::Heading);
}

TEST_F(SplitsTest, EachSplitFreezesAndSizesByItsOwnSettings) {
    splits.resize(2);
    splits[1].FrozenColumns = 1;
    splits[0].AllowSizing = false;
    show(424);
    geometry.Horizontal(1).SetPosition(500);
    EXPECT_EQ(geometry.FrozenCount(0), 0);
    EXPECT_EQ(columnAt(230), 0);
    EXPECT_EQ(columnAt(330), 5);
    EXPECT_EQ(hit(119, 10).spot, Spot::Heading);
    EXPECT_EQ(hit(323, 10).spot, Spot::HeadingEdge);
    EXPECT_EQ(hit(323, 10).column, 0);
    EXPECT_EQ(geometry.DropAt(400, 10), (ColumnDrop{Spot::Heading, 6, 1}));
}

TEST_F(SplitsTest, ASplitThatGoesTakesItsScrollPositionAlong) {
    splits.resize(3);
    show(628);
    geometry.Horizontal(0).SetPosition(10);
    geometry.Horizontal(1).SetPosition(20);
    geometry.Horizontal(2).SetPosition(30);
    splits.erase(splits.begin() + 1);
    geometry.RemoveSplit(1);
    show(628);
    EXPECT_EQ(geometry.SplitCount(), 2);
    EXPECT_EQ(geometry.Horizontal(0).Position(), 10);
    EXPECT_EQ(geometry.Horizontal(1).Position(), 30);
}

TEST_F(SplitsTest, NoColumnsAndNoRoomAreHarmless) {
    splits.resize(3);
    show(10);
    EXPECT_EQ(hit(5, 100).spot, Spot::RecordSelector);
    EXPECT_TRUE(geometry.Panes().empty());
    columns.Clear();
    show();
    EXPECT_EQ(geometry.DropAt(100, 10), ColumnDrop{});
    EXPECT_EQ(hit(100, 10).spot, Spot::Outside);
    EXPECT_TRUE(geometry.Heading(0).Empty());
    EXPECT_TRUE(geometry.ColumnsInView().empty());
    EXPECT_FALSE(geometry.ScrollsSideways());
}

} // namespace
} // namespace norvel::grid
