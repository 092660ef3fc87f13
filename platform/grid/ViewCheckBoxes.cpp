// Check boxes in the cells of columns that show them instead of values.
#include "platform/grid/View.h"

#include <wx/graphics.h>

#include <algorithm>
#include <memory>

namespace norvel::grid {

// In the middle of a cell, as high as the text.
wxRect Grid::View::checkBoxIn(const wxRect& cell) const {
    const int side = std::max(8, std::min(textHeight_, cell.height - 2) - pixels(30));
    return {cell.x + (cell.width - side) / 2, cell.y + (cell.height - side) / 2, side, side};
}

// What is no yes or no is drawn as the text it is.
bool Grid::View::takesCheckBox(std::string_view text, const wxRect& cell,
                               std::vector<CheckBox>& boxes) const {
    const auto check = checkOf(text);
    if (check && *check != Check::Blank)
        boxes.push_back({checkBoxIn(cell), *check == Check::Checked});
    return check.has_value();
}

// Frames of whole pixels, the ticks between them smooth: sharp at every scale. The box has the
// colours of an unselected cell, so that it can be read on every row.
void Grid::View::paintCheckBoxes(wxDC& dc, const Geometry::Pane& pane,
                                 const std::vector<CheckBox>& boxes) {
    if (boxes.empty()) return;
    const Rect data = geometry_.Data();
    const wxDCClipper clip(dc, pane.left, data.y, pane.width, data.height);
    dc.SetPen(*wxTRANSPARENT_PEN);
    const int line = std::max(1, pixels(15));
    for (const CheckBox& each : boxes) {
        dc.SetBrush(palette_.back);
        dc.DrawRectangle(each.box);
        paintFrame(dc, each.box, line, palette_.greyText);
    }
    const std::unique_ptr<wxGraphicsContext> ticks(wxGraphicsContext::CreateFromUnknownDC(dc));
    if (!ticks) return;
    const double thickness = std::max(1.5, boxes.front().box.width / 7.0);
    ticks->SetPen(ticks->CreatePen(wxGraphicsPenInfo(palette_.text, thickness)));
    for (const CheckBox& each : boxes) {
        if (!each.checked) continue;
        const wxRect& box = each.box;
        const auto at = [&](double x, double y) {
            return wxPoint2DDouble(box.x + x * box.width, box.y + y * box.height);
        };
        wxGraphicsPath tick = ticks->CreatePath();
        tick.MoveToPoint(at(0.23, 0.52));
        tick.AddLineToPoint(at(0.43, 0.72));
        tick.AddLineToPoint(at(0.78, 0.28));
        ticks->StrokePath(tick);
    }
}

} // namespace norvel::grid
