#include "platform/controls/ScrollBar.h"

#include <wx/scrolbar.h>

namespace norvel::controls {

namespace {
constexpr int leastLength = 4; // of a bar with a thumb, in its thicknesses
} // namespace

wxScrollBar* makeScrollBar(wxWindow& in, bool vertical,
                           const std::function<void(wxScrollEvent&)>& onScroll) {
    auto* bar = new wxScrollBar(&in, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                vertical ? wxSB_VERTICAL : wxSB_HORIZONTAL);
    bar->Hide();
    bar->DisableFocusFromKeyboard();
    for (const auto& type : {wxEVT_SCROLL_TOP, wxEVT_SCROLL_BOTTOM, wxEVT_SCROLL_LINEUP,
                             wxEVT_SCROLL_LINEDOWN, wxEVT_SCROLL_PAGEUP, wxEVT_SCROLL_PAGEDOWN,
                             wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_THUMBRELEASE})
        bar->Bind(type, onScroll);
    return bar;
}

void placeScrollBar(wxScrollBar& bar, const wxRect& place, bool needed) {
    bar.SetSize(place);
    const bool roomy = bar.IsVertical() ? place.height >= leastLength * place.width
                                        : place.width >= leastLength * place.height;
    bar.Show(needed && roomy);
}

} // namespace norvel::controls
