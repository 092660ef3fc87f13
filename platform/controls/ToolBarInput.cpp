// A toolbar's mouse and keyboard.
#include "platform/controls/Keyboard.h"
#include "platform/controls/Tip.h"
#include "platform/controls/ToolBarImpl.h"

#include <wx/dcclient.h>
#include <wx/event.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace norvel::controls {

namespace {

std::string tipOf(const Button& button) {
    return button.Shortcut.empty() ? nameOf(button) : nameOf(button) + "\n" + button.Shortcut;
}

} // namespace

void ToolBar::Impl::listen() {
    bar.Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(bar.GetUpdateRegion().GetBox()); });
    bar.Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        layOut();
        event.Skip();
    });
    bar.Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
        layOut();
        event.Skip();
    });
    bar.Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        bar.Refresh();
        event.Skip();
    });
    const auto follow = [this](wxMouseEvent& event) { setHover(spotAt(event.GetPosition())); };
    bar.Bind(wxEVT_MOTION, follow);
    bar.Bind(wxEVT_ENTER_WINDOW, follow); // also when the window appears under a resting mouse
    bar.Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { setHover(std::nullopt); });
    bar.Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) { mouseDown(event.GetPosition()); });
    bar.Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) { mouseDown(event.GetPosition()); });
    bar.Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) { mouseUp(event.GetPosition()); });
    bar.Bind(wxEVT_MOUSE_CAPTURE_LOST,
             [this](wxMouseCaptureLostEvent&) { refresh(std::exchange(pressed, std::nullopt)); });
    bar.Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.ControlDown() || !keyDown(event.GetKeyCode(), event.ShiftDown(), event.AltDown()))
            event.Skip();
    });
    bar.Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        moveFocus(0); // back where it stood, if it still can
        bar.Refresh();
        event.Skip();
    });
    bar.Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        bar.Refresh();
        event.Skip();
    });
}

std::optional<Spot> ToolBar::Impl::spotAt(wxPoint at) const {
    if (layout.chevron && rectOf(*layout.chevron).Contains(at)) return Spot{Spot::Part::Chevron, 0};
    for (const Slot& slot : layout.slots) {
        if (!rectOf(slot).Contains(at) || buttons[slot.button].Style == ButtonStyle::Separator)
            continue;
        const bool onArrow = at.x >= slot.x + slot.width - slot.arrow;
        return Spot{onArrow ? Spot::Part::Arrow : Spot::Part::Button, slot.button};
    }
    return std::nullopt;
}

void ToolBar::Impl::refresh(const std::optional<Spot>& spot) {
    if (spot) bar.RefreshRect(rectOf(*spot), false);
}

void ToolBar::Impl::setHover(std::optional<Spot> spot) {
    if (spot == hover) return;
    refresh(std::exchange(hover, spot));
    refresh(hover);
    showTip();
}

// The text of the button under the mouse; a disabled one explains itself as well. None while a menu
// is open: it would cover the entries.
void ToolBar::Impl::showTip() {
    std::string wanted;
    if (opened)
        wanted = "";
    else if (hover && hover->part == Spot::Part::Chevron)
        wanted = "Altri comandi";
    else if (hover)
        wanted = tipOf(buttons[hover->button]);
    if (wanted == tip) return;
    tip = wanted;
    setTip(bar, tip, hover ? rectOf(*hover) : bar.GetClientRect());
}

// Menus open when the mouse goes down, commands run when it comes up again on the same button.
void ToolBar::Impl::mouseDown(wxPoint at) {
    setHover(spotAt(at));
    if (!hover) return;
    if (hover->part == Spot::Part::Chevron) return openOverflowMenu();
    if (!usable(hover->button)) return;
    if (hover->part == Spot::Part::Arrow) return openButtonMenu(hover->button);
    pressed = hover;
    refresh(pressed);
    if (!bar.HasCapture()) bar.CaptureMouse();
}

void ToolBar::Impl::mouseUp(wxPoint at) {
    if (bar.HasCapture()) bar.ReleaseMouse();
    const std::optional<Spot> released = std::exchange(pressed, std::nullopt);
    refresh(released);
    setHover(spotAt(at));
    if (released && released == hover && usable(released->button)) press(released->button);
}

std::vector<Spot> ToolBar::Impl::stops() const {
    std::vector<Spot> all;
    for (const Slot& slot : layout.slots)
        if (usable(slot.button)) all.push_back({Spot::Part::Button, slot.button});
    if (layout.chevron) all.push_back({Spot::Part::Chevron, 0});
    return all;
}

void ToolBar::Impl::setFocus(std::optional<Spot> spot) {
    refresh(std::exchange(focus, spot));
    refresh(focus);
}

void ToolBar::Impl::moveFocusToEnd(bool last) {
    const std::vector<Spot> all = stops();
    if (all.empty())
        setFocus(std::nullopt);
    else
        setFocus(last ? all.back() : all.front());
}

// Stays at either end. From a button that was disabled meanwhile it starts again at the first.
void ToolBar::Impl::moveFocus(int step) {
    const std::vector<Spot> all = stops();
    const auto at = focus ? std::ranges::find(all, *focus) : all.end();
    if (at == all.end()) return moveFocusToEnd(false);
    const auto place = at - all.begin() + step;
    if (place >= 0 && place < static_cast<std::ptrdiff_t>(all.size()))
        setFocus(all[static_cast<std::size_t>(place)]);
}

// True when the key was one of the bar's.
bool ToolBar::Impl::keyDown(int key, bool shift, bool alt) {
    switch (key) {
    case WXK_TAB:
        return bar.Navigate(shift ? wxNavigationKeyEvent::IsBackward
                                  : wxNavigationKeyEvent::IsForward);
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
        moveFocus(-1);
        return true;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
        moveFocus(1);
        return true;
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
        moveFocusToEnd(false);
        return true;
    case WXK_END:
    case WXK_NUMPAD_END:
        moveFocusToEnd(true);
        return true;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        if (focus && focus->part == Spot::Part::Chevron)
            openOverflowMenu();
        else if (focus && usable(focus->button))
            openButtonMenu(focus->button);
        return true;
    case WXK_SPACE:
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        if (alt) return false;
        if (focus) activate(*focus);
        return true;
    default:
        return false;
    }
}

void ToolBar::Impl::activate(Spot spot) {
    if (spot.part == Spot::Part::Chevron) {
        forgetTypedCharacter(bar);
        openOverflowMenu();
    } else if (usable(spot.button))
        press(spot.button);
}

} // namespace norvel::controls
