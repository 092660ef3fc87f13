// Selected areas: rows, whole or the cells of some columns.
#include "tests/platform/grid/window/GridFixture.h"

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

} // namespace
} // namespace norvel::tests
