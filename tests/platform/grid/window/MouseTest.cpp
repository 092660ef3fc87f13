// The mouse: clicks, selection, sizing, scrolling.
#include "tests/platform/grid/window/GridFixture.h"

namespace norvel::tests {
namespace {

using adodb::RowCount;

TEST_F(GridTest, AClickMovesTheRecordsetAndSelectsNothing) {
    openCustomers(1000);
    int rowChanges = 0;
    int clicks = 0;
    grid_->OnRowChange = [&] { ++rowChanges; };
    grid_->OnClick = [&] { ++clicks; };
    robot_.click(*grid_, cellCentre(4, 2));
    EXPECT_EQ(rows_->AbsolutePosition(), 5);
    EXPECT_EQ(grid_->CurrentRow(), 4);
    EXPECT_EQ(grid_->CurrentColumn(), 2);
    EXPECT_EQ(grid_->Bookmark().toDouble(), 5);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
    EXPECT_EQ(rowChanges, 1);
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(grid_->HasFocus());
}

TEST_F(GridTest, ControlClickSelectsRowsInTheOrderOfTheClicksAndTakesThemOut) {
    openCustomers(1000);
    for (const int row : {6, 2, 9})
        robot_.click(*grid_, cellCentre(row, 1), wxMOD_CONTROL);
    EXPECT_EQ(selectedCodes(), (std::vector{7, 3, 10}));
    robot_.click(*grid_, cellCentre(2, 3), wxMOD_CONTROL);
    EXPECT_EQ(selectedCodes(), (std::vector{7, 10}));
    EXPECT_EQ(rows_->AbsolutePosition(), 3) << "the clicked row is current all the same";
    screenshot(*frame_, "grid_selection");
    robot_.click(*grid_, cellCentre(12, 1));
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
}

TEST_F(GridTest, ShiftClickSelectsFromTheRowClickedBefore) {
    openCustomers(1000);
    robot_.click(*grid_, cellCentre(7, 1));
    robot_.click(*grid_, cellCentre(4, 1), wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{8, 7, 6, 5}));
    robot_.click(*grid_, cellCentre(9, 1), wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{8, 9, 10}));
    robot_.click(*grid_, cellCentre(1, 1), wxMOD_CONTROL);
    robot_.click(*grid_, cellCentre(3, 1), wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{8, 9, 10, 2, 3, 4}));
}

TEST_F(GridTest, ARecordSelectorSelectsItsRowAndDraggingSelectsWhatItPasses) {
    openCustomers(1000);
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(3)));
    EXPECT_EQ(selectedCodes(), (std::vector{4}));
    EXPECT_EQ(rows_->AbsolutePosition(), 4);
    robot_.click(*grid_, centre(grid_->RecordSelectorRect(5)));
    EXPECT_EQ(selectedCodes(), (std::vector{6}));
    robot_.drag(*grid_, centre(grid_->RecordSelectorRect(8)),
                centre(grid_->RecordSelectorRect(10)));
    EXPECT_EQ(selectedCodes(), (std::vector{9, 10, 11}));
}

TEST_F(GridTest, DraggingBelowTheLastRowInViewScrollsOn) {
    openCustomers(1000);
    const auto rowsInView = grid_->RowsInView();
    const wxPoint below(8, grid_->GetClientSize().y + 30);
    robot_.buttonDown(*grid_, centre(grid_->RecordSelectorRect(2)));
    robot_.moveTo(*grid_, {8, grid_->GetClientSize().y - 40});
    robot_.moveTo(*grid_, below);
    EXPECT_TRUE(robot_.waitUntil([&] { return grid_->FirstRow() > 5; }));
    robot_.buttonUp();
    EXPECT_GT(grid_->SelBookmarks().Count(), rowsInView);
    EXPECT_EQ(selectedCodes().front(), 3);
    const RowCount stopped = grid_->FirstRow();
    robot_.pumpFor(150);
    EXPECT_EQ(grid_->FirstRow(), stopped);
}

TEST_F(GridTest, TheCornerSelectsAllRows) {
    openCustomers(10'000'000);
    robot_.click(*grid_, {8, grid_->HeadingRect(0).height / 2});
    EXPECT_EQ(grid_->SelBookmarks().Count(), 10'000'000);
    EXPECT_EQ(grid_->SelBookmarks().Item(9'999'999).toDouble(), 10'000'000);
}

TEST_F(GridTest, ADoubleClickOnADataRowIsToldAfterTheRowBecameCurrent) {
    openCustomers(1000);
    std::vector<RowCount> told;
    grid_->OnDblClick = [&] { told.push_back(rows_->AbsolutePosition()); };
    robot_.doubleClick(*grid_, cellCentre(6, 1));
    EXPECT_EQ(told, (std::vector<RowCount>{7}));
}

TEST_F(GridTest, ADoubleClickAnywhereElseIsNone) {
    openCustomers(5);
    int told = 0;
    grid_->OnDblClick = [&] { ++told; };
    robot_.doubleClick(*grid_, centre(grid_->HeadingRect(1)));
    robot_.doubleClick(*grid_, centre(grid_->FilterCellRect(1)));
    robot_.doubleClick(*grid_, centre(grid_->RecordSelectorRect(1)));
    robot_.doubleClick(*grid_, {300, grid_->CellRect(4, 1).GetBottom() + 60}); // below the rows
    robot_.doubleClick(*grid_, {8, 8});
    EXPECT_EQ(told, 0);
}

TEST_F(GridTest, TwoQuickClicksOnNeighbouringRowsChooseNeither) {
    openCustomers(1000);
    int told = 0;
    grid_->OnDblClick = [&] { ++told; };
    const wxRect cell = grid_->CellRect(3, 1);
    wxUIActionSimulator mouse;
    robot_.moveTo(*grid_, {cell.x + 20, cell.GetBottom() - 1});
    mouse.MouseClick();
    robot_.moveTo(*grid_, {cell.x + 20, cell.GetBottom() + 2});
    mouse.MouseClick();
    robot_.pump();
    EXPECT_EQ(told, 0);
    EXPECT_EQ(rows_->AbsolutePosition(), 5);
}

TEST_F(GridTest, AHeadingClickIsToldWithItsColumnAndMovesNothing) {
    openCustomers(1000);
    std::vector<int> heads;
    int clicks = 0;
    grid_->OnHeadClick = [&](int column) { heads.push_back(column); };
    grid_->OnClick = [&] { ++clicks; };
    robot_.click(*grid_, centre(grid_->HeadingRect(2)));
    robot_.click(*grid_, centre(grid_->HeadingRect(0)));
    EXPECT_EQ(heads, (std::vector{2, 0}));
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(rows_->AbsolutePosition(), 1);
    // Pressed on one heading, released on another: nothing.
    robot_.drag(*grid_, centre(grid_->HeadingRect(1)), centre(grid_->HeadingRect(3)));
    EXPECT_EQ(heads.size(), 2U);
}

TEST_F(GridTest, DraggingAHeadingsEdgeSizesTheColumn) {
    openCustomers(1000);
    int heads = 0;
    grid_->OnHeadClick = [&](int) { ++heads; };
    const double before = grid_->Columns().Item(1).Width;
    const wxRect heading = grid_->HeadingRect(1);
    robot_.drag(*grid_, {heading.GetRight(), 10}, {heading.GetRight() + 60, 10});
    EXPECT_NEAR(grid_->Columns().Item(1).Width, before + 60 * 15 / grid_->Scale(), 1);
    EXPECT_EQ(grid_->HeadingRect(1).width, heading.width + 60);
    EXPECT_EQ(heads, 0);
    // Far to the left: as narrow as a column gets, and still there to be widened again.
    robot_.drag(*grid_, {heading.GetRight() + 60, 10}, {2, 10});
    EXPECT_EQ(grid_->Columns().Item(1).Width, 150);
    EXPECT_GT(grid_->HeadingRect(1).width, 5);
}

TEST_F(GridTest, WithoutAllowSizingAnEdgeIsPartOfItsHeading) {
    openCustomers(1000);
    grid_->SplitAt(0).AllowSizing = false;
    grid_->Changed();
    std::vector<int> heads;
    grid_->OnHeadClick = [&](int column) { heads.push_back(column); };
    const wxRect heading = grid_->HeadingRect(1);
    robot_.drag(*grid_, {heading.GetRight(), 10}, {heading.GetRight() - 2, 10});
    EXPECT_EQ(grid_->HeadingRect(1), heading);
    EXPECT_EQ(heads, (std::vector{1}));
}

TEST_F(GridTest, ADoubleClickOnAnEdgeFitsTheColumnToWhatIsInView) {
    openCustomers(1000);
    grid_->Columns().Item(1).Width = 600;
    grid_->Changed();
    robot_.pump();
    const wxRect heading = grid_->HeadingRect(1);
    robot_.doubleClick(*grid_, {heading.GetRight(), 10});
    EXPECT_GT(grid_->HeadingRect(1).width, 150);
    const int fitted = grid_->HeadingRect(1).width;
    grid_->FitColumn(1);
    EXPECT_EQ(grid_->HeadingRect(1).width, fitted);
}

TEST_F(GridTest, TheWheelScrollsThreeRowsANotchAndWithShiftSideways) {
    openCustomers(1000);
    robot_.wheel(*grid_, cellCentre(3, 1), 2);
    EXPECT_EQ(grid_->FirstRow(), 6);
    EXPECT_EQ(rows_->AbsolutePosition(), 1) << "scrolling moves no record";
    robot_.wheel(*grid_, cellCentre(3, 1), -5);
    EXPECT_EQ(grid_->FirstRow(), 0);
    const int left = grid_->HeadingRect(1).x;
    robot_.wheel(*grid_, cellCentre(3, 1), 1, wxMOD_SHIFT);
    EXPECT_LT(grid_->HeadingRect(1).x, left);
}

// The scroll bars are real controls at the right and the lower edge.
TEST_F(GridTest, TheScrollBarReachesTheLastOfTenMillionRows) {
    openCustomers(10'000'000);
    const wxSize size = grid_->GetClientSize();
    const int top = grid_->CellRect(0, 0).y;
    robot_.drag(*grid_, {size.x - 7, top + 21}, {size.x - 7, size.y + 50});
    robot_.pump();
    const auto lastInView = grid_->FirstRow() + grid_->RowsInView() - 1;
    EXPECT_EQ(lastInView, 9'999'999);
    EXPECT_FALSE(grid_->CellRect(grid_->RowsInView() - 1, 0).IsEmpty());
    EXPECT_EQ(grid_->CellText(lastInView, 0), "10000000");
    screenshot(*frame_, "grid_last_rows");
}

TEST_F(GridTest, AMoveThatIsRefusedIsReportedAndNothingChanges) {
    openCustomers(1000);
    std::vector<std::int64_t> numbers;
    grid_->OnError = [&](const Errore& error) { numbers.push_back(error.numero()); };
    rows_->refuseMoves = true;
    robot_.click(*grid_, cellCentre(5, 1));
    robot_.press(WXK_DOWN);
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{3712, 3712}));
    EXPECT_EQ(grid_->CurrentRow(), 0);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
}

TEST_F(GridTest, ACellThatIsCutShowsItsTextAsATip) {
    openCustomers(1000);
    grid_->Columns().Item(1).Width = 900;
    grid_->Changed();
    robot_.pump();
    robot_.moveTo(*grid_, cellCentre(2, 1));
    EXPECT_EQ(grid_->GetToolTipText().utf8_string(), grid_->CellText(2, 1));
    robot_.moveTo(*grid_, cellCentre(2, 3));
    EXPECT_EQ(grid_->GetToolTipText(), "");
    robot_.moveTo(*grid_, centre(grid_->HeadingRect(1)));
    EXPECT_EQ(grid_->GetToolTipText(), "ragione_sociale");
}

TEST_F(GridTest, AnErrorOfACallbackIsReportedAndEndsThere) {
    openCustomers(1000);
    std::vector<std::int64_t> numbers;
    grid_->OnError = [&](const Errore& error) { numbers.push_back(error.numero()); };
    grid_->OnHeadClick = [](int) { throw Errore(3001, "ordinamento rifiutato"); };
    robot_.click(*grid_, centre(grid_->HeadingRect(1)));
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{3001}));
    robot_.click(*grid_, cellCentre(3, 1));
    EXPECT_EQ(rows_->AbsolutePosition(), 4);
}

TEST_F(GridTest, ACallbackMayDestroyTheWindow) {
    openCustomers(1000);
    bool chosen = false;
    grid_->OnDblClick = [&] {
        chosen = true;
        grid_->SetDataSource(nullptr);
        frame_->Destroy();
        frame_ = nullptr;
    };
    wxUIActionSimulator mouse;
    robot_.moveTo(*grid_, cellCentre(4, 1));
    mouse.MouseDblClick();
    robot_.waitUntil([&] { return chosen; });
    robot_.pump();
    EXPECT_TRUE(chosen);
}

} // namespace
} // namespace norvel::tests
