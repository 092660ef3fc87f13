// Editing data cells in place: entering, taking over what was typed, saving the row, refusals.
#include "platform/adodb/Errors.h"
#include "platform/grid/View.h"
#include "platform/grid/model/EditedValue.h"
#include "platform/runtime/ErroreInCorso.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using namespace adodb;

namespace {

constexpr int editFrame = 2; // pixels

} // namespace

void Grid::View::bindEditing() {
    cellEditor_.OnFocusLost = [this] {
        if (!settling_) guarded([&] { EndEdit(); });
    };
    grid_.Bind(wxEVT_CHAR, [this](wxKeyEvent& e) {
        bool handled = true;
        guarded([&] { handled = typed(e); });
        if (!handled) e.Skip();
    });
}

bool Grid::View::SetAllowUpdate(bool allow) {
    if (!allow && !EndEdit()) return false;
    allowUpdate_ = allow;
    Refresh();
    return true;
}

// --- entering a cell ---

bool Grid::View::canEdit(int column) const {
    return allowUpdate_ && current_ >= 0 && !onGroup() && geometry_.PlaceOf(column) >= 0 &&
           !columns_.Item(column).Locked && fieldOf(column) >= 0;
}

// Errore where no change of the field can be saved.
void Grid::View::requireUpdatable(int column) {
    if (!Host().Supports(adUpdate)) throw Errore(adErrFeatureNotAvailable, readOnlyRows);
    if (!isEditableType(columns_.Item(column).DataType))
        throw Errore(adErrFeatureNotAvailable,
                     "I valori di questo campo non si possono modificare qui.");
}

void Grid::View::enterCell(int column) {
    currentColumn_ = column;
    ShowCell(current_, column);
    const int field = fieldOf(column);
    rowEdit_.Begin(field);
    edited_ = {column, std::nullopt};
}

// True where the field stands over the cell. A check box is switched, not typed.
bool Grid::View::BeginEdit(int column, CellEditor::Caret caret) {
    if (!canEdit(column)) return false;
    requireUpdatable(column);
    if (cellEditor_.IsOpen() && edited_.column == column) return true;
    if (!leaveCell()) return false;
    if (isCheckBox(column)) return false;
    LeaveFilter(false);
    enterCell(column);
    cellEditor_.Open(editText(fieldAt(column).Value()), caret);
    placeCellEditor();
    Refresh();
    return true;
}

Field& Grid::View::fieldAt(int column) const {
    return Host().Fields()(fieldOf(column));
}

// The cell of the current row shows a box.
bool Grid::View::isCheckBox(int column) {
    return showsCheckBoxes(columns_.Item(column)) && checkOf(Text(current_, column));
}

void Grid::View::switchCheckBox(int column) {
    if (!canEdit(column)) return;
    requireUpdatable(column);
    if (!leaveCell()) return;
    const bool checked = checkOf(Text(current_, column)) != Check::Checked;
    enterCell(column);
    try {
        rowEdit_.Set(Host(), checkValue(columns_.Item(column).DataType, checked));
    } catch (const Errore& error) {
        refuse(error);
    }
    Refresh();
}

// --- leaving it ---

bool Grid::View::halfTyped() const {
    if (!cellEditor_.IsOpen()) return false;
    return edited_.taken ? cellEditor_.Text() != *edited_.taken : cellEditor_.Changed();
}

// What was typed becomes the field's value; false: it was refused, and the caret is back in it.
bool Grid::View::takeCell() {
    if (!halfTyped()) return true;
    try {
        if (!cellEditor_.Changed()) { // it was refused in the end, and is as before again
            undoTaken();
            return true;
        }
        const std::string text = cellEditor_.Text();
        rowEdit_.Set(Host(), editedValue(columns_.Item(edited_.column).DataType, text));
        edited_.taken = text;
        return true;
    } catch (const Errore& error) {
        refuse(error);
        return false;
    }
}

void Grid::View::undoTaken() {
    if (std::exchange(edited_.taken, std::nullopt)) rowEdit_.UndoCell(Host());
}

bool Grid::View::leaveCell() {
    if (!takeCell()) return false;
    cellEditor_.Close();
    Refresh();
    return true;
}

// Esc in the field.
void Grid::View::undoCell() {
    cellEditor_.Close();
    undoTaken();
    Refresh();
}

void Grid::View::undoRow() {
    cellEditor_.Close();
    rowEdit_.Undo(Host());
    Refresh();
}

// The field stays until the row is saved, so that a refusal finds what was typed.
bool Grid::View::EndEdit() {
    if (settling_) return false;
    if (!takeCell()) return false;
    if (rowEdit_.Pending()) {
        const wxWeakRef<Grid> alive(&grid_);
        settling_ = true;
        bool now = false;
        try {
            now = !grid_.OnBeforeUpdate || grid_.OnBeforeUpdate();
        } catch (...) { // as a save that was refused
            if (alive && !alive->IsBeingDeleted()) refuse(erroreInCorso());
            return false;
        }
        if (!alive || alive->IsBeingDeleted()) return false;
        settling_ = false;
        if (!now) return false;
        try {
            rowEdit_.Save(Host());
        } catch (const Errore& error) {
            refuse(error);
            return false;
        }
    }
    if (cellEditor_.IsOpen()) {
        cellEditor_.Close();
        Refresh();
    }
    return true;
}

// Says why, and leads back to what was typed.
void Grid::View::refuse(const Errore& error) {
    const wxWeakRef<Grid> alive(&grid_);
    settling_ = true;
    report(error);
    if (!alive || alive->IsBeingDeleted()) return;
    settling_ = false;
    if (edited_.column < 0 || current_ < 0) return;
    currentColumn_ = edited_.column;
    ShowCell(current_, currentColumn_);
    grid_.SetFocus();
    if (cellEditor_.IsOpen())
        cellEditor_.SetFocus();
    else if (canEdit(currentColumn_) && !isCheckBox(currentColumn_))
        BeginEdit(currentColumn_, CellEditor::Caret::AtEnd);
    Refresh();
}

// The row is another one, or there is none any more: nothing of what was typed can be saved.
void Grid::View::forgetEdit() {
    rowEdit_.Forget();
    edited_ = {};
    cellEditor_.Close();
}

// Where the line stands once the current row is saved, which may move or regroup rows. -1: it was
// not saved.
RowCount Grid::View::rowOnceSaved(RowCount row) {
    if (row == current_ || !(cellEditor_.IsOpen() || rowEdit_.Pending())) return row;
    RowReader* reader = Reader();
    const RowCount record = recordOn(row);
    if (!reader || record < 0) return EndEdit() ? std::min(row, Rows() - 1) : -1;
    const Variant target = reader->BookmarkAt(record);
    if (!EndEdit()) return -1;
    reader = Reader();
    const auto now = reader ? reader->RowOf(target) : std::nullopt;
    return now ? lines_.NearestLine(*now) : -1;
}

// --- what the recordset does meanwhile ---

// Whoever moves it would leave behind what is typed and not taken over.
void Grid::View::WillMove(EventReasonEnum, EventStatusEnum& status, Recordset&) {
    if (halfTyped()) status = adStatusCancel;
}

void Grid::View::WillChangeRecordset(EventReasonEnum reason, EventStatusEnum& status, Recordset&) {
    if (reason == adRsnRequery && halfTyped()) status = adStatusCancel;
}

void Grid::View::rowSettled(EventReasonEnum reason) {
    if (reason == adRsnUpdate || reason == adRsnUndoUpdate) rowEdit_.Forget();
}

// --- painting ---

wxRect Grid::View::editedCell() const {
    const int place = geometry_.PlaceOf(edited_.column, currentSplit_);
    const Rect cell = geometry_.CellAt(current_, place);
    return {cell.x, cell.y, cell.width - 1, cell.height - 1};
}

void Grid::View::placeCellEditor() {
    if (!cellEditor_.IsOpen()) return;
    const Rect pane = geometry_.PaneOf(geometry_.PlaceOf(edited_.column, currentSplit_));
    const wxRect room(pane.x, geometry_.DataTop(), pane.width, geometry_.DataHeight());
    cellEditor_.Place(editedCell(), room,
                      {.margin = pixels(cellMarginTwips() / 2),
                       .frame = editFrame,
                       .cut = pixels(15),
                       .frameColour = palette_.focus,
                       .backColour = palette_.back,
                       .linesSize = {pixels(4500), 5 * geometry_.Sizes().rowHeight}});
}

// The cell behind the field: as blank as the field itself.
void Grid::View::paintEditedCell(wxDC& dc) {
    const wxRect cell = editedCell();
    if (cell.IsEmpty()) return;
    const Rect pane = geometry_.PaneOf(geometry_.PlaceOf(edited_.column, currentSplit_));
    const wxDCClipper clip(dc, pane.x, geometry_.DataTop(), pane.width, geometry_.DataHeight());
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.back);
    dc.DrawRectangle(cell);
    paintFrame(dc, cell, editFrame, palette_.focus);
}

} // namespace norvel::grid
