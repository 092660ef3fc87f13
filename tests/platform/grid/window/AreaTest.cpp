// Selected areas: rows, whole or the cells of some columns.
#include "tests/platform/grid/window/GridFixture.h"
#include "tests/support/Clipboard.h"

namespace norvel::tests {
namespace {

class AreaTest : public GridTest {
  protected:
    std::pair<int, int> columns() { return {grid_->SelStartCol(), grid_->SelEndCol()}; }
};

TEST_F(AreaTest, SelectedRowsAreAnAreaOverAllColumnsHiddenOnesIncluded) {
    openCustomers(100);
    EXPECT_FALSE(grid_->HasSelectedArea());
    EXPECT_EQ(columns(), std::pair(-1, -1));
    grid_->Columns().Item(0).Visible = false;
    grid_->Changed();
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(3)));
    EXPECT_TRUE(grid_->HasSelectedArea());
    EXPECT_EQ(columns(), std::pair(0, 8));
    robot_.press(WXK_ESCAPE);
    EXPECT_FALSE(grid_->HasSelectedArea());
}

TEST_F(AreaTest, DraggingOverCellsSelectsThemAndTheirRows) {
    openCustomers(100);
    robot_.drag(*grid_, cellCentre(2, 3), cellCentre(5, 1));
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5, 6}));
    EXPECT_EQ(columns(), std::pair(1, 3));
    EXPECT_EQ(rows_->AbsolutePosition(), 6);
    EXPECT_EQ(grid_->CurrentColumn(), 1);
    screenshot(*frame_, "grid_area");
    robot_.drag(*grid_, cellCentre(8, 2), cellCentre(9, 2));
    EXPECT_EQ(selectedCodes(), (std::vector{9, 10}));
    EXPECT_EQ(columns(), std::pair(2, 2)) << "a drag selects cells, be it of one column";
    robot_.click(*grid_, cellCentre(4, 2));
    EXPECT_FALSE(grid_->HasSelectedArea());
}

TEST_F(AreaTest, ShiftSidewaysSelectsCellsAndShiftDownFollows) {
    openCustomers(100);
    robot_.click(*grid_, cellCentre(2, 1));
    robot_.press(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(0, 8)) << "up and down alone choose rows";
    robot_.press(WXK_RIGHT, wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(1, 2));
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4}));
    robot_.press(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(1, 2));
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5}));
    robot_.press(WXK_HOME, wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(0, 1));
    robot_.press(WXK_RIGHT);
    EXPECT_FALSE(grid_->HasSelectedArea());
    robot_.press(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(0, 8)) << "the next selection begins with whole rows";
    robot_.press(WXK_RIGHT);
    EXPECT_TRUE(grid_->HasSelectedArea()) << "chosen rows stay when the operator looks sideways";
}

TEST_F(AreaTest, ShiftClickReachesToTheCellAndTheRecordSelectorTakesWholeRows) {
    openCustomers(100);
    robot_.click(*grid_, cellCentre(2, 1));
    robot_.click(*grid_, cellCentre(4, 1), wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(0, 8));
    robot_.click(*grid_, cellCentre(3, 3), wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(1, 3));
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4}));
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(5)), wxMOD_SHIFT);
    EXPECT_EQ(columns(), std::pair(0, 8));
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 5, 6}));
}

TEST_F(AreaTest, AddingARowToCellsMakesAllOfThemWholeRows) {
    openCustomers(100);
    robot_.drag(*grid_, cellCentre(2, 1), cellCentre(3, 2));
    robot_.click(*grid_, cellCentre(6, 1), wxMOD_CONTROL);
    EXPECT_EQ(selectedCodes(), (std::vector{3, 4, 7}));
    EXPECT_EQ(columns(), std::pair(0, 8));
}

TEST_F(AreaTest, OfMovedColumnsTheIndexesAreTheLeastAndTheGreatest) {
    openCustomers(100);
    grid_->Columns().Item(5).Order = -1; // shown first
    grid_->Changed();
    robot_.drag(*grid_, cellCentre(2, 5), cellCentre(3, 1));
    EXPECT_EQ(columns(), std::pair(0, 5));
}

TEST_F(AreaTest, DraggingBesideAndBelowTheCellsScrollsOn) {
    openCustomers(1000);
    const wxSize size = grid_->GetClientSize();
    robot_.buttonDown(*grid_, cellCentre(2, 1));
    robot_.moveTo(*grid_, {size.x - 40, size.y - 40});
    robot_.moveTo(*grid_, {size.x + 25, size.y + 25});
    EXPECT_TRUE(robot_.waitUntil([&] { return grid_->FirstRow() > 5 && grid_->LeftColumn() > 0; }));
    robot_.buttonUp();
    EXPECT_EQ(columns(), std::pair(1, 8));
    EXPECT_EQ(selectedCodes().front(), 3);
}

// --- copying ---

TEST_F(AreaTest, ControlCCopiesTheSelectedCellsAsTheyAreShown) {
    openCustomers(100);
    grid_->Columns().Item(3).Order = -1;
    grid_->Changed();
    robot_.drag(*grid_, cellCentre(1, 3), cellCentre(2, 1));
    robot_.press('C', wxMOD_CONTROL);
    const auto cell = [&](int row, int column) { return grid_->CellText(row, column); };
    EXPECT_EQ(clipboardText(), cell(1, 3) + "\t" + cell(1, 0) + "\t" + cell(1, 1) + "\r\n" +
                                   cell(2, 3) + "\t" + cell(2, 0) + "\t" + cell(2, 1));
}

TEST_F(AreaTest, ControlCCopiesRowsFromTheTopAndNoHiddenColumn) {
    openCustomers(100);
    for (int column = 2; column < 9; ++column)
        grid_->Columns().Item(column).Visible = false;
    grid_->Changed();
    robot_.click(*grid_, cellCentre(4, 0), wxMOD_CONTROL);
    robot_.click(*grid_, cellCentre(1, 0), wxMOD_CONTROL);
    robot_.press('C', wxMOD_CONTROL);
    EXPECT_EQ(clipboardText(), "2\t" + grid_->CellText(1, 1) + "\r\n5\t" + grid_->CellText(4, 1));
}

TEST_F(AreaTest, ControlCCopiesTheCurrentCellWhereNothingIsSelectedAndNothingOfAnEmptyResult) {
    openCustomers(100);
    robot_.click(*grid_, cellCentre(3, 0));
    robot_.press(WXK_INSERT, wxMOD_CONTROL);
    EXPECT_EQ(clipboardText(), "4");
    source_.SetRecordset(GeneratedRecordset::make(customerColumns(), 0));
    robot_.press('C', wxMOD_CONTROL);
    EXPECT_EQ(clipboardText(), "4") << "what was copied before stays";
}

} // namespace
} // namespace norvel::tests
