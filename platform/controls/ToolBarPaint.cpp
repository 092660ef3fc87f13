// How a toolbar looks: everything from system colours and shapes, sharp at every scale.
#include "platform/controls/Icons.h"
#include "platform/controls/Shapes.h"
#include "platform/controls/ToolBarImpl.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include <memory>

namespace norvel::controls {

namespace {

struct Colours {
    wxColour face;
    wxColour text;
    wxColour highlight;
    static Colours ofSystem() {
        return {wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE),
                wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT),
                wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)};
    }
};

// A small chevron pointing down, centred.
void arrowDown(wxGraphicsContext& context, const wxRect& area, const wxColour& colour) {
    const double x = area.x + area.width / 2.0;
    const double y = area.y + area.height / 2.0;
    wxGraphicsPath path = context.CreatePath();
    path.MoveToPoint(x - 3.5, y - 1.5);
    path.AddLineToPoint(x, y + 2);
    path.AddLineToPoint(x + 3.5, y - 1.5);
    context.SetPen(
        context.CreatePen(wxGraphicsPenInfo(colour, 1.5).Cap(wxCAP_ROUND).Join(wxJOIN_ROUND)));
    context.StrokePath(path);
}

} // namespace

void ToolBar::Impl::paint(const wxRect& damaged) {
    wxAutoBufferedPaintDC dc(&bar);
    const Colours colours = Colours::ofSystem();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(colours.face));
    dc.DrawRectangle(bar.GetClientRect());
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    if (!context) return;
    context->DisableOffset();
    for (const Slot& slot : layout.slots)
        if (damaged.Intersects(rectOf(slot))) paintSlot(*context, slot);
    if (layout.chevron) paintChevron(*context);
}

// The area behind an icon: hover, pressed, checked, and the ring of the keyboard.
void ToolBar::Impl::paintFace(wxGraphicsContext& context, const wxRect& face, Spot spot,
                              bool checked) const {
    const Colours colours = Colours::ofSystem();
    const bool alive = spot.part == Spot::Part::Chevron || usable(spot.button);
    const bool under = hover == spot && alive;
    const bool down = alive && ((pressed == spot && under) || opened == spot);
    const wxColour accent = iconColours(colours.face, colours.text).accent;
    if (checked) {
        fillRounded(context, face, blend(colours.face, accent, under ? 0.36 : 0.26));
        strokeRounded(context, face, blend(colours.face, accent, alive ? 0.75 : 0.4), 1);
    } else if (down) {
        fillRounded(context, face, blend(colours.face, colours.text, 0.22));
    } else if (under) {
        fillRounded(context, face, blend(colours.face, colours.text, 0.10));
    }
}

void ToolBar::Impl::paintSlot(wxGraphicsContext& context, const Slot& slot) const {
    const Button& button = buttons[slot.button];
    const Colours colours = Colours::ofSystem();
    const BarMetrics sizes = metrics();
    const wxRect whole = rectOf(slot);
    if (button.Style == ButtonStyle::Separator) {
        context.SetPen(wxNullPen);
        context.SetBrush(wxBrush(blend(colours.face, colours.text, 0.25)));
        const int middle = slot.x + slot.width / 2;
        context.DrawRectangle(middle, sizes.top + 4, 1, sizes.side - 8);
        return;
    }
    const IconColours tones = iconColours(colours.face, colours.text, usable(slot.button));
    wxRect face = whole;
    face.width -= slot.arrow;
    paintFace(context, face, {Spot::Part::Button, slot.button},
              button.Style == ButtonStyle::Check && button.Value != 0);
    const int inset = (sizes.side - sizes.icon) / 2;
    drawIcon(context, button.Key,
             {static_cast<double>(face.x + inset), static_cast<double>(face.y + inset),
              static_cast<double>(sizes.icon), static_cast<double>(sizes.icon)},
             tones, bar.GetContentScaleFactor());
    if (slot.arrow > 0) {
        const wxRect arrow(face.x + face.width, face.y, slot.arrow, face.height);
        paintFace(context, arrow, {Spot::Part::Arrow, slot.button}, false);
        const bool opens = usable(slot.button) && !button.ButtonMenus.empty();
        arrowDown(context, arrow,
                  opens ? tones.line : iconColours(colours.face, colours.text, false).line);
    }
    if (bar.HasFocus() && focus == Spot{Spot::Part::Button, slot.button})
        strokeRounded(context, whole, tones.accent, 2);
}

// Two small angles, as bars that go on show them.
void ToolBar::Impl::paintChevron(wxGraphicsContext& context) const {
    const Spot spot{Spot::Part::Chevron, 0};
    const Colours colours = Colours::ofSystem();
    const IconColours tones = iconColours(colours.face, colours.text);
    const wxRect area = rectOf(*layout.chevron);
    paintFace(context, area, spot, false);
    const double y = area.y + area.height / 2.0;
    wxGraphicsPath path = context.CreatePath();
    for (const double shift : {-4.0, 1.0}) {
        const double x = area.x + area.width / 2.0 + shift;
        path.MoveToPoint(x, y - 3.5);
        path.AddLineToPoint(x + 3.5, y);
        path.AddLineToPoint(x, y + 3.5);
    }
    context.SetPen(
        context.CreatePen(wxGraphicsPenInfo(tones.line, 1.5).Cap(wxCAP_ROUND).Join(wxJOIN_ROUND)));
    context.StrokePath(path);
    if (bar.HasFocus() && focus == spot) strokeRounded(context, area, tones.accent, 2);
}

} // namespace norvel::controls
