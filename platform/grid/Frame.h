// Frames around cells.
#pragma once

#include <wx/dc.h>

namespace norvel::grid {

// Inside the box, of filled rectangles, which stay sharp at every scale. The dc's pen and brush are
// others afterwards.
void paintFrame(wxDC& dc, const wxRect& box, int thickness, const wxColour& colour);

} // namespace norvel::grid
