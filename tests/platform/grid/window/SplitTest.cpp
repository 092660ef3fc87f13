// Frozen columns and splits in the window.
#include "tests/platform/grid/window/GridFixture.h"

#include <filesystem>
#include <random>

namespace norvel::tests {
namespace {

class SplitTest : public GridTest {
  protected:
    void openWide() {
        openCustomers(1000);
        for (int i = 0; i < grid_->Columns().Count(); ++i)
            grid_->Columns().Item(i).Width = 2400;
        grid_->Changed();
    }
    int lastColumn() const { return grid_->Columns().Count() - 1; }
};

TEST_F(SplitTest, FrozenColumnsStayInViewWhileTheOthersScroll) {
    openWide();
    grid_->SplitAt(0).FrozenColumns = 2;
    grid_->Changed();
    const wxRect frozen = grid_->CellRect(3, 1);
    robot_.click(*grid_, cellCentre(3, 1));
    grid_->SetCurrentColumn(lastColumn());
    robot_.pump();
    screenshot(*frame_, "grid_frozen");
    EXPECT_EQ(grid_->CellRect(3, 1), frozen);
    EXPECT_GT(grid_->CellRect(3, lastColumn()).width, 100);
    EXPECT_TRUE(grid_->CellRect(3, 2).IsEmpty()) << "it is scrolled under the frozen ones";
    robot_.click(*grid_, centre(frozen));
    EXPECT_EQ(grid_->CurrentColumn(), 1);
    EXPECT_GT(grid_->CellRect(3, lastColumn()).width, 100) << "a frozen cell scrolls nothing";
}

TEST_F(SplitTest, TheFilterEditorIsCutAtTheFrozenColumns) {
    openWide();
    grid_->SplitAt(0).FrozenColumns = 1;
    grid_->Changed();
    ASSERT_TRUE(grid_->EnterFilterCell(0));
    robot_.type("7");
    ASSERT_TRUE(grid_->EnterFilterCell(2));
    grid_->SetCurrentColumn(lastColumn());
    robot_.pump();
    EXPECT_TRUE(grid_->FilterCellRect(2).IsEmpty());
    EXPECT_FALSE(grid_->FilterCellRect(0).IsEmpty());
    screenshot(*frame_, "grid_frozen_filter");
    robot_.press(WXK_TAB);
    EXPECT_EQ(grid_->FilterColumn(), 3);
    EXPECT_GT(grid_->FilterCellRect(3).width, 100) << "entering a cell scrolls it in";
}

TEST_F(SplitTest, AFrozenHeadingIsSizedAndSortedLikeAnyOther) {
    openWide();
    grid_->SplitAt(0).FrozenColumns = 1;
    grid_->Changed();
    grid_->SetCurrentColumn(lastColumn());
    const wxRect before = grid_->HeadingRect(0);
    robot_.drag(*grid_, {before.GetRight() + 2, before.height / 2},
                {before.GetRight() + 42, before.height / 2});
    EXPECT_EQ(grid_->HeadingRect(0).width, before.width + 40);
    int clicked = -1;
    grid_->OnHeadClick = [&](int column) { clicked = column; };
    robot_.click(*grid_, centre(grid_->HeadingRect(0)));
    EXPECT_EQ(clicked, 0);
}

TEST_F(SplitTest, EachSplitScrollsByItself) {
    openWide();
    EXPECT_EQ(grid_->AddSplit(), 1);
    EXPECT_EQ(grid_->SplitCount(), 2);
    grid_->SplitAt(1).AlternatingRowStyle = true;
    grid_->SplitAt(1).FrozenColumns = 1;
    grid_->Changed();
    const wxRect first = grid_->CellRect(2, 0);
    robot_.wheel(*grid_, centre(grid_->CellRect(2, 1, 1)), 30, wxMOD_SHIFT);
    EXPECT_EQ(grid_->CellRect(2, 0), first);
    EXPECT_FALSE(grid_->CellRect(2, lastColumn(), 1).IsEmpty());
    robot_.click(*grid_, centre(grid_->CellRect(4, lastColumn(), 1)));
    EXPECT_EQ(grid_->CurrentColumn(), lastColumn());
    EXPECT_EQ(grid_->CurrentRow(), 4);
    EXPECT_TRUE(grid_->CellRect(4, lastColumn()).IsEmpty()) << "split 0 did not scroll";
    screenshot(*frame_, "grid_splits");
}

TEST_F(SplitTest, SelectingCellsIntoTheNextSplitScrollsNeither) {
    openWide();
    grid_->AddSplit();
    robot_.wheel(*grid_, centre(grid_->CellRect(2, 0, 1)), 30, wxMOD_SHIFT);
    const wxRect first = grid_->CellRect(2, 0);
    const wxRect last = grid_->CellRect(5, lastColumn(), 1);
    ASSERT_TRUE(grid_->CellRect(2, lastColumn()).IsEmpty());
    robot_.buttonDown(*grid_, centre(first));
    robot_.moveTo(*grid_, centre(grid_->CellRect(3, 0)));
    robot_.moveTo(*grid_, centre(last));
    robot_.buttonUp();
    EXPECT_EQ(grid_->SelEndCol(), lastColumn());
    EXPECT_EQ(grid_->CellRect(2, 0), first);
    EXPECT_EQ(grid_->CellRect(5, lastColumn(), 1), last);
}

TEST_F(SplitTest, TheArrowsLeadFromOneSplitIntoTheNext) {
    openCustomers(10);
    for (int i = 2; i < grid_->Columns().Count(); ++i)
        grid_->Columns().Item(i).Visible = false;
    grid_->Changed();
    grid_->AddSplit();
    robot_.click(*grid_, cellCentre(1, 1));
    robot_.press(WXK_RIGHT);
    EXPECT_EQ(grid_->CurrentColumn(), 0);
    robot_.press(WXK_END);
    EXPECT_EQ(grid_->CurrentColumn(), 1);
    robot_.press(WXK_HOME);
    robot_.press(WXK_LEFT);
    EXPECT_EQ(grid_->CurrentColumn(), 1) << "the last one of split 0";
    robot_.press(WXK_F2);
    EXPECT_EQ(grid_->FilterColumn(), 1);
}

TEST_F(SplitTest, OtherSplitsKeepTheirSettingsWhenSplitZerosStyleAndLayoutChange) {
    const auto folder = std::filesystem::temp_directory_path() /
                        ("nr_split_" + std::to_string(std::random_device{}()));
    std::filesystem::create_directory(folder);
    openCustomers(10);
    grid_->AddSplit();
    grid::Split& other = grid_->SplitAt(1);
    other.EvenRowStyle.BackColor = 0x00C0FFC0;
    other.AllowSizing = false;
    other.FrozenColumns = 1;
    const grid::Split before = other;
    grid::Split& first = grid_->SplitAt(0);
    first.AllowSizing = true;
    first.AllowRowSizing = true;
    first.AllowColMove = true;
    first.AlternatingRowStyle = true;
    first.OddRowStyle.BackColor = 0x000000FF;
    grid_->Changed();
    EXPECT_EQ(grid_->SplitAt(1), before);

    const grid::Split styled = first;
    grid::LayoutKeeper& layouts = grid_->Layouts();
    layouts.LayoutName = "prova";
    layouts.LayoutFileName = (folder / "prova.grx").string();
    layouts.AddLayout("prova");
    grid_->SplitAt(0) = grid::Split{};
    layouts.LoadLayout();
    EXPECT_EQ(grid_->SplitAt(0), styled);
    EXPECT_EQ(grid_->SplitAt(1), before);
    EXPECT_EQ(grid_->SplitCount(), 2);
    std::filesystem::remove_all(folder);
}

TEST_F(SplitTest, RemovingASplitGivesItsRoomToTheOthers) {
    openWide();
    const wxRect whole = grid_->HeadingRect(5);
    grid_->AddSplit();
    EXPECT_TRUE(grid_->HeadingRect(5).IsEmpty());
    robot_.click(*grid_, centre(grid_->CellRect(1, 1, 1)));
    grid_->RemoveSplit(1);
    robot_.pump();
    EXPECT_EQ(grid_->HeadingRect(5), whole);
    robot_.press(WXK_RIGHT);
    EXPECT_EQ(grid_->CurrentColumn(), 2);
    EXPECT_THROW(grid_->RemoveSplit(1), Errore);
    EXPECT_THROW(grid_->RemoveSplit(0), Errore);
    EXPECT_THROW(grid_->SplitAt(-1), Errore);
    EXPECT_EQ(grid_->SplitCount(), 1);
}

TEST_F(SplitTest, SizesFollowASmallWindow) {
    openWide();
    grid_->SplitAt(0).FrozenColumns = 3;
    grid_->AddSplit();
    frame_->SetClientSize(160, 200);
    robot_.pump();
    EXPECT_NO_THROW(robot_.click(*grid_, {100, 100}));
    frame_->SetClientSize(1100, 620);
    robot_.pump();
    EXPECT_FALSE(grid_->CellRect(0, 0, 1).IsEmpty());
}

} // namespace
} // namespace norvel::tests
