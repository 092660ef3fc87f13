// Where the field of a cell that is being edited stands.
#pragma once

#include <wx/gdicmn.h>
#include <wx/textctrl.h>

namespace norvel::grid {

// Takes away what a theme draws inside a field to say that it has the focus: the cell around it
// says so, and the line would lie on the text. Once, when the field is made.
void makePlain(wxTextCtrl& field);

// Places a field of one line in its frame, which has that size, so that the field's text stands
// where the grid paints the cell's: in the middle. cut: how much of the field's own border the
// frame cuts off at each side.
void placeField(wxTextCtrl& field, const wxSize& frame, int cut);

} // namespace norvel::grid
