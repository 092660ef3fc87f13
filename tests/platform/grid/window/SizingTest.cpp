// Sizing columns and rows, by the mouse and by keys.
#include "tests/platform/grid/window/GridFixture.h"

#include <wx/scrolbar.h>

namespace norvel::tests {
namespace {

class SizingTest : public GridTest {
  protected:
    void openSizable() {
        openCustomers(1000);
        grid_->SplitAt(0).AllowRowSizing = true;
        grid_->Changed();
    }
    wxPoint lowerEdge(int rowPosition) const {
        const wxRect r = grid_->RecordSelectorRect(rowPosition);
        return {r.x + r.width / 2, r.GetBottom()};
    }
    int rowHeight() const { return grid_->RecordSelectorRect(0).height; }
};

TEST_F(SizingTest, TheEdgeBetweenTwoRecordSelectorsSizesAllRows) {
    openSizable();
    const int before = rowHeight();
    robot_.buttonDown(*grid_, lowerEdge(2));
    robot_.moveTo(*grid_, lowerEdge(2) + wxPoint(0, 10));
    robot_.moveTo(*grid_, lowerEdge(2) + wxPoint(0, 20));
    screenshot(*frame_, "grid_row_sizing");
    EXPECT_EQ(rowHeight(), before) << "only once the mouse is let go";
    robot_.buttonUp();
    EXPECT_EQ(rowHeight(), before + 20);
    EXPECT_EQ(grid_->CellRect(5, 1).height, before + 20);
    EXPECT_GT(grid_->Style().RowHeight, 0);
    EXPECT_EQ(grid_->SelBookmarks().Count(), 0) << "the edge selects nothing";
    robot_.doubleClick(*grid_, lowerEdge(1));
    EXPECT_EQ(rowHeight(), before);
    EXPECT_EQ(grid_->Style().RowHeight, 0);
}

TEST_F(SizingTest, EscapeAndAPressWithoutADragLeaveTheRowsAsTheyAre) {
    openSizable();
    const int before = rowHeight();
    robot_.buttonDown(*grid_, lowerEdge(2));
    robot_.moveTo(*grid_, lowerEdge(2) + wxPoint(0, 30));
    robot_.press(WXK_ESCAPE);
    robot_.buttonUp();
    EXPECT_EQ(rowHeight(), before);
    robot_.click(*grid_, lowerEdge(2));
    EXPECT_EQ(grid_->Style().RowHeight, 0);
}

TEST_F(SizingTest, RowsNeverGetLowerThanTheirTextNorHigherThanTheView) {
    openSizable();
    robot_.drag(*grid_, lowerEdge(0), lowerEdge(0) - wxPoint(0, 60));
    const int least = rowHeight();
    EXPECT_GE(least, grid_->GetCharHeight());
    robot_.drag(*grid_, lowerEdge(0), lowerEdge(0) + wxPoint(0, 2000));
    EXPECT_GT(rowHeight(), 10 * least);
    EXPECT_GE(grid_->RowsInView(), 1);
    EXPECT_LE(grid_->RowsInView(), 2);
}

TEST_F(SizingTest, ALayoutOfExtremesLeavesAGridThatCanBeRead) {
    openSizable();
    grid::Layout layout = grid_->Layouts().Present();
    layout.Split.FrozenColumns = 1 << 24;
    layout.Style.RowHeight = 1'000'000;
    layout.Style.MarqueeStyle = 1 << 24;
    layout.Style.DataView = 7;
    layout.Style.GroupColumns = {"citta", "CITTA", "nulla", ""};
    for (grid::LayoutColumn& column : layout.Columns)
        column.Order = 1 << 24;
    layout.Columns[2].Width = 0;
    layout.Columns[3].Width = 1'000'000;
    grid_->Layouts().Apply(layout);
    robot_.pump();
    screenshot(*frame_, "grid_extreme_layout");
    const wxRect cell = grid_->CellRect(0, 0);
    EXPECT_FALSE(cell.IsEmpty());
    EXPECT_LT(cell.GetBottom(), grid_->GetClientSize().y);
    EXPECT_EQ(grid_->LineCount(), rows_->RecordCount());
    grid_->Style().DataView = grid::dataViewGroups;
    grid_->Changed();
    robot_.press(WXK_END, wxMOD_CONTROL);
    EXPECT_EQ(grid_->GroupAreaRect().IsEmpty(), false);
    layout.Style.Font.Size = 1000;
    layout.Style.DataView = grid::dataViewGroups;
    grid_->Layouts().Apply(layout);
    robot_.pump();
    layout.Style.Font.Size = 1e-9;
    grid_->Layouts().Apply(layout);
    robot_.pump();
    EXPECT_FALSE(grid_->CellRect(0, 0).IsEmpty());
}

TEST_F(SizingTest, WithoutLeaveTheEdgeIsAnyPlaceOfTheSelector) {
    openCustomers(1000);
    const int before = rowHeight();
    robot_.drag(*grid_, lowerEdge(2), lowerEdge(2) + wxPoint(0, 40));
    EXPECT_EQ(rowHeight(), before);
    EXPECT_GT(grid_->SelBookmarks().Count(), 1);
    robot_.press('+', wxMOD_ALT);
    EXPECT_EQ(rowHeight(), before);
}

TEST_F(SizingTest, RowsAndTheCurrentColumnAreSizedByKeysToo) {
    openSizable();
    robot_.click(*grid_, cellCentre(3, 1));
    const int height = rowHeight();
    robot_.pressTimes(2, WXK_NUMPAD_ADD, wxMOD_ALT);
    EXPECT_GT(rowHeight(), height);
    robot_.press(WXK_NUMPAD_SUBTRACT, wxMOD_ALT);
    EXPECT_GT(rowHeight(), height);
    robot_.press('0', wxMOD_ALT);
    EXPECT_EQ(rowHeight(), height);

    const int width = grid_->HeadingRect(1).width;
    robot_.pressTimes(3, WXK_NUMPAD_ADD, wxMOD_CONTROL);
    EXPECT_EQ(grid_->HeadingRect(1).width, width + 24);
    robot_.press('-', wxMOD_CONTROL);
    EXPECT_EQ(grid_->HeadingRect(1).width, width + 16);
    grid_->Columns().Item(1).Width = 300;
    robot_.press('0', wxMOD_CONTROL);
    EXPECT_GT(grid_->HeadingRect(1).width, 100) << "as its texts need";
    grid_->SplitAt(0).AllowSizing = false;
    grid_->Changed();
    const int fixed = grid_->HeadingRect(1).width;
    robot_.press(WXK_NUMPAD_ADD, wxMOD_CONTROL);
    EXPECT_EQ(grid_->HeadingRect(1).width, fixed);
}

TEST_F(SizingTest, AHeightOfASmallerFontGrowsWithTheText) {
    openCustomers(100);
    grid_->Style().RowHeight = 280;
    grid_->Changed();
    const int before = rowHeight();
    grid_->Style().Font.Size = 18;
    grid_->Changed();
    robot_.pump();
    EXPECT_GT(rowHeight(), before);
    EXPECT_GE(rowHeight(), grid_->GetCharHeight());
}

TEST_F(SizingTest, TheFirstRowStaysWhenRowsGetHigher) {
    openSizable();
    grid_->SetFirstRow(500);
    robot_.press('+', wxMOD_ALT);
    robot_.drag(*grid_, lowerEdge(0), lowerEdge(0) + wxPoint(0, 25));
    EXPECT_EQ(grid_->FirstRow(), 500);
}

// --- fonts and marks ---

TEST_F(SizingTest, ANotchOfTheWheelPassesOverNoRowHoweverHighTheyAre) {
    openCustomers(1000);
    grid_->Style().RowHeight = 4500; // one row is whole in view
    grid_->Changed();
    ASSERT_EQ(grid_->RowsInView(), 2);
    robot_.wheel(*grid_, cellCentre(0, 1), 1);
    EXPECT_EQ(grid_->FirstRow(), 1);
    robot_.wheel(*grid_, cellCentre(0, 1), -1);
    EXPECT_EQ(grid_->FirstRow(), 0);
}

TEST_F(SizingTest, TheLargestFontOfAStyleHasRoomEverywhere) {
    openCustomers(100);
    const int heading = grid_->HeadingRect(0).height;
    grid_->Style().Font = {"", 18, true, true};
    grid_->Columns().Item(1).FilterText = "gÀqj";
    grid_->Changed();
    robot_.pump();
    const int text = grid_->GetCharHeight();
    EXPECT_GT(grid_->HeadingRect(0).height, heading);
    for (const wxRect& box :
         {grid_->HeadingRect(0), grid_->FilterCellRect(0), grid_->CellRect(0, 0)})
        EXPECT_GT(box.height, text);
    ASSERT_TRUE(grid_->EnterFilterCell(0));
    robot_.type("Àgjq");
    screenshot(*frame_, "grid_font_18");
    grid_->Style().Font = {};
    grid_->Changed();
    EXPECT_EQ(grid_->HeadingRect(0).height, heading) << "and back";
}

// How far apart the brightest and the darkest of the pixels are, that are no text.
wxColour backOf(const wxWindow& window, const wxRect& cell) {
    const wxImage image = imageOf(window, {cell.x + 3, cell.y + 3, 2, 2});
    return {image.GetRed(0, 0), image.GetGreen(0, 0), image.GetBlue(0, 0)};
}

TEST_F(SizingTest, TheMarqueeFramesTheCellAloneOrHighlightsItsRow) {
    openCustomers(100);
    robot_.click(*grid_, cellCentre(3, 1));
    robot_.moveTo(*grid_, cellCentre(9, 1));
    EXPECT_NE(backOf(*grid_, grid_->CellRect(3, 4)), backOf(*grid_, grid_->CellRect(5, 4)));
    grid_->Style().MarqueeStyle = grid::marqueeCell;
    grid_->Changed();
    robot_.pump();
    EXPECT_EQ(backOf(*grid_, grid_->CellRect(3, 4)), backOf(*grid_, grid_->CellRect(5, 4)));
    const wxRect cell = grid_->CellRect(3, 1);
    EXPECT_NE(backOf(*grid_, {cell.x - 3, cell.y + 4, 9, 9}), backOf(*grid_, cell)) << "a frame";
    screenshot(*frame_, "grid_marquee_cell");
    robot_.focus(*after_);
    EXPECT_NE(backOf(*grid_, {cell.x - 3, cell.y + 4, 9, 9}), backOf(*grid_, cell))
        << "which stays when the focus goes";
}

TEST_F(SizingTest, AScrollBarWithoutRoomForAThumbStaysAwayAndKeysScrollAllTheSame) {
    openCustomers(1000);
    grid_->GetParent()->SetSizer(nullptr);
    const auto shortestBar = [&](wxSize size) {
        grid_->SetSize(size);
        robot_.pump();
        int least = 1000; // in thicknesses
        for (const wxWindow* part : grid_->GetChildren())
            if (dynamic_cast<const wxScrollBar*>(part) && part->IsShown()) {
                const wxSize bar = part->GetSize();
                least =
                    std::min(least, std::max(bar.x, bar.y) / std::max(1, std::min(bar.x, bar.y)));
            }
        return least;
    };
    const int headings = grid_->CellRect(0, 0).y;
    EXPECT_LT(shortestBar({400, headings + 200}), 1000) << "there are bars";
    for (const int length : {80, 60, 45, 30, 15, 5, 0}) {
        EXPECT_GE(shortestBar({400, headings + length}), 4) << length << " pixels high";
        EXPECT_GE(shortestBar({length, 300}), 4) << length << " pixels wide";
    }
    shortestBar({400, headings + 30});
    robot_.press(WXK_DOWN);
    EXPECT_EQ(grid_->CurrentRow(), 1);
    EXPECT_EQ(grid_->FirstRow(), 1);
}

} // namespace
} // namespace norvel::tests
