// Sizing columns by their headings' edges and rows by those of the record selectors; and by keys.
#include "platform/grid/View.h"
#include "platform/grid/model/DefaultColumns.h"
#include "platform/runtime/Twips.h"

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

void Grid::View::pressEdge(const Hit& hit, const wxPoint& at) {
    const bool ofColumn = hit.spot == Spot::HeadingEdge;
    drag_ = ofColumn ? Drag::Sizing : Drag::RowSizing;
    dragColumn_ = hit.column;
    dragRow_ = hit.row;
    dragStart_ = ofColumn ? at.x : at.y;
    if (ofColumn) {
        dragWidth_ = columns_.Item(hit.column).Width;
        dragPixels_ = geometry_.ColumnWidth(geometry_.PlaceOf(hit.column));
    }
    if (!grid_.HasCapture()) grid_.CaptureMouse();
}

// --- columns ---

// From the width that is seen, so that the edge stays with the mouse to the pixel.
void Grid::View::sizeColumn(int x) {
    setColumnWidth(dragColumn_, pixelsToTwips(dragPixels_ + x - dragStart_, Scale()));
}

void Grid::View::setColumnWidth(int column, double twips) {
    columns_.Item(column).Width = std::max(minColumnWidth, twips);
    Layout();
    Refresh();
}

void Grid::View::sizeCurrentColumn(Sizing sizing) {
    if (geometry_.PlaceOf(currentColumn_) < 0 || !geometry_.AllowsSizing(currentSplit_)) return;
    if (sizing == Sizing::Fit) return FitColumn(currentColumn_);
    const int seen = geometry_.ColumnWidth(geometry_.PlaceOf(currentColumn_));
    const double by = sizing == Sizing::Larger ? columnWidthStep : -columnWidthStep;
    setColumnWidth(currentColumn_, pixelsToTwips(seen, Scale()) + by);
    ShowCell(-1, currentColumn_);
}

void Grid::View::FitColumn(int column) {
    Column& sized = columns_.Item(column);
    std::vector<std::string> texts;
    try {
        Fill(geometry_.FirstRow(), geometry_.RowsInView(), {column});
    } catch (const Errore& error) {
        return report(error);
    }
    for (int i = 0; i < geometry_.RowsInView(); ++i)
        if (const std::string* text = cellAt(geometry_.FirstRow() + i, column))
            texts.push_back(*text);
    sized.Width = fittingWidth(
        sized.Caption, texts, [this](std::string_view t) { return textTwips(t); },
        cellFrameTwips());
    Layout();
    Refresh();
}

// --- rows ---

RowHeights Grid::View::rowHeights() const {
    const auto twips = [this](int height) { return pixelsToTwips(height, Scale()); };
    return {twips(fontRowHeight()), twips(textHeight_ + 2), twips(geometry_.DataHeight())};
}

void Grid::View::setRowHeight(double twips) {
    style_.RowHeight = twips;
    Layout();
    Refresh();
}

void Grid::View::sizeRows(Sizing sizing) {
    if (!geometry_.AllowsRowSizing()) return;
    if (sizing == Sizing::Fit) return setRowHeight(0);
    const bool inView = !geometry_.RowRect(current_).Empty();
    const double now = pixelsToTwips(rowHeight(), Scale());
    setRowHeight(nextRowHeight(now, sizing == Sizing::Larger, rowHeights()));
    if (inView) ShowCell(current_, -1);
}

// What the row whose edge is dragged would get, and all others with it.
double Grid::View::draggedRowHeight() const {
    const int height = geometry_.Sizes().rowHeight + pointer_.y - dragStart_;
    return chosenRowHeight(pixelsToTwips(height, Scale()), rowHeights());
}

// A press that was no drag changes nothing.
void Grid::View::dropRowEdge() {
    const bool dragged = pointer_.y != dragStart_;
    endDrag();
    if (dragged) setRowHeight(draggedRowHeight());
}

// Where the dragged edge would be; the rows themselves follow when it is let go, since all of them
// change and the edge would run away from the mouse.
void Grid::View::paintRowSizing(wxDC& dc) {
    const double twips = draggedRowHeight();
    const int height = twips > 0 ? pixels(twips) : fontRowHeight();
    const int thick = std::max(2, pixels(30));
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.focus);
    dc.DrawRectangle(0, geometry_.RowTop(dragRow_) + height - thick, geometry_.Sizes().width,
                     thick);
}

} // namespace norvel::grid
