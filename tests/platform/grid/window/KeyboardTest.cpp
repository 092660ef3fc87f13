// The keyboard in the data rows.
#include "tests/platform/grid/window/GridFixture.h"

#include <wx/textctrl.h>

namespace norvel::tests {
namespace {

using adodb::RowCount;

TEST_F(GridTest, ArrowsAndPagesMoveTheRecordset) {
    openCustomers(1000);
    robot_.press(WXK_DOWN);
    robot_.press(WXK_DOWN);
    EXPECT_EQ(rows_->AbsolutePosition(), 3);
    robot_.press(WXK_UP);
    EXPECT_EQ(rows_->AbsolutePosition(), 2);
    robot_.press(WXK_PAGEDOWN);
    const RowCount page = rows_->AbsolutePosition() - 2;
    EXPECT_GT(page, 10);
    EXPECT_LT(page, grid_->RowsInView());
    robot_.press(WXK_PAGEUP);
    EXPECT_EQ(rows_->AbsolutePosition(), 2);
}

TEST_F(GridTest, ControlHomeAndEndReachBothEndsOfTenMillionRows) {
    openCustomers(10'000'000);
    robot_.press(WXK_END, wxMOD_CONTROL);
    EXPECT_EQ(rows_->AbsolutePosition(), 10'000'000);
    EXPECT_FALSE(grid_->CellRect(9'999'999 - grid_->FirstRow(), 0).IsEmpty());
    robot_.press(WXK_UP);
    EXPECT_EQ(rows_->AbsolutePosition(), 9'999'999);
    robot_.press(WXK_HOME, wxMOD_CONTROL);
    EXPECT_EQ(rows_->AbsolutePosition(), 1);
    EXPECT_EQ(grid_->FirstRow(), 0);
}

TEST_F(GridTest, LeftAndRightMoveTheCellAndBringItIntoView) {
    openCustomers(1000);
    EXPECT_EQ(grid_->CurrentColumn(), 0);
    robot_.press(WXK_RIGHT);
    EXPECT_EQ(grid_->CurrentColumn(), 1);
    robot_.press(WXK_END);
    EXPECT_EQ(grid_->CurrentColumn(), 8);
    EXPECT_FALSE(grid_->CellRect(0, 8).IsEmpty());
    EXPECT_GT(grid_->LeftColumn(), 0);
    robot_.press(WXK_RIGHT);
    EXPECT_EQ(grid_->CurrentColumn(), 8);
    robot_.press(WXK_HOME);
    EXPECT_EQ(grid_->CurrentColumn(), 0);
    EXPECT_EQ(grid_->LeftColumn(), 0);
    EXPECT_EQ(rows_->AbsolutePosition(), 1);
}

TEST_F(GridTest, ShiftWithArrowsSelectsFromWhereItBegan) {
    openCustomers(1000);
    robot_.click(*grid_, cellCentre(5, 0));
    robot_.press(WXK_DOWN, wxMOD_SHIFT);
    robot_.press(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{6, 7, 8}));
    robot_.pressTimes(4, WXK_UP, wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{6, 5, 4}));
    robot_.press(WXK_DOWN);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
    robot_.press(WXK_END, wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 996);
}

TEST_F(GridTest, ControlASelectsTenMillionRowsAtOnce) {
    openCustomers(10'000'000);
    const auto read = rows_->rowsRead();
    robot_.press('A', wxMOD_CONTROL);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 10'000'000);
    EXPECT_LE(rows_->rowsRead() - read, 128);
    screenshot(*frame_, "grid_all_selected");
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
}

TEST_F(GridTest, ControlSpaceAndControlArrowsPickSingleRows) {
    openCustomers(1000);
    robot_.press(WXK_SPACE, wxMOD_CONTROL);
    robot_.pressTimes(3, WXK_DOWN, wxMOD_CONTROL);
    robot_.press(WXK_SPACE, wxMOD_CONTROL);
    EXPECT_EQ(selectedCodes(), (std::vector{1, 4}));
    robot_.press(WXK_SPACE, wxMOD_CONTROL);
    EXPECT_EQ(selectedCodes(), (std::vector{1}));
    robot_.press(WXK_SPACE, wxMOD_SHIFT);
    EXPECT_EQ(selectedCodes(), (std::vector{4}));
}

TEST_F(GridTest, KeysAreOfferedToTheHostFirst) {
    openCustomers(1000);
    std::vector<int> codes;
    grid_->OnKey = [&](int code, int, grid::Area area) {
        codes.push_back(code);
        EXPECT_EQ(area, grid::Area::Data);
        return code == WXK_DOWN;
    };
    robot_.press(WXK_DOWN);
    robot_.press(WXK_RETURN);
    robot_.press(WXK_PAGEDOWN);
    EXPECT_EQ(codes, (std::vector<int>{WXK_DOWN, WXK_RETURN, WXK_PAGEDOWN}));
    EXPECT_GT(rows_->AbsolutePosition(), 10) << "only Down was taken";
}

TEST_F(GridTest, TabLeadsOutOfTheGridInBothDirections) {
    openCustomers(1000);
    robot_.press(WXK_TAB);
    EXPECT_TRUE(after_->HasFocus());
    robot_.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_EQ(wxWindow::FindFocus(), grid_);
    robot_.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_EQ(grid_->focusArea(), grid::Area::FilterCell);
    robot_.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_TRUE(before_->HasFocus());
    screenshot(*frame_, "grid_without_focus");
}

TEST_F(GridTest, AMoveMadeElsewhereMovesTheGrid) {
    openCustomers(1000);
    robot_.click(*grid_, cellCentre(2, 0), wxMOD_CONTROL);
    rows_->MoveLast();
    EXPECT_EQ(grid_->CurrentRow(), 999);
    EXPECT_FALSE(grid_->CellRect(999 - grid_->FirstRow(), 0).IsEmpty());
    EXPECT_EQ(selectedCodes(), (std::vector{3})) << "the selection is the operator's";
    const RowCount first = grid_->FirstRow();
    rows_->MoveNext();
    EXPECT_EQ(grid_->CurrentRow(), -1);
    EXPECT_EQ(grid_->FirstRow(), first) << "behind the last row the view stays";
    robot_.press(WXK_UP);
    EXPECT_EQ(rows_->AbsolutePosition(), 1000);
    rows_->MoveFirst();
    rows_->MovePrevious();
    EXPECT_EQ(grid_->CurrentRow(), -1);
    robot_.press(WXK_DOWN);
    EXPECT_EQ(rows_->AbsolutePosition(), 1);
}

TEST_F(GridTest, SettingTheBookmarkMovesTheRecordset) {
    openCustomers(1000);
    grid_->SetBookmark(Variant(321.0));
    EXPECT_EQ(rows_->AbsolutePosition(), 321);
    EXPECT_EQ(grid_->CurrentRow(), 320);
    EXPECT_THROW(grid_->SetBookmark(Variant(5000.0)), Errore);
}

TEST_F(GridTest, ANewOrderKeepsTheCurrentRecordAndTheSelection) {
    openCustomers(1000);
    robot_.click(*grid_, cellCentre(2, 0), wxMOD_CONTROL);
    robot_.click(*grid_, cellCentre(4, 0), wxMOD_CONTROL);
    rows_->SetSort("[codice]  desc");
    robot_.pump();
    EXPECT_EQ(grid_->CellText(0, 0), "1000");
    EXPECT_EQ(grid_->CurrentRow(), 995);
    EXPECT_FALSE(grid_->CellRect(995 - grid_->FirstRow(), 0).IsEmpty());
    EXPECT_EQ(selectedCodes(), (std::vector{3, 5}));
    screenshot(*frame_, "grid_sorted_selection");
}

TEST_F(GridTest, ANewFilterShowsItsRowsAndEmptiesTheSelection) {
    openCustomers(1000);
    robot_.press('A', wxMOD_CONTROL);
    rows_->SetFilter("ogni 100");
    robot_.pump();
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
    EXPECT_EQ(grid_->RowsInView(), 10);
    EXPECT_EQ(grid_->CellText(1, 0), "101");
    EXPECT_EQ(grid_->CurrentRow(), 0);
}

TEST_F(GridTest, RowsThatArriveAreShownAndTheScrollStays) {
    openCustomers(5);
    rows_->beginFetch();
    rows_->arrive(995, false);
    robot_.waitUntil([&] { return grid_->RowsInView() > 5; });
    EXPECT_GT(grid_->RowsInView(), 5);
    grid_->SetFirstRow(500);
    rows_->arrive(100'000, true);
    robot_.pump();
    EXPECT_EQ(grid_->FirstRow(), 500);
    EXPECT_EQ(grid_->CurrentRow(), 0);
    robot_.press(WXK_END, wxMOD_CONTROL);
    EXPECT_EQ(rows_->AbsolutePosition(), 101'000);
}

TEST_F(GridTest, ARequeryAndADeletedRowEmptyTheSelection) {
    openCustomers(100);
    robot_.press('A', wxMOD_CONTROL);
    rows_->Requery(-1);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
    robot_.press('A', wxMOD_CONTROL);
    rows_->Delete(adodb::adAffectCurrent);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
    robot_.press(WXK_END, wxMOD_CONTROL);
    EXPECT_EQ(grid_->CurrentRow(), 98);
}

TEST_F(GridTest, ChangedValuesAreReadAgain) {
    openCustomers(100);
    EXPECT_EQ(grid_->CellText(3, 0), "4");
    rows_->changeValues(0, [](RowCount) { return Variant(std::int32_t{7}); });
    EXPECT_EQ(grid_->CellText(3, 0), "7");
}

TEST_F(GridTest, AClosedRecordsetLeavesAnEmptyGrid) {
    openCustomers(100);
    rows_->Close();
    robot_.pump();
    EXPECT_EQ(grid_->RowsInView(), 0);
    EXPECT_EQ(grid_->CurrentRow(), -1);
    robot_.press(WXK_DOWN);
    robot_.click(*grid_, {100, 100});
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0);
}

} // namespace
} // namespace norvel::tests
