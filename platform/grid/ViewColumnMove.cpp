// Moving columns: a heading that is dragged, its mark, and the keyboard's way.
#include "platform/grid/View.h"

#include <wx/settings.h>

#include <algorithm>

namespace norvel::grid {

namespace {

constexpr int edgeScrollPause = 40; // ms

// How far the pointer goes before a press becomes a drag; the system's figure is the whole width of
// the area around the press.
int dragDistance(wxSystemMetric metric, const wxWindow& window) {
    constexpr int unknown = 4;
    const int whole = wxSystemSettings::GetMetric(metric, &window);
    return whole > 0 ? std::max(1, whole / 2) : unknown;
}

} // namespace

void Grid::View::pressHeading(const Hit& hit, const wxPoint& at) {
    drag_ = Drag::Heading;
    dragSplit_ = hit.split;
    dragGrab_ = at.x - draggedFrom(hit.column).x;
    columnDrag_.Press(hit.column, at.x, at.y, dragDistance(wxSYS_DRAG_X, grid_),
                      dragDistance(wxSYS_DRAG_Y, grid_));
    if (!grid_.HasCapture()) grid_.CaptureMouse();
    Refresh();
}

void Grid::View::dragHeadingTo(const wxPoint& at) {
    const bool mayMove = mayMoveColumns(dragSplit_) || style_.DataView == dataViewGroups;
    if (!mayMove || !columnDrag_.Follow(at.x, at.y, geometry_)) return;
    if (!autoScroll_.IsRunning()) autoScroll_.Start(edgeScrollPause);
    Refresh();
}

// Near the edges of the columns that scroll, and beyond them; above frozen ones it lands among
// those.
void Grid::View::scrollWithHeading() {
    if (landing().spot != Spot::Heading) return;
    const int split = columnDrag_.Drop().split;
    const Geometry::Pane pane = geometry_.ScrollingPane(split);
    if (geometry_.FrozenCount(split) > 0 && pointer_.x < pane.left) return;
    const int by = edgeScroll(pointer_.x, pane.left, pane.Right(), pixels(300));
    ScrollAxis& axis = geometry_.Horizontal(split);
    if (by != 0 && axis.SetPosition(axis.Position() + by)) scrolled();
}

void Grid::View::dropHeading() {
    const int column = columnDrag_.Column();
    const ColumnDrop drop = landing();
    endDrag();
    if (drop.spot == Spot::GroupArea) return groupBy(column, drop.place);
    if (columns_.Item(column).Grouped) return dropBox(column, drop);
    if (drop.spot == Spot::Heading && moveColumn(columns_, column, drop.place)) columnMoved(column);
}

// Where the heading, or a box of the grouping area, may land. Columns that may not be moved go to
// the grouping area alone, and come back to where they were.
ColumnDrop Grid::View::landing() const {
    const ColumnDrop drop = columnDrag_.Drop();
    const bool box = columns_.Item(columnDrag_.Column()).Grouped;
    if (drop.spot == Spot::Heading && !box && !mayMoveColumns(dragSplit_)) return {};
    return drop;
}

void Grid::View::moveColumnBy(Side side) {
    const int place = geometry_.PlaceOf(currentColumn_);
    if (!mayMoveColumns(currentSplit_) || place < 0) return;
    if (moveColumn(columns_, currentColumn_, side == Side::Left ? place - 1 : place + 2))
        columnMoved(currentColumn_);
}

void Grid::View::columnMoved(int column) {
    Layout();
    ShowCell(-1, column);
    Refresh();
    if (grid_.OnColumnMoved) grid_.OnColumnMoved(column);
}

// The heading, or the box in the grouping area, that is taken hold of.
Rect Grid::View::draggedFrom(int column) const {
    if (columns_.Item(column).Grouped) return geometry_.BoxOf(column);
    return geometry_.HeadingAt(geometry_.PlaceOf(column, dragSplit_));
}

// Over everything else: where the heading would land, and a picture of it at the pointer.
void Grid::View::paintColumnDrag(wxDC& dc) {
    const Rect own = draggedFrom(columnDrag_.Column());
    const int widest = pixels(3000);
    const int width = std::min(own.width, widest);
    const wxRect box(columnDrag_.X() - std::min(width / 2, dragGrab_),
                     columnDrag_.Y() - own.height / 2, width, own.height);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.facePressed);
    dc.DrawRectangle(box);
    const bool lands = landing().spot != Spot::Outside;
    paintFrame(dc, box, 1, lands ? palette_.focus : palette_.faceLine);
    const wxRect text = wxRect(box).Deflate(pixels(cellMarginTwips() / 2), 0);
    painter_->Begin(dc, box);
    painter_->Draw(columns_.Item(columnDrag_.Column()).Caption, text, Alignment::Left,
                   Overflow::Ellipsis, lands ? palette_.faceText : palette_.greyText);
    painter_->End();
    paintDropMark(dc);
}

// A strong line at the border, with an arrow head at both ends.
void Grid::View::paintDropMark(wxDC& dc) {
    const ColumnDrop drop = landing();
    if (drop.spot == Spot::Outside) return;
    const bool grouping = drop.spot == Spot::GroupArea;
    const int thick = std::max(2, pixels(30));
    const int head = pixels(75);
    const int top = grouping ? 0 : geometry_.Sizes().areaHeight;
    const int bottom = grouping ? geometry_.Sizes().areaHeight : geometry_.DataTop();
    const Rect area = geometry_.SplitArea(drop.split);
    const int x = grouping ? geometry_.Boxes().BorderAt(drop.place)
                           : std::clamp(geometry_.BorderAt(drop), area.x, area.x + area.width);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.focus);
    dc.DrawRectangle(x - thick / 2, top, thick, bottom - top);
    const wxPoint above[] = {{-head, 0}, {head, 0}, {0, head}};
    const wxPoint below[] = {{-head, 0}, {head, 0}, {0, -head}};
    dc.DrawPolygon(3, above, x, top);
    dc.DrawPolygon(3, below, x, bottom);
}

} // namespace norvel::grid
