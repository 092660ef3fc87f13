// Painting what stands around the data rows: headings, filter bar, record selectors.
#include "platform/grid/View.h"

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

namespace {

// A small triangle; down: pointing down, otherwise to the right.
void drawTriangle(wxDC& dc, const wxPoint& centre, int size, bool down, const wxColour& colour) {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(colour);
    const int half = size / 2;
    if (down) {
        const wxPoint points[] = {{-size, -half}, {size, -half}, {0, size - half}};
        dc.DrawPolygon(3, points, centre.x, centre.y);
    } else {
        const wxPoint points[] = {{-half, -size}, {-half, size}, {size - half, 0}};
        dc.DrawPolygon(3, points, centre.x, centre.y);
    }
}

// A pencil, the sign of a row that is being changed, in a box.
void drawPencil(wxDC& dc, const wxRect& box, const wxColour& colour) {
    const int unit = std::max(1, std::min(box.width, box.height) / 8);
    const wxPoint shaft[] = {{-unit, 0}, {2 * unit, -3 * unit}, {3 * unit, -2 * unit}, {0, unit}};
    const wxPoint tip[] = {{-unit, unit / 2}, {-unit / 2, unit}, {-2 * unit, 2 * unit}};
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(colour);
    const int x = box.x + box.width / 2 - unit / 2;
    const int y = box.y + box.height / 2 + unit / 2;
    dc.DrawPolygon(4, shaft, x, y);
    dc.DrawPolygon(3, tip, x, y);
}

// A funnel, the sign of a filter, in a box.
void drawFunnel(wxDC& dc, const wxRect& box, const wxColour& colour) {
    const int half = std::max(3, std::min(box.width, box.height) / 4);
    const int stem = std::max(1, half / 3);
    const wxPoint points[] = {{-half, -half}, {half, -half},        {stem, stem - 1},
                              {stem, half},   {-stem, half - stem}, {-stem, stem - 1}};
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(colour);
    dc.DrawPolygon(6, points, box.x + box.width / 2, box.y + box.height / 2);
}

} // namespace

void Grid::View::paintHeadings(wxDC& dc) {
    const Measures& sizes = geometry_.Sizes();
    const int whole = grid_.GetClientSize().x;
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.face);
    dc.DrawRectangle(0, sizes.areaHeight, whole, sizes.headingHeight);
    dc.SetBrush(palette_.faceLine);
    dc.DrawRectangle(0, geometry_.FilterTop() - 1, whole, 1);
    dc.DrawRectangle(sizes.selectorWidth - 1, sizes.areaHeight, 1, sizes.headingHeight);
    for (const Geometry::Pane& pane : geometry_.Panes()) {
        const wxRect room(pane.left, sizes.areaHeight, pane.width, sizes.headingHeight);
        {
            const wxDCClipper clip(dc, room);
            for (int place = pane.first; place < pane.last; ++place)
                paintHeading(dc, place);
        }
        painter_->Begin(dc, room);
        for (int place = pane.first; place < pane.last; ++place) {
            const Column& column = columns_.Item(geometry_.ColumnAt(place));
            painter_->Draw(column.Caption, headingTextBox(place), alignmentOf(column),
                           Overflow::Ellipsis, palette_.faceText);
        }
        painter_->End();
    }
}

// All of a heading but its text.
void Grid::View::paintHeading(wxDC& dc, int place) {
    const int index = geometry_.ColumnAt(place);
    const Rect cell = geometry_.HeadingAt(place);
    const bool pressed = columnDrag_.Column() == index;
    dc.SetPen(*wxTRANSPARENT_PEN);
    if (pressed || (drag_ == Drag::None && hotColumn_ == index)) {
        dc.SetBrush(pressed ? palette_.facePressed : palette_.faceHot);
        dc.DrawRectangle(cell.x, cell.y, cell.width, cell.height - 1);
    }
    dc.SetBrush(palette_.faceLine);
    dc.DrawRectangle(cell.x + cell.width - 1, cell.y, 1, cell.height);
    const Column& column = columns_.Item(index);
    const wxRect box = pictureBox(column, headingRoom(place));
    if (box.IsEmpty()) return;
    const wxBitmap& picture =
        headingPicture_.Bitmap(column.Heading, box.GetSize(), grid_.GetContentScaleFactor());
    dc.DrawBitmap(picture, box.GetPosition(), true);
}

// Where a heading's picture stands: at the right edge of the room for its text. Empty: none shown.
wxRect Grid::View::pictureBox(const Column& column, const wxRect& room) const {
    const wxSize size = HeadingPicture::Size(column.Heading, Scale(), textHeight_);
    if (size.x == 0 || size.x > room.width) return {};
    return {room.x + room.width - size.x, room.y + (room.height - size.y) / 2, size.x, size.y};
}

// A margin at both sides, the line at the right and the lower one left out.
wxRect Grid::View::textBox(const Rect& cell) const {
    const int margin = pixels(cellMarginTwips() / 2);
    return {cell.x + margin, cell.y, cell.width - 2 * margin - 1, cell.height - 1};
}

wxRect Grid::View::headingRoom(int place) const {
    return textBox(geometry_.HeadingAt(place));
}

wxRect Grid::View::headingTextBox(int place) const {
    wxRect box = headingRoom(place);
    const wxRect picture = pictureBox(columns_.Item(geometry_.ColumnAt(place)), box);
    if (!picture.IsEmpty()) box.width = std::max(0, picture.x - pixels(30) - box.x);
    return box;
}

wxRect Grid::View::filterTextBox(int column) const {
    wxRect box = textBox(geometry_.FilterCell(column));
    if (columns_.Item(column).FilterCombo) box.width -= geometry_.Sizes().filterButtonWidth;
    return box;
}

void Grid::View::paintFilterBar(wxDC& dc) {
    const Measures& sizes = geometry_.Sizes();
    const int whole = grid_.GetClientSize().x;
    const int top = geometry_.FilterTop();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.filterBack);
    dc.DrawRectangle(0, top, whole, sizes.filterHeight);
    dc.SetBrush(palette_.face);
    dc.DrawRectangle(0, top, sizes.selectorWidth, sizes.filterHeight);
    dc.SetBrush(palette_.faceLine);
    dc.DrawRectangle(0, top + sizes.filterHeight - 1, whole, 1);
    dc.DrawRectangle(sizes.selectorWidth - 1, top, 1, sizes.filterHeight);
    drawFunnel(dc, {0, top, sizes.selectorWidth - 1, sizes.filterHeight - 1}, palette_.filterHint);
    for (const Geometry::Pane& pane : geometry_.Panes())
        if (pane.split == 0) paintFilterTexts(dc, pane);
    if (SplitCount() == 1) return;
    const int others = geometry_.SplitArea(1).x;
    dc.SetBrush(palette_.face);
    dc.DrawRectangle(others, top, std::max(0, whole - others), sizes.filterHeight - 1);
}

void Grid::View::paintFilterTexts(wxDC& dc, const Geometry::Pane& pane) {
    const Measures& sizes = geometry_.Sizes();
    const wxRect room(pane.left, geometry_.FilterTop(), pane.width, sizes.filterHeight);
    {
        const wxDCClipper clip(dc, room);
        for (int place = pane.first; place < pane.last; ++place)
            paintFilterCell(dc, geometry_.ColumnAt(place));
    }
    painter_->Begin(dc, room);
    for (int place = pane.first; place < pane.last; ++place) {
        const int index = geometry_.ColumnAt(place);
        if (index != filterColumn_)
            painter_->Draw(columns_.Item(index).FilterText, filterTextBox(index), Alignment::Left,
                           Overflow::Ellipsis, palette_.text);
    }
    painter_->End();
}

// All of a filter cell but its text.
void Grid::View::paintFilterCell(wxDC& dc, int index) {
    const Rect cell = geometry_.FilterCell(index);
    const wxRect inner(cell.x, cell.y, cell.width - 1, cell.height - 1);
    const bool marked = !columns_.Item(index).FilterError.empty();
    dc.SetPen(*wxTRANSPARENT_PEN);
    if (marked) {
        dc.SetBrush(palette_.errorBack);
        dc.DrawRectangle(inner);
    }
    dc.SetBrush(palette_.faceLine);
    dc.DrawRectangle(cell.x + cell.width - 1, cell.y, 1, cell.height);
    if (columns_.Item(index).FilterCombo) {
        const Rect b = geometry_.FilterButton(index);
        paintFilterButton(dc, {b.x, b.y, b.width - 1, b.height - 1});
    }
    if (marked)
        paintFrame(dc, inner, pixels(markTwips), palette_.error);
    else if (index == filterColumn_)
        paintFrame(dc, inner, 1, palette_.focus);
}

void Grid::View::paintFilterButton(wxDC& dc, const wxRect& box) {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.face);
    dc.DrawRectangle(box);
    dc.SetBrush(palette_.faceLine);
    dc.DrawRectangle(box.x, box.y, 1, box.height);
    drawTriangle(dc, {box.x + box.width / 2, box.y + box.height / 2}, std::max(3, pixels(60)), true,
                 palette_.faceText);
}

// A strip of headings for rows; the current one bears a mark.
void Grid::View::paintSelectors(wxDC& dc, const wxRect& dirty) {
    const Measures& sizes = geometry_.Sizes();
    if (sizes.selectorWidth == 0 || dirty.x >= sizes.selectorWidth) return;
    const RowCount first = geometry_.FirstRow();
    const RowCount last = first + geometry_.RowsInView();
    const int bottom = geometry_.RowTop(last);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.face);
    dc.DrawRectangle(0, geometry_.DataTop(), sizes.selectorWidth, bottom - geometry_.DataTop());
    dc.SetBrush(palette_.facePressed);
    for (RowCount row = first; row < last; ++row)
        if (isSelected(row))
            dc.DrawRectangle(0, geometry_.RowTop(row), sizes.selectorWidth, sizes.rowHeight);
    dc.SetBrush(palette_.faceLine);
    dc.DrawRectangle(sizes.selectorWidth - 1, geometry_.DataTop(), 1, bottom - geometry_.DataTop());
    for (RowCount row = first; row < last; ++row)
        dc.DrawRectangle(0, geometry_.RowTop(row + 1) - 1, sizes.selectorWidth, 1);
    if (current_ < first || current_ >= last) return;
    const wxRect mark(0, geometry_.RowTop(current_), sizes.selectorWidth - 1, sizes.rowHeight - 1);
    if (cellEditor_.IsOpen() || rowEdit_.Pending()) return drawPencil(dc, mark, palette_.faceText);
    drawTriangle(dc, {sizes.selectorWidth / 2, geometry_.RowTop(current_) + sizes.rowHeight / 2},
                 std::max(3, pixels(75)), false, palette_.faceText);
}

// Where the two scroll bars meet, and beside the headings above the vertical one.
void Grid::View::paintScrollCorner(wxDC& dc) {
    const wxSize client = grid_.GetClientSize();
    const Measures& sizes = geometry_.Sizes();
    if (sizes.width >= client.x || sizes.height >= client.y) return;
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.face);
    dc.DrawRectangle(sizes.width, sizes.height, client.x - sizes.width, client.y - sizes.height);
}

} // namespace norvel::grid
