// Clicks, double-clicks, dragging: see the contract in Grid.h.
#include "platform/grid/View.h"
#include "platform/runtime/Twips.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

namespace {

constexpr int autoScrollPause = 40; // ms

} // namespace

void Grid::View::bindMouse() {
    const auto bind = [this](const auto& type, void (View::*handler)(wxMouseEvent&)) {
        grid_.Bind(type,
                   [this, handler](wxMouseEvent& e) { guarded([&] { (this->*handler)(e); }); });
    };
    bind(wxEVT_LEFT_DOWN, &View::onLeftDown);
    bind(wxEVT_LEFT_DCLICK, &View::onDoubleClick);
    bind(wxEVT_LEFT_UP, &View::onLeftUp);
    bind(wxEVT_MOTION, &View::onMotion);
    grid_.Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& e) {
        setHotColumn(-1);
        e.Skip();
    });
    grid_.Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
        pressed_ = false;
        endDrag();
    });
    autoScroll_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { guarded([&] { autoScroll(); }); });
}

Hit Grid::View::hitAt(const wxPoint& at) const {
    Hit hit = geometry_.HitTest(at.x, at.y, columns_);
    const bool onLine = hit.spot == Spot::Cell || hit.spot == Spot::RowBackground;
    if (onLine && !groups_.empty() && recordOn(hit.row) < 0) {
        hit.spot =
            GroupSign(hit.row).Inflate(pixels(45)).Contains(at) ? Spot::GroupSign : Spot::GroupLine;
        hit.column = -1;
    }
    return hit;
}

void Grid::View::onLeftDown(wxMouseEvent& event) {
    clickedRow_ = hitAt(event.GetPosition()).row;
    press(event);
}

void Grid::View::press(wxMouseEvent& event) {
    const Hit hit = hitAt(event.GetPosition());
    pressed_ = true;
    pressedColumn_ = -1;
    opensOnRelease_ = false;
    const bool inFilter = hit.spot == Spot::FilterCell || hit.spot == Spot::FilterButton;
    if (!inFilter) {
        LeaveFilter(false);
        grid_.SetFocus();
    }
    hideTip();
    if (!settlePress(hit)) {
        pressed_ = false;
        return;
    }
    if (hit.row >= 0 && hit.spot != Spot::RowEdge)
        pressRow(hit, event);
    else
        pressHeadings(hit, event.GetPosition());
}

void Grid::View::pressRow(const Hit& hit, const wxMouseEvent& event) {
    if (pressGroup(hit, event)) return;
    const bool add = event.ControlDown();
    const int fromColumn = currentColumn_;
    const bool wasCurrent = hit.row == current_ && hit.column == fromColumn;
    if (hit.column >= 0) {
        currentSplit_ = hit.split;
        SetCurrentColumn(hit.column);
    }
    // The row that was hit may stand on another line by now: saving the one before moved it.
    const bool extend = event.ShiftDown();
    if (!(extend ? reach(hit.row) : MoveTo(hit.row)) || current_ < 0) return;
    if (extend) {
        shiftClick(hit, fromColumn, add);
    } else if (add) {
        toggleRow(current_);
    } else {
        if (hit.spot == Spot::RecordSelector)
            selectRow(current_);
        else
            selection_.Clear();
        if (hit.spot == Spot::Cell) pressedColumn_ = hit.column;
        pressEditable(hit, event.GetPosition(), wasCurrent);
    }
    if (hit.spot == Spot::RecordSelector && !grid_.HasCapture()) {
        drag_ = Drag::Rows;
        dragAdds_ = add;
        grid_.CaptureMouse();
    }
}

void Grid::View::pressHeadings(const Hit& hit, const wxPoint& at) {
    if (hit.spot == Spot::HeadingEdge || hit.spot == Spot::RowEdge) {
        pressEdge(hit, at);
    } else if (hit.spot == Spot::Heading || hit.spot == Spot::GroupBox) {
        pressHeading(hit, at);
    } else if (hit.spot == Spot::FilterCell) {
        EnterFilter(hit.column, false);
    } else if (hit.spot == Spot::FilterButton) {
        if (grid_.OnFilterButton) grid_.OnFilterButton(hit.column);
    } else if (hit.spot == Spot::Corner) {
        selectAll();
    }
}

// A double-click chooses only where both clicks hit the same data row; on the line of a group it
// opens or closes.
void Grid::View::onDoubleClick(wxMouseEvent& event) {
    const Hit hit = hitAt(event.GetPosition());
    if (hit.spot == Spot::HeadingEdge) return FitColumn(hit.column);
    if (hit.spot == Spot::RowEdge) return setRowHeight(0);
    const bool sameRow = hit.row >= 0 && hit.row == clickedRow_;
    press(event);
    if (hit.spot == Spot::GroupLine && sameRow && !event.HasAnyModifiers()) toggle(hit.row);
    const bool onData = hit.spot == Spot::Cell || hit.spot == Spot::RowBackground;
    if (!onData || !sameRow || event.HasAnyModifiers() || current_ != hit.row) return;
    if (hit.spot == Spot::Cell && canEdit(hit.column)) return; // the second click opens the cell
    if (!EndEdit()) return;
    if (grid_.OnDblClick) grid_.OnDblClick();
}

void Grid::View::onLeftUp(wxMouseEvent& event) {
    if (!pressed_) return event.Skip();
    pressed_ = false;
    // Where it is let go counts, whether or not the last way there was told as a motion.
    pointer_ = event.GetPosition();
    if (drag_ == Drag::Heading) dragHeadingTo(pointer_);
    if (drag_ == Drag::Sizing && pointer_.x != dragStart_) sizeColumn(pointer_.x);
    const Hit hit = hitAt(pointer_);
    const int column = columnDrag_.Column();
    const bool head = drag_ == Drag::Heading && hit.column == column && !columnDrag_.Moving() &&
                      (hit.spot == Spot::Heading || hit.spot == Spot::HeadingEdge);
    const wxWeakRef<Grid> alive(&grid_);
    if (columnDrag_.Moving()) return dropHeading();
    if (drag_ == Drag::RowSizing) return dropRowEdge();
    const bool opens = std::exchange(opensOnRelease_, false) && drag_ == Drag::None;
    endDrag();
    if (opens) BeginEdit(currentColumn_, CellEditor::Caret::AtEnd);
    if (head && grid_.OnHeadClick) grid_.OnHeadClick(column);
    if (alive && !alive->IsBeingDeleted() && alive->OnClick) alive->OnClick();
}

void Grid::View::endDrag() {
    autoScroll_.Stop();
    if (grid_.HasCapture()) grid_.ReleaseMouse();
    if (drag_ != Drag::None) Refresh();
    drag_ = Drag::None;
    dragColumn_ = -1;
    columnDrag_.End();
}

// The columns are others than those that were dragged.
void Grid::View::endColumnDrag() {
    if (drag_ == Drag::Heading || drag_ == Drag::Sizing) endDrag();
}

// Esc: what was dragged is as it was before. What was selected stays.
void Grid::View::cancelDrag() {
    if (drag_ == Drag::Sizing) {
        columns_.Item(dragColumn_).Width = dragWidth_;
        Layout();
    }
    pressed_ = false;
    endDrag();
}

void Grid::View::onMotion(wxMouseEvent& event) {
    pointer_ = event.GetPosition();
    switch (drag_) {
    case Drag::Sizing:
        return sizeColumn(pointer_.x);
    case Drag::RowSizing:
        return Refresh();
    case Drag::Rows:
        scrollOutside(!inData({geometry_.Data().x, pointer_.y}));
        return dragRowsTo(pointer_.y);
    case Drag::Cells:
        scrollOutside(!inData(pointer_));
        return dragCellsTo(pointer_);
    case Drag::Heading:
        return dragHeadingTo(pointer_);
    case Drag::None:
        if (cellDragBegins(event.LeftIsDown())) return dragCellsTo(pointer_);
        break;
    }
    updatePointer(pointer_);
    event.Skip();
}

bool Grid::View::inData(const wxPoint& at) const {
    return geometry_.Data().Contains(at.x, at.y);
}

// While the mouse is held outside the rows the drag goes on by itself.
void Grid::View::scrollOutside(bool outside) {
    if (outside && !autoScroll_.IsRunning()) autoScroll_.Start(autoScrollPause);
    if (!outside) autoScroll_.Stop();
}

void Grid::View::autoScroll() {
    if (drag_ == Drag::Heading) return scrollWithHeading();
    if (drag_ == Drag::Cells) return dragCellsTo(pointer_);
    dragRowsTo(pointer_.y);
}

void Grid::View::dragRowsTo(int y) {
    if (drag_ != Drag::Rows || Rows() == 0) return;
    const RowCount row = rowUnder(y);
    if (row == current_) return;
    if (reach(row)) selectTo(current_, dragAdds_);
}

// The row that a drag reaches; above and below the rows in view the ones that come next, the more
// the farther.
RowCount Grid::View::rowUnder(int y) const {
    const Rect data = geometry_.Data();
    const int beyond = y < data.y ? y - data.y : std::max(0, y - (data.y + data.height));
    RowCount row = geometry_.FirstRow();
    if (beyond < 0) {
        row -= 1 + -beyond / geometry_.Sizes().rowHeight;
    } else if (beyond > 0) {
        row += geometry_.WholeRows() + beyond / geometry_.Sizes().rowHeight;
    } else {
        row = (geometry_.Vertical().Position() + y - data.y) / geometry_.Sizes().rowHeight;
    }
    return std::clamp<RowCount>(row, 0, Rows() - 1);
}

void Grid::View::updatePointer(const wxPoint& at) {
    const Hit hit = hitAt(at);
    wxStockCursor shape = wxCURSOR_DEFAULT;
    if (hit.spot == Spot::HeadingEdge) shape = wxCURSOR_SIZEWE;
    if (hit.spot == Spot::RowEdge) shape = wxCURSOR_SIZENS;
    if (hit.spot == Spot::FilterCell) shape = wxCURSOR_IBEAM;
    if (shape != pointerShape_) {
        pointerShape_ = shape;
        grid_.SetCursor(shape == wxCURSOR_DEFAULT ? wxNullCursor : wxCursor(shape));
    }
    const bool heading = hit.spot == Spot::Heading || hit.spot == Spot::HeadingEdge;
    setHotColumn(heading ? hit.column : -1);
    showTip(hit);
}

void Grid::View::setHotColumn(int column) {
    if (column == hotColumn_) return;
    hotColumn_ = column;
    const Measures& sizes = geometry_.Sizes();
    grid_.RefreshRect({0, 0, sizes.width, geometry_.FilterTop()}, false);
}

} // namespace norvel::grid
