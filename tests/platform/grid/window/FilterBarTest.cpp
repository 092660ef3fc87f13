// The filter cells: entering, typing, leaving.
#include "tests/platform/grid/window/GridFixture.h"

#include <wx/textctrl.h>

namespace norvel::tests {
namespace {

using grid::Area;

class FilterBarTest : public GridTest {
  protected:
    void SetUp() override {
        openCustomers(1000);
        grid_->OnFilterChange = [this](int column) {
            changes_.emplace_back(column, grid_->Columns().Item(column).FilterText);
        };
    }
    const std::string& text(int column) { return grid_->Columns().Item(column).FilterText; }
    std::vector<std::pair<int, std::string>> changes_;
};

TEST_F(FilterBarTest, AClickEntersTheCellAndEveryCharacterIsTold) {
    robot_.click(*grid_, centre(grid_->FilterCellRect(1)));
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell);
    EXPECT_EQ(grid_->FilterColumn(), 1);
    robot_.type("Forlì");
    EXPECT_EQ(text(1), "Forlì");
    ASSERT_EQ(changes_.size(), 5U);
    EXPECT_EQ(changes_.front(), (std::pair<int, std::string>(1, "F")));
    EXPECT_EQ(changes_.back(), (std::pair<int, std::string>(1, "Forlì")));
    EXPECT_EQ(rows_->AbsolutePosition(), 1) << "no record moved";
    screenshot(*frame_, "grid_filter_edit");
}

TEST_F(FilterBarTest, EntersByF2AndByUpOnTheFirstRow) {
    robot_.press(WXK_RIGHT);
    robot_.press(WXK_F2);
    EXPECT_EQ(grid_->FilterColumn(), 1);
    robot_.press(WXK_DOWN);
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    EXPECT_EQ(rows_->AbsolutePosition(), 1);
    robot_.press(WXK_DOWN);
    robot_.press(WXK_UP);
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    robot_.press(WXK_UP);
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell);
}

TEST_F(FilterBarTest, TabGoesFromCellToCellAndThenToTheRows) {
    grid_->EnterFilterCell(7);
    robot_.pump();
    robot_.press(WXK_TAB);
    EXPECT_EQ(grid_->FilterColumn(), 8);
    EXPECT_FALSE(grid_->FilterCellRect(8).IsEmpty());
    robot_.press(WXK_TAB);
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    EXPECT_TRUE(grid_->HasFocus());
    robot_.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_EQ(grid_->FilterColumn(), 8);
    robot_.press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_EQ(grid_->FilterColumn(), 7);
}

TEST_F(FilterBarTest, TheTextStaysWhenTheCellIsLeft) {
    robot_.click(*grid_, centre(grid_->FilterCellRect(2)));
    robot_.type("Roma");
    robot_.click(*grid_, cellCentre(3, 1));
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    EXPECT_EQ(text(2), "Roma");
    EXPECT_EQ(rows_->AbsolutePosition(), 4);
    screenshot(*frame_, "grid_filter_left");
    robot_.click(*grid_, centre(grid_->FilterCellRect(2)));
    robot_.type("gna");
    EXPECT_EQ(text(2), "Romagna") << "the caret stands behind the text";
}

TEST_F(FilterBarTest, EscapeClearsTheCellAndThenReturnsToTheRows) {
    grid_->SetFilterText(1, "Rossi");
    EXPECT_TRUE(changes_.empty()) << "set by code";
    grid_->EnterFilterCell(1);
    robot_.pump();
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(text(1), "");
    EXPECT_EQ(changes_.back(), (std::pair<int, std::string>(1, "")));
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell);
    robot_.press(WXK_ESCAPE);
    EXPECT_EQ(grid_->focusArea(), Area::Data);
    EXPECT_EQ(changes_.size(), 1U);
}

TEST_F(FilterBarTest, LeavingACellIsToldHoweverItIsLeft) {
    std::vector<int> left;
    grid_->OnFilterLeave = [&](int column) { left.push_back(column); };
    grid_->EnterFilterCell(1);
    robot_.pump();
    robot_.press(WXK_TAB);
    robot_.press(WXK_DOWN);
    EXPECT_EQ(left, (std::vector{1, 2}));
    robot_.click(*grid_, centre(grid_->FilterCellRect(1)));
    robot_.click(*grid_, cellCentre(3, 1));
    robot_.click(*grid_, centre(grid_->FilterCellRect(2)));
    robot_.click(*after_, {30, 8});
    EXPECT_TRUE(robot_.waitUntil([&] { return left.size() == 4; }));
    EXPECT_EQ(left, (std::vector{1, 2, 1, 2}));
}

TEST_F(FilterBarTest, AMarkedCellIsFramedAndSaysWhyUntilTheMarkIsTakenOff) {
    const auto redness = [this](int column) {
        const wxRect r = grid_->FilterCellRect(column);
        const wxImage line = imageOf(*grid_, {r.x + 4, r.y, r.width - 8, 1});
        const int middle = line.GetWidth() / 2;
        return line.GetRed(middle, 0) - line.GetGreen(middle, 0);
    };
    EXPECT_LT(redness(1), 40);
    grid_->SetFilterText(1, "abc");
    grid_->SetFilterError(1, "Non è un numero");
    EXPECT_GT(redness(1), 100);
    EXPECT_LT(redness(2), 40);
    robot_.moveTo(*grid_, centre(grid_->FilterCellRect(1)));
    EXPECT_EQ(grid_->GetToolTipText().utf8_string(), "Non è un numero");
    screenshot(*frame_, "grid_filter_marked");
    grid_->EnterFilterCell(1);
    EXPECT_GT(redness(1), 100) << "while it is edited, too";
    const wxWindow* editor = wxWindow::FindFocus();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->GetToolTipText().utf8_string(), "Non è un numero");
    grid_->SetFilterError(1, "");
    EXPECT_EQ(editor->GetToolTipText(), "");
    EXPECT_LT(redness(1), 40);
}

TEST_F(FilterBarTest, EnterIsToldAndChoosesNoRow) {
    std::vector<int> entered;
    int doubleClicks = 0;
    grid_->OnFilterEnter = [&](int column) { entered.push_back(column); };
    grid_->OnDblClick = [&] { ++doubleClicks; };
    robot_.click(*grid_, centre(grid_->FilterCellRect(1)));
    robot_.press(WXK_RETURN);
    EXPECT_EQ(entered, (std::vector{1}));
    EXPECT_EQ(doubleClicks, 0);
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell);
}

TEST_F(FilterBarTest, TheHostIsAskedFirstAndToldThatAFilterCellIsMeant) {
    std::vector<Area> areas;
    grid_->OnKey = [&](int code, int, Area area) {
        if (code == WXK_RETURN) areas.push_back(area);
        return false;
    };
    robot_.press(WXK_RETURN);
    robot_.press(WXK_F2);
    robot_.press(WXK_RETURN);
    EXPECT_EQ(areas, (std::vector{Area::Data, Area::FilterCell}));
}

TEST_F(FilterBarTest, ArrowsHomeAndTheClipboardWorkInTheCell) {
    robot_.click(*grid_, centre(grid_->FilterCellRect(1)));
    robot_.type("bcd");
    robot_.press(WXK_HOME);
    robot_.type("a");
    robot_.press(WXK_RIGHT);
    robot_.press(WXK_DELETE);
    EXPECT_EQ(text(1), "abd");
    robot_.press('A', wxMOD_CONTROL);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0) << "Ctrl+A selects the text, not the rows";
    robot_.press('X', wxMOD_CONTROL);
    EXPECT_EQ(text(1), "");
    robot_.press('V', wxMOD_CONTROL);
    EXPECT_TRUE(robot_.waitUntil([&] { return text(1) == "abd"; }));
    EXPECT_EQ(rows_->AbsolutePosition(), 1);
}

TEST_F(FilterBarTest, TheButtonIsToldAndIsThereOnlyWithFilterCombo) {
    std::vector<int> pressed;
    grid_->OnFilterButton = [&](int column) { pressed.push_back(column); };
    grid_->Columns().Item(1).FilterCombo = true;
    grid_->Changed();
    robot_.pump();
    robot_.click(*grid_, centre(grid_->FilterButtonRect(1)));
    EXPECT_EQ(pressed, (std::vector{1}));
    grid_->EnterFilterCell(1);
    robot_.pump();
    robot_.type("Bianchi");
    screenshot(*frame_, "grid_filter_button");
    robot_.click(*grid_, centre(grid_->FilterButtonRect(1)));
    EXPECT_EQ(pressed, (std::vector{1, 1})) << "the editor leaves the button free";
    const wxRect cell = grid_->FilterCellRect(2);
    robot_.click(*grid_, {cell.GetRight() - 5, cell.y + 10});
    EXPECT_EQ(pressed.size(), 2U);
}

TEST_F(FilterBarTest, TheKeyboardHasTheButtonToo) {
    std::vector<int> pressed;
    grid_->OnFilterButton = [&](int column) { pressed.push_back(column); };
    grid_->Columns().Item(1).FilterCombo = true;
    grid_->Changed();
    grid_->EnterFilterCell(1);
    robot_.pump();
    robot_.press(WXK_F4);
    robot_.press(WXK_DOWN, wxMOD_ALT);
    EXPECT_EQ(pressed, (std::vector{1, 1}));
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell);
    grid_->EnterFilterCell(2);
    robot_.pump();
    robot_.press(WXK_F4);
    EXPECT_EQ(pressed.size(), 2U) << "a cell without a button";
}

TEST_F(FilterBarTest, AColumnHiddenWhileItsCellIsEditedEndsTheEditing) {
    grid_->EnterFilterCell(1);
    robot_.pump();
    grid_->Columns().Item(1).Visible = false;
    grid_->Changed();
    robot_.pump();
    EXPECT_EQ(grid_->FilterColumn(), -1);
    EXPECT_FALSE(grid_->EnterFilterCell(1));
    robot_.press(WXK_DOWN);
}

TEST_F(FilterBarTest, ATextChangedByCodeShowsInTheCellBeingEdited) {
    grid_->EnterFilterCell(1);
    robot_.pump();
    grid_->Columns().Item(1).FilterText = "Ross";
    grid_->Changed();
    robot_.press(WXK_END);
    robot_.type("i");
    EXPECT_EQ(text(1), "Rossi");
}

TEST_F(FilterBarTest, FilteringWhileTypingKeepsTheCaretInTheCell) {
    grid_->OnFilterChange = [this](int) { rows_->SetFilter("ogni 10"); };
    robot_.click(*grid_, centre(grid_->FilterCellRect(1)));
    robot_.type("ab");
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell);
    EXPECT_EQ(text(1), "ab");
    EXPECT_EQ(grid_->CellText(1, 0), "11");
}

TEST_F(FilterBarTest, TheCellScrollsWithItsColumnAndIsNotLost) {
    robot_.click(*grid_, centre(grid_->FilterCellRect(1)));
    robot_.type("a");
    robot_.wheel(*grid_, cellCentre(3, 2), 8, wxMOD_SHIFT);
    robot_.type("b");
    EXPECT_EQ(text(1), "ab");
    EXPECT_EQ(grid_->FilterColumn(), 1);
    screenshot(*frame_, "grid_filter_scrolled");
}

TEST_F(FilterBarTest, AnotherControlThatTakesTheFocusEndsTheEditing) {
    robot_.click(*grid_, centre(grid_->FilterCellRect(1)));
    robot_.type("a");
    robot_.click(*after_, {30, 8});
    EXPECT_TRUE(robot_.waitUntil([&] { return grid_->FilterColumn() < 0; }));
    EXPECT_EQ(text(1), "a");
}

// The host is told that a cell was left while the next one is being entered.
TEST_F(FilterBarTest, ARecordsetWithoutTheNextCellMayBeBoundWhileACellIsLeft) {
    std::vector<std::string> errors;
    grid_->OnError = [&](const Errore& error) { errors.push_back(error.descrizione()); };
    grid_->EnterFilterCell(1);
    robot_.pump();
    const auto one =
        GeneratedRecordset::make({{.name = "sola", .value = [](auto) { return 1; }}}, 5);
    grid_->OnFilterLeave = [&](int) {
        grid_->OnFilterLeave = nullptr;
        source_.SetRecordset(one);
    };
    EXPECT_NO_THROW(grid_->EnterFilterCell(3));
    robot_.pump();
    EXPECT_EQ(errors, std::vector<std::string>{});
    EXPECT_EQ(grid_->FilterColumn(), -1);
    EXPECT_TRUE(grid_->EnterFilterCell(0));
    source_.SetRecordset(rows_);
}

TEST_F(FilterBarTest, OtherFieldsEndTheEditingAndLeaveTheKeyboardInTheGrid) {
    robot_.click(*grid_, centre(grid_->FilterCellRect(3)));
    source_.SetRecordset(
        GeneratedRecordset::make({{.name = "sola", .value = [](auto) { return 1; }}}, 5));
    EXPECT_EQ(grid_->FilterColumn(), -1);
    robot_.pump();
    EXPECT_TRUE(grid_->HasFocus());
    source_.SetRecordset(rows_);
}

// The grid's columns take their widths from the first rows that come.
TEST_F(FilterBarTest, TheFirstRowsThatComeLeaveTheCaretWhereTheOperatorTypes) {
    auto fields = customerColumns();
    fields.pop_back(); // others than before: the columns are new
    const auto slow = GeneratedRecordset::make(std::move(fields), 0);
    slow->beginFetch();
    source_.SetRecordset(slow);
    robot_.click(*grid_, centre(grid_->FilterCellRect(2)));
    robot_.type("Fo");
    slow->arrive(100, true);
    robot_.pump();
    EXPECT_GT(grid_->RowsInView(), 0);
    EXPECT_EQ(grid_->focusArea(), Area::FilterCell);
    robot_.type("r");
    EXPECT_EQ(text(2), "For");
    source_.SetRecordset(rows_);
}

} // namespace
} // namespace norvel::tests
