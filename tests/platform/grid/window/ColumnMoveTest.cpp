// Columns that the operator moves: by dragging a heading, by keys.
#include "tests/platform/grid/window/GridFixture.h"

namespace norvel::tests {
namespace {

class ColumnMoveTest : public GridTest {
  protected:
    void openMovable() {
        openCustomers(1000);
        grid_->SplitAt(0).AllowColMove = true;
        grid_->Changed();
        grid_->OnHeadClick = [this](int column) { headClicks_.push_back(column); };
        grid_->OnColumnMoved = [this](int column) { moved_.push_back(column); };
    }
    wxPoint heading(int column) const { return centre(grid_->HeadingRect(column)); }
    // A point of a heading nearer to its right edge than to its left one.
    wxPoint rightHalf(int column) const {
        const wxRect r = grid_->HeadingRect(column);
        return {r.x + r.width * 3 / 4, r.y + r.height / 2};
    }
    std::vector<int> shown(int count) const {
        std::vector<int> all = grid_->Columns().Shown();
        all.resize(std::size_t(count));
        return all;
    }
    std::vector<int> headClicks_, moved_;
};

TEST_F(ColumnMoveTest, ADraggedHeadingMovesItsColumnAndKeepsItsIndex) {
    openMovable();
    const std::string first = grid_->Columns().Item(0).DataField;
    robot_.buttonDown(*grid_, heading(0));
    robot_.moveTo(*grid_, heading(1));
    robot_.moveTo(*grid_, rightHalf(2));
    screenshot(*frame_, "grid_column_drag");
    robot_.buttonUp();
    EXPECT_EQ(shown(4), (std::vector{1, 2, 0, 3}));
    EXPECT_EQ(grid_->Columns().Item(0).DataField, first);
    EXPECT_EQ(moved_, (std::vector{0}));
    EXPECT_TRUE(headClicks_.empty());
    EXPECT_GT(grid_->HeadingRect(0).x, grid_->HeadingRect(2).x);
}

TEST_F(ColumnMoveTest, APressWithoutADragStillClicks) {
    openMovable();
    robot_.buttonDown(*grid_, heading(1));
    robot_.moveTo(*grid_, heading(1) + wxPoint(1, 1));
    robot_.buttonUp();
    EXPECT_EQ(headClicks_, (std::vector{1}));
    EXPECT_TRUE(moved_.empty());
}

TEST_F(ColumnMoveTest, ADragBackToItsOwnPlaceNeitherMovesNorClicks) {
    openMovable();
    robot_.buttonDown(*grid_, heading(1));
    robot_.moveTo(*grid_, rightHalf(2));
    robot_.moveTo(*grid_, heading(1));
    robot_.buttonUp();
    EXPECT_TRUE(moved_.empty());
    EXPECT_TRUE(headClicks_.empty());
}

TEST_F(ColumnMoveTest, EscapeLeavesTheColumnWhereItWas) {
    openMovable();
    robot_.buttonDown(*grid_, heading(0));
    robot_.moveTo(*grid_, rightHalf(2));
    robot_.press(WXK_ESCAPE);
    robot_.buttonUp();
    EXPECT_EQ(shown(3), (std::vector{0, 1, 2}));
    EXPECT_TRUE(moved_.empty());
    EXPECT_TRUE(headClicks_.empty());
    robot_.click(*grid_, heading(1));
    EXPECT_EQ(headClicks_, (std::vector{1})) << "the grid is as usual afterwards";
}

TEST_F(ColumnMoveTest, AHeadingDroppedAmongTheRowsStaysWhereItWas) {
    openMovable();
    robot_.buttonDown(*grid_, heading(0));
    robot_.moveTo(*grid_, cellCentre(8, 2));
    robot_.buttonUp();
    EXPECT_TRUE(moved_.empty());
    EXPECT_EQ(shown(3), (std::vector{0, 1, 2}));
}

TEST_F(ColumnMoveTest, DraggingToTheEdgeScrollsOn) {
    openMovable();
    for (int i = 0; i < grid_->Columns().Count(); ++i)
        grid_->Columns().Item(i).Width = 4500;
    grid_->Changed();
    const int last = grid_->Columns().Count() - 1;
    const int right = grid_->GetClientSize().x - 3;
    ASSERT_TRUE(grid_->HeadingRect(last).IsEmpty());
    robot_.buttonDown(*grid_, {60, heading(0).y});
    robot_.moveTo(*grid_, {right - 100, heading(0).y});
    robot_.moveTo(*grid_, {right, heading(0).y});
    EXPECT_TRUE(robot_.waitUntil([&] { return grid_->HeadingRect(last).width > 100; }, 20'000));
    robot_.buttonUp();
    EXPECT_EQ(moved_, (std::vector{0}));
    EXPECT_NE(grid_->Columns().Shown().front(), 0);
}

TEST_F(ColumnMoveTest, DraggingTowardsFrozenColumnsScrollsBackToTheHiddenOnes) {
    openMovable();
    for (int i = 0; i < grid_->Columns().Count(); ++i)
        grid_->Columns().Item(i).Width = 2400;
    grid_->SplitAt(0).FrozenColumns = 1;
    grid_->Changed();
    grid_->SetCurrentColumn(8);
    robot_.pump();
    ASSERT_TRUE(grid_->HeadingRect(1).IsEmpty());
    const wxPoint border(grid_->HeadingRect(0).GetRight() + 5, heading(0).y);
    robot_.buttonDown(*grid_, heading(8));
    robot_.moveTo(*grid_, heading(7));
    robot_.moveTo(*grid_, border);
    EXPECT_TRUE(robot_.waitUntil(
        [&] { return grid_->HeadingRect(1).width == grid_->HeadingRect(0).width; }));
    robot_.moveTo(*grid_, border); // what was scrolled away is here now
    const wxImage picture = imageOf(*grid_, {border.x - 4, border.y + 4, 3, 6});
    screenshot(*frame_, "grid_column_drag_frozen");
    robot_.buttonUp();
    EXPECT_EQ(shown(3), (std::vector{0, 8, 1}));
    EXPECT_EQ(moved_, (std::vector{8}));
    const wxImage heading = imageOf(*grid_, {border.x - 4, border.y + 4, 3, 6});
    EXPECT_LT(brightnessOf(picture), brightnessOf(heading) - 5) << "the picture is at the pointer";
}

TEST_F(ColumnMoveTest, WithoutLeaveADragIsAClickOrNothing) {
    openMovable();
    grid_->SplitAt(0).AllowColMove = false;
    robot_.drag(*grid_, heading(0), rightHalf(2));
    EXPECT_TRUE(moved_.empty());
    robot_.focus(*grid_);
    robot_.press(WXK_RIGHT, wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_TRUE(moved_.empty());
    EXPECT_EQ(shown(3), (std::vector{0, 1, 2}));
}

TEST_F(ColumnMoveTest, FreeColumnsAreMovedAndSizedWhateverTheSplitAllows) {
    openMovable();
    grid_->SplitAt(0).AllowColMove = false;
    grid_->SplitAt(0).AllowSizing = false;
    grid_->SetColumnsFree(true);
    robot_.drag(*grid_, heading(0), rightHalf(2));
    EXPECT_EQ(shown(3), (std::vector{1, 2, 0}));
    const wxRect before = grid_->HeadingRect(1);
    robot_.drag(*grid_, {before.GetRight(), before.height / 2},
                {before.GetRight() + 40, before.height / 2});
    EXPECT_EQ(grid_->HeadingRect(1).width, before.width + 40);
    EXPECT_FALSE(grid_->SplitAt(0).AllowColMove) << "the layout itself is not changed";
    EXPECT_FALSE(grid_->SplitAt(0).AllowSizing);
    grid_->SetColumnsFree(false);
    robot_.drag(*grid_, heading(1), rightHalf(0));
    EXPECT_EQ(shown(3), (std::vector{1, 2, 0}));
}

TEST_F(ColumnMoveTest, ALayoutGoesFromOneGridToAnotherWithoutAFile) {
    openMovable();
    const grid::Layout before = grid_->Layouts().Present();
    robot_.drag(*grid_, heading(0), rightHalf(2));
    const grid::Layout moved = grid_->Layouts().Present();
    EXPECT_NE(moved, before);
    grid_->Layouts().Apply(before);
    EXPECT_EQ(shown(3), (std::vector{0, 1, 2}));
    grid_->Layouts().Apply(moved);
    EXPECT_EQ(shown(3), (std::vector{1, 2, 0}));
}

TEST_F(ColumnMoveTest, TheKeyboardMovesTheCurrentColumn) {
    openMovable();
    robot_.click(*grid_, cellCentre(2, 1));
    robot_.press(WXK_RIGHT, wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(shown(3), (std::vector{0, 2, 1}));
    EXPECT_EQ(grid_->CurrentColumn(), 1);
    robot_.pressTimes(3, WXK_LEFT, wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(shown(3), (std::vector{1, 0, 2}));
    EXPECT_EQ(moved_, (std::vector{1, 1, 1})) << "at the edge nothing moves";
}

TEST_F(ColumnMoveTest, EscapeTakesAWidthBackWhileItIsBeingDragged) {
    openMovable();
    const wxRect before = grid_->HeadingRect(1);
    robot_.buttonDown(*grid_, {before.GetRight(), before.height / 2});
    robot_.moveTo(*grid_, {before.GetRight() + 40, before.height / 2});
    EXPECT_GT(grid_->HeadingRect(1).width, before.width);
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(grid_->HeadingRect(1), before);
    robot_.buttonUp();
    EXPECT_EQ(grid_->HeadingRect(1), before);
}

TEST_F(ColumnMoveTest, ColumnsThatChangeMeanwhileEndTheDrag) {
    openMovable();
    robot_.buttonDown(*grid_, heading(2));
    robot_.moveTo(*grid_, heading(1));
    grid_->Columns().Item(2).Visible = false;
    grid_->Changed();
    robot_.moveTo(*grid_, heading(0));
    robot_.buttonUp();
    EXPECT_TRUE(moved_.empty());
    EXPECT_TRUE(headClicks_.empty());
}

} // namespace
} // namespace norvel::tests
