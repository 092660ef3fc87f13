#include "tests/platform/grid/model/GeometryFixture.h"

#include <utility>

namespace norvel::grid {
namespace {

using adodb::RowCount;

class GeometryTest : public PlacesTest {
  protected:
    GeometryTest() : PlacesTest({100, 200, 300}) {}
    void show(RowCount rows) { geometry.Update(columns, sizes(), rows); }
};

TEST_F(GeometryTest, PlacesColumnsSideBySideBehindTheRecordSelectors) {
    show(5);
    EXPECT_EQ(geometry.Heading(0), (Rect{20, 0, 100, 25}));
    EXPECT_EQ(geometry.FilterCell(1), (Rect{120, 25, 200, 25}));
    EXPECT_EQ(geometry.Cell(2, 2), (Rect{320, 90, 300, 20}));
    EXPECT_EQ(geometry.ShownCount(), 3);
}

TEST_F(GeometryTest, AHiddenColumnTakesNoPlaceAndANewOrderMovesTheOthers) {
    columns.Item(1).Visible = false;
    columns.Item(2).Order = -1;
    show(5);
    EXPECT_TRUE(geometry.Heading(1).Empty());
    EXPECT_EQ(geometry.Heading(2).x, 20);
    EXPECT_EQ(geometry.Heading(0).x, 320);
    EXPECT_EQ(geometry.PlaceOf(1), -1);
    EXPECT_EQ(geometry.PlaceOf(99), -1);
}

// A layout may be written by anyone, for any column a width that alone is allowed.
TEST_F(GeometryTest, ColumnsOfAnyWidthsStandSideBySideAndTheLastOneIsReached) {
    columns = columnsOf(std::vector<int>(2000, 1'500'000'000));
    columns.Item(0).Width = 1500;
    show(1'000'000);
    EXPECT_EQ(geometry.Heading(0), (Rect{20, 0, 100, 25}));
    for (const int place : {1, 2, 1000, 1999})
        EXPECT_GT(geometry.ColumnWidth(place), 0) << place;
    EXPECT_TRUE(geometry.ShowPlace(1999));
    EXPECT_TRUE(geometry.Cell(0, 1999).x < 520 && geometry.Cell(0, 1999).x >= 20);
    EXPECT_EQ(hit(geometry.Cell(0, 1999).x, 60).column, 1999);
}

TEST_F(GeometryTest, RowsOfAnyHeightAndNumberAreReached) {
    Measures tall = sizes();
    tall.rowHeight = 1'000'000'000;
    geometry.Update(columns, tall, 1'000'000'000);
    EXPECT_TRUE(geometry.ShowRow(999'999'999));
    EXPECT_EQ(geometry.FirstRow(), 999'999'999);
    EXPECT_EQ(geometry.RowTop(999'999'999), 50);
}

TEST_F(GeometryTest, WidthsFollowTheScale) {
    Measures twice = sizes();
    twice.scale = 2.0;
    geometry.Update(columns, twice, 5);
    EXPECT_EQ(geometry.Heading(0).width, 200);
}

TEST_F(GeometryTest, TheLastRowOfTenMillionIsWhollyInViewAtTheEnd) {
    show(10'000'000);
    geometry.Vertical().SetPosition(geometry.Vertical().End());
    EXPECT_EQ(geometry.FirstRow(), 9'999'990);
    EXPECT_EQ(geometry.Cell(9'999'999, 0), (Rect{20, 230, 100, 20}));
}

TEST_F(GeometryTest, EveryRowOfTenMillionCanBeBroughtIntoView) {
    show(10'000'000);
    for (const RowCount row :
         {RowCount{0}, RowCount{1}, RowCount{5'000'001}, RowCount{9'999'998}}) {
        geometry.ShowRow(row);
        const Rect cell = geometry.Cell(row, 0);
        EXPECT_GE(cell.y, geometry.DataTop()) << row;
        EXPECT_LE(cell.y + cell.height, 250) << row;
    }
}

TEST_F(GeometryTest, ShowingARowScrollsOnlyAsFarAsNeededAndToARowsBorder) {
    show(100);
    EXPECT_FALSE(geometry.ShowRow(9));
    EXPECT_TRUE(geometry.ShowRow(10));
    EXPECT_EQ(geometry.Vertical().Position(), 20);
    EXPECT_FALSE(geometry.ShowRow(1));
    EXPECT_TRUE(geometry.ShowRow(0));
    EXPECT_EQ(geometry.Vertical().Position(), 0);
    EXPECT_FALSE(geometry.ShowRow(-1));
    EXPECT_FALSE(geometry.ShowRow(100));
}

TEST_F(GeometryTest, ARowHalfInViewAtTheTopIsBroughtInWhole) {
    show(100);
    geometry.Vertical().SetPosition(30);
    EXPECT_EQ(geometry.FirstRow(), 1);
    EXPECT_EQ(geometry.RowsInView(), 11);
    EXPECT_TRUE(geometry.ShowRow(1));
    EXPECT_EQ(geometry.Vertical().Position(), 20);
}

TEST_F(GeometryTest, ShowingAColumnScrollsItsLeftEdgeInFirst) {
    show(5);
    EXPECT_TRUE(geometry.ShowColumn(2));
    EXPECT_EQ(geometry.Horizontal().Position(), 100);
    EXPECT_TRUE(geometry.ShowColumn(0));
    EXPECT_EQ(geometry.Horizontal().Position(), 0);
    columns.Item(1).Width = 900 * 15.0;
    show(5);
    EXPECT_TRUE(geometry.ShowColumn(1));
    EXPECT_EQ(geometry.Horizontal().Position(), 100);
}

TEST_F(GeometryTest, OnlyTheColumnsInViewAreCounted) {
    columns.Clear();
    for (int i = 0; i < 1000; ++i)
        columns.Add(columnsOf({100}).Item(0));
    show(5);
    geometry.Horizontal().SetPosition(50'050);
    ASSERT_EQ(geometry.Panes().size(), 1U);
    EXPECT_EQ(geometry.Panes().front().first, 500);
    EXPECT_EQ(geometry.Panes().front().last, 506);
    geometry.Horizontal().SetPosition(0);
    EXPECT_EQ(geometry.Panes().front().last, 5);
}

TEST_F(GeometryTest, TellsWhatAPointHits) {
    show(5);
    EXPECT_EQ(hit(5, 5).spot, Spot::Corner);
    EXPECT_EQ(hit(60, 10).spot, Spot::Heading);
    EXPECT_EQ(hit(60, 10).column, 0);
    EXPECT_EQ(hit(130, 30).spot, Spot::FilterCell);
    EXPECT_EQ(hit(130, 30).column, 1);
    EXPECT_EQ(hit(5, 75).spot, Spot::RecordSelector);
    EXPECT_EQ(hit(5, 75).row, 1);
    EXPECT_EQ(hit(330, 149).spot, Spot::Cell);
    EXPECT_EQ(hit(330, 149).row, 4);
    EXPECT_EQ(hit(330, 149).column, 2);
    EXPECT_EQ(hit(330, 150).spot, Spot::Outside);
    EXPECT_EQ(hit(-1, 75).spot, Spot::Outside);
    EXPECT_EQ(hit(60, 250).spot, Spot::Outside);
}

TEST_F(GeometryTest, TheEdgeOfAHeadingBelongsToTheColumnAtItsLeft) {
    show(5);
    for (const int x : {117, 119, 120, 123}) {
        EXPECT_EQ(hit(x, 10).spot, Spot::HeadingEdge) << x;
        EXPECT_EQ(hit(x, 10).column, 0) << x;
    }
    EXPECT_EQ(hit(115, 10).spot, Spot::Heading);
    EXPECT_EQ(hit(124, 10).spot, Spot::Heading);
    EXPECT_EQ(hit(22, 10).spot, Spot::Heading) << "the first heading has no edge at its left";
}

TEST_F(GeometryTest, TheLastEdgeCanBeTakenFromTheEmptyPart) {
    columns = columnsOf({100, 100});
    show(5);
    EXPECT_EQ(hit(222, 10).spot, Spot::HeadingEdge);
    EXPECT_EQ(hit(222, 10).column, 1);
    EXPECT_EQ(hit(224, 10).spot, Spot::Outside);
    EXPECT_EQ(hit(300, 60).spot, Spot::RowBackground);
    EXPECT_EQ(hit(300, 60).row, 0);
}

TEST_F(GeometryTest, ANarrowColumnKeepsAPartThatIsNoEdge) {
    columns = columnsOf({6, 100});
    show(5);
    int heading = 0;
    for (int x = 20; x < 26; ++x)
        heading += hit(x, 10).spot == Spot::Heading;
    EXPECT_GT(heading, 0);
}

TEST_F(GeometryTest, AFilterButtonIsHitOnlyWhereTheColumnHasOne) {
    show(5);
    EXPECT_EQ(hit(110, 30).spot, Spot::FilterCell);
    columns.Item(0).FilterCombo = true;
    EXPECT_EQ(hit(110, 30).spot, Spot::FilterButton);
    EXPECT_EQ(hit(100, 30).spot, Spot::FilterCell);
}

TEST_F(GeometryTest, WithoutAFilterBarTheRowsFollowTheHeadings) {
    Measures m = sizes();
    m.filterHeight = 0;
    geometry.Update(columns, m, 5);
    EXPECT_EQ(hit(60, 26).spot, Spot::Cell);
    EXPECT_TRUE(geometry.FilterCell(0).Empty());
}

TEST_F(GeometryTest, AnAreaTooSmallForARowStaysUsable) {
    geometry.Update(columns, sizes(10, 40), 100);
    EXPECT_EQ(geometry.DataHeight(), 0);
    EXPECT_EQ(geometry.RowsInView(), 0);
    EXPECT_TRUE(geometry.ColumnsInView().empty());
    geometry.ShowRow(50);
    geometry.ShowColumn(2);
    EXPECT_EQ(hit(5, 39).spot, Spot::Corner);
}

TEST_F(GeometryTest, WithoutColumnsOrRowsNothingIsHit) {
    columns.Clear();
    show(0);
    EXPECT_EQ(hit(100, 10).spot, Spot::Outside);
    EXPECT_EQ(hit(100, 100).spot, Spot::Outside);
    EXPECT_TRUE(geometry.ColumnsInView().empty());
}

// An area of that size beside the selectors and below the filter bar, with bars of 15.
Measures sizesWithBars(int width, int height) {
    Measures m = sizes(20 + width, 50 + height);
    m.barWidth = m.barHeight = 15;
    return m;
}

TEST_F(GeometryTest, AScrollBarTakesItsRoomOnlyWhereItIsNeeded) {
    const auto with = [&](int width, int height) {
        geometry.Update(columns, sizesWithBars(width, height), 10); // 600 wide, 200 high
        return std::pair{geometry.Sizes().width == 20 + width - 15,
                         geometry.Sizes().height == 50 + height - 15};
    };
    EXPECT_EQ(with(600, 200), (std::pair{false, false}));
    EXPECT_EQ(with(599, 300), (std::pair{false, true}));
    EXPECT_EQ(with(700, 199), (std::pair{true, false}));
    EXPECT_EQ(with(599, 200), (std::pair{true, true})) << "one makes the other needed";
    EXPECT_EQ(with(600, 199), (std::pair{true, true}));
    geometry.Update(columns, sizesWithBars(-10, -50), 10);
    EXPECT_EQ(geometry.Sizes().width, 0) << "there is less than the bar takes";
    EXPECT_EQ(geometry.Sizes().height, 0);
}

TEST_F(GeometryTest, ALayoutLeavesAViewThatStandsAtItsEnd) {
    geometry.Update(columns, sizesWithBars(500, 200), 100);
    geometry.Vertical().SetPosition(geometry.Vertical().End());
    geometry.Horizontal().SetPosition(geometry.Horizontal().End());
    const Pixels row = geometry.Vertical().Position();
    const Pixels column = geometry.Horizontal().Position();
    geometry.Update(columns, sizesWithBars(500, 200), 100);
    EXPECT_EQ(geometry.Vertical().Position(), row);
    EXPECT_EQ(geometry.Horizontal().Position(), column);
}

TEST_F(GeometryTest, AnotherRowHeightKeepsTheFirstRow) {
    show(1000);
    geometry.Vertical().SetPosition(300 * 20);
    Measures taller = sizes();
    taller.rowHeight = 40;
    geometry.Update(columns, taller, 1000);
    EXPECT_EQ(geometry.FirstRow(), 300);
}

} // namespace
} // namespace norvel::grid
