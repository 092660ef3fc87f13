// Where the field of a cell that is being edited stands.
#pragma once

#include <wx/gdicmn.h>
#include <wx/textctrl.h>

namespace norvel::grid {

// Places a field of one line in its frame, which has that size, so that the field's text stands
// where the grid paints the cell's: in the middle. cut: how much of the field's own border the
// frame cuts off at each side.
void placeField(wxTextCtrl& field, const wxSize& frame, int cut);

} // namespace norvel::grid
