// The filter cells: painted texts, and one edit control that stands over the cell being edited.
#include "platform/grid/FieldPlace.h"
#include "platform/grid/View.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace norvel::grid {

Area Grid::View::FocusArea() const {
    if (cellEditor_.HasFocus()) return Area::CellEdit;
    return filterColumn_ >= 0 && editor_ && editor_->HasFocus() ? Area::FilterCell : Area::Data;
}

void Grid::View::makeEditor() {
    // The frame cuts off the border that themes draw around a text control even without one: the
    // cell has its own.
    editorFrame_ = new wxWindow(&grid_, wxID_ANY, wxPoint(-1000, -1000), wxSize(50, 20),
                                wxBORDER_NONE | wxTAB_TRAVERSAL);
    editorFrame_->Hide();
    editor_ = new wxTextCtrl(editorFrame_, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                             wxBORDER_NONE | wxTE_PROCESS_ENTER | wxTE_PROCESS_TAB);
    makePlain(*editor_);
    editor_->SetFont(grid_.GetFont());
    const std::weak_ptr<int> life = life_;
    editor_->Bind(wxEVT_TEXT, [this, life](wxCommandEvent&) {
        if (!life.expired()) onEditorText();
    });
    editor_->Bind(wxEVT_KILL_FOCUS, [this, life](wxFocusEvent& e) {
        if (!life.expired()) onEditorFocusLost();
        e.Skip();
    });
}

bool Grid::View::hasFilterCell(int column) const {
    return splits_[0].FilterBar && column >= 0 && column < columns_.Count() &&
           columns_.Item(column).IsShown();
}

// Whoever is told that a row is saved, or a cell left, may bind other fields or close the window.
bool Grid::View::EnterFilter(int column, bool selectAll) {
    if (!hasFilterCell(column)) return false;
    const wxWeakRef<Grid> alive(&grid_);
    if (!EndEdit()) return true; // the caret is where it has to be first
    if (filterColumn_ != column) LeaveFilter(false);
    if (!alive || alive->IsBeingDeleted()) return true;
    if (!hasFilterCell(column)) return false;
    if (!editor_) makeEditor();
    if (filterColumn_ != column) {
        filterColumn_ = column;
        currentColumn_ = column;
        currentSplit_ = 0;
        editor_->ChangeValue(wxString::FromUTF8(columns_.Item(column).FilterText));
        showEditorError();
    }
    ShowCell(-1, column);
    placeEditor();
    editorFrame_->Show();
    editor_->SetFocus();
    if (selectAll)
        editor_->SelectAll();
    else
        editor_->SetInsertionPointEnd();
    Refresh();
    return true;
}

void Grid::View::LeaveFilter(bool toRows) {
    if (filterColumn_ < 0) return;
    const int left = std::exchange(filterColumn_, -1);
    if (toRows) grid_.SetFocus();
    editorFrame_->Hide();
    Refresh();
    if (grid_.OnFilterLeave) grid_.OnFilterLeave(left);
}

// Its cell is gone: the keyboard stays in the grid.
void Grid::View::loseFilterCell() {
    if (filterColumn_ >= 0) LeaveFilter(editor_->HasFocus());
}

// Over its cell, as far as that is in view.
void Grid::View::placeEditor() {
    placeCellEditor();
    if (filterColumn_ < 0 || !editor_) return;
    const Rect cell = geometry_.FilterCell(filterColumn_);
    const int button =
        columns_.Item(filterColumn_).FilterCombo ? geometry_.Sizes().filterButtonWidth : 0;
    const Rect pane = geometry_.PaneOf(geometry_.PlaceOf(filterColumn_));
    const int margin = pixels(cellMarginTwips() / 2);
    const int border = pixels(15);
    const int frame = pixels(markTwips); // left free, whether or not the cell bears a mark now
    wxRect box(cell.x + margin + 1, cell.y + frame, std::max(0, cell.width - margin - button - 3),
               cell.height - 2 * frame - 1);
    box.Intersect({pane.x, pane.y, pane.width, pane.height});
    if (cell.Empty() || box.width < 4) box = wxRect(-1000, -1000, 50, cell.height);
    editorFrame_->SetSize(box);
    placeField(*editor_, box.GetSize(), border);
}

void Grid::View::onEditorText() {
    if (filterColumn_ < 0) return;
    columns_.Item(filterColumn_).FilterText = editor_->GetValue().utf8_string();
    if (grid_.OnFilterChange) grid_.OnFilterChange(filterColumn_);
}

// Focus that goes elsewhere in the grid's window ends the editing; from a box or another program it
// comes back to the cell.
void Grid::View::onEditorFocusLost() {
    const wxWeakRef<Grid> alive(&grid_);
    grid_.CallAfter([this, alive] {
        if (!alive || alive->IsBeingDeleted() || filterColumn_ < 0) return;
        wxWindow* const now = wxWindow::FindFocus();
        if (!now || now == editor_) return;
        if (wxGetTopLevelParent(now) != wxGetTopLevelParent(&grid_)) return;
        LeaveFilter(false);
    });
}

void Grid::View::SetFilterText(int column, const std::string& text) {
    columns_.Item(column).FilterText = text;
    if (column == filterColumn_) editor_->ChangeValue(wxString::FromUTF8(text));
    Refresh();
}

void Grid::View::SetFilterError(int column, const std::string& reason) {
    std::string& own = columns_.Item(column).FilterError;
    if (own == reason) return;
    own = reason;
    if (column == filterColumn_) {
        showEditorError();
        placeEditor();
    }
    Refresh();
}

// The editor covers its cell: it bears the cell's mark, too.
void Grid::View::showEditorError() {
    const std::string& reason = columns_.Item(filterColumn_).FilterError;
    editor_->SetBackgroundColour(reason.empty() ? wxNullColour : palette_.errorBack);
    editor_->Refresh();
    if (reason.empty())
        editor_->UnsetToolTip();
    else
        editor_->SetToolTip(wxString::FromUTF8(reason));
}

bool Grid::View::filterKey(wxKeyEvent& event) {
    const int column = filterColumn_;
    const int code = event.GetKeyCode();
    const bool down = code == WXK_DOWN || code == WXK_NUMPAD_DOWN;
    if (columns_.Item(column).FilterCombo && (code == WXK_F4 || (down && event.AltDown()))) {
        if (grid_.OnFilterButton) grid_.OnFilterButton(column);
        return true;
    }
    switch (event.GetKeyCode()) {
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        if (grid_.OnFilterEnter) grid_.OnFilterEnter(column);
        return true;
    case WXK_ESCAPE:
        if (columns_.Item(column).FilterText.empty())
            LeaveFilter(true);
        else
            editor_->SetValue(wxString());
        return true;
    case WXK_TAB:
        if (event.ControlDown()) return false;
        nextFilterCell(!event.ShiftDown());
        return true;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        LeaveFilter(true);
        return true;
    case WXK_UP:
    case WXK_NUMPAD_UP:
        return true;
    case 'A': // not every system's field knows it
        if (event.GetModifiers() != wxMOD_CONTROL) return false;
        editor_->SelectAll();
        return true;
    default:
        return false;
    }
}

// Past the last cell come the rows, before the first one the control before the grid.
void Grid::View::nextFilterCell(bool forward) {
    const int place = geometry_.PlaceOf(filterColumn_) + (forward ? 1 : -1);
    if (place >= geometry_.ShownCount()) return LeaveFilter(true);
    if (place >= 0) {
        EnterFilter(geometry_.ColumnAt(place), true);
        return;
    }
    LeaveFilter(true);
    grid_.Navigate(wxNavigationKeyEvent::IsBackward);
}

} // namespace norvel::grid
