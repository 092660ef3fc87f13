// The shapes that the system's own controls are drawn with.
#pragma once

#include <wx/colour.h>
#include <wx/gdicmn.h>

class wxGraphicsContext;

namespace norvel::controls {

void fillRounded(wxGraphicsContext& context, const wxRect& area, const wxColour& colour);
// A border of that many logical pixels, inside the area.
void strokeRounded(wxGraphicsContext& context, const wxRect& area, const wxColour& colour,
                   double width);

} // namespace norvel::controls
