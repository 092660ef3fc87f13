// The grouping area above the headings: a box for each column that the rows are grouped by.
#include "platform/grid/View.h"

#include <algorithm>

namespace norvel::grid {

namespace {

constexpr const char* emptyAreaHint =
    "Trascinare qui l'intestazione di una colonna per raggruppare (Ctrl+G)";

} // namespace

void Grid::View::arrangeGroupBoxes() {
    std::vector<GroupBoxes::Box> wishes;
    wishes.reserve(groups_.size());
    const int margin = pixels(cellMarginTwips());
    for (const int column : groups_)
        wishes.push_back({column, 0, painter_->Width(columns_.Item(column).Caption) + margin + 2});
    geometry_.Boxes().Arrange(std::move(wishes), 0, geometry_.Sizes().width, pixels(120));
}

// A box that leaves the area ends the grouping by its column. Let go among the headings the column
// stands there, where columns may be moved; else it comes back to where it was.
void Grid::View::dropBox(int column, const ColumnDrop& drop) {
    bool moved = false;
    if (drop.spot == Spot::Heading && mayMoveColumns(drop.split)) {
        columns_.Item(column).Grouped = false;
        const auto shown = columns_.Ungrouped();
        const auto own = static_cast<int>(std::ranges::find(shown, column) - shown.begin());
        moved = moveColumn(columns_, column, drop.place < own ? drop.place : drop.place + 1);
    }
    const wxWeakRef<Grid> alive(&grid_);
    ungroup(column);
    if (moved && alive && !alive->IsBeingDeleted() && alive->OnColumnMoved)
        alive->OnColumnMoved(column);
}

wxRect Grid::View::boxTextBox(int column) const {
    const Rect box = geometry_.BoxOf(column);
    const int margin = pixels(cellMarginTwips() / 2);
    return {box.x + margin, box.y, box.width - 2 * margin, box.height};
}

void Grid::View::paintGroupArea(wxDC& dc) {
    const Measures& sizes = geometry_.Sizes();
    if (sizes.areaHeight == 0) return;
    const wxRect area(0, 0, grid_.GetClientSize().x, sizes.areaHeight);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.faceHot);
    dc.DrawRectangle(area);
    dc.SetBrush(palette_.faceLine);
    dc.DrawRectangle(0, area.height - 1, area.width, 1);
    for (const GroupBoxes::Box& box : geometry_.Boxes().All())
        paintGroupBox(dc, box);
    const int margin = pixels(cellMarginTwips() / 2);
    painter_->Begin(dc, area);
    for (const GroupBoxes::Box& box : geometry_.Boxes().All())
        painter_->Draw(columns_.Item(box.column).Caption, boxTextBox(box.column), Alignment::Left,
                       Overflow::Ellipsis, palette_.faceText);
    const bool empty = geometry_.Boxes().All().empty();
    if (empty || !groupError_.empty()) {
        const wxRect hint(2 * margin, 0, area.width - 4 * margin, area.height - 1);
        painter_->Draw(groupError_.empty() ? emptyAreaHint : groupError_, hint, Alignment::Left,
                       Overflow::Ellipsis, palette_.faceText);
    }
    painter_->End();
}

// All of a box but its text, and a line that leads from the one before.
void Grid::View::paintGroupBox(wxDC& dc, const GroupBoxes::Box& box) {
    const Rect r = geometry_.BoxOf(box.column);
    const wxRect frame(r.x, r.y, r.width, r.height);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(columnDrag_.Column() == box.column ? palette_.facePressed : palette_.face);
    dc.DrawRectangle(frame);
    paintFrame(dc, frame, std::max(1, pixels(15)), palette_.faceLine);
    if (box.column == groups_.front()) return;
    const int gap = pixels(120);
    dc.DrawRectangle(r.x - gap, r.y + r.height / 2, gap, std::max(1, pixels(15)));
}

} // namespace norvel::grid
