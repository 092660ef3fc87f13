#include "platform/controls/Shapes.h"

#include <wx/brush.h>
#include <wx/graphics.h>
#include <wx/pen.h>

namespace norvel::controls {

namespace {
constexpr double corner = 4; // radius of the corners, logical pixels
} // namespace

void fillRounded(wxGraphicsContext& context, const wxRect& area, const wxColour& colour) {
    context.SetPen(wxNullPen);
    context.SetBrush(wxBrush(colour));
    context.DrawRoundedRectangle(area.x, area.y, area.width, area.height, corner);
}

void strokeRounded(wxGraphicsContext& context, const wxRect& area, const wxColour& colour,
                   double width) {
    context.SetBrush(wxNullBrush);
    context.SetPen(context.CreatePen(wxGraphicsPenInfo(colour, width)));
    context.DrawRoundedRectangle(area.x + width / 2, area.y + width / 2, area.width - width,
                                 area.height - width, corner - width / 2);
}

} // namespace norvel::controls
