#include "platform/grid/FieldPlace.h"

namespace norvel::grid {

// The text stands in the middle of its field.
void placeField(wxTextCtrl& field, const wxSize& frame, int cut) {
    field.SetSize(-cut, -cut, frame.x + 2 * cut, frame.y + 2 * cut, wxSIZE_ALLOW_MINUS_ONE);
}

} // namespace norvel::grid
