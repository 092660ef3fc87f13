// How a side menu looks: the system's colours and shapes, sharp at every scale.
#include "platform/controls/ExplorerBarImpl.h"
#include "platform/controls/Icons.h"
#include "platform/controls/Shapes.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/Text.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include <memory>

namespace norvel::controls {

namespace {

struct Colours {
    wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
    wxColour group = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
    wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT);
    wxColour accent = iconColours(group, text).accent;
};

wxRect moved(const ExplorerBox& box, int top) {
    return {box.x, box.y - top, box.width, box.height};
}

} // namespace

void ExplorerBar::Impl::paint(const wxRect& damaged) {
    wxAutoBufferedPaintDC dc(&bar);
    const Colours colours;
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(colours.back));
    dc.DrawRectangle(bar.GetClientRect());
    if (const std::unique_ptr<wxGraphicsContext> context{wxGraphicsContext::Create(dc)})
        paintShapes(*context, damaged);
    for (std::size_t row = 0; row < layout.rows.size(); ++row)
        if (damaged.Intersects(rectOf(row))) paintTexts(dc, row);
}

// Texts come after them, by the plain context: where the other one draws by GDI+, its texts look
// unlike those of the controls beside it.
void ExplorerBar::Impl::paintShapes(wxGraphicsContext& context, const wxRect& damaged) const {
    context.DisableOffset();
    for (std::size_t group = 0; group < layout.groups.size(); ++group)
        paintGroup(context, group);
    for (std::size_t row = 0; row < layout.rows.size(); ++row)
        if (damaged.Intersects(rectOf(row))) paintRow(context, row);
}

void ExplorerBar::Impl::paintGroup(wxGraphicsContext& context, std::size_t group) const {
    const Colours colours;
    const wxRect box = moved(layout.groups[group], top);
    fillRounded(context, box, colours.group);
    strokeRounded(context, box, blend(colours.group, colours.text, 0.2), 1);
}

// The area behind a row: the heading of a special group, the command in force, hover, pressed.
void ExplorerBar::Impl::paintFace(wxGraphicsContext& context, std::size_t index) const {
    const ExplorerRow& row = layout.rows[index];
    const Colours colours;
    const wxRect face = rectOf(index);
    if (row.IsHeading()) {
        const bool special = groups[row.group].Special;
        fillRounded(context, face,
                    special ? blend(colours.group, colours.accent, 0.22)
                            : blend(colours.group, colours.text, 0.07));
        return;
    }
    if (!isCommand(row)) return;
    const bool under = hover == index;
    if (equalsText(keyOf(row), selected)) {
        fillRounded(context, face, blend(colours.group, colours.accent, under ? 0.30 : 0.20));
        const int side = bar.FromDIP(3);
        context.SetBrush(wxBrush(colours.accent));
        context.DrawRectangle(face.x, face.y + side, side, face.height - 2 * side);
    } else if (under) {
        const bool down = pressed == index;
        fillRounded(context, face, blend(colours.group, colours.text, down ? 0.20 : 0.09));
    }
}

void ExplorerBar::Impl::paintRow(wxGraphicsContext& context, std::size_t index) const {
    const ExplorerRow& row = layout.rows[index];
    const ExplorerGroup& group = groups[row.group];
    const Colours colours;
    paintFace(context, index);
    const wxRect icon = moved(row.icon, top);
    const std::string& iconKey = row.IsHeading() ? group.IconKey : group.Items[row.item].IconKey;
    if (!icon.IsEmpty())
        drawIcon(context, iconKey,
                 {static_cast<double>(icon.x), static_cast<double>(icon.y),
                  static_cast<double>(icon.width), static_cast<double>(icon.height)},
                 iconColours(colours.group, colours.text), bar.GetContentScaleFactor());
    if (bar.HasFocus() && focus == index) strokeRounded(context, rectOf(index), colours.accent, 2);
}

void ExplorerBar::Impl::paintTexts(wxDC& dc, std::size_t index) const {
    const ExplorerRow& row = layout.rows[index];
    const Colours colours;
    const wxColour quiet = blend(colours.group, colours.text, 0.72);
    int y = row.textY - top;
    const auto write = [&](const std::vector<std::string>& lines, const wxFont& font,
                           const wxColour& colour) {
        dc.SetFont(font);
        dc.SetTextForeground(colour);
        for (const std::string& line : lines) {
            dc.DrawText(toWx(line), row.textX, y);
            y += metrics(0).lineHeight;
        }
    };
    const wxFont plain = bar.GetFont();
    const bool quietCaption = !row.IsHeading() && !isCommand(row);
    write(row.lines, row.IsHeading() ? plain.Bold() : plain, quietCaption ? quiet : colours.text);
    write(row.secondTitle, plain, colours.text);
    write(row.description, plain, quiet);
}

} // namespace norvel::controls
