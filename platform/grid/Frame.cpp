#include "platform/grid/Frame.h"

namespace norvel::grid {

void paintFrame(wxDC& dc, const wxRect& box, int thickness, const wxColour& colour) {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(colour);
    dc.DrawRectangle(box.x, box.y, box.width, thickness);
    dc.DrawRectangle(box.x, box.y + box.height - thickness, box.width, thickness);
    dc.DrawRectangle(box.x, box.y, thickness, box.height);
    dc.DrawRectangle(box.x + box.width - thickness, box.y, thickness, box.height);
}

} // namespace norvel::grid
