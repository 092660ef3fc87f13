#include "platform/grid/CellEditor.h"

#include "platform/controls/WxText.h"
#include "platform/grid/FieldPlace.h"
#include "platform/grid/Frame.h"

#include <wx/app.h>
#include <wx/dcclient.h>
#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <algorithm>

namespace norvel::grid {

// The frame cuts off the border that themes draw around a text control even without one.
void CellEditor::make(Field& field, long style) {
    if (field.text) return;
    field.frame = new wxWindow(&grid_, wxID_ANY, wxPoint(-1000, -1000), wxSize(50, 20),
                               wxBORDER_NONE | wxTAB_TRAVERSAL);
    field.frame->Hide();
    field.text = new wxTextCtrl(field.frame, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                wxBORDER_NONE | wxTE_PROCESS_ENTER | wxTE_PROCESS_TAB | style);
    makePlain(*field.text);
    const std::weak_ptr<int> life = life_;
    if (field.frame == lines_.frame)
        field.frame->Bind(wxEVT_PAINT, [this, life](wxPaintEvent&) {
            if (!life.expired()) paintLinesFrame();
        });
    field.text->Bind(wxEVT_KILL_FOCUS, [this, life](wxFocusEvent& e) {
        if (!life.expired()) focusLost();
        e.Skip();
    });
}

void CellEditor::Open(const std::string& text, Caret caret) {
    const bool several = text.find_first_of("\r\n") != std::string::npos;
    returns_ = text.find("\r\n") != std::string::npos;
    open_ = several ? &lines_ : &line_;
    make(*open_, several ? wxTE_MULTILINE : 0);
    open_->text->SetFont(grid_.GetFont());
    wxString shown = controls::toWx(text);
    shown.Replace("\r\n", "\n");
    open_->text->ChangeValue(shown);
    open_->text->DiscardEdits();
    opened_ = open_->text->GetValue();
    open_->frame->Show();
    open_->text->SetFocus();
    if (caret == Caret::SelectAll)
        open_->text->SelectAll();
    else
        open_->text->SetInsertionPointEnd();
}

void CellEditor::Type(const std::string& text) {
    open_->text->ChangeValue(controls::toWx(text));
    open_->text->SetInsertionPointEnd();
}

void CellEditor::Close() {
    if (!open_) return;
    const bool focused = HasFocus();
    const Field closed = *open_;
    open_ = nullptr;
    if (focused) grid_.SetFocus();
    closed.frame->Hide();
}

void CellEditor::SetFocus() {
    if (!open_) return;
    long from = 0;
    long to = 0;
    open_->text->GetSelection(&from, &to);
    open_->text->SetFocus(); // which selects the whole text on some systems
    if (from == to)
        open_->text->SetInsertionPoint(from);
    else
        open_->text->SetSelection(from, to);
}

std::string CellEditor::Text() const {
    wxString text = open_->text->GetValue();
    if (returns_) text.Replace("\n", "\r\n");
    return controls::fromWx(text);
}

bool CellEditor::Changed() const {
    return open_ && open_->text->GetValue() != opened_;
}

void CellEditor::SelectAll() {
    open_->text->SelectAll();
}

void CellEditor::BreakLine() {
    open_->text->WriteText("\n");
}

void CellEditor::SetFont(const wxFont& font) {
    if (open_) open_->text->SetFont(font);
}

void CellEditor::Place(const wxRect& cell, const wxRect& room, const Look& look) {
    if (!open_) return;
    if (!cell.Intersects(room))
        open_->frame->SetSize(-1000, -1000, 50, std::max(1, cell.height));
    else if (SeveralLines())
        placeLines(cell, room, look);
    else
        placeLine(cell, room, look);
}

void CellEditor::placeLine(const wxRect& cell, const wxRect& room, const Look& look) {
    wxRect box(cell.x + look.margin, cell.y + look.frame,
               std::max(1, cell.width - look.margin - look.frame), cell.height - 2 * look.frame);
    box.Intersect(room);
    open_->frame->SetSize(box);
    placeField(*open_->text, box.GetSize(), look.cut);
}

void CellEditor::placeLines(const wxRect& cell, const wxRect& room, const Look& look) {
    const wxSize size(std::min(room.width, std::max(cell.width, look.linesSize.x)),
                      std::min(room.height, std::max(cell.height, look.linesSize.y)));
    const wxRect box({std::clamp(cell.x, room.x, room.x + room.width - size.x),
                      std::clamp(cell.y, room.y, room.y + room.height - size.y)},
                     size);
    frameColour_ = look.frameColour;
    frame_ = look.frame;
    open_->frame->SetBackgroundColour(look.backColour);
    open_->frame->SetSize(box);
    open_->text->SetSize(wxRect(size).Deflate(look.margin, look.frame + look.cut));
}

// Around several lines.
void CellEditor::paintLinesFrame() {
    wxPaintDC dc(lines_.frame);
    paintFrame(dc, lines_.frame->GetSize(), frame_, frameColour_);
}

// Focus that leaves the program comes back to the field; a box of the program's own gives it back.
void CellEditor::focusLost() {
    const wxWeakRef<wxWindow> alive(&grid_);
    grid_.CallAfter([this, alive] {
        if (!alive || alive->IsBeingDeleted() || !open_) return;
        wxWindow* const now = wxWindow::FindFocus();
        if (!now || now == open_->text) return;
        if (wxGetTopLevelParent(now) != wxGetTopLevelParent(&grid_)) return;
        if (OnFocusLost) OnFocusLost();
    });
}

} // namespace norvel::grid
