// The mouse and the keyboard of a control that draws its parts itself.
#pragma once

#include "platform/controls/Tip.h"

#include <wx/control.h>
#include <wx/dcclient.h>
#include <wx/event.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace norvel::controls {

// Mouse: the part under it is the one with the tip, and is clicked when the button comes up where
// it went down. Keyboard: Tab goes into and out of the control, where one part of the stops has the
// focus; Home and End walk to the ends, Space and Enter press it.
//
// The control says what its parts are, and paints them by what is known here.
template <class Part>
class PartsInput {
  public:
    using Place = std::optional<Part>;

    Place hover;   // under the mouse
    Place pressed; // where the mouse button went down
    Place focus;   // where the keyboard is while the control has the focus

    virtual void layOut() = 0; // places everything anew: the control has another size or scale
    virtual void paint(const wxRect& damaged) = 0;
    virtual Place partAt(wxPoint at) const = 0;
    virtual wxRect rectOf(Part part) const = 0;     // empty where it is not on show
    virtual std::vector<Part> stops() const = 0;    // of the keyboard, in their order
    virtual std::string tipOf(Part part) const = 0; // "": none
    virtual void focused(Part) {}                   // it has the focus from now on
    virtual bool otherKey(int key) = 0;             // the arrows; true where it was one of those
    // The last thing done of any event, since what they call may end the window. takePress: the
    // mouse button goes down on it; true where a click is to follow.
    virtual bool takePress(Part part) = 0;
    virtual void click(Part part) = 0;    // by the mouse
    virtual void pressKey(Part part) = 0; // by the keyboard

    void listen();
    void refresh(const Place& place);
    void setHover(Place place);
    void showTip(); // what is under the mouse may have another one now
    void setFocus(Place place);
    void moveFocus(std::ptrdiff_t step); // stays at either end; from a part that is no stop: first
    void moveFocusToEnd(bool last);

  protected:
    explicit PartsInput(wxControl& control) : control_(control) {}
    PartsInput(const PartsInput&) = delete;
    PartsInput& operator=(const PartsInput&) = delete;
    virtual ~PartsInput() = default;

  private:
    void listenToMouse();
    void mouseDown(wxPoint at);
    void mouseUp(wxPoint at);
    bool keyDown(int key, bool shift, bool alt);

    wxControl& control_;
    std::string tip_;
};

template <class Part>
void PartsInput<Part>::listen() {
    control_.Bind(wxEVT_PAINT,
                  [this](wxPaintEvent&) { paint(control_.GetUpdateRegion().GetBox()); });
    const auto placeAnew = [this](wxEvent& event) {
        layOut();
        event.Skip();
    };
    control_.Bind(wxEVT_SIZE, placeAnew);
    control_.Bind(wxEVT_DPI_CHANGED, placeAnew);
    const auto paintAnew = [this](wxEvent& event) {
        control_.Refresh();
        event.Skip();
    };
    control_.Bind(wxEVT_SYS_COLOUR_CHANGED, paintAnew);
    control_.Bind(wxEVT_KILL_FOCUS, paintAnew);
    control_.Bind(wxEVT_SET_FOCUS, [this, paintAnew](wxFocusEvent& event) {
        moveFocus(0); // back where it stood, if it still can
        paintAnew(event);
    });
    control_.Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.ControlDown() || !keyDown(event.GetKeyCode(), event.ShiftDown(), event.AltDown()))
            event.Skip();
    });
    listenToMouse();
}

template <class Part>
void PartsInput<Part>::listenToMouse() {
    const auto follow = [this](wxMouseEvent& event) { setHover(partAt(event.GetPosition())); };
    control_.Bind(wxEVT_MOTION, follow);
    control_.Bind(wxEVT_ENTER_WINDOW, follow); // also when the window appears under a resting mouse
    control_.Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { setHover(std::nullopt); });
    const auto down = [this](wxMouseEvent& event) { mouseDown(event.GetPosition()); };
    control_.Bind(wxEVT_LEFT_DOWN, down);
    control_.Bind(wxEVT_LEFT_DCLICK, down);
    control_.Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) { mouseUp(event.GetPosition()); });
    control_.Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
        refresh(std::exchange(pressed, std::nullopt));
    });
}

template <class Part>
void PartsInput<Part>::refresh(const Place& place) {
    if (place) control_.RefreshRect(rectOf(*place), false);
}

template <class Part>
void PartsInput<Part>::setHover(Place place) {
    if (place == hover) return;
    refresh(std::exchange(hover, place));
    refresh(hover);
    showTip();
}

template <class Part>
void PartsInput<Part>::showTip() {
    const std::string wanted = hover ? tipOf(*hover) : std::string();
    if (wanted == tip_) return;
    tip_ = wanted;
    setTip(control_, tip_, hover ? rectOf(*hover) : control_.GetClientRect());
}

template <class Part>
void PartsInput<Part>::mouseDown(wxPoint at) {
    setHover(partAt(at));
    if (!hover || !takePress(*hover)) return;
    pressed = hover;
    refresh(pressed);
    if (!control_.HasCapture()) control_.CaptureMouse();
}

template <class Part>
void PartsInput<Part>::mouseUp(wxPoint at) {
    if (control_.HasCapture()) control_.ReleaseMouse();
    const Place released = std::exchange(pressed, std::nullopt);
    refresh(released);
    setHover(partAt(at));
    if (released && released == hover) click(*released);
}

template <class Part>
void PartsInput<Part>::setFocus(Place place) {
    refresh(std::exchange(focus, place));
    refresh(focus);
    if (focus) focused(*focus);
}

template <class Part>
void PartsInput<Part>::moveFocusToEnd(bool last) {
    const std::vector<Part> all = stops();
    if (all.empty())
        setFocus(std::nullopt);
    else
        setFocus(last ? all.back() : all.front());
}

template <class Part>
void PartsInput<Part>::moveFocus(std::ptrdiff_t step) {
    const std::vector<Part> all = stops();
    const auto at = focus ? std::ranges::find(all, *focus) : all.end();
    if (at == all.end()) return moveFocusToEnd(false);
    const auto place = at - all.begin() + step;
    if (place >= 0 && place < static_cast<std::ptrdiff_t>(all.size()))
        setFocus(all[static_cast<std::size_t>(place)]);
}

// True when the key was one of the control's.
template <class Part>
bool PartsInput<Part>::keyDown(int key, bool shift, bool alt) {
    switch (key) {
    case WXK_TAB:
        return control_.Navigate(shift ? wxNavigationKeyEvent::IsBackward
                                       : wxNavigationKeyEvent::IsForward);
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
        moveFocusToEnd(false);
        return true;
    case WXK_END:
    case WXK_NUMPAD_END:
        moveFocusToEnd(true);
        return true;
    case WXK_SPACE:
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        if (alt) return false;
        if (focus) pressKey(*focus);
        return true;
    default:
        return otherKey(key);
    }
}

} // namespace norvel::controls
