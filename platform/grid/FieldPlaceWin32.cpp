#include "platform/grid/FieldPlace.h"

#include <algorithm>

namespace norvel::grid {

// Windows draws nothing of that kind.
void makePlain(wxTextCtrl&) {}

// The text stands at the top of its field: the field is as high as its text, and the frame around
// it looks like it.
void placeField(wxTextCtrl& field, const wxSize& frame, int cut) {
    const int height = std::min(frame.y, field.GetCharHeight());
    field.SetSize(-cut, (frame.y - height) / 2, frame.x + 2 * cut, height, wxSIZE_ALLOW_MINUS_ONE);
    if (field.GetParent()->SetBackgroundColour(field.GetBackgroundColour()))
        field.GetParent()->Refresh();
}

} // namespace norvel::grid
