// Tips: the whole of a text that is cut.
#include "platform/controls/WxText.h"
#include "tests/platform/grid/window/GridFixture.h"

namespace norvel::tests {
namespace {

class TipTest : public GridTest {
  protected:
    void openNarrow() {
        openCustomers(1000);
        grid_->Columns().Item(1).Width = 800;
        grid_->Changed();
    }
    std::string tipAt(wxPoint at) {
        robot_.moveTo(*grid_, at);
        return tip();
    }
    std::string tip() const { return grid_->GetToolTipText().utf8_string(); }
};

TEST_F(TipTest, ACellThatIsCutSaysItsWholeText) {
    openNarrow();
    EXPECT_EQ(tipAt(cellCentre(3, 1)), grid_->CellText(3, 1));
    EXPECT_EQ(tipAt(cellCentre(4, 1)), grid_->CellText(4, 1));
    EXPECT_EQ(tipAt(cellCentre(4, 3)), "") << "that one is seen whole";
    EXPECT_EQ(tipAt(centre(grid_->HeadingRect(1))), grid_->Columns().Item(1).Caption);
    EXPECT_EQ(tipAt(centre(grid_->HeadingRect(2))), "");
}

TEST_F(TipTest, ATextIsCutOnlyWhereItHasNoRoom) {
    openNarrow();
    grid_->FitColumn(1);
    for (int row = 0; row < 5; ++row)
        EXPECT_EQ(tipAt(cellCentre(row, 1)), "") << row;
}

TEST_F(TipTest, ACellThatIsScrolledPartlyOutOfViewIsCut) {
    openCustomers(1000);
    for (int i = 0; i < grid_->Columns().Count(); ++i)
        grid_->Columns().Item(i).Width = 3000;
    grid_->Columns().Item(0).Align = grid::Alignment::Left;
    grid_->SplitAt(0).FrozenColumns = 1;
    grid_->Changed();
    EXPECT_EQ(tipAt(cellCentre(0, 1)), "");
    robot_.wheel(*grid_, cellCentre(0, 1), 2, wxMOD_SHIFT);
    const wxRect cell = grid_->CellRect(0, 1);
    ASSERT_GT(cell.width, 4);
    ASSERT_LT(cell.width, 190);
    EXPECT_EQ(tipAt(centre(cell)), grid_->CellText(0, 1));
}

TEST_F(TipTest, ScrollingAKeyOrAClickHidesTheTip) {
    openNarrow();
    EXPECT_NE(tipAt(cellCentre(3, 1)), "");
    grid_->SetFirstRow(200);
    EXPECT_EQ(tip(), "");
    robot_.pump();
    grid_->Update(); // a busy system paints late, and what is cut is known from there
    EXPECT_NE(tipAt(cellCentre(4, 1)), "");
    robot_.press(WXK_RIGHT);
    EXPECT_EQ(tip(), "");
    EXPECT_NE(tipAt(cellCentre(5, 1)), "") << "the next move of the mouse brings it back";
    robot_.click(*grid_, cellCentre(5, 1));
    EXPECT_EQ(tip(), "");
}

TEST_F(TipTest, AMarkedFilterCellSaysWhyBeforeItsText) {
    openNarrow();
    grid_->SetFilterText(1, "una ragione sociale molto lunga");
    EXPECT_EQ(tipAt(centre(grid_->FilterCellRect(1))), "una ragione sociale molto lunga");
    grid_->SetFilterError(1, "Valore non valido");
    EXPECT_EQ(tipAt(centre(grid_->FilterCellRect(1)) + wxPoint(3, 0)), "Valore non valido");
    grid_->SetFilterError(1, "");
    grid_->SetFilterText(1, "una");
    EXPECT_EQ(tipAt(centre(grid_->FilterCellRect(1))), "");
}

} // namespace
} // namespace norvel::tests
