// Keys and clicks that begin, continue and end the editing of data cells.
#include "platform/grid/View.h"
#include "platform/grid/groups/GroupKeys.h"

namespace norvel::grid {

using adodb::RowCount;

namespace {

bool isEnter(int code) {
    return code == WXK_RETURN || code == WXK_NUMPAD_ENTER;
}

} // namespace

// In the data rows, before the host is asked: what belongs to a row that is being changed.
bool Grid::View::rowEditKey(const wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (!allowUpdate_ || event.GetModifiers() & ~wxMOD_SHIFT) return false;
    if (code == WXK_TAB && canEdit(currentColumn_)) return editNext(!event.ShiftDown());
    if (event.ShiftDown()) return false;
    if (rowEdit_.Pending() && isEnter(code)) {
        EndEdit();
        return true;
    }
    if (rowEdit_.Pending() && code == WXK_ESCAPE) {
        undoRow();
        return true;
    }
    if (code == WXK_F2 && canEdit(currentColumn_)) {
        if (isCheckBox(currentColumn_)) return false;
        return BeginEdit(currentColumn_, CellEditor::Caret::AtEnd);
    }
    return false;
}

// In the field over the cell.
bool Grid::View::editorKey(const wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (event.GetModifiers() == wxMOD_CONTROL && code == 'A') {
        cellEditor_.SelectAll();
        return true;
    }
    if (isEnter(code) && cellEditor_.SeveralLines() && event.GetModifiers() == wxMOD_CONTROL) {
        cellEditor_.BreakLine();
        return true;
    }
    if (event.GetModifiers() & ~wxMOD_SHIFT) return false;
    if (code == WXK_TAB) return editNext(!event.ShiftDown());
    if (event.ShiftDown()) return isEnter(code);
    if (isEnter(code))
        EndEdit();
    else if (code == WXK_ESCAPE)
        undoCell();
    else
        return editorMove(event);
    return true;
}

// Keys that go up and down leave the row, where the text has one line.
bool Grid::View::editorMove(const wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_F2) return true;
    if (cellEditor_.SeveralLines()) return false;
    switch (event.GetKeyCode()) {
    case WXK_UP:
    case WXK_NUMPAD_UP:
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
        if (EndEdit()) run(commandFor(strokeOf(event)));
        return true;
    default:
        return false;
    }
}

// A character typed over a cell takes the place of what is there; a blank switches a check box. On
// the line of a group it may be a sign that opens and closes.
bool Grid::View::typed(const wxKeyEvent& event) {
    const wxUniChar character(event.GetUnicodeKey());
    const auto code = character.GetValue();
    const bool altGr = event.ControlDown() && event.AltDown();
    if (code < 0x20 || code == 0x7F || (event.HasModifiers() && !altGr)) return false;
    if (FocusArea() != Area::Data) return false;
    if (onGroup()) return runGroupCommand({signOf(static_cast<char32_t>(code))});
    if (!canEdit(currentColumn_)) return false;
    if (isCheckBox(currentColumn_)) {
        if (code == ' ') switchCheckBox(currentColumn_);
        return true;
    }
    if (BeginEdit(currentColumn_, CellEditor::Caret::SelectAll))
        cellEditor_.Type(wxString(character).utf8_string());
    return true;
}

// The next line in that direction that is a row; -1: there is none.
RowCount Grid::View::rowBeyond(RowCount row, int step) const {
    do
        row += step;
    while (row >= 0 && row < Rows() && recordOn(row) < 0);
    return row < Rows() ? row : -1;
}

// To the next cell that can be edited, in this row and then in the next one, whose turn comes once
// this one is saved. Past the last cell of all: false, and the row is saved.
bool Grid::View::editNext(bool forward) {
    if (!leaveCell()) return true;
    const int step = forward ? 1 : -1;
    int place = geometry_.PlaceOf(currentColumn_) + step;
    RowCount row = current_;
    for (;; place += step) {
        if (place < 0 || place >= geometry_.ShownCount()) {
            if (row != current_) return !EndEdit();
            row = rowBeyond(row, step);
            if (row < 0) return !EndEdit();
            place = forward ? 0 : geometry_.ShownCount() - 1;
        }
        if (canEdit(geometry_.ColumnAt(place))) break;
    }
    const int column = geometry_.ColumnAt(place);
    if (row != current_ && !MoveTo(row)) return true;
    selection_.Clear();
    SetCurrentColumn(column);
    ShowCell(current_, column);
    BeginEdit(column, CellEditor::Caret::SelectAll);
    return true;
}

// --- the mouse ---

// A press in the grid outside the field: within the row the cell is left, elsewhere the row.
bool Grid::View::settlePress(const Hit& hit) {
    if (!cellEditor_.IsOpen() && !rowEdit_.Pending()) return true;
    if (hit.row == current_ && hit.row >= 0) return leaveCell();
    return hit.row >= 0 || EndEdit(); // a move to another row saves by itself
}

// After the row became current by a plain click: a box that was hit is switched, and a second click
// on a cell opens it once the mouse is let go.
void Grid::View::pressEditable(const Hit& hit, const wxPoint& at, bool wasCurrent) {
    opensOnRelease_ = false;
    if (hit.spot != Spot::Cell || !canEdit(hit.column)) return;
    if (!isCheckBox(hit.column)) {
        opensOnRelease_ = wasCurrent;
        return;
    }
    const Rect cell = geometry_.CellAt(current_, geometry_.PlaceOf(hit.column, hit.split));
    const wxRect box = checkBoxIn({cell.x, cell.y, cell.width - 1, cell.height - 1});
    if (wxRect(box).Inflate(pixels(30)).Contains(at)) switchCheckBox(hit.column);
}

} // namespace norvel::grid
