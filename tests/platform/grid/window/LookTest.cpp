// What the grid shows and where it stands.
#include "tests/platform/grid/window/GridFixture.h"

namespace norvel::tests {
namespace {

using namespace adodb;

TEST_F(GridTest, ShowsOneColumnPerFieldWithTheFieldsNameAsCaption) {
    openCustomers(1000);
    ASSERT_EQ(grid_->Columns().Count(), 9);
    EXPECT_EQ(grid_->Columns().Item(1).Caption, "ragione_sociale");
    EXPECT_FALSE(grid_->Columns().Item(1).FilterCombo);
    EXPECT_EQ(grid_->CellText(0, 0), "1");
    screenshot(*frame_, "grid_customers");
}

} // namespace
} // namespace norvel::tests
