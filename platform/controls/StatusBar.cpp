#include "platform/controls/StatusBar.h"

#include "platform/controls/Icons.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Twips.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>

namespace norvel::controls {

namespace {
constexpr int verticalPadding = 4; // above and below the text, in 1/96 inch
constexpr int sidePadding = 8;     // left and right of a panel's text
} // namespace

StatusBar::StatusBar(wxWindow* parent, int panels)
    : wxControl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE),
      texts_(static_cast<std::size_t>(std::max(panels, 1))) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetCanFocus(false);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        Refresh();
        event.Skip();
    });
    SetInitialSize();
}

std::size_t StatusBar::indexOf(int panel) const {
    if (panel < 1 || panel > static_cast<int>(texts_.size()))
        throw Errore(35600, "Indice fuori dai limiti");
    return static_cast<std::size_t>(panel) - 1;
}

const std::string& StatusBar::PanelText(int panel) const {
    return texts_[indexOf(panel)];
}

// The first panel's text alone may change no more than itself; another's width follows its text.
void StatusBar::SetPanelText(int panel, const std::string& text) {
    std::string& own = texts_[indexOf(panel)];
    if (own == text) return;
    const int width = panelWidth(0);
    own = text;
    if (panel == 1 && panelWidth(0) == width)
        RefreshRect(PanelRect(1), false);
    else
        Refresh();
}

double StatusBar::scale() const {
    return FromDIP(1000) / 1000.0;
}

int StatusBar::heightPixels() const {
    return GetCharHeight() + 2 * FromDIP(verticalPadding);
}

int StatusBar::HeightTwips() const {
    return static_cast<int>(std::ceil(pixelsToTwips(heightPixels(), scale())));
}

wxSize StatusBar::DoGetBestClientSize() const {
    return {FromDIP(100), heightPixels()};
}

int StatusBar::textWidth(std::size_t index) const {
    if (texts_[index].empty()) return 0;
    return GetTextExtent(toWx(texts_[index])).x + 2 * FromDIP(sidePadding);
}

int StatusBar::panelWidth(std::size_t index) const {
    const int whole = GetClientSize().x;
    int others = whole - std::min(textWidth(0), whole / 2); // what they have at most
    for (std::size_t other = 1; other < texts_.size(); ++other) {
        const int width = std::min(textWidth(other), std::max(others, 0));
        if (other == index) return width;
        others -= width;
    }
    int room = whole;
    for (std::size_t other = 1; other < texts_.size(); ++other)
        room -= panelWidth(other);
    return std::max(room, 0);
}

wxRect StatusBar::PanelRect(int panel) const {
    int x = 0;
    const std::size_t index = indexOf(panel);
    for (std::size_t before = 0; before < index; ++before)
        x += panelWidth(before);
    return {x, 0, panelWidth(index), GetClientSize().y};
}

void StatusBar::paint() {
    wxAutoBufferedPaintDC dc(this);
    const wxColour face = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
    const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT);
    const wxSize size = GetClientSize();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(face));
    dc.DrawRectangle(size);
    dc.SetBrush(wxBrush(blend(face, text, 0.22)));
    dc.DrawRectangle(0, 0, size.x, 1);
    dc.SetFont(GetFont());
    dc.SetTextForeground(text);
    for (int panel = 1; panel <= static_cast<int>(texts_.size()); ++panel) {
        const wxRect area = PanelRect(panel);
        if (area.width == 0) continue;
        if (panel > 1) dc.DrawRectangle(area.x, size.y / 5, 1, size.y - 2 * (size.y / 5));
        const wxDCClipper clip(dc, area);
        const wxRect inner = area.Deflate(FromDIP(sidePadding), 0);
        const wxString shown = wxControl::Ellipsize(toWx(PanelText(panel)), dc, wxELLIPSIZE_END,
                                                    std::max(inner.width, 1));
        dc.DrawLabel(shown, inner, wxALIGN_LEFT | wxALIGN_CENTRE_VERTICAL);
    }
}

} // namespace norvel::controls
