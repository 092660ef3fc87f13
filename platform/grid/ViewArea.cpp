// The selected area: rows, whole or the cells of some columns.
#include "platform/controls/Clipboard.h"
#include "platform/grid/View.h"
#include "platform/grid/model/CopyText.h"

#include <wx/utils.h>

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

bool Grid::View::HasArea() {
    Reader();
    return selection_.Count() > 0 && columns_.Count() > 0;
}

CellArea::Range Grid::View::AreaColumns() {
    return HasArea() ? area_.Indexes(geometry_, columns_.Count()) : CellArea::Range{};
}

// --- selecting ---

// The rows from the anchor to this one, in that direction; of them what was selected before: whole
// rows, or the cells of the same columns. Rows that are added are whole ones. Where a move on the
// way has saved a row, lines may be others than before: it is current_ that was reached.
void Grid::View::selectTo(RowCount row, bool add) {
    if (row < 0 || row >= lines_.Count()) return;
    const CellArea kept = add ? CellArea{} : area_;
    if (!add) selection_.Clear();
    const bool begun = anchor_ >= 0 && anchor_ < lines_.Count();
    if (const auto records = lines_.RowsBetween(begun ? anchor_ : row, row))
        selection_.AddRows(records->first, records->last);
    area_ = kept;
    Refresh();
}

// The cells between the anchor's row, in the column begin, and this row, in the column end.
void Grid::View::selectCells(RowCount row, int begin, int end) {
    area_.Select(begin, end);
    selectTo(row, false);
}

void Grid::View::selectAll() {
    area_.Clear();
    if (lines_.Rows() > 0) selection_.AddRows(0, lines_.Rows() - 1);
    Refresh();
}

// The row and nothing else; of a closed group all its rows.
void Grid::View::selectRow(RowCount row) {
    selection_.Clear();
    if (row < 0) return;
    if (const auto records = lines_.RowsBetween(row, row))
        selection_.AddRows(records->first, records->last);
}

void Grid::View::toggleRow(RowCount row) {
    if (row < 0 || recordOn(row) < 0) return;
    area_.Clear();
    selection_.ToggleRow(recordOn(row));
}

// --- by keys ---

void Grid::View::extendTo(RowCount row) {
    if (selection_.Count() > 0 && !area_.WholeRows(geometry_))
        selectCells(row, area_.Begin(), currentColumn_);
    else
        selectTo(row, false);
}

// The current cell went sideways, from another column.
void Grid::View::cellMoved(bool extend, int from) {
    const bool cells = selection_.Count() > 0 && !area_.WholeRows(geometry_);
    if (extend && current_ >= 0)
        selectCells(current_, cells ? area_.Begin() : from, currentColumn_);
    else if (cells)
        selection_.Clear();
}

// --- by the mouse ---

// The current column is the clicked one by now; fromColumn is the one before.
void Grid::View::shiftClick(const Hit& hit, int fromColumn, bool add) {
    const bool cells = selection_.Count() > 0 && !area_.WholeRows(geometry_);
    const int begin = cells ? area_.Begin() : fromColumn;
    if (hit.spot == Spot::Cell && !add && (cells || hit.column != begin))
        return selectCells(current_, begin, hit.column);
    area_.Clear();
    selectTo(current_, add);
}

// Only a mouse that leaves the pressed cell selects, and takes the mouse's events for the grid.
bool Grid::View::cellDragBegins(bool held) {
    if (!pressed_ || !held || pressedColumn_ < 0 || Rows() == 0) return false;
    const int column = columnUnder(pointer_);
    if (column < 0 || (rowUnder(pointer_.y) == current_ && column == pressedColumn_)) return false;
    drag_ = Drag::Cells;
    dragColumn_ = pressedColumn_;
    if (!grid_.HasCapture()) grid_.CaptureMouse();
    return true;
}

void Grid::View::dragCellsTo(const wxPoint& at) {
    if (drag_ != Drag::Cells || Rows() == 0) return;
    const RowCount row = rowUnder(at.y);
    const int place = geometry_.PlaceReached(at.x);
    if (place < 0) return;
    const int column = geometry_.ColumnAt(place);
    if (row == current_ && column == currentColumn_) return;
    const int begin = dragColumn_;
    if (!reach(row)) return;
    currentSplit_ = geometry_.SplitOf(place);
    SetCurrentColumn(column);
    selectCells(current_, begin, column);
}

// The column that a drag reaches. -1: there are none.
int Grid::View::columnUnder(const wxPoint& at) const {
    const int place = geometry_.PlaceReached(at.x);
    return place < 0 ? -1 : geometry_.ColumnAt(place);
}

// --- copying ---

// What is shown, in the order in which it is shown; the current cell where nothing is selected. Of
// rows that are still arriving those that are there: what an operator sees selected is copied, and
// never waited for.
void Grid::View::copyArea() {
    RowReader* reader = Reader();
    if (!reader || geometry_.ShownCount() == 0) return;
    auto ranges = selection_.Ranges();
    CellArea::PlaceRange places = area_.Places(geometry_);
    if (places.Empty()) places = {0, geometry_.ShownCount()};
    if (ranges.empty()) {
        const RowCount record = current_ < 0 ? -1 : recordOn(current_);
        if (record < 0) return;
        ranges.emplace_back(record, record);
        const int place = geometry_.PlaceOf(currentColumn_);
        places = {place, place + 1};
    }
    std::vector<int> fields;
    for (int place = places.first; place < places.end; ++place)
        fields.push_back(fieldOf(geometry_.ColumnAt(place)));
    const wxBusyCursor busy;
    controls::setClipboardText(copiedRows(*reader, ranges, fields));
}

// --- painting ---

bool Grid::View::isAreaCell(RowCount row, int column) const {
    return !area_.WholeRows(geometry_) && area_.Contains(geometry_, column) && isSelected(row);
}

void Grid::View::paintArea(wxDC& dc, const Geometry::Pane& pane, RowSpan rows) {
    if (area_.WholeRows(geometry_)) return;
    dc.SetBrush(focused() ? palette_.selection : palette_.idleSelection);
    for (int place = pane.first; place < pane.last; ++place)
        for (RowCount row = rows.first; row < rows.last; ++row) {
            if (!isAreaCell(row, geometry_.ColumnAt(place))) continue;
            const Rect cell = geometry_.CellAt(row, place);
            dc.DrawRectangle(cell.x, cell.y, cell.width, cell.height);
        }
}

} // namespace norvel::grid
