#include "platform/controls/Keyboard.h"

#include <wx/msw/private.h>
#include <wx/toplevel.h>

#include <vector>

namespace norvel::controls {

namespace {

// The window's own part that the keyboard is in.
wxWindow* partOf(const wxWindow& top, wxWindow* focused) {
    while (focused != nullptr && focused->GetParent() != &top)
        focused = focused->GetParent();
    return focused;
}

void travel(wxTopLevelWindow& top, wxNavigationKeyEvent& event) {
    std::vector<wxWindow*> stops;
    std::size_t here = 0;
    const wxWindow* current = partOf(top, wxWindow::FindFocus());
    for (wxWindow* part : top.GetChildren()) {
        if (part == current) here = stops.size();
        if (part == current || part->CanAcceptFocusFromKeyboard()) stops.push_back(part);
    }
    if (stops.empty()) return event.Skip();
    const std::size_t step = event.GetDirection() ? 1 : stops.size() - 1;
    stops[(here + step) % stops.size()]->SetFocusFromKbd();
}

} // namespace

void travelByTab(wxTopLevelWindow& top) {
    top.SetWindowStyleFlag(top.GetWindowStyleFlag() | wxTAB_TRAVERSAL);
    top.Bind(wxEVT_NAVIGATION_KEY, [&top](wxNavigationKeyEvent& event) { travel(top, event); });
}

void forgetTypedCharacter(const wxWindow& window) {
    MSG message;
    PeekMessageW(&message, window.GetHandle(), WM_CHAR, WM_CHAR, PM_REMOVE);
}

} // namespace norvel::controls
