// How the list looks: the system's list colours, a check mark before each entry with several
// choices.
#include "platform/controls/Icons.h"
#include "platform/controls/ValueList.h"
#include "platform/controls/ValueListTexts.h"
#include "platform/controls/WxText.h"

#include <wx/dcbuffer.h>
#include <wx/renderer.h>
#include <wx/scrolbar.h>
#include <wx/settings.h>

#include <algorithm>

namespace norvel::controls {

namespace {

constexpr std::size_t mostBytes = 300; // of an entry: more never fits a line

} // namespace

wxString shownText(std::string_view entry) {
    const bool whole = entry.size() <= mostBytes;
    if (!whole) {
        std::size_t end = mostBytes;
        while (end > 0 && (static_cast<unsigned char>(entry[end]) & 0xC0) == 0x80)
            --end;
        entry = entry.substr(0, end);
    }
    wxString text = toWx(entry);
    for (const char* blank : {"\r\n", "\n", "\r", "\t"})
        text.Replace(blank, " ");
    if (!whole) text += wxString::FromUTF8("…");
    return text;
}

void ValueList::paint() {
    wxAutoBufferedPaintDC dc(this);
    const wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
    const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT);
    const wxSize size = GetClientSize();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(blend(back, text, 0.5));
    dc.DrawRectangle(size);
    dc.SetBrush(back);
    dc.DrawRectangle(wxRect(size).Deflate(border()));
    dc.SetFont(GetFont());
    {
        const wxDCClipper clip(dc, roomForItems());
        const auto last =
            std::min(ListCount(), FirstItem() + static_cast<std::size_t>(ItemsInView()) + 1);
        for (std::size_t i = FirstItem(); i < last; ++i)
            paintItem(dc, i, ItemRect(i));
    }
    if (note_.empty()) return;
    const wxRect note(border(), size.y - border() - noteHeight(), size.x - 2 * border(),
                      noteHeight());
    dc.SetBrush(blend(back, text, 0.07));
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.DrawRectangle(note);
    dc.SetTextForeground(blend(back, text, 0.7));
    const wxRect inner = wxRect(note).Deflate(FromDIP(textMargin), 0);
    dc.DrawLabel(wxControl::Ellipsize(toWx(note_), dc, wxELLIPSIZE_END, std::max(1, inner.width)),
                 inner, wxALIGN_LEFT | wxALIGN_CENTRE_VERTICAL);
}

void ValueList::paintItem(wxDC& dc, std::size_t index, const wxRect& box) {
    if (box.IsEmpty()) return;
    const wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
    const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT);
    const wxColour high = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    const bool current = static_cast<int>(index) == current_;
    const bool hot = static_cast<int>(index) == hot_;
    dc.SetPen(*wxTRANSPARENT_PEN);
    if (current || hot) {
        dc.SetBrush(current ? high : blend(back, high, 0.2));
        dc.DrawRectangle(box);
    }
    wxRect line = box;
    if (multiple_) {
        const int side = std::min(box.height, itemHeight()) - FromDIP(6);
        const wxRect mark(box.x + FromDIP(4), box.y + FromDIP(3), side, side);
        wxRendererNative::Get().DrawCheckBox(
            this, dc, mark, Selected(index) ? static_cast<int>(wxCONTROL_CHECKED) : 0);
        line.x += itemHeight();
        line.width -= itemHeight();
    }
    line.Deflate(FromDIP(textMargin), 0);
    if (line.width <= 0) return;
    dc.SetTextForeground(current ? wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT) : text);
    line.height = itemHeight(); // an entry that is cut at the edge keeps its place
    dc.DrawLabel(wxControl::Ellipsize(shownText(items_.At(index)), dc, wxELLIPSIZE_END, line.width),
                 line, wxALIGN_LEFT | wxALIGN_CENTRE_VERTICAL);
}

} // namespace norvel::controls
